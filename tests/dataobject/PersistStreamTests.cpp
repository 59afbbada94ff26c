#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "com/ErrorInfo.h"
#include "com/OleStream.h"
#include "TestSupport.h"
#include "dataobject/GraphDataClass.h"

namespace vexplot {
namespace {

using test::Bytes;
using test::MakeGrid;

// A full object and an empty one, each loaded over a filled object.
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
    ComPtr<GraphDataObject> empty = MakeComObject<GraphDataObject>();
    empty->PutName("nothing yet");

    for (GraphDataObject* object : {original.Get(), empty.Get()}) {
        ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
        ASSERT_EQ(object->Save(stream.Get(), true), S_OK);
        uint64_t expectedSize = 0;
        object->GetSizeMax(&expectedSize);
        EXPECT_EQ(stream->Bytes().size(), expectedSize);

        ComPtr<GraphDataObject> copy = test::FilledObject();
        stream->Seek(0, STREAM_SEEK_SET, nullptr);
        ASSERT_EQ(copy->Load(stream.Get()), S_OK);
        EXPECT_EQ(test::Capture(*copy, false), test::Capture(*object, false));
        EXPECT_EQ(copy->IsDirty(), S_FALSE);
    }
}

TEST(PersistStreamTest, LayoutIsMagicVersionCountsScalesTextsAndGrid) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    ASSERT_EQ(test::FilledObject()->Save(stream.Get(), false), S_OK);  // 3 x 2
    const Bytes& bytes = stream->Bytes();
    ASSERT_GE(bytes.size(), 20u);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 20),
              (Bytes{'V', 'X', '3', 'D', 'O', '\r', '\n', 0x1A, 1, 0, 0, 0, 3, 0, 0, 0, 2, 0, 0, 0}));
    EXPECT_EQ(bytes, test::ThreeDo(3, 2, {-1, 0, 1, 5, 7}, {"x", "y", "z", "original"}, {0, 1, 10, 11, 20, 21}));
}

// Embedded in a larger stream: class id, then the object's data, read to its
// last byte only; a null object is the null class id alone and reads back as
// "no object".
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
    EXPECT_EQ(test::Capture(*copy, false), test::Capture(*original, false));
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
