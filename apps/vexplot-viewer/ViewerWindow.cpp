#include "ViewerWindow.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QUrl>

#include <cstdio>

#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "qt/VexplotWidget.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

constexpr const char* kAppName = "Vexplot Viewer";
// How many files a plot shows, kept on its widget.
constexpr const char* kFileCount = "vexplotViewerFiles";

// The info window's colours as the viewer shows it: dark text on the
// light panel, which reads well over the black 3-D view and the palette
// image alike (0x00BBGGRR).
constexpr DISPID kAutoHideLegend = 5;
constexpr DISPID kInfoTextColor = 36;
constexpr DISPID kInfoBackColor = 37;
constexpr int32_t kInfoText = 0x00202020;
constexpr int32_t kInfoBack = 0x00F0F0F0;

QStringList LocalFiles(const QMimeData* mime) {
    QStringList files;
    if (!mime || !mime->hasUrls()) return files;
    for (const QUrl& url : mime->urls())
        if (url.isLocalFile()) files << url.toLocalFile();
    return files;
}

int FileCount(const QWidget& plot) { return plot.property(kFileCount).toInt(); }

}  // namespace

ViewerWindow::ViewerWindow(bool rememberFiles) : rememberFiles_(rememberFiles) {
    tabs_ = new QTabWidget(this);
    tabs_->setDocumentMode(true);
    tabs_->setTabBarAutoHide(true);
    tabs_->setTabsClosable(true);
    setCentralWidget(tabs_);
    connect(tabs_, &QTabWidget::currentChanged, this, &ViewerWindow::RefreshTitle);
    connect(tabs_, &QTabWidget::tabCloseRequested, this, [this](int index) {
        if (tabs_->count() == 1) return;  // the window keeps one plot to drop files on
        QWidget* plot = tabs_->widget(index);
        tabs_->removeTab(index);
        delete plot;
    });
    setAcceptDrops(true);
    if (rememberFiles_) recent_.Load();
    BuildMenus();
    const VexplotWidget* first = AddPlot();
    RefreshTitle();
    if (!first->IsReady()) TellEngineMissing();
}

VexplotWidget& ViewerWindow::Plot() { return *static_cast<VexplotWidget*>(tabs_->currentWidget()); }

int ViewerWindow::PlotCount() const { return tabs_->count(); }

void ViewerWindow::ShowPlot(QWidget& plot) { tabs_->setCurrentWidget(&plot); }

VexplotWidget* ViewerWindow::AddPlot() {
    auto* plot = new VexplotWidget(tabs_);
    connect(plot, &VexplotWidget::errorRaised, this, [](int code, const QString& text) {
        std::fprintf(stderr, "vexplot-viewer: control error 0x%08X: %s\n", static_cast<unsigned>(code),
                     qPrintable(text));
    });
    // The full-control view hides the viewer's menu bar, tab bar and status
    // bar too; Ctrl+F10 and the menu key still open the control's menu.
    connect(plot, &VexplotWidget::fullControlViewChanged, this, [this](bool on) {
        menuBar()->setVisible(!on);
        tabs_->tabBar()->setVisible(!on);
        statusBar()->setVisible(!on);
    });
    tabs_->setCurrentIndex(tabs_->addTab(plot, "(empty)"));
    if (flat_ && plot->IsReady()) plot->Control().OnCommand(cmd::k2DMode);
    return plot;
}

// What a plot shows beside its view once it has data: the info window with
// the read-outs and the legend with the data sets, in colours that read.
// The legend stays up (no auto-hide) and sits under the info window in the
// view's top-left corner, where it covers neither the read-outs nor the plot.
void ViewerWindow::PresentPlot(VexplotWidget& plot) {
    CUI_VexplotCtrl& control = plot.Control();
    control.PutProperty(kInfoTextColor, Variant(kInfoText));
    control.PutProperty(kInfoBackColor, Variant(kInfoBack));
    control.PutProperty(kAutoHideLegend, Variant::Bool(false));
    control.ShowWindows(CUI_VexplotCtrl::wndInfo | CUI_VexplotCtrl::wndLegend, 1);
    IControlSite& site = plot.Site();
    const WindowHandle info = control.Window(WindowRole::InfoWindow);
    const WindowHandle legend = control.Window(WindowRole::LegendWindow);
    if (!info || !legend || !site.IsWindowVisible(info)) return;
    const PixelRect below = site.GetWindowRect(info);
    const PixelRect current = site.GetWindowRect(legend);
    constexpr int32_t kGap = 6;
    site.MoveWindow(legend, PixelRect{below.left + kGap, below.bottom + kGap,
                                      below.left + kGap + (current.right - current.left),
                                      below.bottom + kGap + (current.bottom - current.top)});
}

