#include "qt/QtDisplayWatcher.h"

#include <QGuiApplication>
#include <QObject>
#include <QScreen>
#include <mutex>

#include "control/DisplayChangeHook.h"

namespace vexplot {

namespace {

ScreenMode PrimaryScreenMode() {
    // Headless controls of a process whose Qt application has gone.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return {};
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return {};
    const QSize size = screen->size();
    return {screen->depth(), size.width(), size.height()};
}

void Report() { DisplayChangeHook::Instance().Notify(PrimaryScreenMode()); }

void WatchScreen(QScreen* screen, QObject* context) {
    // Qt has no signal of its own for a depth change: a mode switch that
    // changes it comes with a geometry change or a new screen object.
    QObject::connect(screen, &QScreen::geometryChanged, context, [] { Report(); });
}

// Connects the signals through one context object; deleting it disconnects
// them all.
std::function<void()> Watch() {
    auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    if (!app) return {};
    auto* context = new QObject();
    for (QScreen* screen : QGuiApplication::screens()) WatchScreen(screen, context);
    QObject::connect(app, &QGuiApplication::screenAdded, context, [context](QScreen* screen) {
        WatchScreen(screen, context);
        Report();
    });
    QObject::connect(app, &QGuiApplication::screenRemoved, context, [] { Report(); });
    QObject::connect(app, &QGuiApplication::primaryScreenChanged, context, [] { Report(); });
    return [context] { delete context; };
}

}  // namespace

void QtDisplayWatcher::Install() {
    static std::once_flag once;
    std::call_once(once, [] { DisplayChangeHook::Instance().SetPlatform(Watch, PrimaryScreenMode); });
}

}  // namespace vexplot
