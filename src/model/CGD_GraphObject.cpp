#include "model/CGD_GraphObject.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>

#include "com/ClassRegistry.h"
#include "com/ComError.h"
#include "com/ConnectionPoint.h"
#include "com/IClassFactory.h"
#include "com/IPersist.h"
#include "com/Variant.h"
#include "dataobject/GraphDataEventSink.h"
#include "dataobject/IGraphDataEvents.h"
#include "model/CGD_GraphObjectList.h"
#include "model/IViewHost.h"

namespace vexplot {

// The graph object's notification sink. A separate counted object, so that
// the data object's reference to it makes no cycle with the graph object's
// references to the data object; Detach unadvises it and cuts the link back.
class CGD_GraphObject::EventSink final : public GraphDataEventSink {
public:
    explicit EventSink(CGD_GraphObject* target) : target_(target) {}
    void Disconnect() { target_ = nullptr; }

protected:
    void DataChanged() override {
        if (target_) target_->Guarded([this] { target_->DataChanged(); });
    }
    void TicksChanged(int32_t which) override {
        if (target_) target_->Guarded([this, which] { target_->TicksChanged(which); });
    }
    void LabelsChanged() override {
        if (target_) target_->Guarded([this] { target_->LabelsChanged(); });
    }

private:
    ~EventSink() override = default;

