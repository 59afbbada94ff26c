#include "settings/RegistryValue.h"

#include <algorithm>

namespace vexplot {

RegistryValue RegistryValue::String(std::string_view name, std::string_view text) {
    RegistryValue value{std::string(name), ValueType::String, {text.begin(), text.end()}};
    value.data.push_back(0);
    return value;
}

RegistryValue RegistryValue::Dword(std::string_view name, int32_t value) {
    const auto bits = static_cast<uint32_t>(value);
    return {std::string(name), ValueType::Dword,
            {static_cast<uint8_t>(bits), static_cast<uint8_t>(bits >> 8),
             static_cast<uint8_t>(bits >> 16), static_cast<uint8_t>(bits >> 24)}};
}

std::string RegistryValue::Text() const {
    return std::string(data.begin(), std::find(data.begin(), data.end(), uint8_t{0}));
}

std::optional<int32_t> RegistryValue::DwordValue() const {
    if (data.size() != 4) {
        return std::nullopt;
    }
    const uint32_t bits = data[0] | data[1] << 8 | data[2] << 16 | uint32_t{data[3]} << 24;
    return static_cast<int32_t>(bits);
}

}  // namespace vexplot
