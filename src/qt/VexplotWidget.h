#pragma once
#include <QString>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

#include "com/ComPtr.h"
#include "com/IDispatch.h"

namespace vexplot {

class CUI_VexplotCtrl;
class IControlSite;
class QtControlSite;
class SettingsStore;

// The control as a Qt widget: a host puts one in a layout and has a plot.
//
//     auto* plot = new vexplot::VexplotWidget(this);
//     layout->addWidget(plot);
//
// The widget owns a CUI_VexplotCtrl and the Qt site its windows live in
// (view windows, title bar with "M" and "L", status bar, navigator, info
// window, legend). When no graph engine can be started the user has been
// told and the widget stays empty; Control() still answers, harmlessly.
//
// The control's events arrive as the signals below, through a sink the
// widget advises on the control's event interface like any other host.
// They are emitted on the GUI thread while the control fires them.
class VexplotWidget : public QWidget {
    Q_OBJECT
public:
    // `store` holds the control's settings (null: the user's store; a script
    // that must not change the user's defaults passes one of its own).
    explicit VexplotWidget(QWidget* parent = nullptr, std::shared_ptr<SettingsStore> store = nullptr);
    ~VexplotWidget() override;

    // The control with its automation methods; valid for the widget's life.
    CUI_VexplotCtrl& Control();
    // The site the control's windows and bitmaps live in (RetrieveBitmap's
    // bitmaps are read and deleted through it).
    IControlSite& Site();
    // Whether the control runs with an engine.
    bool IsReady() const;

    // The Qt widget of one of the control's windows (a view, the title bar's
    // buttons, the legend...); null when it does not exist.
    QWidget* WindowWidget(int role) const;

    // Loads a data file (.3do, .csv, .npy) as a new graph object, shown and
    // made active beside those already plotted. False with a message in
    // `error` when the file cannot be read.
    bool LoadDataFile(const QString& path, QString* error = nullptr);

    // Called from a slot connected (directly) to dataCellMouseOver: the
    // text the control shows as that data cell's tool tip.
    void SetDataCellText(const QString& text);

signals:
    // The control's Error event: its HRESULT and description.
    void errorRaised(int code, const QString& text);
    // The user finished selecting a box of data (only while the control's
    // DataSelectEnable is on).
    void dataSelect(double xmin, double xmax, double ymin, double ymax, double zmin, double zmax);
    // The user asked for external resampling of this range.
    void resample(double xmin, double xmax, double ymin, double ymax);
    // The mouse rests on a data cell (`select`: the cell is being selected).
    // A slot may answer with SetDataCellText before it returns.
    void dataCellMouseOver(double x, double y, double z, bool select);
    // The control switched to its full-control view (`on`) or back: a host
    // hides or shows its own menus and bars with it.
    void fullControlViewChanged(bool on);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // An event of the control, with its arguments as fired (reversed).
    void OnControlEvent(DISPID id, const DispParams& params);
    void AdviseEvents();

    std::unique_ptr<QtControlSite> site_;
    CUI_VexplotCtrl* control_ = nullptr;  // one reference, released in the destructor
    ComPtr<IDispatch> sink_;
    uint32_t cookie_ = 0;
    // The answer to the dataCellMouseOver being emitted, if a slot gave one.
    std::optional<QString> dataCellText_;
};

}  // namespace vexplot
