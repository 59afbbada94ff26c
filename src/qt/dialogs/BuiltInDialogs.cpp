#include "qt/dialogs/ExportSizeDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "ui/ExportSizeChooser.h"

namespace vexplot {

// One entry per dialog, keyed by its logic's DialogName.
void AddBuiltInDialogs(QtDialogRegistry& registry) {
    registry.AddModal(std::string(ExportSizeChooser::kName), &ExportSizeDialog::Run);
}

}  // namespace vexplot
