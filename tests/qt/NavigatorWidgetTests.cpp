#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>

#include "control/HeadlessSite.h"
#include "qt/NavigatorWidget.h"
#include "ui/NavigatorPad.h"

namespace vexplot {
namespace {

void Send(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::MouseButtons(button) : Qt::NoButton;
    QMouseEvent event(type, QPointF(at), QPointF(widget.mapToGlobal(at)),
                      type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

TEST(NavigatorWidgetTest, ShowsTheZonesStateAndPassesTheMouseToThePad) {
    HeadlessSite site(nullptr);
    const WindowHandle control = site.CreateWindow(WindowRole::Control, 0, PixelRect{0, 0, 200, 100}, nullptr);
    NavigatorPad pad;
    ASSERT_TRUE(pad.Create(site, control, PixelRect{0, 0, 48, 48}));
    std::vector<std::pair<NavigatorPad::Zone, bool>> calls;
    pad.SetOwner([&calls](NavigatorPad::Zone zone, bool secondary) { calls.emplace_back(zone, secondary); });

    NavigatorWidget widget(nullptr);
    widget.Bind(&pad);
    ASSERT_EQ(widget.size(), QSize(48, 48));
    // A point of the top border away from its arrow, and its mirror below.
    const QPoint top(10, 4);
    const QPoint bottom(10, 43);
    const QImage idle = widget.grab().toImage();
    EXPECT_EQ(idle.pixel(top), idle.pixel(bottom));

    Send(widget, QEvent::MouseMove, QPoint(24, 4), Qt::NoButton);
    EXPECT_EQ(pad.HighlightedZone(), NavigatorPad::Zone::Top);
    const QImage highlighted = widget.grab().toImage();
    EXPECT_GT(qGray(highlighted.pixel(top)), qGray(highlighted.pixel(bottom)));

    Send(widget, QEvent::MouseButtonPress, QPoint(24, 24), Qt::RightButton);
    EXPECT_EQ(pad.PressedZone(), NavigatorPad::Zone::Centre);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0], std::make_pair(NavigatorPad::Zone::Centre, true));
    const QImage pressed = widget.grab().toImage();
    EXPECT_LT(qGray(pressed.pixel(16, 16)), qGray(idle.pixel(16, 16)));

    Send(widget, QEvent::MouseButtonRelease, QPoint(24, 24), Qt::RightButton);
    EXPECT_EQ(pad.PressedZone(), NavigatorPad::Zone::None);
}

}  // namespace
}  // namespace vexplot
