#include "qt/dialogs/AnnotationPropertiesDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"

namespace vexplot {

// One entry per dialog, keyed by its logic's DialogName.
void AddBuiltInDialogs(QtDialogRegistry& registry) {
    registry.AddModal("MarkerProperties", &AnnotationPropertiesDialog::RunMarker);
    registry.AddModal("RegionProperties", &AnnotationPropertiesDialog::RunRegion);
    registry.AddModal("DiffTracerProperties", &AnnotationPropertiesDialog::RunDiffTracer);
    registry.AddModal("LabelProperties", &AnnotationPropertiesDialog::RunLabel);
}

}  // namespace vexplot
