// The data object's own stream form, loaded through IPersistStream::Load from
// a MemoryStream holding the fuzzer's bytes. Beyond not crashing, the load
// keeps its promises:
//   - a failed load leaves the object as it was (same contents, same
//     revision, still clean) and leaves a description through SetErrorInfo;
//   - a successful load gives contents that save, load again and save to the
//     same bytes, with GetSizeMax announcing exactly that many bytes.
#include <cstdint>
#include <vector>

#include "FuzzSupport.h"
#include "com/ErrorInfo.h"
#include "com/MemoryStream.h"
#include "dataobject/GraphDataObject.h"

using namespace vexplot;
using fuzz::Expect;

namespace {

std::vector<uint8_t> SaveToMemory(IPersistStream& persist) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    Expect(SUCCEEDED(persist.Save(stream.Get(), false)), "saving a loaded object failed");
    return stream->Bytes();
}

// A 3 x 2 grid with its scales and labels, saved once so that it is clean:
// the state a failed load must not disturb.
ComPtr<GraphDataObject> MakeBaseline() {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    SafeArray grid = SafeArray::Create2D(2, 3);
    for (size_t i = 0; i < grid.ElementCount(); ++i) grid.MutableData()[i] = 0.5 * double(i);
    const double xs[] = {-1, 0, 1}, ys[] = {10, 20};
    Expect(SUCCEEDED(object->SetGrid(grid, SafeArray::FromValues(xs), SafeArray::FromValues(ys))), "baseline grid");
    object->PutXLabel("x");
    object->PutZLabel("height");
    object->PutName("baseline");
    ComPtr<MemoryStream> sink = MakeComObject<MemoryStream>();
    Expect(SUCCEEDED(object->Save(sink.Get(), true)), "baseline save");
    return object;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ComPtr<GraphDataObject> object = MakeBaseline();
    ComPtr<IPersistStream> persist = object.As<IPersistStream>();
    Expect(persist != nullptr, "the data object serves IPersistStream");
    const std::vector<uint8_t> before = SaveToMemory(*persist);
    const int32_t stateBefore = object->GetState();

    ClearErrorInfo();
    ComPtr<MemoryStream> input = fuzz::StreamOver(data, size);
    if (FAILED(persist->Load(input.Get()))) {
        Expect(!TakeErrorInfo(IPersistStream::kIid).empty(), "a failed load describes its fault");
        Expect(object->GetState() == stateBefore, "a failed load advanced the revision");
        Expect(persist->IsDirty() == S_FALSE, "a failed load made the object dirty");
        Expect(SaveToMemory(*persist) == before, "a failed load changed the object");
        return 0;
    }

    int32_t xCount = -1, yCount = -1;
    object->GetSize(&xCount, &yCount);
    Expect(xCount >= 0 && yCount >= 0 && (xCount == 0) == (yCount == 0), "loaded sizes are a grid or none");
    Expect(persist->IsDirty() == S_FALSE, "a loaded object is clean");

    const std::vector<uint8_t> saved = SaveToMemory(*persist);
    uint64_t announced = 0;
    persist->GetSizeMax(&announced);
    Expect(announced == saved.size(), "GetSizeMax differs from the bytes Save writes");

    ComPtr<GraphDataObject> again = MakeComObject<GraphDataObject>();
    ComPtr<MemoryStream> savedStream = MakeComObject<MemoryStream>(saved);
    Expect(SUCCEEDED(again->Load(savedStream.Get())), "what was saved does not load");
    uint64_t consumed = 0;
    savedStream->Seek(0, STREAM_SEEK_CUR, &consumed);
    Expect(consumed == saved.size(), "reloading stopped short of what was saved");
    Expect(SaveToMemory(*again) == saved, "save, load, save gives other bytes");
    return 0;
}
