#include <gtest/gtest.h>

#include <vector>

#include "ui/PaletteEditor.h"
#include "ui/RememberedCustomPalette.h"

namespace vexplot {
namespace {

// Every test starts without a remembered list, as a fresh process does.
class PaletteEditorTest : public ::testing::Test {
protected:
    void SetUp() override { RememberedCustomPalette::Forget(); }
    void TearDown() override { RememberedCustomPalette::Forget(); }

    // An editor in custom mode on the given list.
    PaletteEditor Custom(std::vector<BaseColor> colors, int32_t size = 100) {
        RememberedCustomPalette::Store({size, std::move(colors)});
        return PaletteEditor(size, [this](const PaletteEditor&) { ++notified; });
    }
    std::vector<int32_t> Positions(const PaletteEditor& e) {
        std::vector<int32_t> out;
        for (const BaseColor& c : e.BaseColors()) out.push_back(c.position);
        return out;
    }

    int notified = 0;
};

constexpr uint32_t kBlue = 0xFF0000;  // 0x00BBGGRR
constexpr uint32_t kRed = 0x0000FF;
constexpr uint32_t kWhite = 0xFFFFFF;

// The segment arithmetic: n = trunc((q - p) * size / 100 + 0.5) entries per
// pair, each channel trunc((a + k (b - a) / n) * 255 + 0.5), the segment
// stopping one step short of its second colour.
TEST_F(PaletteEditorTest, InterpolationFollowsTheSegmentArithmetic) {
    const auto rainbow = PaletteEditor::Interpolate(PaletteEditor::TypeColors(0), 256);
    ASSERT_EQ(rainbow.size(), 256u);
    EXPECT_EQ(rainbow[0], kBlue);           // starts at pure blue
    EXPECT_EQ(rainbow[32], 0xFF8000u);      // G = trunc(32 / 64 * 255 + 0.5) = 128
    EXPECT_EQ(rainbow[63], 0xFFFB00u);      // one step short of cyan: trunc(63 / 64 * 255 + 0.5) = 251
    EXPECT_EQ(rainbow[64], 0xFFFF00u);      // the second segment starts exactly at cyan
    EXPECT_EQ(rainbow[255], 0x0004FFu);     // the last entry is one step short of red

    struct Case {
        std::vector<BaseColor> colors;
        int32_t size;
        size_t entries;
    };
    const std::vector<Case> cases = {
        {{{0, 0}, {kWhite, 33}, {0, 100}}, 10, 3 + 7},
        {{{0, 0}, {kWhite, 50}, {0, 100}}, 5, 3 + 3},  // rounding makes one too many
        {{{0, 0}, {kWhite, 40}, {0, 100}}, 5, 2 + 3},
        {{{0, 0}, {kWhite, 0}, {kRed, 100}}, 4, 0 + 4},  // equal positions give no entries
        {PaletteEditor::TypeColors(5), 1024, 1070},  // banded lists reach 104, segments round up
    };
    for (const Case& c : cases) {
        const auto table = PaletteEditor::Interpolate(c.colors, c.size);
        EXPECT_EQ(table.size(), c.entries) << c.size;
        // What reaches the plot is always the palette's size.
        RememberedCustomPalette::Store({c.size, c.colors});
        EXPECT_EQ(PaletteEditor(c.size, {}).PaletteColors().size(), static_cast<size_t>(c.size));
    }
    const auto gray = PaletteEditor::Interpolate(std::vector<BaseColor>{{0, 0}, {kWhite, 100}}, 10);
    EXPECT_EQ(gray[1], 0x1A1A1Au);  // trunc(0.1 * 255 + 0.5) = 26
    // A table left short by rounding (4 + 5 entries for 10) is completed
    // with the last base colour.
    RememberedCustomPalette::Store({10, {{0, 0}, {kWhite, 44}, {kRed, 94}}});
    EXPECT_EQ(PaletteEditor(10, {}).PaletteColors().back(), kRed);
}

TEST_F(PaletteEditorTest, TypesBuildTheirListsAndCustomKeepsTheOneShownBefore) {
    PaletteEditor editor(1024, [this](const PaletteEditor&) { ++notified; });
    EXPECT_EQ(editor.Type(), PaletteEditor::kRainbow);  // nothing remembered yet
    EXPECT_FALSE(editor.CustomMode());
    EXPECT_EQ(notified, 0);  // opening tells nobody
    EXPECT_FALSE(editor.AddColor(10, kRed));  // editing outside custom mode is ignored
    EXPECT_FALSE(editor.DeleteColor(1));
    for (int banded : {5, 6}) {
        const auto list = PaletteEditor::TypeColors(banded);
        EXPECT_EQ(list.size(), 35u);
        EXPECT_EQ(list.back().position, 104);
    }
    EXPECT_EQ(PaletteEditor::TypeColors(6)[10].color, 0x322000u);  // "002032 at 30", stored 0x00BBGGRR
    editor.ChooseType(1);
    editor.ChooseType(PaletteEditor::kCustom);
    EXPECT_TRUE(editor.CustomMode());
    EXPECT_EQ(editor.BaseColors(), (std::vector<BaseColor>{{0, 0}, {kWhite, 100}}));
    EXPECT_EQ(notified, 2);
}

TEST_F(PaletteEditorTest, AddingStopsAtThirtyThreeAndKeepsTheOrder) {
    PaletteEditor editor = Custom({{0, 0}, {kWhite, 100}});
    EXPECT_TRUE(editor.AddColor(50, kRed));
    EXPECT_TRUE(editor.AddColor(50, kBlue));  // equal positions: after the one already there
    EXPECT_TRUE(editor.AddColor(150, kBlue));  // clamped to the bar
    EXPECT_EQ(editor.BaseColors()[1].color, kRed);
    EXPECT_EQ(editor.BaseColors()[2].color, kBlue);
    EXPECT_EQ(Positions(editor), (std::vector<int32_t>{0, 50, 50, 100, 100}));
    while (editor.BaseColors().size() < PaletteEditor::kMaxBaseColors) ASSERT_TRUE(editor.AddColor(10, kRed));
    const auto full = editor.BaseColors();
    const int before = notified;
    EXPECT_TRUE(editor.AtColorLimit());
    EXPECT_FALSE(editor.AddColor(20, kRed));  // the 34th
    EXPECT_EQ(editor.BaseColors(), full);
    EXPECT_EQ(notified, before);
}

TEST_F(PaletteEditorTest, DeletingKeepsThreeAndPinsTheEnds) {
    PaletteEditor first = Custom({{kBlue, 0}, {kWhite, 40}, {kRed, 100}});
    EXPECT_TRUE(first.DeleteColor(0));
    EXPECT_EQ(first.BaseColors(), (std::vector<BaseColor>{{kWhite, 0}, {kRed, 100}}));
    EXPECT_FALSE(first.DeleteColor(0));  // fewer than three
    EXPECT_FALSE(first.CanDelete());

    PaletteEditor last = Custom({{kBlue, 0}, {kWhite, 40}, {0, 70}, {kRed, 100}});
    EXPECT_FALSE(last.DeleteColor(4));  // out of range
    EXPECT_TRUE(last.DeleteColor(3));
    EXPECT_EQ(Positions(last), (std::vector<int32_t>{0, 40, 100}));
    EXPECT_TRUE(last.DeleteColor(1));  // an inner one leaves the ends alone
    EXPECT_EQ(Positions(last), (std::vector<int32_t>{0, 100}));

    PaletteEditor spread = Custom({{kBlue, 0}, {kWhite, 5}, {0, 6}, {kRed, 104}});
    spread.EqualDistance();
    EXPECT_EQ(Positions(spread), (std::vector<int32_t>{0, 33, 67, 100}));
}

TEST_F(PaletteEditorTest, DraggingMovesInnerMarkersPastEachOther) {
    PaletteEditor editor = Custom({{kBlue, 0}, {kWhite, 30}, {0, 60}, {kRed, 100}});
    EXPECT_FALSE(editor.CanDrag(0));
    EXPECT_FALSE(editor.CanDrag(3));
    EXPECT_EQ(editor.MoveMarker(0, 50), 0u);
    EXPECT_EQ(Positions(editor), (std::vector<int32_t>{0, 30, 60, 100}));
    const int before = notified;
    const size_t moved = editor.MoveMarker(1, 80);  // white passes black
    EXPECT_EQ(moved, 2u);
    EXPECT_EQ(editor.BaseColors()[2], (BaseColor{kWhite, 80}));
    EXPECT_EQ(editor.MoveMarker(moved, -20), 1u);  // clamped to 0, still after the first
    EXPECT_EQ(Positions(editor), (std::vector<int32_t>{0, 0, 60, 100}));
    EXPECT_EQ(notified, before + 2);  // every move reaches the plot
}

TEST_F(PaletteEditorTest, TheLastListIsRememberedForTheNextOpening) {
    {
        PaletteEditor editor(1024, {});
        editor.ChooseType(1);  // remembered whatever the type
    }
    PaletteEditor next(512, {});
    EXPECT_EQ(next.Type(), PaletteEditor::kCustom);
    EXPECT_EQ(next.PaletteSize(), 1024);  // the remembered size
    EXPECT_EQ(next.BaseColors(), (std::vector<BaseColor>{{0, 0}, {kWhite, 100}}));
    EXPECT_EQ(next.Table().size(), 1024u);
}

TEST_F(PaletteEditorTest, PointsOnTheBarMapToPositionsAndEntries) {
    struct Case {
        int32_t x;
        int32_t position;
        int64_t index;
    };
    // A bar from x = 10, 200 pixels wide, over a palette of 1024 entries.
    for (const Case& c : std::vector<Case>{{5, 0, -25}, {10, 0, 0}, {11, 1, 5}, {110, 50, 512}, {210, 100, 1024}, {300, 100, 1485}}) {
        EXPECT_EQ(PaletteEditor::PositionAt(c.x, 10, 200), c.position) << c.x;
        EXPECT_EQ(PaletteEditor::TableIndexAt(c.x, 10, 200, 1024), c.index) << c.x;
    }
}

}  // namespace
}  // namespace vexplot
