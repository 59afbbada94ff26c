#include "opengl/text/PixelOverlayPen.h"

#include <cmath>

#include "opengl/text/TextPainter.h"

namespace vexplot {

void PixelOverlayPen::Text(double x, double y, std::string_view line, const FontDescription& font, uint32_t color) {
    painter_.Draw(target_, line, static_cast<int32_t>(std::lround(x)), static_cast<int32_t>(std::lround(y)),
                  TextPainter::Anchor::TopLeft, font, color);
}

}  // namespace vexplot
