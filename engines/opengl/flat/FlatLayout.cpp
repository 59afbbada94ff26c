#include "opengl/flat/FlatLayout.h"

#include <algorithm>
#include <cmath>

namespace vexplot {

namespace {

// A span that never divides by zero: a degenerate range shows as one unit.
double Span(double lo, double hi) { return hi > lo ? hi - lo : 1.0; }

}  // namespace

void FlatLayout::SetClientSize(int32_t width, int32_t height) {
    width_ = std::max(width, 0);
    height_ = std::max(height, 0);
}

void FlatLayout::SetParameters(int32_t leftMargin, int32_t colorBarWidth, int32_t paletteAxisWidth,
                               int32_t bottomMargin) {
    leftMargin_ = std::max(leftMargin, 0);
    colorBarWidth_ = std::max(colorBarWidth, 0);
    paletteAxisWidth_ = std::max(paletteAxisWidth, 0);
    bottomMargin_ = std::max(bottomMargin, 0);
}

PixelRect FlatLayout::ImageRect() const {
    const int32_t rightPart = colorBarVisible_ ? kColorBarGap + colorBarWidth_ + paletteAxisWidth_ : kRightMargin;
    PixelRect r{scale_.Pixels(leftMargin_), scale_.Pixels(kTopMargin), width_ - scale_.Pixels(rightPart),
                height_ - scale_.Pixels(bottomMargin_)};
    r.right = std::max(r.right, r.left);
    r.bottom = std::max(r.bottom, r.top);
    return r;
}

PixelRect FlatLayout::ColorBarRect() const {
    const PixelRect image = ImageRect();
    if (!colorBarVisible_) return PixelRect{image.right, image.top, image.right, image.top};
    const int32_t left = image.right + scale_.Pixels(kColorBarGap);
    return PixelRect{left, image.top, left + scale_.Pixels(colorBarWidth_), image.bottom};
}

double FlatLayout::FractionX(double x) const {
    const DataRect v = VisibleRange();
    const double f = (x - v.xMin) / Span(v.xMin, v.xMax);
    return MirrorX() ? 1.0 - f : f;
}

double FlatLayout::FractionY(double y) const {
    const DataRect v = VisibleRange();
    const double f = (y - v.yMin) / Span(v.yMin, v.yMax);
    return MirrorY() ? f : 1.0 - f;  // unmirrored, Y grows upwards
}

double FlatLayout::XToPixel(double x) const {
    const PixelRect r = ImageRect();
    return r.left + FractionX(x) * (r.right - r.left);
}

double FlatLayout::YToPixel(double y) const {
    const PixelRect r = ImageRect();
    return r.top + FractionY(y) * (r.bottom - r.top);
}

bool FlatLayout::DataToClient(double x, double y, int32_t& px, int32_t& py) const {
    const PixelRect r = ImageRect();
    const DataRect v = VisibleRange();
    const bool inside = x >= v.xMin && x <= v.xMax && y >= v.yMin && y <= v.yMax;
    auto toPixel = [](double p, int32_t lo, int32_t hi, bool clampEdge) {
        double f = std::floor(p);
        // The range's far edge belongs to the last pixel, not the one beyond.
        if (clampEdge && hi > lo) f = std::clamp(f, double(lo), double(hi - 1));
        return int32_t(std::clamp(f, -1e9, 1e9));
    };
    px = toPixel(XToPixel(x), r.left, r.right, inside);
    py = toPixel(YToPixel(y), r.top, r.bottom, inside);
    return inside;
}

bool FlatLayout::ClientToData(int32_t px, int32_t py, double& x, double& y) const {
    const PixelRect r = ImageRect();
    const DataRect v = VisibleRange();
    const double w = std::max(r.right - r.left, 1), h = std::max(r.bottom - r.top, 1);
    double fx = (px - r.left + 0.5) / w;
    double fy = (py - r.top + 0.5) / h;
    if (MirrorX()) fx = 1.0 - fx;
    if (!MirrorY()) fy = 1.0 - fy;
    x = v.xMin + fx * Span(v.xMin, v.xMax);
    y = v.yMin + fy * Span(v.yMin, v.yMax);
    return px >= r.left && px < r.right && py >= r.top && py < r.bottom;
}

}  // namespace vexplot
