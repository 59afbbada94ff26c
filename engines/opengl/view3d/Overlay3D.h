#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "engine/IGraphEngine.h"

namespace vexplot {

class OverlayPen;
class TextPainter;

// The 3-D view's annotation overlay of data points: stroked polylines,
// symbols and text boxes, painted on the CPU over the rendered scene at
// every Draw. The scene is not rendered again when only the overlay
// changes; with the scene's depth image, what the surface hides is left
// out (lines pixel by pixel, symbols and texts by their anchor point).
class Overlay3D {
public:
    // A data point to target pixels (physical) and window depth; false when
    // it lies behind the eye.
    using Project = std::function<bool(const Point3& point, double& x, double& y, double& depth)>;

    void Clear();
    bool Empty() const { return strokes_.empty() && symbols_.empty() && texts_.empty(); }
    // Each checks its arguments: E_POINTER, E_INVALIDARG or S_OK.
    HRESULT AddStroke(uint32_t count, const Point3* points, uint32_t color, OverlayStroke stroke, float width,
                      bool closed);
    HRESULT AddSymbol(const Point3* at, PointStyle symbol, float size, uint32_t color);
    HRESULT AddTextBox(const Point3* at, int32_t dx, int32_t dy, const char* text, const FontDescription* font,
                       const OverlayTextBox* style);
    // Draws strokes, then symbols, then text boxes with `pen`, which leaves
    // out what the scene hides.
    void Paint(OverlayPen& pen, const Project& project, TextPainter& painter) const;

private:
    struct Stroke {
        std::vector<Point3> points;
        uint32_t color;
        OverlayStroke stroke;
        float width;
        bool closed;
    };
    struct Symbol {
        Point3 at;
        PointStyle symbol;
        float size;
        uint32_t color;
    };
    struct Text {
        Point3 at;
        int32_t dx, dy;
        std::string text;
        FontDescription font;
        OverlayTextBox style;
    };
    std::vector<Stroke> strokes_;
    std::vector<Symbol> symbols_;
    std::vector<Text> texts_;
};

}  // namespace vexplot
