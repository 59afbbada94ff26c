// Writes the sample grids of examples/ (see README.md there) into a folder:
//
//   vexplot_generate_examples [folder]     (default: the current folder)
//
// Each grid is saved as a ".3do" file through the data object itself, and
// some also as ".csv" (X values in the first row, Y values in the first
// column) and ".npy" (float64, C order, shape (Y count, X count)) by the
// small writers below. Every file is loaded back and compared with the grid
// it came from, so a sample that does not round-trip is never left behind.
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "com/ComError.h"
#include "com/IPersist.h"
#include "dataobject/GraphDataFactory.h"

namespace vexplot {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Sample {
    std::string name;
    std::vector<double> xScale, yScale;
    std::vector<double> values;  // grid order: value (ix, iy) at ix * Y + iy
    std::string xLabel, yLabel, zLabel;
    bool csv = false, npy = false;

    size_t X() const { return xScale.size(); }
    size_t Y() const { return yScale.size(); }
    double At(size_t ix, size_t iy) const { return values[ix * Y() + iy]; }
};

// n evenly spaced values from first to last, both included.
std::vector<double> Linspace(double first, double last, size_t n) {
    std::vector<double> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = n == 1 ? first : first + (last - first) * double(i) / double(n - 1);
    return v;
}

Sample Tabulate(std::string name, std::vector<double> xs, std::vector<double> ys,
                const std::function<double(double, double)>& f) {
    Sample s{std::move(name), std::move(xs), std::move(ys), {}, "x", "y", "z"};
    s.values.reserve(s.X() * s.Y());
    for (double x : s.xScale)
        for (double y : s.yScale) s.values.push_back(f(x, y));
    return s;
}

// MATLAB's peaks: three Gaussian bumps, two up and one down.
double Peaks(double x, double y) {
    return 3 * (1 - x) * (1 - x) * std::exp(-x * x - (y + 1) * (y + 1)) -
           10 * (x / 5 - x * x * x - std::pow(y, 5)) * std::exp(-x * x - y * y) -
           std::exp(-(x + 1) * (x + 1) - y * y) / 3;
}

double Sinc(double x, double y) {
    const double r = std::hypot(x, y);
    return r == 0 ? 1.0 : std::sin(r) / r;
}

// An image-like field: damped rings round two centres, a diagonal ridge, a
// slow wave and tilt, and three round holes of "no value".
double Field(double x, double y) {
    struct Hole { double x, y, r; };
    for (const Hole h : {Hole{40, 150, 9}, Hole{200, 40, 6}, Hole{128, 96, 4}})
        if (std::hypot(x - h.x, y - h.y) <= h.r) return kNaN;
    const double r1 = std::hypot(x - 90, y - 80), r2 = std::hypot(x - 190, y - 130);
    const double ridge = y - 0.4 * x - 40;
    return 0.6 * std::cos(r1 / 7) * std::exp(-r1 / 90) + 0.4 * std::cos(r2 / 5) * std::exp(-r2 / 60) +
           0.5 * std::exp(-ridge * ridge / 60) + 0.3 * std::sin(x / 25 + y / 40) + 0.002 * x;
}

std::vector<Sample> Samples() {
    std::vector<Sample> samples;
    samples.push_back(Tabulate("peaks", Linspace(-3, 3, 120), Linspace(-3, 3, 100), Peaks));
    samples.back().zLabel = "peaks(x, y)";
    samples.back().csv = samples.back().npy = true;
    samples.push_back(Tabulate("sinc", Linspace(-10, 10, 101), Linspace(-10, 10, 101), Sinc));
    samples.back().zLabel = "sin(r) / r";
    samples.back().npy = true;
    samples.push_back(Tabulate("field", Linspace(0, 255, 256), Linspace(0, 191, 192), Field));
    samples.back().xLabel = "column (px)";
    samples.back().yLabel = "row (px)";
    samples.back().zLabel = "intensity";
    samples.push_back(Tabulate("line_1x50", {0.0}, Linspace(0, 4.9, 50), [](double, double y) { return std::cos(y); }));
    samples.push_back(Tabulate("square_2x2", {0, 1}, {10, 20}, [](double x, double y) { return x + y / 10; }));
    for (size_t i = 3; i < samples.size(); ++i) samples[i].csv = samples[i].npy = true;
    return samples;
}

// Shortest text that reads back as the same double; "nan" for no value.
std::string Text(double v) {
    if (std::isnan(v)) return "nan";
    char buffer[32];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, v);
    return std::string(buffer, end);
}

