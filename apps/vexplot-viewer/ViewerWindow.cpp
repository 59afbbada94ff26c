#include "ViewerWindow.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>

#include <cstdio>

#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "qt/VexplotWidget.h"

namespace vexplot {

namespace {

constexpr const char* kAppName = "Vexplot Viewer";

QStringList LocalFiles(const QMimeData* mime) {
    QStringList files;
    if (!mime || !mime->hasUrls()) return files;
    for (const QUrl& url : mime->urls())
        if (url.isLocalFile()) files << url.toLocalFile();
    return files;
}

}  // namespace

ViewerWindow::ViewerWindow(bool rememberFiles) : rememberFiles_(rememberFiles) {
    plot_ = new VexplotWidget(this);
    setCentralWidget(plot_);
    setWindowTitle(kAppName);
    setAcceptDrops(true);
    if (rememberFiles_) recent_.Load();
    BuildMenus();
    connect(plot_, &VexplotWidget::errorRaised, this, [](int code, const QString& text) {
        std::fprintf(stderr, "vexplot-viewer: control error 0x%08X: %s\n", static_cast<unsigned>(code),
                     qPrintable(text));
    });
    if (!plot_->IsReady()) TellEngineMissing();
}

// The control has already said that no engine could start; the viewer adds
// what to do about it, in its status bar and on stderr.
void ViewerWindow::TellEngineMissing() {
    const QString hint = "No graph engine could be started: run 'vexplot register' once, then start the viewer again.";
    statusBar()->showMessage(hint);
    std::fprintf(stderr, "vexplot-viewer: %s\n", qPrintable(hint));
}

void ViewerWindow::BuildMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    // No Ctrl+O here: that key is the control's own Load Data accelerator,
    // and a window shortcut would take it away from the control.
    file->addAction("&Open...", this, &ViewerWindow::ChooseFiles);
    recentMenu_ = file->addMenu("Open &Recent");
    file->addSeparator();
    QAction* quit = file->addAction("&Quit", this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
    RefreshRecentMenu();

    // The control's editors, also on its own pop-up menu and legend.
    QMenu* plot = menuBar()->addMenu("&Plot");
    QAction* palette = plot->addAction("Edit &Palette...", this, [this] { plot_->Control().DoCommand(cmd::kEditPalette); });
    QAction* editData = plot->addAction("Edit &Data...", this, [this] { plot_->Control().OpenDataEditor(); });
    connect(plot, &QMenu::aboutToShow, this, [this, palette, editData] {
        palette->setEnabled(plot_->Control().CommandState(cmd::kEditPalette).enabled);
        editData->setEnabled(plot_->IsReady() && plot_->Control().GetGraphObjects() &&
                         plot_->Control().GetGraphObjects()->Active());
    });
}

void ViewerWindow::RefreshRecentMenu() {
    recentMenu_->clear();
    for (const std::string& path : recent_.Paths()) {
        const QString file = QString::fromStdString(path);
        recentMenu_->addAction(file, this, [this, file] { OpenFiles({file}); });
    }
    recentMenu_->setEnabled(!recent_.Paths().empty());
}

void ViewerWindow::ChooseFiles() {
    const QStringList files = QFileDialog::getOpenFileNames(
        this, "Open", QString(), "Data files (*.3do *.csv *.npy);;All files (*)");
    OpenFiles(files);
}

bool ViewerWindow::OpenFile(const QString& path, QString* error) {
    QString reason;
    const bool loaded = plot_->LoadDataFile(path, &reason);
    if (rememberFiles_) {
        const std::string absolute = QFileInfo(path).absoluteFilePath().toStdString();
        if (loaded)
            recent_.Add(absolute);
        else
            recent_.Remove(absolute);
        recent_.Save();
        RefreshRecentMenu();
    }
    if (!loaded) {
        if (error) *error = reason.isEmpty() ? QString("the file cannot be read") : reason;
        return false;
    }
    setWindowTitle(QString("%1 - %2").arg(kAppName, QFileInfo(path).fileName()));
    return true;
}

void ViewerWindow::ShowFlatView(bool flat) {
    if (plot_->IsReady()) plot_->Control().OnCommand(flat ? cmd::k2DMode : cmd::k3DMode);
}

void ViewerWindow::OpenFiles(const QStringList& paths) {
    for (const QString& path : paths) {
        QString error;
        if (!OpenFile(path, &error))
            QMessageBox::warning(this, kAppName, QString("Cannot open %1:\n%2").arg(path, error));
    }
}

void ViewerWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void ViewerWindow::dropEvent(QDropEvent* event) {
    const QStringList files = LocalFiles(event->mimeData());
    if (files.isEmpty()) return;
    event->acceptProposedAction();
    OpenFiles(files);
}

}  // namespace vexplot
