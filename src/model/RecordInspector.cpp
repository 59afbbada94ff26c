#include "model/RecordInspector.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <new>
#include <span>

#include "com/ComError.h"
#include "com/IPersist.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/IGraphData.h"
#include "dataobject/IGraphDataAccess.h"
#include "model/CArchive.h"
#include "model/ClassRecordTag.h"

namespace vexplot {

namespace {

// -- the layouts of the class records --

enum class FieldKind { Int, Bool, Colour, UInt, Double, String };

struct FieldLayout {
    const char* name;
    FieldKind kind;
    int count = 1;  // values of the kind under one name ("direction" x, y, z)
};

struct ClassLayout {
    std::string_view name;
    uint32_t schema;
    std::span<const FieldLayout> fields;
};

constexpr FieldLayout kAxisFields[] = {
    {"direction", FieldKind::Double, 3},
    {"label", FieldKind::String},
    {"shown", FieldKind::Int},
    {"axis id", FieldKind::Int},
    {"number colour", FieldKind::Colour},
    {"major grid colour", FieldKind::Colour},
    {"minor grid colour", FieldKind::Colour},
    {"numbers shown", FieldKind::Int},
    {"scale format", FieldKind::Int},
    {"display mode", FieldKind::Int},
    {"major grid", FieldKind::Bool},
    {"minor grid", FieldKind::Bool},
    {"major ticks", FieldKind::Int},
    {"minor ticks", FieldKind::Int},
    {"line, tick marks", FieldKind::Bool, 2},
    {"decimal count", FieldKind::Int},
};

constexpr FieldLayout kMarkerFields[] = {
    {"position", FieldKind::Double, 3}, {"colour", FieldKind::Colour}, {"caption", FieldKind::String},
    {"selected", FieldKind::Int},       {"kind", FieldKind::Int},      {"draw lines", FieldKind::UInt},
    {"name", FieldKind::String},        {"trailing value", FieldKind::UInt},
};

constexpr FieldLayout kRegionFields[] = {
    {"first corner", FieldKind::Double, 3}, {"caption", FieldKind::String},
    {"selected", FieldKind::Int},           {"kind", FieldKind::Int},
    {"colour", FieldKind::Colour},          {"second corner", FieldKind::Double, 3},
    {"first value", FieldKind::Int},
};

constexpr ClassLayout kClassLayouts[] = {
    {"CGD_Axis", 1, kAxisFields},   {"CGD_Marker", 1, kMarkerFields}, {"CGD_Region", 1, kRegionFields},
    {"CGD_Label", 1, {}},           {"CGD_Tracer", 1, {}},            {"CGD_DiffTracer", 1, {}},
};

const ClassLayout* FindLayout(std::string_view name) {
    for (const ClassLayout& layout : kClassLayouts)
        if (layout.name == name) return &layout;
    return nullptr;
}

// -- texts --

__attribute__((format(printf, 1, 2))) std::string Printf(const char* format, ...) {
    char text[160];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    return text;
}

std::string Number(double value) { return Printf("%g", value); }

std::string Colour(uint32_t colour) { return Printf(colour > 0xFFFFFF ? "0x%08" PRIX32 : "0x%06" PRIX32, colour); }

// `text` fit for one line of output, whatever bytes a file holds.
std::string Quoted(std::string_view text) {
    constexpr size_t kMaxShown = 60;
    std::string out = "\"";
    for (size_t i = 0; i < text.size() && i < kMaxShown; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c >= 0x20 && c != 0x7F && c != '"' && c != '\\')
            out += static_cast<char>(c);
        else
            out += Printf("\\x%02X", c);
    }
    if (text.size() > kMaxShown) out += "...";
    return out + "\"";
}

// The archive's message without the " at offset N" it ends in: the report
// puts the offset first.
std::string WithoutOffset(const std::string& message, uint64_t offset) {
    const std::string suffix = " at offset " + std::to_string(offset);
    if (message.size() >= suffix.size() && message.compare(message.size() - suffix.size(), suffix.size(), suffix) == 0)
        return message.substr(0, message.size() - suffix.size());
    return message;
}

// -- the walk --

// Raised for a thing the walk does not recognise; carries the whole message.
struct Unreadable {
    uint64_t offset;
    std::string message;
};

class Walker {
public:
    Walker(IStream* stream, CArchive& archive, RecordInspector::Report& report)
        : stream_(stream), archive_(archive), report_(report) {}

    void Run(int maxRecords) {
        for (int n = 0; archive_.Remaining() > 0 && (maxRecords < 0 || n < maxRecords); ++n) TopLevelRecord();
    }

private:
    enum class Kind { Palette, Graph, Class, List, Unknown };

