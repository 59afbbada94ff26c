#pragma once
#include <cstdint>
#include <span>
#include <string_view>

#include "engine/IGraphEngine.h"

namespace vexplot {

// What the annotation overlays draw with: the pixels of a frame or the
// items of a drawing, so that the screen, the raster exports and the vector
// exports show the same marks. Coordinates are the target's pixels, y down;
// widths and symbol sizes are logical pixels, scaled by Ratio(); fonts and
// paddings come already in the target's pixels.
class OverlayPen {
public:
    virtual ~OverlayPen() = default;

    virtual double Ratio() const = 0;
    // Whether a point at window depth z is in front of the scene (always
    // true where nothing hides the overlay).
    virtual bool Visible(double x, double y, double z) const = 0;
    // A segment with window depths z0, z1; its parts behind the scene are
    // left out.
    virtual void Line(double x0, double y0, double z0, double x1, double y1, double z1, uint32_t color, float width,
                      OverlayStroke stroke) = 0;
    // A box: fill, then the outline (`stroke` -1 for none).
    virtual void Box(double left, double top, double right, double bottom, uint32_t color, int32_t stroke,
                     OverlayFill fill, int32_t spacing, float width) = 0;
    // A symbol of `size` logical pixels centred on (x, y), drawn whole.
    virtual void Symbol(double x, double y, PointStyle symbol, float size, uint32_t color) = 0;
    // One line of text with its top-left corner at (x, y).
    virtual void Text(double x, double y, std::string_view line, const FontDescription& font, uint32_t color) = 0;
};

// A stroke of a point symbol in units of half the symbol's size, y down.
struct SymbolSegment {
    double ax, ay, bx, by;
};
// The strokes of `symbol`; the circle is a ring of radius 1 and has none.
std::span<const SymbolSegment> SymbolSegments(PointStyle symbol);
// The width of a symbol's strokes, logical pixels.
inline constexpr float kOverlaySymbolWidth = 1.5f;

// Dashes of a stroke `width` pixels wide: `on` pixels drawn at the start of
// every `period`. A solid stroke has on == period.
struct DashPattern {
    double on, period;
};
DashPattern DashFor(OverlayStroke stroke, double width);

}  // namespace vexplot
