#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "com/Variant.h"

namespace vexplot {

// The arguments and results of one Invoke as a member's handler sees them:
// arguments in natural order, already converted to the declared types (a
// by-reference argument keeps its reference, for Out). The property-put
// value is argument 0.
class DispatchCall {
public:
    DispatchCall(std::vector<Variant> args, Variant* result) : args_(std::move(args)), result_(result) {}

    size_t Count() const { return args_.size(); }
    const Variant& Arg(size_t i) const { return args_.at(i); }
    int16_t I2(size_t i) const { return args_.at(i).I2(); }
    int32_t I4(size_t i) const { return args_.at(i).I4(); }
    float R4(size_t i) const { return args_.at(i).R4(); }
    double R8(size_t i) const { return args_.at(i).R8(); }
    const std::string& Bstr(size_t i) const { return args_.at(i).Bstr(); }
    bool Bool(size_t i) const { return args_.at(i).BoolValue(); }

    // The member's result, when the client asked for one.
    void Return(Variant value) {
        if (result_) *result_ = std::move(value);
    }
    // Writes `value` into the by-reference argument `i`.
    HRESULT Out(size_t i, const Variant& value) const { return args_.at(i).AssignThroughRef(value); }

private:
    std::vector<Variant> args_;
    Variant* result_;
};

}  // namespace vexplot
