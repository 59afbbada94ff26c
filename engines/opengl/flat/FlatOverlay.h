#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "engine/IGraphEngine.h"

namespace vexplot {

class OverlayPen;
class TextPainter;

// The flat view's annotation overlay: shapes in logical client pixels that
// the annotations add before each redraw, painted on the CPU over the
// rendered (or cached) frame, so that moving a marker never renders the
// palette image again.
class FlatOverlay {
public:
    void Clear();
    bool Empty() const { return lines_.empty() && boxes_.empty() && symbols_.empty() && texts_.empty(); }
    // Each checks its arguments: E_POINTER, E_INVALIDARG or S_OK.
    HRESULT AddLines(uint32_t count, const double* xy, uint32_t color, OverlayStroke stroke, float width, bool closed);
    HRESULT AddBox(const OverlayBox* box);
    HRESULT AddSymbol(double x, double y, PointStyle symbol, float size, uint32_t color);
    HRESULT AddTextBox(double x, double y, const char* text, const FontDescription* font, const OverlayTextBox* style);
    // Draws everything with `pen`, scaled by its pixel ratio: boxes first,
    // then lines, symbols and text boxes, each in the order added.
    void Paint(OverlayPen& pen, TextPainter& painter) const;

private:
    struct Lines {
        std::vector<double> xy;
        uint32_t color;
        OverlayStroke stroke;
        float width;
        bool closed;
    };
    struct Symbol {
        double x, y;
        PointStyle symbol;
        float size;
        uint32_t color;
    };
    struct Text {
        double x, y;
        std::string text;
        FontDescription font;
        OverlayTextBox style;
    };
    std::vector<Lines> lines_;
    std::vector<OverlayBox> boxes_;
    std::vector<Symbol> symbols_;
    std::vector<Text> texts_;
};

}  // namespace vexplot
