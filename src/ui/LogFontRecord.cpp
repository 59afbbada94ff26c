#include "ui/LogFontRecord.h"

#include <cstring>
#include <string>

namespace vexplot {

namespace {

constexpr size_t kItalic = 20;
constexpr size_t kUnderline = 21;
constexpr size_t kStrikeOut = 22;
constexpr size_t kCharset = 23;
constexpr size_t kPitchAndFamily = 27;
constexpr size_t kFace = 28;

void PutInt(LogFontRecord::Bytes& bytes, size_t at, int32_t value) {
    const auto u = static_cast<uint32_t>(value);
    for (size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<uint8_t>(u >> (8 * i));
}

int32_t GetInt(const LogFontRecord::Bytes& bytes, size_t at) {
    uint32_t u = 0;
    for (size_t i = 0; i < 4; ++i) u |= static_cast<uint32_t>(bytes[at + i]) << (8 * i);
    return static_cast<int32_t>(u);
}

}  // namespace

std::string LogFontRecord::CutFace(std::string_view face, size_t maxBytes) {
    return std::string(face.substr(0, Utf8FittingLength(face, maxBytes)));
}

LogFontRecord::Bytes LogFontRecord::Encode(const LogicalFont& font) {
    Bytes bytes{};
    PutInt(bytes, 0, font.height);
    PutInt(bytes, 4, font.width);
    PutInt(bytes, 8, font.escapement);
    PutInt(bytes, 12, 0);  // orientation
    PutInt(bytes, 16, font.weight);
    bytes[kItalic] = font.italic ? 1 : 0;
    bytes[kUnderline] = font.underline ? 1 : 0;
    bytes[kStrikeOut] = font.strikeOut ? 1 : 0;
    bytes[kCharset] = font.charset;
    bytes[kPitchAndFamily] = font.pitchAndFamily;
    const std::string face = CutFace(font.face, kFaceBytes);
    std::memcpy(bytes.data() + kFace, face.data(), face.size());
    return bytes;
}

std::optional<LogicalFont> LogFontRecord::Decode(const Bytes& bytes) {
    size_t length = 0;
    while (length < kFaceBytes && bytes[kFace + length] != 0) ++length;
    if (length == 0) return std::nullopt;
    LogicalFont font;
    font.face.assign(reinterpret_cast<const char*>(bytes.data() + kFace), length);
    font.height = GetInt(bytes, 0);
    font.width = GetInt(bytes, 4);
    font.escapement = GetInt(bytes, 8);
    font.weight = GetInt(bytes, 16);
    font.italic = bytes[kItalic] != 0;
    font.underline = bytes[kUnderline] != 0;
    font.strikeOut = bytes[kStrikeOut] != 0;
    font.charset = bytes[kCharset];
    font.pitchAndFamily = bytes[kPitchAndFamily];
    return font;
}

}  // namespace vexplot
