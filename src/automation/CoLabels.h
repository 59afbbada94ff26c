#pragma once
#include "automation/CoAnnotationCollection.h"

namespace vexplot {

// The labels of a control (ILabels): CoAnnotationCollection with
// Add(sCaption, x, y, z): a label reading sCaption whose anchor and text point are (x, y, z).
// Add answers the new label's CoLabel, or nothing when the control refuses
// it (no data, a coordinate that is not finite) or is gone.
class CoLabels final : public CoAnnotationCollection {
public:
    explicit CoLabels(CUI_VexplotCtrl& owner);
    static const BasicDispatchTable<CoAnnotationCollection>& Table();

private:
    ~CoLabels() override = default;
    ComPtr<CoAnnotation> Wrap(CGD_Annotation& annotation) override;
};

}  // namespace vexplot
