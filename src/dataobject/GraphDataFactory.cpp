#include "dataobject/GraphDataFactory.h"

#include <algorithm>

#include "com/ClassRegistry.h"
#include "com/ComError.h"
#include "com/IPersist.h"
#include "dataobject/GraphContents.h"
#include "dataobject/GraphDataClass.h"

namespace vexplot {

namespace {

void CheckArguments(size_t values, int32_t xCount, int32_t yCount, size_t xScale, size_t yScale) {
    std::string fault = GraphContents::CheckSize(xCount, yCount);
    if (fault.empty() && values != static_cast<uint64_t>(xCount) * static_cast<uint64_t>(yCount))
        fault = std::to_string(values) + " values do not fill a grid of " + std::to_string(xCount) + " x " +
                std::to_string(yCount);
    if (fault.empty() && xScale != 0 && xScale != static_cast<size_t>(xCount))
        fault = "the X scale has " + std::to_string(xScale) + " values for " + std::to_string(xCount) + " X indices";
    if (fault.empty() && yScale != 0 && yScale != static_cast<size_t>(yCount))
        fault = "the Y scale has " + std::to_string(yScale) + " values for " + std::to_string(yCount) + " Y indices";
    if (!fault.empty()) throw ComError(E_INVALIDARG, IGraphData::kIid, "CreateGraphData: " + fault);
}

SafeArray ScaleOrIndices(std::span<const double> scale, int32_t count) {
    return scale.empty() ? GraphContents::IndexScale(static_cast<uint32_t>(count)) : SafeArray::FromValues(scale);
}

ComPtr<IGraphData> NewGraphData() {
    RegisterGraphDataClass();
    HRESULT hr = S_OK;
    ComPtr<IGraphData> data = CreateInstance<IGraphData>(CLSID_GraphData, CLSCTX_INPROC, &hr);
    ThrowIfFailed(hr, IGraphData::kIid, "cannot create the data object");
    return data;
}

}  // namespace

ComPtr<IGraphData> CreateGraphData(std::span<const double> values, int32_t xCount, int32_t yCount,
                                   std::span<const double> xScale, std::span<const double> yScale,
                                   std::string xLabel, std::string yLabel, std::string zLabel) {
    CheckArguments(values.size(), xCount, yCount, xScale.size(), yScale.size());
    ComPtr<IGraphData> data = NewGraphData();
    SafeArray grid;
    if (!values.empty()) {
        grid = SafeArray::Create2DForOverwrite(static_cast<uint32_t>(yCount), static_cast<uint32_t>(xCount));
        std::copy(values.begin(), values.end(), grid.MutableData());
    }
    ThrowIfFailed(data->SetGrid(grid, ScaleOrIndices(xScale, xCount), ScaleOrIndices(yScale, yCount)),
                  IGraphData::kIid);
    ThrowIfFailed(data->PutXLabel(xLabel), IGraphData::kIid);
    ThrowIfFailed(data->PutYLabel(yLabel), IGraphData::kIid);
    ThrowIfFailed(data->PutZLabel(zLabel), IGraphData::kIid);
    return data;
}

ComPtr<IGraphData> LoadGraphData(const std::string& path) {
    ComPtr<IGraphData> data = NewGraphData();
    HRESULT hr = S_OK;
    ComPtr<IPersistFile> file = data.As<IPersistFile>(&hr);
    ThrowIfFailed(hr, IPersistFile::kIid, "the data object cannot load files");
    ThrowIfFailed(file->Load(path.c_str(), STGM_SHARE_DENY_WRITE), IPersistFile::kIid);
    return data;
}

}  // namespace vexplot
