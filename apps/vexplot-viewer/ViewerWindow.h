#pragma once
#include <QMainWindow>
#include <QStringList>

#include "RecentFiles.h"

class QMenu;
class QTabWidget;

namespace vexplot {

class VexplotWidget;

// The viewer's main window: one plot per tab (the tab bar shows once there
// are two), a File menu (Open..., Open Recent, Quit), files dropped onto
// the window, and the title "Vexplot Viewer - <file>" of the plot in front.
//
// Each file opens as a plot of its own, so that unrelated data sets do not
// share one box and one Z range; with SetTogether(true) the files go into
// the plot in front, beside what it shows.
class ViewerWindow final : public QMainWindow {
    Q_OBJECT
public:
    // `rememberFiles` false leaves the recent-files list in the settings
    // untouched (batch runs such as screenshots).
    explicit ViewerWindow(bool rememberFiles);

    // The plot in front.
    VexplotWidget& Plot();
    int PlotCount() const;
    // Brings a plot of this window to the front.
    void ShowPlot(QWidget& plot);

    void SetTogether(bool together) { together_ = together; }
    // Loads one data file: into a new plot, or into the plot in front when
    // files go together or it is still empty. False with the reason in
    // `error` when it cannot be read (a plot made for it goes again).
    bool OpenFile(const QString& path, QString* error);
    // Loads each file, telling the user in a message box about those that
    // fail.
    void OpenFiles(const QStringList& paths);
    // Switches every plot to its flat (2-D) view or back to the 3-D view, as
    // the pop-up menu's "2D Mode" and "3D Mode" do.
    void ShowFlatView(bool flat);
    // A line for the status bar, e.g. what the first run set up.
    void Tell(const QString& text);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    VexplotWidget* AddPlot();
    void PresentPlot(VexplotWidget& plot);
    void BuildMenus();
    void RefreshRecentMenu();
    void RefreshTitle();
    void ChooseFiles();
    void TellEngineMissing();

    QTabWidget* tabs_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    RecentFiles recent_;
    bool rememberFiles_;
    bool together_ = false;
    bool flat_ = false;
};

}  // namespace vexplot
