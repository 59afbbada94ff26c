#pragma once
#include <cstdint>

#include "site/WindowInput.h"
#include "engine/IGraphEngine.h"

namespace vexplot {

// The sizing frame of a floating auxiliary window (the legend, the info
// window): which edges a point on the frame grabs, and the rectangle a drag
// of those edges gives. The opposite edges stay where they are; a window
// never gets smaller than its minimum size, and an edge dragged past that
// stops there rather than pushing the window along.
class WindowSizing {
public:
    // Edges as bits; a corner is two of them.
    static constexpr uint32_t kLeft = 1;
    static constexpr uint32_t kTop = 2;
    static constexpr uint32_t kRight = 4;
    static constexpr uint32_t kBottom = 8;
    // How far in from the window's outline the frame can be grabbed.
    static constexpr int32_t kBorder = 4;
    // A corner grips this far along both of its edges, as a desktop frame does.
    static constexpr int32_t kCorner = 12;

    // The edges under `point` (the window's own pixels) of a window
    // `width` x `height`; 0 inside the frame and outside the window.
    static uint32_t EdgesAt(int32_t width, int32_t height, PixelPoint point);
    // `start` with the grabbed `edges` moved by (dx, dy), at least
    // minWidth x minHeight.
    static PixelRect Resized(const PixelRect& start, uint32_t edges, int32_t dx, int32_t dy, int32_t minWidth,
                             int32_t minHeight);
};

}  // namespace vexplot
