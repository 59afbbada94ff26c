#include "automation/DispatchCall.h"
#include "automation/DispatchTable.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

// The methods that save and load plots and the control state
// (LoadSerialize, SaveSerialize, LoadControlState, SaveControlState).
void AddStateMethodMembers(DispatchTable& table) {
    // Both answer BOOL, as every other yes-or-no result of the table does.
    table.AddMethod(DispatchInterface::Ex, 501, "LoadSerialize", VT_BOOL, {{"SerFile", VT_BSTR}},
                    [](CUI_VexplotCtrl& c, DispatchCall& call) {
                        call.Return(Variant::Bool(c.LoadSerialize(call.Bstr(0)) != 0));
                        return S_OK;
                    });
    table.AddMethod(DispatchInterface::Ex, 502, "SaveSerialize", VT_BOOL, {{"SerFile", VT_BSTR}},
                    [](CUI_VexplotCtrl& c, DispatchCall& call) {
                        call.Return(Variant::Bool(c.SaveSerialize(call.Bstr(0)) != 0));
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
