#include "qt/ToolsButtonWidget.h"

#include <QEnterEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include "tools/CToolsCtrl.h"

namespace vexplot {

namespace {

// Our colours are 0x00BBGGRR: in memory R, G, B, unused, which is Qt's
// RGBX8888. The image shares the raster's pixels for the paint only.
QImage View(const RgbaRaster& raster) {
    const auto pixels = raster.Pixels();
    return QImage(reinterpret_cast<const uchar*>(pixels.data()), static_cast<int>(raster.Width()),
                  static_cast<int>(raster.Height()), static_cast<qsizetype>(raster.Width()) * 4,
                  QImage::Format_RGBX8888);
}

QColor Color(uint32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

PixelPoint Point(const QMouseEvent* event) {
    const QPoint p = event->position().toPoint();
    return PixelPoint{p.x(), p.y()};
}

}  // namespace

ToolsButtonWidget::ToolsButtonWidget(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ToolsButtonWidget::Bind(CToolsCtrl* logic) {
    logic_ = logic;
    update();
}

void ToolsButtonWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!logic_) {
        painter.fillRect(rect(), palette().button());
        return;
    }
    // The face is drawn in logical pixels and scaled by the painter on
    // high-density screens; it is remade at the button's size on resize,
    // so it normally maps one to one.
    const RgbaRaster& face = logic_->Picture();
    if (face.Empty()) {
        painter.fillRect(rect(), Color(logic_->Faces().FaceColor()));
    } else {
        painter.drawImage(rect(), View(face));
    }
    const bool pressed = logic_->Pressed();
    QRect textRect = rect();
    if (pressed) textRect.translate(1, 1);
    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    if (logic_->IgnoresPresses()) {
        // Etched like a disabled control: a light copy under a grey one.
        painter.setPen(Color(ButtonPicture::kHighlight));
        painter.drawText(textRect.translated(1, 1), Qt::AlignCenter, QString::fromStdString(logic_->Caption()));
        painter.setPen(Color(ButtonPicture::kShadow));
    } else {
        painter.setPen(Qt::black);
    }
    painter.drawText(textRect, Qt::AlignCenter, QString::fromStdString(logic_->Caption()));
}

void ToolsButtonWidget::mousePressEvent(QMouseEvent* event) {
    if (logic_ && event->button() == Qt::LeftButton) logic_->OnButtonDown(Point(event));
    event->accept();
}

void ToolsButtonWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (logic_ && event->button() == Qt::LeftButton) logic_->OnButtonUp(Point(event));
    event->accept();
}

void ToolsButtonWidget::mouseMoveEvent(QMouseEvent* event) {
    if (logic_) logic_->OnMouseMove(Point(event));
    event->accept();
}

void ToolsButtonWidget::enterEvent(QEnterEvent* event) {
    if (logic_) logic_->OnMouseEnter();
    QWidget::enterEvent(event);
}

}  // namespace vexplot
