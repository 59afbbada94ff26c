#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "automation/DispatchCall.h"
#include "automation/DispatchTable.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot::rows {

// Small builders for method rows of the dispatch table, so that each row
// states only its dispid, names, types and the control member it calls.

inline Variant AsVariant(bool v) { return Variant::Bool(v); }
inline Variant AsVariant(int16_t v) { return Variant(v); }
inline Variant AsVariant(int32_t v) { return Variant(v); }
inline Variant AsVariant(uint32_t v) { return Variant(static_cast<int32_t>(v)); }  // OLE_COLOR
inline Variant AsVariant(float v) { return Variant(v); }
inline Variant AsVariant(double v) { return Variant(v); }
inline Variant AsVariant(std::string v) { return Variant(std::move(v)); }

// A method without arguments answering `get(control)` as `type` (a C++
// int answering a BOOL member becomes VT_BOOL, and so on).
template <class Get>
void Getter(DispatchTable& table, DispatchInterface owner, DISPID id, const char* name, VARTYPE type, Get get) {
    table.AddMethod(owner, id, name, type, {}, [get, type](CUI_VexplotCtrl& c, DispatchCall& call) {
        Variant out;
        const HRESULT hr = AsVariant(get(c)).ChangeType(type, &out);
        if (FAILED(hr)) return hr;
        call.Return(std::move(out));
        return S_OK;
    });
}

// A method with the arguments `params`, no result; `set(control, call)`
// reads the converted arguments and calls the member.
template <class Set>
void Setter(DispatchTable& table, DispatchInterface owner, DISPID id, const char* name,
            std::vector<ParamInfo> params, Set set, std::string typelibName = {}) {
    table.AddMethod(
        owner, id, name, VT_EMPTY, std::move(params),
        [set](CUI_VexplotCtrl& c, DispatchCall& call) {
            set(c, call);
            return S_OK;
        },
        std::move(typelibName));
}

// Get/Set pairs for the camera position x, y, z and centre x, y, z, from
// `firstId` on; both interfaces publish them, under their own names
// ("Get" / "Set" + names[i]).
inline void CameraComponentRows(DispatchTable& table, DispatchInterface owner, DISPID firstId,
                                const char* const (&names)[6]) {
    using Ctl = CUI_VexplotCtrl;
    using Get = double (Ctl::*)();
    using Set = void (Ctl::*)(double);
    static constexpr Get kGets[] = {&Ctl::GetCamXPosition, &Ctl::GetCamYPosition, &Ctl::GetCamZPosition,
                                    &Ctl::GetCamXCenter,   &Ctl::GetCamYCenter,   &Ctl::GetCamZCenter};
    static constexpr Set kSets[] = {&Ctl::SetCamXPosition, &Ctl::SetCamYPosition, &Ctl::SetCamZPosition,
                                    &Ctl::SetCamXCenter,   &Ctl::SetCamYCenter,   &Ctl::SetCamZCenter};
    DISPID id = firstId;
    for (size_t i = 0; i < 6; ++i) {
        Getter(table, owner, id++, (std::string("Get") + names[i]).c_str(), VT_R8,
               [g = kGets[i]](Ctl& c) { return (c.*g)(); });
        Setter(table, owner, id++, (std::string("Set") + names[i]).c_str(), {{"value", VT_R8}},
               [s = kSets[i]](Ctl& c, DispatchCall& a) { (c.*s)(a.R8(0)); });
    }
}

}  // namespace vexplot::rows
