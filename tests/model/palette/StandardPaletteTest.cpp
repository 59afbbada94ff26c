#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "model/CGD_Palette.h"

namespace vexplot {
namespace {

// Worked out by hand from the ramp rules: the ends of every stretch, the
// (i mod 256) + 2 and 252 - (i mod 256) offsets, the repeated tails and the
// wrapped tails of the grey ramps. Colours are 0x00BBGGRR.
TEST(StandardPalette, EntriesFollowTheRampOfTheIdentifier) {
    struct Entry {
        int identifier, index;
        uint32_t color;
    };
    const Entry entries[] = {
        {3, 0, 0x0000FF},    {3, 255, 0x00FFFF},  {3, 256, 0x00FFFF},  {3, 509, 0x00FF02},  {3, 510, 0x00FF00},
        {3, 511, 0x01FF00},  {3, 764, 0xFEFF00},  {3, 765, 0xFFFF00},  {3, 766, 0xFFFE00},  {3, 768, 0xFFFC00},
        {3, 1020, 0xFF0000}, {3, 1023, 0xFF0000}, {0, 0, 0xFF0000},    {0, 255, 0xFFFF00},  {0, 256, 0xFFFF00},
        {0, 509, 0x02FF00},  {0, 510, 0x00FF00},  {0, 511, 0x00FF01},  {0, 764, 0x00FFFE},  {0, 765, 0x00FFFF},
        {0, 766, 0x00FEFF},  {0, 1020, 0x0000FF}, {0, 1023, 0x0000FF}, {1, 0, 0x000000},    {1, 1, 0x000100},
        {1, 2, 0x000101},    {1, 3, 0x010101},    {1, 5, 0x010102},    {1, 511, 0x808080},  {1, 1020, 0xFFFFFF},
        {1, 1021, 0xFF00FF}, {1, 1022, 0xFF0000}, {1, 1023, 0x000000}, {4, 0, 0xFFFFFF},    {4, 1, 0xFFFEFF},
        {4, 511, 0x7F7F7F},  {4, 1020, 0x000000}, {4, 1021, 0x00FF00}, {4, 1022, 0x00FFFF}, {4, 1023, 0xFFFFFF},
    };
    CGD_Palette palette;
    for (const Entry& e : entries) {
        ASSERT_TRUE(palette.SetStandard(e.identifier));
        ASSERT_EQ(palette.GetCount(), 1024u);
        EXPECT_EQ(palette.GetColor(e.index), e.color) << "identifier " << e.identifier << ", index " << e.index;
    }
}

// Which list a palette choice leaves: the standard list of an identifier
// (2, 5 and 6 keep theirs and get the blue-to-red ramp, values outside 0..6
// are stored as 0), or the list as it was when nothing is to be done. The
// palette starts as standard list `before` with entry 0 changed by hand.
TEST(PaletteChoice, EachChoiceLeavesTheStandardListOrKeepsTheOwnOne) {
    enum class Choice { Standard, PaletteId, UseColor };
    struct Case {
        int before;
        Choice choice;
        int argument;   // the identifier, or the colour flag
        int after;      // the identifier afterwards
        int colorsOf;   // whose standard colours the list holds; -1: its own
    };
    const int kLowest = -2147483647 - 1;
    const Case cases[] = {
        {3, Choice::Standard, 2, 2, 0},       {3, Choice::Standard, 5, 5, 0},      {3, Choice::Standard, 6, 6, 0},
        {3, Choice::Standard, 7, 0, 0},       {3, Choice::Standard, 9, 0, 0},      {3, Choice::Standard, -1, 0, 0},
        {3, Choice::Standard, kLowest, 0, 0}, {3, Choice::PaletteId, 3, 3, -1},    {3, Choice::PaletteId, 9, 0, 0},
        {1, Choice::UseColor, 1, 0, 0},       {4, Choice::UseColor, 1, 0, 0},      {1, Choice::UseColor, 0, 1, -1},
        {4, Choice::UseColor, 0, 4, -1},      {0, Choice::UseColor, 0, 1, 1},      {3, Choice::UseColor, 0, 1, 1},
        {6, Choice::UseColor, 0, 1, 1},       {0, Choice::UseColor, 1, 0, -1},     {3, Choice::UseColor, 1, 3, -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.before << ", choice " << static_cast<int>(c.choice) << ", " << c.argument);
        CGD_Palette palette;
        palette.SetStandard(c.before);
        palette.SetColor(0, 0x123456);
        switch (c.choice) {
        case Choice::Standard: EXPECT_TRUE(palette.SetStandard(c.argument)); break;
        case Choice::PaletteId: EXPECT_TRUE(palette.ApplyPaletteId(c.argument)); break;
        case Choice::UseColor: EXPECT_TRUE(palette.SetUseColorPalette(c.argument != 0)); break;
        }
        EXPECT_EQ(palette.GetPaletteId(), c.after);
        EXPECT_EQ(palette.GetUseColorPalette(), c.after != 1 && c.after != 4);
        if (c.colorsOf < 0) {
            EXPECT_EQ(palette.GetColor(0), 0x123456u);
            continue;
        }
        CGD_Palette reference;
        reference.SetStandard(c.colorsOf);
        EXPECT_TRUE(std::ranges::equal(palette.Colors(), reference.Colors()));
    }
}

}  // namespace
}  // namespace vexplot
