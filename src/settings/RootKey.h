#pragma once
#include <cstdint>

namespace vexplot {

// The predefined registry roots a key can be opened under. Only the per-user
// root exists on Linux; its value is the Windows handle value, so code and
// records that carry it keep meaning the same thing.
enum class RootKey : uint32_t {
    CurrentUser = 0x80000001,
};

}  // namespace vexplot