// The control has already said that no engine could start; the viewer adds
// what to do about it, in its status bar and on stderr.
void ViewerWindow::TellEngineMissing() {
    const QString hint = "No graph engine could be started: run 'vexplot register PLUGIN' once, then start the viewer again.";
    statusBar()->showMessage(hint);
    std::fprintf(stderr, "vexplot-viewer: %s\n", qPrintable(hint));
}

void ViewerWindow::Tell(const QString& text) { statusBar()->showMessage(text, 15000); }

void ViewerWindow::BuildMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    // No Ctrl+O here: that key is the control's own Load Data accelerator,
    // and a window shortcut would take it away from the control.
    file->addAction("&Open...", this, &ViewerWindow::ChooseFiles);
    recentMenu_ = file->addMenu("Open &Recent");
    QAction* together = file->addAction("Open into the &Same Plot");
    together->setCheckable(true);
    connect(together, &QAction::toggled, this, &ViewerWindow::SetTogether);
    file->addSeparator();
    QAction* quit = file->addAction("&Quit", this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
    RefreshRecentMenu();

    // The control's editors, also on its own pop-up menu and legend.
    QMenu* plot = menuBar()->addMenu("&Plot");
    QAction* palette = plot->addAction("Edit &Palette...", this, [this] { Plot().Control().DoCommand(cmd::kEditPalette); });
    QAction* editData = plot->addAction("Edit &Data...", this, [this] { Plot().Control().OpenDataEditor(); });
    // Their keys (Alt+Enter, Ctrl+F11) belong to the control and work while it has the focus.
    plot->addAction("Control P&roperties...", this, [this] { Plot().Control().DoCommand(cmd::kControlProperties); });
    plot->addAction("Maximize &View", this, [this] { Plot().Control().DoCommand(cmd::kMaximizeView); });
    connect(plot, &QMenu::aboutToShow, this, [this, palette, editData] {
        palette->setEnabled(Plot().Control().CommandState(cmd::kEditPalette).enabled);
        editData->setEnabled(Plot().IsReady() && Plot().Control().GetGraphObjects() &&
                         Plot().Control().GetGraphObjects()->Active());
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

void ViewerWindow::RefreshTitle() {
    const int index = tabs_->currentIndex();
    const bool named = index >= 0 && FileCount(*tabs_->widget(index)) > 0;
    setWindowTitle(named ? QString("%1 - %2").arg(kAppName, tabs_->tabText(index)) : QString(kAppName));
}

void ViewerWindow::ChooseFiles() {
    const QStringList files = QFileDialog::getOpenFileNames(
        this, "Open", QString(), "Data and plot files (*.3do *.csv *.npy *.vxg);;All files (*)");
    OpenFiles(files);
}

bool ViewerWindow::OpenFile(const QString& path, QString* error) {
    const bool reuse = together_ || FileCount(Plot()) == 0;
    VexplotWidget* plot = reuse ? &Plot() : AddPlot();
    QString reason;
    const bool loaded = plot->LoadDataFile(path, &reason);
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
        if (!reuse) {
            tabs_->removeTab(tabs_->indexOf(plot));
            delete plot;
        }
        if (error) *error = reason.isEmpty() ? QString("the file cannot be read") : reason;
        return false;
    }
    const int files = FileCount(*plot) + 1;
    plot->setProperty(kFileCount, files);
    const int index = tabs_->indexOf(plot);
    const QString name = QFileInfo(path).fileName();
    tabs_->setTabText(index, files == 1 ? name : tabs_->tabText(index) + ", " + name);
    if (files == 1) PresentPlot(*plot);
    RefreshTitle();
    return true;
}

void ViewerWindow::ShowFlatView(bool flat) {
    flat_ = flat;
    for (int i = 0; i < tabs_->count(); ++i) {
        auto* plot = static_cast<VexplotWidget*>(tabs_->widget(i));
        if (plot->IsReady()) plot->Control().OnCommand(flat ? cmd::k2DMode : cmd::k3DMode);
    }
}

void ViewerWindow::OpenFiles(const QStringList& paths) {
    // The first of the files comes to the front: the order given is the
    // order the user wants to see them in.
    QWidget* first = nullptr;
    for (const QString& path : paths) {
        QString error;
        if (!OpenFile(path, &error))
            QMessageBox::warning(this, kAppName, QString("Cannot open %1:\n%2").arg(path, error));
        else if (!first)
            first = tabs_->currentWidget();
    }
    if (first) ShowPlot(*first);
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
