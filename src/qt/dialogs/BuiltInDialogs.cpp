#include "control/AboutLogic.h"
#include "control/KeyboardMapLogic.h"
#include "qt/dialogs/AboutDialog.h"
#include "qt/dialogs/DataEditorDialog.h"
#include "qt/dialogs/KeyboardMapDialog.h"
#include "qt/dialogs/PaletteEditorDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "site/IControlSite.h"
#include "ui/CUIW_DataEditor.h"
#include "ui/PaletteEditor.h"

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
    registry.AddModal(std::string(PaletteEditor::kDialogName), [](IDialogLogic& logic, QWidget* parent) {
        return PaletteEditorDialog::Run(static_cast<PaletteEditor&>(logic), parent);
    });
    registry.AddModeless(std::string(CUIW_DataEditor::kDialogName), [](IDialogLogic& logic, QWidget* parent) {
        return DataEditorDialog::Open(static_cast<CUIW_DataEditor&>(logic), parent);
    });
}

}  // namespace vexplot
