// Plot-file records: any bytes read as a stream of archive records, by each
// reader of the model in turn, each over its own archive from the first byte:
//   - RecordInspector::Inspect, which promises to raise nothing whatever the
//     bytes, and to report records only where the stream has them;
//   - CGD_ObjectList::Serialize (the axes' and annotations' class records);
//   - CGD_Palette::Serialize (the palette record);
//   - GraphObjectListRecord::Read (graph object records with their embedded
//     data objects, bound to a host without windows).
// ArchiveError and ComError are the expected failures; a failed load must
// leave the old contents in place. Anything else escaping is a bug and ends
// the run. What loads is stored, loaded again and stored again: the same
// bytes both times.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "com/ComError.h"
#include "com/MemoryStream.h"
#include "dataobject/GraphDataClass.h"
#include "model/ArchiveError.h"
#include "model/CArchive.h"
#include "model/CGD_Axis.h"
#include "model/CGD_ObjectList.h"
#include "model/CGD_Palette.h"
#include "model/DetachedViewHost.h"
#include "model/GraphObjectListRecord.h"
#include "model/RecordInspector.h"
#include "settings/MessageSink.h"

using namespace vexplot;
using fuzz::Expect;

namespace {

// Binding failures are reported to the host's message sink; they are
// expected here and not worth a line each.
class SilentSink final : public MessageSink {
public:
    int ShowMessage(const std::string&, const std::string&, int) override { return 1; }
};

using Bytes = std::vector<uint8_t>;

template <class Store>
Bytes Stored(Store store) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    CArchive archive(stream.Get(), CArchive::Mode::Store);
    store(archive);
    archive.Close();
    return stream->Bytes();
}

// Loads `bytes` with `load`; true when it succeeded, false for the expected
// failures.
template <class Load>
bool Loaded(const Bytes& bytes, Load load) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(bytes);
    try {
        CArchive archive(stream.Get(), CArchive::Mode::Load);
        load(archive);
        return true;
    } catch (const ArchiveError& e) {
        Expect(e.what()[0] != '\0', "an archive fault is described");
    } catch (const ComError&) {
    }
    return false;
}

// Loads what `store` writes with `reload` and stores it with `restore`: the
// bytes must not change.
template <class Store, class Reload, class Restore>
void RoundTrip(Store store, Reload reload, Restore restore, const char* what) {
    const Bytes first = Stored(store);
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(first);
    {
        CArchive archive(stream.Get(), CArchive::Mode::Load);
        reload(archive);
        Expect(archive.Remaining() == 0, what);
    }
    Expect(Stored(restore) == first, what);
}

void Inspect(const Bytes& bytes) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(bytes);
    const RecordInspector::Report report = RecordInspector::Inspect(stream.Get());
    for (const RecordInspector::Record& record : report.records) {
        // A record cut short at the very end of the stream starts there.
        Expect(record.offset <= bytes.size(), "a record starts inside the stream");
        Expect(record.depth == 0 || record.depth == 1, "records are top-level or list entries");
    }
    if (!bytes.empty() && report.error.empty()) Expect(!report.records.empty(), "a stream read whole has records");
    const std::string text = RecordInspector::Format(report, "input");
    Expect(text.starts_with("input: archive of "), "the report names the input");
}

void ObjectList(const Bytes& bytes) {
    CGD_ObjectList list;
    const ArchiveObject& kept = list.Add(std::make_unique<CGD_Axis>());
    if (!Loaded(bytes, [&](CArchive& archive) { list.Serialize(archive); })) {
        Expect(list.Count() == 1 && list.At(0) == &kept, "a failed object list load changed the list");
        return;
    }
    CGD_ObjectList again;
    RoundTrip([&](CArchive& a) { list.Serialize(a); }, [&](CArchive& a) { again.Serialize(a); },
              [&](CArchive& a) { again.Serialize(a); }, "object list: store, load, store");
}

void Palette(const Bytes& bytes) {
    CGD_Palette palette;
    palette.SetColor(0, 0x0000FF);
    palette.SetColor(1, 0x00FF00);
    const std::vector<uint32_t> before(palette.Colors().begin(), palette.Colors().end());
    if (!Loaded(bytes, [&](CArchive& archive) { palette.Serialize(archive); })) {
        Expect(std::vector<uint32_t>(palette.Colors().begin(), palette.Colors().end()) == before,
               "a failed palette load changed the colours");
        return;
    }
    for (uint32_t color : palette.Colors()) Expect(color <= 0xFFFFFF, "loaded colours are 0x00BBGGRR");
    CGD_Palette again;
    RoundTrip([&](CArchive& a) { palette.Serialize(a); }, [&](CArchive& a) { again.Serialize(a); },
              [&](CArchive& a) { again.Serialize(a); }, "palette: store, load, store");
}

void GraphObjects(const Bytes& bytes) {
    SilentSink sink;
    ComPtr<DetachedViewHost> host = MakeComObject<DetachedViewHost>(&sink);
    CGD_GraphObjectList& graphs = *host->GetGraphObjects();
    if (!Loaded(bytes, [&](CArchive& archive) { GraphObjectListRecord::Read(graphs, archive, host.Get()); })) {
        Expect(graphs.Count() == 0, "a failed graph object list load changed the list");
        return;
    }
    ComPtr<DetachedViewHost> other = MakeComObject<DetachedViewHost>(&sink);
    CGD_GraphObjectList& again = *other->GetGraphObjects();
    RoundTrip([&](CArchive& a) { GraphObjectListRecord::Write(graphs, a); },
              [&](CArchive& a) { GraphObjectListRecord::Read(again, a, other.Get()); },
              [&](CArchive& a) { GraphObjectListRecord::Write(again, a); }, "graph objects: store, load, store");
    graphs.Clear();
    again.Clear();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // Unknown class ids are looked up in the settings store: never the user's.
    setenv("VEXPLOT_REGISTRY", ":memory:", 1);
    RegisterGraphDataClass();
    RegisterAxisClass();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Bytes bytes(data, data + size);
    Inspect(bytes);
    ObjectList(bytes);
    Palette(bytes);
    GraphObjects(bytes);
    return 0;
}
