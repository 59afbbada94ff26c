#include "dataobject/GraphDataObject.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "com/AtomicFile.h"
#include "com/ErrorInfo.h"
#include "com/StreamError.h"
#include "com/StreamReader.h"
#include "com/StreamWriter.h"
#include "com/Variant.h"
#include "dataobject/GraphDispatch.h"
#include "dataobject/GraphFileLoader.h"
#include "dataobject/GraphStreamFormat.h"
#include "dataobject/IGraphDataEvents.h"
#include "dataobject/ScaleSearch.h"

namespace vexplot {

namespace {

HRESULT Failure(const IID& iid, HRESULT hr, std::string description) {
    SetErrorInfo(iid, std::move(description));
    return hr;
}

HRESULT InvalidArgument(std::string description) {
    return Failure(IGraphData::kIid, E_INVALIDARG, std::move(description));
}

HRESULT NoSuchCell(int32_t row, int32_t column, int32_t xCount, int32_t yCount) {
    return Failure(IGraphData::kIid, DISP_E_BADINDEX,
                   "cell (" + std::to_string(row) + ", " + std::to_string(column) + ") is outside the grid of " +
                       std::to_string(xCount) + " x " + std::to_string(yCount));
}

int32_t Clamp(int32_t index, int32_t count) { return std::clamp(index, 0, count - 1); }

}  // namespace

GraphDataObject::GraphDataObject()
    : points_(static_cast<IConnectionPointContainer*>(this)), events_(points_.Add(IID_IGraphDataEvents)) {}

GraphDataObject::~GraphDataObject() = default;

void GraphDataObject::Commit(unsigned changes) {
    ++revision_;
    if (changes & kGrid) events_.FireDispatch(DISPID_DataChanged);
    if (changes & (kXScale | kYScale)) {
        const int32_t which = (changes & kXScale) && (changes & kYScale) ? 2 : (changes & kXScale) ? 0 : 1;
        events_.FireDispatch(DISPID_TicksChanged, {Variant(which)});
    }
    if (changes & kLabels) events_.FireDispatch(DISPID_LabelsChanged);
}

void GraphDataObject::Adopt(GraphContents next) {
    contents_ = std::move(next);
    extent_.Invalidate();
    Commit(kAll);
}

const ZExtentCache::Extent& GraphDataObject::Extent() { return extent_.Get(contents_.grid.Values()); }

// IDispatch ----------------------------------------------------------------

HRESULT GraphDataObject::GetTypeInfoCount(uint32_t* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT GraphDataObject::GetTypeInfo(uint32_t, LCID, IUnknown** info) {
    if (info) *info = nullptr;
    return E_NOTIMPL;
}

HRESULT GraphDataObject::GetIDsOfNames(const IID&, const char* const* names, uint32_t count, LCID, DISPID* ids) {
    return GraphDispatch::GetIDsOfNames(names, count, ids);
}

HRESULT GraphDataObject::Invoke(DISPID member, const IID&, LCID, uint16_t flags, DispParams* params, Variant* result,
                                ExcepInfo* excepInfo, uint32_t* argErr) {
    return GraphDispatch::Invoke(*this, *this, member, flags, params, result, excepInfo, argErr);
}

// IGraphData ---------------------------------------------------------------

HRESULT GraphDataObject::GetData(SafeArray* grid) {
    if (!grid) return E_POINTER;
    *grid = contents_.HasGrid() ? contents_.grid : SafeArray::Create2D(0, 0);
    return S_OK;
}

HRESULT GraphDataObject::PutData(const SafeArray& grid) {
    if (grid.IsNull() || grid.ElementCount() == 0) {
        if (!grid.IsNull() && grid.Dims() != 2) return InvalidArgument("the grid must have two dimensions");
        contents_.grid = contents_.xScale = contents_.yScale = SafeArray();
        extent_.Invalidate();
        Commit(kGrid | kXScale | kYScale);
        return S_OK;
    }
    if (grid.Dims() != 2)
        return InvalidArgument("the grid has " + std::to_string(grid.Dims()) + " dimensions instead of two");
    if (std::string fault = GraphContents::CheckSize(grid.Bound(1).count, grid.Bound(0).count); !fault.empty())
        return InvalidArgument(fault);
    unsigned changes = kGrid;
    const uint32_t xCount = grid.Bound(1).count, yCount = grid.Bound(0).count;
    SafeArray xScale = contents_.xScale, yScale = contents_.yScale;
    if (!contents_.HasGrid() || xScale.ElementCount() != xCount) {
        xScale = GraphContents::IndexScale(xCount);
        changes |= kXScale;
    }
    if (!contents_.HasGrid() || yScale.ElementCount() != yCount) {
        yScale = GraphContents::IndexScale(yCount);
        changes |= kYScale;
    }
    contents_.grid = grid;
    contents_.xScale = std::move(xScale);
    contents_.yScale = std::move(yScale);
    extent_.Invalidate();
    Commit(changes);
    return S_OK;
}

HRESULT GraphDataObject::PutScale(const SafeArray& scale, bool xAxis) {
    const char* axis = xAxis ? "X" : "Y";
    const int32_t count = xAxis ? contents_.XCount() : contents_.YCount();
    if (scale.Dims() > 1 || (scale.IsNull() && count > 0))
        return InvalidArgument(std::string("the ") + axis + " scale must have one dimension");
    if (scale.ElementCount() != static_cast<size_t>(count))
        return InvalidArgument(std::string("the ") + axis + " scale has " + std::to_string(scale.ElementCount()) +
                               " values but the grid has " + std::to_string(count) + " " + axis + " indices");
    if (count == 0) return S_OK;  // no grid: nothing to change
    (xAxis ? contents_.xScale : contents_.yScale) = scale;
    Commit(xAxis ? kXScale : kYScale);
    return S_OK;
}

HRESULT GraphDataObject::GetXScale(SafeArray* scale) {
    if (!scale) return E_POINTER;
    *scale = contents_.HasGrid() ? contents_.xScale : SafeArray::Create1D(0);
    return S_OK;
}

HRESULT GraphDataObject::PutXScale(const SafeArray& scale) { return PutScale(scale, true); }

HRESULT GraphDataObject::GetYScale(SafeArray* scale) {
    if (!scale) return E_POINTER;
    *scale = contents_.HasGrid() ? contents_.yScale : SafeArray::Create1D(0);
    return S_OK;
}

HRESULT GraphDataObject::PutYScale(const SafeArray& scale) { return PutScale(scale, false); }

HRESULT GraphDataObject::GetText(const std::string& field, std::string* text) {
    if (!text) return E_POINTER;
    *text = field;
    return S_OK;
}

HRESULT GraphDataObject::PutText(std::string GraphContents::*field, const std::string& text) {
    contents_.*field = text;
    Commit(kLabels);
    return S_OK;
}

HRESULT GraphDataObject::GetXLabel(std::string* label) { return GetText(contents_.xLabel, label); }
HRESULT GraphDataObject::PutXLabel(const std::string& label) { return PutText(&GraphContents::xLabel, label); }
HRESULT GraphDataObject::GetYLabel(std::string* label) { return GetText(contents_.yLabel, label); }
HRESULT GraphDataObject::PutYLabel(const std::string& label) { return PutText(&GraphContents::yLabel, label); }
HRESULT GraphDataObject::GetZLabel(std::string* label) { return GetText(contents_.zLabel, label); }
HRESULT GraphDataObject::PutZLabel(const std::string& label) { return PutText(&GraphContents::zLabel, label); }
HRESULT GraphDataObject::GetName(std::string* name) { return GetText(contents_.name, name); }
HRESULT GraphDataObject::PutName(const std::string& name) { return PutText(&GraphContents::name, name); }

int32_t GraphDataObject::GetState() { return revision_; }

HRESULT GraphDataObject::GetSize(int32_t* xCount, int32_t* yCount) {
    if (!xCount || !yCount) return E_POINTER;
    *xCount = contents_.XCount();
    *yCount = contents_.YCount();
    return S_OK;
}

HRESULT GraphDataObject::SetGrid(const SafeArray& grid, const SafeArray& xScale, const SafeArray& yScale) {
    GraphContents next{grid, xScale, yScale, contents_.xLabel, contents_.yLabel, contents_.zLabel, contents_.name};
    if (!next.HasGrid()) {
        // An empty grid clears the object; scales given with it must be empty too.
        next.grid = SafeArray();
        if (next.xScale.ElementCount() == 0) next.xScale = SafeArray();
        if (next.yScale.ElementCount() == 0) next.yScale = SafeArray();
    }
    if (std::string fault = next.Check(); !fault.empty()) return InvalidArgument(fault);
    contents_ = std::move(next);
    extent_.Invalidate();
    Commit(kGrid | kXScale | kYScale);
    return S_OK;
}

HRESULT GraphDataObject::GetValue(int32_t row, int32_t column, double* value) {
    if (!value) return E_POINTER;
    const int32_t xCount = contents_.XCount(), yCount = contents_.YCount();
    if (row < 0 || row >= xCount || column < 0 || column >= yCount) return NoSuchCell(row, column, xCount, yCount);
    *value = contents_.grid.Data()[size_t(row) * size_t(yCount) + size_t(column)];
    return S_OK;
}

HRESULT GraphDataObject::PutValue(int32_t row, int32_t column, double value) {
    const int32_t xCount = contents_.XCount(), yCount = contents_.YCount();
    if (row < 0 || row >= xCount || column < 0 || column >= yCount) return NoSuchCell(row, column, xCount, yCount);
    double& cell = contents_.grid.MutableData()[size_t(row) * size_t(yCount) + size_t(column)];
    extent_.CellChanged(std::exchange(cell, value), value);
    Commit(kGrid);
    return S_OK;
}

// IGraphDataAccess ---------------------------------------------------------

// A grid whose cells are all NaN or infinite has no extent: the 0 given
// then comes with S_FALSE, so that nobody takes 0 .. 0 for its range.
HRESULT GraphDataObject::ExtentResult() const {
    return contents_.HasGrid() && extent_.FiniteCount() == 0 ? S_FALSE : S_OK;
}

HRESULT GraphDataObject::GetZMin(double* zMin) {
    if (!zMin) return E_POINTER;
    *zMin = Extent().min;
    return ExtentResult();
}

HRESULT GraphDataObject::GetZMax(double* zMax) {
    if (!zMax) return E_POINTER;
    *zMax = Extent().max;
    return ExtentResult();
}

HRESULT GraphDataObject::GetData(Variant* grid) {
    if (!grid) return E_POINTER;
    SafeArray array;
    GetData(&array);
    *grid = Variant(std::move(array));
    return S_OK;
}

HRESULT GraphDataObject::GetXScale(Variant* scale) {
    if (!scale) return E_POINTER;
    SafeArray array;
    GetXScale(&array);
    *scale = Variant(std::move(array));
    return S_OK;
}

HRESULT GraphDataObject::GetYScale(Variant* scale) {
    if (!scale) return E_POINTER;
    SafeArray array;
    GetYScale(&array);
    *scale = Variant(std::move(array));
    return S_OK;
}

HRESULT GraphDataObject::IndicesToValues(int32_t xIndex, int32_t yIndex, double* x, double* y) {
    if (!x || !y) return E_POINTER;
    if (!contents_.HasGrid()) return Failure(IGraphDataAccess::kIid, DISP_E_BADINDEX, "the data object has no grid");
    *x = contents_.xScale.Data()[Clamp(xIndex, contents_.XCount())];
    *y = contents_.yScale.Data()[Clamp(yIndex, contents_.YCount())];
    return S_OK;
}

HRESULT GraphDataObject::GetValueAt(double x, double y, double* z) {
    if (!z) return E_POINTER;
    if (!contents_.HasGrid()) return Failure(IGraphDataAccess::kIid, DISP_E_BADINDEX, "the data object has no grid");
    int32_t ix = 0, iy = 0;
    ValuesToIndices(x, y, &ix, &iy);
    return GetValue(ix, iy, z);
}

HRESULT GraphDataObject::GetMissingCount(int64_t* count) {
    if (!count) return E_POINTER;
    *count = Extent().missing;
    return S_OK;
}

HRESULT GraphDataObject::GetGridPointer(const double** values, int32_t* xCount, int32_t* yCount) {
    if (!values || !xCount || !yCount) return E_POINTER;
    *values = contents_.HasGrid() ? contents_.grid.Data() : nullptr;
    return GetSize(xCount, yCount);
}

HRESULT GraphDataObject::ValuesToIndices(double x, double y, int32_t* xIndex, int32_t* yIndex) {
    if (!xIndex || !yIndex) return E_POINTER;
    *xIndex = NearestScaleIndex(contents_.xScale.Values(), x);
    *yIndex = NearestScaleIndex(contents_.yScale.Values(), y);
    return S_OK;
}

// IConnectionPointContainer ------------------------------------------------

HRESULT GraphDataObject::GetConnectionPointCount(uint32_t* count) { return points_.Count(count); }

HRESULT GraphDataObject::FindConnectionPoint(const IID& iid, IConnectionPoint** out) { return points_.Find(iid, out); }

// Persistence --------------------------------------------------------------

HRESULT GraphDataObject::GetClassID(CLSID* clsid) {
    if (!clsid) return E_POINTER;
    *clsid = CLSID_GraphData;
    return S_OK;
}

HRESULT GraphDataObject::IsDirty() { return revision_ != savedRevision_ ? S_OK : S_FALSE; }

HRESULT GraphDataObject::Load(IStream* stream) {
    if (!stream) return E_POINTER;
    try {
        StreamReader reader(stream);
        Adopt(GraphStreamFormat::Read(reader));
    } catch (const StreamError& e) {
        return Failure(IPersistStream::kIid, e.Code(), e.Description());
    } catch (const std::bad_alloc&) {
        return Failure(IPersistStream::kIid, E_OUTOFMEMORY, "not enough memory to load the data object");
    }
    savedRevision_ = revision_;
    return S_OK;
}

HRESULT GraphDataObject::Save(IStream* stream, bool clearDirty) {
    if (!stream) return E_POINTER;
    try {
        StreamWriter writer(stream);
        GraphStreamFormat::Write(contents_, writer);
    } catch (const StreamError& e) {
        return Failure(IPersistStream::kIid, e.Code(), e.Description());
    }
    if (clearDirty) savedRevision_ = revision_;
    return S_OK;
}

HRESULT GraphDataObject::GetSizeMax(uint64_t* size) {
    if (!size) return E_POINTER;
    *size = GraphStreamFormat::Size(contents_);
    return S_OK;
}

HRESULT GraphDataObject::Load(const char* fileName, uint32_t) {
    if (!fileName) return E_POINTER;
    try {
        Adopt(GraphFileLoader::Load(fileName));
    } catch (const StreamError& e) {
        return Failure(IPersistFile::kIid, e.Code(), e.Description());
    }
    currentFile_ = fileName;
    savedRevision_ = revision_;
    return S_OK;
}

HRESULT GraphDataObject::Save(const char* fileName, bool remember) {
    const std::string path = fileName ? fileName : currentFile_;
    if (path.empty()) return Failure(IPersistFile::kIid, E_INVALIDARG, "no file name to save to");
    try {
        WriteFileAtomically(path, [this](IStream& stream) {
            StreamWriter writer(&stream);
            GraphStreamFormat::Write(contents_, writer);
        });
    } catch (const StreamError& e) {
        return Failure(IPersistFile::kIid, e.Code(), path + ": " + e.Description());
    } catch (const std::bad_alloc&) {
        return Failure(IPersistFile::kIid, E_OUTOFMEMORY, path + ": not enough memory to save");
    }
    if (!fileName || remember) {
        currentFile_ = path;
        savedRevision_ = revision_;
    }
    return S_OK;
}

HRESULT GraphDataObject::SaveCompleted(const char*) { return S_OK; }

HRESULT GraphDataObject::GetCurFile(char* buffer, uint32_t size) {
    if (!buffer) return E_POINTER;
    const std::string name = currentFile_.empty() ? std::string("*.3do") : currentFile_;
    if (name.size() >= size) return E_INVALIDARG;
    std::memcpy(buffer, name.c_str(), name.size() + 1);
    return currentFile_.empty() ? S_FALSE : S_OK;
}

}  // namespace vexplot
