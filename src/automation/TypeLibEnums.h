#pragma once
#include <cstdint>
#include <vector>

namespace vexplot {

// The enumerations the type library publishes, with their values, for hosts
// and script bindings that want the names rather than the numbers.
struct TypeLibEnum {
    struct Value {
        const char* name;
        int32_t value;
    };
    const char* name;
    std::vector<Value> values;
};

const std::vector<TypeLibEnum>& TypeLibEnums();

}  // namespace vexplot
