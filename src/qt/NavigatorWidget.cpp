#include "qt/NavigatorWidget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include "ui/NavigatorPad.h"

namespace vexplot {

namespace {

using Zone = NavigatorPad::Zone;

constexpr qreal kSize = NavigatorPad::kSize;
constexpr qreal kLow = NavigatorPad::kCentreLow;
constexpr qreal kHigh = NavigatorPad::kCentreHigh;

// The outline of a zone in the pad's logical pixels: the borders are the
// trapezoids between the outer edge and the centre square.
QPolygonF ZoneShape(Zone zone) {
    switch (zone) {
        case Zone::Top: return QPolygonF({{0, 0}, {kSize, 0}, {kHigh, kLow}, {kLow, kLow}});
        case Zone::Bottom: return QPolygonF({{0, kSize}, {kLow, kHigh}, {kHigh, kHigh}, {kSize, kSize}});
        case Zone::Left: return QPolygonF({{0, 0}, {kLow, kLow}, {kLow, kHigh}, {0, kSize}});
        case Zone::Right: return QPolygonF({{kSize, 0}, {kSize, kSize}, {kHigh, kHigh}, {kHigh, kLow}});
        case Zone::Centre: return QPolygonF(QRectF(kLow, kLow, kHigh - kLow, kHigh - kLow));
        case Zone::None: break;
    }
    return {};
}

// The arrow on a border, pointing outwards.
QPolygonF Arrow(Zone zone) {
    const qreal m = kSize / 2;
    switch (zone) {
        case Zone::Top: return QPolygonF({{m, 3}, {m - 6, 10}, {m + 6, 10}});
        case Zone::Bottom: return QPolygonF({{m, kSize - 3}, {m + 6, kSize - 10}, {m - 6, kSize - 10}});
        case Zone::Left: return QPolygonF({{3, m}, {10, m + 6}, {10, m - 6}});
        case Zone::Right: return QPolygonF({{kSize - 3, m}, {kSize - 10, m - 6}, {kSize - 10, m + 6}});
        default: break;
    }
    return {};
}

PixelPoint Point(const QMouseEvent* event) {
    const QPoint p = event->position().toPoint();
    return PixelPoint{p.x(), p.y()};
}

}  // namespace

NavigatorWidget::NavigatorWidget(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFixedSize(NavigatorPad::kSize, NavigatorPad::kSize);
}

void NavigatorWidget::Bind(NavigatorPad* logic) {
    logic_ = logic;
    update();
}

void NavigatorWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor face(0x70, 0x70, 0x78);
    const Zone highlighted = logic_ ? logic_->HighlightedZone() : Zone::None;
    const Zone pressed = logic_ ? logic_->PressedZone() : Zone::None;
    for (Zone zone : {Zone::Top, Zone::Bottom, Zone::Left, Zone::Right, Zone::Centre}) {
        QColor fill = face;
        if (zone == pressed) {
            fill = face.darker(150);
        } else if (zone == highlighted) {
            fill = face.lighter(140);
        }
        painter.setPen(QPen(face.darker(130), 1));
        painter.setBrush(fill);
        painter.drawPolygon(ZoneShape(zone));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xF0, 0xF0, 0xF0));
    for (Zone zone : {Zone::Top, Zone::Bottom, Zone::Left, Zone::Right}) painter.drawPolygon(Arrow(zone));
    painter.drawEllipse(QPointF(kSize / 2, kSize / 2), 6.0, 6.0);
}

void NavigatorWidget::mousePressEvent(QMouseEvent* event) {
    if (logic_ && (event->button() == Qt::LeftButton || event->button() == Qt::RightButton))
        logic_->OnButtonDown(Point(event), event->button() == Qt::RightButton);
    update();
    event->accept();
}

void NavigatorWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (logic_ && (event->button() == Qt::LeftButton || event->button() == Qt::RightButton))
        logic_->OnButtonUp(Point(event), event->button() == Qt::RightButton);
    update();
    event->accept();
}

void NavigatorWidget::mouseMoveEvent(QMouseEvent* event) {
    if (logic_) logic_->OnMouseMove(Point(event));
    event->accept();
}

void NavigatorWidget::leaveEvent(QEvent* event) {
    if (logic_) logic_->OnMouseLeave();
    QWidget::leaveEvent(event);
}

}  // namespace vexplot
