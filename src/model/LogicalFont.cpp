#include "model/LogicalFont.h"

#include <cstdlib>
#include <cstring>
#include <limits>

namespace vexplot {

size_t Utf8FittingLength(std::string_view text, size_t capacity) {
    if (text.size() <= capacity) return text.size();
    size_t length = capacity;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    return length;
}

FontDescription LogicalFont::ToEngineFont() const {
    FontDescription font{};
    std::memcpy(font.face, face.data(), Utf8FittingLength(face, sizeof font.face - 1));
    font.height = height == std::numeric_limits<int32_t>::min() ? std::numeric_limits<int32_t>::max()
                                                                : std::abs(height);
    font.weight = weight;
    font.escapement = escapement;
    font.italic = italic ? 1 : 0;
    return font;
}

}  // namespace vexplot
