#pragma once
#include <array>
#include <cstdint>

#include "site/WindowInput.h"
#include "engine/IGraphEngine.h"

namespace vexplot {

enum class InfoButton : int32_t { None = -1, Close = 0, Transparent = 1, Dock = 2 };

// The three buttons of the info window's caption strip and the mouse's
// dealings with them. Buttons sit at the right end, from the right: close,
// transparent, dock (the last only on a dockable window).
//
// A press on a button holds it: moving off draws it released, moving back
// draws it pushed again, and only a release over it performs it. A toggle
// button draws its current state (pushed while on) and, while held over,
// the state it would switch to.
class InfoCaption {
public:
    static constexpr int32_t kButtonWidth = 14;
    static constexpr int32_t kButtonHeight = 12;
    static constexpr int32_t kGap = 2;

    enum class Press : int32_t { Outside, Button, Drag };

    // Places the buttons in a strip `width` x `height` at the window's top;
    // a height of 0 means no caption (nothing can be pressed).
    void Layout(int32_t width, int32_t height, bool dockable);
    // The button's rectangle in window pixels; empty when it is not shown.
    PixelRect ButtonRect(InfoButton button) const;
    PixelRect Strip() const { return {0, 0, width_, height_}; }
    InfoButton HitTest(PixelPoint point) const;

    // A left press: holds a button, starts a drag elsewhere in the strip,
    // or leaves the press to the client area.
    Press OnPress(PixelPoint point);
    // While a button is held; true when its drawing changes.
    bool OnMove(PixelPoint point);
    // Ends holding; the button to perform (released over it), else None.
    InfoButton OnRelease(PixelPoint point);

    InfoButton Held() const { return held_; }
    // How to draw `button` given the modes the toggles stand for.
    bool Pushed(InfoButton button, bool transparent, bool docked) const;

private:
    static bool Contains(const PixelRect& r, PixelPoint p) {
        return p.x >= r.left && p.x < r.right && p.y >= r.top && p.y < r.bottom;
    }

    std::array<PixelRect, 3> rects_{};
    int32_t width_ = 0;
    int32_t height_ = 0;
    InfoButton held_ = InfoButton::None;
    bool over_ = false;  // the cursor is over the held button
};

}  // namespace vexplot
