// The help windows as the user opens them from the control's menu: the
// keyboard map and the about box, drawn by Qt over their logic.
#include <gtest/gtest.h>

#include <QLabel>
#include <QTableWidget>

#include "RegisteredDialog.h"
#include "ShownWidgetTest.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "control/KeyboardMapLogic.h"
#include "qt/VexplotWidget.h"

namespace vexplot {
namespace {

using HelpDialogTest = ShownWidgetTest;

TEST_F(HelpDialogTest, KeyboardMapShowsEveryRowOfTheTables) {
    const KeyboardMapLogic logic;
    WhileModal([&] { EXPECT_TRUE(widget->Control().DoCommand(cmd::kKeyboardMap)); },
               [&](QWidget& dialog) {
                   const auto* table = dialog.findChild<QTableWidget*>();
                   ASSERT_NE(table, nullptr);
                   ASSERT_EQ(table->rowCount(), static_cast<int>(logic.Rows().size()));
                   QStringList lines;
                   for (int row = 0; row < table->rowCount(); ++row)
                       lines << table->item(row, 0)->text() + " " + table->item(row, 1)->text();
                   EXPECT_TRUE(lines.contains("Ctrl+Alt+S Save Vexplot")) << lines.join(", ").toStdString();
                   EXPECT_TRUE(lines.contains("Keypad 0 Zoom to all")) << lines.join(", ").toStdString();
               });
}

TEST_F(HelpDialogTest, AboutBoxNamesTheRunningEngineAndItsRenderer) {
    WhileModal([&] { EXPECT_TRUE(widget->Control().DoCommand(cmd::kAbout)); },
               [&](QWidget& dialog) {
                   QStringList texts;
                   for (const QLabel* label : dialog.findChildren<QLabel*>()) texts << label->text();
                   EXPECT_TRUE(texts.contains("OpenGL")) << texts.join(" | ").toStdString();
                   EXPECT_TRUE(texts.contains(":memory:")) << texts.join(" | ").toStdString();
                   // The renderer the driver names, whatever it is, never "unknown".
                   EXPECT_FALSE(texts.contains("unknown")) << texts.join(" | ").toStdString();
                   EXPECT_TRUE(texts.contains("Vexplot"));
               });
}

}  // namespace
}  // namespace vexplot
