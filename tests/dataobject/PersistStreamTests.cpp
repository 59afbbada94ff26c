#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "com/ErrorInfo.h"
#include "com/MemoryStream.h"
#include "TestSupport.h"

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
