#include "ScreenshotRun.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <vector>

#include "ViewerWindow.h"
#include "site/IControlSite.h"
#include "qt/VexplotWidget.h"

namespace vexplot {

namespace {

constexpr int kPaintTimeoutMs = 5000;
// Time after the first paint for what follows it: the legend's and the
// info window's slide-in animations, layout passes, repaints.
constexpr int kSettleMs = 800;

const char* RoleName(int role) {
    switch (static_cast<WindowRole>(role)) {
        case WindowRole::Control: return "control";
        case WindowRole::View2D: return "view2d";
        case WindowRole::View3D: return "view3d";
        case WindowRole::Title: return "title";
        case WindowRole::MenuButton: return "menuButton";
        case WindowRole::LegendButton: return "legendButton";
        case WindowRole::StatusBar: return "statusBar";
        case WindowRole::InfoWindow: return "infoWindow";
        case WindowRole::LegendWindow: return "legendWindow";
        case WindowRole::Navigator: return "navigator";
        case WindowRole::InfoPopup: return "infoPopup";
    }
    return "unknown";
}

// The control's windows under `window`, tool windows it owns included.
std::vector<QWidget*> ControlWindows(QWidget& window) {
    std::vector<QWidget*> found;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->property("vexplotRole").isValid()) found.push_back(widget);
    return found;
}

int RoleOf(const QWidget* widget) { return widget->property("vexplotRole").toInt(); }

// Runs the event loop for `milliseconds`.
void ProcessEventsFor(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

// Ends `loop` once a paint event of a watched widget has been handled.
class PaintWatcher final : public QObject {
public:
    explicit PaintWatcher(QEventLoop& loop) : loop_(loop) {}
    bool Seen() const { return seen_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !seen_) {
            seen_ = true;
            // Queued, so that the paint this filter precedes completes first.
            QMetaObject::invokeMethod(&loop_, &QEventLoop::quit, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QEventLoop& loop_;
    bool seen_ = false;
};

// Waits until a visible view window paints, at most kPaintTimeoutMs.
bool WaitForViewPaint(ViewerWindow& window) {
    QEventLoop loop;
    PaintWatcher watcher(loop);
    for (QWidget* widget : ControlWindows(window.Plot())) {
        const auto role = static_cast<WindowRole>(RoleOf(widget));
        if (role == WindowRole::View2D || role == WindowRole::View3D) {
            widget->installEventFilter(&watcher);
            widget->update();
        }
    }
    QTimer::singleShot(kPaintTimeoutMs, &loop, &QEventLoop::quit);
    loop.exec();
    return watcher.Seen();
}

// Where `widget` lies in the window's picture, in the picture's pixels.
QRect PictureRect(const QWidget& window, const QWidget& widget, qreal ratio) {
    const QPoint origin = widget.mapToGlobal(QPoint(0, 0)) - window.mapToGlobal(QPoint(0, 0));
    const QRectF logical(origin, widget.size());
    return QRectF(logical.topLeft() * ratio, logical.size() * ratio).toAlignedRect();
}

// The window with its own tool windows painted over it where they lie.
QImage GrabWindow(QWidget& window) {
    QPixmap picture = window.grab();
    QPainter painter(&picture);
    for (QWidget* child : window.findChildren<QWidget*>()) {
        if (!child->isWindow() || !child->isVisible() || qobject_cast<QDialog*>(child)) continue;
        const QPoint origin = child->mapToGlobal(QPoint(0, 0)) - window.mapToGlobal(QPoint(0, 0));
        painter.drawPixmap(origin, child->grab());
    }
    painter.end();
    return picture.toImage();
}

// The plot in front's windows (the other tabs' are hidden with them).
QJsonObject Geometry(ViewerWindow& window, const QImage& picture) {
    const qreal ratio = picture.devicePixelRatio();
    QJsonArray windows;
    for (QWidget* widget : ControlWindows(window.Plot())) {
        const QRect r = PictureRect(window, *widget, ratio);
        QJsonObject entry{{"role", RoleName(RoleOf(widget))},
                          {"x", r.x()},
                          {"y", r.y()},
                          {"width", r.width()},
                          {"height", r.height()},
                          {"visible", widget->isVisible()}};
        if (const auto* label = qobject_cast<const QLabel*>(widget)) entry["text"] = label->text();
        windows.append(entry);
    }
    return QJsonObject{{"width", picture.width()},
                       {"height", picture.height()},
                       {"devicePixelRatio", ratio},
                       {"windows", windows}};
}

bool WriteGeometry(const QString& path, const QJsonObject& geometry) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    return file.write(QJsonDocument(geometry).toJson()) > 0;
}

}  // namespace

ModalDismisser::ModalDismisser() : timer_(new QTimer(this)) {
    connect(timer_, &QTimer::timeout, this, &ModalDismisser::Check);
    timer_->start(50);
}

void ModalDismisser::Check() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    if (const auto* box = qobject_cast<const QMessageBox*>(dialog))
        std::fprintf(stderr, "vexplot-viewer: message: %s\n", qPrintable(box->text()));
    else
        std::fprintf(stderr, "vexplot-viewer: dismissed dialog '%s'\n", qPrintable(dialog->windowTitle()));
    ++dismissed_;
    dialog->reject();
}

int RunScreenshot(ViewerWindow& window, const ModalDismisser& dismisser, const QString& path, QSize size,
                  const QStringList& files, bool flatView) {
    window.resize(size);
    window.show();
    if (!window.Plot().IsReady()) return 1;  // the window has said why
    QWidget* first = nullptr;
    for (const QString& file : files) {
        QString error;
        if (!window.OpenFile(file, &error)) {
            std::fprintf(stderr, "vexplot-viewer: cannot open %s: %s\n", qPrintable(file), qPrintable(error));
            return 1;
        }
        if (!first) first = &window.Plot();
    }
    if (first) window.ShowPlot(*first);
    if (flatView) window.ShowFlatView(true);
    if (!WaitForViewPaint(window))
        std::fprintf(stderr, "vexplot-viewer: the view did not paint within %d ms\n", kPaintTimeoutMs);
    ProcessEventsFor(kSettleMs);
    if (dismisser.Dismissed() > 0) return 1;

    const QImage picture = GrabWindow(window);
    if (picture.isNull() || !picture.save(path)) {
        std::fprintf(stderr, "vexplot-viewer: cannot write %s\n", qPrintable(path));
        return 1;
    }
    const QString geometryPath = path + ".json";
    if (!WriteGeometry(geometryPath, Geometry(window, picture))) {
        std::fprintf(stderr, "vexplot-viewer: cannot write %s\n", qPrintable(geometryPath));
        return 1;
    }
    std::printf("%s\n", qPrintable(path));
    return 0;
}

}  // namespace vexplot
