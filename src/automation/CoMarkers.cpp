#include "automation/CoMarkers.h"

#include "annotations/AnnotationActions.h"
#include "annotations/CGD_Marker.h"
#include "automation/AnnotationRows.h"
#include "automation/CoMarker.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

CoMarkers::CoMarkers(CUI_VexplotCtrl& owner) : CoAnnotationCollection(owner, AnnotationKind::Marker, Table()) {
    WrapExisting();
}

ComPtr<CoAnnotation> CoMarkers::Wrap(CGD_Annotation& annotation) {
    return CoMarker::Make(static_cast<CGD_Marker*>(&annotation));
}

const BasicDispatchTable<CoAnnotationCollection>& CoMarkers::Table() {
    using namespace annotation_rows;
    static const BasicDispatchTable<CoAnnotationCollection> table = [] {
        BasicDispatchTable<CoAnnotationCollection> t;
        AddCommonRows(t);
        Method(t, 5, "Add", VT_DISPATCH, {{"x", VT_R8}, {"y", VT_R8}, {"z", VT_R8}},
               [](CoAnnotationCollection& s) { return s.Owner() != nullptr; },
               [](CoAnnotationCollection& s, DispatchCall& c) {
                   const CGD_Marker* marker = AnnotationActions::AddMarker(*s.Owner(), c.R8(0), c.R8(1), c.R8(2));
                   return Variant(s.WrapperOf(marker));
               });
        return t;
    }();
    return table;
}

}  // namespace vexplot
