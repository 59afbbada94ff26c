#include "model/AxisTicks.h"

#include <cmath>
#include <utility>
#include <vector>

namespace vexplot {

namespace {

// Rounding half away from zero, kept in double so that no range overflows
// an integer.
double RoundHalfAway(double x) { return x > 0 ? std::trunc(x + 0.5) : std::trunc(x - 0.5); }

// trunc((hi - lo) / step) + 1, or 0 when that exceeds kMaxTickCount.
int TickCount(double lo, double hi, double step) {
    const double count = std::trunc((hi - lo) / step) + 1;
    return count >= 1 && count <= kMaxTickCount ? static_cast<int>(count) : 0;
}

AxisTicks ComputeTicksInRange(double min, double max, double step) {
    const double range = max - min;
    if (!std::isfinite(min) || !std::isfinite(max) || !std::isfinite(range) || !(range > 0)) return {step, {}};

    double n = 7;
    if (!(step > 0) || range <= step) step = range * (1.0 / 7);
    else n = RoundHalfAway(range / step);

    const double p = std::pow(10.0, RoundHalfAway(std::log10(step)));
    if (!(p > 0) || !std::isfinite(p)) return {step, {}};
    step = RoundHalfAway(step / p) * p;
    if (step == 0) step = p;

    double hi = RoundHalfAway(max / p) * p;
    if (hi < max) hi += step;
    double lo = RoundHalfAway(min / p) * p;
    if (lo > min) lo -= step;

    int count = TickCount(lo, hi, step);
    if (count > 0 && n * 0.6 >= count) {
        step /= 2;
        count = TickCount(lo, hi, step);
    }
    if (count == 0) return {step, {}};

    AxisTicks ticks{step, {}};
    ticks.values.reserve(static_cast<size_t>(count) + 2);
    ticks.values.push_back(lo - step);
    for (int i = 1; i <= count + 1; ++i) ticks.values.push_back((i - 1) * step + lo);
    return ticks;
}

}  // namespace

AxisTicks ComputeTicks(double min, double max, double step) {
    // Near the largest double the range, or the rounded ends one step
    // beyond it, overflow: the ticks are then found on the range shrunk by
    // a power of ten and scaled back, and those beyond the doubles dropped.
    constexpr double kLarge = 1e300;
    constexpr double kShrink = 1e10;
    const bool large = std::fabs(min) > kLarge || std::fabs(max) > kLarge || !std::isfinite(max - min);
    if (!large || !std::isfinite(min) || !std::isfinite(max)) return ComputeTicksInRange(min, max, step);
    AxisTicks ticks = ComputeTicksInRange(min / kShrink, max / kShrink, step / kShrink);
    ticks.step *= kShrink;
    std::vector<double> kept;
    kept.reserve(ticks.values.size());
    for (const double v : ticks.values)
        if (std::isfinite(v * kShrink)) kept.push_back(v * kShrink);
    ticks.values = std::move(kept);
    return ticks;
}

}  // namespace vexplot
