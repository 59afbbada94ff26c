#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "com/ConnectionPoint.h"
#include "com/ErrorInfo.h"
#include "com/MemoryStream.h"
#include "dataobject/GraphDataEventSink.h"
#include "dataobject/IGraphDataEvents.h"
#include "TestSupport.h"

namespace vexplot {
namespace {

using test::MakeGrid;

// Records each notification; a data change with the sizes it reads back
// from the object at that moment, so a change told before it is complete
// shows.
class RecordingSink final : public GraphDataEventSink {
public:
    explicit RecordingSink(IGraphData* data) : data_(data) {}
    std::vector<std::string> calls;

protected:
    void DataChanged() override {
        int32_t x = 0, y = 0;
        data_->GetSize(&x, &y);
        calls.push_back("Data " + std::to_string(x) + "x" + std::to_string(y));
    }
    void TicksChanged(int32_t which) override { calls.push_back("Ticks" + std::to_string(which)); }
    void LabelsChanged() override { calls.push_back("Labels"); }

private:
    IGraphData* data_;  // borrowed: the object outlives its sinks
};

using Calls = std::vector<std::string>;

TEST(GraphDataEventsTest, EachChangeRaisesItsNotifications) {
    ComPtr<MemoryStream> saved = MakeComObject<MemoryStream>();
    test::FilledObject()->Save(saved.Get(), false);
    struct Case {
        const char* name;
        std::function<HRESULT(GraphDataObject&)> change;
        Calls expected;
    };
    const Case cases[] = {
        {"PutData same size", [](GraphDataObject& o) { return o.PutData(MakeGrid(3, 2, 1.0)); }, {"Data 3x2"}},
        {"PutData new X count", [](GraphDataObject& o) { return o.PutData(MakeGrid(5, 2, 1.0)); },
         {"Data 5x2", "Ticks0"}},
        {"PutData new Y count", [](GraphDataObject& o) { return o.PutData(MakeGrid(3, 9, 1.0)); },
         {"Data 3x9", "Ticks1"}},
        {"PutData new sizes", [](GraphDataObject& o) { return o.PutData(MakeGrid(1, 1, 1.0)); },
         {"Data 1x1", "Ticks2"}},
        {"PutValue", [](GraphDataObject& o) { return o.PutValue(1, 1, 3.0); }, {"Data 3x2"}},
        {"PutXScale", [](GraphDataObject& o) { return o.PutXScale(SafeArray::Create1D(3)); }, {"Ticks0"}},
        {"PutYScale", [](GraphDataObject& o) { return o.PutYScale(SafeArray::Create1D(2)); }, {"Ticks1"}},
        {"SetGrid", [](GraphDataObject& o) {
             return o.SetGrid(MakeGrid(2, 2, 1.0), SafeArray::Create1D(2), SafeArray::Create1D(2));
         }, {"Data 2x2", "Ticks2"}},
        {"PutXLabel", [](GraphDataObject& o) { return o.PutXLabel("a"); }, {"Labels"}},
        {"PutYLabel", [](GraphDataObject& o) { return o.PutYLabel("a"); }, {"Labels"}},
        {"PutZLabel", [](GraphDataObject& o) { return o.PutZLabel("a"); }, {"Labels"}},
        {"PutName", [](GraphDataObject& o) { return o.PutName("a"); }, {"Labels"}},
        {"Load", [&](GraphDataObject& o) {
             saved->Seek(0, STREAM_SEEK_SET, nullptr);
             return o.Load(saved.Get());
         }, {"Data 3x2", "Ticks2", "Labels"}},
        {"failed PutXScale", [](GraphDataObject& o) { return o.PutXScale(SafeArray::Create1D(7)); }, {}},
        {"failed PutValue", [](GraphDataObject& o) { return o.PutValue(7, 0, 1.0); }, {}},
        {"failed Load", [](GraphDataObject& o) {
             ComPtr<MemoryStream> junk = MakeComObject<MemoryStream>(test::Bytes{1, 2, 3});
             return o.Load(junk.Get());
         }, {}},
    };
    for (const Case& c : cases) {
        ComPtr<GraphDataObject> object = test::FilledObject();
        ComPtr<RecordingSink> sink = MakeComObject<RecordingSink>(static_cast<IGraphData*>(object.Get()));
        uint32_t cookie = 0;
        ASSERT_EQ(ConnectionAdvise(object->Identity(), IID_IGraphDataEvents, sink->Identity(), &cookie), S_OK);
        c.change(*object);
        EXPECT_EQ(sink->calls, c.expected) << c.name;
        ClearErrorInfo();
    }
}

}  // namespace
}  // namespace vexplot
