#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/IGraphEngine.h"

namespace vexplot {

// The length of the longest prefix of `text` that fits `capacity` bytes
// without cutting a UTF-8 sequence in two: how a face name is cut to the
// fixed field of a font record.
size_t Utf8FittingLength(std::string_view text, size_t capacity);

// A font as the model keeps and saves it: the fields of the platform's
// logical font record that the control uses. Heights are in pixels; a
// negative height means the character height without internal leading,
// as the saved states and settings of the control have always held it.
struct LogicalFont {
    static constexpr uint8_t kDefaultCharset = 1;  // DEFAULT_CHARSET
    static constexpr uint8_t kSwiss = 0x20;        // FF_SWISS, default pitch

    std::string face = "Arial";  // UTF-8
    int32_t height = 0;
    int32_t width = 0;       // 0: the face's own aspect
    int32_t escapement = 0;  // tenths of a degree, counter-clockwise (900 = upwards)
    int32_t weight = 400;    // 400 normal, 700 bold
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    uint8_t charset = kDefaultCharset;
    uint8_t pitchAndFamily = kSwiss;

    // The engine's form: the face cut to at most 31 bytes at a character
    // boundary, the height as a positive pixel count. Underline and
    // strike-out have no engine form.
    FontDescription ToEngineFont() const;

    friend bool operator==(const LogicalFont&, const LogicalFont&) = default;
};

}  // namespace vexplot
