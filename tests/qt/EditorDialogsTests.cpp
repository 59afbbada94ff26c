#include <gtest/gtest.h>

#include <QComboBox>
#include <QTableView>
#include <vector>

#include "RegisteredDialog.h"
#include "com/ComObject.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/GraphDataFactory.h"
#include "model/CGD_GraphObject.h"
#include "model/DetachedViewHost.h"
#include "qt/dialogs/ColorBarWidget.h"
#include "qt/dialogs/DataEditorDialog.h"
#include "qt/dialogs/PaletteEditorDialog.h"
#include "control/HeadlessSite.h"
#include "ui/CUIW_DataEditor.h"
#include "ui/PaletteEditor.h"
#include "ui/RememberedCustomPalette.h"

namespace vexplot {
namespace {

TEST(PaletteEditorDialog, DrawsTheBarAndMarkersAndEditsFromTheKeyboard) {
    RememberedCustomPalette::Forget();
    int changes = 0;
    PaletteEditor logic(1024, [&](const PaletteEditor&) { ++changes; });
    PaletteEditorDialog dialog(logic, nullptr);
    dialog.show();
    ColorBarWidget* bar = dialog.Bar();
    const int y = ColorBarWidget::kBarHeight / 2;
    const int markerY = ColorBarWidget::kBarHeight + ColorBarWidget::kMarkerHeight - 3;
    auto pixel = [&](int x, int py) { return bar->grab().toImage().pixelColor(x * bar->devicePixelRatio(), py * bar->devicePixelRatio()); };
    // The rainbow runs from blue on the left to (nearly) red on the right;
    // no markers outside custom mode.
    const QColor left = pixel(bar->BarLeft() + 1, y), right = pixel(bar->BarLeft() + bar->BarWidth() - 2, y);
    EXPECT_TRUE(left.blue() == 255 && left.green() < 16 && left.red() == 0) << left.name().toStdString();
    EXPECT_TRUE(right.red() == 255 && right.green() < 16 && right.blue() == 0) << right.name().toStdString();
    const QColor background = pixel(bar->BarLeft(), markerY);

    emit dialog.TypeList()->activated(PaletteEditor::kCustom);
    EXPECT_TRUE(logic.CustomMode());
    EXPECT_EQ(pixel(bar->XOf(50), markerY), QColor(0, 255, 0));  // the green marker at 50
    EXPECT_NE(pixel(bar->XOf(50), markerY), background);
    KeepPicture(dialog, "palette-editor");

    // Keys: Right picks the next marker, Shift+Right moves it one percent.
    bar->setFocus();
    PressKey(bar, Qt::Key_Right);
    PressKey(bar, Qt::Key_Right);
    EXPECT_EQ(bar->SelectedMarker(), std::optional<size_t>(1));
    PressKey(bar, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(logic.BaseColors()[1].position, 26);
    PressKey(bar, Qt::Key_Delete);
    EXPECT_EQ(logic.BaseColors().size(), 4u);
    // Escape cancels the dialog.
    PressKey(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(changes, 3);
    RememberedCustomPalette::Forget();
}

// The data editor over a 4096 x 4096 grid: the view asks only for what is
// in sight, the highest Y row shows on top, and text typed into a cell is
// refused without touching the data.
TEST(DataEditorDialog, OpensAFullSizeGridAndRefusesText) {
    RegisterGraphDataClass();
    constexpr int32_t n = 4096;
    std::vector<double> z(size_t{n} * n);
    for (size_t i = 0; i < z.size(); ++i) z[i] = static_cast<double>(i % n);  // the Y index
    auto data = CreateGraphData(z, n, n);
    auto host = MakeComObject<DetachedViewHost>();
    CGD_GraphObject graph;
    graph.Attach(data.Get(), host.Get(), true);
    HeadlessSite site(stderr);
    CUIW_DataEditor* logic = nullptr;
    graph.OpenDataEditor([&](const CGD_GraphObject::DataEditorContents& contents) {
        auto editor = std::make_unique<CUIW_DataEditor>(graph, contents, site, nullptr);
        logic = editor.get();
        return editor;
    });
    ASSERT_NE(logic, nullptr);
    DataEditorDialog dialog(*logic, nullptr);
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);  // it lives on this stack
    dialog.show();
    QTableView* grid = dialog.Grid();
    EXPECT_EQ(grid->model()->rowCount(), n);
    EXPECT_EQ(grid->model()->index(0, 7).data().toString(), "4.095000e+03");
    EXPECT_EQ(grid->model()->headerData(0, Qt::Vertical).toString(), "4095");
    KeepPicture(dialog, "data-editor");

    grid->setCurrentIndex(grid->model()->index(0, 1));
    EXPECT_FALSE(grid->model()->setData(grid->model()->index(0, 1), "volts"));
    EXPECT_TRUE(grid->model()->setData(grid->model()->index(0, 1), "12.5 V"));
    double value = 0.0;
    ASSERT_EQ(data->GetValue(1, n - 1, &value), S_OK);
    EXPECT_EQ(value, 12.5);
    EXPECT_EQ(grid->model()->index(0, 1).data().toString(), "1.250000e+01");
    dialog.accept();  // "Save Data"
    EXPECT_FALSE(logic->WindowExists());
}

}  // namespace
}  // namespace vexplot
