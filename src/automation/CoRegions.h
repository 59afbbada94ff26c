#pragma once
#include "automation/CoAnnotationCollection.h"

namespace vexplot {

// The regions of a control (IRegions): CoAnnotationCollection with
// Add(x1, y1, z1, x2, y2, z2): a region between the two corners.
// Add answers the new region's CoRegion, or nothing when the control refuses
// it (no data, a coordinate that is not finite) or is gone.
class CoRegions final : public CoAnnotationCollection {
public:
    explicit CoRegions(CUI_VexplotCtrl& owner);
    static const BasicDispatchTable<CoAnnotationCollection>& Table();

private:
    ~CoRegions() override = default;
    ComPtr<CoAnnotation> Wrap(CGD_Annotation& annotation) override;
};

}  // namespace vexplot
