#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "com/ComPtr.h"
#include "com/HResult.h"
#include "com/SafeArray.h"
#include "dataobject/IGraphData.h"
#include "model/CGD_GraphObject.h"

namespace vexplot {

class IViewHost;

// The control's graph objects with the index of the active one: the active
// graph object is the entry at that index when 0 <= index < count, none
// otherwise. Owns its graph objects, and the control's own data object (the
// one CopyArrayData fills), together with the operations that replace data
// and read the clamp properties of the active object.
class CGD_GraphObjectList {
public:
    CGD_GraphObjectList();
    ~CGD_GraphObjectList();
    CGD_GraphObjectList(const CGD_GraphObjectList&) = delete;
    CGD_GraphObjectList& operator=(const CGD_GraphObjectList&) = delete;

    // the list:
    int32_t Count() const { return static_cast<int32_t>(objects_.size()); }
    // Null outside the list.
    CGD_GraphObject* At(int32_t index) const;
    int32_t ActiveIndex() const { return active_; }
    // Any index is accepted; one outside the list means no active object.
    void SetActiveIndex(int32_t index) { active_ = index; }
    CGD_GraphObject* Active() const { return At(active_); }
    // Appends `graph` and makes it the active object.
    CGD_GraphObject& Add(std::unique_ptr<CGD_GraphObject> graph);
    // Destroys `graph` (which unadvises it). The active object stays the
    // same one; removing the active object leaves none active.
    void Remove(const CGD_GraphObject* graph);
    void Clear();

    // replacing data:
    // A new graph object bound to `dataObject` (Attach), given the control's
    // data flag, appended and made active. The caller lets it UpdateEngine.
    CGD_GraphObject& AddDataObject(IUnknown* dataObject, IViewHost* owner, bool dataFlag, bool keepFullRange);
    // A new graph object over a data object loaded from the file `path`
    // (CGD_GraphObject::CreateFromFile), appended as AddDataObject does. A
    // file that does not load raises its ComError and adds nothing.
    CGD_GraphObject& AddFromFile(const std::string& path, IViewHost* owner, bool dataFlag, bool keepFullRange);
    // Shows `grid` (two dimensions, dimension 1 = X) through the control's
    // own data object. When a graph object shows that data object and the
    // grid's sizes equal its current scale lengths, the grid is put in place
    // (IGraphData slot 8; the data object's DataChanged does the rest) and
    // null is returned. Otherwise that graph object is destroyed, a new data
    // object (in-process server or handler) gets the grid and the scales
    // 0, 1, ..., and a new graph object for it is added and returned.
    CGD_GraphObject* CopyArrayData(const SafeArray& grid, IViewHost* owner, bool dataFlag, bool keepFullRange);
    // Replaces a scale of the control's own data object: axis 0 the X scale
    // (slot 10), axis 1 the Y scale (slot 12); other axes, or no data object
    // yet, do nothing.
    void CopyAxisScaleData(int32_t axis, const SafeArray& scale);
    // The data object CopyArrayData filled last, or null.
    IGraphData* ExternalData() const { return external_.Get(); }

    // clamp properties of the active object (0 without one):
    double ZMinClamp() const;
    double ZMaxClamp() const;
    // Setting a clamp and the data-clamp and auto-adjust flags are refused
    // by the control itself, as members it does not implement
    // (CUI_VexplotCtrl::UnimplementedMembers).

private:
    CGD_GraphObject* ShowingExternalData() const;
    bool MatchesExternalSizes(const SafeArray& grid) const;

    ComPtr<IGraphData> external_;  // declared first: outlives the graph objects bound to it
    std::vector<std::unique_ptr<CGD_GraphObject>> objects_;
    int32_t active_ = -1;
};

}  // namespace vexplot
