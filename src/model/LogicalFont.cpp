#include "model/LogicalFont.h"

#include <cstdlib>
#include <cstring>
#include <limits>

namespace vexplot {

namespace {

// The longest prefix of `text` that fits `capacity` bytes without cutting a
// UTF-8 sequence in two.
size_t FittingLength(const std::string& text, size_t capacity) {
    if (text.size() <= capacity) return text.size();
    size_t length = capacity;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    return length;
}

}  // namespace

FontDescription LogicalFont::ToEngineFont() const {
    FontDescription font{};
    std::memcpy(font.face, face.data(), FittingLength(face, sizeof font.face - 1));
    font.height = height == std::numeric_limits<int32_t>::min() ? std::numeric_limits<int32_t>::max()
                                                                : std::abs(height);
    font.weight = weight;
    font.escapement = escapement;
    font.italic = italic ? 1 : 0;
    return font;
}

}  // namespace vexplot
