#include "qt/QtControlSite.h"
#include "qt/dialogs/QtDialogRegistry.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetrics>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QFileDialog>
#include <QMessageBox>
#include <QRegion>
#include <QShortcut>
#include <QTimer>
#include <QToolTip>

#include "control/CommandTable.h"
#include "qt/MenuBuilder.h"
#include "qt/QtInput.h"
#include "qt/QtDisplayWatcher.h"
#include "qt/QtFont.h"
#include "qt/QtWindowFactory.h"
#include "qt/ViewWindow.h"
#include "qt/WindowAnimator.h"

namespace vexplot {

namespace {

QRect ToQRect(const PixelRect& r) { return QRect(r.left, r.top, r.right - r.left, r.bottom - r.top); }

Qt::CursorShape QtCursor(CursorShape shape) {
    switch (shape) {
        case CursorShape::Cross: return Qt::CrossCursor;
        case CursorShape::Hand: return Qt::PointingHandCursor;
        case CursorShape::SizeAll: return Qt::SizeAllCursor;
        case CursorShape::Zoom: return Qt::SizeVerCursor;
        case CursorShape::Wait: return Qt::WaitCursor;
        case CursorShape::Arrow: break;
    }
    return Qt::ArrowCursor;
}

}  // namespace

QtControlSite::QtControlSite(QWidget* host) : host_(host), animator_(std::make_unique<WindowAnimator>()) {
    QtDisplayWatcher::Install();
}

QtControlSite::~QtControlSite() {
    for (auto& [key, timer] : timers_) delete timer;
    // Widgets still alive belong to their parents; the control window is
    // the host's child and goes with it, a tool window is deleted here.
    for (auto& [handle, w] : windows_)
        if (w.widget && w.widget->isWindow()) delete w.widget.data();
}

QtControlSite::Window* QtControlSite::Find(WindowHandle window) {
    const auto it = windows_.find(window);
    return it == windows_.end() ? nullptr : &it->second;
}

const QtControlSite::Window* QtControlSite::Find(WindowHandle window) const {
    const auto it = windows_.find(window);
    return it == windows_.end() ? nullptr : &it->second;
}

QWidget* QtControlSite::Widget(WindowHandle window) const {
    const Window* w = Find(window);
    return w ? w->widget.data() : nullptr;
}

WindowHandle QtControlSite::Find(WindowRole role) const {
    for (const auto& [handle, w] : windows_)
        if (w.role == role) return handle;
    return 0;
}

QWidget* QtControlSite::MakeWidget(WindowRole role, QWidget* parent, IWindowHandler* handler, WindowHandle handle) {
    switch (role) {
        case WindowRole::Control: return new ViewWindow(parent, handler, handle, false);
        case WindowRole::View2D:
        case WindowRole::View3D: return new ViewWindow(parent, handler, handle, true);
        case WindowRole::Title: {
            auto* label = new QLabel(parent);
            label->setAlignment(Qt::AlignCenter);
            label->setAutoFillBackground(true);
            return label;
        }
        case WindowRole::StatusBar: {
            auto* label = new QLabel(parent);
            label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
            label->setContentsMargins(4, 0, 4, 0);
            label->setAutoFillBackground(true);
            return label;
        }
        case WindowRole::InfoPopup: {
            // A tool window of its own, owned by the control's top-level
            // window so that it stays above it and goes with it.
            QWidget* owner = host_ ? host_->window() : nullptr;
            return MakeAuxiliaryWidget(role, owner, Qt::Tool | Qt::FramelessWindowHint);
        }
        default: return MakeAuxiliaryWidget(role, parent, Qt::Widget);
    }
}

WindowHandle QtControlSite::CreateWindow(WindowRole role, WindowHandle parent, const PixelRect& rect,
                                         IWindowHandler* handler) {
    QWidget* parentWidget = parent ? Widget(parent) : host_.data();
    if (!parentWidget && role != WindowRole::InfoPopup) return 0;
    const WindowHandle handle = nextWindow_++;
    QWidget* widget = MakeWidget(role, parentWidget, handler, handle);
    if (!widget) return 0;
    // Lets hosts and tests find a role's widget (findChildren, then this property).
    widget->setProperty("vexplotRole", static_cast<int>(role));
    widget->setGeometry(ToQRect(rect));
    widget->hide();
    // The bars and the views lie at the bottom of the stacking order: the
    // title-bar buttons, the navigator, a docked info window and the legend
    // lie over them, whatever the order they were made in.
    if (role == WindowRole::View2D || role == WindowRole::View3D || role == WindowRole::Title ||
        role == WindowRole::StatusBar)
        widget->lower();
    windows_[handle] = Window{role, widget, handler, false};
    // The accelerators reach the control wherever the focus is inside it:
    // in the control window and its children (views, legend, a docked info
    // window, title bar), and in the info window's tool-window variant.
    if (role == WindowRole::Control) InstallAccelerators(widget, Qt::WidgetWithChildrenShortcut);
    if (role == WindowRole::InfoPopup) InstallAccelerators(widget, Qt::WindowShortcut);
    return handle;
}

// One shortcut per accelerator of the control's table. A shortcut hands its
// key to the control window's handler as a key press, so that the control's
// one path (FindAccelerator, then the command) decides what it does. Qt asks
// the focused widget first (a ShortcutOverride event), so a text field keeps
// the keys of its own editing; dialogs are windows of their own and lie
// outside both contexts.
//
// Plain keys (Enter, Tab) are also what a text field edits or leaves with,
// and a line edit does not claim them in that first step: those shortcuts
// step aside while a text field has the focus.
void QtControlSite::InstallAccelerators(QWidget* scope, Qt::ShortcutContext context) {
    std::vector<QPointer<QShortcut>> plain;
    for (const CommandTable::Accelerator& a : CommandTable::Accelerators()) {
        const KeyEvent key{a.key, a.modifiers};
        for (const QKeySequence& sequence : ToKeySequences(key)) {
            auto* shortcut = new QShortcut(sequence, scope);
            shortcut->setContext(context);
            shortcut->setAutoRepeat(false);
            if ((a.modifiers & (kModControl | kModAlt)) == 0) plain.emplace_back(shortcut);
            QObject::connect(shortcut, &QShortcut::activated, scope, [this, key] {
                const WindowHandle control = Find(WindowRole::Control);
                if (const Window* w = Find(control); w && w->handler) w->handler->OnKey(control, key);
            });
        }
    }
    QObject::connect(qApp, &QApplication::focusChanged, scope, [plain](QWidget*, QWidget* now) {
        const bool editing = now != nullptr && now->testAttribute(Qt::WA_InputMethodEnabled);
        for (const QPointer<QShortcut>& shortcut : plain)
            if (shortcut) shortcut->setEnabled(!editing);
    });
}

void QtControlSite::DestroyWindow(WindowHandle window) {
    const auto it = windows_.find(window);
    if (it == windows_.end()) return;
    for (auto t = timers_.begin(); t != timers_.end();) {
        if (t->first.first == window) {
            delete t->second;
            t = timers_.erase(t);
        } else {
            ++t;
        }
    }
    animator_->Finish(it->second.widget);
    delete it->second.widget.data();
    windows_.erase(it);
}

void QtControlSite::ShowWindow(WindowHandle window, bool show) {
    Window* w = Find(window);
    if (!w || !w->widget) return;
    w->visible = show;
    animator_->Finish(w->widget);
    w->widget->setVisible(show);
}

bool QtControlSite::IsWindowVisible(WindowHandle window) const {
    const Window* w = Find(window);
    return w && w->widget && w->visible;
}

void QtControlSite::MoveWindow(WindowHandle window, const PixelRect& rect) {
    QWidget* widget = Widget(window);
    if (!widget) return;
    // An animation still running would put the window back where it started.
    animator_->Finish(widget);
    widget->setGeometry(ToQRect(rect));
}

PixelRect QtControlSite::GetWindowRect(WindowHandle window) const {
    const QWidget* widget = Widget(window);
    if (!widget) return PixelRect{};
    const QRect r = animator_->Geometry(widget);
    return PixelRect{r.left(), r.top(), r.left() + r.width(), r.top() + r.height()};
}

void QtControlSite::SetWindowText(WindowHandle window, const std::string& text) {
    QWidget* widget = Widget(window);
    if (!widget) return;
    if (auto* label = qobject_cast<QLabel*>(widget))
        label->setText(QString::fromStdString(text));
    else
        widget->setWindowTitle(QString::fromStdString(text));
}

std::string QtControlSite::GetWindowText(WindowHandle window) const {
    const QWidget* widget = Widget(window);
    if (!widget) return {};
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text().toStdString();
    return widget->windowTitle().toStdString();
}

void QtControlSite::Invalidate(WindowHandle window, const PixelRect* rect, bool) {
    QWidget* widget = Widget(window);
    if (!widget) return;
    if (rect)
        widget->update(ToQRect(*rect));
    else
        widget->update();
}

int32_t QtControlSite::MessageBox(const std::string& text, const std::string& caption, MessageButtons buttons) {
    QMessageBox box(host_);
    box.setWindowTitle(QString::fromStdString(caption.empty() ? "Vexplot" : caption));
    box.setText(QString::fromStdString(text));
    switch (buttons) {
        case MessageButtons::OkCancel: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
        case MessageButtons::YesNo: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
        case MessageButtons::Ok: box.setStandardButtons(QMessageBox::Ok); break;
    }
    switch (box.exec()) {
        case QMessageBox::Cancel: return kAnswerCancel;
        case QMessageBox::Yes: return kAnswerYes;
        case QMessageBox::No: return kAnswerNo;
        default: return kAnswerOk;
    }
}

std::optional<EngineEntry> QtControlSite::ChooseEngine(const std::vector<EngineEntry>& engines) {
    if (engines.empty()) return std::nullopt;
    QStringList names;
    for (const EngineEntry& e : engines) names << QString::fromStdString(e.name);
    bool ok = false;
    const QString chosen = QInputDialog::getItem(host_, "Vexplot", "Graph engine:", names, 0, false, &ok);
    if (!ok) return std::nullopt;
    return engines[static_cast<size_t>(names.indexOf(chosen))];
}

int32_t QtControlSite::RunDialog(IDialogLogic& dialog) {
    const QtDialogRegistry::RunModal* run = QtDialogRegistry::BuiltIn().Modal(dialog.DialogName());
    return run ? (*run)(dialog, host_) : kAnswerCancel;
}

std::optional<std::string> QtControlSite::ChooseFile(const FileDialogRequest& request) {
    // Qt's own dialog: the same look on every desktop, and it works where
    // no portal or native dialog is available (Xvfb, a bare X server).
    QFileDialog dialog(host_, QString::fromStdString(request.title));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters({QString::fromStdString(request.filter), QStringLiteral("All files (*)")});
    // Only a name typed to save gets the extension; an open dialog takes the
    // name as typed.
    if (request.save && !request.extension.empty()) dialog.setDefaultSuffix(QString::fromStdString(request.extension.substr(1)));
    if (!request.initialPath.empty()) dialog.selectFile(QString::fromStdString(request.initialPath));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().front().toStdString();
}

bool QtControlSite::OpenModelessDialog(IDialogLogic& dialog) {
    QPointer<QWidget>& open = modeless_[&dialog];
    if (open) {
        open->raise();
        open->activateWindow();
        return true;
    }
    const QtDialogRegistry::OpenModeless* make = QtDialogRegistry::BuiltIn().Modeless(dialog.DialogName());
    if (make) open = (*make)(dialog, host_);
    if (!open) modeless_.erase(&dialog);
    return make && open;
}

void QtControlSite::CloseModelessDialog(IDialogLogic& dialog) {
    const auto it = modeless_.find(&dialog);
    if (it == modeless_.end()) return;
    delete it->second.data();  // the window goes before the logic it draws
    modeless_.erase(it);
}

void QtControlSite::SetTimer(WindowHandle window, uint32_t timerId, uint32_t milliseconds) {
    Window* w = Find(window);
    if (!w) return;
    QTimer*& timer = timers_[{window, timerId}];
    if (!timer) {
        timer = new QTimer();
        IWindowHandler* handler = w->handler;
        QObject::connect(timer, &QTimer::timeout, [handler, window, timerId] { handler->OnTimer(window, timerId); });
    }
    timer->start(static_cast<int>(milliseconds));
}

void QtControlSite::KillTimer(WindowHandle window, uint32_t timerId) {
    const auto it = timers_.find({window, timerId});
    if (it == timers_.end()) return;
    // The timer may be the one whose timeout is running: delete it later.
    it->second->stop();
    it->second->deleteLater();
    timers_.erase(it);
}

void QtControlSite::SetCursorShape(WindowHandle window, CursorShape shape) {
    if (QWidget* widget = Widget(window)) widget->setCursor(QtCursor(shape));
}

void QtControlSite::ShowCursor(bool show) {
    if (!show) {
        if (hiddenCursor_++ == 0) QApplication::setOverrideCursor(Qt::BlankCursor);
    } else if (hiddenCursor_ > 0 && --hiddenCursor_ == 0) {
        QApplication::restoreOverrideCursor();
    }
}

uint32_t QtControlSite::CreateBitmap(const ImageBuffer& pixels) {
    if (!pixels.pixels || pixels.width <= 0 || pixels.height <= 0) return 0;
    const QImage view(reinterpret_cast<const uchar*>(pixels.pixels), pixels.width, pixels.height,
                      static_cast<qsizetype>(pixels.stride) * 4, QImage::Format_RGBX8888);
    bitmaps_[nextBitmap_] = view.copy();
    return nextBitmap_++;
}

bool QtControlSite::ReadBitmap(uint32_t bitmap, std::vector<uint32_t>* pixels, int32_t* width,
                               int32_t* height) const {
    const auto it = bitmaps_.find(bitmap);
    if (it == bitmaps_.end()) return false;
    const QImage& image = it->second;
    *width = image.width();
    *height = image.height();
    pixels->resize(static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(pixels->data() + static_cast<size_t>(y) * static_cast<size_t>(image.width()), image.constScanLine(y),
                    static_cast<size_t>(image.width()) * 4);
    return true;
}

void QtControlSite::DeleteBitmap(uint32_t bitmap) { bitmaps_.erase(bitmap); }

void QtControlSite::BindWindowLogic(WindowHandle window, WindowLogic logic) {
    if (QWidget* widget = Widget(window)) BindAuxiliaryWidget(widget, logic);
}

void QtControlSite::SetWindowShape(WindowHandle window, const std::vector<PixelRect>* runs) {
    QWidget* widget = Widget(window);
    if (!widget) return;
    if (!runs) {
        widget->clearMask();
        return;
    }
    QRegion region;
    for (const PixelRect& r : *runs) region += ToQRect(r);
    widget->setMask(region);
}

void QtControlSite::AnimateWindow(WindowHandle window, uint32_t flags, uint32_t milliseconds) {
    Window* w = Find(window);
    if (!w || !w->widget) return;
    w->visible = (flags & anim::kHide) == 0;
    animator_->Animate(w->widget, flags, static_cast<int>(milliseconds));
}

PixelPoint QtControlSite::CursorPosition(WindowHandle window) const {
    const QWidget* widget = Widget(window);
    if (!widget) return {};
    const QPoint p = widget->mapFromGlobal(QCursor::pos());
    return {p.x(), p.y()};
}

void QtControlSite::ShowPrompt(const std::string& prompt) {
    if (auto* status = qobject_cast<QLabel*>(Widget(Find(WindowRole::StatusBar))))
        status->setText(QString::fromStdString(prompt));
}

int32_t QtControlSite::TrackPopupMenu(WindowHandle window, const MenuModel& model, PixelPoint at) {
    QWidget* widget = Widget(window);
    if (!widget) return 0;
    auto* status = qobject_cast<QLabel*>(Widget(Find(WindowRole::StatusBar)));
    const QString before = status ? status->text() : QString();
    QMenu menu(widget);
    FillMenu(menu, model, [this](const std::string& prompt) { ShowPrompt(prompt); });
    QAction* chosen = menu.exec(widget->mapToGlobal(QPoint(at.x, at.y)));
    const int32_t command = ChosenCommand(menu, chosen);
    if (status) status->setText(before);
    return command;
}

void QtControlSite::ShowToolTip(WindowHandle window, PixelPoint at, const std::string& text) {
    QWidget* widget = Widget(window);
    if (!widget) return;
    if (text.empty()) {
        QToolTip::hideText();
        return;
    }
    // View windows count in device pixels; Qt places tool tips in logical ones.
    const qreal ratio = widget->devicePixelRatioF();
    const QPoint local(static_cast<int>(at.x / ratio), static_cast<int>(at.y / ratio));
    QToolTip::showText(widget->mapToGlobal(local), QString::fromStdString(text), widget);
}

FontMetrics QtControlSite::GetFontMetrics(const LogicalFont& font) const {
    const QFontMetrics m(ToQFont(font));
    FontMetrics out;
    out.height = m.height();
    out.ascent = m.ascent();
    out.descent = m.descent();
    out.externalLeading = std::max(0, m.leading());
    out.averageCharWidth = m.averageCharWidth();
    out.maxCharWidth = m.maxWidth();
    return out;
}

}  // namespace vexplot
