#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "control/CUI_VexplotCtrl.h"
#include "qt/dialogs/PropertySheetDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "settings/SettingsStore.h"
#include "site/IControlSite.h"

namespace vexplot {
namespace {

Variant Property(CUI_VexplotCtrl& control, const char* name) {
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(control.GetIDsOfNames(GUID_NULL, &name, 1, 0, &id), S_OK);
    return control.GetProperty(id);
}

// The sheet filled from a control, worked by keyboard: a rotation out of
// range is refused with the message and the focus back on its edit; once
// corrected, Enter applies through the control's properties.
TEST(PropertySheetDialog, FillsFromTheControlAndAppliesByKeyboard) {
    auto store = SettingsStore::OpenUnshared(":memory:");
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>(nullptr, store);
    ControlPropertySheet sheet(ComPtr<IDispatch>(static_cast<IDispatch*>(control.Get())), nullptr, store);
    sheet.Fill();
    const auto* run = QtDialogRegistry::BuiltIn().Modal(ControlPropertySheet::kName);
    ASSERT_NE(run, nullptr);
    QString refusal;
    bool checked = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<PropertySheetDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), "Vexplot Control Properties");
        auto* tabs = dialog->findChild<QTabWidget*>("pages");
        ASSERT_EQ(tabs->count(), 6);
        EXPECT_EQ(tabs->tabText(5), "Z-Axis");
        auto* swatch = dialog->findChild<QToolButton*>("InfoTextColor");
        ASSERT_NE(swatch, nullptr);
        EXPECT_EQ(swatch->toolTip(), "Text Color; Click to change");
        auto* font = dialog->findChild<QLineEdit*>("InfoFont");
        EXPECT_EQ(font->text(), "Arial, 8, Normal");
        auto* ticks = dialog->findChild<QLineEdit*>("YMajorTicks");
        EXPECT_EQ(ticks->text().toInt(), Property(*control, "YMajorTicks").I2());
        tabs->setCurrentIndex(1);
        dialog->grab().save(QDir::currentPath() + "/property-sheet-3dview.png");

        auto* rotation = dialog->findChild<QLineEdit*>("XCamRotation");
        rotation->setFocus();
        rotation->selectAll();
        QTest::keyClicks(rotation, "1.01");
        tabs->setCurrentIndex(0);
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            refusal = box->text();
            box->accept();
        });
        QTest::keyClick(rotation, Qt::Key_Return);
        EXPECT_EQ(tabs->currentIndex(), 1);  // back on the page of the refused field
        EXPECT_EQ(dialog->focusWidget(), rotation);
        rotation->selectAll();
        QTest::keyClicks(rotation, "-0.5");
        checked = true;
        QTest::keyClick(rotation, Qt::Key_Return);
    });
    ASSERT_EQ((*run)(sheet, nullptr), kAnswerOk);
    ASSERT_TRUE(checked);
    EXPECT_EQ(refusal, "Please enter a number between -1 and 1.");
    EXPECT_EQ(Property(*control, "XCamRotation").R8(), -0.5);
}

}  // namespace
}  // namespace vexplot
