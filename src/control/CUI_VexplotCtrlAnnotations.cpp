#include "annotations/AnnotationActions.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

void CUI_VexplotCtrl::AddAnnotation(CGD_Annotation* annotation) {
    if (!annotation) return;
    // The list takes the object the caller made: from here on it owns it.
    std::unique_ptr<CGD_Annotation> owned(annotation);
    if (!owned->Owner()) owned->Attach(GetEngine(), nullptr, this);
    annotations_->Add(std::move(owned));
}

void CUI_VexplotCtrl::RemoveAnnotation(CGD_Annotation* annotation) { AnnotationActions::Delete(*this, annotation); }

void CUI_VexplotCtrl::SelectAnnotation(CGD_Annotation* annotation) { AnnotationActions::Select(*this, annotation); }

CGD_Annotation* CUI_VexplotCtrl::GetSelectedAnnotation() { return annotations_->Selected(); }

CGD_Annotation* CUI_VexplotCtrl::AnnotationAt(int32_t x, int32_t y) { return annotations_->HitTest(x, y); }

int32_t CUI_VexplotCtrl::RunDialog(IDialogLogic& dialog) { return site_ ? site_->RunDialog(dialog) : kAnswerCancel; }

void CUI_VexplotCtrl::AttachAnnotations() { annotations_->AttachAll(GetEngine(), nullptr, this); }

void CUI_VexplotCtrl::DrawAnnotations() {
    if (Is3DViewCurrent()) {
        IGraphView3D* view = GetView3D();
        view->ClearOverlay();
        annotations_->DrawAll();
    } else if (IGraphDevice2D* device = GetDevice2D()) {
        device->ClearOverlay();
        annotations_->DrawAll();
    }
}

}  // namespace vexplot
