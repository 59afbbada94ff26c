#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "control/RecordingSite.h"
#include "support/Boxes.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot {
namespace {

using test::B;
using test::Box;

// The recording site, with the rectangles of Invalidate kept (null: all).
class InvalidateSpy final : public IControlSite {
public:
    test::RecordingSite inner{std::make_shared<test::CallLog>()};
    std::vector<std::optional<PixelRect>> invalidated;

    WindowHandle CreateWindow(WindowRole r, WindowHandle p, const PixelRect& rect, IWindowHandler* h) override {
        return inner.CreateWindow(r, p, rect, h);
    }
    void DestroyWindow(WindowHandle w) override { inner.DestroyWindow(w); }
    void ShowWindow(WindowHandle w, bool show) override { inner.ShowWindow(w, show); }
    bool IsWindowVisible(WindowHandle w) const override { return inner.IsWindowVisible(w); }
    void MoveWindow(WindowHandle w, const PixelRect& rect) override { inner.MoveWindow(w, rect); }
    PixelRect GetWindowRect(WindowHandle w) const override { return inner.GetWindowRect(w); }
    void SetWindowText(WindowHandle w, const std::string& t) override { inner.SetWindowText(w, t); }
    std::string GetWindowText(WindowHandle w) const override { return inner.GetWindowText(w); }
    void Invalidate(WindowHandle, const PixelRect* rect, bool) override {
        invalidated.push_back(rect ? std::optional<PixelRect>(*rect) : std::nullopt);
    }
    int32_t MessageBox(const std::string&, const std::string&, MessageButtons) override { return kAnswerOk; }
    std::optional<EngineEntry> ChooseEngine(const std::vector<EngineEntry>&) override { return std::nullopt; }
    void SetTimer(WindowHandle, uint32_t id, uint32_t) override { timers.insert(id); }
    void KillTimer(WindowHandle, uint32_t id) override { timers.erase(id); }
    void SetCursorShape(WindowHandle, CursorShape) override {}
    void ShowCursor(bool) override {}
    uint32_t CreateBitmap(const ImageBuffer&) override { return 0; }
    bool ReadBitmap(uint32_t, std::vector<uint32_t>*, int32_t*, int32_t*) const override { return false; }
    void DeleteBitmap(uint32_t) override {}
    void BindWindowLogic(WindowHandle w, WindowLogic logic) override { inner.BindWindowLogic(w, logic); }
    void SetWindowShape(WindowHandle w, const std::vector<PixelRect>* runs) override {
        ++shapeCalls;
        inner.SetWindowShape(w, runs);
    }
    void AnimateWindow(WindowHandle, uint32_t, uint32_t) override {}
    PixelPoint CursorPosition(WindowHandle w) const override { return inner.CursorPosition(w); }
    int32_t TrackPopupMenu(WindowHandle, const MenuModel&, PixelPoint) override { return 0; }
    FontMetrics GetFontMetrics(const LogicalFont& font) const override { return inner.GetFontMetrics(font); }
    bool MouseInputPending() const override { return inner.mouseInputPending; }

