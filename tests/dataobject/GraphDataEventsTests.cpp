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

class RecordingSink final : public GraphDataEventSink {
public:
    std::vector<std::string> calls;

protected:
    void DataChanged() override { calls.push_back("Data"); }
    void TicksChanged(int32_t which) override { calls.push_back("Ticks" + std::to_string(which)); }
    void LabelsChanged() override { calls.push_back("Labels"); }
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
        {"PutData same size", [](GraphDataObject& o) { return o.PutData(MakeGrid(3, 2, [](uint32_t, uint32_t) { return 1.0; })); },
         {"Data"}},
        {"PutData new X count", [](GraphDataObject& o) { return o.PutData(MakeGrid(5, 2, [](uint32_t, uint32_t) { return 1.0; })); },
         {"Data", "Ticks0"}},
        {"PutData new Y count", [](GraphDataObject& o) { return o.PutData(MakeGrid(3, 9, [](uint32_t, uint32_t) { return 1.0; })); },
         {"Data", "Ticks1"}},
        {"PutData new sizes", [](GraphDataObject& o) { return o.PutData(MakeGrid(1, 1, [](uint32_t, uint32_t) { return 1.0; })); },
         {"Data", "Ticks2"}},
        {"PutValue", [](GraphDataObject& o) { return o.PutValue(1, 1, 3.0); }, {"Data"}},
        {"PutXScale", [](GraphDataObject& o) { return o.PutXScale(SafeArray::Create1D(3)); }, {"Ticks0"}},
        {"PutYScale", [](GraphDataObject& o) { return o.PutYScale(SafeArray::Create1D(2)); }, {"Ticks1"}},
        {"SetGrid", [](GraphDataObject& o) {
             return o.SetGrid(MakeGrid(2, 2, [](uint32_t, uint32_t) { return 1.0; }), SafeArray::Create1D(2),
                              SafeArray::Create1D(2));
         }, {"Data", "Ticks2"}},
        {"PutXLabel", [](GraphDataObject& o) { return o.PutXLabel("a"); }, {"Labels"}},
        {"PutYLabel", [](GraphDataObject& o) { return o.PutYLabel("a"); }, {"Labels"}},
        {"PutZLabel", [](GraphDataObject& o) { return o.PutZLabel("a"); }, {"Labels"}},
        {"PutName", [](GraphDataObject& o) { return o.PutName("a"); }, {"Labels"}},
        {"Load", [&](GraphDataObject& o) {
             saved->Seek(0, STREAM_SEEK_SET, nullptr);
             return o.Load(saved.Get());
         }, {"Data", "Ticks2", "Labels"}},
        {"failed PutXScale", [](GraphDataObject& o) { return o.PutXScale(SafeArray::Create1D(7)); }, {}},
        {"failed PutValue", [](GraphDataObject& o) { return o.PutValue(7, 0, 1.0); }, {}},
        {"failed Load", [](GraphDataObject& o) {
             ComPtr<MemoryStream> junk = MakeComObject<MemoryStream>(test::Bytes{1, 2, 3});
             return o.Load(junk.Get());
         }, {}},
    };
    for (const Case& c : cases) {
        ComPtr<GraphDataObject> object = test::FilledObject();
        ComPtr<RecordingSink> sink = MakeComObject<RecordingSink>();
        uint32_t cookie = 0;
        ASSERT_EQ(ConnectionAdvise(object->Identity(), IID_IGraphDataEvents, sink->Identity(), &cookie), S_OK);
        c.change(*object);
        EXPECT_EQ(sink->calls, c.expected) << c.name;
        ClearErrorInfo();
    }
}

TEST(GraphDataEventsTest, UnadvisedSinkHearsNothingMore) {
    ComPtr<GraphDataObject> object = test::FilledObject();
    ComPtr<RecordingSink> first = MakeComObject<RecordingSink>();
    ComPtr<RecordingSink> second = MakeComObject<RecordingSink>();
    uint32_t firstCookie = 0, secondCookie = 0;
    ASSERT_EQ(ConnectionAdvise(object->Identity(), IID_IGraphDataEvents, first->Identity(), &firstCookie), S_OK);
    ASSERT_EQ(ConnectionAdvise(object->Identity(), IID_IGraphDataEvents, second->Identity(), &secondCookie), S_OK);
    object->PutName("one");
    ASSERT_EQ(ConnectionUnadvise(object->Identity(), IID_IGraphDataEvents, firstCookie), S_OK);
    object->PutName("two");
    EXPECT_EQ(first->calls, Calls{"Labels"});
    EXPECT_EQ(second->calls, (Calls{"Labels", "Labels"}));
    EXPECT_EQ(ConnectionUnadvise(object->Identity(), IID_IGraphDataEvents, firstCookie), CONNECT_E_NOCONNECTION);
}

// A sink that reads the object back while being told of a change sees the
// change complete.
TEST(GraphDataEventsTest, SinksSeeTheFinishedChange) {
    class ReadingSink final : public GraphDataEventSink {
    public:
        explicit ReadingSink(IGraphData* data) : data_(data) {}
        int32_t xCountSeen = -1;

    protected:
        void DataChanged() override {
            int32_t y = 0;
            data_->GetSize(&xCountSeen, &y);
        }
        void TicksChanged(int32_t) override {}
        void LabelsChanged() override {}

    private:
        IGraphData* data_;
    };
    ComPtr<GraphDataObject> object = test::FilledObject();
    ComPtr<ReadingSink> sink = MakeComObject<ReadingSink>(static_cast<IGraphData*>(object.Get()));
    uint32_t cookie = 0;
    ASSERT_EQ(ConnectionAdvise(object->Identity(), IID_IGraphDataEvents, sink->Identity(), &cookie), S_OK);
    object->PutData(MakeGrid(6, 2, [](uint32_t, uint32_t) { return 0.0; }));
    EXPECT_EQ(sink->xCountSeen, 6);
    ConnectionUnadvise(object->Identity(), IID_IGraphDataEvents, cookie);
}

}  // namespace
}  // namespace vexplot
