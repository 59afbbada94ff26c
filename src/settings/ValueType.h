#pragma once
#include <cstdint>

namespace vexplot {

// The kind of a stored value, numbered as the registry numbers them
// (REG_SZ, REG_BINARY, REG_DWORD). A store written by a newer build may hold
// other numbers; they are kept and shown, never reinterpreted.
enum class ValueType : uint32_t {
    String = 1,
    Binary = 3,
    Dword = 4,
};

}  // namespace vexplot