    int shapeCalls = 0;
    std::set<uint32_t> timers;
};

// The recording site measures the default font (-11) as 11 high with a
// leading of 1 and a maximal width of 11: lines are 12 pixels high.
constexpr int32_t kLine = 12;
constexpr int32_t kMaxWidth = 11;
constexpr int32_t kCaption = CUIW_InfoWnd::kCaptionHeight;

class InfoWindowTest : public testing::Test {
protected:
    void SetUp() override {
        CUIW_InfoWnd::Owner owner;
        owner.visibilityChanged = [this] { ++visibilityNotes; };
        owner.dockingChanged = [this](bool docked) { dockingNotes.push_back(docked); };
        ASSERT_TRUE(wnd.Create(site, 0, true, owner));
    }
    // Sizes the window as the user would; the site reports it through OnSize.
    void Resize(int32_t width, int32_t height) {
        site.MoveWindow(wnd.Window(), {0, 0, width, height});
        wnd.OnSize(wnd.Window(), width, height);
    }
    void Mouse(MouseEvent::Kind kind, int32_t x, int32_t y) {
        MouseEvent e;
        e.kind = kind;
        e.button = kind == MouseEvent::Kind::Move ? MouseEvent::Button::None : MouseEvent::Button::Left;
        e.buttons = kind == MouseEvent::Kind::Release ? 0 : 1;
        e.point = {x, y};
        wnd.OnMouse(wnd.Window(), e);
    }
    void Click(InfoButton button) {
        const PixelRect r = wnd.Caption().ButtonRect(button);
        Mouse(MouseEvent::Kind::Press, r.left + 1, r.top + 1);
        Mouse(MouseEvent::Kind::Release, r.left + 1, r.top + 1);
    }
    const std::vector<PixelRect>& Shape() { return site.inner.windows[wnd.Window()].shape; }
    std::vector<std::string> ShownTexts() const {
        std::vector<std::string> texts;
        for (const InfoLine& line : wnd.Content().lines) texts.push_back(line.text);
        return texts;
    }

