#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vexplot {

// A 128-bit class or interface identifier with the registry's text form
// "{8D5D1D92-6199-4AEC-900A-EF2724B42BB0}".
struct GUID {
    uint32_t Data1 = 0;
    uint16_t Data2 = 0;
    uint16_t Data3 = 0;
    std::array<uint8_t, 8> Data4{};

    friend constexpr bool operator==(const GUID&, const GUID&) = default;
    friend constexpr auto operator<=>(const GUID&, const GUID&) = default;

    // Brace form, upper-case hex digits.
    std::string ToString() const;
    // Accepts the brace form only (as CLSIDFromString does), either case.
    static std::optional<GUID> Parse(std::string_view text);
    // Compile-time literal: GUID::FromLiteral("{...}") in constant expressions.
    static consteval GUID FromLiteral(const char* text);
};
static_assert(sizeof(GUID) == 16, "GUID crosses shared-library boundaries");

using IID = GUID;
using CLSID = GUID;

namespace guid_detail {
constexpr int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}
// Parses the 38-character brace form; false when malformed.
constexpr bool ParseInto(std::string_view t, GUID& g) {
    if (t.size() != 38 || t[0] != '{' || t[37] != '}' || t[9] != '-' || t[14] != '-' ||
        t[19] != '-' || t[24] != '-')
        return false;
    uint8_t bytes[16] = {};
    size_t pos = 1;
    for (int i = 0; i < 16; ++i) {
        if (t[pos] == '-') ++pos;
        const int hi = HexValue(t[pos]), lo = HexValue(t[pos + 1]);
        if (hi < 0 || lo < 0) return false;
        bytes[i] = static_cast<uint8_t>(hi * 16 + lo);
        pos += 2;
    }
    g.Data1 = (uint32_t{bytes[0]} << 24) | (uint32_t{bytes[1]} << 16) | (uint32_t{bytes[2]} << 8) | bytes[3];
    g.Data2 = static_cast<uint16_t>((bytes[4] << 8) | bytes[5]);
    g.Data3 = static_cast<uint16_t>((bytes[6] << 8) | bytes[7]);
    for (int i = 0; i < 8; ++i) g.Data4[static_cast<size_t>(i)] = bytes[8 + i];
    return true;
}
}  // namespace guid_detail

consteval GUID GUID::FromLiteral(const char* text) {
    GUID g;
    if (!guid_detail::ParseInto(std::string_view(text), g)) throw "malformed GUID literal";
    return g;
}

// IUnknown's identifier; every interface answers to it.
inline constexpr IID IID_IUnknown = GUID::FromLiteral("{00000000-0000-0000-C000-000000000046}");
inline constexpr GUID GUID_NULL{};

}  // namespace vexplot

template <>
struct std::hash<vexplot::GUID> {
    size_t operator()(const vexplot::GUID& g) const noexcept {
        uint64_t a = (uint64_t{g.Data1} << 32) | (uint64_t{g.Data2} << 16) | g.Data3;
        uint64_t b = 0;
        for (uint8_t byte : g.Data4) b = (b << 8) | byte;
        return std::hash<uint64_t>{}(a ^ (b * 0x9E3779B97F4A7C15ull));
    }
};
