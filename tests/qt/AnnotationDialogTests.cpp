// The annotation property dialogs in Qt on the offscreen platform: each
// opens from the registry under its logic's name with its caption and
// fields; keyboard OK applies, Escape leaves the object; a picture of each
// is kept beside the test binary for a person to look at.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

#include "annotations/CGD_Label.h"
#include "annotations/CGD_Marker.h"
#include "annotations/CGD_Region.h"
#include "annotations/LabelDialog.h"
#include "annotations/MarkerDialog.h"
#include "annotations/RegionDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "site/IControlSite.h"

namespace vexplot {
namespace {

// Runs the registry's dialog for `logic`; `play` acts on the open window.
int32_t RunWith(IDialogLogic& logic, const std::function<void(QWidget&)>& play) {
    const QtDialogRegistry::RunModal* run = QtDialogRegistry::BuiltIn().Modal(logic.DialogName());
    EXPECT_TRUE(run) << logic.DialogName();
    if (!run) return -1;
    QTimer::singleShot(0, [play] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        play(*dialog);
    });
    return (*run)(logic, nullptr);
}

void Key(QWidget& widget, int key) {
    QWidget* target = widget.focusWidget() ? widget.focusWidget() : &widget;
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
}

TEST(AnnotationDialogs, EnterAppliesTheFieldsAndEscapeLeavesTheObject) {
    CGD_Marker marker;
    marker.SetPosition(1, 2, 3);
    MarkerDialog logic(marker);
    const int32_t answer = RunWith(logic, [](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Marker Properties");
        const auto edits = dialog.findChildren<QLineEdit*>();
        ASSERT_EQ(edits.size(), 4);  // X, Y, Z and the label
        edits[0]->setText("4.5");
        edits[3]->setText("summit");
        dialog.findChild<QCheckBox*>()->setChecked(false);
        dialog.grab().save(QString("annotation_dialog_%1.png").arg(dialog.objectName()));
        edits[0]->setFocus();
        Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(answer, kAnswerOk);
    EXPECT_EQ(marker.GetX(), 4.5);
    EXPECT_EQ(marker.GetCaption(), "summit");
    EXPECT_FALSE(marker.DrawLines());

    MarkerDialog again(marker);
    EXPECT_EQ(RunWith(again,
                      [](QWidget& dialog) {
                          dialog.findChildren<QLineEdit*>()[3]->setText("never");
                          Key(dialog, Qt::Key_Escape);
                      }),
              kAnswerCancel);
    EXPECT_EQ(marker.GetCaption(), "summit");
}

TEST(AnnotationDialogs, ATextInANumberFieldKeepsTheDialogOpenAndWritesNothing) {
    CGD_Region region;
    RegionDialog logic(region);
    int attempts = 0;
    const int32_t answer = RunWith(logic, [&attempts](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Region property");
        dialog.grab().save(QString("annotation_dialog_%1.png").arg(dialog.objectName()));
        dialog.findChildren<QLineEdit*>()[0]->setText("12ab");
        // The refusal shows a message box; it is closed as soon as it shows.
        QTimer::singleShot(0, [&attempts] {
            ++attempts;
            if (QWidget* box = QApplication::activeModalWidget()) box->close();
        });
        Key(dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        Key(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(answer, kAnswerCancel);
    EXPECT_EQ(attempts, 1);
    EXPECT_EQ(region.GetX(), 0.0);
}

TEST(AnnotationDialogs, TheLabelDialogOffersItsFourStyles) {
    CGD_Label label;
    LabelDialog logic(label);
    RunWith(logic, [](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Label Properties");
        dialog.grab().save(QString("annotation_dialog_%1.png").arg(dialog.objectName()));
        Key(dialog, Qt::Key_Escape);
    });
}

}  // namespace
}  // namespace vexplot
