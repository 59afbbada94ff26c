#include "qt/dialogs/DataEditorDialog.h"
#include "qt/dialogs/ExportSizeDialog.h"
#include "qt/dialogs/MessageBoxExtDialog.h"
#include "qt/dialogs/PaletteEditorDialog.h"
#include "qt/dialogs/PropertySheetDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "ui/CMessageBoxExt.h"
#include "ui/CUIW_DataEditor.h"
#include "ui/ControlPropertySheet.h"
#include "ui/ExportSizeChooser.h"
#include "ui/PaletteEditor.h"

namespace vexplot {

// One entry per dialog, keyed by its logic's DialogName.
void AddBuiltInDialogs(QtDialogRegistry& registry) {
    registry.AddModal(std::string(ExportSizeChooser::kName), &ExportSizeDialog::Run);
    registry.AddModal(std::string(ControlPropertySheet::kName), &PropertySheetDialog::Run);
    registry.AddModal(std::string(CMessageBoxExt::kName), &MessageBoxExtDialog::Run);
    registry.AddModal(std::string(PaletteEditor::kDialogName), [](IDialogLogic& logic, QWidget* parent) {
        return PaletteEditorDialog::Run(static_cast<PaletteEditor&>(logic), parent);
    });
    registry.AddModeless(std::string(CUIW_DataEditor::kDialogName), [](IDialogLogic& logic, QWidget* parent) {
        return DataEditorDialog::Open(static_cast<CUIW_DataEditor&>(logic), parent);
    });
}

}  // namespace vexplot
