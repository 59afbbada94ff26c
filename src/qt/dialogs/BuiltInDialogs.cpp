#include "qt/dialogs/QtDialogRegistry.h"

namespace vexplot {

// One entry per dialog, keyed by its logic's DialogName.
void AddBuiltInDialogs(QtDialogRegistry& /*registry*/) {}

}  // namespace vexplot
