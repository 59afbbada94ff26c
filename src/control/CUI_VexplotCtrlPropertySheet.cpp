// The property sheet and the full-control view with its message, as
// commands of the pop-up menu and the accelerators.
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "ui/CMessageBoxExt.h"
#include "ui/ControlPropertySheet.h"

namespace vexplot {

void CUI_VexplotCtrl::AddDialogCommands() {
    commands_.Add(cmd::kControlProperties, [this] { return CommandTable::EntryState{site_ != nullptr, false}; },
                  [this] { ShowPropertySheet(); });
    commands_.Add(cmd::kMaximizeView, [this] { return CommandTable::EntryState{site_ != nullptr, FullControlView()}; },
                  [this] { SetFullControlView(!FullControlView()); });
}

int32_t CUI_VexplotCtrl::ShowPropertySheet() {
    if (!site_) return kAnswerCancel;
    ControlPropertySheet sheet(ComPtr<IDispatch>(static_cast<IDispatch*>(this)), sink_, store_);
    sheet.Fill();
    if (site_->RunDialog(sheet) != kAnswerOk) return kAnswerCancel;
    // The window applies on OK itself; a script that only set fields and
    // answered OK has its changes applied here, with the same checks.
    if (sheet.Changed()) {
        if (const auto problem = sheet.Apply()) {
            ShowMessage(problem->message.c_str(), static_cast<uint32_t>(MessageButtons::Ok));
            return kAnswerCancel;
        }
    }
    return kAnswerOk;
}

void CUI_VexplotCtrl::SetFullControlView(bool on) {
    if (on == FullControlView()) return;
    WindowVisibility v = ReadVisibility();
    if (on) {
        if (site_) {
            CMessageBoxExt message(CMessageBoxExt::FullModeInfo(), sink_, store_);
            message.Show(*site_);
        }
        fullView_ = v;
        v.title = false;
        v.status = false;
    } else {
        v.title = fullView_->title;
        v.status = fullView_->status;
        fullView_.reset();
    }
    *visibility_ = v;
    ApplyVisibility(&v);
    RecalcLayout();
    for (const auto& listener : fullViewListeners_) listener(on);
}

}  // namespace vexplot
