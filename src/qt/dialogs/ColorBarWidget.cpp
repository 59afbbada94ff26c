#include "qt/dialogs/ColorBarWidget.h"

#include <QColorDialog>
#include <QContextMenuEvent>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include "ui/PaletteEditor.h"

namespace vexplot {

namespace {

QColor ToQColor(uint32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

uint32_t ToBgr(const QColor& c) {
    return static_cast<uint32_t>(c.red()) | (static_cast<uint32_t>(c.green()) << 8) |
           (static_cast<uint32_t>(c.blue()) << 16);
}

std::optional<QColor> ChooseColor(QColor start, QWidget* parent) {
    const QColor chosen = QColorDialog::getColor(start, parent, QObject::tr("Color"));
    if (!chosen.isValid()) return std::nullopt;
    return chosen;
}

}  // namespace

ColorBarWidget::ColorBarWidget(PaletteEditor& logic, QWidget* parent) : QWidget(parent), logic_(logic) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(false);
    setAccessibleName(tr("Color bar"));
}

QSize ColorBarWidget::sizeHint() const { return {420, kBarHeight + kMarkerHeight + 6}; }
QSize ColorBarWidget::minimumSizeHint() const { return {200, kBarHeight + kMarkerHeight + 6}; }

int ColorBarWidget::XOf(int position) const {
    return BarLeft() + static_cast<int>(static_cast<double>(position) * BarWidth() / 100.0 + 0.5);
}

std::optional<size_t> ColorBarWidget::MarkerAt(QPoint point) const {
    if (!logic_.CustomMode() || point.y() < kBarHeight || point.y() > kBarHeight + kMarkerHeight + 4) return std::nullopt;
    const auto& colors = logic_.BaseColors();
    // The nearest marker within reach, so that markers close together can
    // still each be picked.
    std::optional<size_t> best;
    int bestDistance = kMarkerHalfWidth + 1;
    for (size_t i = 0; i < colors.size(); ++i) {
        const int distance = std::abs(point.x() - XOf(colors[i].position));
        if (distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

void ColorBarWidget::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const int left = BarLeft(), width = BarWidth();
    QImage row(width, 1, QImage::Format_RGB32);
    for (int x = 0; x < width; ++x) row.setPixelColor(x, 0, ToQColor(logic_.ColorAt(left + x, left, width)));
    const QRect bar(left, 0, width, kBarHeight);
    p.drawImage(bar, row);
    p.setPen(palette().color(QPalette::Mid));
    p.drawRect(bar.adjusted(0, 0, -1, -1));
    if (hasFocus() && !(logic_.CustomMode() && selected_)) {
        p.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        p.drawRect(bar.adjusted(1, 1, -2, -2));
    }
    if (!logic_.CustomMode()) return;
    p.setRenderHint(QPainter::Antialiasing);
    const auto& colors = logic_.BaseColors();
    for (size_t i = 0; i < colors.size(); ++i) {
        const int x = XOf(std::min(colors[i].position, 100));
        QPainterPath arrow;
        arrow.moveTo(x, kBarHeight + 1);
        arrow.lineTo(x + kMarkerHalfWidth, kBarHeight + kMarkerHeight);
        arrow.lineTo(x - kMarkerHalfWidth, kBarHeight + kMarkerHeight);
        arrow.closeSubpath();
        const bool chosen = selected_ == i;
        p.setPen(QPen(chosen ? palette().color(QPalette::Highlight) : palette().color(QPalette::WindowText),
                      chosen ? 2.0 : 1.0));
        p.setBrush(ToQColor(colors[i].color));
        p.drawPath(arrow);
    }
    if (hasFocus() && selected_) {
        const int x = XOf(std::min(colors[*selected_].position, 100));
        p.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.drawRect(x - kMarkerHalfWidth - 2, kBarHeight, 2 * kMarkerHalfWidth + 4, kMarkerHeight + 3);
    }
}

void ColorBarWidget::Select(std::optional<size_t> index) {
    selected_ = index;
    update();
}

void ColorBarWidget::mousePressEvent(QMouseEvent* event) {
    const auto marker = MarkerAt(event->position().toPoint());
    if (marker) Select(marker);
    if (event->button() == Qt::LeftButton && marker && logic_.CanDrag(*marker)) dragging_ = marker;
}

void ColorBarWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) return;
    const int position = PaletteEditor::PositionAt(event->position().toPoint().x(), BarLeft(), BarWidth());
    dragging_ = logic_.MoveMarker(*dragging_, position);
    Select(dragging_);
}

void ColorBarWidget::mouseReleaseEvent(QMouseEvent*) { dragging_.reset(); }

void ColorBarWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!logic_.CustomMode() || event->button() != Qt::LeftButton) return;
    const QPoint at = event->position().toPoint();
    if (const auto marker = MarkerAt(at)) {
        ModifyMarker(*marker);
    } else if (at.y() < kBarHeight) {
        AddColorAt(PaletteEditor::PositionAt(at.x(), BarLeft(), BarWidth()),
                   ToQColor(logic_.ColorAt(at.x(), BarLeft(), BarWidth())));
    }
}

