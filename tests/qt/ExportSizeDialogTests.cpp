#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "qt/dialogs/ExportSizeDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "site/IControlSite.h"
#include "ui/ExportSizeChooser.h"

namespace vexplot {
namespace {

// The registered dialog, worked by keyboard: the strip starts on the first
// preset with its edits disabled, "Custom" enables them, and Enter in the
// name field confirms name and size together.
TEST(ExportSizeDialog, TheStripChoosesTheSizeByKeyboard) {
    const auto* run = QtDialogRegistry::BuiltIn().Modal(ExportSizeChooser::kName);
    ASSERT_NE(run, nullptr);
    ExportSizeChooser chooser = ExportSizeChooser::ForBitmap();
    chooser.SetInitialName(QDir::tempPath().toStdString() + "/vexplot-export-test");
    bool checked = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<ExportSizeDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto* width = dialog->findChild<QLineEdit*>("widthEdit");
        auto* height = dialog->findChild<QLineEdit*>("heightEdit");
        auto* sizes = dialog->findChild<QComboBox*>("sizeList");
        ASSERT_TRUE(width && height && sizes);
        EXPECT_EQ(width->text(), "640");
        EXPECT_FALSE(width->isEnabled());
        EXPECT_EQ(sizes->count(), 4);
        dialog->grab().save(QDir::currentPath() + "/export-size-dialog.png");
        sizes->setCurrentIndex(ExportSizeChooser::kCustom);
        EXPECT_TRUE(width->isEnabled());
        width->setFocus();
        width->selectAll();
        QTest::keyClicks(width, "1234");
        height->selectAll();
        QTest::keyClicks(height, "56x");
        checked = true;
        auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr);
        QTest::keyClick(name, Qt::Key_Return);
    });
    ASSERT_EQ((*run)(chooser, nullptr), kAnswerOk);
    ASSERT_TRUE(checked);
    ASSERT_TRUE(chooser.Chosen());
    EXPECT_EQ(chooser.Chosen()->fileName, QDir::tempPath().toStdString() + "/vexplot-export-test.BMP");
    EXPECT_EQ(chooser.Chosen()->width, 1234);
    EXPECT_EQ(chooser.Chosen()->height, 56);
}

}  // namespace
}  // namespace vexplot
