#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>

#include "control/HeadlessSite.h"
#include "qt/ToolsButtonWidget.h"
#include "tools/CToolsCtrl.h"

namespace vexplot {
namespace {

// Pixels clearly darker than the button face: the caption's strokes.
int DarkPixels(const QImage& image) {
    int dark = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) dark += qGray(image.pixel(x, y)) < 96;
    return dark;
}

void Send(QWidget& widget, QEvent::Type type, QPoint at) {
    QMouseEvent event(type, QPointF(at), QPointF(widget.mapToGlobal(at)), Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

TEST(ToolsButtonWidgetTest, PaintsTheCaptionAndPassesClicksToTheButton) {
    HeadlessSite site(nullptr);
    const WindowHandle control = site.CreateWindow(WindowRole::Control, 0, PixelRect{0, 0, 200, 100}, nullptr);
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

    Send(widget, QEvent::MouseButtonPress, QPoint(5, 5));
    EXPECT_TRUE(button.Pressed());
    EXPECT_NE(widget.grab().toImage(), captioned);  // drawn sunken
    Send(widget, QEvent::MouseButtonRelease, QPoint(5, 5));
    EXPECT_FALSE(button.Pressed());
    EXPECT_TRUE(button.ReleasedInside());
    EXPECT_EQ(messages, 1);
}

}  // namespace
}  // namespace vexplot
