#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "GraphFixture.h"
#include "model/CGD_Palette.h"
#include "ui/LegendPreview.h"

namespace vexplot {
namespace {

constexpr uint32_t kMask = LegendPreview::kMaskColor;

// A 2 x 2 grid, value (ix, iy) at ix * 2 + iy: X runs to the right, Y up,
// and the four values take the four colours of the palette.
TEST(LegendPreviewTest, QuadrantsOfASmallGridTakeTheirPaletteColours) {
    const std::vector<double> grid{0.0, 1.0, 2.0, 3.0};
    const std::vector<uint32_t> colors{0x000011, 0x002200, 0x330000, 0x444444};
    const auto picture = LegendPreview::FromGrid(grid, 2, 2, colors);
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->Width(), 32u);
    ASSERT_EQ(picture->Height(), 32u);
    struct Probe {
        uint32_t x, y, color;
    };
    const Probe probes[] = {
        {0, 31, 0x000011},   // (0, 0) bottom left
        {0, 0, 0x002200},    // (0, 1) top left
        {31, 31, 0x330000},  // (1, 0) bottom right
        {31, 0, 0x444444},   // (1, 1) top right
        {15, 15, 0x002200},  // the last pixel of the top-left quadrant
        {16, 16, 0x330000},  // the first of the bottom-right one
    };
    for (const Probe& p : probes) EXPECT_EQ(picture->Pixel(p.x, p.y), p.color) << p.x << "," << p.y;
}

TEST(LegendPreviewTest, NeverPaintsTheMaskColourForAValue) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // The low end of a blue-to-red palette is the mask colour itself.
    const std::vector<uint32_t> colors{kMask, 0x0000FF};
    const auto picture = LegendPreview::FromGrid(std::vector<double>{0.0, nan, 1.0, 1.0}, 2, 2, colors);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Pixel(0, 31), LegendPreview::kNearMaskColor);  // value 0: pure blue, nudged
    EXPECT_EQ(picture->Pixel(0, 0), kMask);                           // NaN: transparent
    EXPECT_EQ(picture->Pixel(31, 0), 0x0000FFu);

    const auto allNan = LegendPreview::FromGrid(std::vector<double>{nan, nan}, 1, 2, colors);
    ASSERT_TRUE(allNan);
    EXPECT_EQ(*allNan, RgbaRaster(32, 32, kMask));
    EXPECT_FALSE(LegendPreview::FromGrid({}, 0, 3, colors));
    EXPECT_FALSE(LegendPreview::FromGrid(std::vector<double>{1.0, 2.0}, 2, 2, colors));  // shorter than it says
}

// A grid larger than the picture is sampled, not averaged: each pixel shows
// the cell its left/bottom edge falls in.
TEST(LegendPreviewTest, LargeGridsAreSampledByNearestCell) {
    const int32_t n = 64;
    std::vector<double> grid(static_cast<size_t>(n) * n);
    for (int32_t ix = 0; ix < n; ++ix)
        for (int32_t iy = 0; iy < n; ++iy) grid[static_cast<size_t>(ix * n + iy)] = ix % 2 == 0 ? 0.0 : 1.0;
    const auto picture = LegendPreview::FromGrid(grid, n, n, std::vector<uint32_t>{0x0000AA, 0x00BB00});
    ASSERT_TRUE(picture);
    // Pixel x shows column 2x: always an even one.
    for (uint32_t x = 0; x < 32; ++x) EXPECT_EQ(picture->Pixel(x, 5), 0x0000AAu) << x;
}

class LegendPreviewOfGraphTest : public test::GraphFixture {};

TEST_F(LegendPreviewOfGraphTest, UsesThePreviewGridWhenThereIsOne) {
    CGD_Palette palette;
    palette.SetStandard(3);
    CGD_GraphObject& big = Show(MakeData(120, 40).Get());
    ASSERT_FALSE(big.Preview().empty());
    const auto& g = big.GetGeometry();
    EXPECT_EQ(LegendPreview::Of(big, palette),
              LegendPreview::FromGrid(big.Preview(), g.previewXCount, g.previewYCount, palette.Colors()));

    CGD_GraphObject& small = Show(MakeData(3, 5).Get());
    ASSERT_TRUE(small.Preview().empty());
    EXPECT_EQ(LegendPreview::Of(small, palette), LegendPreview::FromGrid(test::Cells(3, 5), 3, 5, palette.Colors()));

    CGD_GraphObject unbound;
    EXPECT_FALSE(LegendPreview::Of(unbound, palette));
}

}  // namespace
}  // namespace vexplot
