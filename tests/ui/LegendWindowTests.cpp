#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "GraphFixture.h"
#include "control/RecordingSite.h"
#include "model/CArchive.h"
#include "model/CGD_Palette.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"
#include "support/ArchiveBytes.h"
#include "support/Boxes.h"
#include "support/RecordingLegendOwner.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/LegendPreview.h"
#include "ui/WindowSizing.h"

namespace vexplot {
namespace {

using namespace anim;
using test::B;
using test::Box;
using test::RecordingSite;

using FakeOwner = test::RecordingLegendOwner;

// A legend of 100 x 150 pixels in a control window of 400 x 300, on the
// recording site, with settings in a store of its own.
class LegendWindowTest : public test::GraphFixture {
protected:
    void SetUp() override {
        GraphFixture::SetUp();
        palette.SetStandard(3);
        owner.list = &list;
        owner.palette = &palette;
        parent = site.CreateWindow(WindowRole::Control, 0, {0, 0, 400, 300}, nullptr);
        ASSERT_TRUE(legend.Create(site, parent, {10, 10, 110, 160}, owner));
        legend.SetAnimationMode(2);
    }

    CGD_GraphObject& AddGraph(int xCount, int yCount, const std::string& name = {}) {
        ComPtr<IGraphData> data = MakeData(xCount, yCount);
        if (!name.empty()) data->PutName(name);
        CGD_GraphObject& graph = Show(data.Get());
        legend.AddObject(&graph);
        return graph;
    }

    WindowHandle Window() const { return legend.Window(); }
    bool TimerRunning() const { return site.timers.count({legend.Window(), 1u}) != 0; }
    void ExpectRect(const PixelRect& expected, WindowHandle window = 0) const {
        EXPECT_EQ(test::B(site.GetWindowRect(window ? window : legend.Window())), test::B(expected));
    }
    int32_t Stored(const char* name) const {
        CRegistryKey key(nullptr, store);
        key.Open("Legend");
        return key.ReadInt(name);
    }
    void Store(const char* name, int32_t value) {
        CRegistryKey key(nullptr, store);
        key.Open("Legend");
        key.WriteInt(name, value);
    }
    void Tick() { legend.OnTimer(Window(), CUIW_LegendWindow::kHideTimerId); }

