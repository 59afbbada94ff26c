#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "annotations/CGD_Annotation.h"
#include "annotations/IAnnotationObserver.h"

namespace vexplot {

class CArchive;

// The annotations of one control, in the order they were added (the Tab
// order of the Select tool), with the one selected object. Owns them;
// observers (the automation collections) hear of every addition and
// removal. Removing an annotation takes it out of the info window before
// it is deleted.
class CGD_AnnotationList {
public:
    CGD_AnnotationList();
    ~CGD_AnnotationList();
    CGD_AnnotationList(const CGD_AnnotationList&) = delete;
    CGD_AnnotationList& operator=(const CGD_AnnotationList&) = delete;

    // the list:
    // Appends `annotation` (not null: std::invalid_argument), sets its list
    // index and tells the observers; returns it.
    CGD_Annotation& Add(std::unique_ptr<CGD_Annotation> annotation);
    // Tells the observers, takes the annotation out of the info window and
    // deletes it; false when it is not in the list.
    bool Remove(CGD_Annotation* annotation);
    // Removes every annotation, newest first.
    void Clear();
    int32_t Count() const { return static_cast<int32_t>(items_.size()); }
    // Null outside the list.
    CGD_Annotation* At(int32_t index) const;
    int32_t IndexOf(const CGD_Annotation* annotation) const;
    bool Contains(const CGD_Annotation* annotation) const { return IndexOf(annotation) >= 0; }
    // The annotations of one kind code (AnnotationKind), in list order.
    std::vector<CGD_Annotation*> OfKind(AnnotationKind kind) const;

    // selection:
    CGD_Annotation* Selected() const { return selected_; }
    // Makes `annotation` (in the list, or null for none) the one selected
    // object: the old one is deselected first.
    void Select(CGD_Annotation* annotation);
    // The selectable annotation after `from` in Tab order, wrapping round;
    // the first one when `from` is null; null when none is selectable.
    CGD_Annotation* Next(const CGD_Annotation* from) const;
    // The topmost (newest) selectable annotation that `x`, `y` hits, its
    // handles included; null for none.
    CGD_Annotation* HitTest(int32_t x, int32_t y) const;

    // engine and drawing:
    // Attaches every annotation to `engine` (again, after it was re-created).
    void AttachAll(IGraphEngine* engine, const PixelRect* plotRect, IViewHost* owner);
    // Lets go of the engine's surfaces (before the engine is released).
    void ReleaseEngine();
    // Draws every annotation into the current view, the selected one last so
    // that its highlight lies on top.
    void DrawAll();

    // observers (borrowed; remove before they go):
    void AddObserver(IAnnotationObserver* observer);
    void RemoveObserver(IAnnotationObserver* observer);

    // The records of the annotations a plot file keeps (all but internal
    // regions), each a class record: written after the axes by the
    // control's object list.
    std::vector<const CGD_Annotation*> Persistent() const;

private:
    void Renumber();

    std::vector<std::unique_ptr<CGD_Annotation>> items_;
    std::vector<IAnnotationObserver*> observers_;
    CGD_Annotation* selected_ = nullptr;
};

// Registers the annotation classes with the archive, so that plot files
// can make them by name. Safe to call more than once.
void RegisterAnnotationClasses();

}  // namespace vexplot
