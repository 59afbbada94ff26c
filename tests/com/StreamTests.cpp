#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "com/AtomicFile.h"
#include "com/FileStream.h"
#include "com/MemoryStream.h"
#include "com/StreamError.h"
#include "com/StreamReader.h"
#include "com/StreamWriter.h"
#include "support/Caught.h"
#include "support/ScriptedStream.h"
#include "support/TempDir.h"

// The replacements below pair malloc with free throughout; GCC cannot see
// that across the inlined standard containers and warns.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

// The largest single allocation since it was last reset: the reader must
// check a length read from the data before it sizes a buffer with it.
static std::atomic<size_t> largestAllocation{0};

void* operator new(size_t size) {
    size_t seen = largestAllocation.load();
    while (size > seen && !largestAllocation.compare_exchange_weak(seen, size)) {
    }
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, size_t) noexcept { std::free(p); }

namespace vexplot {
namespace {

using test::Caught;
using test::ScriptedStream;
using Bytes = std::vector<uint8_t>;

Bytes Written(const std::function<void(StreamWriter&)>& write) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    StreamWriter writer(stream.Get());
    write(writer);
    return stream->Bytes();
}

TEST(StreamWriterTest, PrimitivesAreLittleEndianWithBoolAndColourAsInt32) {
    struct Case {
        const char* name;
        std::function<void(StreamWriter&)> write;
        Bytes expected;
    };
    const Case cases[] = {
        {"int", [](StreamWriter& w) { w.WriteInt32(0x01020304); }, {4, 3, 2, 1}},
        {"negative int", [](StreamWriter& w) { w.WriteInt32(-2); }, {0xFE, 0xFF, 0xFF, 0xFF}},
        {"true", [](StreamWriter& w) { w.WriteBool(true); }, {1, 0, 0, 0}},
        {"false", [](StreamWriter& w) { w.WriteBool(false); }, {0, 0, 0, 0}},
        {"colour", [](StreamWriter& w) { w.WriteColour(0x00336699); }, {0x99, 0x66, 0x33, 0}},
        {"double", [](StreamWriter& w) { w.WriteDouble(1.0); }, {0, 0, 0, 0, 0, 0, 0xF0, 0x3F}},
        {"doubles", [](StreamWriter& w) { w.WriteDoubles(std::vector<double>{-2.0, 0.5}); },
         {0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0xE0, 0x3F}},
        {"empty string", [](StreamWriter& w) { w.WriteString(""); }, {0}},
        {"string", [](StreamWriter& w) { w.WriteString("Zü"); }, {3, 'Z', 0xC3, 0xBC}},
    };
    for (const Case& c : cases) EXPECT_EQ(Written(c.write), c.expected) << c.name;
}

TEST(StreamWriterTest, StringPrefixGrowsAtTheThresholds) {
    struct Case {
        size_t length;
        Bytes prefix;
    };
    const Case cases[] = {
        {0, {0}},
        {254, {254}},
        {255, {0xFF, 0xFF, 0x00}},
        {300, {0xFF, 0x2C, 0x01}},
        {65534, {0xFF, 0xFE, 0xFF}},
        {65535, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
        {70000, {0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}},
    };
    for (const Case& c : cases) {
        const std::string text(c.length, 'a');
        const Bytes bytes = Written([&](StreamWriter& w) { w.WriteString(text); });
        ASSERT_EQ(bytes.size(), c.prefix.size() + c.length) << c.length;
        EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(c.prefix.size())), c.prefix)
            << c.length;
        EXPECT_EQ(StreamWriter::StringSize(text), bytes.size()) << c.length;

        ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(bytes);
        StreamReader reader(stream.Get());
        EXPECT_EQ(reader.ReadString(), text) << c.length;
        EXPECT_EQ(reader.Remaining(), 0u) << c.length;
    }
}

TEST(StreamReaderTest, ReadsBackEveryPrimitive) {
    const double special[] = {-0.0, std::numeric_limits<double>::infinity(), 1e-310, 6.02e23};
    const Bytes bytes = Written([&](StreamWriter& w) {
        w.WriteInt32(std::numeric_limits<int32_t>::min());
        w.WriteBool(true);
        w.WriteColour(0x00FFFFFF);
        w.WriteDouble(std::numeric_limits<double>::quiet_NaN());
        w.WriteDoubles(special);
        w.WriteString("label");
    });
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(bytes);
    StreamReader reader(stream.Get());
    EXPECT_EQ(reader.ReadInt32(), std::numeric_limits<int32_t>::min());
    EXPECT_TRUE(reader.ReadBool());
    EXPECT_EQ(reader.ReadColour(), 0x00FFFFFFu);
    EXPECT_TRUE(std::isnan(reader.ReadDouble()));
    double back[4] = {};
    reader.ReadDoubles(back);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(std::memcmp(&back[i], &special[i], 8), 0) << i;
    EXPECT_EQ(reader.ReadString(), "label");
    EXPECT_EQ(reader.Remaining(), 0u);
}

