#include "automation/DispatchTable.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

// The members are described by the dispatch table itself (DispatchTable::
// Members, with the type library's names); there is no type-library file
// on this platform.
HRESULT CUI_VexplotCtrl::GetTypeInfoCount(uint32_t* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT CUI_VexplotCtrl::GetTypeInfo(uint32_t, LCID, IUnknown** info) {
    if (info) *info = nullptr;
    return E_NOTIMPL;
}

HRESULT CUI_VexplotCtrl::GetIDsOfNames(const IID&, const char* const* names, uint32_t count, LCID, DISPID* ids) {
    return DispatchTable::Vexplot().GetIDsOfNames(names, count, ids);
}

HRESULT CUI_VexplotCtrl::Invoke(DISPID member, const IID&, LCID, uint16_t flags, DispParams* params,
                                Variant* result, ExcepInfo* excepInfo, uint32_t* argErr) {
    // The member may release the last outside reference (a script dropping
    // the control from an event handler); keep the object alive until the
    // call returns.
    ComPtr<CUI_VexplotCtrl> self(this);
    return DispatchTable::Vexplot().Invoke(*this, member, flags, params, result, excepInfo, argErr);
}

}  // namespace vexplot
