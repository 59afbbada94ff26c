#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <variant>

#include "com/ErrorInfo.h"
#include "TestSupport.h"

namespace vexplot {
namespace {

using test::Bytes;
using test::EncodeAll;
using test::MakeGrid;
using test::NpyDictionary;
using test::NpyFile;
using test::TempDir;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

struct Loaded {
    HRESULT hr;
    std::string error;
    test::Snapshot contents;
};

Loaded LoadInto(GraphDataObject& object, const std::string& path) {
    ClearErrorInfo();
    const HRESULT hr = object.Load(path.c_str(), STGM_SHARE_DENY_WRITE);
    return {hr, TakeErrorInfo(IPersistFile::kIid), test::Capture(object)};
}

Loaded LoadFile(const std::string& path) {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    return LoadInto(*object, path);
}

TEST(FileLoadTest, ThreeDoFileRoundTripsAndNamesTheObjectAfterTheFile) {
    TempDir folder;
    ComPtr<GraphDataObject> original = test::FilledObject();
    original->PutValue(2, 0, kNaN);
    const std::string path = folder / "Peaks.Surface.3DO";
    ASSERT_EQ(original->Save(path.c_str(), true), S_OK);
    EXPECT_EQ(original->IsDirty(), S_FALSE);
    EXPECT_EQ(folder.EntryCount(), 1u) << "no temporary file left behind";

    ComPtr<GraphDataObject> loaded = MakeComObject<GraphDataObject>();
    ASSERT_EQ(loaded->Load(path.c_str(), STGM_SHARE_DENY_WRITE), S_OK);
    test::Snapshot expected = test::Capture(*original, false);
    expected.name = "Peaks.Surface";  // the base name, extension matched in any case
    EXPECT_EQ(test::Capture(*loaded, false), expected);

    char current[256];
    EXPECT_EQ(original->GetCurFile(current, sizeof current), S_OK);
    EXPECT_EQ(path, current);
}

TEST(FileLoadTest, FailedSaveKeepsTheExistingTarget) {
    TempDir folder;
    ComPtr<GraphDataObject> object = test::FilledObject();
    const std::string missingFolder = folder / "absent/out.3do";
    EXPECT_EQ(object->Save(missingFolder.c_str(), true), STG_E_FILENOTFOUND);
    EXPECT_NE(TakeErrorInfo(IPersistFile::kIid).find(missingFolder), std::string::npos);
    EXPECT_EQ(object->IsDirty(), S_OK) << "a failed save does not count as saved";

    // The rename over a folder fails after the bytes were written: the
    // folder and its contents stay, the temporary file goes.
    const std::string target = folder / "occupied.3do";
    std::filesystem::create_directory(target);
    folder.Write("occupied.3do/keep", "precious");
    EXPECT_TRUE(FAILED(object->Save(target.c_str(), true)));
    EXPECT_FALSE(TakeErrorInfo(IPersistFile::kIid).empty());
    EXPECT_EQ(folder.Read("occupied.3do/keep"), "precious");
    EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(FileLoadTest, TextGridsWithAndWithoutHeaders) {
    struct Case {
        const char* name;
        const char* file;
        std::string text;
        std::vector<double> grid;  // grid order: ix * Y + iy
        std::vector<double> xScale, yScale;
    };
    const Case cases[] = {
        {"plain CSV", "a.csv", "1,2,3\n4,5,6\n", {1, 4, 2, 5, 3, 6}, {0, 1, 2}, {0, 1}},
        {"CSV with both headers", "b.csv", ",10,20,30\n0.5,1,2,3\n1.5,4,5,6\n", {1, 4, 2, 5, 3, 6}, {10, 20, 30},
         {0.5, 1.5}},
        {"named corner, named columns", "c.csv", "y\\x,\"a\",\"b\"\n-1,1,2\n", {1, 2}, {0, 1}, {-1}},
        {"quoted numbers", "d.csv", "\"\",\"7\",\"8\"\n\"3\",1,2\n", {1, 2}, {7, 8}, {3}},
        {"blank separated, corner omitted", "e.txt", "  10 20 30\n0.5 1 2 3\n1.5\t4 5 6\n",
         {1, 4, 2, 5, 3, 6}, {10, 20, 30}, {0.5, 1.5}},
        {"blank separated, no header", "f.dat", "1 2\n3 4\n5 6\n", {1, 3, 5, 2, 4, 6}, {0, 1}, {0, 1, 2}},
        {"comments, blank lines, CRLF, BOM", "g.txt", "\xEF\xBB\xBF# made by hand\r\n\r\n1,2\r\n  # more\r\n3,4\r\n",
         {1, 3, 2, 4}, {0, 1}, {0, 1}},
        {"commas detected in a .txt", "h.txt", "1, 2\n3, 4\n", {1, 3, 2, 4}, {0, 1}, {0, 1}},
        {"one column", "i.csv", "1\n2\n3\n", {1, 2, 3}, {0}, {0, 1, 2}},
        {"signs and exponents", "j.csv", "+1e3,-2.5E-1\n", {1000, -0.25}, {0, 1}, {0}},
        {"empty and nan cells are NaN, infinities stay", "l.csv", "1,,nan\nNaN,5,-inf\n",
         {1, kNaN, kNaN, 5, kNaN, -kInf}, {0, 1, 2}, {0, 1}},
    };
    TempDir folder;
    for (const Case& c : cases) {
        folder.Write(c.file, c.text);
        const Loaded loaded = LoadFile(folder / c.file);
        ASSERT_EQ(loaded.hr, S_OK) << c.name << ": " << loaded.error;
        EXPECT_EQ(loaded.contents.grid.size(), c.grid.size()) << c.name;
        for (size_t i = 0; i < std::min(c.grid.size(), loaded.contents.grid.size()); ++i) {
            const double got = loaded.contents.grid[i];
            EXPECT_TRUE(got == c.grid[i] || (std::isnan(got) && std::isnan(c.grid[i]))) << c.name << " cell " << i;
        }
        EXPECT_EQ(loaded.contents.xScale, c.xScale) << c.name;
        EXPECT_EQ(loaded.contents.yScale, c.yScale) << c.name;
        EXPECT_EQ(loaded.contents.xLabel + loaded.contents.yLabel + loaded.contents.zLabel, "") << c.name;
    }
}

// The same 2 x 3 array (rows = Y, columns = X) stored in every supported
// element type, byte order and memory order.
TEST(FileLoadTest, NpyArraysOfEveryTypeAndOrder) {
    // Row-major values; the grid expects them column by column.
    const std::vector<double> rows = {1, 2, 3, 4, 5, 126};
    const std::vector<double> grid = {1, 4, 2, 5, 3, 126};  // Fortran order = grid order
    const auto data = [&](auto sample, bool big, bool fortran) {
        using T = decltype(sample);
        std::vector<T> values;
        for (double v : fortran ? grid : rows) values.push_back(static_cast<T>(v));
        return EncodeAll(values, big);
    };
    struct Case {
        const char* descr;
        bool fortran;
        Bytes bytes;
        int major = 1;
    };
    const Case cases[] = {
        {"<f8", false, data(double{}, false, false)},
        {"<f8", true, data(double{}, false, true)},
        {">f8", false, data(double{}, true, false)},
        {">f8", true, data(double{}, true, true)},
        {"<f4", false, data(float{}, false, false)},
        {">f4", true, data(float{}, true, true)},
        {"|i1", false, data(int8_t{}, false, false)},
        {"<i2", true, data(int16_t{}, false, true)},
        {">i4", false, data(int32_t{}, true, false)},
        {"<i8", false, data(int64_t{}, false, false)},
        {"|u1", true, data(uint8_t{}, false, true)},
        {">u2", false, data(uint16_t{}, true, false)},
        {"<u4", false, data(uint32_t{}, false, false)},
        {">u8", true, data(uint64_t{}, true, true)},
        {"<f8", false, data(double{}, false, false), 2},
        {"<f8", false, data(double{}, false, false), 3},
    };
    TempDir folder;
    for (const Case& c : cases) {
        const std::string label = std::string(c.descr) + (c.fortran ? " F" : " C") + " v" + std::to_string(c.major);
        folder.Write("array.npy", NpyFile(NpyDictionary(c.descr, c.fortran, "(2, 3)"), c.bytes, c.major));
        const Loaded loaded = LoadFile(folder / "array.npy");
        ASSERT_EQ(loaded.hr, S_OK) << label << ": " << loaded.error;
        EXPECT_EQ(loaded.contents.xCount, 3) << label;
        EXPECT_EQ(loaded.contents.yCount, 2) << label;
        EXPECT_EQ(loaded.contents.grid, grid) << label;
        EXPECT_EQ(loaded.contents.xScale, (std::vector<double>{0, 1, 2})) << label;
        EXPECT_EQ(loaded.contents.name, "array") << label;
    }
}

TEST(FileLoadTest, NpySignedBoolAndVectorShapes) {
    TempDir folder;
    const std::string path = folder / "v.npy";
    folder.Write("v.npy", NpyFile(NpyDictionary("<i2", false, "(4,)"), EncodeAll<int16_t>({-32768, -1, 0, 7}, false)));
    Loaded loaded = LoadFile(path);
    ASSERT_EQ(loaded.hr, S_OK) << loaded.error;
    EXPECT_EQ(loaded.contents.xCount, 4);
    EXPECT_EQ(loaded.contents.yCount, 1);
    EXPECT_EQ(loaded.contents.grid, (std::vector<double>{-32768, -1, 0, 7}));

    folder.Write("v.npy", NpyFile(NpyDictionary("|b1", false, "(3, 1)"), Bytes{7, 0, 1}));
    loaded = LoadFile(path);
    ASSERT_EQ(loaded.hr, S_OK) << loaded.error;
    EXPECT_EQ(loaded.contents.xCount, 1);
    EXPECT_EQ(loaded.contents.grid, (std::vector<double>{1, 0, 1})) << "any non-zero byte is true";
}

// C order is transposed into grid order in blocks: over a block boundary
// (301 x 257 float32) and with rows longer than a block (2 x 70000 uint16,
// big-endian), every cell must land at (column, row).
TEST(FileLoadTest, COrderNpyIsTransposedAcrossBlocks) {
    struct Case {
        const char* descr;
        uint32_t rows, cols;
        std::vector<uint32_t> probeRows, probeCols;
    };
    const Case cases[] = {
        {"<f4", 301, 257, {0, 254, 255, 300}, {0, 17, 256}},
        {">u2", 2, 70000, {0, 1}, {0, 65535, 65536, 69999}},
    };
    TempDir folder;
    for (const Case& c : cases) {
        const auto cell = [&](uint32_t r, uint32_t col) { return static_cast<double>((r * 7 + col) % 60000); };
        std::vector<float> floats;
        std::vector<uint16_t> words;
        for (uint32_t r = 0; r < c.rows; ++r)
            for (uint32_t col = 0; col < c.cols; ++col) {
                floats.push_back(static_cast<float>(cell(r, col)));
                words.push_back(static_cast<uint16_t>(cell(r, col)));
            }
        const Bytes data = c.descr[1] == 'f' ? EncodeAll(floats, false) : EncodeAll(words, true);
        const std::string shape = "(" + std::to_string(c.rows) + ", " + std::to_string(c.cols) + ")";
        folder.Write("big.npy", NpyFile(NpyDictionary(c.descr, false, shape), data));
        ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
        ASSERT_EQ(LoadInto(*object, folder / "big.npy").hr, S_OK) << c.descr;
        for (uint32_t r : c.probeRows)
            for (uint32_t col : c.probeCols) {
                double v = -1;
                ASSERT_EQ(object->GetValue(static_cast<int32_t>(col), static_cast<int32_t>(r), &v), S_OK);
                EXPECT_EQ(v, cell(r, col)) << c.descr << " row " << r << " column " << col;
            }
    }
}

// A ".3do" file of `scaleDoubles` scale values, four empty texts and
// `gridDoubles` grid values, whatever its counts say.
Bytes ThreeDo(int32_t xCount, int32_t yCount, size_t scaleDoubles, size_t gridDoubles, int32_t version = 1) {
    return test::ThreeDo(xCount, yCount, std::vector<double>(scaleDoubles, 1.0), {"", "", "", ""},
                         std::vector<double>(gridDoubles, 2.0), version);
}

TEST(FileLoadTest, MalformedFilesFailWithADescriptionAndChangeNothing) {
    const auto npy = [](const std::string& dictionary, size_t dataBytes, int major = 1) {
        return NpyFile(dictionary, Bytes(dataBytes, 0), major);
    };
    Bytes badNpyMagic = npy(NpyDictionary("<f8", false, "(1, 1)"), 8);
    badNpyMagic[1] = 'X';
    Bytes npyVersion4 = npy(NpyDictionary("<f8", false, "(1, 1)"), 8);
    npyVersion4[6] = 4;
    Bytes npyLongHeader = npy(NpyDictionary("<f8", false, "(1, 1)"), 0);
    npyLongHeader[8] = 0xFF;
    npyLongHeader[9] = 0x7F;
    Bytes wrongMagic = ThreeDo(1, 1, 2, 1);
    wrongMagic[0] = 'W';
    Bytes trailing = ThreeDo(1, 1, 2, 1);
    trailing.push_back(0);
    Bytes longLabel = ThreeDo(1, 1, 2, 1);
    longLabel[36] = 200;  // the X label's length, after the header and two scale values

    struct Case {
        const char* file;
        std::variant<Bytes, std::string> contents;
        HRESULT hr;
        std::string fault;
    };
    const Case cases[] = {
        {"empty.3do", Bytes{}, STG_E_READFAULT, "magic bytes needs 8 bytes but only 0 remain at offset 0"},
        {"magic.3do", wrongMagic, STG_E_INVALIDHEADER, "wrong magic bytes"},
        {"version.3do", ThreeDo(1, 1, 2, 1, 2), STG_E_DOCFILECORRUPT, "unsupported version 2"},
        {"negative.3do", ThreeDo(-1, 5, 0, 0), STG_E_DOCFILECORRUPT, "grid size -1 x 5 is negative"},
        {"half-empty.3do", ThreeDo(0, 5, 0, 0), STG_E_DOCFILECORRUPT, "empty in one direction only"},
        {"overflow.3do", ThreeDo(INT32_MAX, INT32_MAX, 0, 0), STG_E_DOCFILECORRUPT, "exceeds the limit of 1073741824 cells"},
        {"huge.3do", ThreeDo(4096, 4096, 0, 125), STG_E_READFAULT,
         "a grid of 4096 x 4096 with its scales needs 134283264 bytes but only 1004 remain at offset 20"},
        {"short.3do", ThreeDo(2, 2, 3, 0), STG_E_READFAULT, "needs 64 bytes but only 28 remain at offset 20"},
        {"label.3do", longLabel, STG_E_READFAULT, "X label needs 200 bytes but only 11 remain at offset 37"},
        {"trailing.3do", trailing, STG_E_DOCFILECORRUPT, "1 unexpected bytes follow the data"},
        {"ragged.csv", std::string("1,2,3\n4,5,6\n7,8\n"), STG_E_DOCFILECORRUPT,
         "line 3 has 2 fields where 3 are expected"},
        {"cell.csv", std::string("1,2\n3,abc\n"), STG_E_DOCFILECORRUPT, "line 2, column 2: 'abc' is not a number"},
        // An upper-case .CSV still means commas, so "1 2" is one cell that is not a number.
        {"upper.CSV", std::string("1 2\n"), STG_E_DOCFILECORRUPT, "line 1, column 1: '1 2' is not a number"},
        {"y.csv", std::string(",1,2\nq,3,4\n"), STG_E_DOCFILECORRUPT, "line 2, column 1: Y value 'q' is not a finite number"},
        {"comments.txt", std::string("# nothing\n\n"), STG_E_DOCFILECORRUPT, "no data"},
        {"header-only.csv", std::string(",1,2\n"), STG_E_DOCFILECORRUPT, "no data rows after the header line"},
        {"magic.npy", badNpyMagic, STG_E_INVALIDHEADER, "not a NumPy array file"},
        {"version.npy", npyVersion4, STG_E_DOCFILECORRUPT, "unsupported NPY version 4.0"},
        {"half.npy", npy(NpyDictionary("<f2", false, "(1, 1)"), 2), STG_E_DOCFILECORRUPT, "unsupported dtype '<f2'"},
        {"complex.npy", npy(NpyDictionary("<c16", false, "(1, 1)"), 16), STG_E_DOCFILECORRUPT, "unsupported dtype '<c16'"},
        {"wide-bytes.npy", npy(NpyDictionary("|f8", false, "(1, 1)"), 8), STG_E_DOCFILECORRUPT, "unsupported dtype '|f8'"},
        {"struct.npy", npy("{'descr': [('a', '<f8')], 'fortran_order': False, 'shape': (1,), }", 8),
         STG_E_DOCFILECORRUPT, "structured dtypes are not supported"},
        {"cube.npy", npy(NpyDictionary("<f8", false, "(2, 2, 2)"), 64), STG_E_DOCFILECORRUPT,
         "NPY shape (2, 2, 2) is not one or two dimensions"},
        {"scalar.npy", npy(NpyDictionary("<f8", false, "()"), 8), STG_E_DOCFILECORRUPT, "not one or two dimensions"},
        {"zero.npy", npy(NpyDictionary("<f8", false, "(0, 3)"), 0), STG_E_DOCFILECORRUPT, "(0, 3) holds no values"},
        {"negative.npy", npy(NpyDictionary("<f8", false, "(-2, 3)"), 0), STG_E_DOCFILECORRUPT, "not a size"},
        {"vast.npy", npy(NpyDictionary("<f8", false, "(100000, 100000)"), 8), STG_E_DOCFILECORRUPT,
         "exceeds the limit"},
        {"short.npy", npy(NpyDictionary("<f8", false, "(4, 4)"), 32), STG_E_READFAULT,
         "array data of shape (4, 4) needs 128 bytes but only 32 remain"},
        {"keys.npy", npy("{'descr': '<f8', 'shape': (1, 1), }", 8), STG_E_DOCFILECORRUPT, "lacks"},
        {"extra-key.npy", npy("{'descr': '<f8', 'fortran_order': False, 'shape': (1, 1), 'x': 1, }", 8),
         STG_E_DOCFILECORRUPT, "unexpected key 'x'"},
        {"order.npy", npy("{'descr': '<f8', 'fortran_order': Maybe, 'shape': (1, 1), }", 8), STG_E_DOCFILECORRUPT,
         "neither True nor False"},
        {"not-dict.npy", npy("['descr']", 8), STG_E_DOCFILECORRUPT, "not a dictionary"},
        {"header-length.npy", npyLongHeader, STG_E_READFAULT, "NPY header needs 32767 bytes"},
        {"trailing.npy", npy(NpyDictionary("<f8", false, "(1, 1)"), 9), STG_E_DOCFILECORRUPT,
         "1 unexpected bytes follow the data"},
    };
    TempDir folder;
    ComPtr<GraphDataObject> object = test::FilledObject();
    const test::Snapshot before = test::Capture(*object);
    for (const Case& c : cases) {
        const std::string path = folder / c.file;
        std::visit([&](const auto& contents) { folder.Write(c.file, contents); }, c.contents);
        const Loaded loaded = LoadInto(*object, path);
        EXPECT_EQ(loaded.hr, c.hr) << c.file << ": " << loaded.error;
        EXPECT_EQ(loaded.error.rfind(path + ": ", 0), 0u) << c.file << ": " << loaded.error;
        EXPECT_NE(loaded.error.find(c.fault), std::string::npos) << c.file << ": " << loaded.error;
        EXPECT_EQ(loaded.contents, before) << c.file;
    }
    const Loaded missing = LoadInto(*object, folder / "absent.csv");
    EXPECT_EQ(missing.hr, STG_E_FILENOTFOUND);
    EXPECT_EQ(missing.error, folder / "absent.csv" + ": cannot open the file: No such file or directory");
    EXPECT_EQ(missing.contents, before);
}

}  // namespace
}  // namespace vexplot
