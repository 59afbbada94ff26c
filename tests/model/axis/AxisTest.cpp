#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "RecordingEngine.h"
#include "model/CGD_Axis.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"
#include "ui/InfoEntryList.h"

namespace vexplot {
namespace {

using test::RecordingView;

TEST(Axis, StartsWithTheDocumentedLook) {
    const CGD_Axis axis(AxisId::Y);
    const CGD_Axis::Appearance& look = axis.GetAppearance();
    EXPECT_EQ(look.numberColor, 0xFFFF80u);
    EXPECT_EQ(look.majorGridColor, 0xC0C0C0u);
    EXPECT_EQ(look.minorGridColor, 0xACACACu);
    EXPECT_EQ(look.scaleFormat, ScaleFormat::Decimal);
    EXPECT_EQ(look.displayMode, DisplayMode::Linear);
    EXPECT_TRUE(look.majorGrid && look.minorGrid);
    EXPECT_EQ(look.majorTicks, 5);
    EXPECT_EQ(look.minorTicks, 5);
    EXPECT_EQ(look.drawing, (CGD_Axis::DrawingFlags{true, true, true, false}));
    EXPECT_EQ(look.decimalCount, 10);

    const struct {
        AxisFontRole role;
        int32_t height, escapement;
    } fonts[] = {{AxisFontRole::Label, 14, 0},
                 {AxisFontRole::Numbers, 12, 0},
                 {AxisFontRole::TurnedLabel, 12, 900},
                 {AxisFontRole::TurnedNumbers, 9, 900}};
    for (const auto& f : fonts) {
        const LogicalFont& font = axis.Font(f.role);
        EXPECT_EQ(font.face, "Arial");
        EXPECT_EQ(font.height, f.height);
        EXPECT_EQ(font.escapement, f.escapement);
        EXPECT_EQ(font.weight, 400);
        EXPECT_EQ(font.charset, 1);
        EXPECT_EQ(font.pitchAndFamily, 0x20);
        EXPECT_FALSE(font.italic || font.underline || font.strikeOut);
    }
}

TEST(LogicalFont, EngineFormCutsTheFaceAtACharacter) {
    LogicalFont font;
    font.face = std::string(30, 'a') + "\u00E9z";  // the two-byte character would straddle byte 31
    font.height = -11;
    font.italic = true;
    const FontDescription engine = font.ToEngineFont();
    EXPECT_EQ(std::string(engine.face), std::string(30, 'a'));
    EXPECT_EQ(engine.height, 11);
    EXPECT_EQ(engine.italic, 1);
    EXPECT_EQ(engine.weight, 400);
}

TEST(Axis, Base10UsesMarkupOnlyWhenTheViewDrawsIt) {
    CGD_Axis axis;
    CGD_Axis::Appearance look;
    look.scaleFormat = ScaleFormat::Base10;
    axis.SetAppearance(look);
    EXPECT_EQ(axis.FormatValue(12500), "1.250x10 4.0");  // no view held

    auto view = MakeComObject<RecordingView>();
    axis.SetView(view.Get());
    view->markup = 0;
    EXPECT_EQ(axis.FormatValue(12500), "1.250x10\\SUP4.0");
    view->markup = 1;
    EXPECT_EQ(axis.FormatValue(12500), "1.250x10 4.0");
}

TEST(Axis, MakeTicksFormatsEachTick) {
    CGD_Axis axis;
    for (const auto& [min, max] : {std::pair{0.0, 10.0}, std::pair{10.0, 0.0}}) {
        const CGD_Axis::Ticks ticks = axis.MakeTicks(min, max);
        EXPECT_EQ(ticks.step, 2);
        EXPECT_EQ(ticks.texts, (std::vector<std::string>{"-2", "0", "2", "4", "6", "8", "10", "12"}));
    }
    const CGD_Axis::Ticks constant = axis.MakeTicks(5, 5);
    ASSERT_GE(constant.values.size(), 3u);
    EXPECT_LE(constant.values[1], 5);
    EXPECT_GE(constant.values.back(), 5);
    EXPECT_FALSE(axis.MakeTicks(0, 0).values.empty());
}

TEST(Axis, DecibelModeShowsTheLevelOfEachTick) {
    CGD_Axis axis;
    CGD_Axis::Appearance look;
    look.displayMode = DisplayMode::Decibel;
    look.decimalCount = 4;
    axis.SetAppearance(look);
    const struct {
        double v;
        const char* text;
    } cases[] = {{10, "20"}, {-10, "20"}, {100, "40"}, {0.5, "-6.021"}, {1, "0"}, {0, "-inf"}};
    for (const auto& c : cases) EXPECT_EQ(axis.TickText(c.v), c.text) << c.v;
    EXPECT_EQ(axis.FormatValue(10), "10");  // the plain text of a value stays linear

    const CGD_Axis::Ticks ticks = axis.MakeTicks(0, 100);
    EXPECT_EQ(ticks.texts[1], "-inf");
    EXPECT_EQ(ticks.texts[2], "26.02");  // 20
}

TEST(Axis, ScaleEntryForTheXAndYAxesOnlyFollowsTheWindow) {
    InfoEntryList first;
    InfoEntryList second;
    {
        CGD_Axis x(AxisId::X);
        CGD_Axis y(AxisId::Y);
        CGD_Axis z(AxisId::Z);
        for (CGD_Axis* axis : {&x, &y, &z, &x}) axis->AttachInfoWindow(&first);
        EXPECT_EQ(z.ScaleEntry(), kNoSection);
        ASSERT_EQ(first.Entries().size(), 2u);
        EXPECT_EQ(first.Entries()[0].text, "Y scale: 100.00%");  // X was attached again, so it came last
        EXPECT_EQ(first.Entries()[1].text, "X scale: 100.00%");
        for (const InfoEntry& e : first.Entries()) EXPECT_TRUE(e.isHeader && e.kind == 1 && e.color == 0);

        x.AttachInfoWindow(&second);
        y.AttachInfoWindow(nullptr);
        EXPECT_TRUE(first.Entries().empty());
        EXPECT_EQ(second.Entries().size(), 1u);
    }
    EXPECT_TRUE(second.Entries().empty());  // the axis took its entry along
}

TEST(Axis, ScalePercentIsTheShownPartOfTheFullExtent) {
    auto view = MakeComObject<RecordingView>();
    view->shown = {2, 4, 10, 40};
    const DataRect full = {0, 10, 0, 200};
    const struct {
        const char* name;
        AxisId id;
        bool withView;
        HRESULT result;
        DataRect full;
        double expected;
    } cases[] = {
        {"X", AxisId::X, true, S_OK, full, 20},
        {"Y", AxisId::Y, true, S_OK, full, 15},
        {"Z has no zoom", AxisId::Z, true, S_OK, full, 1},
        {"the palette axis is a Z axis", AxisId::Palette, true, S_OK, full, 1},
        {"no view", AxisId::Y, false, S_OK, full, 100},
        {"view fails", AxisId::X, true, E_FAIL, full, 100},
        {"empty full extent", AxisId::X, true, S_OK, {3, 3, 0, 200}, 100},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        view->log->failures["view.GetViewBounds"] = c.result;
        view->full = c.full;
        CGD_Axis axis(c.id);
        if (c.withView) axis.SetView(view.Get());
        EXPECT_DOUBLE_EQ(axis.GetScalePercent(), c.expected);
    }

    view->full = {0, 6, 0, 200};  // the scale entry shows it
    InfoEntryList window;
    CGD_Axis axis(AxisId::X);
    axis.SetView(view.Get());
    axis.AttachInfoWindow(&window);
    axis.UpdateScaleEntry();
    EXPECT_EQ(window.Entries().at(0).text, "X scale: 33.33%");
}

class AxisSettingsTest : public testing::Test {
protected:
    std::shared_ptr<SettingsStore> store = SettingsStore::OpenUnshared(":memory:");
    CRegistryKey key{nullptr, store};

