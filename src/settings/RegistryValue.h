#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/ValueType.h"

namespace vexplot {

// One stored value as the store keeps it: the name in the case first
// written, the type, and the raw bytes in the registry's layout, so sizes
// and bytes agree with what the Windows build stored.
struct RegistryValue {
    std::string name;
    ValueType type = ValueType::Binary;
    std::vector<uint8_t> data;

    // makers:
    // REG_SZ: the text and its terminating NUL.
    static RegistryValue String(std::string_view name, std::string_view text);
    // REG_DWORD: 4 bytes, little-endian.
    static RegistryValue Dword(std::string_view name, int32_t value);

    // readers (they look at the bytes only; checking the type is the caller's):
    // The bytes up to the first NUL (a value written by another tool may lack one).
    std::string Text() const;
    // The 32-bit value, when there are exactly 4 bytes.
    std::optional<int32_t> DwordValue() const;
};

}  // namespace vexplot
