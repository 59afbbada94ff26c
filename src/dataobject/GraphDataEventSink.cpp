#include "dataobject/GraphDataEventSink.h"

#include <strings.h>

#include "com/Variant.h"
#include "dataobject/IGraphDataEvents.h"

namespace vexplot {

HRESULT GraphDataEventSink::GetTypeInfoCount(uint32_t* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT GraphDataEventSink::GetTypeInfo(uint32_t, LCID, IUnknown** info) {
    if (info) *info = nullptr;
    return E_NOTIMPL;
}

HRESULT GraphDataEventSink::GetIDsOfNames(const IID&, const char* const* names, uint32_t count, LCID,
                                          DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    static constexpr struct { const char* name; DISPID id; } kNames[] = {
        {"DataChanged", DISPID_DataChanged}, {"TicksChanged", DISPID_TicksChanged},
        {"LabelsChanged", DISPID_LabelsChanged}};
    HRESULT hr = S_OK;
    for (uint32_t i = 0; i < count; ++i) {
        ids[i] = DISPID_UNKNOWN;
        for (const auto& n : kNames)
            if (strcasecmp(n.name, names[i]) == 0) ids[i] = n.id;
        if (ids[i] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
}

HRESULT GraphDataEventSink::Invoke(DISPID member, const IID&, LCID, uint16_t, DispParams* params, Variant*,
                                   ExcepInfo*, uint32_t* argErr) {
    const uint32_t argc = params ? params->argCount : 0;
    switch (member) {
        case DISPID_DataChanged:
            if (argc != 0) return DISP_E_BADPARAMCOUNT;
            DataChanged();
            return S_OK;
        case DISPID_TicksChanged: {
            if (argc != 1) return DISP_E_BADPARAMCOUNT;
            Variant which;
            if (FAILED(params->args[0].ChangeType(VT_I4, &which))) {
                if (argErr) *argErr = 0;
                return DISP_E_TYPEMISMATCH;
            }
            TicksChanged(which.I4());
            return S_OK;
        }
        case DISPID_LabelsChanged:
            if (argc != 0) return DISP_E_BADPARAMCOUNT;
            LabelsChanged();
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

}  // namespace vexplot
