#include <gtest/gtest.h>

#include <cfloat>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "model/PaletteMapping.h"

namespace vexplot {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
const std::vector<uint32_t> kFour{10, 20, 30, 40};

// Four bins of width 2 over [0, 8]; a descending range runs the list the
// other way; no colour for NaN, an empty list or a range with a non-finite end.
TEST(PaletteMapping, ValuesTakeTheColourOfTheirBin) {
    struct Case {
        double min, max, value;
        std::optional<uint32_t> color;
    };
    const Case cases[] = {
        {0, 8, 0, 10},       {0, 8, 1.999, 10},   {0, 8, 2, 20},       {0, 8, 7.999, 40},    {0, 8, 8, 40},
        {0, 8, -5, 10},      {0, 8, 100, 40},     {0, 8, kInf, 40},    {0, 8, -kInf, 10},    {0, 8, kNaN, {}},
        {8, 0, 8, 10},       {8, 0, 0, 40},       {8, 0, 6, 20},       {8, 0, 9, 10},        {8, 0, -1, 40},
        {5, 5, 5, 10},       {5, 5, -100, 10},    {5, 5, kNaN, {}},    {kNaN, 8, 4, {}},     {0, kInf, 4, {}},
        {-DBL_MAX, DBL_MAX, 0, 30}, {-DBL_MAX, DBL_MAX, DBL_MAX, 40}, {-DBL_MAX, DBL_MAX, -DBL_MAX, 10},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(PaletteMapping(c.min, c.max, kFour).ColorOf(c.value), c.color)
            << "min " << c.min << ", max " << c.max << ", value " << c.value;
    }
    EXPECT_EQ(PaletteMapping(0, 1, {}).ColorOf(0), std::nullopt) << "empty list";
}

}  // namespace
}  // namespace vexplot
