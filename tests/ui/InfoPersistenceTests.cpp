#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "control/RecordingSite.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"
#include "support/ArchiveBytes.h"
#include "support/Boxes.h"
#include "ui/CUIW_InfoWnd.h"
#include "ui/LogFontRecord.h"

namespace vexplot {
namespace {

using test::B;
using test::Box;
using test::Bytes;

class InfoPersistenceTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(key.Open(""), 0);
        ASSERT_TRUE(wnd.Create(site, 0, true, {}));
    }
    PixelRect Rect() const { return site.GetWindowRect(wnd.Window()); }

    std::shared_ptr<SettingsStore> store = SettingsStore::OpenUnshared(":memory:");
    CRegistryKey key{nullptr, store};
    test::RecordingSite site{std::make_shared<test::CallLog>()};
    CUIW_InfoWnd wnd;
};

TEST_F(InfoPersistenceTest, KindBitsNeedExactlyOne) {
    const struct {
        const char* name;
        int32_t bit;
    } kinds[] = {{"CurrPosVisible", 1}, {"MarkerVisible", 2},  {"TracerVisible", 4},
                 {"DiffTracerVisible", 8}, {"RegionVisible", 16}, {"ZoomVisible", 32}};
    for (const auto& kind : kinds) {
        for (const int32_t value : {1, 2, 0, -5}) {
            key.WriteInt(kind.name, value);
            wnd.LoadSettings(key);
            EXPECT_EQ(wnd.VisibilityMask(), value == 1 ? kind.bit : 0) << kind.name << " = " << value;
        }
        key.DeleteValue(kind.name);
    }
}

// Stored values apply; missing ones give the defaults (not the values the
// window had); the placement needs all four edges.
TEST_F(InfoPersistenceTest, StoredValuesApplyAndMissingOnesGiveTheDefaults) {
    const std::pair<const char*, int32_t> values[] = {
        {"TextColor", 0x0000FF}, {"InfoBackgroundColor", 0x202020}, {"Transparent", 1}, {"Visible", 0},
        {"InfoTop", 10},         {"InfoLeft", 20},                  {"InfoBottom", 110}, {"InfoRight", 220}};
    for (const auto& [name, value] : values) key.WriteInt(name, value);
    wnd.LoadSettings(key);
    EXPECT_EQ(wnd.TextColor(), 0x0000FFu);
    EXPECT_EQ(wnd.BackColor(), 0x202020u);
    EXPECT_TRUE(wnd.Transparent());
    EXPECT_FALSE(wnd.Visible() || site.IsWindowVisible(wnd.Window()));
    EXPECT_EQ(B(Rect()), (Box{20, 10, 220, 110}));

    site.MoveWindow(wnd.Window(), {0, 0, 100, 500});
    for (const auto& [name, value] : values)
        if (std::string(name) != "InfoTop") key.DeleteValue(name);
    wnd.LoadSettings(key);
    EXPECT_EQ(wnd.TextColor(), CUIW_InfoWnd::kDefaultTextColor);
    EXPECT_EQ(wnd.BackColor(), CUIW_InfoWnd::kDefaultBackColor);
    EXPECT_FALSE(wnd.Transparent());
    EXPECT_TRUE(wnd.Visible());
    EXPECT_EQ(B(Rect()), (Box{0, 0, 100, 500}));
}

TEST_F(InfoPersistenceTest, StoredFontReplacesTheCurrentOneOnlyWhenItCanBeMade) {
    LogicalFont courier;
    courier.face = "Courier New";
    courier.height = -15;
    courier.weight = 700;
    const auto record = LogFontRecord::Encode(courier);
    key.WriteBinary("Font", record.data(), record.size());
    wnd.LoadSettings(key);
    EXPECT_EQ(wnd.Font(), courier);
    EXPECT_EQ(wnd.Content().lineHeight, 15 + 1) << "the layout follows the new font";

    key.WriteBinary("Font", record.data(), 30);  // not a font record
    wnd.LoadSettings(key);
    EXPECT_EQ(wnd.Font(), courier);
}

