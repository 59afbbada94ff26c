#include "qt/ScenePainter.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <numbers>

#include "control/SceneText.h"

namespace vexplot {

namespace {

QColor ToColor(uint32_t color) { return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF); }

QPolygonF ToPolygon(const std::vector<ScenePoint>& points) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    for (const ScenePoint& p : points) polygon << QPointF(p.x, p.y);
    return polygon;
}

// Fonts are made at this pixel size and scaled to the run's: the painter
// then keeps fractional sizes on every device.
constexpr double kFontPixels = 100.0;

void PaintText(QPainter& painter, const ExportScene::Text& t) {
    const SceneText text(t);
    QFont font(QString::fromStdString(text.Face()));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(static_cast<int>(kFontPixels));
    font.setBold(text.Bold());
    font.setItalic(text.Italic());
    painter.setPen(ToColor(t.color));
    painter.save();
    painter.translate(text.BaselineX(), text.BaselineY());
    painter.rotate(-text.Angle() * 180.0 / std::numbers::pi);
    double pen = 0;
    for (const SceneText::Run& run : text.Runs()) {
        painter.save();
        painter.translate(pen, -run.rise);
        painter.scale(run.size / kFontPixels, run.size / kFontPixels);
        painter.setFont(font);
        painter.drawText(QPointF(0, 0), QString::fromStdString(run.text));
        painter.restore();
        pen += run.width;
    }
    painter.restore();
}

}  // namespace

void PaintScene(QPainter& painter, const ExportScene& scene, const QRectF& target) {
    if (scene.width <= 0 || scene.height <= 0 || target.isEmpty()) return;
    const double scale = std::min(target.width() / scene.width, target.height() / scene.height);
    painter.save();
    painter.translate(target.left() + (target.width() - scene.width * scale) / 2,
                      target.top() + (target.height() - scene.height * scale) / 2);
    painter.scale(scale, scale);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(0, 0, scene.width, scene.height), ToColor(scene.background));
    for (const ExportScene::Item& item : scene.items) {
        if (const auto* p = std::get_if<ExportScene::Polygon>(&item)) {
            // Without an outline of its own a polygon gets a hairline in its
            // fill colour, so anti-aliasing leaves no seams between cells.
            QPen pen(ToColor(p->strokeWidth > 0 ? p->stroke : p->fill), p->strokeWidth > 0 ? p->strokeWidth : 0.5);
            pen.setJoinStyle(Qt::RoundJoin);
            painter.setPen(pen);
            painter.setBrush(ToColor(p->fill));
            painter.drawPolygon(ToPolygon(p->points));
        } else if (const auto* l = std::get_if<ExportScene::Polyline>(&item)) {
            QPen pen(ToColor(l->color), l->width);
            pen.setCapStyle(Qt::RoundCap);
            painter.setPen(pen);
            painter.setBrush(Qt::NoBrush);
            painter.drawPolyline(ToPolygon(l->points));
        } else if (const auto* t = std::get_if<ExportScene::Text>(&item)) {
            PaintText(painter, *t);
        } else if (const auto* image = std::get_if<ExportScene::Image>(&item)) {
            const QImage pixels(reinterpret_cast<const uchar*>(image->pixels.data()), image->pixelWidth,
                                image->pixelHeight, image->pixelWidth * 4, QImage::Format_RGBX8888);
            painter.drawImage(QRectF(image->left, image->top, image->width, image->height), pixels);
        }
    }
    painter.restore();
}

}  // namespace vexplot
