#include "opengl/text/TextBoxPainter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vexplot {

namespace {

template <class Each>
void ForEachLine(std::string_view text, Each each) {
    size_t start = 0;
    while (true) {
        const size_t end = text.find('\n', start);
        each(text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
        if (end == std::string_view::npos) return;
        start = end + 1;
    }
}

}  // namespace

FontDescription TextBoxPainter::DefaultFont() {
    FontDescription font{};
    std::strncpy(font.face, "Sans", sizeof(font.face) - 1);
    font.height = -13;
    font.weight = 400;
    return font;
}

TextPainter::Extent TextBoxPainter::Measure(TextPainter& painter, std::string_view text, const FontDescription& font) {
    TextPainter::Extent total{0, 0, 0};
    ForEachLine(text, [&](std::string_view line) {
        const TextPainter::Extent e = painter.Measure(line.empty() ? std::string_view(" ") : line, font);
        total.width = std::max(total.width, line.empty() ? 0 : e.width);
        if (total.height == 0) total.ascent = e.ascent;
        total.height += e.height;
    });
    return total;
}

void TextBoxPainter::Draw(OverlayPen& pen, TextPainter& painter, double x, double y, std::string_view text,
                          const FontDescription& font, const OverlayTextBox& style, int32_t padding) {
    const TextPainter::Extent extent = Measure(painter, text, font);
    const double right = x + extent.width + 2 * padding, bottom = y + extent.height + 2 * padding;
    if (style.boxColor != kOverlayNoColor)
        pen.Box(x, y, right, bottom, style.boxColor, -1, OverlayFill::Solid, 1, 1.0f);
    if (style.borderColor != kOverlayNoColor)
        pen.Box(x, y, right, bottom, style.borderColor, static_cast<int32_t>(OverlayStroke::Solid), OverlayFill::None,
                1, 1.0f);
    double lineTop = y + padding;
    ForEachLine(text, [&](std::string_view line) {
        const TextPainter::Extent e = painter.Measure(line.empty() ? std::string_view(" ") : line, font);
        if (!line.empty())
            pen.Text(std::round(x + padding), std::round(lineTop), line, font, style.textColor & 0x00FFFFFFu);
        lineTop += e.height;
    });
}

}  // namespace vexplot