TEST_F(InfoPersistenceTest, PlacementIsWrittenWhenTheFloatingRectangleChanged) {
    wnd.SavePlacement(key);
    EXPECT_EQ(key.ReadInt("InfoBottom"), 500);

    wnd.OnSizedByUser({5, 6, 105, 306});  // sized by the frame
    wnd.SavePlacement(key);
    EXPECT_EQ((Box{key.ReadInt("InfoLeft"), key.ReadInt("InfoTop"), key.ReadInt("InfoRight"), key.ReadInt("InfoBottom")}),
              (Box{5, 6, 105, 306}));

    // Docked, the owner places the window: its rectangle is no placement.
    wnd.SetDocked(true);
    site.MoveWindow(wnd.Window(), {0, 0, 60, 60});
    wnd.OnSize(wnd.Window(), 60, 60);
    wnd.SavePlacement(key);
    EXPECT_EQ(key.ReadInt("InfoRight"), 105);
    wnd.SetDocked(false);
    EXPECT_EQ(Rect().right, 105) << "undocking returns to the floating rectangle";
}

// The block as the saved state holds it, built by hand.
Bytes Block(bool docked, bool visible, uint32_t mask, bool transparent, const PixelRect& r, const LogicalFont& f) {
    Bytes b;
    test::AppendShortString(b, "InfoWnd");
    test::AppendInt32(b, docked);
    test::AppendInt32(b, visible);
    test::AppendInt32(b, 0x00FF00);  // text colour
    test::AppendInt32(b, 0x101010);  // background colour
    test::AppendInt32(b, static_cast<int32_t>(mask));
    test::AppendInt32(b, transparent);
    test::AppendInt32(b, 1);  // dockable
    test::AppendInt32(b, visible);
    for (const int32_t v : {r.top, r.left, r.bottom, r.right}) test::AppendInt32(b, v);
    test::AppendShortString(b, f.face);
    b.push_back(f.pitchAndFamily);
    for (const int32_t v : {f.height, f.width, f.escapement}) test::AppendInt32(b, v);
    test::Append(b, {f.underline, f.italic, f.charset});
    test::AppendInt32(b, f.weight);
    return b;
}

TEST_F(InfoPersistenceTest, SavedStateFieldOrderAndRoundTripLosingStrikeOut) {
    LogicalFont font;
    font.face = "Times New Roman";
    font.height = -14;
    font.width = 6;
    font.escapement = 450;
    font.weight = 700;
    font.italic = true;
    font.underline = true;
    font.strikeOut = true;
    font.charset = 0xEE;
    font.pitchAndFamily = 0x12;
    wnd.SetFont(font);
    wnd.SetTextColor(0x00FF00);
    wnd.SetBackColor(0x101010);
    wnd.SetVisibilityMask(2 | 16);
    wnd.SetTransparent(true);
    wnd.OnSizedByUser({7, 8, 207, 308});

    const Bytes stored = test::Stored([&](CArchive& ar) { wnd.Serialize(ar); });
    EXPECT_EQ(stored, Block(false, true, 18, true, {7, 8, 207, 308}, font));

    test::RecordingSite other{std::make_shared<test::CallLog>()};
    CUIW_InfoWnd loaded;
    ASSERT_TRUE(loaded.Create(other, 0, true, {}));
    test::Loaded(stored, [&](CArchive& ar) { loaded.Serialize(ar); });
    LogicalFont expected = font;
    expected.strikeOut = false;
    EXPECT_EQ(loaded.Font(), expected);
    EXPECT_EQ(loaded.TextColor(), 0x00FF00u);
    EXPECT_EQ(loaded.BackColor(), 0x101010u);
    EXPECT_EQ(loaded.VisibilityMask(), 18);
    EXPECT_TRUE(loaded.Transparent());
    EXPECT_EQ(B(other.GetWindowRect(loaded.Window())), (Box{7, 8, 207, 308}));
}

TEST_F(InfoPersistenceTest, LoadingCutsTheFaceHidesAndLeavesAllOnTruncation) {
    LogicalFont font;
    font.face = std::string(40, 'F');
    font.height = -12;
    const Bytes block = Block(false, false, 1, false, {1, 2, 3, 4}, font);
    test::Loaded(block, [&](CArchive& ar) { wnd.Serialize(ar); });
    EXPECT_EQ(wnd.Font().face, std::string(32, 'F'));
    EXPECT_FALSE(wnd.Visible() || site.IsWindowVisible(wnd.Window()));
    EXPECT_EQ(B(Rect()), (Box{1, 2, 3, 4}));

    CUIW_InfoWnd untouched;
    ASSERT_TRUE(untouched.Create(site, 0, true, {}));
    const Bytes cut(block.begin(), block.end() - 2);
    test::LoadError(cut, [&](CArchive& ar) { untouched.Serialize(ar); });
    EXPECT_EQ(untouched.Font().face, "Arial");
    EXPECT_EQ(untouched.VisibilityMask(), InfoEntryList::kAllKinds);
    EXPECT_TRUE(untouched.Visible());
}

}  // namespace
}  // namespace vexplot
