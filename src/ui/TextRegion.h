#pragma once
#include <cstdint>
#include <vector>

#include "engine/IGraphEngine.h"

namespace vexplot {

// A picture of text on a plain background, as a window system without
// region support hands it over: width x height pixels, row by row from the
// top, `stride` pixels from one row to the next. Only whether a pixel
// equals the background matters, so the channel order is the caller's.
struct TextMask {
    int32_t width = 0;
    int32_t height = 0;
    int32_t stride = 0;
    std::vector<uint32_t> pixels;
};

// The shape of a piece of text: the union of the horizontal runs of pixels
// that differ from the background, as rectangles in the mask's pixels.
// Runs that repeat unchanged on consecutive rows are merged into one taller
// rectangle, which keeps the shape of text lines small.
class TextRegion {
public:
    // `background` is compared on the low 24 bits only, so an alpha channel
    // in the top byte makes no difference.
    static std::vector<PixelRect> Runs(const TextMask& mask, uint32_t background);
    // The same rectangles moved by (dx, dy) and clipped to `clip`; those
    // left empty are dropped.
    static std::vector<PixelRect> Place(const std::vector<PixelRect>& runs, int32_t dx, int32_t dy,
                                        const PixelRect& clip);
};

}  // namespace vexplot
