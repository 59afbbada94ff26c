#include "automation/CoLabels.h"

#include "annotations/AnnotationActions.h"
#include "annotations/CGD_Label.h"
#include "automation/AnnotationRows.h"
#include "automation/CoLabel.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

CoLabels::CoLabels(CUI_VexplotCtrl& owner) : CoAnnotationCollection(owner, AnnotationKind::Label, Table()) {
    WrapExisting();
}

ComPtr<CoAnnotation> CoLabels::Wrap(CGD_Annotation& annotation) {
    return CoLabel::Make(static_cast<CGD_Label*>(&annotation));
}

const BasicDispatchTable<CoAnnotationCollection>& CoLabels::Table() {
    using namespace annotation_rows;
    static const BasicDispatchTable<CoAnnotationCollection> table = [] {
        BasicDispatchTable<CoAnnotationCollection> t;
        AddCommonRows(t);
        Method(t, 5, "Add", VT_DISPATCH, {{"sCaption", VT_BSTR}, {"x", VT_R8}, {"y", VT_R8}, {"z", VT_R8}},
               [](CoAnnotationCollection& s) { return s.Owner() != nullptr; },
               [](CoAnnotationCollection& s, DispatchCall& c) {
                   const CGD_Label* label =
                       AnnotationActions::AddLabel(*s.Owner(), c.Bstr(0), c.R8(1), c.R8(2), c.R8(3));
                   return Variant(s.WrapperOf(label));
               });
        return t;
    }();
    return table;
}

}  // namespace vexplot
