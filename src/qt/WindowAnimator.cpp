#include "qt/WindowAnimator.h"

#include <QRegion>
#include <QVariantAnimation>
#include <algorithm>

#include "site/WindowInput.h"
#include "ui/LegendAnimation.h"

namespace vexplot {

namespace {

QRegion VisiblePart(const QWidget& widget, uint32_t flags, double t) {
    const PixelRect clip = LegendAnimation::FrameAt(flags, widget.width(), widget.height(), t).clip;
    // At least one pixel: Qt takes an empty mask as no mask at all.
    return QRegion(clip.left, clip.top, std::max(1, clip.right - clip.left), std::max(1, clip.bottom - clip.top));
}

}  // namespace

void WindowAnimator::Animate(QWidget* widget, uint32_t flags, int milliseconds) {
    if (auto it = running_.find(widget); it != running_.end() && it->second) {
        it->second->setCurrentTime(it->second->duration());
        it->second->stop();
    }
    const bool hide = flags & anim::kHide;
    auto* animation = new QVariantAnimation(this);
    animation->setDuration(std::max(milliseconds, 1));
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    QPointer<QWidget> target(widget);
    QObject::connect(animation, &QVariantAnimation::valueChanged, widget, [target, flags](const QVariant& v) {
        if (target) target->setMask(VisiblePart(*target, flags, v.toDouble()));
    });
    QObject::connect(animation, &QVariantAnimation::finished, widget, [target, hide] {
        if (!target) return;
        target->clearMask();
        if (hide) target->hide();
    });
    running_[widget] = animation;
    if (!hide) {
        widget->setMask(VisiblePart(*widget, flags, 0.0));
        widget->show();
        widget->raise();
    }
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

}  // namespace vexplot
