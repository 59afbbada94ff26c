#pragma once
#include <cstdint>
#include <vector>

#include "annotations/CGD_Annotation.h"
#include "annotations/IAnnotationObserver.h"
#include "automation/CoAnnotation.h"
#include "automation/DispatchTable.h"
#include "com/ComObject.h"
#include "com/IDispatch.h"

namespace vexplot {

class CUI_VexplotCtrl;

// The common part of the three annotation collections (CoLabels,
// CoMarkers, CoRegions; ILabels, IMarkers, IRegions): the wrappers of one
// kind, in the order their annotations were added to the control, kept in
// step with the control's annotation list as its observer. A collection
// made after annotations exist wraps those first.
//
// Members (dispids): 0 _Count and 1 Count (read-only), 2 Remove(object),
// 3 RemoveAt(index), 4 GetIndex(object), 5 Add(...) (per kind), 6
// Item(index). An index outside 0..Count-1 gives an empty dispatch and
// does nothing; without its control (destroyed) the collection is empty
// and Add answers nothing.
class CoAnnotationCollection : public ComObject<IDispatch>, private IAnnotationObserver {
public:
    int32_t Count() const { return static_cast<int32_t>(wrappers_.size()); }
    // The wrapper at `index` with a reference for the caller, or empty.
    ComPtr<IDispatch> Item(int32_t index) const;
    // The first index whose wrapper is `object` (by identity), or -1.
    int32_t GetIndex(IUnknown* object) const;
    // Deletes the annotation of the wrapper at `index` from the control;
    // the wrapper is detached and leaves the collection. False outside
    // 0..Count-1.
    bool RemoveAt(int32_t index);
    // The wrapper of `annotation`, or empty.
    ComPtr<IDispatch> WrapperOf(const CGD_Annotation* annotation) const;
    CUI_VexplotCtrl* Owner() const { return owner_; }
    // This collection's dispatch table.
    const BasicDispatchTable<CoAnnotationCollection>& Rows() const { return table_; }

    // IDispatch:
    HRESULT GetTypeInfoCount(uint32_t* count) override;
    HRESULT GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) override;
    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

    // The rows the three collections share (dispids 0 to 4 and 6); each
    // adds its own Add (5).
    static void AddCommonRows(BasicDispatchTable<CoAnnotationCollection>& table);

protected:
    CoAnnotationCollection(CUI_VexplotCtrl& owner, AnnotationKind kind,
                           const BasicDispatchTable<CoAnnotationCollection>& table);
    ~CoAnnotationCollection() override;

    // Wraps the annotations the control already has (the kinds' constructors
    // call it, once Wrap can be called).
    void WrapExisting();
    // Makes the wrapper of an annotation of this collection's kind.
    virtual ComPtr<CoAnnotation> Wrap(CGD_Annotation& annotation) = 0;
    // Whether `annotation` belongs here (the kind; regions also not internal).
    virtual bool Wraps(const CGD_Annotation& annotation) const;

private:
    // IAnnotationObserver:
    void AnnotationAdded(CGD_Annotation& annotation) override;
    void AnnotationRemoved(CGD_Annotation& annotation) override;
    void AnnotationListClosed() override;
    void DetachAll();

    CUI_VexplotCtrl* owner_;  // borrowed; cleared when its list goes
    AnnotationKind kind_;
    const BasicDispatchTable<CoAnnotationCollection>& table_;
    std::vector<ComPtr<CoAnnotation>> wrappers_;
};

}  // namespace vexplot
