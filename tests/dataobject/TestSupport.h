#pragma once
// Helpers shared by the data object's tests: a scratch folder, grids built
// from a formula, NumPy files built byte by byte (independently of the
// reader), and snapshots of an object for "left unchanged" checks.
#include <stdlib.h>

#include <bit>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "support/TempDir.h"
#include "com/MemoryStream.h"
#include "com/SafeArray.h"
#include "dataobject/GraphDataObject.h"
#include "dataobject/IGraphData.h"

namespace vexplot::test {

using Bytes = std::vector<uint8_t>;

inline void WriteFile(const std::string& path, const void* bytes, size_t size) {
    std::ofstream out(path, std::ios::binary);
    out.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(size));
}
inline void WriteFile(const std::string& path, const Bytes& bytes) { WriteFile(path, bytes.data(), bytes.size()); }
inline void WriteFile(const std::string& path, const std::string& text) { WriteFile(path, text.data(), text.size()); }

inline Bytes ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

// A grid of xCount by yCount (dimension 0 = Y) with value(ix, iy) in each cell.
inline SafeArray MakeGrid(uint32_t xCount, uint32_t yCount, const std::function<double(uint32_t, uint32_t)>& value) {
    SafeArray grid = SafeArray::Create2D(yCount, xCount);
    double* cells = grid.MutableData();
    for (uint32_t ix = 0; ix < xCount; ++ix)
        for (uint32_t iy = 0; iy < yCount; ++iy) cells[size_t{ix} * yCount + iy] = value(ix, iy);
    return grid;
}

inline std::vector<double> ValuesOf(const SafeArray& a) { return {a.Values().begin(), a.Values().end()}; }

// True when both hold the same doubles bit for bit (so NaN equals NaN).
inline bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * 8) == 0);
}

// Everything observable about a data object's contents.
struct Snapshot {
    int32_t xCount = 0, yCount = 0, state = 0;
    std::vector<double> grid, xScale, yScale;
    std::string xLabel, yLabel, zLabel, name;

    bool operator==(const Snapshot& o) const {
        return xCount == o.xCount && yCount == o.yCount && state == o.state && SameBits(grid, o.grid) &&
               SameBits(xScale, o.xScale) && SameBits(yScale, o.yScale) && xLabel == o.xLabel &&
               yLabel == o.yLabel && zLabel == o.zLabel && name == o.name;
    }
};

inline Snapshot Capture(IGraphData& data) {
    Snapshot s;
    SafeArray array;
    data.GetSize(&s.xCount, &s.yCount);
    s.state = data.GetState();
    data.GetData(&array);
    s.grid = ValuesOf(array);
    data.GetXScale(&array);
    s.xScale = ValuesOf(array);
    data.GetYScale(&array);
    s.yScale = ValuesOf(array);
    data.GetXLabel(&s.xLabel);
    data.GetYLabel(&s.yLabel);
    data.GetZLabel(&s.zLabel);
    data.GetName(&s.name);
    return s;
}

// A data object holding a 3 x 2 grid, scales, labels and a name.
inline ComPtr<GraphDataObject> FilledObject() {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    object->SetGrid(MakeGrid(3, 2, [](uint32_t ix, uint32_t iy) { return 10.0 * ix + iy; }),
                    SafeArray::FromValues(std::vector<double>{-1, 0, 1}),
                    SafeArray::FromValues(std::vector<double>{5, 7}));
    object->PutXLabel("x");
    object->PutYLabel("y");
    object->PutZLabel("z");
    object->PutName("original");
    return object;
}

// The bytes of one value of type T in the given byte order.
template <class T>
Bytes Encode(T value, bool bigEndian) {
    Bytes bytes(sizeof(T));
    std::memcpy(bytes.data(), &value, sizeof(T));
    if (bigEndian == (std::endian::native == std::endian::little)) std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

template <class T>
Bytes EncodeAll(const std::vector<T>& values, bool bigEndian) {
    Bytes out;
    for (const T& v : values) {
        const Bytes one = Encode(v, bigEndian);
        out.insert(out.end(), one.begin(), one.end());
    }
    return out;
}

// A ".npy" file: magic, version, header length, the dictionary padded with
// blanks and a newline to a multiple of 64 bytes, then `data`.
inline Bytes NpyFile(const std::string& dictionary, const Bytes& data, int major = 1) {
    const size_t lengthSize = major == 1 ? 2 : 4;
    std::string header = dictionary;
    while ((10 + lengthSize - 2 + header.size() + 1) % 64 != 0) header += ' ';
    header += '\n';
    Bytes out = {0x93, 'N', 'U', 'M', 'P', 'Y', static_cast<uint8_t>(major), 0};
    for (size_t i = 0; i < lengthSize; ++i) out.push_back(static_cast<uint8_t>(header.size() >> (8 * i)));
    out.insert(out.end(), header.begin(), header.end());
    out.insert(out.end(), data.begin(), data.end());
    return out;
}

inline std::string NpyDictionary(const std::string& descr, bool fortran, const std::string& shape) {
    return "{'descr': '" + descr + "', 'fortran_order': " + (fortran ? "True" : "False") + ", 'shape': " + shape +
           ", }";
}

}  // namespace vexplot::test
