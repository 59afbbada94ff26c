// The annotation overlay's CPU drawing: coverage, strokes, fills, the
// scene's depth hiding what lies behind it, and the pixel ratio.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "opengl/flat/FlatOverlay.h"
#include "opengl/gl/OverlayCanvas.h"
#include "opengl/text/PixelOverlayPen.h"
#include "opengl/text/TextPainter.h"

namespace vexplot {
namespace {

constexpr uint32_t kRed = 0x0000FF;

struct Picture {
    explicit Picture(int32_t w, int32_t h, int32_t ratio = 100) : pixels(size_t(w) * size_t(h), 0) {
        buffer = {pixels.data(), w, h, w, ratio};
    }
    uint32_t At(int32_t x, int32_t y) const { return pixels[size_t(y) * size_t(buffer.width) + size_t(x)]; }
    int Count(uint32_t color) const {
        int n = 0;
        for (uint32_t p : pixels) n += p == color;
        return n;
    }
    std::vector<uint32_t> pixels;
    ImageBuffer buffer{};
};

TEST(OverlayCanvas, LinesCoverTheirWidthAndStrokesLeaveGaps) {
    Picture solid(40, 10), dotted(40, 10);
    OverlayCanvas(solid.buffer, 1.0).Line(2, 5.5, 0, 38, 5.5, 0, kRed, 1.0f, OverlayStroke::Solid);
    OverlayCanvas(dotted.buffer, 1.0).Line(2, 5.5, 0, 38, 5.5, 0, kRed, 1.0f, OverlayStroke::Dotted);
    // Through pixel centres a one-pixel line fills its row from end to end
    // and nothing beside it; the ends' outer pixels are half covered.
    EXPECT_EQ(solid.Count(kRed), 36);
    EXPECT_EQ(solid.At(10, 4), 0u);
    EXPECT_EQ(solid.At(1, 5), 0x00007Fu);
    // Dotted: on for half of every three pixels.
    EXPECT_GT(dotted.Count(kRed), 10);
    EXPECT_LT(dotted.Count(kRed), 26);
}

TEST(OverlayCanvas, TheSceneDepthHidesWhatLiesBehindIt) {
    Picture picture(20, 10);
    // Rows bottom-up as GL reads them: the right half of the scene is near.
    std::vector<float> depth(200, 1.0f);
    for (int32_t row = 0; row < 10; ++row)
        for (int32_t x = 10; x < 20; ++x) depth[size_t(row) * 20 + size_t(x)] = 0.2f;
    OverlayCanvas canvas(picture.buffer, 1.0, &depth);
    canvas.Line(0, 5.5, 0.5, 20, 5.5, 0.5, kRed, 1.0f, OverlayStroke::Solid);
    EXPECT_EQ(picture.At(5, 5), kRed);
    EXPECT_EQ(picture.At(15, 5), 0u);
    EXPECT_TRUE(canvas.Visible(5.5, 5.5, 0.5));
    EXPECT_FALSE(canvas.Visible(15.5, 5.5, 0.5));
    // A point on the surface itself is seen; its edge pixels count.
    EXPECT_TRUE(canvas.Visible(15.5, 5.5, 0.2));
    EXPECT_TRUE(canvas.Visible(10.2, 5.5, 0.5));
    // A depth image of another size is ignored rather than misread.
    std::vector<float> wrong(7, 0.0f);
    EXPECT_TRUE(OverlayCanvas(picture.buffer, 1.0, &wrong).Visible(15.5, 5.5, 0.9));
}

TEST(OverlayCanvas, BoxFillsInvertHatchAndTint) {
    Picture picture(30, 10);
    for (uint32_t& p : picture.pixels) p = 0x101010;
    OverlayCanvas canvas(picture.buffer, 1.0);
    canvas.Box(0, 0, 10, 10, kRed, -1, OverlayFill::Invert, 1, 1.0f);
    canvas.Box(10, 0, 20, 10, kRed, -1, OverlayFill::Hatched, 4, 1.0f);
    canvas.Box(20, 0, 30, 10, kRed, -1, OverlayFill::Tint, 1, 1.0f);
    EXPECT_EQ(picture.At(3, 3), 0xEFEFEFu);
    int hatched = 0;
    for (int32_t x = 10; x < 20; ++x) hatched += picture.At(x, 0) != 0x101010u;
    EXPECT_EQ(hatched, 3);  // every fourth pixel of a row, 10 wide
    EXPECT_EQ(picture.At(25, 5), 0x0C0C4Bu);  // a quarter of the way to red
}

TEST(FlatOverlay, ShapesScaleWithThePixelRatioAndBadShapesAreRefused) {
    FlatOverlay overlay;
    const OverlayBox box{{2, 2, 6, 6}, kRed, -1, static_cast<int32_t>(OverlayFill::Solid), 1, 1.0f, 0};
    ASSERT_EQ(overlay.AddBox(&box), S_OK);
    const double bad[] = {0, 0, NAN, 1};
    EXPECT_EQ(overlay.AddLines(2, bad, kRed, OverlayStroke::Solid, 1.0f, false), E_INVALIDARG);
    EXPECT_EQ(overlay.AddBox(nullptr), E_POINTER);
    EXPECT_EQ(overlay.AddSymbol(1, 1, PointStyle::Circle, 0.0f, kRed), E_INVALIDARG);
    TextPainter painter;
    Picture single(16, 16), twice(32, 32, 200);
    PixelOverlayPen singlePen(single.buffer, 1.0, painter), twicePen(twice.buffer, 2.0, painter);
    overlay.Paint(singlePen, painter);
    overlay.Paint(twicePen, painter);
    EXPECT_EQ(single.Count(kRed), 16);
    EXPECT_EQ(twice.Count(kRed), 64);
    EXPECT_EQ(twice.At(4, 4), kRed);
    EXPECT_EQ(twice.At(3, 3), 0u);
}

}  // namespace
}  // namespace vexplot
