#include "automation/CoAnnotationCollection.h"

#include "annotations/AnnotationActions.h"
#include "annotations/CGD_AnnotationList.h"
#include "annotations/CGD_Region.h"
#include "automation/AnnotationRows.h"
#include "automation/CoLabels.h"
#include "automation/CoMarkers.h"
#include "automation/CoRegions.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

CoAnnotationCollection::CoAnnotationCollection(CUI_VexplotCtrl& owner, AnnotationKind kind,
                                               const BasicDispatchTable<CoAnnotationCollection>& table)
    : owner_(&owner), kind_(kind), table_(table) {
    owner.GetAnnotations()->AddObserver(this);
}

CoAnnotationCollection::~CoAnnotationCollection() {
    if (owner_) owner_->GetAnnotations()->RemoveObserver(this);
    DetachAll();
}

bool CoAnnotationCollection::Wraps(const CGD_Annotation& annotation) const {
    if (annotation.GetKind() != static_cast<int32_t>(kind_)) return false;
    const auto* region = dynamic_cast<const CGD_Region*>(&annotation);
    return !region || !region->IsInternal();
}

ComPtr<IDispatch> CoAnnotationCollection::Item(int32_t index) const {
    if (index < 0 || index >= Count()) return {};
    return ComPtr<IDispatch>(wrappers_[static_cast<size_t>(index)].Get());
}

int32_t CoAnnotationCollection::GetIndex(IUnknown* object) const {
    if (!object) return -1;
    ComPtr<IUnknown> identity;
    if (FAILED(object->QueryInterface(IID_IUnknown, identity.ReleaseAndGetVoidAddress()))) return -1;
    for (int32_t i = 0; i < Count(); ++i)
        if (wrappers_[static_cast<size_t>(i)]->Identity() == identity.Get()) return i;
    return -1;
}

bool CoAnnotationCollection::RemoveAt(int32_t index) {
    if (!owner_ || index < 0 || index >= Count()) return false;
    // The list tells this collection, which detaches and drops the wrapper.
    return AnnotationActions::Delete(*owner_, wrappers_[static_cast<size_t>(index)]->Annotation());
}

ComPtr<IDispatch> CoAnnotationCollection::WrapperOf(const CGD_Annotation* annotation) const {
    for (const auto& wrapper : wrappers_)
        if (wrapper->Annotation() == annotation) return ComPtr<IDispatch>(wrapper.Get());
    return {};
}

void CoAnnotationCollection::WrapExisting() {
    const CGD_AnnotationList& list = *owner_->GetAnnotations();
    for (int32_t i = 0; i < list.Count(); ++i) AnnotationAdded(*list.At(i));
}

void CoAnnotationCollection::AnnotationAdded(CGD_Annotation& annotation) {
    if (Wraps(annotation)) wrappers_.push_back(Wrap(annotation));
}

void CoAnnotationCollection::AnnotationRemoved(CGD_Annotation& annotation) {
    for (auto it = wrappers_.begin(); it != wrappers_.end(); ++it)
        if ((*it)->Annotation() == &annotation) {
            (*it)->Detach();
            wrappers_.erase(it);
            return;
        }
}

void CoAnnotationCollection::AnnotationListClosed() {
    owner_ = nullptr;
    DetachAll();
}

void CoAnnotationCollection::DetachAll() {
    for (const auto& wrapper : wrappers_) wrapper->Detach();
    wrappers_.clear();
}

// -- IDispatch --

HRESULT CoAnnotationCollection::GetTypeInfoCount(uint32_t* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT CoAnnotationCollection::GetTypeInfo(uint32_t, LCID, IUnknown** info) {
    if (info) *info = nullptr;
    return E_NOTIMPL;
}

HRESULT CoAnnotationCollection::GetIDsOfNames(const IID&, const char* const* names, uint32_t count, LCID,
                                              DISPID* ids) {
    return table_.GetIDsOfNames(names, count, ids);
}

HRESULT CoAnnotationCollection::Invoke(DISPID member, const IID&, LCID, uint16_t flags, DispParams* params,
                                       Variant* result, ExcepInfo* excepInfo, uint32_t* argErr) {
    ComPtr<CoAnnotationCollection> self(this);
    return table_.Invoke(*this, member, flags, params, result, excepInfo, argErr);
}

namespace {

// The object argument of Remove and GetIndex, whichever way it came.
IUnknown* ObjectOf(const Variant& value) {
    const Variant v = value.Deref();
    if (v.Type() == VT_DISPATCH) return v.Dispatch().Get();
    if (v.Type() == VT_UNKNOWN) return v.Unknown().Get();
    return nullptr;
}

}  // namespace

void CoAnnotationCollection::AddCommonRows(BasicDispatchTable<CoAnnotationCollection>& t) {
    using namespace annotation_rows;
    using Self = CoAnnotationCollection;
    auto always = [](Self&) { return true; };
    ReadOnly(t, 0, "_Count", VT_I2, always, [](Self& s) { return Variant(static_cast<int16_t>(s.Count())); });
    ReadOnly(t, 1, "Count", VT_I2, always, [](Self& s) { return Variant(static_cast<int16_t>(s.Count())); });
    Method(t, 2, "Remove", VT_EMPTY, {{"object", VT_VARIANT}}, always, [](Self& s, DispatchCall& c) {
        s.RemoveAt(s.GetIndex(ObjectOf(c.Arg(0))));
        return Variant();
    });
    Method(t, 3, "RemoveAt", VT_EMPTY, {{"nIndex", VT_I2}}, always, [](Self& s, DispatchCall& c) {
        s.RemoveAt(c.I2(0));
        return Variant();
    });
    Method(t, 4, "GetIndex", VT_I2, {{"object", VT_VARIANT}}, always, [](Self& s, DispatchCall& c) {
        return Variant(static_cast<int16_t>(s.GetIndex(ObjectOf(c.Arg(0)))));
    });
    Method(t, 6, "Item", VT_DISPATCH, {{"nIndex", VT_I2}}, always,
           [](Self& s, DispatchCall& c) { return Variant(s.Item(c.I2(0))); });
}

// The control's Markers, Regions and Labels properties.
ComPtr<IDispatch> CUI_VexplotCtrl::AnnotationCollection(AnnotationKind kind) {
    const size_t slot = kind == AnnotationKind::Marker ? 0 : kind == AnnotationKind::Region ? 1 : 2;
    ComPtr<IDispatch>& collection = collections_[slot];
    if (!collection) {
        if (kind == AnnotationKind::Marker)
            collection = MakeComObject<CoMarkers>(*this);
        else if (kind == AnnotationKind::Region)
            collection = MakeComObject<CoRegions>(*this);
        else
            collection = MakeComObject<CoLabels>(*this);
    }
    return collection;
}

}  // namespace vexplot
