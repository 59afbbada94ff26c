#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "model/CGD_Palette.h"

namespace vexplot {
namespace {

using Position = CGD_Palette::Position;

CGD_Palette PaletteOf(const std::vector<uint32_t>& colors) {
    CGD_Palette palette;
    for (uint32_t color : colors) palette.SetColor(static_cast<int64_t>(palette.GetCount()), color);
    return palette;
}

TEST(PaletteList, SetColorReplacesInsideAndAppendsBeyond) {
    CGD_Palette palette = PaletteOf({1, 2});
    EXPECT_EQ(palette.GetColor(2), 0u);
    EXPECT_EQ(palette.GetColor(-1), 0u);
    EXPECT_TRUE(palette.SetColor(0, 0xAA));
    EXPECT_TRUE(palette.SetColor(2, 0xBB));        // = count
    EXPECT_TRUE(palette.SetColor(50, 0xCC));       // appended, no gap
    EXPECT_FALSE(palette.SetColor(-1, 0xDD));
    EXPECT_TRUE(palette.SetColor(1, 0xFF00EE00));  // the top byte is not part of a colour
    EXPECT_EQ(std::vector<uint32_t>(palette.Colors().begin(), palette.Colors().end()),
              (std::vector<uint32_t>{0xAA, 0x00EE00, 0xBB, 0xCC}));
    palette = PaletteOf(std::vector<uint32_t>(CGD_Palette::kMaxColors, 1));
    EXPECT_FALSE(palette.SetColor(static_cast<int64_t>(CGD_Palette::kMaxColors), 2));
    EXPECT_EQ(palette.GetCount(), CGD_Palette::kMaxColors);
}

TEST(PaletteList, WalksStartAtTheChosenEndAndStayAtTheOther) {
    const CGD_Palette palette = PaletteOf({0x0A, 0x0B, 0x0C});
    struct Case {
        bool next, fromTail;
        Position start;
        std::vector<uint32_t> colors;
    };
    const Case cases[] = {
        {true, false, Position(), {0x0A, 0x0B, 0x0C}}, {false, true, Position(), {0x0C, 0x0B, 0x0A}},
        {true, true, Position(), {0x0C}},              {false, false, Position(), {0x0A}},
        {false, false, Position::At(1), {0x0B, 0x0A}}, {true, false, Position::At(7), {0}},
    };
    for (const Case& c : cases) {
        Position position = c.start;
        std::vector<uint32_t> walked;
        do {
            walked.push_back(c.next ? palette.GetNext(position, c.fromTail) : palette.GetPrev(position, c.fromTail));
        } while (!position.IsEnd() && walked.size() < 10);
        EXPECT_EQ(walked, c.colors) << c.next << c.fromTail;
        EXPECT_EQ(palette.GetNext(position, false), 0u) << "the end does not restart";
    }
}

// The strip holds the highest colour in its top row, one row per colour.
// Target row r of a stretch shows strip row floor(r * count / height) across
// the whole width; an odd height is raised by one.
TEST(PaletteStrip, StretchSamplesRowsWithoutBlending) {
    CGD_Palette palette = PaletteOf({1, 2, 3, 0xFF});
    ASSERT_EQ(palette.Strip().Width(), 25u);
    ASSERT_EQ(palette.Strip().Height(), 4u);
    palette.SetColor(3, 4);  // the strip follows the list
    for (uint32_t y = 0; y < 4; ++y) {
        for (uint32_t pixel : palette.Strip().Row(y)) EXPECT_EQ(pixel, 4 - y) << "row " << y;
    }
    const std::pair<int, std::vector<uint32_t>> cases[] = {
        {7, {4, 4, 3, 3, 2, 2, 1, 1}}, {2, {4, 2}}, {6, {4, 4, 3, 2, 2, 1}}, {0, {}}};
    for (const auto& [height, rows] : cases) {
        ASSERT_TRUE(palette.Stretch(3, -5, 40, height - 5));
        const RgbaRaster* stretched = palette.GetStripBitmap();
        ASSERT_EQ(palette.GetStretchedHeight(), rows.size());
        ASSERT_EQ(stretched->Height(), rows.size());
        ASSERT_EQ(stretched->Width(), 37u);
        for (uint32_t y = 0; y < rows.size(); ++y) {
            EXPECT_EQ(stretched->Pixel(0, y), rows[y]) << height << ", row " << y;
            EXPECT_EQ(stretched->Pixel(36, y), rows[y]) << height << ", row " << y;
        }
    }
}

TEST(PaletteStrip, RefusedStretchKeepsThePreviousOne) {
    const int kMin = -2147483647 - 1, kMax = 2147483647;
    const std::pair<std::array<int, 4>, int> cases[] = {
        {{0, 10, 25, 9}, CGD_Palette::kErrorBadTarget},
        {{25, 0, 0, 10}, CGD_Palette::kErrorBadTarget},
        {{0, 0, 1 << 13, 1 << 12}, CGD_Palette::kErrorNoRaster},
        {{0, 0, 0, 1 << 25}, CGD_Palette::kErrorNoRaster},
        {{kMin, kMin, kMax, kMax}, CGD_Palette::kErrorNoRaster},
    };
    CGD_Palette palette = PaletteOf({1, 2});
    EXPECT_EQ(palette.GetStripBitmap(), nullptr);
    ASSERT_TRUE(palette.Stretch(0, 0, 25, 4));
    const RgbaRaster before = *palette.GetStripBitmap();
    for (const auto& [rect, error] : cases) {
        EXPECT_FALSE(palette.Stretch(rect[0], rect[1], rect[2], rect[3]));
        EXPECT_EQ(palette.GetLastError(), error);
        EXPECT_EQ(*palette.GetStripBitmap(), before);
    }
}

}  // namespace
}  // namespace vexplot