void ColorBarWidget::contextMenuEvent(QContextMenuEvent* event) {
    if (!logic_.CustomMode()) return;
    QPoint at = event->pos();
    std::optional<size_t> marker = MarkerAt(at);
    if (event->reason() == QContextMenuEvent::Keyboard && selected_) {
        marker = selected_;
        at = QPoint(XOf(logic_.BaseColors()[*selected_].position), kBarHeight + kMarkerHeight);
    }
    if (marker) {
        Select(marker);
        MarkerMenu(*marker, mapToGlobal(at));
    } else if (at.y() < kBarHeight) {
        BarMenu(at.x(), mapToGlobal(at));
    }
}

void ColorBarWidget::MarkerMenu(size_t index, QPoint globalAt) {
    QMenu menu(tr("&Base Color Marker"), this);
    QAction* modify = menu.addAction(tr("&Modify Color ..."));
    modify->setStatusTip(tr("Modifies base color"));
    QAction* remove = nullptr;
    if (logic_.CanDelete()) {
        remove = menu.addAction(tr("&Delete"));
        remove->setStatusTip(tr("Deletes base color marker"));
    }
    connect(&menu, &QMenu::hovered, this, [this](QAction* a) { emit StatusText(a->statusTip()); });
    QAction* chosen = menu.exec(globalAt);
    emit StatusText({});
    if (chosen == modify) ModifyMarker(index);
    if (chosen && chosen == remove) DeleteMarker(index);
}

void ColorBarWidget::BarMenu(int x, QPoint globalAt) {
    QMenu menu(tr("&Color Bmp"), this);
    QAction* add = menu.addAction(tr("&Add New Color ..."));
    add->setStatusTip(tr("Adds new color"));
    QAction* equal = menu.addAction(tr("&Equal Color Distance"));
    equal->setStatusTip(tr("Makes color distance equal"));
    connect(&menu, &QMenu::hovered, this, [this](QAction* a) { emit StatusText(a->statusTip()); });
    QAction* chosen = menu.exec(globalAt);
    emit StatusText({});
    if (chosen == add)
        AddColorAt(PaletteEditor::PositionAt(x, BarLeft(), BarWidth()),
                   ToQColor(logic_.ColorAt(x, BarLeft(), BarWidth())));
    if (chosen == equal) {
        logic_.EqualDistance();
        update();
    }
}

void ColorBarWidget::AddColorAt(int position, QColor start) {
    if (!logic_.CustomMode()) return;
    if (logic_.AtColorLimit()) {
        QMessageBox::information(this, window()->windowTitle(), tr(PaletteEditor::kLimitMessage));
        return;
    }
    if (const auto color = ChooseColor(start, this)) {
        logic_.AddColor(position, ToBgr(*color));
        Select(std::nullopt);
    }
}

void ColorBarWidget::ModifyMarker(size_t index) {
    if (index >= logic_.BaseColors().size()) return;
    if (const auto color = ChooseColor(ToQColor(logic_.BaseColors()[index].color), this)) {
        logic_.ModifyColor(index, ToBgr(*color));
        update();
    }
}

void ColorBarWidget::DeleteMarker(size_t index) {
    if (logic_.DeleteColor(index)) Select(std::nullopt);
}

void ColorBarWidget::keyPressEvent(QKeyEvent* event) {
    const size_t count = logic_.BaseColors().size();
    if (!logic_.CustomMode() || count == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    const size_t current = selected_.value_or(0);
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right: {
            const int step = event->key() == Qt::Key_Left ? -1 : 1;
            if (shift && selected_ && logic_.CanDrag(*selected_)) {
                Select(logic_.MoveMarker(*selected_, logic_.BaseColors()[*selected_].position + step));
            } else if (!shift) {
                const auto next = static_cast<int64_t>(current) + (selected_ ? step : 0);
                Select(static_cast<size_t>(std::clamp<int64_t>(next, 0, static_cast<int64_t>(count) - 1)));
            }
            break;
        }
        case Qt::Key_Space: ModifyMarker(current); break;
        case Qt::Key_Delete: DeleteMarker(current); break;
        case Qt::Key_Insert: {
            // Halfway to the next marker, or to the previous one from the last.
            const auto& colors = logic_.BaseColors();
            const size_t other = current + 1 < count ? current + 1 : current - 1;
            const int position = (colors[current].position + colors[std::min(other, count - 1)].position) / 2;
            AddColorAt(position, ToQColor(colors[current].color));
            break;
        }
        default: QWidget::keyPressEvent(event); return;
    }
}

}  // namespace vexplot
