#include "control/ControlStateKey.h"

#include <limits>
#include <new>

#include "settings/CRegistryKey.h"
#include "settings/RegistryStatus.h"

namespace vexplot {

int32_t ControlStateKey::Read(std::string_view keyPath, std::vector<uint8_t>* bytes) const {
    CRegistryKey key(sink_, store_);
    if (!key.OpenUnder(RootKey::CurrentUser, keyPath)) return kKey;
    const auto size = key.QueryValue(kSizeValue);
    const std::optional<int32_t> count = size && size->type == ValueType::Dword ? size->DwordValue() : std::nullopt;
    if (!count || *count < 0) return kSize;
    // The bytes are copied out of the store here: the only allocation.
    std::optional<RegistryValue> state;
    try {
        state = key.QueryValue(kStateValue);
    } catch (const std::bad_alloc&) {
        return kMemory;
    }
    if (!state || state->type != ValueType::Binary || state->data.size() != static_cast<size_t>(*count))
        return kState;
    *bytes = std::move(state->data);
    return kNone;
}

int32_t ControlStateKey::Write(std::string_view keyPath, std::span<const uint8_t> bytes) const {
    if (bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return kSize;
    CRegistryKey key(sink_, store_);
    if (!key.OpenUnder(RootKey::CurrentUser, keyPath)) return kKey;
    if (key.WriteInt(kSizeValue, static_cast<int32_t>(bytes.size())) != RegistryStatus::kSuccess) return kSize;
    if (key.WriteBinary(kStateValue, bytes.data(), bytes.size()) != RegistryStatus::kSuccess) return kState;
    return kNone;
}

}  // namespace vexplot
