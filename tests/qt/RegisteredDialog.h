#pragma once
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QTimer>
#include <functional>

#include "qt/dialogs/QtDialogRegistry.h"
#include "site/IControlSite.h"

namespace vexplot {

// Runs the Qt dialog registered under `logic`'s name, modal, as the Qt site
// does; `play` works the window once it shows and must close it. A dialog
// that is not registered, or that never showed, fails the test.
inline int32_t RunRegisteredDialog(IDialogLogic& logic, const std::function<void(QWidget&)>& play) {
    const QtDialogRegistry::RunModal* run = QtDialogRegistry::BuiltIn().Modal(logic.DialogName());
    EXPECT_NE(run, nullptr) << logic.DialogName();
    if (!run) return -1;
    bool shown = false;
    QTimer::singleShot(0, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        shown = true;
        play(*dialog);
    });
    const int32_t answer = (*run)(logic, nullptr);
    EXPECT_TRUE(shown) << logic.DialogName();
    return answer;
}

// A key pressed in `target` as a keyboard user presses it.
inline void PressKey(QWidget* target, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(target, &press);
}

// Keeps a picture of `widget` beside the test binary for a person to look at.
inline void KeepPicture(QWidget& widget, const QString& name) {
    widget.grab().save(QDir::currentPath() + "/" + name + ".png");
}

}  // namespace vexplot
