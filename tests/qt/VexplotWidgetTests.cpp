#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QDialog>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>
#include <QTreeWidget>
#include <set>

#include "ShownWidgetTest.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "qt/VexplotWidget.h"

namespace vexplot {
namespace {

class VexplotWidgetTest : public ShownWidgetTest {
protected:
    QWidget* Window(WindowRole role) const { return widget->WindowWidget(static_cast<int>(role)); }

    void Mouse(QWidget* target, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(at), target->mapToGlobal(QPointF(at)), button, held, Qt::NoModifier);
        QApplication::sendEvent(target, &event);
    }

};

TEST_F(VexplotWidgetTest, ShowsTheWholeWindowSet) {
    for (WindowRole role : {WindowRole::Title, WindowRole::MenuButton, WindowRole::LegendButton, WindowRole::StatusBar,
                            WindowRole::View3D, WindowRole::Navigator}) {
        QWidget* w = Window(role);
        ASSERT_NE(w, nullptr) << static_cast<int>(role);
        EXPECT_TRUE(w->isVisible()) << static_cast<int>(role);
    }
    EXPECT_FALSE(Window(WindowRole::View2D)->isVisible());
    // The view lies between the title bar and the status bar.
    EXPECT_GE(Window(WindowRole::View3D)->geometry().top(), Window(WindowRole::Title)->geometry().bottom());
    EXPECT_LE(Window(WindowRole::View3D)->geometry().bottom(), Window(WindowRole::StatusBar)->geometry().top());
}

// The accelerators reach the control wherever the focus is inside it (Alt+2
// and Alt+3 switch the view mode), but not from a dialog's text field.
TEST_F(VexplotWidgetTest, AcceleratorsWorkWhereverTheFocusIsInTheControl) {
    CUI_VexplotCtrl& control = widget->Control();
    widget->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(widget.get()));
    Window(WindowRole::LegendWindow)->show();
    Window(WindowRole::InfoWindow)->show();
    QWidget* legendList = Window(WindowRole::LegendWindow)->findChild<QTreeWidget*>();
    for (QWidget* target : {Window(WindowRole::View3D), legendList, Window(WindowRole::InfoWindow)}) {
        SCOPED_TRACE(target->metaObject()->className());
        target->activateWindow();
        target->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(target->window()));
        QTest::keyClick(target, Qt::Key_2, Qt::AltModifier);
        EXPECT_EQ(control.GetViewMode(), 0);
        EXPECT_TRUE(Window(WindowRole::View2D)->isVisible());
        // The navigator belongs to the 3-D view.
        EXPECT_FALSE(Window(WindowRole::Navigator)->isVisible());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_3, Qt::AltModifier);
        EXPECT_EQ(control.GetViewMode(), 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_2);  // without Alt a digit is no accelerator
        EXPECT_EQ(control.GetViewMode(), 1);
    }
    // A text field inside the control keeps Enter, which it edits with.
    auto* inPlace = new QLineEdit(Window(WindowRole::Control));
    inPlace->show();
    int returns = 0;
    QObject::connect(inPlace, &QLineEdit::returnPressed, [&returns] { ++returns; });
    inPlace->setFocus();
    QTest::keyClick(inPlace, Qt::Key_Return);
    EXPECT_EQ(returns, 1);
    QTest::keyClick(inPlace, Qt::Key_2, Qt::AltModifier);  // not a key it edits with
    EXPECT_EQ(control.GetViewMode(), 0);
    delete inPlace;

    QDialog dialog(widget.get());
    auto* field = new QLineEdit(&dialog);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    field->setFocus();
    ASSERT_EQ(QApplication::focusWidget(), field);
    QTest::keyClick(field, Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(control.GetViewMode(), 0);
}

TEST_F(VexplotWidgetTest, EveryMenuEntryHasItsCommand) {
    CUI_VexplotCtrl& control = widget->Control();
    std::set<int32_t> enabled;
    std::set<int32_t> all;
    std::function<void(const MenuModel&)> walk = [&](const MenuModel& menu) {
        for (const MenuItem& item : menu) {
            if (!item.submenu.empty()) walk(item.submenu);
            if (item.separator || !item.submenu.empty()) continue;
            all.insert(item.command);
            if (item.enabled) enabled.insert(item.command);
        }
    };
    walk(control.PopupMenu());
    EXPECT_EQ(all.size(), 34u);
    // No entry is left without a command: every one is available on a
    // plot without data, but for saving the data a plot does not have.
    for (int32_t command : all) {
        EXPECT_EQ(enabled.count(command) == 1, command != cmd::kSaveData) << command;
    }
    // The title bar's tools button offers the eight tools, the active one checked.
    ASSERT_TRUE(control.DoCommand(cmd::kZoom));
    const MenuModel tools = control.ToolMenu();
    ASSERT_EQ(tools.size(), 8u);
    for (const MenuItem& item : tools) EXPECT_EQ(item.checked, item.command == cmd::kZoom);
}

TEST_F(VexplotWidgetTest, WindowCommandsToggleTheirWindows) {
    CUI_VexplotCtrl& control = widget->Control();
    control.OnCommand(cmd::kStatusBar);
    EXPECT_FALSE(Window(WindowRole::StatusBar)->isVisible());
    EXPECT_FALSE(control.CommandState(cmd::kStatusBar).checked);
    control.OnCommand(cmd::kGraphTitle);
    EXPECT_FALSE(Window(WindowRole::Title)->isVisible());
    EXPECT_FALSE(Window(WindowRole::MenuButton)->isVisible());
    EXPECT_FALSE(Window(WindowRole::LegendButton)->isVisible());
    // The view takes the room the bars leave.
    EXPECT_EQ(Window(WindowRole::View3D)->geometry(), QRect(0, 0, 640, 480));
}

TEST_F(VexplotWidgetTest, DraggingTurnsTheSurfaceAndTheViewShowsIt) {
    QString error;
    ASSERT_TRUE(widget->LoadDataFile(VEXPLOT_EXAMPLES_DIR "/peaks.3do", &error)) << error.toStdString();
    CUI_VexplotCtrl& control = widget->Control();
    const float azimuth = control.GetCamAzim();
    const float elevation = control.GetCamElev();
    QWidget* view = Window(WindowRole::View3D);
    Mouse(view, QEvent::MouseButtonPress, {200, 200}, Qt::LeftButton, Qt::LeftButton);
    Mouse(view, QEvent::MouseMove, {240, 190}, Qt::NoButton, Qt::LeftButton);
    Mouse(view, QEvent::MouseMove, {260, 180}, Qt::NoButton, Qt::LeftButton);
    Mouse(view, QEvent::MouseButtonRelease, {260, 180}, Qt::LeftButton, Qt::NoButton);
    EXPECT_NE(control.GetCamAzim(), azimuth);
    EXPECT_NE(control.GetCamElev(), elevation);

    // The picture at rest has the palette's many colours, not one background.
    const QImage picture = view->grab().toImage();
    std::set<QRgb> colours;
    for (int y = picture.height() / 4; y < picture.height() * 3 / 4; y += 4)
        for (int x = picture.width() / 4; x < picture.width() * 3 / 4; x += 4) colours.insert(picture.pixel(x, y));
    EXPECT_GT(colours.size(), 50u);
}

TEST_F(VexplotWidgetTest, AFileThatIsNotAGridIsRefusedWithAMessage) {
    QString error;
    EXPECT_FALSE(widget->LoadDataFile(VEXPLOT_EXAMPLES_DIR "/README.md", &error));
    EXPECT_FALSE(error.isEmpty());
}

}  // namespace
}  // namespace vexplot
