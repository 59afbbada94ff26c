#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "qt/dialogs/MessageBoxExtDialog.h"
#include "qt/dialogs/QtDialogRegistry.h"
#include "settings/SettingsStore.h"
#include "site/IControlSite.h"
#include "ui/CMessageBoxExt.h"

namespace vexplot {
namespace {

// The full-control view's message: its three lines beside the information
// icon, the OK button alone; Space ticks the check box and Enter presses
// OK, after which the store keeps the choice.
TEST(MessageBoxExtDialog, ShowsTheMessageAndKeepsTheTickByKeyboard) {
    auto store = SettingsStore::OpenUnshared(":memory:");
    CMessageBoxExt box(CMessageBoxExt::FullModeInfo(), nullptr, store);
    const auto* run = QtDialogRegistry::BuiltIn().Modal(CMessageBoxExt::kName);
    ASSERT_NE(run, nullptr);
    bool checked = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<MessageBoxExtDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), "Kestrune Vexplot Control");
        auto* text = dialog->findChild<QLabel*>("message");
        EXPECT_EQ(text->text().count('\n'), 2);
        EXPECT_FALSE(dialog->findChild<QLabel*>("icon")->pixmap().isNull());
        EXPECT_EQ(dialog->findChildren<QPushButton*>().size(), 1);
        // Nothing overlaps: the text, then the check box, then the button.
        auto* check = dialog->findChild<QCheckBox*>("dontShow");
        auto* ok = dialog->findChild<QPushButton*>("button1");
        EXPECT_GE(check->geometry().top(), text->geometry().bottom());
        EXPECT_GE(ok->geometry().top(), check->geometry().bottom());
        EXPECT_LE(ok->geometry().right(), dialog->width());
        dialog->grab().save(QDir::currentPath() + "/message-box-ext.png");
        QTest::keyClick(check, Qt::Key_Space);
        checked = true;
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    EXPECT_EQ((*run)(box, nullptr), kAnswerOk);
    ASSERT_TRUE(checked);
    EXPECT_TRUE(box.Suppressed());
}

}  // namespace
}  // namespace vexplot
