#include "automation/DispatchCall.h"
#include "automation/DispatchTable.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

// The methods that save and load plots and the control state
// (LoadSerialize, SaveSerialize, LoadControlState, SaveControlState).
void AddStateMethodMembers(DispatchTable& table) {
    table.AddMethod(DispatchInterface::Ex, 501, "LoadSerialize", VT_I4, {{"SerFile", VT_BSTR}},
                    [](CUI_VexplotCtrl& c, DispatchCall& call) {
                        call.Return(Variant(c.LoadSerialize(call.Bstr(0))));
                        return S_OK;
                    });
    table.AddMethod(DispatchInterface::Ex, 502, "SaveSerialize", VT_I4, {{"SerFile", VT_BSTR}},
                    [](CUI_VexplotCtrl& c, DispatchCall& call) {
                        call.Return(Variant(c.SaveSerialize(call.Bstr(0))));
                        return S_OK;
                    });
    table.AddMethod(DispatchInterface::Ex, 540, "LoadControlState", VT_EMPTY,
                    {{"Source", VT_BSTR}, {"sourceType", VT_I2}}, [](CUI_VexplotCtrl& c, DispatchCall& call) {
                        c.LoadControlState(call.Bstr(0), call.I2(1));
                        return S_OK;
                    });
    table.AddMethod(DispatchInterface::Ex, 541, "SaveControlState", VT_EMPTY,
                    {{"Source", VT_BSTR}, {"sourceType", VT_I2}}, [](CUI_VexplotCtrl& c, DispatchCall& call) {
                        c.SaveControlState(call.Bstr(0), call.I2(1));
                        return S_OK;
                    });
}

}  // namespace vexplot
