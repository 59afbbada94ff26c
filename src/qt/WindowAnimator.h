#pragma once
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <map>

class QVariantAnimation;

namespace vexplot {

// Shows and hides windows with the platform's animation flags (anim::), each
// frame as LegendAnimation::PlacementAt lays it out: a slide moves the
// window, picture and all, from the edge it enters at to where it ends up,
// showing only what lies inside its final rectangle; a roll or the centre
// animation uncovers the picture in place. A hide retraces the show.
//
// The window's place when the animation starts is its final place (a show)
// or the place it leaves from (a hide); the window is back there, unmasked,
// when the animation ends or is finished early.
class WindowAnimator final : public QObject {
public:
    // Starts the animation; one running on the same widget is finished first.
    void Animate(QWidget* widget, uint32_t flags, int milliseconds);
    // Ends a running animation on `widget` at once (before the widget is
    // moved or shown by other means); nothing when none runs.
    void Finish(QWidget* widget);
    // The geometry `widget` has when its running animation ends (the
    // control reads a window's place as that, not as a frame's); its
    // geometry now when none runs.
    QRect Geometry(const QWidget* widget) const;

private:
    struct Running {
        QPointer<QVariantAnimation> animation;
        QRect picture;
    };
    std::map<const QWidget*, Running> running_;
};

}  // namespace vexplot
