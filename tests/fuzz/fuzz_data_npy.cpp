// The NumPy reader over a MemoryStream holding the fuzzer's bytes. A fault
// must be one of the reader's StreamErrors (wrong magic, malformed header,
// data that ends early); anything else escaping is a bug and ends the run.
// A grid that reads is checked against the data object's invariant and then
// written back twice, as little-endian float64 in C order and as big-endian
// float64 in Fortran order: both files must read to the same doubles, bit
// for bit, which cross-checks the transposing, the byte swapping and the
// direct paths of the reader against each other.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "com/MemoryStream.h"
#include "com/StreamError.h"
#include "com/StreamReader.h"
#include "dataobject/NpyReader.h"

using namespace vexplot;
using fuzz::Expect;

namespace {

bool IsIndexScale(const SafeArray& scale) {
    for (size_t i = 0; i < scale.ElementCount(); ++i)
        if (scale.Data()[i] != static_cast<double>(i)) return false;
    return true;
}

// A version 1.0 file of float64 with shape (Y count, X count).
std::vector<uint8_t> WriteNpy(const GraphContents& contents, bool fortranOrder, bool bigEndian) {
    const auto xCount = static_cast<size_t>(contents.XCount()), yCount = static_cast<size_t>(contents.YCount());
    std::string header = std::string("{'descr': '") + (bigEndian ? '>' : '<') + "f8', 'fortran_order': " +
                         (fortranOrder ? "True" : "False") + ", 'shape': (" + std::to_string(yCount) + ", " +
                         std::to_string(xCount) + "), }";
    while ((10 + header.size() + 1) % 64 != 0) header += ' ';
    header += '\n';
    std::vector<uint8_t> out = {0x93, 'N', 'U', 'M', 'P', 'Y', 1, 0, static_cast<uint8_t>(header.size()),
                                static_cast<uint8_t>(header.size() >> 8)};
    out.insert(out.end(), header.begin(), header.end());
    const double* grid = contents.grid.Data();
    auto put = [&](double value) {
        uint64_t bits = 0;
        std::memcpy(&bits, &value, 8);
        for (int i = 0; i < 8; ++i) out.push_back(static_cast<uint8_t>(bits >> (8 * (bigEndian ? 7 - i : i))));
    };
    if (fortranOrder) {  // column ix holds its Y values one after another: the grid's own order
        for (size_t i = 0; i < xCount * yCount; ++i) put(grid[i]);
    } else {
        for (size_t iy = 0; iy < yCount; ++iy)
            for (size_t ix = 0; ix < xCount; ++ix) put(grid[ix * yCount + iy]);
    }
    return out;
}

GraphContents ReadBack(const std::vector<uint8_t>& bytes) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(bytes);
    try {
        StreamReader reader(stream.Get());
        GraphContents contents = NpyReader::Read(reader);
        Expect(reader.Remaining() == 0, "the reader stops at the end of the data it wrote");
        return contents;
    } catch (const StreamError& e) {
        std::fprintf(stderr, "%s\n", e.Description().c_str());
        Expect(false, "a grid written back as NPY does not read");
    }
    return {};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ComPtr<MemoryStream> stream = fuzz::StreamOver(data, size);
    GraphContents contents;
    try {
        StreamReader reader(stream.Get());
        contents = NpyReader::Read(reader);
    } catch (const StreamError& e) {
        const HRESULT hr = e.Code();
        Expect(hr == STG_E_INVALIDHEADER || hr == STG_E_DOCFILECORRUPT || hr == STG_E_READFAULT,
               "an NPY fault is one of the reader's codes");
        Expect(!e.Description().empty(), "an NPY fault is described");
        return 0;
    }
    Expect(contents.HasGrid(), "an array that reads holds a grid");
    Expect(contents.Check().empty(), "the grid read from NPY breaks the data object's invariant");
    Expect(IsIndexScale(contents.xScale) && IsIndexScale(contents.yScale), "NPY scales are 0, 1, 2, ...");

    for (const bool fortran : {false, true}) {
        const GraphContents again = ReadBack(WriteNpy(contents, fortran, /*bigEndian=*/fortran));
        Expect(again.XCount() == contents.XCount() && again.YCount() == contents.YCount(), "NPY round trip: sizes");
        Expect(fuzz::SameBits(again.grid.Values(), contents.grid.Values()), "NPY round trip: grid");
    }
    return 0;
}
