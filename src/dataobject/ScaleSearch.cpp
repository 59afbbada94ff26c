#include "dataobject/ScaleSearch.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace vexplot {

namespace {

// `first` is the first element not before `value` in the scale's order;
// `distance(a, b)` how far b lies beyond a in that order.
template <class Distance>
int32_t Nearer(std::span<const double> scale, size_t first, double value, Distance distance) {
    if (first == 0) return 0;
    if (first == scale.size()) return static_cast<int32_t>(scale.size() - 1);
    const bool lowerWins = distance(scale[first - 1], value) <= distance(value, scale[first]);
    return static_cast<int32_t>(lowerWins ? first - 1 : first);
}

}  // namespace

int32_t NearestScaleIndex(std::span<const double> scale, double value) {
    if (scale.empty() || std::isnan(value)) return 0;
    if (scale.front() <= scale.back()) {
        const auto it = std::lower_bound(scale.begin(), scale.end(), value);
        return Nearer(scale, static_cast<size_t>(it - scale.begin()), value,
                      [](double a, double b) { return b - a; });
    }
    const auto it = std::lower_bound(scale.begin(), scale.end(), value, std::greater<>());
    return Nearer(scale, static_cast<size_t>(it - scale.begin()), value, [](double a, double b) { return a - b; });
}

}  // namespace vexplot
