#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "com/ErrorInfo.h"
#include "com/OleStream.h"
#include "com/StreamReader.h"
#include "com/StreamWriter.h"
#include "TestSupport.h"
#include "dataobject/GraphDataClass.h"

namespace vexplot {
namespace {

using test::Bytes;
using test::MakeGrid;

TEST(PersistStreamTest, RoundTripKeepsEverythingBitForBit) {
    ComPtr<GraphDataObject> original = MakeComObject<GraphDataObject>();
    original->SetGrid(MakeGrid(4, 3, [](uint32_t ix, uint32_t iy) { return std::sin(ix * 0.7) * (iy - 1.0); }),
                      SafeArray::FromValues(std::vector<double>{0.5, 0.25, -1e300, 8}),
                      SafeArray::FromValues(std::vector<double>{3, 2, 1}));
    original->PutValue(1, 1, std::numeric_limits<double>::quiet_NaN());
    original->PutValue(2, 2, -std::numeric_limits<double>::infinity());
    original->PutXLabel(std::string(300, 'x'));  // a two-byte length prefix
    original->PutYLabel("Höhe (m)");
    original->PutZLabel("");
    original->PutName(std::string(70000, 'n'));  // a four-byte length prefix

    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    ASSERT_EQ(original->Save(stream.Get(), true), S_OK);
    uint64_t expectedSize = 0;
    original->GetSizeMax(&expectedSize);
    EXPECT_EQ(stream->Bytes().size(), expectedSize);

    ComPtr<GraphDataObject> copy = MakeComObject<GraphDataObject>();
    stream->Seek(0, STREAM_SEEK_SET, nullptr);
    ASSERT_EQ(copy->Load(stream.Get()), S_OK);
    test::Snapshot a = test::Capture(*original), b = test::Capture(*copy);
    a.state = b.state = 0;
    EXPECT_EQ(a, b);
    EXPECT_EQ(copy->IsDirty(), S_FALSE);
}

TEST(PersistStreamTest, LayoutStartsWithMagicVersionAndCounts) {
    ComPtr<GraphDataObject> object = test::FilledObject();  // 3 x 2
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    ASSERT_EQ(object->Save(stream.Get(), false), S_OK);
    const Bytes& bytes = stream->Bytes();
    const Bytes head(bytes.begin(), bytes.begin() + 20);
    EXPECT_EQ(head, (Bytes{'V', 'X', '3', 'D', 'O', '\r', '\n', 0x1A, 1, 0, 0, 0, 3, 0, 0, 0, 2, 0, 0, 0}));
    // Then the X scale -1 0 1, the Y scale 5 7, four strings, the grid.
    stream->Seek(20, STREAM_SEEK_SET, nullptr);
    StreamReader reader(stream.Get());
    double xScale[3], yScale[2];
    reader.ReadDoubles(xScale);
    reader.ReadDoubles(yScale);
    EXPECT_EQ(xScale[0], -1);
    EXPECT_EQ(yScale[1], 7);
    EXPECT_EQ(reader.ReadString(), "x");
    EXPECT_EQ(reader.ReadString(), "y");
    EXPECT_EQ(reader.ReadString(), "z");
    EXPECT_EQ(reader.ReadString(), "original");
    double grid[6];
    reader.ReadDoubles(grid);
    EXPECT_EQ(std::vector<double>(grid, grid + 6), (std::vector<double>{0, 1, 10, 11, 20, 21}));
    EXPECT_EQ(reader.Remaining(), 0u);
}

TEST(PersistStreamTest, EmptyObjectRoundTrips) {
    ComPtr<GraphDataObject> empty = MakeComObject<GraphDataObject>();
    empty->PutName("nothing yet");
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    ASSERT_EQ(empty->Save(stream.Get(), true), S_OK);
    EXPECT_EQ(stream->Bytes().size(), 20u + 3 + 12);  // three empty strings and the name
    ComPtr<GraphDataObject> copy = test::FilledObject();
    stream->Seek(0, STREAM_SEEK_SET, nullptr);
    ASSERT_EQ(copy->Load(stream.Get()), S_OK);
    int32_t x = -1, y = -1;
    copy->GetSize(&x, &y);
    EXPECT_EQ(x + y, 0);
    std::string name;
    copy->GetName(&name);
    EXPECT_EQ(name, "nothing yet");
}

// Inside a larger archive the object reads exactly its own bytes.
TEST(PersistStreamTest, LoadStopsAtTheEndOfItsOwnData) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    StreamWriter writer(stream.Get());
    writer.WriteString("GraphObjectBegin");
    ASSERT_EQ(test::FilledObject()->Save(stream.Get(), false), S_OK);
    StreamWriter after(stream.Get());
    after.WriteString("GraphObjectEnd");

