// The control's part in the process-wide display-change hook: a control
// registers once its windows and engine exist and leaves when destroyed;
// a change of colour depth or screen size re-creates its engine, which may
// have lost its device or chosen its formats for the old display.
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

void CUI_VexplotCtrl::RegisterForDisplayChanges() {
    if (displayRegistered_) return;
    DisplayChangeHook& hook = DisplayChangeHook::Instance();
    display_ = hook.Current();
    hook.Register(this);
    displayRegistered_ = true;
}

void CUI_VexplotCtrl::UnregisterFromDisplayChanges() {
    if (!displayRegistered_) return;
    DisplayChangeHook::Instance().Unregister(this);
    displayRegistered_ = false;
}

void CUI_VexplotCtrl::OnDisplayChange(const ScreenMode& mode) {
    if (mode == display_) return;
    display_ = mode;
    // RecreateEngine keeps the camera's position and centre and sends the
    // palette, the graph objects and the axes to the new engine.
    RecreateEngine();
    Redraw(true);
    SetModified();
}

}  // namespace vexplot
