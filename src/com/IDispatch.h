#pragma once
#include <cstdint>

#include "com/IUnknown.h"

namespace vexplot {

class Variant;

using DISPID = int32_t;
using LCID = uint32_t;

inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;

// Invoke flags.
inline constexpr uint16_t DISPATCH_METHOD = 1;
inline constexpr uint16_t DISPATCH_PROPERTYGET = 2;
inline constexpr uint16_t DISPATCH_PROPERTYPUT = 4;
inline constexpr uint16_t DISPATCH_PROPERTYPUTREF = 8;

// Arguments of Invoke. As in automation, `args` holds the arguments in
// reverse order (the last argument first); named arguments come first in it.
struct DispParams {
    Variant* args = nullptr;
    const DISPID* namedArgs = nullptr;
    uint32_t argCount = 0;
    uint32_t namedArgCount = 0;
};

// What Invoke reports when the member itself raised an error (DISP_E_EXCEPTION).
struct ExcepInfo {
    uint16_t code = 0;
    const char* source = nullptr;  // static text, not owned
    HRESULT scode = S_OK;
    char description[256] = {};
};

inline constexpr IID IID_IDispatch = GUID::FromLiteral("{00020400-0000-0000-C000-000000000046}");

// Late-bound access to an object's members by name and dispatch id.
class IDispatch : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = IID_IDispatch;

    virtual HRESULT GetTypeInfoCount(uint32_t* count) = 0;                              // slot 3
    // There are no type libraries on this platform; `info` receives an object
    // describing the members, or null with E_NOTIMPL.
    virtual HRESULT GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) = 0;         // slot 4
    virtual HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                                  DISPID* ids) = 0;                                      // slot 5
    virtual HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params,
                           Variant* result, ExcepInfo* excepInfo, uint32_t* argErr) = 0;  // slot 6

protected:
    ~IDispatch() = default;
};

}  // namespace vexplot
