#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/LogicalFont.h"

namespace vexplot {

// The 60-byte logical font record of the platform, as the settings store
// keeps a font ("Font" of the info window): height, width, escapement,
// orientation and weight as little-endian int32, then italic, underline,
// strike-out, character set, output precision, clip precision, quality and
// pitch-and-family as one byte each, then 32 bytes of face name (UTF-8,
// NUL-padded; a face of exactly 32 bytes has no terminator).
//
// LogicalFont keeps no orientation or precision fields: they are written as
// zero and ignored when read.
class LogFontRecord {
public:
    static constexpr size_t kSize = 60;
    static constexpr size_t kFaceBytes = 32;
    using Bytes = std::array<uint8_t, kSize>;

    // The face is cut to 32 bytes at a character boundary.
    static Bytes Encode(const LogicalFont& font);
    // Nothing when the record names no face: no font can be made from it.
    static std::optional<LogicalFont> Decode(const Bytes& bytes);
    // `face` cut to at most `maxBytes` bytes without splitting a UTF-8 character.
    static std::string CutFace(std::string_view face, size_t maxBytes);
};

}  // namespace vexplot
