#pragma once
#include <QMainWindow>
#include <QStringList>

#include "RecentFiles.h"

class QMenu;

namespace vexplot {

class VexplotWidget;

// The viewer's main window: the control as central widget, a File menu
// (Open..., Open Recent, Quit), files dropped onto the window, and the
// title "Vexplot Viewer - <file>" after the last file opened.
class ViewerWindow final : public QMainWindow {
    Q_OBJECT
public:
    // `rememberFiles` false leaves the recent-files list in the settings
    // untouched (batch runs such as screenshots).
    explicit ViewerWindow(bool rememberFiles);

    VexplotWidget& Plot() { return *plot_; }

    // Loads one data file beside those already plotted. False with the
    // reason in `error` when it cannot be read.
    bool OpenFile(const QString& path, QString* error);
    // Loads each file, telling the user in a message box about those that
    // fail.
    void OpenFiles(const QStringList& paths);
    // Switches the plot to its flat (2-D) view or back to the 3-D view, as
    // the pop-up menu's "2D Mode" and "3D Mode" do.
    void ShowFlatView(bool flat);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildMenus();
    void RefreshRecentMenu();
    void ChooseFiles();
    void TellEngineMissing();

    VexplotWidget* plot_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    RecentFiles recent_;
    bool rememberFiles_;
};

}  // namespace vexplot
