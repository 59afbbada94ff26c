// The archive's primitives, buffer and embedded objects.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "ArchiveSupport.h"
#include "com/ComError.h"
#include "com/StreamError.h"
#include "dataobject/GraphDataFactory.h"
#include "dataobject/IGraphData.h"
#include "model/BufferedStream.h"
#include "support/Caught.h"
#include "support/ScriptedStream.h"

namespace vexplot::test {
namespace {

struct PrimitiveCase {
    const char* name;
    std::function<void(CArchive&)> write;
    Bytes bytes;
    std::function<void(CArchive&)> check;  // reads the value back and compares
};

// The encodings are the stream writer's; what the archive adds is its own
// int16, the unsigned reading and the buffer between them and the stream.
TEST(ArchivePrimitives, EachIsWrittenLittleEndianAndReadsBack) {
    const std::string label(300, 'x');
    Bytes labelBytes(3 + label.size(), 'x');
    labelBytes[0] = 0xFF;  // then a 2-byte length, 300
    labelBytes[1] = 0x2C;
    labelBytes[2] = 0x01;
    const PrimitiveCase cases[] = {
        {"int32", [](CArchive& a) { a.WriteInt32(-2); }, {0xFE, 0xFF, 0xFF, 0xFF},
         [](CArchive& a) { EXPECT_EQ(a.ReadInt32("v"), -2); }},
        {"int16", [](CArchive& a) { a.WriteInt16(-300); }, {0xD4, 0xFE},
         [](CArchive& a) { EXPECT_EQ(a.ReadInt16("v"), -300); }},
        {"uint32", [](CArchive& a) { a.WriteUInt32(0xFFFFFFFEu); }, {0xFE, 0xFF, 0xFF, 0xFF},
         [](CArchive& a) { EXPECT_EQ(a.ReadUInt32("v"), 0xFFFFFFFEu); }},
        {"colour", [](CArchive& a) { a.WriteColor(0x00123456); }, {0x56, 0x34, 0x12, 0x00},
         [](CArchive& a) { EXPECT_EQ(a.ReadColor("v"), 0x00123456u); }},
        {"double", [](CArchive& a) { a.WriteDouble(-1.5); }, {0, 0, 0, 0, 0, 0, 0xF8, 0xBF},
         [](CArchive& a) { EXPECT_EQ(a.ReadDouble("v"), -1.5); }},
        {"300-character label", [&](CArchive& a) { a.WriteString(label); }, labelBytes,
         [&](CArchive& a) { EXPECT_EQ(a.ReadString("label"), label); }},
    };
    for (const PrimitiveCase& c : cases) {
        SCOPED_TRACE(c.name);
        const Bytes bytes = Stored(c.write);
        EXPECT_EQ(bytes, c.bytes);
        Loaded(bytes, [&](CArchive& a) {
            c.check(a);
            EXPECT_EQ(a.Remaining(), 0u);
        });
    }
}

TEST(ArchivePrimitives, AnyNonZeroBoolReadsTrue) {
    Loaded({7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80}, [](CArchive& a) {
        EXPECT_TRUE(a.ReadBool("seven"));
        EXPECT_FALSE(a.ReadBool("zero"));
        EXPECT_TRUE(a.ReadBool("sign bit"));
    });
}

// Items that straddle the buffer's edge, a block larger than the buffer and
// strings with the shortest and the longest length prefix, written and read
// with buffers of several sizes.
TEST(ArchiveBuffer, TheBufferSizeChangesNoByte) {
    const std::string longText(70000, 'q');
    auto write = [&](CArchive& a) {
        a.WriteBytes(Bytes(4094, 0xAA));
        a.WriteInt32(0x01020304);  // bytes 4094 .. 4097
        a.WriteDouble(2.25);
        a.WriteString(longText);
        a.WriteInt16(7);
        a.WriteString("end");
    };
    auto read = [&](CArchive& a) {
        Bytes filler(4094);
        a.ReadBytes(filler, "filler");
        EXPECT_EQ(a.Offset(), 4094u);
        EXPECT_EQ(a.ReadInt32("straddling int"), 0x01020304);
        EXPECT_EQ(a.ReadDouble("double"), 2.25);
        EXPECT_EQ(a.ReadString("long text"), longText);
        EXPECT_EQ(a.ReadInt16("int16"), 7);
        EXPECT_EQ(a.ReadString("end"), "end");
        EXPECT_EQ(a.Remaining(), 0u);
    };
    const Bytes reference = Stored(write);
    for (size_t size : {size_t{1}, size_t{7}, size_t{4096}, size_t{100000}}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(Stored(write, size), reference);
        Loaded(reference, read, size);
    }
}

// An archive starts at the stream's position, and a flush on load hands the
// stream back at the archive's offset.
TEST(ArchiveBuffer, FlushOnLoadHandsTheStreamBackAtTheArchivesOffset) {
    Bytes bytes = {9, 9, 9};
    AppendInt32(bytes, 11);
    AppendInt32(bytes, 22);
    auto stream = MakeComObject<MemoryStream>(bytes);
    ASSERT_EQ(stream->Seek(3, STREAM_SEEK_SET, nullptr), S_OK);
    CArchive archive(stream.Get(), CArchive::Mode::Load);
    EXPECT_EQ(archive.Offset(), 3u);
    EXPECT_EQ(archive.ReadInt32("first"), 11);  // the buffer has read all eight bytes

    archive.Flush();
    uint64_t position = 0;
    ASSERT_EQ(stream->Seek(0, STREAM_SEEK_CUR, &position), S_OK);
    EXPECT_EQ(position, 7u);
    EXPECT_EQ(archive.ReadInt32("second"), 22);
}

// Regression: a block read past the buffer left stale bytes that a later
// seek into the "read-ahead" served.
TEST(ArchiveBuffer, SeeksLandOnTheRightByteAfterBufferedAndDirectReads) {
    Bytes source(100);
    for (size_t i = 0; i < source.size(); ++i) source[i] = static_cast<uint8_t>(i);
    auto base = MakeComObject<MemoryStream>(source);
    auto buffered = MakeComObject<BufferedStream>(base.Get(), BufferedStream::Direction::Read, 16, 0);
    struct Step {
        int64_t move;  // seek from `origin` first (origin < 0: no seek)
        int origin;
        uint32_t size;  // then read this many bytes
        uint8_t first;  // the first byte expected
    };
    const Step steps[] = {
        {0, -1, 3, 0},    {0, -1, 13, 3},  {0, -1, 40, 16},  // buffered, to its end, past it
        {-5, STREAM_SEEK_CUR, 4, 51},  {2, STREAM_SEEK_SET, 4, 2},
        {10, STREAM_SEEK_CUR, 1, 16},  {-4, STREAM_SEEK_END, 4, 96},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(int{step.first});
        if (step.origin >= 0) {
            ASSERT_EQ(buffered->Seek(step.move, static_cast<uint32_t>(step.origin), nullptr), S_OK);
        }
        Bytes got(step.size);
        uint32_t read = 0;
        ASSERT_EQ(buffered->Read(got.data(), step.size, &read), S_OK);
        ASSERT_EQ(read, step.size);
        EXPECT_EQ(got, Bytes(source.begin() + step.first, source.begin() + step.first + step.size));
    }
    uint32_t read = 1;
    uint8_t byte = 0;
    EXPECT_EQ(buffered->Read(&byte, 1, &read), S_OK);
    EXPECT_EQ(read, 0u);
}

TEST(ArchiveErrors, TruncatedItemsNameWhatAndWhere) {
    struct Case {
        Bytes bytes;
        std::function<void(CArchive&)> read;
        std::string message;
        uint64_t offset;
    };
    const Case cases[] = {
        {{1, 2}, [](CArchive& a) { a.ReadInt32("colour count"); },
         "colour count needs 4 bytes but only 2 remain at offset 0", 0},
        {{1, 0, 0, 0, 9}, [](CArchive& a) {
             a.ReadInt32("a");
             a.ReadInt16("tag");
         },
         "tag needs 2 bytes but only 1 remain at offset 4", 4},
        {{5, 'a', 'b'}, [](CArchive& a) { a.ReadString("label"); },
         "label needs 5 bytes but only 2 remain at offset 1", 1},
        // A 4-byte length of 4 GiB - 1: refused before anything is allocated.
        {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 'a'}, [](CArchive& a) { a.ReadString("name"); },
         "name needs 4294967295 bytes but only 1 remain at offset 7", 7},
        {{3, 'e', 'n', 'd'}, [](CArchive& a) { a.ExpectString("PaletteEnd"); },
         "\"PaletteEnd\" marker: found \"end\" instead at offset 0", 0},
        {{1, 0}, [](CArchive& a) { a.Require(3, "colours"); }, "colours: needs 3 bytes but only 2 remain at offset 0", 0},
        {{1, 0, 0, 0}, [](CArchive& a) {
             a.ReadInt32("count");
             a.Fail("count", "too large");
         },
         "count: too large at offset 4", 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        const ArchiveError e = LoadError(c.bytes, c.read);
        EXPECT_EQ(std::string(e.what()), c.message);
        EXPECT_EQ(e.Offset(), c.offset);
    }
}

// Not an ArchiveError: a device failure is not a malformed file.
TEST(ArchiveErrors, AFailingDeviceStaysAComErrorInEitherDirection) {
    auto reading = MakeComObject<ScriptedStream>(Bytes(64, 1), 64, STG_E_READFAULT);
    CArchive loading(reading.Get(), CArchive::Mode::Load);
    const auto readFault = Caught<StreamError>([&] { loading.ReadInt32("value"); });
    ASSERT_TRUE(readFault);
    EXPECT_EQ(readFault->Code(), STG_E_READFAULT);

    auto writing = MakeComObject<ScriptedStream>(Bytes{}, 0, S_OK, STG_E_MEDIUMFULL);
    CArchive storing(writing.Get(), CArchive::Mode::Store);
    storing.WriteInt32(1);  // still in the buffer
    const auto writeFault = Caught<StreamError>([&] { storing.Close(); });
    ASSERT_TRUE(writeFault);
    EXPECT_EQ(writeFault->Code(), STG_E_MEDIUMFULL);
}

class ArchiveObjects : public GraphDataTest {
protected:
    static ComPtr<IGraphData> MakeData() {
        const std::vector<double> cells{1, 2, 3, 4, 5, 6};
        return CreateGraphData(cells, 3, 2, {}, {}, "x", "y", "z");
    }
};

TEST_F(ArchiveObjects, AnEmbeddedObjectSitsBetweenBufferedItems) {
    const ComPtr<IGraphData> data = MakeData();
    auto write = [&](CArchive& a) {
        a.WriteInt32(-1);
        a.WriteObject(data.Get());
        a.WriteString("after");
    };
    const Bytes bytes = Stored(write);
    // The class id follows the int directly: the buffer was emptied first.
    ASSERT_GT(bytes.size(), 8u);
    EXPECT_EQ(Bytes(bytes.begin() + 4, bytes.begin() + 8), (Bytes{0x92, 0x1D, 0x5D, 0x8D}));
    for (size_t size : {size_t{1}, size_t{7}, CArchive::kDefaultBufferSize}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(Stored(write, size), bytes);
        Loaded(bytes, [](CArchive& a) {
            EXPECT_EQ(a.ReadInt32("before"), -1);
            const ComPtr<IUnknown> object = a.ReadObject("data object");
            const auto loaded = object.As<IGraphData>();
            ASSERT_TRUE(loaded);
            double value = 0;
            EXPECT_EQ(loaded->GetValue(2, 1, &value), S_OK);
            EXPECT_EQ(value, 6.0);
            EXPECT_EQ(a.ReadString("after"), "after");
            EXPECT_EQ(a.Remaining(), 0u);
        }, size);
    }
}

TEST_F(ArchiveObjects, ObjectsThatCannotSaveThemselvesAreTheNullObject) {
    const Bytes nullObject(16, 0);
    auto plain = MakeComObject<PersistQuery>(E_NOINTERFACE);
    EXPECT_EQ(Stored([](CArchive& a) { a.WriteObject(nullptr); }), nullObject);
    EXPECT_EQ(Stored([&](CArchive& a) { a.WriteObject(plain->Identity()); }), nullObject);
    Loaded(nullObject, [](CArchive& a) { EXPECT_FALSE(a.ReadObject("data object")); });

    auto failing = MakeComObject<PersistQuery>(E_ACCESSDENIED);
    const auto e = Caught<ComError>([&] { Stored([&](CArchive& a) { a.WriteObject(failing->Identity()); }); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->Code(), E_ACCESSDENIED);
    EXPECT_EQ(e->Interface(), IPersistStream::kIid);
}

// Each fault names the item, its offset and what went wrong: a class the
// registry does not know, a stream ending in the class id or in the data.
TEST_F(ArchiveObjects, EmbeddedObjectsThatWillNotLoadRaiseArchiveError) {
    const Bytes good = Stored([&](CArchive& a) { a.WriteObject(MakeData().Get()); });
    Bytes unknownClass = good;
    unknownClass[0] ^= 0xFF;
    const std::pair<Bytes, std::string> cases[] = {
        {unknownClass, "cannot be created"},
        {Bytes(good.begin(), good.begin() + 10), "the stream ends inside its class id"},
        {Bytes(good.begin(), good.end() - 3), "needs"},
    };
    for (const auto& [bytes, fault] : cases) {
        const ArchiveError e = LoadError(bytes, [](CArchive& a) { a.ReadObject("data object"); });
        EXPECT_EQ(std::string(e.what()).rfind("data object: ", 0), 0u) << e.what();
        EXPECT_NE(std::string(e.what()).find(" at offset "), std::string::npos) << e.what();
        EXPECT_NE(std::string(e.what()).find(fault), std::string::npos) << e.what();
    }
}

}  // namespace
}  // namespace vexplot::test
