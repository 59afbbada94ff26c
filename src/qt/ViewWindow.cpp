#include "qt/ViewWindow.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "qt/QtInput.h"

namespace vexplot {

ViewWindow::ViewWindow(QWidget* parent, IWindowHandler* handler, WindowHandle handle, bool paintsPixels)
    : QWidget(parent), handler_(handler), handle_(handle), paintsPixels_(paintsPixels) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    if (paintsPixels_) {
        // The engine fills every pixel: Qt need not clear the background first.
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
    }
}

void ViewWindow::paintEvent(QPaintEvent*) {
    if (!paintsPixels_) return;
    const qreal ratio = devicePixelRatioF();
    const QSize pixels(static_cast<int>(std::lround(width() * ratio)), static_cast<int>(std::lround(height() * ratio)));
    if (pixels.isEmpty()) return;
    if (image_.size() != pixels) image_ = QImage(pixels, QImage::Format_RGBX8888);
    // 0x00BBGGRR in memory on a little-endian machine is the byte order R, G, B, X.
    image_.fill(Qt::black);
    ImageBuffer target{reinterpret_cast<uint32_t*>(image_.bits()), pixels.width(), pixels.height(),
                       static_cast<int32_t>(image_.bytesPerLine() / 4), static_cast<int32_t>(std::lround(ratio * 100))};
    handler_->OnPaint(handle_, target);
    image_.setDevicePixelRatio(ratio);
    QPainter(this).drawImage(QPoint(0, 0), image_);
}

void ViewWindow::resizeEvent(QResizeEvent*) { handler_->OnSize(handle_, width(), height()); }

void ViewWindow::Mouse(QMouseEvent* event, MouseEvent::Kind kind) {
    handler_->OnMouse(handle_, ToMouseEvent(*event, kind));
}

void ViewWindow::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    Mouse(event, MouseEvent::Kind::Press);
}
void ViewWindow::mouseReleaseEvent(QMouseEvent* event) { Mouse(event, MouseEvent::Kind::Release); }
void ViewWindow::mouseMoveEvent(QMouseEvent* event) { Mouse(event, MouseEvent::Kind::Move); }
void ViewWindow::mouseDoubleClickEvent(QMouseEvent* event) { Mouse(event, MouseEvent::Kind::DoubleClick); }
void ViewWindow::wheelEvent(QWheelEvent* event) { handler_->OnMouse(handle_, ToMouseEvent(*event)); }

void ViewWindow::leaveEvent(QEvent*) {
    MouseEvent leave;
    leave.kind = MouseEvent::Kind::Leave;
    handler_->OnMouse(handle_, leave);
}

void ViewWindow::keyPressEvent(QKeyEvent* event) {
    if (const auto key = ToKeyEvent(*event))
        handler_->OnKey(handle_, *key);
    else
        QWidget::keyPressEvent(event);
}

// Tab selects the next object in the plot rather than moving the focus.
bool ViewWindow::focusNextPrevChild(bool) { return false; }

}  // namespace vexplot
