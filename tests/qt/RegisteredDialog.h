#pragma once
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QPointer>
#include <QTimer>
#include <functional>

#include "qt/dialogs/QtDialogRegistry.h"
#include "site/IControlSite.h"

namespace vexplot {

// Calls `open`, which runs a modal dialog; `play` works the window once it
// shows. A window the play leaves open (done, or cut short by a failed
// assertion) is closed after it, so that `open` returns. A dialog that
// never showed fails the test.
inline void WhileModal(const std::function<void()>& open, const std::function<void(QWidget&)>& play) {
    bool shown = false;
    QTimer::singleShot(0, [&] {
        const QPointer<QWidget> dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        shown = true;
        play(*dialog);
        if (dialog && dialog->isVisible()) dialog->close();
    });
    open();
    EXPECT_TRUE(shown);
}

// Runs the Qt dialog registered under `logic`'s name, modal, as the Qt site
// does, and returns its answer.
inline int32_t RunRegisteredDialog(IDialogLogic& logic, const std::function<void(QWidget&)>& play) {
    const QtDialogRegistry::RunModal* run = QtDialogRegistry::BuiltIn().Modal(logic.DialogName());
    EXPECT_NE(run, nullptr) << logic.DialogName();
    if (!run) return -1;
    int32_t answer = -1;
    WhileModal([&] { answer = (*run)(logic, nullptr); }, play);
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
