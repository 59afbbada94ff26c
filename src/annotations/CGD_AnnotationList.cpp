#include "annotations/CGD_AnnotationList.h"

#include <algorithm>
#include <stdexcept>

#include "annotations/CGD_DiffTracer.h"
#include "annotations/CGD_Label.h"
#include "annotations/CGD_Marker.h"
#include "annotations/CGD_Region.h"
#include "annotations/CGD_Tracer.h"
#include "model/ArchiveClass.h"

namespace vexplot {

CGD_AnnotationList::CGD_AnnotationList() = default;

CGD_AnnotationList::~CGD_AnnotationList() {
    Clear();
    for (IAnnotationObserver* observer : std::vector(observers_)) observer->AnnotationListClosed();
}

CGD_Annotation& CGD_AnnotationList::Add(std::unique_ptr<CGD_Annotation> annotation) {
    if (!annotation) throw std::invalid_argument("CGD_AnnotationList::Add: no annotation");
    items_.push_back(std::move(annotation));
    CGD_Annotation& added = *items_.back();
    added.SetListIndex(Count() - 1);
    // A copy: an observer may add or remove observers while it is told.
    for (IAnnotationObserver* observer : std::vector(observers_)) observer->AnnotationAdded(added);
    return added;
}

bool CGD_AnnotationList::Remove(CGD_Annotation* annotation) {
    const int32_t index = IndexOf(annotation);
    if (index < 0) return false;
    for (IAnnotationObserver* observer : std::vector(observers_)) observer->AnnotationRemoved(*annotation);
    if (selected_ == annotation) selected_ = nullptr;
    // Out of the list before it is deleted, so that nothing it calls on
    // its way out finds it there.
    std::unique_ptr<CGD_Annotation> gone = std::move(items_[static_cast<size_t>(index)]);
    items_.erase(items_.begin() + index);
    Renumber();
    gone->RemoveFromInfoWindow();
    return true;
}

void CGD_AnnotationList::Clear() {
    while (!items_.empty()) Remove(items_.back().get());
}

CGD_Annotation* CGD_AnnotationList::At(int32_t index) const {
    return index >= 0 && index < Count() ? items_[static_cast<size_t>(index)].get() : nullptr;
}

int32_t CGD_AnnotationList::IndexOf(const CGD_Annotation* annotation) const {
    const auto it = std::find_if(items_.begin(), items_.end(), [&](const auto& a) { return a.get() == annotation; });
    return it == items_.end() ? -1 : static_cast<int32_t>(it - items_.begin());
}

std::vector<CGD_Annotation*> CGD_AnnotationList::OfKind(AnnotationKind kind) const {
    std::vector<CGD_Annotation*> found;
    for (const auto& a : items_)
        if (a->GetKind() == static_cast<int32_t>(kind)) found.push_back(a.get());
    return found;
}

void CGD_AnnotationList::Select(CGD_Annotation* annotation) {
    if (annotation && !Contains(annotation)) return;
    if (selected_ == annotation) return;
    if (selected_) selected_->SetSelected(false);
    selected_ = annotation;
    if (selected_) selected_->SetSelected(true);
}

CGD_Annotation* CGD_AnnotationList::Next(const CGD_Annotation* from) const {
    // From -1 (no object) the walk starts at index 0.
    const int32_t start = IndexOf(from);
    for (int32_t step = 1; step <= Count(); ++step) {
        CGD_Annotation* candidate = At((start + step) % Count());
        if (candidate->Selectable()) return candidate;
    }
    return nullptr;
}

CGD_Annotation* CGD_AnnotationList::HitTest(int32_t x, int32_t y) const {
    for (auto it = items_.rbegin(); it != items_.rend(); ++it) {
        CGD_Annotation& a = **it;
        if (a.Selectable() && (a.HitTest(x, y) || a.HitTestHandle(x, y))) return &a;
    }
    return nullptr;
}

void CGD_AnnotationList::AttachAll(IGraphEngine* engine, const PixelRect* plotRect, IViewHost* owner) {
    for (const auto& a : items_) a->Attach(engine, plotRect, owner);
}

void CGD_AnnotationList::ReleaseEngine() {
    for (const auto& a : items_) a->ReleaseEngine();
}

void CGD_AnnotationList::DrawAll() {
    for (const auto& a : items_)
        if (a.get() != selected_) a->Draw();
    if (selected_) selected_->Draw();
}

void CGD_AnnotationList::AddObserver(IAnnotationObserver* observer) {
    if (observer && std::find(observers_.begin(), observers_.end(), observer) == observers_.end())
        observers_.push_back(observer);
}

void CGD_AnnotationList::RemoveObserver(IAnnotationObserver* observer) {
    observers_.erase(std::remove(observers_.begin(), observers_.end(), observer), observers_.end());
}

std::vector<const CGD_Annotation*> CGD_AnnotationList::Persistent() const {
    std::vector<const CGD_Annotation*> kept;
    for (const auto& a : items_) {
        const auto* region = dynamic_cast<const CGD_Region*>(a.get());
        if (!region || !region->IsInternal()) kept.push_back(a.get());
    }
    return kept;
}

void CGD_AnnotationList::Renumber() {
    for (int32_t i = 0; i < Count(); ++i) items_[static_cast<size_t>(i)]->SetListIndex(i);
}

void RegisterAnnotationClasses() {
    static const bool registered = [] {
        for (const ArchiveClass* cls : {&CGD_Label::RuntimeClass(), &CGD_Marker::RuntimeClass(),
                                        &CGD_Region::RuntimeClass(), &CGD_Tracer::RuntimeClass(),
                                        &CGD_DiffTracer::RuntimeClass()})
            ArchiveClass::Register(*cls);
        return true;
    }();
    (void)registered;
}

}  // namespace vexplot
