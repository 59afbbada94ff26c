#include "ui/WindowSizing.h"

#include <algorithm>

namespace vexplot {

uint32_t WindowSizing::EdgesAt(int32_t width, int32_t height, PixelPoint p) {
    if (p.x < 0 || p.y < 0 || p.x >= width || p.y >= height) return 0;
    const bool left = p.x < kBorder, right = p.x >= width - kBorder;
    const bool top = p.y < kBorder, bottom = p.y >= height - kBorder;
    if (!left && !right && !top && !bottom) return 0;
    // Near a corner the grip takes both edges, so that the corner is easy
    // to catch with a border only a few pixels wide.
    const bool nearLeft = p.x < kCorner, nearRight = p.x >= width - kCorner;
    const bool nearTop = p.y < kCorner, nearBottom = p.y >= height - kCorner;
    uint32_t edges = 0;
    if (left || ((top || bottom) && nearLeft)) edges |= kLeft;
    else if (right || ((top || bottom) && nearRight)) edges |= kRight;
    if (top || ((left || right) && nearTop)) edges |= kTop;
    else if (bottom || ((left || right) && nearBottom)) edges |= kBottom;
    return edges;
}

PixelRect WindowSizing::Resized(const PixelRect& start, uint32_t edges, int32_t dx, int32_t dy, int32_t minWidth,
                                int32_t minHeight) {
    PixelRect r = start;
    if (edges & kLeft) r.left = std::min(start.left + dx, start.right - minWidth);
    if (edges & kRight) r.right = std::max(start.right + dx, start.left + minWidth);
    if (edges & kTop) r.top = std::min(start.top + dy, start.bottom - minHeight);
    if (edges & kBottom) r.bottom = std::max(start.bottom + dy, start.top + minHeight);
    return r;
}

}  // namespace vexplot