TEST(StreamReaderTest, TruncatedInputNamesTheItemAndOffset) {
    struct Case {
        const char* name;
        Bytes bytes;
        std::function<void(StreamReader&)> read;
        const char* message;
        uint64_t start = 0;  // where the reader starts: offsets count from the stream's start
    };
    const Case cases[] = {
        {"short int", {1, 2, 3}, [](StreamReader& r) { r.ReadInt32("X count"); },
         "X count needs 4 bytes but only 3 remain at offset 0"},
        {"int after int", {1, 0, 0, 0, 9}, [](StreamReader& r) { r.ReadInt32(); r.ReadInt32("Y count"); },
         "Y count needs 4 bytes but only 1 remain at offset 4"},
        {"short double", {0, 0, 0, 0}, [](StreamReader& r) { r.ReadDouble("level"); },
         "level needs 8 bytes but only 4 remain at offset 0"},
        {"empty string", {}, [](StreamReader& r) { r.ReadString("name"); },
         "name length needs 1 byte but only 0 remain at offset 0"},
        {"truncated 2-byte length", {0xFF, 0x2C}, [](StreamReader& r) { r.ReadString("label"); },
         "label length needs 2 bytes but only 1 remain at offset 1"},
        {"truncated 4-byte length", {0xFF, 0xFF, 0xFF, 1, 0}, [](StreamReader& r) { r.ReadString("label"); },
         "label length needs 4 bytes but only 2 remain at offset 3"},
        {"text shorter than its length", {10, 'a', 'b', 'c'}, [](StreamReader& r) { r.ReadString("label"); },
         "label needs 10 bytes but only 3 remain at offset 1"},
        {"block", {1, 2}, [](StreamReader& r) { r.Require(16, "grid"); },
         "grid needs 16 bytes but only 2 remain at offset 0"},
        {"reader made mid-stream", {9, 9, 9, 9, 9, 5, 0}, [](StreamReader& r) { r.ReadInt32("count"); },
         "count needs 4 bytes but only 2 remain at offset 5", 5},
    };
    for (const Case& c : cases) {
        ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(c.bytes);
        ASSERT_EQ(stream->Seek(int64_t(c.start), STREAM_SEEK_SET, nullptr), S_OK);
        StreamReader reader(stream.Get());
        const auto e = Caught<StreamError>([&] { c.read(reader); });
        ASSERT_TRUE(e) << c.name;
        EXPECT_EQ(e->Code(), STG_E_READFAULT) << c.name;
        EXPECT_EQ(e->Description(), c.message) << c.name;
    }
}

TEST(StreamReaderTest, HugeStringLengthIsRefusedWithoutReadingIt) {
    // A length of 4 GiB - 1 followed by three bytes: checked against what
    // remains, never used to size a buffer or a read.
    ComPtr<ScriptedStream> stream =
        MakeComObject<ScriptedStream>(Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 'a', 'b', 'c'}, 10);
    StreamReader reader(stream.Get());
    largestAllocation = 0;
    const auto e = Caught<StreamError>([&] { reader.ReadString("name"); });
    EXPECT_LT(largestAllocation.load(), size_t{4096});
    ASSERT_TRUE(e);
    EXPECT_EQ(e->Description(), "name needs 4294967295 bytes but only 3 remain at offset 7");
    EXPECT_LE(stream->largestRead, 4u);
}

// A stream that ends before its size and a device error on reading; a
// device that takes less than it was given on writing.
TEST(StreamDeviceTest, FailuresKeepTheDevicesCodeOrBecomeFaults) {
    struct Case {
        const char* name;
        Bytes bytes;
        uint64_t claimedSize;
        HRESULT readResult;
        std::function<void(IStream*)> use;
        HRESULT code;
        std::string message;
    };
    const Case cases[] = {
        {"shorter than its size", {1, 2}, 8, S_OK, [](IStream* s) { StreamReader(s).ReadDouble("value"); },
         STG_E_READFAULT, "value needs 8 bytes but the stream ended after 2 at offset 0"},
        {"device error", Bytes(8), 8, STG_E_ACCESSDENIED, [](IStream* s) { StreamReader(s).ReadInt32("count"); },
         STG_E_ACCESSDENIED, "reading count failed at offset 0"},
        {"short write", {}, 0, S_OK, [](IStream* s) { StreamWriter(s).WriteInt32(1); }, STG_E_WRITEFAULT, ""},
    };
    for (const Case& c : cases) {
        ComPtr<ScriptedStream> stream = MakeComObject<ScriptedStream>(c.bytes, c.claimedSize, c.readResult);
        const auto e = Caught<StreamError>([&] { c.use(stream.Get()); });
        ASSERT_TRUE(e) << c.name;
        EXPECT_EQ(e->Code(), c.code) << c.name;
        EXPECT_NE(std::string(e->what()).find(c.message), std::string::npos) << c.name << ": " << e->what();
    }
}

