#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <vector>

#include "control/RecordingSite.h"
#include "model/CallLog.h"
#include "support/ArchiveBytes.h"
#include "support/Boxes.h"
#include "tools/CToolsCtrl.h"

namespace vexplot {
namespace {

using test::CallLog;
using test::B;
using test::Box;
using test::RecordingSite;

constexpr int32_t kCommand = 105;
constexpr PixelRect kButtonRect{10, 5, 30, 21};  // 20 x 16 in a 200 x 100 control

class ToolsCtrlTest : public ::testing::Test {
protected:
    void SetUp() override {
        parent = site.CreateWindow(WindowRole::Control, 0, PixelRect{0, 0, 200, 100}, nullptr);
        ASSERT_TRUE(button.Create(site, WindowRole::MenuButton, parent, kButtonRect, kCommand, "M"));
        button.SetOwner({[this](int32_t m, int32_t w, int32_t l) { messages.push_back({m, w, l}); },
                         [this](int32_t command) { commands.push_back(command); }, nullptr});
    }
    void Click(PixelPoint down, PixelPoint up) {
        button.OnButtonDown(down);
        button.OnButtonUp(up);
    }
    PixelRect ButtonRect() const { return site.GetWindowRect(button.Window()); }

    std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
    RecordingSite site{log};
    WindowHandle parent = 0;
    CToolsCtrl button;
    std::vector<std::array<int32_t, 3>> messages;
    std::vector<int32_t> commands;
};

TEST_F(ToolsCtrlTest, CreatesItsWindowWithCaptionAndBindsItself) {
    const auto& window = site.windows.at(button.Window());
    EXPECT_EQ(window.role, WindowRole::MenuButton);
    EXPECT_EQ(window.text, "M");
    EXPECT_TRUE(std::holds_alternative<CToolsCtrl*>(window.logic));
    EXPECT_EQ(std::get<CToolsCtrl*>(window.logic), &button);
    EXPECT_EQ(button.Picture().Width(), 20u);
    EXPECT_EQ(button.Picture().Height(), 16u);
}

// Only enabled state 1 ignores presses, a press outside is no press, and
// every release of a press sends the command message, inside or not.
TEST_F(ToolsCtrlTest, PressesAndReleases) {
    struct Case {
        int32_t state;
        PixelPoint down, up;
        bool presses, inside;
    };
    // The button's client area is [0, 20) x [0, 16).
    const Case cases[] = {
        {1, {5, 5}, {5, 5}, false, false},
        {0, {5, 5}, {5, 5}, true, true},
        {3, {5, 5}, {0, 0}, true, true},
        {2, {5, 5}, {19, 15}, true, true},
        {2, {5, 5}, {20, 5}, true, false},
        {2, {5, 5}, {5, 16}, true, false},
        {2, {5, 5}, {-1, 5}, true, false},
        {2, {5, 5}, {100, 100}, true, false},
        {2, {20, 5}, {5, 5}, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "state " << c.state << " down " << c.down.x << "," << c.down.y << " up "
                                        << c.up.x << "," << c.up.y);
        messages.clear();
        button.SetEnabledState(c.state);
        button.OnButtonDown(c.down);
        EXPECT_EQ(button.Pressed(), c.presses);
        button.OnButtonUp(c.up);
        EXPECT_FALSE(button.Pressed());
        ASSERT_EQ(messages.size(), c.presses ? 1u : 0u);
        if (!c.presses) continue;
        EXPECT_EQ(messages[0], (std::array<int32_t, 3>{0x400 + 103, kCommand, 0}));
        EXPECT_EQ(button.ReleasedInside(), c.inside);
    }
}

TEST_F(ToolsCtrlTest, OwnPopupOpensOnlyInPopupStateTwoAndIsBuiltWhenItOpens) {
    int built = 0;
    button.SetOwnPopup([&built] {
        ++built;
        MenuModel menu(static_cast<size_t>(built));  // a menu that changes between openings
        for (MenuItem& item : menu) item.command = 32900 + built;
        return menu;
    });
    site.menuAnswer = [](const MenuModel& menu) { return menu.back().command; };

    for (int32_t state : {0, 1, 3}) {
        button.SetPopupState(state);
        Click({5, 5}, {5, 5});
    }
    EXPECT_EQ(built, 0);
    EXPECT_TRUE(site.menus.empty());
    EXPECT_EQ(messages.size(), 3u);

    button.SetPopupState(2);
    Click({5, 5}, {5, 5});
    Click({5, 5}, {50, 50});  // released outside: the menu still opens
    ASSERT_EQ(site.menus.size(), 2u);
    EXPECT_EQ(site.menus[1].size(), 2u);
    EXPECT_EQ(commands, (std::vector<int32_t>{32901, 32902}));
    EXPECT_EQ(messages.size(), 5u);
}

TEST_F(ToolsCtrlTest, SubMenuSwitchOpensTheFirstEntrysSubMenu) {
    MenuItem top;
    top.text = "tools";
    top.submenu.resize(3);
    top.submenu[2].command = 32905;
    button.SetSubMenu(MenuModel{top, MenuItem{}});
    site.menuAnswer = [](const MenuModel& menu) { return menu[2].command; };
    Click({5, 5}, {5, 5});
    ASSERT_EQ(site.menus.size(), 1u);
    EXPECT_EQ(site.menus[0].size(), 3u);
    EXPECT_EQ(commands, (std::vector<int32_t>{32905}));
}

TEST_F(ToolsCtrlTest, DropDownShowsUnderTheButtonUnlessAnOwnPopupIsSet) {
    const WindowHandle dropDown = site.CreateWindow(WindowRole::LegendWindow, parent, PixelRect{0, 0, 1, 1}, nullptr);
    button.SetDropDown(dropDown);
    button.SetPopupState(1);
    Click({5, 5}, {5, 5});
    EXPECT_FALSE(site.IsWindowVisible(dropDown));

    button.SetPopupState(2);
    Click({5, 5}, {5, 5});
    EXPECT_TRUE(site.IsWindowVisible(dropDown));
    EXPECT_EQ(B(site.GetWindowRect(dropDown)), (Box{10, 21, 110, 521}));

    // The own popup wins; dismissed, it reports no command.
    site.ShowWindow(dropDown, false);
    button.SetOwnPopup([] { return MenuModel(1); });
    Click({5, 5}, {5, 5});
    EXPECT_FALSE(site.IsWindowVisible(dropDown));
    EXPECT_EQ(site.menus.size(), 1u);
    EXPECT_TRUE(commands.empty());
}

TEST_F(ToolsCtrlTest, DragFollowsTheModeAndStaysInsideItsArea) {
    struct Case {
        const char* name;
        CToolsCtrl::DragMode mode;
        bool bounds;
        PixelPoint move;  // from a press at (5, 5)
        PixelRect expected;
    };
    using M = CToolsCtrl::DragMode;
    const Case cases[] = {
        {"both ways", M::Both, false, {15, 25}, {20, 25, 40, 41}},
        {"horizontal only", M::Horizontal, false, {15, 25}, {20, 5, 40, 21}},
        {"not at all", M::None, false, {15, 25}, kButtonRect},
        {"clamped to the parent", M::Both, false, {500, 500}, {180, 84, 200, 100}},
        {"clamped at the origin", M::Both, false, {-50, -50}, {0, 0, 20, 16}},
        {"clamped to the bounds", M::Both, true, {500, -50}, {80, 2, 100, 18}},
        {"horizontal in bounds", M::Horizontal, true, {-50, 40}, {40, 5, 60, 21}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        site.MoveWindow(button.Window(), kButtonRect);
        button.SetDragMode(c.mode);
        if (c.bounds) {
            button.SetBounds(PixelRect{40, 2, 100, 60});
        } else {
            button.ClearBounds();
        }
        button.OnButtonDown({5, 5});
        button.OnMouseMove(c.move);
        EXPECT_EQ(B(ButtonRect()), B(c.expected));
        button.OnButtonUp(c.move);
    }
}

TEST_F(ToolsCtrlTest, DragPointsAreTakenInTheMovedButtonsPixels) {
    button.SetDragMode(CToolsCtrl::DragMode::Both);
    button.OnButtonDown({5, 5});
    button.OnMouseMove({8, 9});
    EXPECT_EQ(B(ButtonRect()), (Box{13, 9, 33, 25}));
    // The mouse at the grab point of the moved button: it stays put.
    button.OnMouseMove({5, 5});
    EXPECT_EQ(B(ButtonRect()), (Box{13, 9, 33, 25}));
    button.OnButtonUp({5, 5});
    // Moves after the release drag no more.
    button.OnMouseMove({15, 15});
    EXPECT_EQ(B(ButtonRect()), (Box{13, 9, 33, 25}));
}

// The record as written by hand: tag, value, enabled state, caption, the
// rectangle and the bounds as top, bottom, left, right, and the popup state.
test::Bytes HandBuiltRecord() {
    test::Bytes bytes;
    test::AppendShortString(bytes, "ToolsCtrl");
    test::AppendInt32(bytes, 7);   // stored value
    test::AppendInt32(bytes, 1);   // enabled state
    test::AppendShortString(bytes, "L");
    for (int32_t v : {5, 21, 10, 30}) test::AppendInt32(bytes, v);
    test::AppendInt32(bytes, 1);   // bounds switch
    for (int32_t v : {2, 60, 40, 100}) test::AppendInt32(bytes, v);
    test::AppendInt32(bytes, 0);   // popup state
    return bytes;
}

// Loading restores every field, and writing gives the same bytes back: a
// field written out of order fails one or the other.
TEST_F(ToolsCtrlTest, TheRecordLoadsAndIsWrittenBackByteForByte) {
    CToolsCtrl other;
    ASSERT_TRUE(other.Create(site, WindowRole::LegendButton, parent, PixelRect{0, 0, 20, 16}, 106, "A"));
    test::Loaded(HandBuiltRecord(), [&other](CArchive& a) { other.Serialize(a); });
    EXPECT_EQ(other.StoredValue(), 7);
    EXPECT_EQ(other.EnabledState(), 1);
    EXPECT_EQ(other.Caption(), "L");
    EXPECT_EQ(site.GetWindowText(other.Window()), "L");
    EXPECT_EQ(B(site.GetWindowRect(other.Window())), B(kButtonRect));
    EXPECT_TRUE(other.UsesBounds());
    EXPECT_EQ(B(other.Bounds()), (Box{40, 2, 100, 60}));
    EXPECT_EQ(other.PopupState(), 0);
    EXPECT_EQ(test::Stored([&other](CArchive& a) { other.Serialize(a); }), HandBuiltRecord());
}

TEST_F(ToolsCtrlTest, TruncatedRecordRaisesAndLeavesTheButtonAsItWas) {
    test::Bytes bytes = HandBuiltRecord();
    bytes.resize(bytes.size() - 2);
    EXPECT_THROW(test::Loaded(bytes, [this](CArchive& a) { button.Serialize(a); }), ArchiveError);
    EXPECT_EQ(button.Caption(), "M");
    EXPECT_EQ(button.EnabledState(), 2);
    EXPECT_EQ(B(ButtonRect()), B(kButtonRect));
}

TEST_F(ToolsCtrlTest, SerializeWithoutWindowWritesNothing) {
    button.Destroy();
    EXPECT_FALSE(site.windows.count(button.Window()));
    EXPECT_TRUE(test::Stored([this](CArchive& a) { button.Serialize(a); }).empty());
}

}  // namespace
}  // namespace vexplot
