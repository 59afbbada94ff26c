#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "model/CGD_Palette.h"
#include "model/PaletteFile.h"
#include "support/TempDir.h"

namespace vexplot {
namespace {

using Colors = std::vector<uint32_t>;

TEST(PaletteText, ReadsAsTheScanFormatDoes) {
    const std::pair<std::string, Colors> cases[] = {
        {"255,0,0\n0,0,255\n", {0x0000FF, 0xFF0000}},
        {"", {}},
        {"\n \t\r\n", {}},
        {"1,2,3", {0x030201}},
        {" 1, 2,\t3\r\n", {0x030201}},
        {"-1,256,+7\n300,-256,1000\n", {0x0700FF, 0xE8002C}},
        {"99999999999999999999999,-99999999999999999999999,0", {0x0001FF}},
        {"1,2,3 4,5,6", {0x030201, 0x060504}},
        // a short line keeps the components it lacks from the line before
        {"1,2,3\n7,8\n9,10,11\n", {0x030201, 0x030807, 0x0B0A09}},
        // a line that converts nothing repeats the colour before it once
        // and ends the reading
        {"1,2,3\nabc\n4,5,6\n", {0x030201, 0x030201}},
        {"1 ,2,3\n4,5,6\n", {0x000001, 0x000001}},
        {"1,2,3,\n4,5,6\n", {0x030201, 0x030201}},
        {"- 5,1,1\n", {0x000000}},
        {std::string("1,2,3\n\0 4,5,6\n", 14), {0x030201, 0x030201}},
    };
    for (const auto& [text, colors] : cases) EXPECT_EQ(PaletteFile::Parse(text), colors) << text;
}

TEST(PaletteText, TellsAPaletteFromAFileChosenByMistake) {
    const std::pair<std::string, bool> cases[] = {
        {"255,0,0\n0,0,255\n", true},
        {"255,0,0", true},                     // no final line end
        {" 1 , -2 ,+3\r\n\n\t\n4,5,6\n", true},  // blanks, signs, CRLF and empty lines
        {"", false},
        {"\n \n", false},
        {"1,2\n", false},
        {"1,2,3,4\n", false},
        {"1,2,3\nx\n", false},
        {"1.5,2,3\n", false},
        {"1,,3\n", false},
        {std::string("\x89PNG\r\n\x1a\n", 8), false},
    };
    for (const auto& [text, palette] : cases) EXPECT_EQ(PaletteFile::LooksLikePalette(text), palette) << text;
    // Everything Format writes passes.
    EXPECT_TRUE(PaletteFile::LooksLikePalette(PaletteFile::Format(Colors{0x0000FF, 0x123456})));
}

TEST(PaletteText, FormatReadsBackAndReadingStopsAtTheLimit) {
    EXPECT_EQ(PaletteFile::Format(Colors{0x0000FF, 0x0A0B0C}), "255,0,0\n12,11,10\n");
    std::mt19937 random(7);
    Colors colors(PaletteFile::kMaxColors + 3);
    for (uint32_t& color : colors) color = random() & 0xFFFFFF;
    colors.resize(PaletteFile::kMaxColors);
    std::string text = PaletteFile::Format(colors) + "1,1,1\n";
    EXPECT_EQ(PaletteFile::Parse(text), colors);
}

class PaletteFileTest : public testing::Test {
protected:
    test::TempDir dir_{"palette"};
    CGD_Palette palette_;
};

TEST_F(PaletteFileTest, TwoLineFileLoadsAndSavesBackTheSameLines) {
    dir_.Write("in.plt", "255,0,0\n0,0,255\n");
    palette_.SetStandard(3);
    ASSERT_EQ(palette_.LoadFile(dir_ / "in.plt"), 1);
    EXPECT_EQ(Colors(palette_.Colors().begin(), palette_.Colors().end()), (Colors{0x0000FF, 0xFF0000}));
    EXPECT_EQ(palette_.GetPaletteId(), 3);
    ASSERT_EQ(palette_.SaveFile(dir_ / "out.plt"), 1);
    EXPECT_EQ(dir_.Read("out.plt"), "255,0,0\n0,0,255\n");
    EXPECT_EQ(palette_.GetFileName(), dir_ / "out.plt");
}

TEST_F(PaletteFileTest, UnreadableFileKeepsTheListAndIsRemembered) {
    palette_.SetStandard(1);
    std::filesystem::create_directory(dir_.Path() / "folder");
    for (const std::string name : {"missing.plt", "folder"}) {
        EXPECT_EQ(palette_.LoadFile(dir_ / name), 0) << name;
        EXPECT_EQ(palette_.GetLastError(), CGD_Palette::kErrorCannotOpen);
        EXPECT_EQ(palette_.GetCount(), 1024u);
        EXPECT_EQ(palette_.GetFileName(), dir_ / name);
    }
}

TEST_F(PaletteFileTest, NothingIsWrittenWithoutPathOrColours) {
    EXPECT_EQ(palette_.SaveFile(dir_ / "empty.plt"), 0);
    EXPECT_EQ(palette_.GetLastError(), CGD_Palette::kErrorEmptyList);
    EXPECT_EQ(palette_.SaveStretchedFile(dir_ / "stretched.plt"), 0);
    EXPECT_EQ(palette_.GetLastError(), CGD_Palette::kErrorEmptyList);
    EXPECT_EQ(dir_.EntryCount(), 0u);
    palette_.SetStandard(0);
    for (auto call : {&CGD_Palette::LoadFile, &CGD_Palette::SaveFile, &CGD_Palette::SaveStretchedFile}) {
        EXPECT_EQ((palette_.*call)(""), 0);
        EXPECT_EQ(palette_.GetLastError(), CGD_Palette::kErrorNoFileName);
    }
    EXPECT_EQ(palette_.GetCount(), 1024u);
    EXPECT_EQ(palette_.GetFileName(), "");
}

// -2 is returned, not recorded; the file name, a previous file and the
// folder stay as they were.
TEST_F(PaletteFileTest, FailedWriteReturnsMinusTwoAndChangesNothing) {
    palette_.SetStandard(0);
    ASSERT_EQ(palette_.SaveFile(dir_ / "kept.plt"), 1);
    palette_.LoadFile("");
    const std::string unwritable = dir_ / "no-such-folder/out.plt";
    EXPECT_EQ(palette_.SaveFile(unwritable), -2);
    ASSERT_TRUE(palette_.Stretch(0, 0, 20, 4));
    EXPECT_EQ(palette_.SaveStretchedFile(unwritable), -2);
    EXPECT_EQ(palette_.GetLastError(), CGD_Palette::kErrorNoFileName);
    EXPECT_EQ(palette_.GetFileName(), dir_ / "kept.plt");
    EXPECT_EQ(dir_.Listing(), std::vector<std::string>{"kept.plt"});
}

// Rows from the top: the highest colours first, as resampled.
TEST_F(PaletteFileTest, StretchedFileListsRowsFromTheTop) {
    for (uint32_t color : {1u, 2u, 3u, 4u}) palette_.SetColor(palette_.GetCount(), color);
    ASSERT_TRUE(palette_.Stretch(5, 10, 30, 17));
    ASSERT_EQ(palette_.SaveStretchedFile(dir_ / "s.plt"), 1);
    EXPECT_EQ(dir_.Read("s.plt"), "4,0,0\n4,0,0\n3,0,0\n3,0,0\n2,0,0\n2,0,0\n1,0,0\n1,0,0\n");
    ASSERT_TRUE(palette_.Stretch(0, 0, 3, 2));  // narrower than the column read
    ASSERT_EQ(palette_.SaveStretchedFile(dir_ / "narrow.plt"), 1);
    EXPECT_EQ(dir_.Read("narrow.plt"), "4,0,0\n2,0,0\n");
    ASSERT_TRUE(palette_.Stretch(0, 0, 0, 2));  // no pixel to read: no rows
    EXPECT_EQ(palette_.SaveStretchedFile(dir_ / "none.plt"), 1);
    EXPECT_EQ(dir_.Read("none.plt"), "");
    EXPECT_EQ(palette_.GetFileName(), "");
}

}  // namespace
}  // namespace vexplot
