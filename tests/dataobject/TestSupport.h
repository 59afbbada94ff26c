#pragma once
// Helpers shared by the data object's tests: NumPy files built byte by byte
// (independently of the reader), and snapshots of an object for "left
// unchanged" checks.
#include <bit>
#include <cstring>
#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "com/MemoryStream.h"
#include "com/SafeArray.h"
#include "com/StreamWriter.h"
#include "dataobject/GraphDataObject.h"
#include "dataobject/IGraphData.h"
#include "support/Grid.h"
#include "support/TempDir.h"

namespace vexplot::test {

using Bytes = std::vector<uint8_t>;

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

// With `withState` false the change counter reads 0, for comparing objects
// with different histories.
inline Snapshot Capture(IGraphData& data, bool withState = true) {
    Snapshot s;
    SafeArray array;
    data.GetSize(&s.xCount, &s.yCount);
    s.state = withState ? data.GetState() : 0;
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

// The bytes of values of type T, each in the given byte order.
template <class T>
Bytes EncodeAll(const std::vector<T>& values, bool bigEndian) {
    Bytes out(values.size() * sizeof(T));
    for (size_t i = 0; i < values.size(); ++i) {
        const auto one = out.begin() + static_cast<ptrdiff_t>(i * sizeof(T));
        std::memcpy(&*one, &values[i], sizeof(T));
        if (bigEndian == (std::endian::native == std::endian::little)) std::reverse(one, one + sizeof(T));
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

// A ".3do" stream by its layout, whose counts need not match what follows
// them: magic, version, the counts, the scale values, the four texts (X, Y
// and Z label, name), the grid values.
inline Bytes ThreeDo(int32_t xCount, int32_t yCount, const std::vector<double>& scales,
                     const std::vector<std::string>& texts, const std::vector<double>& grid, int32_t version = 1) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    StreamWriter w(stream.Get());
    const uint8_t magic[] = {'V', 'X', '3', 'D', 'O', '\r', '\n', 0x1A};
    w.WriteBytes(magic);
    w.WriteInt32(version);
    w.WriteInt32(xCount);
    w.WriteInt32(yCount);
    w.WriteDoubles(scales);
    for (const std::string& text : texts) w.WriteString(text);
    w.WriteDoubles(grid);
    return stream->Bytes();
}

inline std::string NpyDictionary(const std::string& descr, bool fortran, const std::string& shape) {
    return "{'descr': '" + descr + "', 'fortran_order': " + (fortran ? "True" : "False") + ", 'shape': " + shape +
           ", }";
}

}  // namespace vexplot::test
