#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "control/HeadlessSite.h"
#include "control/RecordingSite.h"
#include "model/CallLog.h"
#include "ui/NavigatorPad.h"

namespace vexplot {
namespace {

using Zone = NavigatorPad::Zone;

TEST(NavigatorPadTest, ZonesSplitAlongTheDiagonalsAroundTheCentreSquare) {
    struct Case {
        PixelPoint point;
        Zone zone;
    };
    const Case cases[] = {
        // corners: on the diagonal, which belongs to the top or bottom border
        {{0, 0}, Zone::Top}, {{47, 0}, Zone::Top}, {{0, 47}, Zone::Bottom}, {{47, 47}, Zone::Bottom},
        // just off the diagonal
        {{0, 1}, Zone::Left}, {{1, 0}, Zone::Top}, {{47, 46}, Zone::Right}, {{46, 47}, Zone::Bottom},
        // edge middles
        {{0, 24}, Zone::Left}, {{47, 23}, Zone::Right}, {{24, 0}, Zone::Top}, {{23, 47}, Zone::Bottom},
        // the centre square [14, 34) and its neighbours
        {{14, 14}, Zone::Centre}, {{33, 33}, Zone::Centre}, {{14, 33}, Zone::Centre}, {{24, 24}, Zone::Centre},
        {{13, 24}, Zone::Left}, {{34, 24}, Zone::Right}, {{24, 13}, Zone::Top}, {{24, 34}, Zone::Bottom},
        {{13, 13}, Zone::Top}, {{34, 34}, Zone::Bottom},
        // outside the pad
        {{-1, 24}, Zone::None}, {{48, 24}, Zone::None}, {{24, -1}, Zone::None}, {{24, 48}, Zone::None},
    };
    for (const Case& c : cases)
        EXPECT_EQ(NavigatorPad::ZoneAt(c.point), c.zone) << c.point.x << "," << c.point.y;
}

class NavigatorHighlightTest : public ::testing::Test {
protected:
    void SetUp() override {
        const WindowHandle control = site.CreateWindow(WindowRole::Control, 0, PixelRect{0, 0, 300, 200}, nullptr);
        ASSERT_TRUE(pad.Create(site, control, PixelRect{10, 10, 58, 58}));
        window = pad.Window();
        // The pad's window is a navigator window bound to the pad.
        ASSERT_EQ(site.Role(window), WindowRole::Navigator);
        ASSERT_EQ(std::get<NavigatorPad*>(site.windows.at(window).logic), &pad);
    }
    bool HighlightTimerRunning() const { return site.timers.count({window, NavigatorPad::kHighlightTimer}) != 0; }

    std::shared_ptr<test::CallLog> log = std::make_shared<test::CallLog>();
    test::RecordingSite site{log};
    NavigatorPad pad;
    WindowHandle window = 0;
};

TEST_F(NavigatorHighlightTest, TimerFollowsTheCursorUntilItLeavesThePad) {
    EXPECT_FALSE(HighlightTimerRunning());
    pad.OnMouseMove({3, 24});
    EXPECT_EQ(pad.HighlightedZone(), Zone::Left);
    ASSERT_TRUE(HighlightTimerRunning());
    EXPECT_EQ(site.timers.at({window, NavigatorPad::kHighlightTimer}), 100u);

    // No move event arrives; the timer finds the cursor elsewhere.
    site.cursor = {44, 24};
    pad.OnTimer(window, NavigatorPad::kHighlightTimer);
    EXPECT_EQ(pad.HighlightedZone(), Zone::Right);
    EXPECT_TRUE(HighlightTimerRunning());

    site.cursor = {80, 24};
    pad.OnTimer(window, NavigatorPad::kHighlightTimer);
    EXPECT_EQ(pad.HighlightedZone(), Zone::None);
    EXPECT_FALSE(HighlightTimerRunning());

    // Coming back starts it again.
    pad.OnMouseMove({24, 24});
    EXPECT_EQ(pad.HighlightedZone(), Zone::Centre);
    EXPECT_TRUE(HighlightTimerRunning());
}

TEST_F(NavigatorHighlightTest, RepaintsOnlyWhenTheHighlightChanges) {
    auto invalidations = [this] {
        size_t n = 0;
        for (const std::string& name : log->Names()) n += name == "site.Invalidate";
        return n;
    };
    pad.OnMouseMove({3, 24});
    const size_t first = invalidations();
    EXPECT_EQ(first, 1u);
    pad.OnMouseMove({4, 25});  // same zone
    EXPECT_EQ(invalidations(), first);
    pad.OnMouseLeave();
    EXPECT_EQ(pad.HighlightedZone(), Zone::None);
    EXPECT_EQ(invalidations(), first + 1);
}

// Repeats run on the headless site's clock. The pad sits at (10, 10) in the
// control window, whose pixels the cursor is placed in.
class NavigatorRepeatTest : public ::testing::Test {
protected:
    void SetUp() override {
        const WindowHandle control = site.CreateWindow(WindowRole::Control, 0, PixelRect{0, 0, 300, 200}, nullptr);
        ASSERT_TRUE(pad.Create(site, control, PixelRect{10, 10, 58, 58}));
        pad.SetOwner([this](Zone zone, bool secondary) { calls.emplace_back(zone, secondary); });
    }
    void CursorAt(PixelPoint inPad) { site.SetCursorPosition({inPad.x + 10, inPad.y + 10}); }

    HeadlessSite site{nullptr};
    NavigatorPad pad;
    std::vector<std::pair<Zone, bool>> calls;
};

TEST_F(NavigatorRepeatTest, HeldZoneRepeatsEveryMillisecondUntilReleased) {
    CursorAt({24, 2});
    pad.OnButtonDown({24, 2}, false);
    EXPECT_EQ(pad.PressedZone(), Zone::Top);
    ASSERT_EQ(calls.size(), 1u);  // at once, then per tick
    site.AdvanceTime(5);
    EXPECT_EQ(calls.size(), 6u);
    for (const auto& call : calls) EXPECT_EQ(call, std::make_pair(Zone::Top, false));

    pad.OnButtonUp({24, 2}, false);
    EXPECT_EQ(pad.PressedZone(), Zone::None);
    site.AdvanceTime(10);
    EXPECT_EQ(calls.size(), 6u);
}

TEST_F(NavigatorRepeatTest, RepeatPausesWhileTheCursorIsOffThePressedZone) {
    CursorAt({24, 24});
    pad.OnButtonDown({24, 24}, true);
    site.AdvanceTime(2);
    EXPECT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls.back(), std::make_pair(Zone::Centre, true));
    CursorAt({2, 24});  // over the left border, still held
    site.AdvanceTime(4);
    EXPECT_EQ(calls.size(), 3u);
    CursorAt({24, 24});
    site.AdvanceTime(1);
    EXPECT_EQ(calls.size(), 4u);
    pad.OnButtonUp({24, 24}, true);
}

TEST_F(NavigatorRepeatTest, PressOutsideThePadDoesNothing) {
    pad.OnButtonDown({60, 20}, false);
    EXPECT_EQ(pad.PressedZone(), Zone::None);
    site.AdvanceTime(5);
    EXPECT_TRUE(calls.empty());
}

TEST_F(NavigatorRepeatTest, DestroyStopsTheTimers) {
    CursorAt({24, 2});
    pad.OnButtonDown({24, 2}, false);
    pad.Destroy();
    site.AdvanceTime(5);
    EXPECT_EQ(calls.size(), 1u);
    EXPECT_EQ(pad.Window(), 0u);
}

}  // namespace
}  // namespace vexplot
