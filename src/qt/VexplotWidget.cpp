#include "qt/VexplotWidget.h"

#include <QResizeEvent>
#include <functional>

#include "com/ComError.h"
#include "com/ConnectionPoint.h"
#include "com/EventSink.h"
#include "control/CUI_VexplotCtrl.h"
#include "qt/QtControlSite.h"

namespace vexplot {

namespace {

// Argument `i` in natural order (DispParams holds them reversed), read
// through a reference; an empty Variant when the event has fewer.
Variant EventArg(const DispParams& params, uint32_t i) {
    if (i >= params.argCount) return {};
    return params.args[params.argCount - 1 - i].Deref();
}

double NumberArg(const DispParams& params, uint32_t i) {
    Variant number;
    return SUCCEEDED(EventArg(params, i).ChangeType(VT_R8, &number)) ? number.R8() : 0.0;
}

QString TextArg(const DispParams& params, uint32_t i) {
    const Variant text = EventArg(params, i);
    return text.Type() == VT_BSTR ? QString::fromStdString(text.Bstr()) : QString();
}

}  // namespace

VexplotWidget::VexplotWidget(QWidget* parent, std::shared_ptr<SettingsStore> store)
    : QWidget(parent), site_(std::make_unique<QtControlSite>(this)) {
    setMinimumSize(200, 150);
    control_ = MakeComObject<CUI_VexplotCtrl>(nullptr, std::move(store)).Detach();
    AdviseEvents();
    control_->OnFullControlViewChange([this](bool on) { emit fullControlViewChanged(on); });
    // The control window fills the widget; it is created at the widget's
    // current size and follows every resize.
    control_->Create(*site_, PixelRect{0, 0, std::max(width(), 200), std::max(height(), 150)});
    if (QWidget* window = site_->Widget(control_->Window(WindowRole::Control))) window->show();
}

VexplotWidget::~VexplotWidget() {
    if (cookie_) ConnectionUnadvise(control_->Identity(), CUI_VexplotCtrl::kExEventsIid, cookie_);
    control_->Destroy();
    control_->Release();
}

CUI_VexplotCtrl& VexplotWidget::Control() { return *control_; }

IControlSite& VexplotWidget::Site() { return *site_; }

// Advised before Create, so that the errors of the engine's start reach
// the signals too.
void VexplotWidget::AdviseEvents() {
    sink_ = MakeComObject<EventSink>([this](DISPID id, const DispParams& p) { OnControlEvent(id, p); });
    ConnectionAdvise(control_->Identity(), CUI_VexplotCtrl::kExEventsIid, sink_.Get(), &cookie_);
}

void VexplotWidget::OnControlEvent(DISPID id, const DispParams& p) {
    switch (id) {
        case CUI_VexplotCtrl::kDispidError:
            // Error(Number, Description*, Scode, Source, HelpFile, HelpContext, CancelDisplay*)
            emit errorRaised(EventArg(p, 2).Type() == VT_I4 ? EventArg(p, 2).I4() : 0, TextArg(p, 1));
            break;
        case CUI_VexplotCtrl::kDispidDataSelect:
            emit dataSelect(NumberArg(p, 0), NumberArg(p, 1), NumberArg(p, 2), NumberArg(p, 3), NumberArg(p, 4),
                            NumberArg(p, 5));
            break;
        case CUI_VexplotCtrl::kDispidResample:
            emit resample(NumberArg(p, 0), NumberArg(p, 1), NumberArg(p, 2), NumberArg(p, 3));
            break;
        case CUI_VexplotCtrl::kDispidDataCellMouseOver: {
            dataCellText_.reset();
            emit dataCellMouseOver(NumberArg(p, 0), NumberArg(p, 1), NumberArg(p, 2), NumberArg(p, 3) != 0);
            // The text goes back through the fifth, by-reference argument.
            if (dataCellText_ && p.argCount >= 5)
                p.args[p.argCount - 5].AssignThroughRef(Variant(dataCellText_->toStdString()));
            dataCellText_.reset();
            break;
        }
        default:
            break;
    }
}

void VexplotWidget::SetDataCellText(const QString& text) { dataCellText_ = text; }

QWidget* VexplotWidget::WindowWidget(int role) const {
    return site_->Widget(control_->Window(static_cast<WindowRole>(role)));
}

bool VexplotWidget::IsReady() const { return control_->IsCreated(); }

bool VexplotWidget::LoadDataFile(const QString& path, QString* error) {
    std::string message;
    const HRESULT hr = control_->LoadDataFile(path.toStdString(), &message);
    if (SUCCEEDED(hr)) return true;
    if (error) *error = QString::fromStdString(message);
    return false;
}

void VexplotWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (QWidget* window = site_->Widget(control_->Window(WindowRole::Control)))
        window->setGeometry(0, 0, width(), height());
}

void VexplotWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (QWidget* window = site_->Widget(control_->Window(WindowRole::Control)))
        window->setGeometry(0, 0, width(), height());
}

}  // namespace vexplot
