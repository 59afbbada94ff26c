#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "dataobject/ScaleSearch.h"

namespace vexplot {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(ScaleSearchTest, FindsTheNearestElement) {
    const std::vector<double> up = {0, 1, 2, 4, 8};
    const std::vector<double> down = {8, 4, 2, 1, 0};
    const std::vector<double> uneven = {-10, -9.5, 3, 3, 3, 20};
    const std::vector<double> none, one = {5}, flat = {2, 2, 2};
    struct Case {
        const char* name;
        const std::vector<double>* scale;
        double value;
        int32_t index;
    };
    const Case cases[] = {
        {"ascending exact", &up, 4, 3},
        {"ascending nearer lower", &up, 2.9, 2},
        {"ascending nearer upper", &up, 3.1, 3},
        {"ascending tie picks lower", &up, 3, 2},
        {"ascending tie at start", &up, 0.5, 0},
        {"ascending below clamps", &up, -100, 0},
        {"ascending above clamps", &up, 100, 4},
        {"ascending +inf", &up, kInf, 4},
        {"ascending -inf", &up, -kInf, 0},
        {"descending exact", &down, 4, 1},
        {"descending nearer lower index", &down, 5.9, 1},
        {"descending nearer upper index", &down, 6.1, 0},
        {"descending tie picks lower", &down, 6, 0},
        {"descending tie in middle", &down, 1.5, 2},
        {"descending below clamps", &down, -1, 4},
        {"descending above clamps", &down, 9, 0},
        {"run of equals picks first", &uneven, 3, 2},
        {"just past a run", &uneven, 3.1, 4},
        {"uneven gaps", &uneven, -3.5, 1},
        {"NaN", &up, kNaN, 0},
        {"empty scale", &none, 1, 0},
        {"single value, far below", &one, -1e300, 0},
        {"single value, far above", &one, 1e300, 0},
        {"flat scale, on it", &flat, 2, 0},
        {"flat scale, above it", &flat, 3, 2},
    };
    for (const Case& c : cases) EXPECT_EQ(NearestScaleIndex(*c.scale, c.value), c.index) << c.name;
}

TEST(ScaleSearchTest, NonMonotonicScalesStillGiveAValidIndex) {
    const std::vector<double> zigzag = {0, 10, -5, 3};  // not monotonic: any valid index
    for (double v : {-20.0, 0.0, 4.0, 50.0}) {
        const int32_t i = NearestScaleIndex(zigzag, v);
        EXPECT_GE(i, 0);
        EXPECT_LT(i, 4);
    }
}

}  // namespace
}  // namespace vexplot