    void SetUp() override { ASSERT_NE(key.Open(""), 0); }
};

// An empty label and a negative tick count count as missing too.
TEST_F(AxisSettingsTest, MissingValuesKeepTheFieldsButNumberColourAndDecimals) {
    key.WriteString("X-Axis Label", "");
    key.WriteInt("X-Axis Number Major Ticks", -4);
    CGD_Axis axis(AxisId::X);
    CGD_Axis::Appearance look;
    look.label = "Time";
    look.numberColor = 0x123456;
    look.majorGridColor = 0x111111;
    look.minorGridColor = 0x222222;
    look.majorGrid = false;
    look.majorTicks = 7;
    look.minorTicks = 2;
    look.scaleFormat = ScaleFormat::Exponential;
    look.displayMode = DisplayMode::Decibel;
    look.decimalCount = 3;
    axis.SetAppearance(look);

    ASSERT_TRUE(axis.LoadSettings(key));
    CGD_Axis::Appearance expected = look;
    expected.numberColor = 0;
    expected.decimalCount = 10;
    EXPECT_EQ(axis.GetAppearance(), expected);
}

TEST_F(AxisSettingsTest, StoredValuesReplaceTheFieldsOfTheirAxisOnly) {
    const struct {
        const char* name;
        int32_t value;
    } values[] = {
        {"Y-Axis Number color", 0x0000FF},   {"Y-Axis Minor Grid color", 0x00FF00},
        {"Y-Axis Major Grid color", 0xFF0000}, {"Y-Axis Minor Grid", 0},
        {"Y-Axis Major Grid", 0},            {"Y-Axis Number Minor Ticks", 3},
        {"Y-Axis Number Major Ticks", 8},    {"Y-Axis Scale Format", 2},
        {"Y-Axis Display Mode", 1},          {"Y-Axis Decimal Count", 4},
        {"X-Axis Number Major Ticks", 9},
    };
    for (const auto& v : values) key.WriteInt(v.name, v.value);
    key.WriteString("Y-Axis Label", "Depth");

    CGD_Axis axis(AxisId::Y);
    ASSERT_TRUE(axis.LoadSettings(key));
    CGD_Axis::Appearance expected;
    expected.label = "Depth";
    expected.numberColor = 0x0000FF;
    expected.minorGridColor = 0x00FF00;
    expected.majorGridColor = 0xFF0000;
    expected.minorGrid = false;
    expected.majorGrid = false;
    expected.minorTicks = 3;
    expected.majorTicks = 8;
    expected.scaleFormat = ScaleFormat::Engineering;
    expected.displayMode = DisplayMode::Decibel;
    expected.decimalCount = 4;
    EXPECT_EQ(axis.GetAppearance(), expected);
}

}  // namespace
}  // namespace vexplot
