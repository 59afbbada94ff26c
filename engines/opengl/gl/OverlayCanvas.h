#pragma once
#include <cstdint>
#include <vector>

#include "engine/IGraphEngine.h"

namespace vexplot {

// Draws the annotation overlay on the CPU into pixels read back from the
// GPU (0x00BBGGRR, top row first), after the scene: anti-aliased lines of
// any width with solid, dotted or dashed strokes, boxes with their fills,
// and the point symbols. Coordinates are the target's physical pixels
// (continuous: pixel (i, j) covers [i, i+1) x [j, j+1)); lengths given in
// logical pixels are scaled by `ratio`, so the overlay is as sharp as the
// target and keeps its proportions.
//
// With a depth image (the scene's window depth per pixel, 0 near .. 1 far,
// rows bottom-up as GL reads them) every pixel whose own depth lies behind
// the scene's is left out: the surface hides what is behind it.
class OverlayCanvas {
public:
    OverlayCanvas(const ImageBuffer& target, double ratio, const std::vector<float>* depth = nullptr);

    double Ratio() const { return ratio_; }
    // A segment from (x0, y0) to (x1, y1) with window depths z0, z1 (used
    // only with a depth image); `width` in logical pixels.
    void Line(double x0, double y0, double z0, double x1, double y1, double z1, uint32_t color, float width,
              OverlayStroke stroke);
    // A box in physical pixels: fill, then the outline.
    void Box(double left, double top, double right, double bottom, uint32_t color, int32_t stroke, OverlayFill fill,
             int32_t spacing, float width);
    // A symbol of `size` logical pixels centred on (x, y), at depth z.
    void Symbol(double x, double y, double z, PointStyle symbol, float size, uint32_t color);
    // Whether a point at window depth z at pixel (x, y) is in front of the
    // scene (always true without a depth image). Looks at the pixel's
    // neighbours too, so that a point lying on the surface counts as seen.
    bool Visible(double x, double y, double z) const;

private:
    void Blend(int32_t x, int32_t y, uint32_t color, double alpha);
    bool PixelVisible(int32_t x, int32_t y, double z) const;
    double SceneDepth(int32_t x, int32_t y) const;

    const ImageBuffer& target_;
    double ratio_;
    const std::vector<float>* depth_;
};

}  // namespace vexplot
