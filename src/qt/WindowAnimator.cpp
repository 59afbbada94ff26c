#include "qt/WindowAnimator.h"

#include <QRegion>
#include <QVariantAnimation>
#include <algorithm>

#include "site/WindowInput.h"
#include "ui/LegendAnimation.h"

namespace vexplot {

namespace {

// Places `widget` for the frame at `t`; `picture` is its client rectangle
// at the final place, in its parent's (or the screen's) pixels.
void PlaceFrame(QWidget& widget, uint32_t flags, const QRect& picture, double t) {
    // A top-level window's position is its frame's corner; its geometry,
    // which the picture follows, lies inside the frame.
    const QPoint frame = widget.geometry().topLeft() - widget.pos();
    const PixelRect final{picture.left(), picture.top(), picture.left() + picture.width(),
                          picture.top() + picture.height()};
    const auto p = LegendAnimation::PlacementAt(flags, final, PixelPoint{frame.x(), frame.y()}, t);
    widget.move(p.origin.x, p.origin.y);
    // At least one pixel: Qt takes an empty mask as no mask at all.
    widget.setMask(QRegion(p.mask.left, p.mask.top, std::max(1, p.mask.right - p.mask.left),
                           std::max(1, p.mask.bottom - p.mask.top)));
}

}  // namespace

void WindowAnimator::Finish(QWidget* widget) {
    const auto it = running_.find(widget);
    if (it == running_.end()) return;
    QPointer<QVariantAnimation> animation = it->second.animation;
    running_.erase(it);
    if (!animation) return;
    animation->setCurrentTime(animation->duration());
    animation->stop();
}

QRect WindowAnimator::Geometry(const QWidget* widget) const {
    const auto it = running_.find(widget);
    return it != running_.end() && it->second.animation ? it->second.picture : widget->geometry();
}

void WindowAnimator::Animate(QWidget* widget, uint32_t flags, int milliseconds) {
    Finish(widget);
    const bool hide = flags & anim::kHide;
    const QRect picture = widget->geometry();
    auto* animation = new QVariantAnimation(this);
    animation->setDuration(std::max(milliseconds, 1));
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    QPointer<QWidget> target(widget);
    QObject::connect(animation, &QVariantAnimation::valueChanged, widget, [target, flags, picture](const QVariant& v) {
        if (target) PlaceFrame(*target, flags, picture, v.toDouble());
    });
    QObject::connect(animation, &QVariantAnimation::finished, widget, [this, target, hide, picture] {
        if (!target) return;
        running_.erase(target.data());
        target->setGeometry(picture);
        target->clearMask();
        if (hide) target->hide();
    });
    running_[widget] = Running{animation, picture};
    if (!hide) {
        PlaceFrame(*widget, flags, picture, 0.0);
        widget->show();
        widget->raise();
    }
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

}  // namespace vexplot