    // Up to `count` bytes at the archive's offset, leaving everything where
    // it was: the archive gives back its read-ahead, and the stream is put
    // back at the archive's offset.
    std::vector<uint8_t> Peek(size_t count) {
        archive_.Flush();
        const uint64_t at = archive_.Offset();
        std::vector<uint8_t> bytes(static_cast<size_t>(std::min<uint64_t>(count, archive_.Remaining())));
        uint32_t got = 0;
        ThrowIfFailed(stream_->Read(bytes.data(), static_cast<uint32_t>(bytes.size()), &got), IStream::kIid);
        ThrowIfFailed(stream_->Seek(static_cast<int64_t>(at), STREAM_SEEK_SET, nullptr), IStream::kIid);
        bytes.resize(got);
        return bytes;
    }

    static uint16_t Tag(const std::vector<uint8_t>& bytes, size_t at) {
        return static_cast<uint16_t>(bytes[at] | bytes[at + 1] << 8);
    }

    static bool IsClassTag(uint16_t tag) {
        return tag == ClassRecordTag::kNewClass || ClassRecordTag::IndexOf(tag) != 0;
    }

    // What the bytes at `at` begin, judged by the markers' length byte and
    // first letter, or by the tag.
    static Kind KindAt(const std::vector<uint8_t>& bytes, size_t at) {
        if (bytes.size() < at + 2) return Kind::Unknown;
        if (bytes[at] == 13 && bytes[at + 1] == 'P') return Kind::Palette;
        // "GraphObjectBegin" or "GraphObjectBegin:2"
        if ((bytes[at] == 16 || bytes[at] == 18) && bytes[at + 1] == 'G') return Kind::Graph;
        if (IsClassTag(Tag(bytes, at))) return Kind::Class;
        return Kind::Unknown;
    }

    void TopLevelRecord() {
        const std::vector<uint8_t> bytes = Peek(6);
        switch (KindAt(bytes, 0)) {
            case Kind::Palette: return PaletteRecord(0);
            case Kind::Graph: return GraphRecord(0);
            case Kind::Class: return ClassRecord(0);
            default: break;
        }
        if (bytes.size() >= 4 && IsListStart(bytes)) return List();
        std::string found;
        for (size_t i = 0; i < bytes.size() && i < 4; ++i) found += Printf(" %02X", bytes[i]);
        throw Unreadable{archive_.Offset(),
                         "expected a palette record, a graph object record, a class record or a list of "
                         "records; found" + found};
    }

    // A count that the rest can hold, then (unless 0) the start of an entry.
    bool IsListStart(const std::vector<uint8_t>& bytes) const {
        const auto count = static_cast<int32_t>(Tag(bytes, 0) | uint32_t{Tag(bytes, 2)} << 16);
        if (count < 0 || static_cast<uint64_t>(count) * 2 > archive_.Remaining() - 4) return false;
        if (count == 0) return true;
        const Kind entry = KindAt(bytes, 4);
        return entry == Kind::Graph || entry == Kind::Class ||
               (bytes.size() >= 6 && Tag(bytes, 4) == ClassRecordTag::kNull);
    }

    RecordInspector::Record& Begin(int depth, std::string title) {
        report_.records.push_back({archive_.Offset(), depth, std::move(title), {}});
        return report_.records.back();
    }

    void AddField(std::string name, std::string value) {
        report_.records.back().fields.push_back({std::move(name), std::move(value)});
    }

    void List() {
        const std::vector<uint8_t> bytes = Peek(6);
        const bool graphs = bytes.size() >= 6 && KindAt(bytes, 4) == Kind::Graph;
        const size_t index = report_.records.size();
        Begin(0, graphs ? "graph object list" : "object list");
        const int32_t count = archive_.ReadInt32("list count");
        report_.records[index].title += Printf(": %d %s", count, count == 1 ? "entry" : "entries");
        for (int32_t i = 0; i < count; ++i) {
            if (graphs)
                GraphRecord(1);
            else
                ClassRecord(1);
        }
    }

    void PaletteRecord(int depth) {
        const size_t index = report_.records.size();
        Begin(depth, "palette record");
        archive_.ExpectString("PaletteStart:");
        const uint32_t count = archive_.ReadUInt32("colour count");
        archive_.Require(uint64_t{count} * 4, "colours");
        uint32_t first = 0, last = 0;
        for (uint32_t i = 0; i < count; ++i) {
            last = archive_.ReadColor("colour");
            if (i == 0) first = last;
        }
        archive_.ExpectString("PaletteEnd");
        std::string& title = report_.records[index].title;
        if (count == 0)
            title += ": no colours";
        else
            title += Printf(": %" PRIu32 " colour%s, first ", count, count == 1 ? "" : "s") + Colour(first) +
                     ", last " + Colour(last);
    }

