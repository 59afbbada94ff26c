#include "qt/SizingFrame.h"

#include <QMouseEvent>
#include <QWidget>

#include "ui/WindowSizing.h"

namespace vexplot {

namespace {

Qt::CursorShape CursorFor(uint32_t edges) {
    using S = WindowSizing;
    const bool horizontal = edges & (S::kLeft | S::kRight);
    const bool vertical = edges & (S::kTop | S::kBottom);
    if (horizontal && vertical) {
        // Top-left and bottom-right corners size along the falling diagonal.
        const bool falling = ((edges & S::kLeft) != 0) == ((edges & S::kTop) != 0);
        return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
    }
    return horizontal ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

}  // namespace

SizingFrame::SizingFrame(QWidget* window, QSize minimum, std::function<bool()> enabled, Apply apply)
    : QObject(window), window_(window), minimum_(minimum), enabled_(std::move(enabled)), apply_(std::move(apply)) {
    window_->setMouseTracking(true);
    window_->installEventFilter(this);
}

void SizingFrame::ShowCursorFor(uint32_t edges) {
    if (edges == cursorEdges_) return;
    cursorEdges_ = edges;
    if (edges == 0)
        window_->unsetCursor();
    else
        window_->setCursor(CursorFor(edges));
}

bool SizingFrame::eventFilter(QObject* watched, QEvent* event) {
    if (watched != window_) return false;
    const QEvent::Type type = event->type();
    if (type == QEvent::Leave && edges_ == 0) ShowCursorFor(0);
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove && type != QEvent::MouseButtonRelease)
        return false;
    auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint at = mouse->position().toPoint();
    const QPoint global = mouse->globalPosition().toPoint();
    switch (type) {
        case QEvent::MouseButtonPress: {
            if (mouse->button() != Qt::LeftButton || !enabled_()) return false;
            edges_ = WindowSizing::EdgesAt(window_->width(), window_->height(), PixelPoint{at.x(), at.y()});
            if (edges_ == 0) return false;
            startCursor_ = global;
            startGeometry_ = window_->geometry();
            return true;
        }
        case QEvent::MouseMove: {
            if (edges_ == 0) {
                const bool hover = mouse->buttons() == Qt::NoButton && enabled_();
                ShowCursorFor(hover ? WindowSizing::EdgesAt(window_->width(), window_->height(),
                                                             PixelPoint{at.x(), at.y()})
                                    : 0);
                return false;
            }
            const QRect g = startGeometry_;
            const PixelRect start{g.left(), g.top(), g.left() + g.width(), g.top() + g.height()};
            const QPoint d = global - startCursor_;
            apply_(WindowSizing::Resized(start, edges_, d.x(), d.y(), minimum_.width(), minimum_.height()));
            return true;
        }
        case QEvent::MouseButtonRelease: {
            if (edges_ == 0 || mouse->button() != Qt::LeftButton) return false;
            edges_ = 0;
            return true;
        }
        default: return false;
    }
}

}  // namespace vexplot
