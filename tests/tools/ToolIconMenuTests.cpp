#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "tools/ToolIconMenu.h"

namespace vexplot {
namespace {

std::vector<ToolbarButton> Buttons(std::initializer_list<int32_t> commands) {
    std::vector<ToolbarButton> buttons;
    for (int32_t c : commands) buttons.push_back(ToolbarButton{c, nullptr, "", "", true});
    return buttons;
}

std::vector<size_t> ColumnStarts(const MenuModel& menu) {
    std::vector<size_t> starts;
    for (size_t i = 0; i < menu.size(); ++i)
        if (menu[i].columnBreak) starts.push_back(i);
    return starts;
}

TEST(ToolIconMenuTest, EntriesBreakIntoColumnsOfTheGivenCount) {
    struct Case {
        int32_t columns;
        std::vector<size_t> starts;
    };
    const Case cases[] = {
        {3, {3, 6}}, {4, {4}}, {7, {7}}, {8, {}}, {20, {}}, {1, {1, 2, 3, 4, 5, 6, 7}}, {0, {1, 2, 3, 4, 5, 6, 7}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.columns);
        const ToolIconMenu menu(ToolIconMenu::StandardToolbar(), c.columns);
        EXPECT_EQ(ColumnStarts(menu.Menu()), c.starts);
    }
}

TEST(ToolIconMenuTest, SeparatorsAreLeftOutAndDoNotCountForColumns) {
    const ToolIconMenu menu(Buttons({0, 11, 12, 0, 13, 14, 0}), 2);
    ASSERT_EQ(menu.Menu().size(), 4u);
    EXPECT_EQ(menu.Menu()[0].command, 11);
    EXPECT_EQ(menu.Menu()[2].command, 13);
    EXPECT_EQ(ColumnStarts(menu.Menu()), (std::vector<size_t>{2}));
}

TEST(ToolIconMenuTest, FirstEntryIsCheckedAndCurrentUntilAnotherIsChosen) {
    ToolIconMenu menu(Buttons({0, 21, 22, 23}), 8);
    EXPECT_EQ(menu.CurrentCommand(), 21);
    EXPECT_TRUE(menu.Menu()[0].checked);
    EXPECT_FALSE(menu.Menu()[1].checked);

    EXPECT_TRUE(menu.SetCurrent(23));
    EXPECT_EQ(menu.CurrentCommand(), 23);
    EXPECT_FALSE(menu.Menu()[0].checked);
    EXPECT_TRUE(menu.Menu()[2].checked);

    EXPECT_FALSE(menu.SetCurrent(99));
    EXPECT_EQ(menu.CurrentCommand(), 23);
    EXPECT_TRUE(menu.Menu()[2].checked);

    const ToolIconMenu empty(Buttons({0}), 3);
    EXPECT_TRUE(empty.Menu().empty());
    EXPECT_EQ(empty.CurrentCommand(), 0);
}

TEST(ToolIconMenuTest, StandardToolbarListsTheEightToolsDisabledWithTheirTexts) {
    ToolIconMenu menu(ToolIconMenu::StandardToolbar(), 4);
    const std::vector<int32_t> expected{32908, 32901, 32900, 32906, 32902, 32903, 32904, 32905};
    ASSERT_EQ(menu.Menu().size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(menu.Menu()[i].command, expected[i]);
        EXPECT_FALSE(menu.Menu()[i].enabled);
    }
    EXPECT_EQ(menu.Menu()[6].text, "&Difference Tracer");
    EXPECT_EQ(menu.Menu()[0].prompt, "Selector Tool");
    EXPECT_TRUE(menu.SetEnabled(32902, true));
    EXPECT_TRUE(menu.Menu()[4].enabled);
    EXPECT_FALSE(menu.SetEnabled(1, true));
}

TEST(ToolIconMenuTest, EveryToolHasAPictureOfItsOwn) {
    std::set<std::vector<uint32_t>> seen;
    const RgbaRaster blank(32, 32, ToolIconMenu::kMaskColor);
    for (const ToolbarButton& b : ToolIconMenu::StandardToolbar()) {
        ASSERT_TRUE(b.picture);
        EXPECT_FALSE(*b.picture == blank) << b.command;
        seen.emplace(b.picture->Pixels().begin(), b.picture->Pixels().end());
    }
    EXPECT_EQ(seen.size(), 8u);
    EXPECT_EQ(ToolIconMenu::ToolPicture(1), blank);
}

TEST(ToolIconMenuTest, IconsAre32SquareWithTheMaskShowingTheBackground) {
    const uint32_t background = 0x00F0F0F0;
    const ToolIconMenu menu(ToolIconMenu::StandardToolbar(), 4, background);
    for (const MenuItem& item : menu.Menu()) {
        ASSERT_TRUE(item.icon);
        EXPECT_EQ(item.icon->Width(), 32u);
        EXPECT_EQ(item.icon->Height(), 32u);
        for (uint32_t c : item.icon->Pixels()) ASSERT_NE(c, ToolIconMenu::kMaskColor);
        EXPECT_EQ(item.icon->Pixel(0, 31), background);
    }
}

TEST(ToolIconMenuTest, PicturesOfOtherSizesAreCentredAndClipped) {
    RgbaRaster small(2, 2, 0x111111);
    small.SetPixel(1, 1, ToolIconMenu::kMaskColor);
    const RgbaRaster icon = ToolIconMenu::MakeIcon(small, 0xABCDEF);
    EXPECT_EQ(icon.Pixel(15, 15), 0x111111u);
    EXPECT_EQ(icon.Pixel(16, 15), 0x111111u);
    EXPECT_EQ(icon.Pixel(16, 16), 0xABCDEFu);
    EXPECT_EQ(icon.Pixel(14, 15), 0xABCDEFu);

    RgbaRaster large(36, 34, 0x222222);
    large.SetPixel(2, 1, 0x333333);   // lands on the icon's corner
    large.SetPixel(1, 1, 0x444444);   // falls outside
    const RgbaRaster clipped = ToolIconMenu::MakeIcon(large, 0);
    EXPECT_EQ(clipped.Pixel(0, 0), 0x333333u);
    EXPECT_EQ(clipped.Pixel(31, 31), 0x222222u);
}

}  // namespace
}  // namespace vexplot