    void GraphRecord(int depth) {
        Begin(depth, "CGD_GraphObject record");
        const std::string begin = archive_.ReadString("graph object begin marker");
        if (begin != "GraphObjectBegin" && begin != "GraphObjectBegin:2")
            archive_.Fail("graph object begin marker", "found \"" + begin + "\" instead");
        const bool visible = archive_.ReadBool("visible flag");
        const bool data = archive_.ReadBool("data flag");
        const bool usePreview = archive_.ReadBool("use preview flag");
        const bool suppressed = archive_.ReadBool("display suppression flag");
        AddField("flags", Printf("visible %d, data %d, use preview %d, suppressed %d", visible, data, usePreview,
                                 suppressed));
        const int32_t yCount = archive_.ReadInt32("Y count");
        const int32_t xCount = archive_.ReadInt32("X count");
        AddField("grid", Printf("%d x %d (Y count %d, X count %d)", xCount, yCount, yCount, xCount));
        const int32_t shownY = archive_.ReadInt32("shown Y count");
        const int32_t shownX = archive_.ReadInt32("shown X count");
        const int32_t firstX = archive_.ReadInt32("first shown X index");
        const int32_t firstY = archive_.ReadInt32("first shown Y index");
        AddField("shown part", Printf("%d x %d from X index %d, Y index %d", shownX, shownY, firstX, firstY));
        const int32_t previewY = archive_.ReadInt32("preview Y count");
        const int32_t previewX = archive_.ReadInt32("preview X count");
        const int32_t stepX = archive_.ReadInt32("preview X step");
        const int32_t stepY = archive_.ReadInt32("preview Y step");
        AddField("preview", Printf("%d x %d, steps %d x %d", previewX, previewY, stepX, stepY));
        AddField("contrast colour", Colour(archive_.ReadColor("contrast colour")));
        AddField("1-D view", std::to_string(archive_.ReadInt32("one-dimensional view")));
        if (begin == "GraphObjectBegin:2") DrawingFields();
        const ComPtr<IUnknown> object = archive_.ReadObject("data object");
        AddField("data object", DescribeData(object));
        archive_.ExpectString("GraphObjectEnd");
    }

    void DrawingFields() {
        static constexpr std::array<const char*, 5> kStyles{"wireframe", "surface", "bar chart", "lines", "points"};
        const int32_t style = archive_.ReadInt32("drawing style");
        const bool image = archive_.ReadBool("image flag");
        const int32_t shading = archive_.ReadInt32("shading mode");
        const bool low = archive_.ReadBool("low resolution flag");
        AddField("drawing", Printf("%s, image %d, shading %d, low resolution %d",
                                   style >= 0 && style < 5 ? kStyles[static_cast<size_t>(style)] : "unknown style",
                                   image, shading, low));
        const int32_t plot = archive_.ReadInt32("section plot style");
        const int32_t point = archive_.ReadInt32("section point style");
        const uint32_t colour = archive_.ReadColor("section curve colour");
        const double position = archive_.ReadDouble("section position");
        AddField("section", Printf("plot style %d, point style %d, colour ", plot, point) + Colour(colour) +
                                Printf(", at %g%%", position));
    }

    static std::string DescribeData(const ComPtr<IUnknown>& object) {
        if (!object) return "none";
        std::string text;
        if (const auto persist = object.As<IPersist>()) {
            CLSID clsid = GUID_NULL;
            if (SUCCEEDED(persist->GetClassID(&clsid))) text = clsid.ToString() + " ";
        }
        const auto data = object.As<IGraphData>();
        if (!data) return text + "(not a data object)";
        SafeArray x, y;
        ThrowIfFailed(data->GetXScale(&x), IGraphData::kIid);
        ThrowIfFailed(data->GetYScale(&y), IGraphData::kIid);
        text += Printf("%zu x %zu", x.ElementCount(), y.ElementCount());
        if (x.ElementCount() > 0) text += ", X " + Number(x.Values().front()) + " .. " + Number(x.Values().back());
        if (y.ElementCount() > 0) text += ", Y " + Number(y.Values().front()) + " .. " + Number(y.Values().back());
        if (const auto access = object.As<IGraphDataAccess>()) {
            double zMin = 0.0, zMax = 0.0;
            if (SUCCEEDED(access->GetZMin(&zMin)) && SUCCEEDED(access->GetZMax(&zMax)))
                text += ", Z " + Number(zMin) + " .. " + Number(zMax);
        }
        return text;
    }

