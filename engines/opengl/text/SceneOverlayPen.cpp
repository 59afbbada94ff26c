#include "opengl/text/SceneOverlayPen.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace vexplot {

namespace {

// Points of the polygon that stands for a symbol's ring.
constexpr int kRingPoints = 32;

bool Finite(double a, double b, double c, double d) {
    return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d);
}

}  // namespace

SceneOverlayPen::SceneOverlayPen(ISceneSink& sink, int32_t width, int32_t height, double ratio, Visibility visible)
    : sink_(sink), width_(width), height_(height), ratio_(ratio > 0 && std::isfinite(ratio) ? ratio : 1.0),
      visible_(std::move(visible)) {}

void SceneOverlayPen::Segment(double x0, double y0, double x1, double y1, uint32_t color, double width) {
    const ScenePoint ends[2] = {{float(x0), float(y0)}, {float(x1), float(y1)}};
    sink_.AddPolyline(2, ends, color & 0x00FFFFFFu, float(width));
}

void SceneOverlayPen::Line(double x0, double y0, double z0, double x1, double y1, double z1, uint32_t color,
                           float width, OverlayStroke stroke) {
    if (!Finite(x0, y0, x1, y1)) return;
    const double w = std::max(1.0, double(width) * ratio_);
    const double dx = x1 - x0, dy = y1 - y0, length = std::hypot(dx, dy);
    // A segment projected far off the picture would cost a piece a pixel.
    if (length > 16.0 * (width_ + height_)) return;
    auto at = [&](double along, double& x, double& y) {
        const double t = length > 0 ? along / length : 0.0;
        x = x0 + t * dx;
        y = y0 + t * dy;
        return z0 + t * (z1 - z0);
    };
    auto piece = [&](double a, double b) {
        double xa = 0, ya = 0, xb = 0, yb = 0;
        at(a, xa, ya);
        at(b, xb, yb);
        Segment(xa, ya, xb, yb, color, w);
    };
    // The stretch [a, b] (along the line) without what hides it, seen a
    // pixel at a time as the screen sees it.
    auto draw = [&](double a, double b) {
        if (!visible_) {
            piece(a, b);
            return;
        }
        const int steps = std::max(1, static_cast<int>(std::ceil(b - a)));
        double run = -1;
        for (int i = 0; i < steps; ++i) {
            const double s = a + (b - a) * i / steps, e = a + (b - a) * (i + 1) / steps;
            double xm = 0, ym = 0;
            const double zm = at((s + e) / 2, xm, ym);
            const bool seen = visible_(xm, ym, zm);
            if (seen && run < 0) {
                run = s;
            } else if (!seen && run >= 0) {
                piece(run, s);
                run = -1;
            }
        }
        if (run >= 0) piece(run, b);
    };
    if (stroke == OverlayStroke::Solid) {
        draw(0, length);
        return;
    }
    const DashPattern dash = DashFor(stroke, w);
    for (double s = 0; s < length; s += dash.period) draw(s, std::min(length, s + dash.on));
}

void SceneOverlayPen::Box(double left, double top, double right, double bottom, uint32_t color, int32_t stroke,
                          OverlayFill fill, int32_t spacing, float width) {
    if (!(right > left) || !(bottom > top) || !Finite(left, top, right, bottom)) return;
    if (fill == OverlayFill::Solid) {
        const ScenePoint corners[4] = {{float(left), float(top)}, {float(right), float(top)},
                                       {float(right), float(bottom)}, {float(left), float(bottom)}};
        sink_.AddPolygon(4, corners, color & 0x00FFFFFFu, color & 0x00FFFFFFu, 0);
    } else if (fill == OverlayFill::Hatched) {
        Hatch(left, top, right, bottom, color, spacing);
    }
    if (stroke < 0) return;
    // The outline runs through the middle of the edge pixels, as on screen.
    const double inset = std::max(1.0, double(width) * ratio_) / 2.0;
    const double l = left + inset, t = top + inset, r = right - inset, b = bottom - inset;
    const auto style = static_cast<OverlayStroke>(stroke);
    const Visibility keep = std::exchange(visible_, Visibility{});  // a box is drawn whole
    Line(l, t, 0, r, t, 0, color, width, style);
    Line(r, t, 0, r, b, 0, color, width, style);
    Line(r, b, 0, l, b, 0, color, width, style);
    Line(l, b, 0, l, t, 0, color, width, style);
    visible_ = keep;
}

// Diagonal lines from the bottom left to the top right, `spacing` logical
// pixels apart, each clipped to the box: the lines x + y = c.
void SceneOverlayPen::Hatch(double left, double top, double right, double bottom, uint32_t color, int32_t spacing) {
    const double gap = std::max(2.0, std::max(spacing, 1) * ratio_);
    const double w = std::max(1.0, ratio_);
    for (double c = left + top + gap / 2; c < right + bottom; c += gap) {
        const double xa = std::max(left, c - bottom), xb = std::min(right, c - top);
        if (xb > xa) Segment(xa, c - xa, xb, c - xb, color, w);
    }
}

void SceneOverlayPen::Symbol(double x, double y, PointStyle symbol, float size, uint32_t color) {
    const double h = size * ratio_ / 2.0;
    const double w = std::max(1.0, double(kOverlaySymbolWidth) * ratio_);
    if (symbol == PointStyle::Circle) {
        std::vector<ScenePoint> ring;
        for (int k = 0; k <= kRingPoints; ++k) {
            const double a = 2 * std::numbers::pi * k / kRingPoints;
            ring.push_back({float(x + h * std::cos(a)), float(y + h * std::sin(a))});
        }
        sink_.AddPolyline(uint32_t(ring.size()), ring.data(), color & 0x00FFFFFFu, float(w));
        return;
    }
    for (const SymbolSegment& g : SymbolSegments(symbol))
        Segment(x + g.ax * h, y + g.ay * h, x + g.bx * h, y + g.by * h, color, w);
}

void SceneOverlayPen::Text(double x, double y, std::string_view line, const FontDescription& font, uint32_t color) {
    const std::string text(line);
    sink_.AddText(text.c_str(), float(x), float(y), SceneAnchor::TopLeft, &font, color & 0x00FFFFFFu);
}

}  // namespace vexplot
