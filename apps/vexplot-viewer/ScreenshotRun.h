#pragma once
#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>

class QTimer;

namespace vexplot {

class ViewerWindow;

// Answers every modal dialog the moment it opens, printing what it said:
// a batch run has nobody to click, and a message box means something went
// wrong. Create it before the window, whose control may complain while it
// is being built.
class ModalDismisser final : public QObject {
public:
    ModalDismisser();
    // How many dialogs were dismissed so far.
    int Dismissed() const { return dismissed_; }

private:
    void Check();

    QTimer* timer_;
    int dismissed_ = 0;
};

// `--screenshot PATH`: shows `window` at `size` (all of the window,
// logical pixels), loads `files`, waits until a view window has painted
// (at most 5 s) and the windows have settled, and saves a picture of the
// whole window at the screen's device pixel ratio to `path`. Beside it,
// `path` + ".json" gives the geometry of the control's windows in the
// picture's pixels. Returns the process's exit code: 0 on success, 1 when
// no engine is running, a file fails, a dialog had to be dismissed or the
// picture cannot be written.
// `flatView` shows the plot in its 2-D view rather than the 3-D one.
int RunScreenshot(ViewerWindow& window, const ModalDismisser& dismisser, const QString& path, QSize size,
                  const QStringList& files, bool flatView);

}  // namespace vexplot
