#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "opengl/text/TextPainter.h"

namespace vexplot {
namespace {

constexpr uint32_t kBackground = 0x00202020;
constexpr uint32_t kInk = 0x0000FFFF;  // yellow
constexpr uint32_t kPadding = 0x00ABCDEF;

FontDescription Font(const char* face, int32_t height, int32_t escapement = 0) {
    FontDescription font{};
    std::strncpy(font.face, face, sizeof(font.face) - 1);
    font.height = height;
    font.weight = 400;
    font.escapement = escapement;
    return font;
}

// A pixel buffer with a few pixels of padding after each row, so that a
// write past the width shows up.
struct Canvas {
    static constexpr int32_t kPad = 3;
    int32_t width, height;
    std::vector<uint32_t> pixels;
    Canvas(int32_t w, int32_t h) : width(w), height(h), pixels(size_t((w + kPad) * h), kBackground) {
        for (int32_t y = 0; y < h; ++y)
            std::fill_n(pixels.begin() + y * (w + kPad) + w, kPad, kPadding);
    }
    ImageBuffer Buffer() { return ImageBuffer{pixels.data(), width, height, width + kPad, 0}; }
    uint32_t At(int32_t x, int32_t y) const { return pixels[size_t(y * (width + kPad) + x)]; }
    bool PaddingIntact() const {
        for (int32_t y = 0; y < height; ++y)
            for (int32_t k = 0; k < kPad; ++k)
                if (pixels[size_t(y * (width + kPad) + width + k)] != kPadding) return false;
        return true;
    }
    struct Box {
        int32_t left = 1 << 30, top = 1 << 30, right = -1, bottom = -1;  // inclusive
        int32_t count = 0;
        int32_t exact = 0;  // pixels exactly in the ink colour
    };
    Box Ink(int32_t x0 = 0, int32_t x1 = -1) const {
        Box box;
        if (x1 < 0) x1 = width;
        for (int32_t y = 0; y < height; ++y)
            for (int32_t x = x0; x < x1; ++x) {
                const uint32_t p = At(x, y);
                if (p == kBackground) continue;
                box.left = std::min(box.left, x), box.right = std::max(box.right, x);
                box.top = std::min(box.top, y), box.bottom = std::max(box.bottom, y);
                ++box.count;
                box.exact += p == kInk;
            }
        return box;
    }
};

class TextPainterTest : public ::testing::Test {
protected:
    TextPainter painter;
};

TEST_F(TextPainterTest, InkAppearsInTheTextColourInsideTheMeasuredBoxOnly) {
    Canvas canvas(200, 60);
    const auto font = Font("Arial", -16);
    const auto extent = painter.Measure("Axis 12.5", font);
    painter.Draw(canvas.Buffer(), "Axis 12.5", 20, 10, TextPainter::Anchor::TopLeft, font, kInk);
    const auto ink = canvas.Ink();
    ASSERT_GT(ink.count, 20);
    EXPECT_GT(ink.exact, 5) << "fully covered pixels carry exactly the text colour";
    EXPECT_GE(ink.left, 20);
    EXPECT_GE(ink.top, 10);
    EXPECT_LE(ink.right, 20 + extent.width);
    EXPECT_LE(ink.bottom, 10 + extent.height);
    EXPECT_LE(ink.left, 22) << "the text starts at its anchor";
    EXPECT_TRUE(canvas.PaddingIntact());
    // Edges are anti-aliased: red and green towards 0xFF, never below the
    // background, blue towards 0x00.
    int32_t partial = 0;
    for (const uint32_t p : canvas.pixels) {
        if (p == kBackground || p == kInk || p == kPadding) continue;
        ++partial;
        EXPECT_TRUE((p & 0xFF) >= 0x20 && ((p >> 8) & 0xFF) >= 0x20 && ((p >> 16) & 0xFF) <= 0x20) << std::hex << p;
    }
    EXPECT_GT(partial, 10);
}

struct AnchorCase {
    TextPainter::Anchor anchor;
    int column;  // -1: text left of x, 0: centred on x, 1: right of x
    int line;    // -1: text above y, 0: centred on y, 1: below y
};

class TextPainterAnchor : public TextPainterTest, public ::testing::WithParamInterface<AnchorCase> {};

TEST_P(TextPainterAnchor, PlacesTheBoxAroundThePoint) {
    const AnchorCase c = GetParam();
    Canvas canvas(300, 200);
    const auto font = Font("Arial", -18);
    painter.Draw(canvas.Buffer(), "HHHH", 150, 100, c.anchor, font, kInk);
    const auto ink = canvas.Ink();
    ASSERT_GT(ink.count, 0);
    const int32_t cx = (ink.left + ink.right) / 2, cy = (ink.top + ink.bottom) / 2;
    const int32_t slack = 3;
    if (c.column > 0) {
        EXPECT_GE(ink.left, 150 - slack);
        EXPECT_GT(cx, 160);
    } else if (c.column < 0) {
        EXPECT_LE(ink.right, 150 + slack);
        EXPECT_LT(cx, 140);
    } else {
        EXPECT_NEAR(cx, 150, slack);
    }
    if (c.line > 0) {
        EXPECT_GE(ink.top, 100 - slack);
        EXPECT_GT(cy, 104);
    } else if (c.line < 0) {
        EXPECT_LE(ink.bottom, 100 + slack);
        EXPECT_LT(cy, 96);
    } else {
        EXPECT_NEAR(cy, 100, slack + 2);  // capitals sit above the box's centre by half the descent
    }
}

INSTANTIATE_TEST_SUITE_P(
    AllAnchors, TextPainterAnchor,
    ::testing::Values(AnchorCase{TextPainter::Anchor::TopLeft, 1, 1}, AnchorCase{TextPainter::Anchor::Top, 0, 1},
                      AnchorCase{TextPainter::Anchor::TopRight, -1, 1}, AnchorCase{TextPainter::Anchor::Left, 1, 0},
                      AnchorCase{TextPainter::Anchor::Center, 0, 0}, AnchorCase{TextPainter::Anchor::Right, -1, 0},
                      AnchorCase{TextPainter::Anchor::BottomLeft, 1, -1},
                      AnchorCase{TextPainter::Anchor::Bottom, 0, -1},
                      AnchorCase{TextPainter::Anchor::BottomRight, -1, -1}));

TEST_F(TextPainterTest, EscapementNineHundredReadsUpwards) {
    Canvas canvas(100, 300);
    const auto upright = painter.Measure("Y axis label", Font("Arial", -16));
    // Right-anchored rotated text ends at the point: the box lies left of x,
    // and is as tall as the upright text is wide.
    painter.Draw(canvas.Buffer(), "Y axis label", 60, 150, TextPainter::Anchor::Right, Font("Arial", -16, 900), kInk);
    const auto ink = canvas.Ink();
    ASSERT_GT(ink.count, 0);
    EXPECT_NEAR(ink.bottom - ink.top + 1, upright.width, 3);
    EXPECT_LE(ink.right - ink.left + 1, upright.height);
    EXPECT_LE(ink.right, 60);
    EXPECT_NEAR((ink.top + ink.bottom) / 2, 150, 3);
    // Reading upwards, the first letter (the tall "Y") is at the bottom:
    // the lowest ink rows hold ink right across the stem's length.
    Canvas second(100, 300);
    painter.Draw(second.Buffer(), "Y....", 50, 150, TextPainter::Anchor::Center, Font("Arial", -16, 900), kInk);
    const auto all = second.Ink();
    int32_t lowerHalf = 0, upperHalf = 0;
    const int32_t mid = (all.top + all.bottom) / 2;
    for (int32_t y = all.top; y <= all.bottom; ++y)
        for (int32_t x = 0; x < second.width; ++x)
            if (second.At(x, y) != kBackground) (y > mid ? lowerHalf : upperHalf)++;
    EXPECT_GT(lowerHalf, upperHalf * 2);
    EXPECT_EQ(painter.MeasureRotated("Y axis label", Font("Arial", -16, 900)).height, upright.width);
}

TEST_F(TextPainterTest, SuperscriptIsRaisedAndSmaller) {
    const auto font = Font("Arial", -20);
    const auto base = painter.Measure("2.5x10", font);
    const auto plain = painter.Measure("2.5x1022", font);
    const auto marked = painter.Measure("2.5x10\\SUP22", font);
    EXPECT_LT(marked.width, plain.width) << "the superscript digits are narrower";
    EXPECT_GT(marked.ascent, plain.ascent) << "the superscript reaches above the digits";
    Canvas canvas(300, 80);
    painter.Draw(canvas.Buffer(), "2.5x10\\SUP22", 10, 10, TextPainter::Anchor::TopLeft, font, kInk);
    const auto body = canvas.Ink(0, 10 + base.width);
    const auto raised = canvas.Ink(10 + base.width + 1);
    ASSERT_GT(raised.count, 0);
    EXPECT_LT(raised.top, body.top);
    EXPECT_LT(raised.bottom, body.bottom - 4);
    EXPECT_LT(raised.bottom - raised.top, body.bottom - body.top);
    EXPECT_EQ(canvas.Ink().count, canvas.Ink(0, 10 + base.width).count + canvas.Ink(10 + base.width).count);
}

TEST_F(TextPainterTest, UnknownFaceFallsBackToAFontThatDraws) {
    Canvas canvas(200, 50);
    const auto font = Font("No Such Face 7f3a", -16);
    EXPECT_GT(painter.Measure("Fallback", font).width, 30);
    painter.Draw(canvas.Buffer(), "Fallback", 5, 5, TextPainter::Anchor::TopLeft, font, kInk);
    EXPECT_GT(canvas.Ink().count, 50);
}

TEST_F(TextPainterTest, HeightSignSelectsCharacterOrCellHeight) {
    const auto character = painter.Measure("Hg", Font("Arial", -20));
    const auto cell = painter.Measure("Hg", Font("Arial", 20));
    EXPECT_NEAR(cell.height, 20, 1) << "a positive height is the whole cell";
    EXPECT_GT(character.height, cell.height) << "a negative height is the em, and the cell is taller";
    EXPECT_GT(painter.Measure("Hg", Font("Arial", 0)).height, 0);
}

TEST_F(TextPainterTest, BoldAndItalicChangeTheInk) {
    auto regular = Font("Arial", -18);
    auto bold = regular;
    bold.weight = 700;
    auto italic = regular;
    italic.italic = 1;
    Canvas a(200, 40), b(200, 40), c(200, 40);
    painter.Draw(a.Buffer(), "Number", 5, 5, TextPainter::Anchor::TopLeft, regular, kInk);
    painter.Draw(b.Buffer(), "Number", 5, 5, TextPainter::Anchor::TopLeft, bold, kInk);
    painter.Draw(c.Buffer(), "Number", 5, 5, TextPainter::Anchor::TopLeft, italic, kInk);
    EXPECT_GT(b.Ink().exact, a.Ink().exact * 5 / 4);
    EXPECT_NE(a.pixels, c.pixels);
}

TEST_F(TextPainterTest, Utf8SymbolsDrawTheirOwnGlyphs) {
    const auto font = Font("Arial", -18);
    for (const char* text : {"\xC2\xB5", "\xC2\xB0", "\xC2\xB2", "\xE2\x82\xAC"}) {
        Canvas canvas(60, 40);
        painter.Draw(canvas.Buffer(), text, 5, 5, TextPainter::Anchor::TopLeft, font, kInk);
        const auto ink = canvas.Ink();
        EXPECT_GT(ink.count, 3) << text;
        // The missing-glyph box of the face would span the full cap height.
        Canvas box(60, 40);
        painter.Draw(box.Buffer(), "\xEE\x80\x80", 5, 5, TextPainter::Anchor::TopLeft, font, kInk);
        EXPECT_NE(canvas.pixels, box.pixels) << text;
    }
    // Malformed UTF-8 neither crashes nor swallows the valid text around it.
    EXPECT_GT(painter.Measure("a\xC3(b\xFF", font).width, painter.Measure("ab", font).width);
}

TEST_F(TextPainterTest, TextAtTheEdgesIsClipped) {
    Canvas canvas(40, 30);
    const TextPainter::Anchor anchors[] = {TextPainter::Anchor::TopLeft, TextPainter::Anchor::Center,
                                           TextPainter::Anchor::BottomRight};
    const int32_t points[][2] = {{-30, -30}, {35, 25}, {-5, 15}, {20, 100}, {1000, -1000}, {20, 15}};
    for (int32_t escapement : {0, 450, 900, 2700})
        for (auto anchor : anchors)
            for (auto& p : points)
                painter.Draw(canvas.Buffer(), "Clipped text 1.5e3", p[0], p[1], anchor,
                             Font("Arial", -24, escapement), kInk);
    EXPECT_TRUE(canvas.PaddingIntact());
    EXPECT_GT(canvas.Ink().count, 0);
    painter.Draw(ImageBuffer{nullptr, 0, 0, 0, 0}, "x", 0, 0, TextPainter::Anchor::TopLeft, Font("Arial", 12), kInk);
}

}  // namespace
}  // namespace vexplot
