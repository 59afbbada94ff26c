#pragma once
#include <cstdint>
#include <span>

namespace vexplot {

// The index of the element of `scale` nearest to `value`, for a scale that
// ascends or descends (judged by its first and last element). Values beyond
// either end give the index of that end; a value exactly between two
// elements gives the lower index, as does a run of equal elements. NaN and an
// empty scale give 0. Binary search: O(log n). On a scale that is not
// monotonic the answer is some valid index.
int32_t NearestScaleIndex(std::span<const double> scale, double value);

}  // namespace vexplot
