#pragma once
#include <cstdint>
#include <string>
#include <variant>

#include "com/ComPtr.h"
#include "com/IDispatch.h"
#include "com/SafeArray.h"

namespace vexplot {

using VARTYPE = uint16_t;
using VARIANT_BOOL = int16_t;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

inline constexpr VARTYPE VT_EMPTY = 0;
inline constexpr VARTYPE VT_NULL = 1;
inline constexpr VARTYPE VT_I2 = 2;
inline constexpr VARTYPE VT_I4 = 3;
inline constexpr VARTYPE VT_R4 = 4;
inline constexpr VARTYPE VT_R8 = 5;
inline constexpr VARTYPE VT_BSTR = 8;  // UTF-8 text on this platform
inline constexpr VARTYPE VT_DISPATCH = 9;
inline constexpr VARTYPE VT_ERROR = 10;  // an omitted optional argument carries DISP_E_PARAMNOTFOUND
inline constexpr VARTYPE VT_BOOL = 11;
inline constexpr VARTYPE VT_VARIANT = 12;
inline constexpr VARTYPE VT_UNKNOWN = 13;
inline constexpr VARTYPE VT_ARRAY = 0x2000;
inline constexpr VARTYPE VT_BYREF = 0x4000;
inline constexpr VARTYPE VT_TYPEMASK = 0x0FFF;

// A tagged value of one of the automation types the control uses: empty,
// I2, I4, R4, R8, BSTR (UTF-8), BOOL, DISPATCH, UNKNOWN, an array of R8
// (VT_ARRAY|VT_R8), and the by-reference forms of each, which point at a
// caller's storage for out parameters.
class Variant {
public:
    Variant() = default;
    Variant(int16_t v) : vt_(VT_I2), value_(v) {}
    Variant(int32_t v) : vt_(VT_I4), value_(v) {}
    Variant(float v) : vt_(VT_R4), value_(v) {}
    Variant(double v) : vt_(VT_R8), value_(v) {}
    Variant(std::string v) : vt_(VT_BSTR), value_(std::move(v)) {}
    Variant(const char* v) : Variant(std::string(v ? v : "")) {}
    Variant(ComPtr<IDispatch> v) : vt_(VT_DISPATCH), value_(std::move(v)) {}
    Variant(ComPtr<IUnknown> v) : vt_(VT_UNKNOWN), value_(std::move(v)) {}
    Variant(SafeArray v) : vt_(VT_ARRAY | VT_R8), value_(std::move(v)) {}
    static Variant Bool(bool v);
    static Variant Error(HRESULT code);  // VT_ERROR; Missing() for an omitted argument
    static Variant Missing() { return Error(DISP_E_PARAMNOTFOUND); }

    // By-reference forms: the Variant points at storage the caller keeps alive.
    static Variant Ref(int16_t* p) { return Variant(VT_BYREF | VT_I2, p); }
    static Variant Ref(int32_t* p) { return Variant(VT_BYREF | VT_I4, p); }
    static Variant Ref(float* p) { return Variant(VT_BYREF | VT_R4, p); }
    static Variant Ref(double* p) { return Variant(VT_BYREF | VT_R8, p); }
    static Variant Ref(std::string* p) { return Variant(VT_BYREF | VT_BSTR, p); }
    static Variant BoolRef(VARIANT_BOOL* p) { return Variant(VT_BYREF | VT_BOOL, p); }
    static Variant Ref(ComPtr<IDispatch>* p) { return Variant(VT_BYREF | VT_DISPATCH, p); }
    static Variant Ref(ComPtr<IUnknown>* p) { return Variant(VT_BYREF | VT_UNKNOWN, p); }
    static Variant Ref(SafeArray* p) { return Variant(VT_BYREF | VT_ARRAY | VT_R8, p); }
    static Variant Ref(Variant* p) { return Variant(VT_BYREF | VT_VARIANT, p); }

    VARTYPE Type() const { return vt_; }
    bool IsEmpty() const { return vt_ == VT_EMPTY; }
    bool IsByRef() const { return (vt_ & VT_BYREF) != 0; }
    bool IsMissing() const { return vt_ == VT_ERROR && std::get<int32_t>(value_) == DISP_E_PARAMNOTFOUND; }

    // Direct reads; each requires the matching type (see Type()).
    int16_t I2() const { return std::get<int16_t>(value_); }
    int32_t I4() const { return std::get<int32_t>(value_); }
    float R4() const { return std::get<float>(value_); }
    double R8() const { return std::get<double>(value_); }
    const std::string& Bstr() const { return std::get<std::string>(value_); }
    bool BoolValue() const { return std::get<int16_t>(value_) != VARIANT_FALSE; }
    const ComPtr<IDispatch>& Dispatch() const { return std::get<ComPtr<IDispatch>>(value_); }
    const ComPtr<IUnknown>& Unknown() const { return std::get<ComPtr<IUnknown>>(value_); }
    const SafeArray& Array() const { return std::get<SafeArray>(value_); }

    // The value a by-reference Variant points at (a copy); other Variants
    // return themselves. A reference to a Variant is followed one level.
    Variant Deref() const;

    // VariantChangeType: converts to `target` (a value type, or
    // VT_ARRAY|VT_R8). Numbers round half to even into integers;
    // DISP_E_OVERFLOW when out of range, DISP_E_TYPEMISMATCH when no
    // conversion exists. By-reference sources are dereferenced first.
    HRESULT ChangeType(VARTYPE target, Variant* out) const;

    // Stores `value`, converted to the referenced type, into the storage of
    // a by-reference Variant. E_INVALIDARG when this is not by reference.
    HRESULT AssignThroughRef(const Variant& value) const;

private:
    using Storage = std::variant<std::monostate, int16_t, int32_t, float, double, std::string, ComPtr<IDispatch>,
                                 ComPtr<IUnknown>, SafeArray, void*>;
    Variant(VARTYPE vt, void* ref) : vt_(vt), value_(ref) {}
    HRESULT ToNumber(double* out) const;

    VARTYPE vt_ = VT_EMPTY;
    Storage value_;
};

}  // namespace vexplot
