#pragma once
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <map>

class QVariantAnimation;

namespace vexplot {

// Shows and hides windows with the platform's animation flags (anim::), the
// visible part of each frame as LegendAnimation::FrameAt lays it out: it
// grows from the centre or from the side the movement comes from, and a
// hide retraces the show backwards. The picture is uncovered in place.
class WindowAnimator final : public QObject {
public:
    // Starts the animation; one running on the same widget is finished first.
    void Animate(QWidget* widget, uint32_t flags, int milliseconds);

private:
    std::map<QWidget*, QPointer<QVariantAnimation>> running_;
};

}  // namespace vexplot
