#include "automation/CoRegions.h"

#include "annotations/AnnotationActions.h"
#include "annotations/CGD_Region.h"
#include "automation/AnnotationRows.h"
#include "automation/CoRegion.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

CoRegions::CoRegions(CUI_VexplotCtrl& owner) : CoAnnotationCollection(owner, AnnotationKind::Region, Table()) {
    WrapExisting();
}

ComPtr<CoAnnotation> CoRegions::Wrap(CGD_Annotation& annotation) {
    return CoRegion::Make(static_cast<CGD_Region*>(&annotation));
}

const BasicDispatchTable<CoAnnotationCollection>& CoRegions::Table() {
    using namespace annotation_rows;
    static const BasicDispatchTable<CoAnnotationCollection> table = [] {
        BasicDispatchTable<CoAnnotationCollection> t;
        AddCommonRows(t);
        Method(t, 5, "Add", VT_DISPATCH,
               {{"x1", VT_R8}, {"y1", VT_R8}, {"z1", VT_R8}, {"x2", VT_R8}, {"y2", VT_R8}, {"z2", VT_R8}},
               [](CoAnnotationCollection& s) { return s.Owner() != nullptr; },
               [](CoAnnotationCollection& s, DispatchCall& c) {
                   const CGD_Region* region = AnnotationActions::AddRegion(*s.Owner(), c.R8(0), c.R8(1), c.R8(2),
                                                                           c.R8(3), c.R8(4), c.R8(5));
                   return Variant(s.WrapperOf(region));
               });
        return t;
    }();
    return table;
}

}  // namespace vexplot
