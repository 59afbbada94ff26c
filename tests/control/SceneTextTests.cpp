// Where the vector writers put a text: the em size from the font height,
// the anchor's point of the box, turned with the text.
#include <gtest/gtest.h>

#include <cstring>

#include "control/SceneText.h"

using namespace vexplot;

namespace {

ExportScene::Text Text(const char* text, SceneAnchor anchor, int32_t height, int32_t escapement) {
    FontDescription font{};
    std::strcpy(font.face, "Arial");
    font.height = height;
    font.escapement = escapement;
    return {text, 100, 50, anchor, font, 0};
}

TEST(SceneTextTest, AnchorsPlaceTheBaselineAndTurnWithTheText) {
    const double w = 2 * 0.556 * 10;  // "ab" at em 10
    const double ascent = 9.05, descent = 2.12;
    struct Case {
        SceneAnchor anchor;
        int32_t height, escapement;
        double x, y;
    } cases[] = {
        {SceneAnchor::TopLeft, -10, 0, 100, 50 + ascent},
        {SceneAnchor::Center, -10, 0, 100 - w / 2, 50 + (ascent - descent) / 2},
        {SceneAnchor::BottomRight, -10, 0, 100 - w, 50 - descent},
        // A cell height of ascent + descent is the same em.
        {SceneAnchor::Left, 11, 0, 100, 50 + (ascent - descent) / 2},
        // Upwards: the baseline starts below the centre, right of it.
        {SceneAnchor::Center, -10, 900, 100 + (ascent - descent) / 2, 50 + w / 2},
    };
    for (const Case& c : cases) {
        const SceneText text(Text("ab", c.anchor, c.height, c.escapement));
        EXPECT_NEAR(text.EmSize(), 10, 0.2) << int(c.anchor);
        EXPECT_NEAR(text.BaselineX(), c.x, 0.15) << int(c.anchor) << " " << c.escapement;
        EXPECT_NEAR(text.BaselineY(), c.y, 0.15) << int(c.anchor) << " " << c.escapement;
    }
}

TEST(SceneTextTest, SuperscriptIsASmallerRaisedRunAndBadUtf8IsReplaced) {
    const SceneText text(Text("10\\SUP-3", SceneAnchor::Left, -10, 0));
    ASSERT_EQ(text.Runs().size(), 2u);
    EXPECT_EQ(text.Runs()[0].text, "10");
    EXPECT_EQ(text.Runs()[1].text, "-3");
    EXPECT_DOUBLE_EQ(text.Runs()[1].size, 7);
    EXPECT_GT(text.Runs()[1].rise, 3);
    EXPECT_EQ(SceneText::CodePoints("a\xC3\xA9\xFF" "b\xE2\x82"),
              (std::u32string{U'a', 0xE9, 0xFFFD, U'b', 0xFFFD, 0xFFFD}));
}

}  // namespace
