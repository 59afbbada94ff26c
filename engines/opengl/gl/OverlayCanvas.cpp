#include "opengl/gl/OverlayCanvas.h"

#include "opengl/gl/OverlayPen.h"

#include <algorithm>
#include <cmath>

namespace vexplot {

namespace {

// How far a point may lie behind the scene's depth and still be drawn: the
// marks sit on the surface they annotate.
constexpr double kDepthTolerance = 2e-3;

bool StrokeOn(OverlayStroke stroke, double along, double width) {
    const DashPattern dash = DashFor(stroke, width);
    return std::fmod(along, dash.period) < dash.on;
}

}  // namespace

OverlayCanvas::OverlayCanvas(const ImageBuffer& target, double ratio, const std::vector<float>* depth)
    : target_(target), ratio_(ratio > 0 && std::isfinite(ratio) ? ratio : 1.0), depth_(depth) {
    const size_t size = static_cast<size_t>(target.width) * static_cast<size_t>(target.height);
    if (depth_ && depth_->size() != size) depth_ = nullptr;
}

void OverlayCanvas::Blend(int32_t x, int32_t y, uint32_t color, double alpha) {
    if (x < 0 || y < 0 || x >= target_.width || y >= target_.height || alpha <= 0) return;
    uint32_t& pixel = target_.pixels[static_cast<size_t>(y) * static_cast<size_t>(target_.stride) + x];
    if (alpha >= 1) {
        pixel = color & 0x00FFFFFFu;
        return;
    }
    // Fixed point in 1/256: the overlay is drawn every frame.
    const uint32_t a = static_cast<uint32_t>(alpha * 256.0 + 0.5), keep = 256 - a;
    const uint32_t rb = ((pixel & 0xFF00FFu) * keep + (color & 0xFF00FFu) * a) >> 8;
    const uint32_t g = ((pixel & 0x00FF00u) * keep + (color & 0x00FF00u) * a) >> 8;
    pixel = (rb & 0xFF00FFu) | (g & 0x00FF00u);
}

double OverlayCanvas::SceneDepth(int32_t x, int32_t y) const {
    const size_t row = static_cast<size_t>(target_.height - 1 - y);
    return (*depth_)[row * static_cast<size_t>(target_.width) + static_cast<size_t>(x)];
}

bool OverlayCanvas::PixelVisible(int32_t x, int32_t y, double z) const {
    if (!depth_ || x < 0 || y < 0 || x >= target_.width || y >= target_.height) return true;
    return z <= SceneDepth(x, y) + kDepthTolerance;
}

bool OverlayCanvas::Visible(double x, double y, double z) const {
    if (!depth_) return true;
    const auto cx = static_cast<int32_t>(std::floor(x)), cy = static_cast<int32_t>(std::floor(y));
    const int32_t reach = std::max(1, static_cast<int32_t>(std::lround(ratio_)));
    for (int32_t dy = -reach; dy <= reach; ++dy)
        for (int32_t dx = -reach; dx <= reach; ++dx)
            if (PixelVisible(cx + dx, cy + dy, z)) return true;
    return false;
}

void OverlayCanvas::Line(double x0, double y0, double z0, double x1, double y1, double z1, uint32_t color,
                         float width, OverlayStroke stroke) {
    if (!std::isfinite(x0) || !std::isfinite(y0) || !std::isfinite(x1) || !std::isfinite(y1)) return;
    const double w = std::max(1.0, static_cast<double>(width) * ratio_);
    const double half = w / 2.0;
    const double dx = x1 - x0, dy = y1 - y0;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double inverseSquared = length > 0 ? 1.0 / (length * length) : 0.0;
    const double reachSquared = (half + 0.5) * (half + 0.5);
    // Keep the work bounded for segments projected far off the target.
    const double limit = 4.0 * (target_.width + target_.height);
    if (length > limit * 4) return;
    const double left = std::max(0.0, std::floor(std::min(x0, x1) - half - 1));
    const double right = std::min(double(target_.width), std::ceil(std::max(x0, x1) + half + 1));
    const double top = std::max(0.0, std::floor(std::min(y0, y1) - half - 1));
    const double bottom = std::min(double(target_.height), std::ceil(std::max(y0, y1) + half + 1));
    const bool alongX = std::fabs(dx) >= std::fabs(dy);
    // Walk the long direction; across it only the band the line covers.
    const double from = alongX ? left : top, to = alongX ? right : bottom;
    for (double major = from; major < to; ++major) {
        const double centre = major + 0.5;
        double t = length > 0 ? ((alongX ? centre - x0 : centre - y0) / (alongX ? dx : dy)) : 0.0;
        if (!std::isfinite(t)) t = 0.0;
        const double minor = alongX ? y0 + t * dy : x0 + t * dx;
        const double lo = std::max(alongX ? top : left, std::floor(minor - half - 1));
        const double hi = std::min(alongX ? bottom : right, std::ceil(minor + half + 1));
        for (double m = lo; m < hi; ++m) {
            const double px = alongX ? centre : m + 0.5, py = alongX ? m + 0.5 : centre;
            // Distance to the segment, and where along it the pixel lies;
            // squared first, so that most pixels of the band cost no root.
            double s = length > 0 ? ((px - x0) * dx + (py - y0) * dy) * inverseSquared : 0.0;
            s = std::clamp(s, 0.0, 1.0);
            const double ex = px - (x0 + s * dx), ey = py - (y0 + s * dy);
            const double squared = ex * ex + ey * ey;
            if (squared >= reachSquared) continue;
            const double coverage = std::min(1.0, half + 0.5 - std::sqrt(squared));
            if (coverage <= 0 || (stroke != OverlayStroke::Solid && !StrokeOn(stroke, s * length, w))) continue;
            const auto ix = static_cast<int32_t>(px), iy = static_cast<int32_t>(py);
            if (depth_ && !PixelVisible(ix, iy, z0 + s * (z1 - z0))) continue;
            Blend(ix, iy, color, coverage);
        }
    }
}

void OverlayCanvas::Box(double left, double top, double right, double bottom, uint32_t color, int32_t stroke,
                        OverlayFill fill, int32_t spacing, float width) {
    if (!(right > left) || !(bottom > top)) return;
    const auto x0 = static_cast<int32_t>(std::max(0.0, std::floor(left)));
    const auto x1 = static_cast<int32_t>(std::min(double(target_.width), std::ceil(right)));
    const auto y0 = static_cast<int32_t>(std::max(0.0, std::floor(top)));
    const auto y1 = static_cast<int32_t>(std::min(double(target_.height), std::ceil(bottom)));
    const double gap = std::max(2.0, std::max(spacing, 1) * ratio_);
    for (int32_t y = y0; y < y1; ++y)
        for (int32_t x = x0; x < x1; ++x) {
            uint32_t& pixel = target_.pixels[static_cast<size_t>(y) * static_cast<size_t>(target_.stride) + x];
            switch (fill) {
            case OverlayFill::Invert: pixel = ~pixel & 0x00FFFFFFu; break;
            case OverlayFill::Tint: Blend(x, y, color, 0.25); break;
            case OverlayFill::Solid: pixel = color & 0x00FFFFFFu; break;
            case OverlayFill::Hatched: {
                // Diagonal lines, `spacing` pixels apart, one pixel wide.
                const double phase = std::fmod(double(x - x0) + double(y - y0), gap);
                if (phase < std::max(1.0, ratio_)) Blend(x, y, color, 0.8);
                break;
            }
            default: break;
            }
        }
    if (stroke < 0) return;
    const auto style = static_cast<OverlayStroke>(stroke);
    // The outline runs through the middle of the edge pixels.
    const double inset = std::max(1.0, width * ratio_) / 2.0;
    const double l = left + inset, t = top + inset, r = right - inset, b = bottom - inset;
    Line(l, t, 0, r, t, 0, color, width, style);
    Line(r, t, 0, r, b, 0, color, width, style);
    Line(r, b, 0, l, b, 0, color, width, style);
    Line(l, b, 0, l, t, 0, color, width, style);
}

void OverlayCanvas::Symbol(double x, double y, double z, PointStyle symbol, float size, uint32_t color) {
    const double h = size * ratio_ / 2.0;
    const float w = kOverlaySymbolWidth;
    switch (symbol) {
    case PointStyle::Circle: {
        // A ring: coverage by the distance from the circle, pixel by pixel.
        const double halfWidth = std::max(1.0, w * ratio_) / 2.0;
        const auto x0 = static_cast<int32_t>(std::floor(x - h - halfWidth - 1));
        const auto y0 = static_cast<int32_t>(std::floor(y - h - halfWidth - 1));
        const auto x1 = static_cast<int32_t>(std::ceil(x + h + halfWidth + 1));
        const auto y1 = static_cast<int32_t>(std::ceil(y + h + halfWidth + 1));
        for (int32_t py = y0; py < y1; ++py)
            for (int32_t px = x0; px < x1; ++px) {
                const double d = std::fabs(std::hypot(px + 0.5 - x, py + 0.5 - y) - h);
                const double coverage = std::min(1.0, halfWidth + 0.5 - d);
                if (coverage > 0 && (!depth_ || PixelVisible(px, py, z))) Blend(px, py, color, coverage);
            }
        break;
    }
    default:
        for (const SymbolSegment& g : SymbolSegments(symbol))
            Line(x + g.ax * h, y + g.ay * h, z, x + g.bx * h, y + g.by * h, z, color, w, OverlayStroke::Solid);
        break;
    }
}

}  // namespace vexplot