    InvalidateSpy site;
    CUIW_InfoWnd wnd;
    int visibilityNotes = 0;
    std::vector<bool> dockingNotes;
};

TEST(InfoWindowCreate, ChildDocksPopupDoesNot) {
    for (const bool child : {true, false}) {
        InvalidateSpy site;
        CUIW_InfoWnd wnd;
        ASSERT_TRUE(wnd.Create(site, 0, child, {}));
        const auto& w = site.inner.windows.at(wnd.Window());
        EXPECT_EQ(w.role, child ? WindowRole::InfoWindow : WindowRole::InfoPopup);
        EXPECT_EQ(B(w.rect), (Box{0, 0, 100, 500}));
        EXPECT_EQ(std::get<CUIW_InfoWnd*>(w.logic), &wnd);
        EXPECT_EQ(wnd.Caption().ButtonRect(InfoButton::Dock).right > 0, child) << "dock button only when dockable";
        EXPECT_GT(wnd.Caption().ButtonRect(InfoButton::Close).right, 0);
        wnd.SetDocked(true);
        EXPECT_EQ(wnd.Docked(), child);
        wnd.Destroy();
        EXPECT_TRUE(site.inner.windows.empty());
    }
}

// Grouping, tabs, stale handles and the mask itself are the entry list's;
// the window relayouts on a mask change.
TEST_F(InfoWindowTest, TheMaskRelayoutsAndStaleHandlesAreRefused) {
    const InfoSection region = wnd.AddSection(16, "Region:", 0);
    wnd.AddSection(2, "Marker A:", 0);
    wnd.AddLine(region, "W 3", 0);
    wnd.SetVisibilityMask(16);
    EXPECT_EQ(ShownTexts(), (std::vector<std::string>{"Region:", "W 3"}));
    wnd.SetVisibilityMask(0);
    EXPECT_EQ(wnd.Content().height, kLine) << "all kinds masked out: one line high";
    ASSERT_TRUE(wnd.RemoveSection(region));
    EXPECT_FALSE(wnd.AddLine(region, "x", 0) || wnd.RemoveSection(region)) << "a stale handle";
}

TEST_F(InfoWindowTest, SetLineRedrawsOnlyItsStripAndNothingWhenUnchanged) {
    const InfoSection pos = wnd.AddSection(1, "Position:", 0);
    wnd.AddLine(pos, "X 10", 0);
    wnd.AddLine(pos, "Y 20", 0);
    site.invalidated.clear();

    EXPECT_TRUE(wnd.SetLine(pos, 2, "Y 21", 0));
    ASSERT_EQ(site.invalidated.size(), 1u);
    ASSERT_TRUE(site.invalidated[0].has_value());
    EXPECT_EQ(B(*site.invalidated[0]), (Box{0, kCaption + 2 * kLine, 100, kCaption + 3 * kLine}));

    site.invalidated.clear();
    EXPECT_TRUE(wnd.SetLine(pos, 2, "Y 21", 0));
    EXPECT_TRUE(site.invalidated.empty()) << "identical text costs no repaint";
    EXPECT_FALSE(wnd.SetLine(pos, 3, "Z", 0));
    EXPECT_TRUE(site.invalidated.empty()) << "a line it does not have is refused";

    EXPECT_TRUE(wnd.SetLine(pos, 1, "X 10 and much longer", 0));
    ASSERT_EQ(site.invalidated.size(), 1u);
    EXPECT_FALSE(site.invalidated[0].has_value()) << "a wider picture repaints all";
    EXPECT_EQ(wnd.Content().width, kMaxWidth * (20 + 5));
}

TEST_F(InfoWindowTest, SetLineIsDroppedWhileMouseInputWaitsOnlyWhenTransparent) {
    const InfoSection pos = wnd.AddSection(1, "Position:", 0);
    wnd.AddLine(pos, "X 10", 0);
    site.inner.mouseInputPending = true;
    wnd.SetLine(pos, 1, "X 11", 0);
    EXPECT_EQ(wnd.Entries().Entries()[1].text, "X 11") << "opaque windows take every update";
    wnd.SetTransparent(true);
    wnd.SetLine(pos, 1, "X 12", 0);
    EXPECT_EQ(wnd.Entries().Entries()[1].text, "X 11");
    site.inner.mouseInputPending = false;
    wnd.SetLine(pos, 1, "X 12", 0);
    EXPECT_EQ(wnd.Entries().Entries()[1].text, "X 12");
}

// Sized by its frame, a floating window keeps its picture: lower than the
// text it scrolls by client heights, at the text's height or more it has no
// scroll bar, wider it shows background. Docked, the owner gives it the
// text's size: nothing to scroll either, and the frame does nothing.
TEST_F(InfoWindowTest, SizedWindowsScrollOnlyWhatDoesNotFit) {
    const InfoSection pos = wnd.AddSection(1, "Position:", 0);
    for (int i = 0; i < 8; ++i) wnd.AddLine(pos, "line", 0);  // 9 lines: 120 pixels with the spare line
    wnd.OnSizedByUser({30, 40, 130, 40 + kCaption + 24});
    EXPECT_EQ(B(site.GetWindowRect(wnd.Window())), (Box{30, 40, 130, 40 + kCaption + 24}));
    EXPECT_EQ(B(wnd.NormalRect()), (Box{30, 40, 130, 40 + kCaption + 24}));
    EXPECT_EQ(B(wnd.ClientRect()), (Box{0, kCaption, 100 - CUIW_InfoWnd::kScrollBarWidth, kCaption + 24}));
    wnd.ScrollBy(InfoScrollAction::LineDown);
    EXPECT_EQ(wnd.Scroll(), (InfoScroll{1, 5, 24}));
    wnd.ScrollBy(InfoScrollAction::ThumbTrack, 5);
    EXPECT_EQ(wnd.Scroll(), (InfoScroll{5, 5, 96}));
    wnd.OnSizedByUser({30, 40, 400, 40 + kCaption + 120});
    EXPECT_EQ(wnd.Scroll(), (InfoScroll{0, 0, 0}));
    EXPECT_EQ(wnd.Content().width, kMaxWidth * (9 + 5)) << "a wider window shows background, not a wider text";

    wnd.SetDocked(true);
    EXPECT_FALSE(wnd.Sizable());
    Resize(wnd.WantedWidth(), wnd.WantedHeight());
    EXPECT_FALSE(wnd.ScrollBarShown());
    EXPECT_EQ(wnd.WantedWidth(), wnd.Content().width);
    wnd.OnSizedByUser({0, 0, 300, 300});
    EXPECT_EQ(B(site.GetWindowRect(wnd.Window())), (Box{0, 0, wnd.Content().width, 120}));
    // Lines going away shrink the range and pull the position back in.
    Resize(100, 24);
    wnd.ScrollBy(InfoScrollAction::ThumbTrack, 5);
    wnd.RemoveSection(pos);
    EXPECT_EQ(wnd.Scroll(), (InfoScroll{0, 0, 0}));
}

// A mask renderer as a window would install: each shown line gets text
// pixels in columns 5..7 of its first row, black on white.
bool FakeMask(const InfoContent& content, const LogicalFont&, TextMask* mask) {
    mask->width = content.width;
    mask->height = content.height;
    mask->stride = content.width;
    mask->pixels.assign(static_cast<size_t>(content.width * content.height), 0xFFFFFF);
    for (const InfoLine& line : content.lines)
        for (int32_t x = 5; x < 8; ++x) mask->pixels[static_cast<size_t>(line.top * content.width + x)] = 0;
    return true;
}

TEST_F(InfoWindowTest, TransparentShapeIsTheTextPlusTheCaption) {
    const PixelRect caption{0, 0, 100, kCaption};
    wnd.SetTransparent(true);
    EXPECT_EQ(B(Shape()), (std::vector<Box>{{0, kCaption, 100, 500}, B(caption)})) << "no entries: the client";

    const int before = site.shapeCalls;
    wnd.AddSection(2, "Marker A:", 0);
    EXPECT_EQ(site.shapeCalls, before) << "without a picture of the text the shape stays";

    wnd.SetMaskRenderer(FakeMask);
    const InfoSection s = wnd.AddSection(2, "Marker B:", 0);
    wnd.OnTimer(wnd.Window(), CUIW_InfoWnd::kShapeTimerId);
    EXPECT_EQ(B(Shape()), (std::vector<Box>{{5, kCaption, 8, kCaption + 1},
                                               {5, kCaption + kLine, 8, kCaption + kLine + 1},
                                               B(caption)}));

    wnd.SetDocked(true);
    EXPECT_EQ(wnd.CaptionHeight(), kCaption) << "docked and transparent keeps its caption";
    EXPECT_EQ(B(Shape().back()), B(caption));

    wnd.SetTransparent(false);
    EXPECT_TRUE(Shape().empty()) << "leaving the mode gives the whole rectangle back";
    EXPECT_EQ(wnd.CaptionHeight(), 0) << "docked and opaque: no caption";
    wnd.RemoveSection(s);
    EXPECT_TRUE(Shape().empty());
}

// A burst of line changes on a transparent window costs one shape rebuild:
// the first change asks for the shape timer (zero delay: it fires once the
// queued events are handled), the others find it waiting, and the rebuild
// takes the text as it stands then.
TEST_F(InfoWindowTest, ShapeRebuildsCoalesceOverABurstOfChanges) {
    int renders = 0;
    wnd.SetMaskRenderer([&renders](const InfoContent& c, const LogicalFont& f, TextMask* m) {
        ++renders;
        return FakeMask(c, f, m);
    });
    const InfoSection pos = wnd.AddSection(1, "Position:", 0);
    wnd.AddLine(pos, "X 0", 0);
    wnd.SetTransparent(true);
    EXPECT_EQ(renders, 1) << "the mode's first shape is built at once";
    const int shapes = site.shapeCalls;
    for (int i = 1; i <= 100; ++i) wnd.SetLine(pos, 1, "X " + std::to_string(i * 1000), 0);
    wnd.AddLine(pos, "Y 0", 0);
    EXPECT_EQ(renders, 1);
    EXPECT_EQ(site.shapeCalls, shapes);
    EXPECT_EQ(site.timers, std::set<uint32_t>{CUIW_InfoWnd::kShapeTimerId});
    wnd.OnTimer(wnd.Window(), CUIW_InfoWnd::kShapeTimerId);
    EXPECT_EQ(renders, 2);
    EXPECT_EQ(site.shapeCalls, shapes + 1);
    EXPECT_EQ(Shape().size(), 3u + 1u) << "the three lines of the last text, and the caption";
    EXPECT_TRUE(site.timers.empty());
    // Leaving the mode drops a rebuild still waiting.
    wnd.SetLine(pos, 1, "X 1", 0);
    wnd.SetTransparent(false);
    EXPECT_TRUE(site.timers.empty());
}

// A button acts only when released over it; a toggle shows pushed while
// on, and while held the state it would switch to.
TEST_F(InfoWindowTest, CaptionButtonsActWhenReleasedOverThem) {
    const PixelRect close = wnd.Caption().ButtonRect(InfoButton::Close);
    Mouse(MouseEvent::Kind::Press, close.left + 2, close.top + 2);
    EXPECT_TRUE(wnd.ButtonPushed(InfoButton::Close));
    Mouse(MouseEvent::Kind::Move, close.left - 20, close.top + 2);
    EXPECT_FALSE(wnd.ButtonPushed(InfoButton::Close)) << "drawn released off the button";
    Mouse(MouseEvent::Kind::Release, close.left - 20, close.top + 2);
    EXPECT_TRUE(wnd.Visible());

    const PixelRect t = wnd.Caption().ButtonRect(InfoButton::Transparent);
    Mouse(MouseEvent::Kind::Press, t.left + 1, t.top + 1);
    EXPECT_TRUE(wnd.ButtonPushed(InfoButton::Transparent));
    Mouse(MouseEvent::Kind::Release, t.left + 1, t.top + 1);
    EXPECT_TRUE(wnd.Transparent());
    EXPECT_EQ(visibilityNotes, 1);
    Mouse(MouseEvent::Kind::Press, t.left + 1, t.top + 1);
    EXPECT_FALSE(wnd.ButtonPushed(InfoButton::Transparent)) << "held: the state it would switch to";
    Mouse(MouseEvent::Kind::Release, t.left + 1, t.top + 1);
    EXPECT_FALSE(wnd.Transparent());

    Click(InfoButton::Dock);
    EXPECT_TRUE(wnd.Docked() && wnd.ButtonPushed(InfoButton::Dock));
    EXPECT_EQ(dockingNotes, std::vector<bool>{true});
    EXPECT_EQ(wnd.CaptionHeight(), 0);
    wnd.SetTransparent(true);  // the caption comes back to close by
    Click(InfoButton::Close);
    EXPECT_FALSE(wnd.Visible() || site.inner.windows[wnd.Window()].visible);
    EXPECT_EQ(visibilityNotes, 3);
}

TEST_F(InfoWindowTest, CaptionDragMovesTheWindowAndUndocksFirst) {
    site.MoveWindow(wnd.Window(), {40, 30, 140, 530});
    Mouse(MouseEvent::Kind::Press, 10, 5);
    Mouse(MouseEvent::Kind::Move, 17, 9);   // the window follows: the anchor is under the cursor again
    Mouse(MouseEvent::Kind::Move, 18, 5);   // in the moved window's pixels
    Mouse(MouseEvent::Kind::Release, 18, 5);
    EXPECT_EQ(B(site.GetWindowRect(wnd.Window())), (Box{55, 34, 155, 534}));
    EXPECT_EQ(B(wnd.NormalRect()), (Box{55, 34, 155, 534}));
    EXPECT_TRUE(dockingNotes.empty());

    wnd.SetDocked(true);
    wnd.SetTransparent(true);  // the docked window has a caption to drag by
    site.MoveWindow(wnd.Window(), {0, 0, 80, 200});
    Mouse(MouseEvent::Kind::Press, 10, 5);
    EXPECT_FALSE(wnd.Docked());
    EXPECT_EQ(dockingNotes, std::vector<bool>{false});
    Mouse(MouseEvent::Kind::Move, 30, 5);
    EXPECT_EQ(B(site.GetWindowRect(wnd.Window())), (Box{20, 0, 100, 200}));
}

}  // namespace
}  // namespace vexplot
