#pragma once
// Rectangles as arrays {left, top, right, bottom}, which compare and print
// in a failed expectation without help.
#include <array>
#include <cstdint>
#include <vector>

#include "engine/IGraphEngine.h"

namespace vexplot::test {

using Box = std::array<int32_t, 4>;

inline Box B(const PixelRect& r) { return {r.left, r.top, r.right, r.bottom}; }
inline std::vector<Box> B(const std::vector<PixelRect>& rects) {
    std::vector<Box> boxes;
    for (const PixelRect& r : rects) boxes.push_back(B(r));
    return boxes;
}

}  // namespace vexplot::test
