#pragma once
#include <pybind11/pybind11.h>

#include "com/ComPtr.h"
#include "com/IUnknown.h"
#include "com/Variant.h"

namespace vexplot::python {

namespace py = pybind11;

// A component reference handed to Python (a VT_DISPATCH or VT_UNKNOWN
// value): opaque there, passed back unchanged when given as an argument.
struct ComHandle {
    ComPtr<IUnknown> object;
};

// An automation object whose members are known (an annotation wrapper or
// collection): Python reaches its members by dispatch name (PyDispatch.cpp).
struct DispatchHandle {
    ComPtr<IDispatch> object;
};

// Python value -> automation argument:
//   None -> VT_EMPTY, bool -> VT_BOOL, int -> VT_I4 (OverflowError outside
//   32 bits), float -> VT_R8, str -> VT_BSTR, a 1-D or 2-D NumPy array (or
//   a nested sequence of numbers) -> VT_ARRAY|VT_R8, ComHandle -> VT_DISPATCH
//   or VT_UNKNOWN, DispatchHandle -> VT_DISPATCH. Anything else raises TypeError.
//
// Arrays keep NumPy's axis order: axis k of the array is dimension k of
// the SafeArray, so a[i, j] is element (i, j). As dimension 0 varies
// fastest in a SafeArray, the values are laid out in Fortran order.
Variant ToVariant(py::handle value);

// Automation value -> Python, the inverse of ToVariant (I2 and I4 -> int,
// R4 and R8 -> float; arrays -> float64 NumPy arrays of the same shape,
// lower bounds dropped; VT_ERROR -> its code, None when it marks a missing
// argument). By-reference values are read through.
py::object FromVariant(const Variant& value);

// Storage for an out parameter of type `type` and the by-reference Variant
// that points at it. The storage is itself a Variant of that type, so it
// can be read back with FromVariant.
class OutSlot {
public:
    explicit OutSlot(VARTYPE type);
    OutSlot(const OutSlot&) = delete;
    OutSlot& operator=(const OutSlot&) = delete;

    Variant Ref();
    py::object Value() const;

private:
    VARTYPE type_;
    int16_t i2_ = 0;
    int32_t i4_ = 0;
    float r4_ = 0;
    double r8_ = 0;
    std::string bstr_;
    VARIANT_BOOL bool_ = VARIANT_FALSE;
    SafeArray array_;
    ComPtr<IDispatch> dispatch_;
    ComPtr<IUnknown> unknown_;
    Variant variant_;
};

}  // namespace vexplot::python
