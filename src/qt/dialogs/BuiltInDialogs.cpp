#include "control/AboutLogic.h"
#include "control/KeyboardMapLogic.h"
#include "qt/dialogs/AboutDialog.h"
#include "qt/dialogs/KeyboardMapDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

// A modal dialog of class `Dialog` over a logic of class `Logic`.
template <class Dialog, class Logic>
QtDialogRegistry::RunModal Modal() {
    return [](IDialogLogic& logic, QWidget* parent) -> int32_t {
        Dialog dialog(static_cast<Logic&>(logic), parent);
        return dialog.exec() == QDialog::Accepted ? kAnswerOk : kAnswerCancel;
    };
}

}  // namespace

// One entry per dialog, keyed by its logic's DialogName.
void AddBuiltInDialogs(QtDialogRegistry& registry) {
    registry.AddModal(std::string(KeyboardMapLogic::kName), Modal<KeyboardMapDialog, KeyboardMapLogic>());
    registry.AddModal(std::string(AboutLogic::kName), Modal<AboutDialog, AboutLogic>());
}

}  // namespace vexplot
