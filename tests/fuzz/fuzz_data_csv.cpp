// The text grid reader, fed the fuzzer's bytes in memory both as a ".csv"
// file (commas forced) and as other text (separator detected). A fault must
// be a StreamError(STG_E_DOCFILECORRUPT) with a description; anything else
// escaping is a bug and ends the run. A grid that reads is checked against
// the data object's invariant, then written back as CSV text (header line of
// X values after an empty corner cell, rows led by their Y value, shortest
// round-trip numbers, NaN as an empty cell) and read again: the same grid
// and scales must come back.
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "com/StreamError.h"
#include "dataobject/TextGridReader.h"

using namespace vexplot;
using fuzz::Expect;

namespace {

void AppendNumber(std::string* text, double value) {
    if (std::isnan(value)) return;  // an empty cell
    char buffer[32];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    Expect(ec == std::errc(), "to_chars has room for any double");
    text->append(buffer, end);
}

std::string WriteCsv(const GraphContents& contents) {
    const auto xCount = static_cast<size_t>(contents.XCount()), yCount = static_cast<size_t>(contents.YCount());
    const double* grid = contents.grid.Data();
    std::string text;
    for (double x : contents.xScale.Values()) {
        text += ',';
        AppendNumber(&text, x);
    }
    text += '\n';
    for (size_t iy = 0; iy < yCount; ++iy) {
        AppendNumber(&text, contents.yScale.Data()[iy]);
        for (size_t ix = 0; ix < xCount; ++ix) {
            text += ',';
            AppendNumber(&text, grid[ix * yCount + iy]);
        }
        text += '\n';
    }
    return text;
}

// Equal as grid cells: NaN ("no value") equals any NaN, other values bit for
// bit (so -0 stays -0).
bool SameCells(std::span<const double> a, std::span<const double> b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (std::isnan(a[i]) && std::isnan(b[i])) continue;
        if (!fuzz::SameBits(a.subspan(i, 1), b.subspan(i, 1))) return false;
    }
    return true;
}

bool AllFinite(std::span<const double> values) {
    for (double v : values)
        if (!std::isfinite(v)) return false;
    return true;
}

void ReadAs(std::string_view text, bool commaSeparated) {
    GraphContents contents;
    try {
        contents = TextGridReader::Read(text, commaSeparated);
    } catch (const StreamError& e) {
        Expect(e.Code() == STG_E_DOCFILECORRUPT, "a text fault is STG_E_DOCFILECORRUPT");
        Expect(!e.Description().empty(), "a text fault is described");
        return;
    }
    Expect(contents.HasGrid(), "a text that reads holds a grid");
    Expect(contents.Check().empty(), "the grid read from text breaks the data object's invariant");
    Expect(AllFinite(contents.xScale.Values()) && AllFinite(contents.yScale.Values()), "scales are finite");

    const std::string written = WriteCsv(contents);
    GraphContents again;
    try {
        again = TextGridReader::Read(written, true);
    } catch (const StreamError& e) {
        std::fprintf(stderr, "%s\n", e.Description().c_str());
        Expect(false, "a grid written back as CSV does not read");
    }
    Expect(again.XCount() == contents.XCount() && again.YCount() == contents.YCount(), "CSV round trip: sizes");
    Expect(SameCells(again.grid.Values(), contents.grid.Values()), "CSV round trip: grid");
    Expect(fuzz::SameBits(again.xScale.Values(), contents.xScale.Values()), "CSV round trip: X scale");
    Expect(fuzz::SameBits(again.yScale.Values(), contents.yScale.Values()), "CSV round trip: Y scale");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    ReadAs(text, true);
    ReadAs(text, false);
    return 0;
}
