#pragma once
#include <cstdint>

#include "engine/IGraphEngine.h"

namespace vexplot {

// Whether `tile` is a usable target and lies, at (left, top), wholly inside
// a picture of fullWidth x fullHeight: what both surfaces check before they
// render one window of a larger picture.
inline bool ValidTileWindow(const ImageBuffer* tile, int32_t fullWidth, int32_t fullHeight, int32_t left,
                            int32_t top) {
    if (!tile || !tile->pixels || tile->width <= 0 || tile->height <= 0 || tile->stride < tile->width) return false;
    return fullWidth > 0 && fullHeight > 0 && left >= 0 && top >= 0 && left + tile->width <= fullWidth &&
           top + tile->height <= fullHeight;
}

}  // namespace vexplot
