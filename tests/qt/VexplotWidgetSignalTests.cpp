#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QToolTip>
#include <string>
#include <vector>

#include "BuildTreeEngine.h"
#include "control/CUI_VexplotCtrl.h"
#include "dataobject/IGraphDataAccess.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_GraphObjectList.h"
#include "qt/VexplotWidget.h"

namespace vexplot {
namespace {

// The widget's signals as a host connects to them. The events are fired
// the way the control fires them (through its own methods where one
// exists), so the path through the connection point is the real one.
class VexplotWidgetSignalTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { RegisterBuildTreeEngine(); }

    void SetUp() override {
        widget = std::make_unique<VexplotWidget>();
        widget->resize(400, 300);
        QApplication::processEvents();
    }

    std::unique_ptr<VexplotWidget> widget;
};

TEST_F(VexplotWidgetSignalTest, AnInvalidGraphModeRaisesTheErrorSignalOnce) {
    std::vector<std::pair<int, QString>> errors;
    QObject::connect(widget.get(), &VexplotWidget::errorRaised,
                     [&](int code, const QString& text) { errors.emplace_back(code, text); });
    widget->Control().SetGraphMode(9);
    // The control fires Error on both event interfaces; the widget listens
    // on one, so a host sees each error once.
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(static_cast<uint32_t>(errors[0].first), 0x800A017Cu);
    EXPECT_EQ(errors[0].second, "Sorry, property value isn't valid.");
}

TEST_F(VexplotWidgetSignalTest, SelectionAndResamplingCarryTheirRanges) {
    std::vector<std::vector<double>> selected, resampled;
    QObject::connect(widget.get(), &VexplotWidget::dataSelect,
                     [&](double a, double b, double c, double d, double e, double f) {
                         selected.push_back({a, b, c, d, e, f});
                     });
    QObject::connect(widget.get(), &VexplotWidget::resample,
                     [&](double a, double b, double c, double d) { resampled.push_back({a, b, c, d}); });
    CUI_VexplotCtrl& control = widget->Control();
    control.FireDataSelect(DataRect{-1.0, 2.0, 3.0, 4.5}, -7.0, 8.0);
    control.FireResample(DataRect{0.25, 0.5, 10.0, 20.0});

    ASSERT_EQ(selected.size(), 1u);
    EXPECT_EQ(selected[0], (std::vector<double>{-1.0, 2.0, 3.0, 4.5, -7.0, 8.0}));
    ASSERT_EQ(resampled.size(), 1u);
    EXPECT_EQ(resampled[0], (std::vector<double>{0.25, 0.5, 10.0, 20.0}));
}

// A mouse move over the plot fires the event when the host asked for cell
// tool tips, and the slot's text is shown as the tool tip.
TEST_F(VexplotWidgetSignalTest, AMouseMoveOverACellShowsTheSlotsTextAsToolTip) {
    ASSERT_TRUE(widget->LoadDataFile(VEXPLOT_EXAMPLES_DIR "/peaks.3do"));
    widget->show();
    QApplication::processEvents();
    std::vector<double> seen;
    bool answer = true;
    QObject::connect(widget.get(), &VexplotWidget::dataCellMouseOver, [&](double x, double y, double z, bool select) {
        seen = {x, y, z, select ? 1.0 : 0.0};
        if (answer) widget->SetDataCellText(QString("z = %1").arg(z));
    });
    QWidget* view = widget->WindowWidget(static_cast<int>(WindowRole::View3D));
    ASSERT_NE(view, nullptr);
    auto move = [&] {
        const QPointF at(view->width() / 2.0, view->height() / 2.0);
        QMouseEvent event(QEvent::MouseMove, at, view->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(view, &event);
    };
    move();
    EXPECT_TRUE(seen.empty());
    widget->Control().EnableCustomDataCellToolTip(1);
    move();
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_EQ(QToolTip::text(), QString("z = %1").arg(seen[2]));
    // The cell is a grid node: its value is the data's own.
    double z = 0;
    ComPtr<IGraphDataAccess> access(widget->Control().GetGraphObjects()->Active()->Access());
    ASSERT_EQ(access->GetValueAt(seen[0], seen[1], &z), S_OK);
    EXPECT_EQ(z, seen[2]);

    // A slot that gives no text leaves the control's own, and the answer to
    // the move above does not stick to this event.
    answer = false;
    std::string text = "own";
    widget->Control().FireDataCellMouseOver(1.5, 2.5, -3.0, true, &text);
    EXPECT_EQ(text, "own");
    EXPECT_EQ(seen, (std::vector<double>{1.5, 2.5, -3.0, 1.0}));
}

}  // namespace
}  // namespace vexplot
