#pragma once
#include <cstdint>
#include <string>

#include "com/SafeArray.h"

namespace vexplot {

// Everything a data object holds, as one value: loaders build a new one and
// the object swaps it in whole, so a failed load leaves the old one intact.
//
// Invariant (Check() tells): either there is no grid (the null array) and
// both scales are null too, or the grid has two dimensions, dimension 0 = Y
// and dimension 1 = X, each of at least one element, with an X scale of X
// count values and a Y scale of Y count values (one dimension each).
struct GraphContents {
    // The most cells a grid may have (2^30, 8 GiB of doubles). Loaders refuse
    // larger dimensions before allocating anything.
    static constexpr uint64_t kMaxCells = uint64_t{1} << 30;

    SafeArray grid;
    SafeArray xScale;
    SafeArray yScale;
    std::string xLabel;
    std::string yLabel;
    std::string zLabel;
    std::string name;

    bool HasGrid() const { return !grid.IsNull() && grid.ElementCount() > 0; }
    int32_t XCount() const { return HasGrid() ? static_cast<int32_t>(grid.Bound(1).count) : 0; }
    int32_t YCount() const { return HasGrid() ? static_cast<int32_t>(grid.Bound(0).count) : 0; }

    // Empty when the invariant holds, else what breaks it ("the X scale has
    // 3 values but the grid has 4 X indices").
    std::string Check() const;

    // Why a grid of xCount by yCount cannot be held (negative, zero in one
    // direction only, more than kMaxCells), or empty when it can.
    static std::string CheckSize(int64_t xCount, int64_t yCount);
    // 0, 1, ..., count - 1: the scale a grid gets when none is given.
    static SafeArray IndexScale(uint32_t count);
};

}  // namespace vexplot
