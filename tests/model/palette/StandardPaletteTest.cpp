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

// 2, 5 and 6 keep their identifier; values outside 0..6 are stored as 0.
TEST(StandardPalette, OtherIdentifiersGiveTheBlueToRedRamp) {
    CGD_Palette reference;
    reference.SetStandard(0);
    for (int identifier : {2, 5, 6, 7, 9, -1, -2147483647 - 1}) {
        CGD_Palette palette;
        palette.SetStandard(3);
        palette.SetStandard(identifier);
        EXPECT_EQ(palette.GetPaletteId(), identifier >= 0 && identifier <= 6 ? identifier : 0) << identifier;
        EXPECT_TRUE(std::ranges::equal(palette.Colors(), reference.Colors())) << identifier;
    }
}

TEST(PaletteChoice, PaletteIdRegeneratesOnlyOnAChange) {
    CGD_Palette palette;
    palette.SetStandard(3);
    palette.SetColor(0, 0x111111);
    EXPECT_TRUE(palette.ApplyPaletteId(3));
    EXPECT_EQ(palette.GetColor(0), 0x111111u);
    EXPECT_TRUE(palette.ApplyPaletteId(9));
    EXPECT_EQ(palette.GetPaletteId(), 0);
    EXPECT_EQ(palette.GetColor(0), 0xFF0000u);
}

TEST(PaletteChoice, UseColorPaletteSwitchesBetweenGreyAndColour) {
    struct Case {
        int before;
        bool useColor;
        int after;  // -1: the list is not made again
    };
    const Case cases[] = {{1, true, 0},   {4, true, 0},  {1, false, -1}, {4, false, -1}, {0, false, 1},
                          {3, false, 1},  {6, false, 1}, {0, true, -1},  {3, true, -1}};
    for (const Case& c : cases) {
        CGD_Palette palette;
        palette.SetStandard(c.before);
        palette.SetColor(0, 0x123456);
        EXPECT_TRUE(palette.SetUseColorPalette(c.useColor));
        const int expected = c.after < 0 ? c.before : c.after;
        EXPECT_EQ(palette.GetPaletteId(), expected) << c.before << ' ' << c.useColor;
        EXPECT_EQ(palette.GetColor(0) == 0x123456u, c.after < 0) << c.before << ' ' << c.useColor;
        EXPECT_EQ(palette.GetUseColorPalette(), expected != 1 && expected != 4);
    }
}

}  // namespace
}  // namespace vexplot
