// The navigator pad and a tools button as Qt draws them: each widget shows
// its logic's state and passes the mouse on to it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>

#include "control/HeadlessSite.h"
#include "qt/NavigatorWidget.h"
#include "qt/ToolsButtonWidget.h"
#include "tools/CToolsCtrl.h"
#include "ui/NavigatorPad.h"

namespace vexplot {
namespace {

void Send(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::MouseButtons(button) : Qt::NoButton;
    QMouseEvent event(type, QPointF(at), QPointF(widget.mapToGlobal(at)),
                      type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

// Pixels clearly darker than a button face: a caption's strokes.
int DarkPixels(const QImage& image) {
    int dark = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) dark += qGray(image.pixel(x, y)) < 96;
    return dark;
}

// The logic lives in a control window of the headless site.
class BoundWidgetTest : public ::testing::Test {
protected:
    HeadlessSite site{nullptr};
    const WindowHandle control = site.CreateWindow(WindowRole::Control, 0, PixelRect{0, 0, 200, 100}, nullptr);
};

TEST_F(BoundWidgetTest, NavigatorShowsTheZonesStateAndPassesTheMouseToThePad) {
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

TEST_F(BoundWidgetTest, ToolsButtonPaintsTheCaptionAndPassesClicksToTheButton) {
    CToolsCtrl button;
    ASSERT_TRUE(button.Create(site, WindowRole::MenuButton, control, PixelRect{0, 0, 24, 20}, 105, ""));
    int messages = 0;
    button.SetOwner({[&messages](int32_t, int32_t, int32_t) { ++messages; }, nullptr, nullptr});

    ToolsButtonWidget widget(nullptr);
    widget.resize(24, 20);
    widget.Bind(&button);
    const QImage blank = widget.grab().toImage();
    button.SetCaption("M");
    const QImage captioned = widget.grab().toImage();
    EXPECT_LT(DarkPixels(blank), 3);  // the bevel's darkest edge is not that dark
    EXPECT_GT(DarkPixels(captioned), 10);

    Send(widget, QEvent::MouseButtonPress, QPoint(5, 5), Qt::LeftButton);
    EXPECT_TRUE(button.Pressed());
    EXPECT_NE(widget.grab().toImage(), captioned);  // drawn sunken
    Send(widget, QEvent::MouseButtonRelease, QPoint(5, 5), Qt::LeftButton);
    EXPECT_FALSE(button.Pressed());
    EXPECT_TRUE(button.ReleasedInside());
    EXPECT_EQ(messages, 1);
}

}  // namespace
}  // namespace vexplot
