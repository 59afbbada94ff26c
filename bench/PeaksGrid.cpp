#include "PeaksGrid.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <vector>

#include "com/ClassRegistry.h"
#include "com/ComError.h"
#include "dataobject/GraphDataClass.h"

namespace vexplot::bench {
namespace {

double Coordinate(int32_t i, int32_t n) { return -3.0 + 6.0 * i / (n - 1); }

}  // namespace

double Peaks(double x, double y) {
    return 3.0 * (1 - x) * (1 - x) * std::exp(-x * x - (y + 1) * (y + 1)) -
           10.0 * (x / 5 - x * x * x - std::pow(y, 5)) * std::exp(-x * x - y * y) -
           (1.0 / 3.0) * std::exp(-(x + 1) * (x + 1) - y * y);
}

ComPtr<IGraphData> MakePeaksData(int32_t n) {
    const auto count = static_cast<uint32_t>(n);
    SafeArray grid = SafeArray::Create2DForOverwrite(count, count);
    double* z = grid.MutableData();
    SafeArray xs = SafeArray::Create1D(count);
    SafeArray ys = SafeArray::Create1D(count);
    for (int32_t i = 0; i < n; ++i) xs.MutableData()[i] = ys.MutableData()[i] = Coordinate(i, n);
    for (int32_t ix = 0; ix < n; ++ix)
        for (int32_t iy = 0; iy < n; ++iy)
            z[static_cast<size_t>(ix) * count + iy] = Peaks(Coordinate(ix, n), Coordinate(iy, n));
    auto data = CreateInstance<IGraphData>(CLSID_GraphData, CLSCTX_INPROC_SERVER);
    if (!data) throw ComError(E_FAIL, IGraphData::kIid, "no data object class");
    ThrowIfFailed(data->SetGrid(grid, xs, ys), IGraphData::kIid);
    return data;
}

std::string WritePeaksNpy(int32_t n, const std::string& stem) {
    const std::string path =
        (std::filesystem::temp_directory_path() / (stem + "_" + std::to_string(getpid()) + ".npy")).string();
    std::string header = "{'descr': '<f8', 'fortran_order': False, 'shape': (" + std::to_string(n) + ", " +
                         std::to_string(n) + "), }";
    while ((10 + header.size() + 1) % 64 != 0) header += ' ';
    header += '\n';
    std::ofstream out(path, std::ios::binary);
    out.write("\x93NUMPY\x01\x00", 8);
    const uint16_t length = static_cast<uint16_t>(header.size());
    out.write(reinterpret_cast<const char*>(&length), 2);
    out << header;
    std::vector<double> row(static_cast<size_t>(n));
    for (int32_t iy = 0; iy < n; ++iy) {
        for (int32_t ix = 0; ix < n; ++ix) row[static_cast<size_t>(ix)] = Peaks(Coordinate(ix, n), Coordinate(iy, n));
        out.write(reinterpret_cast<const char*>(row.data()), static_cast<std::streamsize>(row.size() * sizeof(double)));
    }
    return path;
}

double PeakRssMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

}  // namespace vexplot::bench