    CGD_Palette palette;
    FakeOwner owner;
    RecordingSite site{std::make_shared<test::CallLog>()};
    std::shared_ptr<SettingsStore> store = SettingsStore::OpenUnshared(":memory:");
    CUIW_LegendWindow legend{nullptr, store};
    WindowHandle parent = 0;
};

TEST_F(LegendWindowTest, AutoHideCycleAnimatesAndHidesWhenTheCursorLeaves) {
    legend.PopUpAt(50, 20);
    EXPECT_TRUE(site.IsWindowVisible(Window()));
    ExpectRect({50, 20, 150, 170});
    EXPECT_EQ(site.animations, (std::vector<uint32_t>{kSlide | kHorPositive | kActivate}));
    EXPECT_EQ(site.timers[std::make_pair(Window(), 1u)], 1000u);
    site.cursor = {99, 149};  // the last pixel inside
    Tick();
    EXPECT_TRUE(legend.Shown() && TimerRunning());
    site.cursor = {100, 10};  // just right of the window
    Tick();
    EXPECT_FALSE(legend.Shown() || site.IsWindowVisible(Window()) || TimerRunning());
    EXPECT_EQ(site.animations, (std::vector<uint32_t>{kSlide | kHorPositive | kActivate, kSlide | kHorNegative | kHide}));
}

TEST_F(LegendWindowTest, FastHideShowsAndHidesAtOnceInEveryMode) {
    legend.SetFastHide(true);
    site.cursor = {-5, -5};
    for (int32_t mode = 0; mode < LegendAnimation::kModeCount; ++mode) {
        SCOPED_TRACE(mode);
        legend.SetAnimationMode(mode);
        legend.PopUpAt(30, 30);
        EXPECT_TRUE(site.IsWindowVisible(Window()));
        EXPECT_TRUE(TimerRunning());
        Tick();
        EXPECT_FALSE(site.IsWindowVisible(Window()));
    }
    EXPECT_TRUE(site.animations.empty());
}

TEST_F(LegendWindowTest, RandomizedModeDrawsAgainForTheHide) {
    std::vector<uint32_t> numbers{16 + 8, 1};
    size_t next = 0;
    legend.Animation().SetRandomSource([&] { return numbers.at(next++); });
    legend.SetAnimationMode(7);
    legend.PopUpAt(0, 0);
    site.cursor = {500, 500};
    Tick();
    EXPECT_EQ(site.animations, (std::vector<uint32_t>{kSlide | kVerPositive | kActivate, kHorNegative | kHide}));
}

// The window opens to the left of the point when it would pass the right
// edge of the control's client area (400 pixels wide; the legend is 100).
TEST_F(LegendWindowTest, PopUpNearTheRightEdgeOpensToTheLeft) {
    struct Case {
        int32_t x;
        int32_t left;
    };
    for (const Case c : {Case{350, 250}, Case{300, 300}, Case{301, 201}, Case{0, 0}}) {
        SCOPED_TRACE(c.x);
        legend.PopUpAt(c.x, 40);
        ExpectRect({c.left, 40, c.left + 100, 190});
    }
    // Only the first pop-up animated; the window was shown for the others.
    EXPECT_EQ(site.animations.size(), 1u);
}

// Pinned, the legend has a place of its own, remembered in the settings
// ("Left", "Top" and "Visible" only then; "Width" and "Height" always).
TEST_F(LegendWindowTest, SwitchingAutoHideOffPinsTheWindowAtItsRememberedPlace) {
    legend.PopUpAt(200, 20);
    EXPECT_EQ(Stored("Width"), 100);
    EXPECT_EQ(Stored("Left"), -1);
    EXPECT_EQ(Stored("Visible"), -1);
    Store("Left", 70);  // a place remembered from an earlier pinned run
    Store("Top", 40);
    Store("Width", 150);
    Store("Height", 50);  // below the smallest legend: shown at that
    legend.SetAutoHide(false, true);
    EXPECT_FALSE(TimerRunning());
    EXPECT_TRUE(site.IsWindowVisible(Window()));
    ExpectRect({70, 40, 220, 40 + CUIW_LegendWindow::kMinHeight});
    EXPECT_EQ(Stored("Visible"), 1);
    legend.PopUpAt(300, 200);  // pinned, the pop-up point is ignored
    ExpectRect({70, 40, 220, 40 + CUIW_LegendWindow::kMinHeight});

    legend.OnMovedByUser({5, 6, 85, 66});
    EXPECT_EQ((std::vector<int32_t>{Stored("Left"), Stored("Top"), Stored("Width"), Stored("Height")}),
              (std::vector<int32_t>{5, 6, 80, 60}));
    legend.ToggleShown();
    EXPECT_EQ(Stored("Visible"), 0);

    legend.SetAutoHide(true, true);
    EXPECT_FALSE(legend.Shown());
    EXPECT_EQ(site.animations.size(), 1u);  // the first pop-up only
    site.windows[Window()].visible = true;
    legend.SetAutoHide(true, true);  // no change, no effect
    EXPECT_TRUE(site.IsWindowVisible(Window()));
}

TEST_F(LegendWindowTest, RowMenuPausesTheHideTimerWhileOpen) {
    AddGraph(4, 4);
    legend.PopUpAt(10, 10);
    bool timerDuringMenu = true;
    site.menuAnswer = [&](const MenuModel&) {
        timerDuringMenu = TimerRunning();
        return 0;
    };
    legend.OnRowContextMenu(0, {5, 5});
    EXPECT_FALSE(timerDuringMenu);
    EXPECT_TRUE(TimerRunning());
    legend.SetAutoHide(false, false);  // pinned, the menu leaves no timer behind
    legend.OnRowContextMenu(0, {5, 5});
    EXPECT_FALSE(TimerRunning());
}

// The row menu greys out what the owner cannot open for the row's object.
TEST_F(LegendWindowTest, RowMenuDisablesWhatTheOwnerCannotOpen) {
    AddGraph(4, 4);
    legend.OnRowContextMenu(0, {5, 5});
    ASSERT_EQ(site.menus.size(), 1u);
    const MenuModel& menu = site.menus[0];
    ASSERT_EQ(menu.size(), 6u);
    for (size_t i = 0; i < menu.size(); ++i) {
        EXPECT_EQ(menu[i].separator, i == 4) << i;
        EXPECT_EQ(menu[i].enabled, i != 2 && i != 3) << i;  // data and properties
    }
    owner.canEditData = owner.canEditProperties = true;
    EXPECT_TRUE(legend.RowMenu(0)[2].enabled && legend.RowMenu(0)[3].enabled);
}

TEST_F(LegendWindowTest, RowMenuCommandsReachTheRowsObject) {
    CGD_GraphObject& first = AddGraph(4, 4, "first");
    AddGraph(5, 5, "second");
    owner.canEditData = true;
    owner.canEditProperties = true;
    owner.calls.clear();

    site.menuAnswer = [](const MenuModel&) { return CUIW_LegendWindow::kCmdVisible; };
    legend.OnRowContextMenu(0, {1, 1});  // also selects and activates row 0
    EXPECT_FALSE(first.Flags().visible);
    EXPECT_FALSE(legend.Rows()[0].checked);
    EXPECT_EQ(owner.calls, (std::vector<std::string>{"active 0"}));
    // The check box does the same; the state it already has (a widget
    // echoing it) changes nothing and costs no redraw.
    const int redraws = owner.redraws;
    legend.OnRowChecked(0, false);
    EXPECT_EQ(owner.redraws, redraws);
    legend.OnRowChecked(0, true);
    EXPECT_TRUE(first.Flags().visible);
    EXPECT_EQ(owner.redraws, redraws + 1);

    owner.title.clear();
    for (const int32_t command : {CUIW_LegendWindow::kCmdData, CUIW_LegendWindow::kCmdProperties}) {
        site.menuAnswer = [command](const MenuModel&) { return command; };
        legend.OnRowContextMenu(0, {1, 1});
    }
    EXPECT_EQ(owner.calls, (std::vector<std::string>{"active 0", "edit data", "edit properties"}));
    EXPECT_EQ(owner.title, "first - 3Dview");  // the confirmed dialog refreshed the row

    site.menuAnswer = [](const MenuModel&) { return CUIW_LegendWindow::kCmdDelete; };
    legend.OnRowContextMenu(0, {1, 1});
    ASSERT_EQ(legend.Rows().size(), 1u);
    EXPECT_EQ(legend.Rows()[0].name, "second");
    EXPECT_EQ(list.Count(), 1);

    // The Delete key deletes the selected row; with none selected, nothing.
    legend.OnKey(Window(), KeyEvent{vk::kDelete, 0});
    EXPECT_EQ(list.Count(), 1);
    legend.OnRowSelected(0);
    legend.OnKey(Window(), KeyEvent{vk::kDelete, 0});
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(LegendWindowTest, TitleTextNamesTheObjectAndTheViewMode) {
    owner.viewMode = 0;
    AddGraph(4, 4, "peaks");
    EXPECT_EQ(owner.title, "peaks - 2Dview");
    AddGraph(4, 4);
    EXPECT_EQ(owner.title, "TITLE");
}

TEST_F(LegendWindowTest, ActivationFollowsSelectionAndSkipsObjectsNoLongerListed) {
    AddGraph(4, 4, "a");
    AddGraph(4, 4, "b");
    EXPECT_EQ(legend.Selection(), 1);
    EXPECT_EQ(list.ActiveIndex(), 1);

    legend.OnRowSelected(0);
    EXPECT_EQ(list.ActiveIndex(), 0);
    legend.OnRowSelected(-1);  // no row: ignored
    EXPECT_EQ(legend.Selection(), 0);

    // Without a row: the selection mark, or row 0 when there is none.
    list.SetActiveIndex(-1);
    legend.Rebuild();
    EXPECT_EQ(legend.Selection(), -1);
    owner.calls.clear();
    legend.Activate(-1);
    EXPECT_EQ(owner.calls, (std::vector<std::string>{"active 0"}));

    // The object of row 1 leaves the list behind the legend's back.
    list.Remove(legend.Rows()[1].graph);
    owner.calls.clear();
    legend.Activate(1);
    EXPECT_TRUE(owner.calls.empty());
    EXPECT_EQ(owner.title, "a - 3Dview");
}

TEST_F(LegendWindowTest, RowsShowThePreviewOrTheDefaultImage) {
    CGD_GraphObject& graph = AddGraph(6, 3);
    const int32_t image = legend.Rows()[0].image;
    ASSERT_NE(image, CUIW_LegendWindow::kDefaultImage);
    EXPECT_EQ(legend.Images()[static_cast<size_t>(image)], *LegendPreview::Of(graph, palette));

    // Without a palette no preview can be made: the row keeps the default image.
    owner.palette = nullptr;
    AddGraph(6, 3);
    EXPECT_EQ(legend.Rows()[1].image, CUIW_LegendWindow::kDefaultImage);
    // A later update replaces the row's own image in place.
    owner.palette = &palette;
    palette.SetStandard(0);
    EXPECT_EQ(legend.UpdateImage(0), image);
    EXPECT_EQ(legend.Images()[static_cast<size_t>(image)], *LegendPreview::Of(graph, palette));
}

// The legend's state record, saved from one legend and loaded into another.
class LegendStateTest : public LegendWindowTest {
protected:
    static test::Bytes Save(CUIW_LegendWindow& from) {
        return test::Stored([&from](CArchive& a) { from.Serialize(a); });
    }
    static void Load(CUIW_LegendWindow& into, const test::Bytes& bytes) {
        test::Loaded(bytes, [&into](CArchive& a) { into.Serialize(a); });
    }
};

// A pinned legend's state comes back shown where it was, at its size; the
// loading legend keeps its own animation mode. An auto-hiding one leaves
// the placement alone and keeps the size for its next pop-up.
TEST_F(LegendStateTest, RoundTripRestoresPinnedPlacesAndKeepsTheAnimationMode) {
    legend.SetAnimationMode(3);
    legend.SetFastHide(true);
    legend.SetAutoHide(false, false);
    legend.OnMovedByUser({20, 30, 140, 110});
    legend.ToggleShown();
    const test::Bytes pinned = Save(legend);
    legend.SetAutoHide(true, true);
    const test::Bytes hiding = Save(legend);

    CUIW_LegendWindow other(nullptr, store);
    ASSERT_TRUE(other.Create(site, parent, {0, 0, 10, 10}, owner));
    other.SetAnimationMode(5);
    Load(other, hiding);
    EXPECT_TRUE(other.AutoHide());
    EXPECT_EQ(other.PopUpPoint(), (PixelPoint{20, 30}));
    ExpectRect({0, 0, 10, 10}, other.Window());
    other.PopUpAt(0, 0);
    ExpectRect({0, 0, 120, 80}, other.Window());

    Load(other, pinned);
    EXPECT_EQ(other.AnimationMode(), 5);
    EXPECT_TRUE(other.FastHide());
    EXPECT_FALSE(other.AutoHide());
    EXPECT_TRUE(site.IsWindowVisible(other.Window()));
    ExpectRect({20, 30, 140, 110}, other.Window());
}

// The sizing frame of the legend and the floating info window: a window of
// 100 x 80 with its frame 4 pixels wide and corners that grip 12 pixels
// along both edges.
TEST(WindowSizingTest, EdgesUnderThePoint) {
    using S = WindowSizing;
    const std::pair<PixelPoint, uint32_t> cases[] = {
        {{50, 40}, 0},                    {{0, 40}, S::kLeft},
        {{99, 40}, S::kRight},            {{96, 40}, S::kRight},
        {{95, 40}, 0},                    {{50, 0}, S::kTop},
        {{50, 79}, S::kBottom},           {{0, 0}, S::kLeft | S::kTop},
        {{11, 1}, S::kLeft | S::kTop},    {{12, 1}, S::kTop},
        {{98, 70}, S::kRight | S::kBottom}, {{2, 75}, S::kLeft | S::kBottom},
        {{100, 40}, 0},                   {{-1, 40}, 0},
    };
    for (const auto& [point, edges] : cases)
        EXPECT_EQ(S::EdgesAt(100, 80, point), edges) << point.x << "," << point.y;
}

TEST(WindowSizingTest, DraggedEdgesMoveAndStopAtTheMinimum) {
    using S = WindowSizing;
    const PixelRect start{10, 20, 110, 100};
    const std::pair<PixelRect, Box> cases[] = {
        {S::Resized(start, S::kRight | S::kBottom, 30, -5, 40, 30), {10, 20, 140, 95}},
        {S::Resized(start, S::kLeft, -15, 99, 40, 30), {-5, 20, 110, 100}},
        {S::Resized(start, S::kLeft | S::kTop, 90, 90, 40, 30), {70, 70, 110, 100}},  // stops, does not push
        {S::Resized(start, S::kRight, -200, 0, 40, 30), {10, 20, 50, 100}},
        {S::Resized(start, 0, 50, 50, 40, 30), {10, 20, 110, 100}},
    };
    for (const auto& [got, expected] : cases) EXPECT_EQ(B(got), expected);
}

}  // namespace
}  // namespace vexplot
