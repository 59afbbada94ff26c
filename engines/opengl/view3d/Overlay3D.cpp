#include "opengl/view3d/Overlay3D.h"

#include <cmath>

#include "opengl/gl/PixelScale.h"
#include "opengl/text/TextBoxPainter.h"

namespace vexplot {

namespace {

bool Finite(const Point3& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

}  // namespace

void Overlay3D::Clear() {
    strokes_.clear();
    symbols_.clear();
    texts_.clear();
}

HRESULT Overlay3D::AddStroke(uint32_t count, const Point3* points, uint32_t color, OverlayStroke stroke, float width,
                             bool closed) {
    if (!points) return E_POINTER;
    if (count < 2 || !(width > 0) || !std::isfinite(width)) return E_INVALIDARG;
    for (uint32_t i = 0; i < count; ++i)
        if (!Finite(points[i])) return E_INVALIDARG;
    strokes_.push_back({std::vector<Point3>(points, points + count), color & 0x00FFFFFFu, stroke, width, closed});
    return S_OK;
}

HRESULT Overlay3D::AddSymbol(const Point3* at, PointStyle symbol, float size, uint32_t color) {
    if (!at) return E_POINTER;
    if (!Finite(*at) || !(size > 0) || !std::isfinite(size)) return E_INVALIDARG;
    symbols_.push_back({*at, symbol, size, color & 0x00FFFFFFu});
    return S_OK;
}

HRESULT Overlay3D::AddTextBox(const Point3* at, int32_t dx, int32_t dy, const char* text, const FontDescription* font,
                              const OverlayTextBox* style) {
    if (!at || !text || !style) return E_POINTER;
    if (!Finite(*at)) return E_INVALIDARG;
    FontDescription f = font ? *font : TextBoxPainter::DefaultFont();
    f.face[sizeof(f.face) - 1] = '\0';
    texts_.push_back({*at, dx, dy, text, f, *style});
    return S_OK;
}

void Overlay3D::Paint(OverlayPen& pen, const Project& project, TextPainter& painter) const {
    for (const Stroke& s : strokes_) {
        const size_t n = s.points.size();
        const size_t segments = s.closed ? n : n - 1;
        for (size_t i = 0; i < segments; ++i) {
            double ax = 0, ay = 0, az = 0, bx = 0, by = 0, bz = 0;
            if (!project(s.points[i], ax, ay, az) || !project(s.points[(i + 1) % n], bx, by, bz)) continue;
            pen.Line(ax, ay, az, bx, by, bz, s.color, s.width, s.stroke);
        }
    }
    // Symbols and texts are drawn whole once their anchor is seen: a
    // symbol cut by the surface would read as a different symbol.
    for (const Symbol& s : symbols_) {
        double x = 0, y = 0, z = 0;
        if (project(s.at, x, y, z) && pen.Visible(x, y, z)) pen.Symbol(x, y, s.symbol, s.size, s.color);
    }
    const PixelScale scale(pen.Ratio());
    for (const Text& t : texts_) {
        double x = 0, y = 0, z = 0;
        if (!project(t.at, x, y, z) || !pen.Visible(x, y, z)) continue;
        TextBoxPainter::Draw(pen, painter, x + scale.Pixels(t.dx), y + scale.Pixels(t.dy), t.text,
                             scale.Font(t.font), t.style, scale.Pixels(t.style.padding));
    }
}

}  // namespace vexplot