    // The class table is the walk's own, built as the archive's is, so that
    // classes this program does not register can be described.
    void ClassRecord(int depth) {
        const uint64_t at = archive_.Offset();
        const size_t index = report_.records.size();
        Begin(depth, "class record");
        const auto tag = static_cast<uint16_t>(archive_.ReadInt16("class tag"));
        if (tag == ClassRecordTag::kNull) {
            report_.records[index].title = "null object";
            return;
        }
        const KnownClass& cls = tag == ClassRecordTag::kNewClass ? NewClass(at) : IndexedClass(tag, at);
        report_.records[index].title = cls.name + Printf(" (schema %" PRIu32 ")", cls.schema);
        const ClassLayout* layout = FindLayout(cls.name);
        if (!layout || layout->schema != cls.schema)
            throw Unreadable{at, "no layout known for class " + Quoted(cls.name) +
                                     Printf(" with schema %" PRIu32, cls.schema) +
                                     ", so the records after it cannot be found"};
        for (const FieldLayout& field : layout->fields) ReadField(field);
    }

    struct KnownClass {
        std::string name;
        uint32_t schema;
    };

    const KnownClass& NewClass(uint64_t at) {
        const uint32_t schema = archive_.ReadUInt32("class schema");
        std::string name = archive_.ReadString("class name");
        for (const KnownClass& known : classes_)
            if (known.name == name) throw Unreadable{at, "class " + Quoted(name) + " introduced twice"};
        if (classes_.size() >= ClassRecordTag::kMaxClassIndex) throw Unreadable{at, "too many classes"};
        classes_.push_back({std::move(name), schema});
        return classes_.back();
    }

    const KnownClass& IndexedClass(uint16_t tag, uint64_t at) const {
        const uint16_t index = ClassRecordTag::IndexOf(tag);
        if (index == 0) throw Unreadable{at, Printf("expected a class tag, found 0x%04X", tag)};
        if (index > classes_.size())
            throw Unreadable{at, Printf("class tag 0x%04X refers to class %u, but %zu were introduced", tag,
                                        unsigned{index}, classes_.size())};
        return classes_[index - 1u];
    }

    void ReadField(const FieldLayout& field) {
        std::string value;
        for (int i = 0; i < field.count; ++i) {
            if (i > 0) value += ", ";
            value += ReadValue(field);
        }
        AddField(field.name, value);
    }

    std::string ReadValue(const FieldLayout& field) {
        switch (field.kind) {
            case FieldKind::Int: return std::to_string(archive_.ReadInt32(field.name));
            case FieldKind::Bool: return archive_.ReadBool(field.name) ? "1" : "0";
            case FieldKind::Colour: return Colour(archive_.ReadColor(field.name));
            case FieldKind::UInt: return std::to_string(archive_.ReadUInt32(field.name));
            case FieldKind::Double: return Number(archive_.ReadDouble(field.name));
            case FieldKind::String: return Quoted(archive_.ReadString(field.name));
        }
        return {};
    }

    IStream* stream_;
    CArchive& archive_;
    RecordInspector::Report& report_;
    std::vector<KnownClass> classes_;  // by index - 1
};

std::string AtOffset(uint64_t offset, const std::string& message) {
    return "at offset " + std::to_string(offset) + ": " + message;
}

}  // namespace

int RecordInspector::Report::TopLevelCount() const {
    return static_cast<int>(std::count_if(records.begin(), records.end(), [](const Record& r) { return r.depth == 0; }));
}

RecordInspector::Report RecordInspector::Inspect(IStream* stream, int maxRecords) {
    Report report;
    RegisterGraphDataClass();
    uint64_t offset = 0;
    try {
        CArchive archive(stream, CArchive::Mode::Load);
        offset = archive.Offset();
        try {
            Walker(stream, archive, report).Run(maxRecords);
        } catch (...) {
            offset = archive.Offset();
            throw;
        }
    } catch (const Unreadable& e) {
        report.error = AtOffset(e.offset, e.message);
    } catch (const ArchiveError& e) {
        report.error = AtOffset(e.Offset(), WithoutOffset(e.what(), e.Offset()));
    } catch (const ComError& e) {
        report.error = AtOffset(offset, e.what());
    } catch (const std::bad_alloc&) {
        report.error = AtOffset(offset, "out of memory");
    } catch (const std::exception& e) {
        report.error = AtOffset(offset, e.what());
    }
    return report;
}

std::string RecordInspector::Format(const Report& report, std::string_view name) {
    const int count = report.TopLevelCount();
    std::string text = std::string(name) + Printf(": archive of %d record%s\n", count, count == 1 ? "" : "s");
    for (const Record& record : report.records) {
        const std::string indent(2 + 2 * static_cast<size_t>(record.depth), ' ');
        text += indent + Printf("@%-7llu", static_cast<unsigned long long>(record.offset)) + record.title + "\n";
        for (const Field& field : record.fields)
            text += indent + std::string(10, ' ') + Printf("%-18s", field.name.c_str()) + field.value + "\n";
    }
    return text;
}

}  // namespace vexplot
