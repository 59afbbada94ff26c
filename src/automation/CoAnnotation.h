#pragma once
#include "com/ComObject.h"
#include "com/IDispatch.h"

namespace vexplot {

class CGD_Annotation;
class IViewHost;

// The common part of the annotation wrappers (CoLabel, CoMarker, CoRegion):
// a plain pointer to the annotation, which the annotation's collection
// clears (Detach) before the annotation is deleted. A detached wrapper
// answers every member with 0, FALSE or "" and touches nothing, so a
// script that keeps one after its annotation, or its control, is gone
// holds a harmless object.
class CoAnnotation : public ComObject<IDispatch> {
public:
    CGD_Annotation* Annotation() const { return annotation_; }
    bool Attached() const { return annotation_ != nullptr; }
    void Detach() { annotation_ = nullptr; }

    // IDispatch: no type information on this platform.
    HRESULT GetTypeInfoCount(uint32_t* count) override;
    HRESULT GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) override;

protected:
    explicit CoAnnotation(CGD_Annotation* annotation) : annotation_(annotation) {}
    ~CoAnnotation() override = default;

    // The annotation's control: layout and redraw with erase.
    void RefreshOwner() const;
    // The annotation's control redrawn (the "Draw" of the setters).
    void Redraw() const;
    // Makes the annotation the selected one, or deselects it.
    void Select(bool selected) const;

private:
    CGD_Annotation* annotation_;
};

}  // namespace vexplot