    stream->Seek(0, STREAM_SEEK_SET, nullptr);
    StreamReader before(stream.Get());
    EXPECT_EQ(before.ReadString(), "GraphObjectBegin");
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    ASSERT_EQ(object->Load(stream.Get()), S_OK);
    StreamReader rest(stream.Get());
    EXPECT_EQ(rest.ReadString(), "GraphObjectEnd");
}

// Embedded in a larger stream: class id, then the object's data; a null
// object is the null class id alone and reads back as "no object".
TEST(PersistStreamTest, EmbeddedObjectsRoundTripByClass) {
    RegisterGraphDataClass();
    ComPtr<GraphDataObject> original = test::FilledObject();
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    ASSERT_EQ(OleSaveToStream(original.Get(), stream.Get()), S_OK);
    ASSERT_EQ(OleSaveToStream(nullptr, stream.Get()), S_OK);
    const Bytes bytes = stream->Bytes();
    ASSERT_GT(bytes.size(), 32u);
    EXPECT_EQ(bytes[0], 0x92);  // Data1 of the class id, little-endian
    EXPECT_EQ(bytes[3], 0x8D);

    stream->Seek(0, STREAM_SEEK_SET, nullptr);
    ComPtr<IGraphData> copy;
    ASSERT_EQ(OleLoadFromStream(stream.Get(), IGraphData::kIid, copy.ReleaseAndGetVoidAddress()), S_OK);
    test::Snapshot a = test::Capture(*original), b = test::Capture(*static_cast<GraphDataObject*>(copy.Get()));
    a.state = b.state = 0;
    EXPECT_EQ(a, b);
    ComPtr<IGraphData> none;
    EXPECT_EQ(OleLoadFromStream(stream.Get(), IGraphData::kIid, none.ReleaseAndGetVoidAddress()), S_FALSE);
    EXPECT_FALSE(none);
    EXPECT_EQ(OleLoadFromStream(stream.Get(), IGraphData::kIid, none.ReleaseAndGetVoidAddress()), STG_E_READFAULT);
}

TEST(PersistStreamTest, EmbeddedObjectOfAnUnknownClassIsRefused) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(Bytes(16, 0x5A));
    ComPtr<IGraphData> object;
    EXPECT_EQ(OleLoadFromStream(stream.Get(), IGraphData::kIid, object.ReleaseAndGetVoidAddress()),
              REGDB_E_CLASSNOTREG);
    EXPECT_NE(TakeErrorInfo().find("cannot be created"), std::string::npos);
}

TEST(PersistStreamTest, MalformedStreamFailsAndLeavesTheObjectAlone) {
    ComPtr<MemoryStream> good = MakeComObject<MemoryStream>();
    test::FilledObject()->Save(good.Get(), false);
    Bytes truncated = good->Bytes();
    truncated.resize(truncated.size() - 3);
    ComPtr<GraphDataObject> object = test::FilledObject();
    object->PutName("keep me");
    const test::Snapshot before = test::Capture(*object);
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(truncated);
    EXPECT_EQ(object->Load(stream.Get()), STG_E_READFAULT);
    EXPECT_NE(TakeErrorInfo(IPersistStream::kIid).find("needs"), std::string::npos);
    EXPECT_EQ(test::Capture(*object), before);
}

}  // namespace
}  // namespace vexplot
