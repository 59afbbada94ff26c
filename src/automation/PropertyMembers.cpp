#include "automation/DispatchCall.h"
#include "automation/DispatchTable.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/PropertyTable.h"

namespace vexplot {

// The properties of _DVexplotEx, one row per PropertyTable row: the get
// and put only carry the value to and from the control's own
// GetProperty/PutProperty, where the behaviour lives. Every property has a
// put; the annotation collections refuse it there with
// CTL_E_SETNOTSUPPORTED, which the client sees as an automation error.
void AddPropertyMembers(DispatchTable& table) {
    for (const PropertyRow& row : PropertyTable::Rows()) {
        const DISPID id = row.id;
        table.AddProperty(
            id, row.name, row.type,
            [id](CUI_VexplotCtrl& c, DispatchCall& call) {
                Variant value;
                const HRESULT hr = c.GetProperty(id, &value);
                if (SUCCEEDED(hr)) call.Return(std::move(value));
                return hr;
            },
            [id](CUI_VexplotCtrl& c, DispatchCall& call) { return c.PutProperty(id, call.Arg(0)); }, row.typelibName);
    }
}

}  // namespace vexplot
