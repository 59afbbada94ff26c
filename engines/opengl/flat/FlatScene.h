#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "engine/IGraphEngine.h"
#include "opengl/flat/FlatRenderer.h"
#include "opengl/gl/PixelScale.h"
#include "opengl/text/TextPainter.h"

namespace vexplot {

// A text of the flat view, drawn on the CPU after the GL picture is read back.
struct FlatText {
    std::string text;
    int32_t x, y;
    TextPainter::Anchor anchor;
    FontDescription font;
    uint32_t color;
};

// Everything the device knows about one axis of the flat view.
struct FlatAxis {
    AxisStyle style{0xFFFF80, 0xC0C0C0, 0xACACAC, 5, 1, 1, 1, 1};
    std::vector<double> ticks;        // major tick positions in data units
    std::vector<std::string> texts;   // one per tick, may hold \SUP
    std::string label;
    FontDescription numberFont{"Arial", 12, 400, 0, 0};
    FontDescription labelFont{"Arial", 14, 400, 0, 0};
};

// The data range of an axis and the pixels it spans: value `lo` lies at
// pixel `pixelLo`, `hi` at `pixelHi` (either way round, for mirroring and
// for vertical axes that grow upwards).
struct AxisSpan {
    double lo, hi;
    double pixelLo, pixelHi;
    double ToPixel(double v) const;
    bool Contains(double v) const;
};

// The lines and texts of the flat view's axes and grid lines, built from
// the axes' state and the layout. Plain geometry; the renderer draws it.
// Rectangles and spans are in the target's pixels; `scale` turns the
// scene's own lengths (tick marks, gaps, line width) and the axes' fonts
// into them.
class FlatScene {
public:
    enum class Side { Bottom, Left, Right };

    explicit FlatScene(TextPainter& text, PixelScale scale = PixelScale()) : text_(text), scale_(scale) {}

    // Axis line along `side` of `rect`, major and minor tick marks pointing
    // away from it, tick texts and the label (rotated for the vertical sides).
    void AddAxis(const FlatAxis& axis, Side side, const PixelRect& rect, const AxisSpan& span);
    // Minor then major grid lines across `rect`, perpendicular to `side`'s axis.
    void AddGrid(const FlatAxis& axis, Side side, const PixelRect& rect, const AxisSpan& span);

    // Minor tick positions inside [lo, hi]: each major step divided into
    // minorCount + 1 parts, extended one step beyond the first and last major.
    static std::vector<double> MinorTicks(const std::vector<double>& majors, int32_t minorCount, double lo,
                                          double hi);
    // About `count` evenly spaced round values covering [lo, hi], for an
    // axis that was given no ticks; texts in the shortest "%g" form.
    static void AutoTicks(double lo, double hi, int32_t count, std::vector<double>& values,
                          std::vector<std::string>& texts);

    std::vector<FlatLine> lines;
    std::vector<FlatText> texts;

private:
    // The centre of a thin line (LineWidth) through `pixel`, kept inside
    // [from, to), with its edges on pixel boundaries so that it stays crisp.
    float Snap(double pixel, int32_t from, int32_t to) const;
    // Grid lines, tick marks and axis lines: one logical pixel, rounded to
    // whole target pixels so that they stay crisp at any ratio.
    float LineWidth() const;

    TextPainter& text_;
    PixelScale scale_;
};

}  // namespace vexplot
