#include "dataobject/GraphStreamFormat.h"

#include <algorithm>
#include <string>

#include "com/StreamReader.h"
#include "com/StreamWriter.h"

namespace vexplot {

namespace {

SafeArray ReadScale(StreamReader& reader, int32_t count, const char* what) {
    reader.Require(uint64_t{8} * static_cast<uint32_t>(count), what);
    SafeArray scale = SafeArray::Create1D(static_cast<uint32_t>(count));
    reader.ReadDoubles({scale.MutableData(), scale.ElementCount()}, what);
    return scale;
}

}  // namespace

void GraphStreamFormat::Write(const GraphContents& contents, StreamWriter& writer) {
    writer.WriteBytes(kMagic);
    writer.WriteInt32(kVersion);
    writer.WriteInt32(contents.XCount());
    writer.WriteInt32(contents.YCount());
    if (contents.HasGrid()) {
        writer.WriteDoubles(contents.xScale.Values());
        writer.WriteDoubles(contents.yScale.Values());
    }
    writer.WriteString(contents.xLabel);
    writer.WriteString(contents.yLabel);
    writer.WriteString(contents.zLabel);
    writer.WriteString(contents.name);
    if (contents.HasGrid()) writer.WriteDoubles(contents.grid.Values());
}

uint64_t GraphStreamFormat::Size(const GraphContents& contents) {
    const uint64_t x = static_cast<uint32_t>(contents.XCount()), y = static_cast<uint32_t>(contents.YCount());
    return sizeof kMagic + 12 + 8 * (x + y + x * y) + StreamWriter::StringSize(contents.xLabel) +
           StreamWriter::StringSize(contents.yLabel) + StreamWriter::StringSize(contents.zLabel) +
           StreamWriter::StringSize(contents.name);
}

GraphContents GraphStreamFormat::Read(StreamReader& reader) {
    uint8_t magic[sizeof kMagic];
    reader.ReadBytes(magic, "the data object's magic bytes");
    if (!std::equal(std::begin(magic), std::end(magic), std::begin(kMagic)))
        reader.Fail(STG_E_INVALIDHEADER, "not a Vexplot data object: wrong magic bytes");
    const int32_t version = reader.ReadInt32("version");
    if (version != kVersion)
        reader.Fail(STG_E_DOCFILECORRUPT, "unsupported version " + std::to_string(version) +
                                              " (this program reads version " + std::to_string(kVersion) + ")");
    const int32_t xCount = reader.ReadInt32("X count");
    const int32_t yCount = reader.ReadInt32("Y count");
    if (std::string fault = GraphContents::CheckSize(xCount, yCount); !fault.empty())
        reader.Fail(STG_E_DOCFILECORRUPT, fault);
    // Refuse sizes the stream cannot hold before allocating for them.
    const uint64_t cells = uint64_t{static_cast<uint32_t>(xCount)} * static_cast<uint32_t>(yCount);
    reader.Require(8 * (cells + static_cast<uint32_t>(xCount) + static_cast<uint32_t>(yCount)),
                   "a grid of " + std::to_string(xCount) + " x " + std::to_string(yCount) + " with its scales");

    GraphContents contents;
    if (cells > 0) {
        contents.xScale = ReadScale(reader, xCount, "X scale");
        contents.yScale = ReadScale(reader, yCount, "Y scale");
    }
    contents.xLabel = reader.ReadString("X label");
    contents.yLabel = reader.ReadString("Y label");
    contents.zLabel = reader.ReadString("Z label");
    contents.name = reader.ReadString("name");
    if (cells > 0) {
        reader.Require(8 * cells, "grid");
        contents.grid = SafeArray::Create2DForOverwrite(static_cast<uint32_t>(yCount), static_cast<uint32_t>(xCount));
        reader.ReadDoubles({contents.grid.MutableData(), contents.grid.ElementCount()}, "grid");
    }
    return contents;
}

}  // namespace vexplot
