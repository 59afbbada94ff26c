#include "opengl/flat/FlatOverlay.h"

#include <cmath>
#include <cstring>

#include "opengl/gl/PixelScale.h"
#include "opengl/text/TextBoxPainter.h"

namespace vexplot {

namespace {

bool Finite(double a, double b) { return std::isfinite(a) && std::isfinite(b); }

FontDescription TerminatedFont(const FontDescription* font) {
    if (!font) return TextBoxPainter::DefaultFont();
    FontDescription copy = *font;
    copy.face[sizeof(copy.face) - 1] = '\0';
    return copy;
}

}  // namespace

void FlatOverlay::Clear() {
    lines_.clear();
    boxes_.clear();
    symbols_.clear();
    texts_.clear();
}

HRESULT FlatOverlay::AddLines(uint32_t count, const double* xy, uint32_t color, OverlayStroke stroke, float width,
                              bool closed) {
    if (!xy) return E_POINTER;
    if (count < 2 || !(width > 0) || !std::isfinite(width)) return E_INVALIDARG;
    for (uint32_t i = 0; i < count; ++i)
        if (!Finite(xy[2 * i], xy[2 * i + 1])) return E_INVALIDARG;
    lines_.push_back({std::vector<double>(xy, xy + 2 * size_t(count)), color & 0x00FFFFFFu, stroke, width, closed});
    return S_OK;
}

HRESULT FlatOverlay::AddBox(const OverlayBox* box) {
    if (!box) return E_POINTER;
    if (box->fill < 0 || box->fill > static_cast<int32_t>(OverlayFill::Solid) || box->stroke > 2) return E_INVALIDARG;
    boxes_.push_back(*box);
    return S_OK;
}

HRESULT FlatOverlay::AddSymbol(double x, double y, PointStyle symbol, float size, uint32_t color) {
    if (!Finite(x, y) || !(size > 0) || !std::isfinite(size)) return E_INVALIDARG;
    symbols_.push_back({x, y, symbol, size, color & 0x00FFFFFFu});
    return S_OK;
}

HRESULT FlatOverlay::AddTextBox(double x, double y, const char* text, const FontDescription* font,
                                const OverlayTextBox* style) {
    if (!text || !style) return E_POINTER;
    if (!Finite(x, y)) return E_INVALIDARG;
    texts_.push_back({x, y, text, TerminatedFont(font), *style});
    return S_OK;
}

void FlatOverlay::Paint(OverlayPen& pen, TextPainter& painter) const {
    const double r = pen.Ratio();
    for (const OverlayBox& b : boxes_)
        pen.Box(b.rect.left * r, b.rect.top * r, b.rect.right * r, b.rect.bottom * r, b.color & 0x00FFFFFFu, b.stroke,
                static_cast<OverlayFill>(b.fill), b.spacing, b.lineWidth);
    for (const Lines& l : lines_) {
        const size_t n = l.xy.size() / 2;
        const size_t segments = l.closed ? n : n - 1;
        for (size_t i = 0; i < segments; ++i) {
            const size_t j = (i + 1) % n;
            pen.Line(l.xy[2 * i] * r, l.xy[2 * i + 1] * r, 0, l.xy[2 * j] * r, l.xy[2 * j + 1] * r, 0, l.color,
                     l.width, l.stroke);
        }
    }
    for (const Symbol& s : symbols_) pen.Symbol(s.x * r, s.y * r, s.symbol, s.size, s.color);
    const PixelScale scale(r);
    for (const Text& t : texts_)
        TextBoxPainter::Draw(pen, painter, t.x * r, t.y * r, t.text, scale.Font(t.font), t.style,
                             scale.Pixels(t.style.padding));
}

}  // namespace vexplot
