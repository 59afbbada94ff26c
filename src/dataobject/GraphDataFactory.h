#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "com/ComPtr.h"
#include "dataobject/IGraphData.h"

namespace vexplot {

// Host conveniences: a filled data object in one call.

// A data object holding `values` as a grid of xCount by yCount, in grid
// order (value (ix, iy) at ix * yCount + iy). Empty scales mean 0, 1, 2, ...;
// otherwise xScale has xCount values and yScale yCount. Created through the
// class registry (CoCreateInstance of CLSID_GraphData), so a registered
// replacement class is honoured. Throws ComError(E_INVALIDARG) naming the
// mismatch when the sizes disagree, ComError with the object's code
// otherwise.
ComPtr<IGraphData> CreateGraphData(std::span<const double> values, int32_t xCount, int32_t yCount,
                                   std::span<const double> xScale = {}, std::span<const double> yScale = {},
                                   std::string xLabel = {}, std::string yLabel = {}, std::string zLabel = {});

// A data object loaded from `path` (".3do", ".npy", ".csv" or other text;
// see GraphFileLoader). Throws ComError whose message is the load's
// description, naming the file and the fault.
ComPtr<IGraphData> LoadGraphData(const std::string& path);

}  // namespace vexplot
