#include "automation/CoAnnotation.h"

#include "annotations/AnnotationActions.h"
#include "annotations/CGD_AnnotationList.h"
#include "model/IViewHost.h"

namespace vexplot {

HRESULT CoAnnotation::GetTypeInfoCount(uint32_t* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT CoAnnotation::GetTypeInfo(uint32_t, LCID, IUnknown** info) {
    if (info) *info = nullptr;
    return E_NOTIMPL;
}

void CoAnnotation::RefreshOwner() const {
    if (annotation_ && annotation_->Owner()) AnnotationActions::Refresh(*annotation_->Owner());
}

void CoAnnotation::Redraw() const {
    if (annotation_ && annotation_->Owner()) annotation_->Owner()->Redraw(false);
}

void CoAnnotation::Select(bool selected) const {
    IViewHost* owner = annotation_ ? annotation_->Owner() : nullptr;
    CGD_AnnotationList* list = owner ? owner->GetAnnotations() : nullptr;
    if (list && list->Contains(annotation_)) {
        // The list keeps one object selected at a time.
        if (selected)
            list->Select(annotation_);
        else if (list->Selected() == annotation_)
            list->Select(nullptr);
        return;
    }
    annotation_->SetSelected(selected);
}

}  // namespace vexplot
