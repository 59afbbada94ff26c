#pragma once

namespace vexplot {

class CGD_Annotation;

// Told of the annotation list's changes: the automation collections keep
// their wrappers in step through it. Removed comes before the annotation is
// deleted, so that wrappers can let go of it first.
class IAnnotationObserver {
public:
    virtual void AnnotationAdded(CGD_Annotation& annotation) = 0;
    virtual void AnnotationRemoved(CGD_Annotation& annotation) = 0;
    // The list itself goes (its control is destroyed): forget it.
    virtual void AnnotationListClosed() = 0;

protected:
    ~IAnnotationObserver() = default;
};

}  // namespace vexplot
