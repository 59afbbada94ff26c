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
    const QRect below(0, client.top() + 3 * line, client.width(), line);

    EXPECT_GT(Count(image, first).first, 10) << "the header's text is drawn";
    EXPECT_EQ(Count(image, first).second, 0) << "the header has the window's text colour";
    EXPECT_GT(Count(image, second).second, 10) << "the line has its own colour";
    EXPECT_EQ(Count(image, below).first, 0) << "nothing under the last line";
    EXPECT_NE(image.pixelColor(2, 2), QColor(0, 255, 0)) << "the caption strip is painted";
}

TEST_F(InfoWindowWidgetTest, MaskFollowsTransparentMode) {
    const InfoSection s = info.AddSection(1, "WWWW", 0);
    info.AddLine(s, "WWWW", 0);
    EXPECT_TRUE(widget->mask().isEmpty());

    info.SetTransparent(true);
    const QRegion mask = widget->mask();
    ASSERT_FALSE(mask.isEmpty());
    EXPECT_TRUE(mask.contains(QPoint(2, 2))) << "the caption stays";
    const int top = info.CaptionHeight();
    const int line = info.Content().lineHeight;
    EXPECT_FALSE(mask.intersected(QRect(InfoLayout::kTextX, top, 60, line)).isEmpty()) << "the letters are in";
    EXPECT_FALSE(mask.contains(QPoint(widget->width() - 2, top + 3 * line))) << "empty client area is out";
    EXPECT_FALSE(mask.contains(QPoint(1, top + line / 2))) << "left of the text is out";

    info.SetTransparent(false);
    EXPECT_TRUE(widget->mask().isEmpty());
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
