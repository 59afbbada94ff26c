#pragma once
#include "automation/CoAnnotationCollection.h"

namespace vexplot {

// The markers of a control (IMarkers): CoAnnotationCollection with
// Add(x, y, z): a marker named by the next marker letter.
// Add answers the new marker's CoMarker, or nothing when the control refuses
// it (no data, a coordinate that is not finite) or is gone.
class CoMarkers final : public CoAnnotationCollection {
public:
    explicit CoMarkers(CUI_VexplotCtrl& owner);
    static const BasicDispatchTable<CoAnnotationCollection>& Table();

private:
    ~CoMarkers() override = default;
    ComPtr<CoAnnotation> Wrap(CGD_Annotation& annotation) override;
};

}  // namespace vexplot
