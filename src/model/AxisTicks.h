#pragma once
#include <vector>

namespace vexplot {

// The major ticks of an axis: the rounded step and the tick values that
// cover the range, one step below its rounded low end included.
struct AxisTicks {
    double step = 0.0;
    std::vector<double> values;  // ascending, step apart
};

// Chooses a rounded step near `step` and the ticks covering [min, max].
// R(x) is rounding half away from zero.
// 1. range = max - min; if range <= step (or step is not positive: "choose
//    for me"), step = range / 7 and n = 7 intervals, else n = R(range / step).
// 2. p = 10^R(log10 step): rounded, not floored, so a step of 0.4 has p = 1
//    and becomes 0, which then gives step = p. step = R(step / p) * p.
// 3. hi = R(max / p) * p, one step further when below max; lo = R(min / p) * p,
//    one step lower when above min.
// 4. count = trunc((hi - lo) / step) + 1; when n * 0.6 >= count the step is
//    halved and count recomputed.
// 5. values: lo - step, then lo + i * step for i = 0 .. count (count + 2 values).
// Plot files, exports and the info window's read-outs have always shown
// these ticks; keep the arithmetic as it stands.
//
// Degenerate input gives no values: a bound that is not finite, min > max,
// an empty range (the caller widens it), a range too small to round, or one
// that would need more than kMaxTickCount ticks at the requested step.
AxisTicks ComputeTicks(double min, double max, double step);

inline constexpr int kMaxTickCount = 100000;

}  // namespace vexplot
