#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/Boxes.h"
#include "ui/InfoLayout.h"
#include "ui/LogFontRecord.h"
#include "ui/TextRegion.h"

namespace vexplot {
namespace {

using test::B;
using test::Box;

// A mask from rows of text: '#' is a text pixel (black), anything else white.
TextMask MaskOf(const std::vector<std::string>& rows) {
    TextMask mask;
    mask.width = static_cast<int32_t>(rows.front().size());
    mask.height = static_cast<int32_t>(rows.size());
    mask.stride = mask.width;
    for (const std::string& row : rows)
        for (const char c : row) mask.pixels.push_back(c == '#' ? 0xFF000000u : 0xFFFFFFFFu);
    return mask;
}

// Paints the runs back into rows, counting overlaps as '2' so a double
// cover shows as a difference.
std::vector<std::string> Paint(const std::vector<PixelRect>& runs, int32_t width, int32_t height) {
    std::vector<std::string> rows(static_cast<size_t>(height), std::string(static_cast<size_t>(width), '.'));
    for (const PixelRect& r : runs)
        for (int32_t y = r.top; y < r.bottom; ++y)
            for (int32_t x = r.left; x < r.right; ++x) {
                char& c = rows[static_cast<size_t>(y)][static_cast<size_t>(x)];
                c = c == '.' ? '#' : '2';
            }
    return rows;
}

TEST(InfoTextRegion, RunsCoverExactlyTheTextPixelsOnce) {
    const std::vector<std::vector<std::string>> masks = {
        {"......"},
        {"######"},
        {"#.#.##", "#.#.##", "##..#.", "......", ".####."},
        {".##...", ".##...", ".###..", ".##..."},  // a wider row between equal ones
        {"#.....", ".#....", "..#...", "...#.."},
    };
    for (const auto& rows : masks) {
        const TextMask mask = MaskOf(rows);
        EXPECT_EQ(Paint(TextRegion::Runs(mask, 0xFFFFFF), mask.width, mask.height), [&] {
            std::vector<std::string> expected = rows;
            for (std::string& row : expected)
                for (char& c : row) c = c == '#' ? '#' : '.';
            return expected;
        }()) << rows.front();
    }
}

TEST(InfoTextRegion, EqualRunsOnConsecutiveRowsMergeAndStrideIsHonoured) {
    TextMask mask = MaskOf({".##.", ".##.", ".##.", "#..#"});
    EXPECT_EQ(B(TextRegion::Runs(mask, 0xFFFFFF)), (std::vector<Box>{{1, 0, 3, 3}, {0, 3, 1, 4}, {3, 3, 4, 4}}));

    // The same picture in rows of 6 pixels, whose last two are padding full of "text".
    TextMask padded;
    padded.width = 4;
    padded.height = 4;
    padded.stride = 6;
    for (int32_t y = 0; y < 4; ++y) {
        for (int32_t x = 0; x < 4; ++x) padded.pixels.push_back(mask.pixels[static_cast<size_t>(y * 4 + x)]);
        padded.pixels.insert(padded.pixels.end(), {0u, 0u});
    }
    EXPECT_EQ(B(TextRegion::Runs(padded, 0xFFFFFF)), B(TextRegion::Runs(mask, 0xFFFFFF)));

    padded.pixels.resize(10);  // shorter than the size claims: no runs, no read past the end
    EXPECT_TRUE(TextRegion::Runs(padded, 0xFFFFFF).empty());
}

TEST(InfoTextRegion, PlaceMovesClipsAndDropsWhatIsLeftEmpty) {
    const std::vector<PixelRect> runs{{0, 0, 10, 2}, {0, 2, 10, 4}, {2, 8, 4, 9}, {0, 20, 5, 21}};
    EXPECT_EQ(B(TextRegion::Place(runs, 1, -3, PixelRect{0, 0, 6, 10})), (std::vector<Box>{{1, 0, 6, 1}, {3, 5, 5, 6}}));
}

InfoEntry Entry(int32_t kind, std::string text, bool visible, uint32_t color = 0) {
    InfoEntry e;
    e.kind = kind;
    e.text = std::move(text);
    e.visible = visible;
    e.color = color;
    return e;
}

TEST(InfoLayoutContent, SizesFromTheFontAndTheLongestEntryShownOrNot) {
    const FontMetrics metrics{11, 9, 2, 1, 5, 11};  // line height 12, max width 11
    const std::vector<InfoEntry> entries{
        Entry(2, "Marker A:", true),
        Entry(2, "X 1.5 °", true, 0x0000FF),  // "°" is one character, two bytes
        Entry(16, "a hidden longer line", false),
        Entry(32, "Zoom:", true),
    };
    const InfoContent content = InfoLayout::Content(entries, metrics, 0xFAFAFA);
    EXPECT_EQ(content.lineHeight, 12);
    EXPECT_EQ(content.width, 11 * (20 + 5));
    EXPECT_EQ(content.height, 12 * (3 + 1));
    ASSERT_EQ(content.lines.size(), 3u);
    EXPECT_EQ(content.lines[1].top, 12);
    EXPECT_EQ(content.lines[1].color, 0x0000FFu);
    EXPECT_EQ(content.lines[2].top, 24);
    EXPECT_EQ(content.lines[2].entryIndex, 3u);
    EXPECT_EQ(content.lines[2].color, 0xFAFAFAu) << "colour 0 is the text colour";

    const InfoContent empty = InfoLayout::Content({}, metrics, 0xFAFAFA);
    EXPECT_EQ(empty.width, 5 * 11);
    EXPECT_EQ(empty.height, 12);
    EXPECT_EQ(InfoLayout::Characters("\xE2\x82\xAC\xFF"), 2) << "a stray byte counts as one";
}

TEST(InfoLayoutScroll, RangeOffsetAndClamp) {
    struct Case {
        int32_t position, content, client;
        InfoScroll expected;
    };
    const InfoScroll previous{3, 7, 99};
    const Case cases[] = {
        {0, 120, 24, {0, 5, 0}},
        {1, 120, 24, {1, 5, 24}},
        {5, 120, 24, {5, 5, 96}},     // never past the last full client height
        {9, 120, 24, {5, 5, 96}},     // position clamped to the range
        {-2, 120, 24, {0, 5, 0}},
        {2, 100, 400, {0, 0, 0}},     // fits: no range
        {1, 100, 100, {0, 0, 0}},     // fits exactly: nothing to scroll either
        {1, 100, 50, {1, 2, 50}},
        {1, 100, 5, previous},        // too low to scroll: state kept
        {1, 100, 6, {1, 16, 6}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(InfoLayout::Scroll(c.position, c.content, c.client, previous), c.expected)
            << c.position << " " << c.content << " " << c.client;
}

TEST(InfoLayoutScroll, MovesByLinePageAndThumb) {
    struct Case {
        InfoScroll from;
        InfoScrollAction action;
        int32_t thumb;
        int32_t expected;
    };
    const Case cases[] = {
        {{0, 5, 0}, InfoScrollAction::LineUp, 0, 0},
        {{0, 5, 0}, InfoScrollAction::LineDown, 0, 1},
        {{5, 5, 0}, InfoScrollAction::LineDown, 0, 5},
        {{2, 9, 0}, InfoScrollAction::PageDown, 0, 3},    // range below 10: a page is 1
        {{2, 10, 0}, InfoScrollAction::PageDown, 0, 3},
        {{2, 25, 0}, InfoScrollAction::PageDown, 0, 4},   // a tenth of the range
        {{20, 25, 0}, InfoScrollAction::PageUp, 0, 18},
        {{1, 25, 0}, InfoScrollAction::PageUp, 0, 0},
        {{1, 25, 0}, InfoScrollAction::ThumbTrack, 17, 17},
        {{1, 25, 0}, InfoScrollAction::ThumbTrack, 40, 25},
        {{1, 25, 0}, InfoScrollAction::ThumbTrack, -1, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(InfoLayout::Move(c.from, c.action, c.thumb), c.expected)
            << static_cast<int>(c.action) << " from " << c.from.position << " of " << c.from.range;
}

TEST(InfoFontRecord, LayoutOfTheSixtyBytes) {
    LogicalFont font;
    font.face = "Courier New";
    font.height = -13;
    font.width = 7;
    font.escapement = 900;
    font.weight = 700;
    font.italic = true;
    font.strikeOut = true;
    font.charset = 0xA1;
    font.pitchAndFamily = 0x31;
    const LogFontRecord::Bytes bytes = LogFontRecord::Encode(font);
    LogFontRecord::Bytes expected{};
    const uint8_t head[] = {0xF3, 0xFF, 0xFF, 0xFF, 7, 0, 0, 0, 0x84, 3, 0, 0, 0, 0, 0, 0, 0xBC, 2, 0, 0,
                            1,    0,    1,    0xA1, 0, 0, 0, 0x31};
    std::copy(std::begin(head), std::end(head), expected.begin());
    const std::string face = "Courier New";
    std::copy(face.begin(), face.end(), expected.begin() + 28);
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(LogFontRecord::Decode(bytes), font);

    LogFontRecord::Bytes noFace = bytes;
    std::fill(noFace.begin() + 28, noFace.end(), uint8_t{0});
    EXPECT_FALSE(LogFontRecord::Decode(noFace).has_value());
}

TEST(InfoFontRecord, LongFacesAreCutAtACharacterBoundary) {
    LogicalFont font;
    font.face = std::string(31, 'a') + "\xC3\xA9";  // 33 bytes, the last character two bytes wide
    const auto decoded = LogFontRecord::Decode(LogFontRecord::Encode(font));
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(decoded->face, std::string(31, 'a'));
    font.face = std::string(32, 'b');  // exactly 32 bytes: kept whole, without a terminator
    EXPECT_EQ(LogFontRecord::Decode(LogFontRecord::Encode(font))->face, font.face);
}

}  // namespace
}  // namespace vexplot
