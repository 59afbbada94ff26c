#include "com/Variant.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace vexplot {

// Built in place: moving a whole Storage in makes GCC 12 warn about
// alternatives that are never read.
Variant Variant::Bool(bool v) {
    Variant result;
    result.vt_ = VT_BOOL;
    result.value_.emplace<int16_t>(v ? VARIANT_TRUE : VARIANT_FALSE);
    return result;
}

Variant Variant::Error(HRESULT code) {
    Variant result;
    result.vt_ = VT_ERROR;
    result.value_.emplace<int32_t>(code);
    return result;
}

Variant Variant::Deref() const {
    if (!IsByRef()) return *this;
    void* p = std::get<void*>(value_);
    switch (vt_ & ~VT_BYREF) {
        case VT_I2: return Variant(*static_cast<int16_t*>(p));
        case VT_I4: return Variant(*static_cast<int32_t*>(p));
        case VT_R4: return Variant(*static_cast<float*>(p));
        case VT_R8: return Variant(*static_cast<double*>(p));
        case VT_BSTR: return Variant(*static_cast<std::string*>(p));
        case VT_BOOL: return Bool(*static_cast<VARIANT_BOOL*>(p) != VARIANT_FALSE);
        case VT_DISPATCH: return Variant(*static_cast<ComPtr<IDispatch>*>(p));
        case VT_UNKNOWN: return Variant(*static_cast<ComPtr<IUnknown>*>(p));
        case VT_ARRAY | VT_R8: return Variant(*static_cast<SafeArray*>(p));
        case VT_VARIANT: return *static_cast<Variant*>(p);
        default: return Variant();
    }
}

// Any scalar as a double: the common ground of the numeric conversions.
HRESULT Variant::ToNumber(double* out) const {
    switch (vt_) {
        case VT_EMPTY: *out = 0; return S_OK;
        case VT_I2:
        case VT_BOOL: *out = I2(); return S_OK;
        case VT_I4: *out = I4(); return S_OK;
        case VT_R4: *out = R4(); return S_OK;
        case VT_R8: *out = R8(); return S_OK;
        case VT_BSTR: {
            const std::string& s = Bstr();
            const char* first = s.data();
            const char* last = first + s.size();
            while (first < last && (*first == ' ' || *first == '\t')) ++first;
            while (last > first && (last[-1] == ' ' || last[-1] == '\t')) --last;
            if (first < last && *first == '+') ++first;
            const auto [end, ec] = std::from_chars(first, last, *out);
            if (ec == std::errc::result_out_of_range) return DISP_E_OVERFLOW;
            if (ec != std::errc() || end != last || first == last) return DISP_E_TYPEMISMATCH;
            return S_OK;
        }
        default: return DISP_E_TYPEMISMATCH;
    }
}

namespace {

template <class Int>
HRESULT ToInteger(double d, Int* out) {
    if (std::isnan(d)) return DISP_E_OVERFLOW;
    const double r = std::nearbyint(d);  // the default rounding mode rounds half to even
    if (r < static_cast<double>(std::numeric_limits<Int>::min()) ||
        r > static_cast<double>(std::numeric_limits<Int>::max()))
        return DISP_E_OVERFLOW;
    *out = static_cast<Int>(r);
    return S_OK;
}

std::string NumberText(double d) {
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", d);
    return text;
}

}  // namespace

HRESULT Variant::ChangeType(VARTYPE target, Variant* out) const {
    if (!out) return E_POINTER;
    if (IsByRef()) return Deref().ChangeType(target, out);
    if (target == vt_) {
        *out = *this;
        return S_OK;
    }
    if (target == VT_EMPTY) {
        *out = Variant();
        return S_OK;
    }
    if (target == VT_BSTR) {
        if (vt_ == VT_I2 || vt_ == VT_I4 || vt_ == VT_BOOL) { *out = Variant(std::to_string(vt_ == VT_I4 ? I4() : I2())); return S_OK; }
        if (vt_ == VT_R4 || vt_ == VT_R8) { *out = Variant(NumberText(vt_ == VT_R4 ? R4() : R8())); return S_OK; }
        if (vt_ == VT_EMPTY) { *out = Variant(std::string()); return S_OK; }
        return DISP_E_TYPEMISMATCH;
    }
    if (target == VT_UNKNOWN && vt_ == VT_DISPATCH) {
        *out = Variant(ComPtr<IUnknown>(Dispatch().Get()));
        return S_OK;
    }
    if (target == VT_DISPATCH && vt_ == VT_UNKNOWN) {
        HRESULT hr = S_OK;
        ComPtr<IDispatch> d = Unknown().As<IDispatch>(&hr);
        if (!d) return DISP_E_TYPEMISMATCH;
        *out = Variant(std::move(d));
        return S_OK;
    }
    double d = 0;
    if (HRESULT hr = ToNumber(&d); FAILED(hr)) return hr;
    switch (target) {
        case VT_I2: { int16_t v = 0; HRESULT hr = ToInteger(d, &v); if (SUCCEEDED(hr)) *out = Variant(v); return hr; }
        case VT_I4: { int32_t v = 0; HRESULT hr = ToInteger(d, &v); if (SUCCEEDED(hr)) *out = Variant(v); return hr; }
        case VT_R4:
            if (std::isfinite(d) && std::fabs(d) > std::numeric_limits<float>::max()) return DISP_E_OVERFLOW;
            *out = Variant(static_cast<float>(d));
            return S_OK;
        case VT_R8: *out = Variant(d); return S_OK;
        case VT_BOOL: *out = Bool(d != 0); return S_OK;
        default: return DISP_E_TYPEMISMATCH;
    }
}

HRESULT Variant::AssignThroughRef(const Variant& value) const {
    if (!IsByRef()) return E_INVALIDARG;
    void* p = std::get<void*>(value_);
    const VARTYPE type = vt_ & ~VT_BYREF;
    if (type == VT_VARIANT) {
        *static_cast<Variant*>(p) = value.Deref();
        return S_OK;
    }
    Variant converted;
    if (HRESULT hr = value.ChangeType(type, &converted); FAILED(hr)) return hr;
    switch (type) {
        case VT_I2: *static_cast<int16_t*>(p) = converted.I2(); break;
        case VT_I4: *static_cast<int32_t*>(p) = converted.I4(); break;
        case VT_R4: *static_cast<float*>(p) = converted.R4(); break;
        case VT_R8: *static_cast<double*>(p) = converted.R8(); break;
        case VT_BSTR: *static_cast<std::string*>(p) = converted.Bstr(); break;
        case VT_BOOL: *static_cast<VARIANT_BOOL*>(p) = converted.I2(); break;
        case VT_DISPATCH: *static_cast<ComPtr<IDispatch>*>(p) = converted.Dispatch(); break;
        case VT_UNKNOWN: *static_cast<ComPtr<IUnknown>*>(p) = converted.Unknown(); break;
        case VT_ARRAY | VT_R8: *static_cast<SafeArray*>(p) = converted.Array(); break;
        default: return DISP_E_BADVARTYPE;
    }
    return S_OK;
}

}  // namespace vexplot