void WriteCsv(const Sample& s, const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    for (double x : s.xScale) out << ',' << Text(x);
    out << '\n';
    for (size_t iy = 0; iy < s.Y(); ++iy) {
        out << Text(s.yScale[iy]);
        for (size_t ix = 0; ix < s.X(); ++ix) out << ',' << Text(s.At(ix, iy));
        out << '\n';
    }
    if (!out) throw std::runtime_error("cannot write " + path);
}

void WriteNpy(const Sample& s, const std::string& path) {
    static_assert(std::endian::native == std::endian::little, "the doubles are written as they are in memory");
    std::string header = "{'descr': '<f8', 'fortran_order': False, 'shape': (" + std::to_string(s.Y()) + ", " +
                         std::to_string(s.X()) + "), }";
    while ((10 + header.size() + 1) % 64 != 0) header += ' ';
    header += '\n';
    std::ofstream out(path, std::ios::binary);
    out.write("\x93NUMPY\x01\x00", 8);
    const char length[2] = {static_cast<char>(header.size() & 0xFF), static_cast<char>(header.size() >> 8)};
    out.write(length, 2);
    out << header;
    for (size_t iy = 0; iy < s.Y(); ++iy)  // C order: one row per Y index
        for (size_t ix = 0; ix < s.X(); ++ix) {
            const double v = s.At(ix, iy);
            out.write(reinterpret_cast<const char*>(&v), sizeof v);
        }
    if (!out) throw std::runtime_error("cannot write " + path);
}

void WriteThreeDo(const Sample& s, const std::string& path) {
    ComPtr<IGraphData> data = CreateGraphData(s.values, static_cast<int32_t>(s.X()), static_cast<int32_t>(s.Y()),
                                              s.xScale, s.yScale, s.xLabel, s.yLabel, s.zLabel);
    ThrowIfFailed(data->PutName(s.name), IGraphData::kIid);
    ComPtr<IPersistFile> file = data.As<IPersistFile>();
    ThrowIfFailed(file->Save(path.c_str(), true), IPersistFile::kIid);
}

bool Same(const std::vector<double>& a, const SafeArray& b) {
    if (a.size() != b.ElementCount()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (!(a[i] == b.Values()[i] || (std::isnan(a[i]) && std::isnan(b.Values()[i])))) return false;
    return true;
}

// Loads `path` back; NPY files carry no scales, so only their grid is compared.
void Verify(const Sample& s, const std::string& path, bool withScales) {
    ComPtr<IGraphData> data = LoadGraphData(path);
    SafeArray grid, xScale, yScale;
    data->GetData(&grid);
    data->GetXScale(&xScale);
    data->GetYScale(&yScale);
    const bool ok = Same(s.values, grid) && (!withScales || (Same(s.xScale, xScale) && Same(s.yScale, yScale)));
    if (!ok) throw std::runtime_error(path + " does not load back as written");
}

void Generate(const Sample& s, const std::string& folder) {
    const std::string base = folder + "/" + s.name;
    WriteThreeDo(s, base + ".3do");
    Verify(s, base + ".3do", true);
    if (s.csv) {
        WriteCsv(s, base + ".csv");
        Verify(s, base + ".csv", true);
    }
    if (s.npy) {
        WriteNpy(s, base + ".npy");
        Verify(s, base + ".npy", false);
    }
    std::printf("%-12s %zu x %zu%s%s\n", s.name.c_str(), s.X(), s.Y(), s.csv ? " csv" : "", s.npy ? " npy" : "");
}

}  // namespace
}  // namespace vexplot

int main(int argc, char** argv) {
    const std::string folder = argc > 1 ? argv[1] : ".";
    try {
        for (const vexplot::Sample& s : vexplot::Samples()) vexplot::Generate(s, folder);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "vexplot_generate_examples: %s\n", e.what());
        return 1;
    }
    return 0;
}
