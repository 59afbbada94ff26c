#pragma once
#include <cstdint>
#include <string_view>

#include "engine/IGraphEngine.h"
#include "opengl/gl/OverlayPen.h"
#include "opengl/text/TextPainter.h"

namespace vexplot {

// Texts of several lines in a box, as the annotation overlay draws labels
// and captions: measured through the engine's TextPainter and drawn with
// an OverlayPen, into pixels or into a drawing.
class TextBoxPainter {
public:
    // The text's size in the font's pixels: the widest line, and the lines'
    // heights summed.
    static TextPainter::Extent Measure(TextPainter& painter, std::string_view text, const FontDescription& font);
    // Draws the box with its top-left corner at (x, y) of the target and the
    // text `padding` inside it; `font` and `padding` are already in the
    // target's pixels.
    // `painter` measures the text; `pen` draws it.
    static void Draw(OverlayPen& pen, TextPainter& painter, double x, double y, std::string_view text,
                     const FontDescription& font, const OverlayTextBox& style, int32_t padding);
    // The engine's default overlay font: 13 pixels of the sans-serif face.
    static FontDescription DefaultFont();
};

}  // namespace vexplot
