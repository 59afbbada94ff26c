#pragma once
#include <cstdint>
#include <string>

#include "com/ComPtr.h"
#include "dataobject/IGraphData.h"

namespace vexplot::bench {

// The benchmarks' surface: the peaks function
//   z = 3(1-x)^2 e^(-x^2-(y+1)^2) - 10(x/5 - x^3 - y^5) e^(-x^2-y^2) - (1/3) e^(-(x+1)^2-y^2)
// on x, y in [-3, 3], sampled at N x N.
double Peaks(double x, double y);

// The grid in a data object (value (ix, iy) at ix * n + iy) with its scales,
// written in place as a careful host does: no second copy of the grid exists.
// The data object class must be registered.
ComPtr<IGraphData> MakePeaksData(int32_t n);

// The same grid as an .npy file in the temporary directory (rows are Y); the
// caller removes it.
std::string WritePeaksNpy(int32_t n, const std::string& stem);

// The process's peak resident set so far.
double PeakRssMiB();

}  // namespace vexplot::bench