    CGD_GraphObject* target_;
};

namespace {

void Check(HRESULT hr, const IID& iid) { ThrowIfFailed(hr, iid); }

template <class I>
I* Require(const ComPtr<I>& p) {
    if (!p) throw ComError(E_POINTER, I::kIid);
    return p.Get();
}

IViewHost* RequireOwner(IViewHost* owner) {
    if (!owner) throw ComError(E_POINTER, IViewHost::kIid);
    return owner;
}

// QueryInterface for an interface the object may lack: E_NOINTERFACE gives
// an empty pointer, any other failure raises.
template <class I>
ComPtr<I> QueryOptional(IUnknown* object) {
    ComPtr<I> result;
    const HRESULT hr = object->QueryInterface(I::kIid, result.ReleaseAndGetVoidAddress());
    if (hr == E_NOINTERFACE) return {};
    Check(hr, I::kIid);
    return result;
}

// The owner's wait cursor for one scope.
class WaitCursor {
public:
    explicit WaitCursor(IViewHost* owner) : owner_(owner) { owner_->BeginWaitCursor(); }
    ~WaitCursor() { owner_->EndWaitCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    IViewHost* owner_;
};

// A data object of the data-object class, created in any context and put
// into its running state.
ComPtr<IGraphData> CreateRunningDataObject() {
    ComPtr<IUnknown> unknown;
    Check(CoCreateInstance(CLSID_GraphData, nullptr, CLSCTX_ALL, IID_IUnknown, unknown.ReleaseAndGetVoidAddress()),
          IID_IUnknown);
    Check(OleRun(unknown.Get()), IRunnableObject::kIid);
    ComPtr<IGraphData> data;
    Check(unknown->QueryInterface(IGraphData::kIid, data.ReleaseAndGetVoidAddress()), IGraphData::kIid);
    return data;
}

using AccessGetter = HRESULT (IGraphDataAccess::*)(Variant*);

// An array of doubles with `dims` dimensions from one of the access
// interface's VARIANT getters (slots 5, 6, 7).
SafeArray ReadAccessArray(IGraphDataAccess* access, AccessGetter get, uint32_t dims) {
    Variant value;
    Check((access->*get)(&value), IGraphDataAccess::kIid);
    if (value.Type() != (VT_ARRAY | VT_R8) || value.Array().Dims() != dims)
        throw ComError(DISP_E_TYPEMISMATCH, IGraphDataAccess::kIid, "grid or scale is not an array of doubles");
    return value.Array();
}

// First and last element of a one-dimensional scale, read at its lower and
// upper bound; an empty scale gives 0, 0.
CGD_GraphObject::ScaleEnds ReadEnds(const SafeArray& scale, const IID& iid) {
    CGD_GraphObject::ScaleEnds ends;
    if (scale.ElementCount() == 0) return ends;
    const int32_t lower = scale.LowerBound(0);
    const auto upper = static_cast<int32_t>(scale.UpperBound(0));
    Check(scale.GetElement(std::span(&lower, 1), &ends.first), iid);
    Check(scale.GetElement(std::span(&upper, 1), &ends.last), iid);
    return ends;
}

int32_t Count(size_t n) { return static_cast<int32_t>(std::min<size_t>(n, INT32_MAX)); }

// Zmax then Zmin (access slots 4 and 3) into the extent.
void ReadZExtent(IGraphDataAccess* access, GridExtent* extent) {
    Check(access->GetZMax(&extent->zMax), IGraphDataAccess::kIid);
    Check(access->GetZMin(&extent->zMin), IGraphDataAccess::kIid);
}

// Sample count and step of the preview along one direction.
struct PreviewAxis {
    int32_t count;
    int32_t step;
};

PreviewAxis PreviewAlong(int32_t count, int32_t factor) {
    const int32_t decimated = count / factor;
    if (decimated >= 10) return {decimated, factor};
    // Too few samples at this factor: take up to 10, evenly spaced.
    const int32_t samples = std::min(count, 10);
    return {samples, samples > 0 ? count / samples : 0};
}

// A grid larger than 50 in either direction gets a preview.
int32_t DecimationFactor(const CGD_GraphObject::Geometry& g) { return std::max(g.xCount, g.yCount) / 50; }

}  // namespace

CGD_GraphObject::CGD_GraphObject() = default;

CGD_GraphObject::~CGD_GraphObject() { Detach(); }

// -- binding --

bool CGD_GraphObject::CreateFromFile(const std::string& fileName, IViewHost* owner, bool keepFullRange) {
    WaitCursor wait(RequireOwner(owner));
    Detach();
    ComPtr<IGraphData> data = CreateRunningDataObject();
    ComPtr<IPersistFile> file = QueryOptional<IPersistFile>(data.Get());
    Check(Require(file)->Load(fileName.c_str(), STGM_SHARE_DENY_WRITE), IPersistFile::kIid);
    ComPtr<IGraphDataAccess> access = QueryOptional<IGraphDataAccess>(data.Get());
    Bind(std::move(data), std::move(access), owner, keepFullRange);
    return Advise();
}

bool CGD_GraphObject::Attach(IUnknown* dataObject, IViewHost* owner, bool keepFullRange) {
    WaitCursor wait(RequireOwner(owner));
    Detach();
    if (!dataObject) throw ComError(E_POINTER, IGraphData::kIid);
    ComPtr<IGraphData> data = QueryOptional<IGraphData>(dataObject);
    ComPtr<IGraphDataAccess> access = QueryOptional<IGraphDataAccess>(dataObject);
    Bind(std::move(data), std::move(access), owner, keepFullRange);
    return Advise();
}

void CGD_GraphObject::Bind(ComPtr<IGraphData> data, ComPtr<IGraphDataAccess> access, IViewHost* owner,
                           bool keepFullRange) {
    data_ = std::move(data);
    access_ = std::move(access);
    owner_ = owner;
    SetEngine(owner->GetEngine());
    contrastColor_ = ~owner->GetBackgroundColor() & 0x00FFFFFFu;
    ReadSizes();
    RebuildPreview();
    if (keepFullRange) {
        geometry_.firstShownX = geometry_.firstShownY = 0;
        geometry_.shownXCount = geometry_.xCount;
        geometry_.shownYCount = geometry_.yCount;
    } else {
        const ScaleEnds x = GetXRange();
        const ScaleEnds y = GetYRange();
        SetShownRange(x.first, x.last, y.first, y.last);
    }
}

bool CGD_GraphObject::Advise() {
    sink_ = MakeComObject<EventSink>(this);
    if (SUCCEEDED(ConnectionAdvise(data_.Get(), IID_IGraphDataEvents, sink_->Identity(), &cookie_))) return true;
    sink_->Disconnect();
    sink_.Reset();
    cookie_ = 0;
    return false;
}

void CGD_GraphObject::Detach() {
    if (sink_) {
        // The data object may already refuse; the link back is cut either way.
        if (data_) ConnectionUnadvise(data_.Get(), IID_IGraphDataEvents, cookie_);
        sink_->Disconnect();
        sink_.Reset();
    }
    cookie_ = 0;
    access_.Reset();
    data_.Reset();
    preview_ = {};
    rowsGrid_ = {};
}

void CGD_GraphObject::SetEngine(IGraphEngine* engine) {
    HRESULT released = S_OK;
    if (view_) released = view_->ReleaseGrid();
    view_.Reset();
    device_.Reset();
    engine_.Reset();
    Check(released, IGraphView3D::kIid);
    engine_ = ComPtr<IGraphEngine>(engine);
    if (!engine) return;
    Check(engine->GetDevice2D(device_.ReleaseAndGetAddressOf()), IGraphEngine::kIid);
    Check(engine->GetView3D(view_.ReleaseAndGetAddressOf()), IGraphEngine::kIid);
}

// The state query comes first: it tells the data object that sizes are read.
void CGD_GraphObject::ReadSizes() {
    IGraphData* data = Require(data_);
    data->GetState();
    SafeArray scale;
    Check(data->GetXScale(&scale), IGraphData::kIid);
    geometry_.xCount = Count(scale.ElementCount());
    Check(data->GetYScale(&scale), IGraphData::kIid);
    geometry_.yCount = Count(scale.ElementCount());
}

void CGD_GraphObject::RebuildPreview() {
    preview_ = {};
    const int32_t factor = DecimationFactor(geometry_);
    if (factor > 1) BuildPreview(factor);
}

// -- grid access --

CGD_GraphObject::ScaleEnds CGD_GraphObject::GetXRange() const {
    SafeArray scale;
    Check(Require(data_)->GetXScale(&scale), IGraphData::kIid);
    return ReadEnds(scale, IGraphData::kIid);
}

CGD_GraphObject::ScaleEnds CGD_GraphObject::GetYRange() const {
    SafeArray scale;
    Check(Require(data_)->GetYScale(&scale), IGraphData::kIid);
    return ReadEnds(scale, IGraphData::kIid);
}

void CGD_GraphObject::SetShownRange(double x1, double x2, double y1, double y2) {
    IGraphDataAccess* access = Require(access_);
    int32_t ix1 = 0, iy1 = 0, ix2 = 0, iy2 = 0;
    Check(access->ValuesToIndices(x1, y1, &ix1, &iy1), IGraphDataAccess::kIid);
    Check(access->ValuesToIndices(x2, y2, &ix2, &iy2), IGraphDataAccess::kIid);
    geometry_.firstShownX = ix1;
    geometry_.firstShownY = iy1;
    geometry_.shownXCount = ix2 - ix1 + 1;
    geometry_.shownYCount = iy2 - iy1 + 1;
}

void CGD_GraphObject::BuildPreview(int32_t factor) {
    preview_ = {};
    if (factor < 1) return;
    const PreviewAxis x = PreviewAlong(geometry_.xCount, factor);
    const PreviewAxis y = PreviewAlong(geometry_.yCount, factor);
    geometry_.previewXCount = x.count;
    geometry_.previewYCount = y.count;
    geometry_.previewXStep = x.step;
    geometry_.previewYStep = y.step;
    if (x.count < 1 || y.count < 1) return;

    std::vector<double> sampled(static_cast<size_t>(x.count) * static_cast<size_t>(y.count));
    const SafeArray grid = ReadGrid();
    const double* values = grid.Data();
    const auto yCount = static_cast<size_t>(geometry_.yCount);
    for (size_t i = 0; i < static_cast<size_t>(x.count); ++i)
        for (size_t j = 0; j < static_cast<size_t>(y.count); ++j)
            sampled[i * static_cast<size_t>(y.count) + j] =
                values[i * static_cast<size_t>(x.step) * yCount + j * static_cast<size_t>(y.step)];
    preview_ = std::move(sampled);
}

// The grid through access slot 5, checked against the sizes read from the
// scales so that indexing by them stays inside it.
SafeArray CGD_GraphObject::ReadGrid() const {
    SafeArray grid = ReadAccessArray(Require(access_), &IGraphDataAccess::GetData, 2);
    if (Count(grid.Bound(0).count) != geometry_.yCount || Count(grid.Bound(1).count) != geometry_.xCount)
        throw ComError(E_UNEXPECTED, IGraphDataAccess::kIid, "grid size differs from the scales' lengths");
    return grid;
}

std::vector<const double*> CGD_GraphObject::GetRows(int32_t x0, int32_t y0, int32_t nx, int32_t ny) {
    const Geometry& g = geometry_;
    if (nx < 1 || ny < 1) return {};
    if (x0 < 0 || y0 < 0 || x0 >= g.xCount || y0 >= g.yCount) return {};
    nx = std::min(nx, g.xCount - x0);
    if (flags_.usePreview && !preview_.empty()) return PreviewRows(x0, y0, nx);

    rowsGrid_ = ReadGrid();
    std::vector<const double*> rows(static_cast<size_t>(nx));
    for (int32_t k = 0; k < nx; ++k)
        rows[static_cast<size_t>(k)] = rowsGrid_.Data() + static_cast<size_t>(k + x0) * static_cast<size_t>(g.yCount) +
                                       static_cast<size_t>(y0);
    return rows;
}

// Rows of the preview that sample the grid rows x0 .. x0 + nx - 1: their
// number is nx / X step rounded to the nearest, cut where the preview ends.
std::vector<const double*> CGD_GraphObject::PreviewRows(int32_t x0, int32_t y0, int32_t nx) const {
    const Geometry& g = geometry_;
    const int32_t firstRow = x0 / g.previewXStep;
    const int32_t column = y0 / g.previewYStep;
    if (firstRow >= g.previewXCount || column >= g.previewYCount) return {};
    const auto wanted = static_cast<int32_t>(static_cast<double>(nx) / g.previewXStep + 0.5);
    const int32_t count = std::min(wanted, g.previewXCount - firstRow);
    std::vector<const double*> rows(static_cast<size_t>(std::max(count, 0)));
    for (size_t k = 0; k < rows.size(); ++k)
        rows[k] = preview_.data() + (static_cast<size_t>(firstRow) + k) * static_cast<size_t>(g.previewYCount) +
                  static_cast<size_t>(column);
    return rows;
}

double CGD_GraphObject::GetValue(int32_t row, int32_t column) const {
    double value = 0.0;
    Check(Require(data_)->GetValue(row, column, &value), IGraphData::kIid);
    return value;
}

void CGD_GraphObject::SetValue(int32_t row, int32_t column, double value) {
    Check(Require(data_)->PutValue(row, column, value), IGraphData::kIid);
}

double CGD_GraphObject::ZMinClamp() const {
    double value = 0.0;
    Check(Require(access_)->GetZMin(&value), IGraphDataAccess::kIid);
    return value;
}

bool CGD_GraphObject::HasZExtent() const {
    double value = 0.0;
    const HRESULT hr = Require(access_)->GetZMin(&value);
    Check(hr, IGraphDataAccess::kIid);
    return hr == S_OK;
}

double CGD_GraphObject::ZMaxClamp() const {
    double value = 0.0;
    Check(Require(access_)->GetZMax(&value), IGraphDataAccess::kIid);
    return value;
}

std::string CGD_GraphObject::Name() const {
    std::string name;
    Check(Require(data_)->GetName(&name), IGraphData::kIid);
    return name;
}

// -- engine --

void CGD_GraphObject::UpdateEngine() {
    IGraphDataAccess* access = Require(access_);
    IViewHost* owner = RequireOwner(owner_);
    const SafeArray grid = ReadAccessArray(access, &IGraphDataAccess::GetData, 2);
    const SafeArray xScale = ReadAccessArray(access, &IGraphDataAccess::GetXScale, 1);
    const SafeArray yScale = ReadAccessArray(access, &IGraphDataAccess::GetYScale, 1);
    const ScaleEnds x = ReadEnds(xScale, IGraphDataAccess::kIid);
    const ScaleEnds y = ReadEnds(yScale, IGraphDataAccess::kIid);
    GridExtent extent{x.first, x.last, y.first, y.last, 0.0, 0.0};
    const int32_t xCount = Count(grid.Bound(1).count);
    const int32_t yCount = Count(grid.Bound(0).count);
    const bool oneDimensional = oneDimensionalView_ != 0;

    SendDrawingSettings();
    ReadZExtent(access, &extent);
    if (device_)
        Check(device_->SetGrid(grid.Data(), xCount, yCount, &extent, flags_.data), IGraphDevice2D::kIid);
    // The 3-D view on screen drops its geometry before the new grid arrives.
    if (owner->Is3DViewCurrent() == 1 && engine_ && view_ && !oneDimensional)
        Check(view_->Refresh(kRefreshRebuild), IGraphView3D::kIid);
    ReadZExtent(access, &extent);
    if (view_) {
        Check(view_->SetGrid(grid.Data(), xCount, yCount, &extent, flags_.data), IGraphView3D::kIid);
        Check(view_->SetDataVisible(!flags_.suppressDisplay && !oneDimensional), IGraphView3D::kIid);
    }
    if (!oneDimensional) owner->Redraw(false);
    owner->SetSurfaceViewAvailable(oneDimensional ? 0 : 1);
    SendLabels();
}

void CGD_GraphObject::SendDrawingSettings() {
    if (layer_ < 0) return;
    if (view_) {
        Check(view_->SelectLayer(layer_), IGraphView3D::kIid);
        Check(view_->SetGraphStyle(drawing_.style), IGraphView3D::kIid);
        Check(view_->SetShading(drawing_.shading), IGraphView3D::kIid);
        Check(view_->SetLowResolution(drawing_.lowResolution), IGraphView3D::kIid);
    }
    if (device_) {
        const SectionSettings section{oneDimensionalView_, drawing_.plotStyle, static_cast<int32_t>(drawing_.pointStyle),
                                      drawing_.curveColor, drawing_.secantPosition};
        Check(device_->SetShading(drawing_.shading), IGraphDevice2D::kIid);
        Check(device_->SetSection(&section), IGraphDevice2D::kIid);
        Check(device_->SetImageVisible(drawing_.image), IGraphDevice2D::kIid);
    }
}

GraphStyle CGD_GraphObject::StyleOfGraphMode(int32_t mode) {
    switch (mode) {
        case 1: return GraphStyle::Barchart;
        case 2: return GraphStyle::Points;
        default: return GraphStyle::Surface;
    }
}

void CGD_GraphObject::SendLabels() {
    IGraphData* data = Require(data_);
    try {
        std::string label;
        Check(data->GetXLabel(&label), IGraphData::kIid);
        owner_->SetXLabel(label.c_str());
        Check(data->GetYLabel(&label), IGraphData::kIid);
        owner_->SetYLabel(label.c_str());
        Check(data->GetZLabel(&label), IGraphData::kIid);
        owner_->SetZLabel(label.c_str());
    } catch (const std::bad_alloc&) {
        throw ComError(E_OUTOFMEMORY, IGraphData::kIid);
    }
}

void CGD_GraphObject::SetDataFlag(bool flag) {
    if (flag == flags_.data) return;
    flags_.data = flag;
    if (!IsActive()) return;
    ResetDeviceData();
    UpdateEngine();
}

void CGD_GraphObject::ResetDeviceData() {
    if (device_) Check(device_->ResetData(), IGraphDevice2D::kIid);
}

// -- notifications --

bool CGD_GraphObject::IsActive() const {
    if (!owner_) return false;
    const CGD_GraphObjectList* list = owner_->GetGraphObjects();
    return list && list->Active() == this;
}

void CGD_GraphObject::DataChanged() {
    if (!IsActive()) return;
    ResetDeviceData();
    UpdateEngine();
    RefreshSizes();
    RebuildPreview();
    owner_->RefreshGraphObject(this);
}

void CGD_GraphObject::TicksChanged(int32_t) {
    if (!IsActive()) return;
    ResetDeviceData();
    UpdateEngine();
    if (editor_ && editor_->WindowExists()) {
        editor_->Close();
        editor_.reset();
    }
    if (oneDimensionalView_ == 0)
        owner_->RefreshGraphObject(this);
    else
        owner_->Rebuild1DView(this);
}

void CGD_GraphObject::LabelsChanged() {
    if (!IsActive()) return;
    for (const char* axis : {"X", "Y", "Z"}) owner_->ResetAxisLabel(axis);
}

// A host may put a grid of another size into its data object; the sizes are
// read again so that the preview and row access never index past the new
// grid, and the shown part becomes the whole new grid.
void CGD_GraphObject::RefreshSizes() {
    const int32_t xCount = geometry_.xCount;
    const int32_t yCount = geometry_.yCount;
    ReadSizes();
    if (xCount == geometry_.xCount && yCount == geometry_.yCount) return;
    rowsGrid_ = {};
    geometry_.firstShownX = geometry_.firstShownY = 0;
    geometry_.shownXCount = geometry_.xCount;
    geometry_.shownYCount = geometry_.yCount;
}

template <class Handler>
void CGD_GraphObject::Guarded(Handler handler) {
    try {
        handler();
    } catch (const ComError& e) {
        ReportError(e.Code(), e.what());
    } catch (const std::bad_alloc&) {
        ReportError(E_OUTOFMEMORY, "out of memory");
    } catch (const std::exception& e) {
        ReportError(E_FAIL, e.what());
    }
}

void CGD_GraphObject::ReportError(HRESULT code, const char* text) {
    if (owner_) owner_->FireError(code, text);
}

// -- data editor --

CGD_GraphObject::DataEditor* CGD_GraphObject::OpenDataEditor(const DataEditorFactory& create) {
    if (editor_ && editor_->WindowExists()) return editor_.get();
    IGraphDataAccess* access = Require(access_);
    DataEditorContents contents;
    contents.grid = ReadAccessArray(access, &IGraphDataAccess::GetData, 2);
    contents.xScale = ReadAccessArray(access, &IGraphDataAccess::GetXScale, 1);
    contents.yScale = ReadAccessArray(access, &IGraphDataAccess::GetYScale, 1);
    Check(access->GetZMin(&contents.zMin), IGraphDataAccess::kIid);
    Check(access->GetZMax(&contents.zMax), IGraphDataAccess::kIid);
    contents.title = DataEditorTitle(Name(), geometry_.yCount, geometry_.xCount);
    editor_ = create ? create(contents) : nullptr;
    return editor_.get();
}

std::string CGD_GraphObject::DataEditorTitle(std::string_view name, int32_t yCount, int32_t xCount) {
    std::string title(name);
    title += " -  ";
    title += std::to_string(yCount);
    title += " x ";
    title += std::to_string(xCount);
    return title;
}

void CGD_GraphObject::RestoreRecord(const DisplayFlags& flags, const Geometry& geometry, uint32_t contrastColor) {
    flags_ = flags;
    geometry_ = geometry;
    contrastColor_ = contrastColor;
    preview_ = {};
    rowsGrid_ = {};
}

}  // namespace vexplot
