#include "qt/dialogs/ExportSizeDialog.h"
#include "qt/dialogs/MessageBoxExtDialog.h"
#include "qt/dialogs/PropertySheetDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "ui/CMessageBoxExt.h"
#include "ui/ControlPropertySheet.h"
#include "ui/ExportSizeChooser.h"

namespace vexplot {

// One entry per dialog, keyed by its logic's DialogName.
void AddBuiltInDialogs(QtDialogRegistry& registry) {
    registry.AddModal(std::string(ExportSizeChooser::kName), &ExportSizeDialog::Run);
    registry.AddModal(std::string(ControlPropertySheet::kName), &PropertySheetDialog::Run);
    registry.AddModal(std::string(CMessageBoxExt::kName), &MessageBoxExtDialog::Run);
}

}  // namespace vexplot
