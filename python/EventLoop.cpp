#include "EventLoop.h"

#include <Python.h>
#include <pybind11/pybind11.h>

#include <QApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>
#include <cstdlib>

namespace vexplot::python {

namespace {

namespace py = pybind11;

bool HasDisplay() {
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        const char* value = std::getenv(name);
        if (value && *value) return true;
    }
    return false;
}

bool AnyWindowVisible() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible()) return true;
    return false;
}

// Runs `loop` with a timer that lets Python see Ctrl+C: a pending signal
// stops the loop, and its exception is raised once the loop has returned.
void RunChecked(QEventLoop& loop) {
    bool interrupted = false;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, [&] {
        if (PyErr_CheckSignals() != 0) {
            interrupted = true;
            loop.quit();
        }
    });
    check.start(100);
    loop.exec();
    if (interrupted) throw py::error_already_set();
}

}  // namespace

void EventLoop::EnsureApplication() {
    if (QCoreApplication::instance()) {
        if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
            throw std::runtime_error("the process already runs a Qt application without widgets");
        return;
    }
    // Without a display Qt would abort the process; tell the script instead.
    if (!HasDisplay())
        throw std::runtime_error("no display to show the control on (set DISPLAY, or QT_QPA_PLATFORM=offscreen)");
    // QApplication keeps references to its arguments for its whole life,
    // which is the rest of the process: it is never destroyed, as Python
    // gives no moment at exit when no widget could still be alive.
    static int argc = 1;
    static char name[] = "vexplot";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
    if (!PyOS_InputHook) PyOS_InputHook = &EventLoop::InputHook;
}

void EventLoop::ProcessEvents(int milliseconds) {
    if (!QCoreApplication::instance()) return;
    if (milliseconds <= 0) {
        QApplication::processEvents();
        return;
    }
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    RunChecked(loop);
}

void EventLoop::Exec() {
    if (!QCoreApplication::instance() || !AnyWindowVisible()) return;
    QEventLoop loop;
    QObject::connect(qApp, &QApplication::lastWindowClosed, &loop, &QEventLoop::quit);
    RunChecked(loop);
}

int EventLoop::InputHook() {
    // The prompt waits with the interpreter lock released; the windows'
    // events may call Python (event handlers), so take it for the wait.
    py::gil_scoped_acquire gil;
    if (!QCoreApplication::instance() || !AnyWindowVisible()) return 0;
    QEventLoop loop;
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    loop.exec();
    return 0;
}

}  // namespace vexplot::python
