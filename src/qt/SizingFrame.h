#pragma once
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <functional>

class QWidget;

namespace vexplot {

struct PixelRect;

// The sizing frame of a floating auxiliary window drawn by the control (the
// legend, the info window): over the window's outer few pixels the cursor
// shows the edge it would grab, and a left drag there sizes the window by
// WindowSizing's rules. The new rectangle goes to `apply` (the window's
// logic, which places the window and remembers the size); the frame moves
// nothing itself. It watches the window's own events, so children that
// cover the inside keep theirs.
class SizingFrame final : public QObject {
public:
    using Apply = std::function<void(const PixelRect& rect)>;
    // `window` is watched for its life; `enabled` says whether it may be
    // sized now (a docked info window may not).
    SizingFrame(QWidget* window, QSize minimum, std::function<bool()> enabled, Apply apply);

    bool Sizing() const { return edges_ != 0; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowCursorFor(uint32_t edges);

    QWidget* window_;
    QSize minimum_;
    std::function<bool()> enabled_;
    Apply apply_;
    uint32_t edges_ = 0;       // the edges being dragged; 0 when none
    uint32_t cursorEdges_ = 0;  // the edges the cursor shape shows
    QPoint startCursor_;       // global, at the press
    QRect startGeometry_;      // the window's geometry at the press
};

}  // namespace vexplot
