// The dialogs the Qt site opens by their logic's name, worked by keyboard on
// the offscreen platform: each shows its caption and fields, OK or Enter
// applies what the logic validates, a refusal keeps the dialog open, and
// Escape leaves everything as it was. A picture of each is kept beside the
// test binary for a person to look at.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include "RegisteredDialog.h"
#include "annotations/CGD_Label.h"
#include "annotations/CGD_Marker.h"
#include "annotations/CGD_Region.h"
#include "annotations/LabelDialog.h"
#include "annotations/MarkerDialog.h"
#include "annotations/RegionDialog.h"
#include "control/CUI_VexplotCtrl.h"
#include "qt/dialogs/PropertySheetDialog.h"
#include "settings/SettingsStore.h"
#include "ui/CMessageBoxExt.h"
#include "ui/ExportSizeChooser.h"

namespace vexplot {
namespace {

TEST(AnnotationDialogs, EnterAppliesTheFieldsAndEscapeLeavesTheObject) {
    CGD_Marker marker;
    marker.SetPosition(1, 2, 3);
    MarkerDialog logic(marker);
    const int32_t answer = RunRegisteredDialog(logic, [](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Marker Properties");
        const auto edits = dialog.findChildren<QLineEdit*>();
        ASSERT_EQ(edits.size(), 4);  // X, Y, Z and the label
        edits[0]->setText("4.5");
        edits[3]->setText("summit");
        dialog.findChild<QCheckBox*>()->setChecked(false);
        KeepPicture(dialog, "annotation_dialog_" + dialog.objectName());
        edits[0]->setFocus();
        PressKey(edits[0], Qt::Key_Return);
    });
    EXPECT_EQ(answer, kAnswerOk);
    EXPECT_EQ(marker.GetX(), 4.5);
    EXPECT_EQ(marker.GetCaption(), "summit");
    EXPECT_FALSE(marker.DrawLines());

    MarkerDialog again(marker);
    EXPECT_EQ(RunRegisteredDialog(again,
                                  [](QWidget& dialog) {
                                      dialog.findChildren<QLineEdit*>()[3]->setText("never");
                                      PressKey(&dialog, Qt::Key_Escape);
                                  }),
              kAnswerCancel);
    EXPECT_EQ(marker.GetCaption(), "summit");
}

TEST(AnnotationDialogs, ATextInANumberFieldKeepsTheDialogOpenAndWritesNothing) {
    CGD_Region region;
    RegionDialog logic(region);
    int refusals = 0;
    const int32_t answer = RunRegisteredDialog(logic, [&refusals](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Region property");
        KeepPicture(dialog, "annotation_dialog_" + dialog.objectName());
        dialog.findChildren<QLineEdit*>()[0]->setText("12ab");
        // The refusal shows a message box; it is closed as soon as it shows.
        QTimer::singleShot(0, [&refusals] {
            ++refusals;
            if (QWidget* box = QApplication::activeModalWidget()) box->close();
        });
        PressKey(&dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        PressKey(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(answer, kAnswerCancel);
    EXPECT_EQ(refusals, 1);
    EXPECT_EQ(region.GetX(), 0.0);
}

TEST(AnnotationDialogs, TheLabelDialogOffersItsFourStyles) {
    CGD_Label label;
    LabelDialog logic(label);
    RunRegisteredDialog(logic, [](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Label Properties");
        const auto* styles = dialog.findChild<QComboBox*>();
        ASSERT_NE(styles, nullptr);
        ASSERT_EQ(styles->count(), 4);
        EXPECT_EQ(styles->itemText(3), "Base10");
        KeepPicture(dialog, "annotation_dialog_" + dialog.objectName());
        PressKey(&dialog, Qt::Key_Escape);
    });
}

// The strip starts on the first preset with its edits disabled, "Custom"
// enables them, and Enter in the name field confirms name and size together.
TEST(ExportSizeDialog, TheStripChoosesTheSizeByKeyboard) {
    ExportSizeChooser chooser = ExportSizeChooser::ForBitmap();
    const std::string name = QDir::tempPath().toStdString() + "/vexplot-export-test";
    chooser.SetInitialName(name);
    const int32_t answer = RunRegisteredDialog(chooser, [](QWidget& dialog) {
        auto* width = dialog.findChild<QLineEdit*>("widthEdit");
        auto* height = dialog.findChild<QLineEdit*>("heightEdit");
        auto* sizes = dialog.findChild<QComboBox*>("sizeList");
        auto* fileName = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_TRUE(width && height && sizes && fileName);
        EXPECT_EQ(width->text(), "640");
        EXPECT_FALSE(width->isEnabled());
        EXPECT_EQ(sizes->count(), 4);
        KeepPicture(dialog, "export-size-dialog");
        sizes->setCurrentIndex(ExportSizeChooser::kCustom);
        EXPECT_TRUE(width->isEnabled());
        width->setFocus();
        width->selectAll();
        QTest::keyClicks(width, "1234");
        height->selectAll();
        QTest::keyClicks(height, "56x");
        QTest::keyClick(fileName, Qt::Key_Return);
    });
    ASSERT_EQ(answer, kAnswerOk);
    ASSERT_TRUE(chooser.Chosen());
    EXPECT_EQ(chooser.Chosen()->fileName, name + ".BMP");
    EXPECT_EQ(chooser.Chosen()->width, 1234);
    EXPECT_EQ(chooser.Chosen()->height, 56);
}

// The full-control view's message: its three lines beside the information
// icon, the OK button alone; Space ticks the check box and Enter presses
// OK, after which the store keeps the choice.
TEST(MessageBoxExtDialog, ShowsTheMessageAndKeepsTheTickByKeyboard) {
    CMessageBoxExt box(CMessageBoxExt::FullModeInfo(), nullptr, SettingsStore::OpenUnshared(":memory:"));
    const int32_t answer = RunRegisteredDialog(box, [](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Kestrune Vexplot Control");
        auto* text = dialog.findChild<QLabel*>("message");
        EXPECT_EQ(text->text().count('\n'), 2);
        EXPECT_FALSE(dialog.findChild<QLabel*>("icon")->pixmap().isNull());
        EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1);
        // Nothing overlaps: the text, then the check box, then the button.
        auto* check = dialog.findChild<QCheckBox*>("dontShow");
        auto* ok = dialog.findChild<QPushButton*>("button1");
        EXPECT_GE(check->geometry().top(), text->geometry().bottom());
        EXPECT_GE(ok->geometry().top(), check->geometry().bottom());
        EXPECT_LE(ok->geometry().right(), dialog.width());
        KeepPicture(dialog, "message-box-ext");
        QTest::keyClick(check, Qt::Key_Space);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(answer, kAnswerOk);
    EXPECT_TRUE(box.Suppressed());
}

Variant Property(CUI_VexplotCtrl& control, const char* name) {
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(control.GetIDsOfNames(GUID_NULL, &name, 1, 0, &id), S_OK);
    return control.GetProperty(id);
}

// The sheet filled from a control: a rotation out of range is refused with
// the message and the focus back on its edit; once corrected, Enter applies
// through the control's properties.
TEST(PropertySheetDialog, FillsFromTheControlAndAppliesByKeyboard) {
    auto store = SettingsStore::OpenUnshared(":memory:");
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>(nullptr, store);
    ControlPropertySheet sheet(ComPtr<IDispatch>(static_cast<IDispatch*>(control.Get())), nullptr, store);
    sheet.Fill();
    QString refusal;
    const int32_t answer = RunRegisteredDialog(sheet, [&](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Vexplot Control Properties");
        auto* tabs = dialog.findChild<QTabWidget*>("pages");
        ASSERT_EQ(tabs->count(), 6);
        EXPECT_EQ(tabs->tabText(5), "Z-Axis");
        auto* swatch = dialog.findChild<QToolButton*>("InfoTextColor");
        ASSERT_NE(swatch, nullptr);
        EXPECT_EQ(swatch->toolTip(), "Text Color; Click to change");
        EXPECT_EQ(dialog.findChild<QLineEdit*>("InfoFont")->text(), "Arial, 8, Normal");
        auto* ticks = dialog.findChild<QLineEdit*>("YMajorTicks");
        EXPECT_EQ(ticks->text().toInt(), Property(*control, "YMajorTicks").I2());
        tabs->setCurrentIndex(1);
        KeepPicture(dialog, "property-sheet-3dview");

        auto* rotation = dialog.findChild<QLineEdit*>("XCamRotation");
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
        EXPECT_EQ(dialog.focusWidget(), rotation);
        rotation->selectAll();
        QTest::keyClicks(rotation, "-0.5");
        QTest::keyClick(rotation, Qt::Key_Return);
    });
    ASSERT_EQ(answer, kAnswerOk);
    EXPECT_EQ(refusal, "Please enter a number between -1 and 1.");
    EXPECT_EQ(Property(*control, "XCamRotation").R8(), -0.5);
}

}  // namespace
}  // namespace vexplot
