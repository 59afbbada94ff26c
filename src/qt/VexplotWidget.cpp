#include "qt/VexplotWidget.h"

#include <QResizeEvent>

#include "com/ComError.h"
#include "control/CUI_VexplotCtrl.h"
#include "qt/QtControlSite.h"

namespace vexplot {

VexplotWidget::VexplotWidget(QWidget* parent) : QWidget(parent), site_(std::make_unique<QtControlSite>(this)) {
    setMinimumSize(200, 150);
    control_ = MakeComObject<CUI_VexplotCtrl>().Detach();
    control_->OnError([this](HRESULT code, const std::string& text) {
        emit errorRaised(static_cast<int>(code), QString::fromStdString(text));
    });
    // The control window fills the widget; it is created at the widget's
    // current size and follows every resize.
    control_->Create(*site_, PixelRect{0, 0, std::max(width(), 200), std::max(height(), 150)});
    if (QWidget* window = site_->Widget(control_->Window(WindowRole::Control))) window->show();
}

VexplotWidget::~VexplotWidget() {
    control_->Destroy();
    control_->Release();
}

CUI_VexplotCtrl& VexplotWidget::Control() { return *control_; }

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
