#pragma once
#include <cstdint>
#include <functional>

#include "com/SafeArray.h"

namespace vexplot::test {

// A grid of xCount by yCount (dimension 0 = Y, so the X index runs slower)
// holding value(ix, iy) in each cell.
inline SafeArray MakeGrid(uint32_t xCount, uint32_t yCount, const std::function<double(uint32_t, uint32_t)>& value) {
    SafeArray grid = SafeArray::Create2D(yCount, xCount);
    double* cells = grid.MutableData();
    for (uint32_t ix = 0; ix < xCount; ++ix)
        for (uint32_t iy = 0; iy < yCount; ++iy) cells[size_t{ix} * yCount + iy] = value(ix, iy);
    return grid;
}

// The same value in every cell.
inline SafeArray MakeGrid(uint32_t xCount, uint32_t yCount, double value) {
    return MakeGrid(xCount, yCount, [value](uint32_t, uint32_t) { return value; });
}

}  // namespace vexplot::test
