#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QScrollBar>
#include <memory>

#include "qt/InfoWindowWidget.h"
#include "qt/QtControlSite.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot {
namespace {

constexpr uint32_t kBack = 0x00FF00;  // green, 0x00BBGGRR
constexpr uint32_t kRed = 0x0000FF;

// The info window as the control makes it: a logic object on the Qt site,
// its widget a child of the host.
class InfoWindowWidgetTest : public ::testing::Test {
protected:
    void SetUp() override {
        host.resize(400, 600);
        host.show();
        ASSERT_TRUE(info.Create(site, 0, true, {}));
        widget = qobject_cast<InfoWindowWidget*>(site.Widget(info.Window()));
        ASSERT_NE(widget, nullptr);
        ASSERT_EQ(widget->Logic(), &info);
        info.SetBackColor(kBack);
        QApplication::processEvents();
    }
    void Click(QPoint at) {
        QMouseEvent press(QEvent::MouseButtonPress, at, widget->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(widget, &press);
        QMouseEvent release(QEvent::MouseButtonRelease, at, widget->mapToGlobal(at), Qt::LeftButton, Qt::NoButton,
                            Qt::NoModifier);
        QApplication::sendEvent(widget, &release);
    }
    // Counts the pixels of `image` inside `r` that are not the background, and those that are red.
    static std::pair<int, int> Count(const QImage& image, const QRect& r) {
        int ink = 0;
        int red = 0;
        for (int y = r.top(); y <= r.bottom(); ++y)
            for (int x = r.left(); x <= r.right(); ++x) {
                const QColor c = image.pixelColor(x, y);
                if (c != QColor(0, 255, 0)) ++ink;
                if (c.red() > 150 && c.green() < 100 && c.blue() < 100) ++red;
            }
        return {ink, red};
    }

    QWidget host;
    QtControlSite site{&host};
    CUIW_InfoWnd info;
    InfoWindowWidget* widget = nullptr;
};

TEST_F(InfoWindowWidgetTest, PaintsItsLinesInTheirColoursOnTheBackground) {
    const InfoSection s = info.AddSection(2, "Marker A:", 0);
    info.AddLine(s, "WWWWWWWW", kRed);
    QApplication::processEvents();
    const QImage image = widget->grab().toImage();
    const QRect client(0, info.CaptionHeight(), widget->width(), widget->height() - info.CaptionHeight());
    const int line = info.Content().lineHeight;
    ASSERT_GT(line, 0);
    const QRect first(0, client.top(), client.width(), line);
    const QRect second = first.translated(0, line);
    const QRect below(1, client.top() + 3 * line, client.width() - 2, line);  // inside the outline

    EXPECT_GT(Count(image, first).first, 10) << "the header's text is drawn";
    EXPECT_EQ(Count(image, first).second, 0) << "the header has the window's text colour";
    EXPECT_GT(Count(image, second).second, 10) << "the line has its own colour";
    EXPECT_EQ(Count(image, below).first, 0) << "nothing under the last line";
    EXPECT_NE(image.pixelColor(2, 2), QColor(0, 255, 0)) << "the caption strip is painted";
}

// The shape is the letters and the caption. A burst of changes to the text
// rebuilds it once, on the next pass of the event loop, from the last text.
TEST_F(InfoWindowWidgetTest, MaskFollowsTransparentModeAndCatchesUpOnTheNextPass) {
    const InfoSection s = info.AddSection(1, "WWWW", 0);
    info.AddLine(s, "W", 0);
    EXPECT_TRUE(widget->mask().isEmpty());
    info.SetTransparent(true);
    const QRegion mask = widget->mask();
    EXPECT_TRUE(mask.contains(QPoint(2, 2))) << "the caption stays";
    const int top = info.CaptionHeight();
    const int line = info.Content().lineHeight;
    EXPECT_FALSE(mask.intersected(QRect(InfoLayout::kTextX, top, 60, line)).isEmpty()) << "the letters are in";
    EXPECT_FALSE(mask.contains(QPoint(widget->width() - 2, top + 3 * line))) << "empty client area is out";
    EXPECT_FALSE(mask.contains(QPoint(1, top + line / 2))) << "left of the text is out";

    const QRect far(InfoLayout::kTextX + 40, top + line, 40, line);
    for (int n = 2; n <= 20; ++n) info.SetLine(s, 1, std::string(static_cast<size_t>(n), 'W'), 0);
    EXPECT_TRUE(widget->mask().intersected(far).isEmpty()) << "not yet rebuilt";
    QApplication::processEvents();
    EXPECT_FALSE(widget->mask().intersected(far).isEmpty()) << "the last text's letters are in";
    info.SetTransparent(false);
    EXPECT_TRUE(widget->mask().isEmpty());
}

// Floating, the window is sized by its outer pixels; docked, it is not.
TEST_F(InfoWindowWidgetTest, FrameSizesTheFloatingWindowOnly) {
    site.MoveWindow(info.Window(), {10, 20, 110, 220});
    auto drag = [this](QPoint from, QPoint by) {
        const QPoint to = from + by;
        QMouseEvent press(QEvent::MouseButtonPress, from, widget->mapToGlobal(from), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(widget, &press);
        QMouseEvent move(QEvent::MouseMove, to, widget->mapToGlobal(from) + by, Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
        QMouseEvent release(QEvent::MouseButtonRelease, to, widget->mapToGlobal(from) + by, Qt::LeftButton,
                            Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &release);
    };
    drag(QPoint(0, 100), QPoint(-5, 0));  // the left edge, 5 pixels out
    EXPECT_EQ(widget->geometry(), QRect(5, 20, 105, 200));
    EXPECT_EQ(info.NormalRect().left, 5);
    drag(QPoint(104, 199), QPoint(-200, -300));  // the corner stops at the smallest size
    EXPECT_EQ(widget->geometry().size(), QSize(CUIW_InfoWnd::kMinWidth, CUIW_InfoWnd::kMinHeight));

    info.SetDocked(true);
    const QRect docked = widget->geometry();
    drag(QPoint(0, 10), QPoint(-5, 0));
    EXPECT_EQ(widget->geometry(), docked);
}

TEST_F(InfoWindowWidgetTest, CaptionAndScrollBarReachTheLogic) {
    const InfoSection s = info.AddSection(1, "Position:", 0);
    for (int i = 0; i < 20; ++i) info.AddLine(s, "line", 0);
    site.MoveWindow(info.Window(), {0, 0, 120, info.CaptionHeight() + 3 * info.Content().lineHeight});
    QApplication::processEvents();
    ASSERT_TRUE(info.ScrollBarShown());
    auto* bar = widget->findChild<QScrollBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->maximum(), info.Scroll().range);
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(info.Scroll().position, 1);
    EXPECT_EQ(bar->value(), 1);

    const PixelRect close = info.Caption().ButtonRect(InfoButton::Close);
    Click(QPoint(close.left + 3, close.top + 3));
    EXPECT_FALSE(info.Visible());
    EXPECT_FALSE(widget->isVisible());
}

}  // namespace
}  // namespace vexplot