TEST(FileStreamTest, OpenFailuresMapToStorageCodes) {
    test::TempDir folder;
    folder.Write("present", "x");
    struct Case {
        std::string path;
        FileStream::Mode mode;
        HRESULT expected;
    };
    const Case cases[] = {
        {folder / "absent", FileStream::Mode::Read, STG_E_FILENOTFOUND},
        {folder / "no-folder/file", FileStream::Mode::CreateAlways, STG_E_FILENOTFOUND},
        {folder / "", FileStream::Mode::Read, STG_E_ACCESSDENIED},  // a folder
        {folder / "present", FileStream::Mode::CreateNew, STG_E_FILEALREADYEXISTS},
    };
    for (const Case& c : cases) {
        HRESULT hr = S_OK;
        std::string reason;
        EXPECT_FALSE(FileStream::Open(c.path, c.mode, &hr, &reason)) << c.path;
        EXPECT_EQ(hr, c.expected) << c.path;
        EXPECT_FALSE(reason.empty()) << c.path;
    }
}

TEST(FileStreamTest, FullDiskIsMediumFull) {
    HRESULT hr = S_OK;
    ComPtr<FileStream> full = FileStream::Open("/dev/full", FileStream::Mode::CreateAlways, &hr);
    if (!full) GTEST_SKIP() << "/dev/full is not available";
    const char bytes[16] = {};
    uint32_t written = 99;
    EXPECT_EQ(full->Write(bytes, sizeof bytes, &written), STG_E_MEDIUMFULL);
    EXPECT_EQ(written, 0u);
}

TEST(FileStreamTest, WritesSeeksAndReadsBack) {
    test::TempDir folder;
    HRESULT hr = S_OK;
    ComPtr<FileStream> out = FileStream::Open(folder / "f", FileStream::Mode::CreateAlways, &hr);
    ASSERT_TRUE(out);
    StreamWriter writer(out.Get());
    writer.WriteString("abc");
    writer.WriteInt32(42);
    uint64_t size = 0;
    ASSERT_EQ(out->Stat(&size), S_OK);
    EXPECT_EQ(size, 8u);
    ASSERT_EQ(out->Commit(0), S_OK);
    ASSERT_EQ(out->Close(), S_OK);
    EXPECT_EQ(out->Close(), E_UNEXPECTED);

    ComPtr<FileStream> in = FileStream::Open(folder / "f", FileStream::Mode::Read, &hr);
    ASSERT_TRUE(in);
    uint64_t position = 0;
    ASSERT_EQ(in->Seek(4, STREAM_SEEK_SET, &position), S_OK);
    StreamReader reader(in.Get());
    EXPECT_EQ(reader.ReadInt32(), 42);
    uint32_t read = 7;
    uint8_t byte = 0;
    EXPECT_EQ(in->Read(&byte, 1, &read), S_OK);  // at the end: success, nothing read
    EXPECT_EQ(read, 0u);
}

TEST(MemoryStreamTest, SeekPastEndThenWriteFillsTheGapWithZeros) {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(Bytes{1, 2});
    uint64_t position = 0;
    ASSERT_EQ(stream->Seek(2, STREAM_SEEK_END, &position), S_OK);
    EXPECT_EQ(position, 4u);
    const uint8_t byte = 9;
    ASSERT_EQ(stream->Write(&byte, 1, nullptr), S_OK);
    EXPECT_EQ(stream->Bytes(), (Bytes{1, 2, 0, 0, 9}));
    EXPECT_EQ(stream->Seek(-6, STREAM_SEEK_CUR, &position), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(stream->Seek(0, 7, &position), STG_E_INVALIDFUNCTION);
    ASSERT_EQ(stream->SetSize(1), S_OK);
    EXPECT_EQ(stream->Bytes(), Bytes{1});
}

TEST(AtomicFileTest, ReplacesTheFileAndKeepsItsPermissions) {
    test::TempDir folder;
    const std::string path = folder / "data.bin";
    folder.Write("data.bin", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    WriteFileAtomically(path, [](IStream& s) { StreamWriter(&s).WriteString("new"); });
    EXPECT_EQ(folder.Read("data.bin"), "\3new");
    struct stat info {};
    ASSERT_EQ(::stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
    EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(AtomicFileTest, FailureMidwayLeavesTheOldFileAndNoTemporary) {
    test::TempDir folder;
    const std::string path = folder / "data.bin";
    folder.Write("data.bin", "precious");
    EXPECT_THROW(WriteFileAtomically(path,
                                     [](IStream& s) {
                                         StreamWriter(&s).WriteString("partial");
                                         throw StreamError(STG_E_MEDIUMFULL, "disk full");
                                     }),
                 StreamError);
    EXPECT_EQ(folder.Read("data.bin"), "precious");
    EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(AtomicFileTest, MissingFolderIsReportedAsNotFound) {
    test::TempDir folder;
    const auto e = Caught<StreamError>([&] { WriteFileAtomically(folder / "absent/data.bin", [](IStream&) {}); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->Code(), STG_E_FILENOTFOUND);
    EXPECT_NE(e->Description().find("absent"), std::string::npos);
}

}  // namespace
}  // namespace vexplot
