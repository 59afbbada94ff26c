#pragma once
#include <QString>
#include <QWidget>
#include <memory>

namespace vexplot {

class CUI_VexplotCtrl;
class QtControlSite;

// The control as a Qt widget: a host puts one in a layout and has a plot.
//
//     auto* plot = new vexplot::VexplotWidget(this);
//     layout->addWidget(plot);
//
// The widget owns a CUI_VexplotCtrl and the Qt site its windows live in
// (view windows, title bar with "M" and "L", status bar, navigator, info
// window, legend). When no graph engine can be started the user has been
// told and the widget stays empty; Control() still answers, harmlessly.
class VexplotWidget : public QWidget {
    Q_OBJECT
public:
    explicit VexplotWidget(QWidget* parent = nullptr);
    ~VexplotWidget() override;

    // The control with its automation methods; valid for the widget's life.
    CUI_VexplotCtrl& Control();
    // Whether the control runs with an engine.
    bool IsReady() const;

    // The Qt widget of one of the control's windows (a view, the title bar's
    // buttons, the legend...); null when it does not exist.
    QWidget* WindowWidget(int role) const;

    // Loads a data file (.3do, .csv, .npy) as a new graph object, shown and
    // made active beside those already plotted. False with a message in
    // `error` when the file cannot be read.
    bool LoadDataFile(const QString& path, QString* error = nullptr);

signals:
    // The control's Error event.
    void errorRaised(int code, const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    std::unique_ptr<QtControlSite> site_;
    CUI_VexplotCtrl* control_ = nullptr;  // one reference, released in the destructor
};

}  // namespace vexplot
