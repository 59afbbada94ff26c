#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "com/IStream.h"

namespace vexplot {

// Describes a stream of archive records for people: what `vexplot info`
// shows of a plot file, and the first look at a damaged one. It knows the
// records by their layouts, not through the classes that write them, so it
// can describe a file whose classes this program lacks:
//
//   palette record       "PaletteStart:", colour count, colours, "PaletteEnd"
//   graph object record  "GraphObjectBegin" ... "GraphObjectEnd", with the
//                        embedded data object's sizes and ranges
//   class record         a ClassRecordTag, then the fields of CGD_Axis,
//                        CGD_Marker, CGD_Region (CGD_Label, CGD_Tracer and
//                        CGD_DiffTracer store none), schema 1
//   list of records      an int32 count followed by that many graph object
//                        records or class records (its entries are
//                        described one level deeper)
//
// It reads one record after another until the stream ends, and stops at the
// first thing it cannot read: a record of another kind, a class whose
// layout it does not know (the records after it cannot be found), or a
// malformed record. Whatever the bytes, it raises nothing and reads nothing
// beyond the stream's end; a record cut short is kept with the fields read
// so far.
class RecordInspector {
public:
    struct Field {
        std::string name;
        std::string value;
    };
    struct Record {
        uint64_t offset = 0;
        int depth = 0;  // 0 for the stream's own records, 1 for the entries of a list
        std::string title;
        std::vector<Field> fields;
    };
    struct Report {
        std::vector<Record> records;
        // Empty when the whole stream was read; otherwise why it stopped,
        // "at offset N: ...".
        std::string error;

        // Records of the stream itself, not counting the entries of lists.
        int TopLevelCount() const;
    };

    // Reads `stream` (borrowed) from its position to its end, or to the end
    // of its first `maxRecords` top-level records when that is not negative.
    // Registers the data object's class, so that embedded data objects load.
    static Report Inspect(IStream* stream, int maxRecords = -1);
    // The report for people: "<name>: archive of N records", then a line
    // per record ("@offset  title") and per field, indented. The error is
    // not part of it.
    static std::string Format(const Report& report, std::string_view name);
};

}  // namespace vexplot
