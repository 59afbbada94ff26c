#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QToolButton>
#include <QTreeWidget>
#include <memory>

#include "GraphFixture.h"
#include "control/RecordingSite.h"
#include "model/CGD_Palette.h"
#include "support/Boxes.h"
#include "qt/LegendWindowWidget.h"
#include "qt/WindowAnimator.h"
#include "settings/SettingsStore.h"
#include "support/RecordingLegendOwner.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/LegendPreview.h"
#include "ui/WindowSizing.h"

namespace vexplot {
namespace {

using ListOwner = test::RecordingLegendOwner;

class LegendWindowWidgetTest : public test::GraphFixture {
protected:
    void SetUp() override {
        GraphFixture::SetUp();
        palette.SetStandard(3);
        owner.list = &list;
        owner.palette = &palette;
        const WindowHandle control = site.CreateWindow(WindowRole::Control, 0, {0, 0, 400, 300}, nullptr);
        ASSERT_TRUE(legend.Create(site, control, {0, 0, 160, 200}, owner));
        widget.setGeometry(0, 0, 160, 200);
        widget.Bind(&legend);
    }
    void Mouse(QEvent::Type type, QPoint at, Qt::MouseButtons held) {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, QPointF(at), QPointF(at), button, held, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }

    CGD_GraphObject& Add(const char* name) {
        ComPtr<IGraphData> data = MakeData(8, 6);
        data->PutName(name);
        CGD_GraphObject& graph = Show(data.Get());
        legend.AddObject(&graph);
        return graph;
    }

    CGD_Palette palette;
    ListOwner owner;
    test::RecordingSite site{std::make_shared<test::CallLog>()};
    CUIW_LegendWindow legend{nullptr, SettingsStore::OpenUnshared(":memory:")};
    LegendWindowWidget widget{nullptr};
};

TEST_F(LegendWindowWidgetTest, ShowsOneCheckedRowWithAnIconPerObject) {
    Add("alpha");
    Add("beta");
    QTreeWidget* rows = widget.List();
    ASSERT_EQ(rows->topLevelItemCount(), 2);
    EXPECT_EQ(rows->topLevelItem(0)->text(0), "alpha");
    EXPECT_EQ(rows->topLevelItem(1)->text(0), "beta");
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(rows->topLevelItem(i)->icon(0).isNull()) << i;
        EXPECT_EQ(rows->topLevelItem(i)->checkState(0), Qt::Checked) << i;
    }
    EXPECT_EQ(rows->currentItem(), rows->topLevelItem(1));  // the object added last is active

    list.Remove(list.At(0));
    legend.Rebuild();
    ASSERT_EQ(rows->topLevelItemCount(), 1);
    EXPECT_EQ(rows->topLevelItem(0)->text(0), "beta");
}

// One column of the logic's width, however wide the window: a longer name
// is cut there, and the list fills the window as the frame sizes it.
TEST_F(LegendWindowWidgetTest, OneColumnOfFixedWidthInAListThatFillsTheWindow) {
    Add("a name far longer than the column can show");
    widget.show();
    QApplication::processEvents();
    QTreeWidget* rows = widget.List();
    const QRect row = rows->visualItemRect(rows->topLevelItem(0));
    EXPECT_EQ(row.width(), CUIW_LegendWindow::kColumnWidth);

    // Dragging the bottom-right corner by (40, 20) sizes the window through the logic.
    const QRect before = widget.geometry();
    Mouse(QEvent::MouseButtonPress, {159, 199}, Qt::LeftButton);
    Mouse(QEvent::MouseMove, {199, 219}, Qt::LeftButton);
    Mouse(QEvent::MouseButtonRelease, {199, 219}, Qt::NoButton);
    EXPECT_EQ(test::B(site.GetWindowRect(legend.Window())),
              (test::Box{before.left(), before.top(), before.left() + 200, before.top() + 220}));
    widget.setGeometry(0, 0, 200, 220);  // where the site's window would be now
    QApplication::processEvents();
    EXPECT_EQ(rows->geometry().right(), 200 - WindowSizing::kBorder - 1);
    EXPECT_EQ(rows->geometry().bottom(), 220 - WindowSizing::kBorder - 1);
    EXPECT_EQ(rows->visualItemRect(rows->topLevelItem(0)).width(), CUIW_LegendWindow::kColumnWidth);

    legend.SetShown(true);
    widget.findChild<QToolButton*>()->click();  // the caption's close button
    EXPECT_FALSE(site.IsWindowVisible(legend.Window()));
}

TEST_F(LegendWindowWidgetTest, CheckStateFollowsTheLogicBothWays) {
    CGD_GraphObject& graph = Add("alpha");
    QTreeWidgetItem* item = widget.List()->topLevelItem(0);

    legend.ToggleVisible(0);
    EXPECT_EQ(item->checkState(0), Qt::Unchecked);

    // The user's click on the box reaches the object.
    item->setCheckState(0, Qt::Checked);
    EXPECT_TRUE(graph.Flags().visible);
    EXPECT_TRUE(legend.Rows()[0].checked);
    EXPECT_EQ(owner.redraws, 2 + 1);  // add, toggle, click; each redrew once
}

TEST_F(LegendWindowWidgetTest, SelectingARowActivatesItsObject) {
    Add("alpha");
    Add("beta");
    widget.List()->setCurrentItem(widget.List()->topLevelItem(0));
    EXPECT_EQ(list.ActiveIndex(), 0);
    EXPECT_EQ(legend.Selection(), 0);
}

// A slide moves the window itself: it starts a whole width to the left of
// its place (left to right, mode 2), showing nothing outside that place,
// and ends, unmasked, exactly there.
TEST(WindowAnimatorTest, ASlideMovesTheWindowFromItsEdgeToItsPlace) {
    QWidget parent;
    parent.resize(400, 300);
    QWidget window(&parent);
    window.setGeometry(50, 40, 120, 90);
    parent.show();
    WindowAnimator animator;
    animator.Animate(&window, LegendAnimation::FixedFlags(2, true), 200);
    EXPECT_EQ(window.pos(), QPoint(50 - 120, 40));
    EXPECT_EQ(animator.Geometry(&window), QRect(50, 40, 120, 90)) << "its place reads as the final one";
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.mask().boundingRect().width(), 1) << "nothing shows yet";
    animator.Finish(&window);
    EXPECT_EQ(window.geometry(), QRect(50, 40, 120, 90));
    EXPECT_TRUE(window.mask().isEmpty());
}

TEST(LegendWindowWidgetImageTest, MaskColourBecomesTransparent) {
    RgbaRaster raster(2, 1, LegendPreview::kMaskColor);
    raster.SetPixel(1, 0, 0x00336699);  // 0x00BBGGRR
    const QImage image = LegendWindowWidget::ToImage(raster);
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    EXPECT_EQ(image.pixel(1, 0), qRgb(0x99, 0x66, 0x33));
}

}  // namespace
}  // namespace vexplot
