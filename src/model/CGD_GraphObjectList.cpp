#include "model/CGD_GraphObjectList.h"

#include <algorithm>
#include <vector>

#include "com/ClassRegistry.h"
#include "com/ComError.h"
#include "com/IClassFactory.h"

namespace vexplot {

namespace {

void Check(HRESULT hr, const IID& iid) { ThrowIfFailed(hr, iid); }

// The scale 0, 1, ..., count - 1.
SafeArray IndexScale(uint32_t count) {
    std::vector<double> values(count);
    for (uint32_t i = 0; i < count; ++i) values[i] = i;
    return SafeArray::FromValues(values);
}

size_t ScaleLength(HRESULT (IGraphData::*get)(SafeArray*), IGraphData* data) {
    SafeArray scale;
    Check((data->*get)(&scale), IGraphData::kIid);
    return scale.ElementCount();
}

}  // namespace

CGD_GraphObjectList::CGD_GraphObjectList() = default;

CGD_GraphObjectList::~CGD_GraphObjectList() { Clear(); }

CGD_GraphObject* CGD_GraphObjectList::At(int32_t index) const {
    if (index < 0 || index >= Count()) return nullptr;
    return objects_[static_cast<size_t>(index)].get();
}

CGD_GraphObject& CGD_GraphObjectList::Add(std::unique_ptr<CGD_GraphObject> graph) {
    objects_.push_back(std::move(graph));
    active_ = Count() - 1;
    return *objects_.back();
}

void CGD_GraphObjectList::Remove(const CGD_GraphObject* graph) {
    const auto it = std::find_if(objects_.begin(), objects_.end(), [&](const auto& g) { return g.get() == graph; });
    if (it == objects_.end()) return;
    const auto index = static_cast<int32_t>(it - objects_.begin());
    if (index == active_)
        active_ = -1;
    else if (index < active_)
        --active_;
    // Taken out first, so that the list is consistent while it is destroyed.
    std::unique_ptr<CGD_GraphObject> gone = std::move(*it);
    objects_.erase(it);
}

void CGD_GraphObjectList::Clear() {
    active_ = -1;
    std::vector<std::unique_ptr<CGD_GraphObject>> gone;
    gone.swap(objects_);
}

CGD_GraphObject& CGD_GraphObjectList::AddDataObject(IUnknown* dataObject, IViewHost* owner, bool dataFlag,
                                                    bool keepFullRange) {
    auto graph = std::make_unique<CGD_GraphObject>();
    graph->Attach(dataObject, owner, keepFullRange);
    graph->SetDataFlag(dataFlag);  // not yet active: only stored
    return Add(std::move(graph));
}

CGD_GraphObject& CGD_GraphObjectList::AddFromFile(const std::string& path, IViewHost* owner, bool dataFlag,
                                                  bool keepFullRange) {
    auto graph = std::make_unique<CGD_GraphObject>();
    graph->CreateFromFile(path, owner, keepFullRange);
    graph->SetDataFlag(dataFlag);
    return Add(std::move(graph));
}

CGD_GraphObject* CGD_GraphObjectList::CopyArrayData(const SafeArray& grid, IViewHost* owner, bool dataFlag,
                                                    bool keepFullRange) {
    CGD_GraphObject* showing = ShowingExternalData();
    if (showing && MatchesExternalSizes(grid)) {
        Check(external_->PutData(grid), IGraphData::kIid);
        return nullptr;
    }
    if (showing) Remove(showing);

    HRESULT hr = S_OK;
    ComPtr<IGraphData> data = CreateInstance<IGraphData>(CLSID_GraphData, CLSCTX_INPROC, &hr);
    Check(hr, IGraphData::kIid);
    Check(data->PutData(grid), IGraphData::kIid);
    Check(data->PutXScale(IndexScale(grid.Bound(1).count)), IGraphData::kIid);
    Check(data->PutYScale(IndexScale(grid.Bound(0).count)), IGraphData::kIid);
    external_ = data;
    return &AddDataObject(data.Get(), owner, dataFlag, keepFullRange);
}

void CGD_GraphObjectList::CopyAxisScaleData(int32_t axis, const SafeArray& scale) {
    if (!external_) return;
    if (axis == 0) Check(external_->PutXScale(scale), IGraphData::kIid);
    if (axis == 1) Check(external_->PutYScale(scale), IGraphData::kIid);
}

CGD_GraphObject* CGD_GraphObjectList::ShowingExternalData() const {
    if (!external_) return nullptr;
    for (const auto& graph : objects_)
        if (graph->Data() == external_.Get()) return graph.get();
    return nullptr;
}

bool CGD_GraphObjectList::MatchesExternalSizes(const SafeArray& grid) const {
    return grid.Dims() == 2 && grid.Bound(1).count == ScaleLength(&IGraphData::GetXScale, external_.Get()) &&
           grid.Bound(0).count == ScaleLength(&IGraphData::GetYScale, external_.Get());
}

double CGD_GraphObjectList::ZMinClamp() const {
    const CGD_GraphObject* graph = Active();
    return graph ? graph->ZMinClamp() : 0.0;
}

double CGD_GraphObjectList::ZMaxClamp() const {
    const CGD_GraphObject* graph = Active();
    return graph ? graph->ZMaxClamp() : 0.0;
}

}  // namespace vexplot
