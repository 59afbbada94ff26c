#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "model/AxisTicks.h"

namespace vexplot {
namespace {

struct TickCase {
    const char* name;
    double min, max, step;
    double expectedStep;
    std::vector<double> expected;
};

TEST(ComputeTicks, ChoosesTheRoundedStepAndCoversTheRange) {
    const TickCase cases[] = {
        {"worked example", 0, 10, 2, 2, {-2, 0, 2, 4, 6, 8, 10, 12}},
        {"range within the step: seven intervals", 0, 1, 1, 0.1,
         {-0.1, 0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1.0, 1.1}},
        {"few ticks halve the step", 0, 3.5, 0.35, 0.5, {-0.5, 0, 0.5, 1, 1.5, 2, 2.5, 3, 3.5, 4, 4.5}},
        {"step / p of 2.5 rounds away from zero", 0, 25, 2.5, 3, {-3, 0, 3, 6, 9, 12, 15, 18, 21, 24, 27}},
        {"p is rounded, not floored: 0.4 becomes 1", 0, 1, 0.4, 1, {-1, 0, 1, 2}},
        {"negative range", -10, -2, 2, 2, {-12, -10, -8, -6, -4, -2, 0}},
        {"range across zero, ends on half steps", -2.5, 2.5, 1, 1, {-4, -3, -2, -1, 0, 1, 2, 3, 4}},
        {"not a positive step: seven intervals", 0, 7, 0, 1, {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8}},
    };
    for (const TickCase& c : cases) {
        SCOPED_TRACE(c.name);
        const AxisTicks ticks = ComputeTicks(c.min, c.max, c.step);
        EXPECT_DOUBLE_EQ(ticks.step, c.expectedStep);
        ASSERT_EQ(ticks.values.size(), c.expected.size());
        for (size_t i = 0; i < c.expected.size(); ++i) EXPECT_NEAR(ticks.values[i], c.expected[i], 1e-12) << i;
    }
}

TEST(ComputeTicks, DegenerateInputGivesNoTicks) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        const char* name;
        double min, max, step;
    } cases[] = {
        {"empty range", 5, 5, 1},
        {"reversed range", 10, 0, 2},
        {"not a number", nan, 1, 1},
        {"infinite bound", 0, inf, 1},
        {"range overflows", -1e308, 1e308, 1},
        {"range too small to round", 0, 5e-324, 1},
        {"far too many ticks", 0, 1e9, 1e-3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_TRUE(ComputeTicks(c.min, c.max, c.step).values.empty());
    }
}

// Whatever the range and the requested step, the ticks are evenly spaced
// and the second lies at or below min, the last at or above max.
TEST(ComputeTicks, TicksAlwaysCoverTheRange) {
    std::mt19937 random(12345);
    std::uniform_real_distribution<double> exponent(-12, 12);
    std::uniform_real_distribution<double> unit(-1, 1);
    std::uniform_int_distribution<int> majors(1, 10);
    for (int run = 0; run < 2000; ++run) {
        const double scale = std::pow(10.0, exponent(random));
        double min = unit(random) * scale;
        double max = unit(random) * scale;
        if (min > max) std::swap(min, max);
        if (min == max) continue;
        const AxisTicks ticks = ComputeTicks(min, max, (max - min) / majors(random));
        SCOPED_TRACE(testing::Message() << min << " .. " << max);
        ASSERT_GE(ticks.values.size(), 3u);
        EXPECT_LE(ticks.values[1], min);
        EXPECT_GE(ticks.values.back(), max);
        for (size_t i = 1; i < ticks.values.size(); ++i)
            ASSERT_NEAR(ticks.values[i] - ticks.values[i - 1], ticks.step, ticks.step * 1e-9);
    }
}

}  // namespace
}  // namespace vexplot
