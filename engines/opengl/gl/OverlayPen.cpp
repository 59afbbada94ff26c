#include "opengl/gl/OverlayPen.h"

#include <algorithm>
#include <array>

namespace vexplot {

std::span<const SymbolSegment> SymbolSegments(PointStyle symbol) {
    static constexpr std::array<SymbolSegment, 4> kSquare{{{-1, -1, 1, -1}, {1, -1, 1, 1}, {1, 1, -1, 1}, {-1, 1, -1, -1}}};
    static constexpr std::array<SymbolSegment, 2> kX{{{-1, -1, 1, 1}, {-1, 1, 1, -1}}};
    static constexpr std::array<SymbolSegment, 2> kCross{{{-1, 0, 1, 0}, {0, -1, 0, 1}}};
    static constexpr std::array<SymbolSegment, 3> kTriangle{{{0, -1, 1, 0.8}, {1, 0.8, -1, 0.8}, {-1, 0.8, 0, -1}}};
    static constexpr std::array<SymbolSegment, 4> kStar{
        {{-1, 0, 1, 0}, {0, -1, 0, 1}, {-0.7, -0.7, 0.7, 0.7}, {-0.7, 0.7, 0.7, -0.7}}};
    switch (symbol) {
    case PointStyle::Square: return kSquare;
    case PointStyle::X: return kX;
    case PointStyle::Cross: return kCross;
    case PointStyle::Triangle: return kTriangle;
    case PointStyle::Star: return kStar;
    default: return {};
    }
}

// Dots as long as the gaps; dashes twice as long as the gaps; both in
// multiples of the line width.
DashPattern DashFor(OverlayStroke stroke, double width) {
    const double unit = std::max(width, 1.0);
    switch (stroke) {
    case OverlayStroke::Dotted: return {1.5 * unit, 3.0 * unit};
    case OverlayStroke::Dashed: return {6.0 * unit, 9.0 * unit};
    default: return {unit, unit};
    }
}

}  // namespace vexplot
