#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "opengl/flat/SectionCurve.h"

namespace vexplot {
namespace {

// A 5 x 4 grid in rows of X with value (ix, iy) = 10 * ix + iy.
std::vector<float> Grid() {
    std::vector<float> v(20);
    for (int ix = 0; ix < 5; ++ix)
        for (int iy = 0; iy < 4; ++iy) v[size_t(iy * 5 + ix)] = float(10 * ix + iy);
    return v;
}

constexpr GridExtent kExtent{-2.0, 2.0, 30.0, 0.0, 0.0, 43.0};  // Y scale descending

struct CutCase {
    int32_t mode;
    double position;
    int32_t cutIndex;
    std::vector<float> values;
};

void PrintTo(const CutCase& c, std::ostream* os) { *os << "mode " << c.mode << " at " << c.position << " %"; }

class SectionCut : public ::testing::TestWithParam<CutCase> {};

TEST_P(SectionCut, TakesTheNearestGridLine) {
    const CutCase c = GetParam();
    const std::vector<float> grid = Grid();
    const SectionCurve curve = SectionCurve::Extract(grid, 5, 4, kExtent, c.mode, c.position);
    EXPECT_EQ(curve.CutIndex(), c.cutIndex);
    EXPECT_EQ(curve.Values(), c.values);
    // The curve runs along the other axis from its first scale value to its
    // last (Y's descends), its points evenly spaced.
    const double first = c.mode == 1 ? kExtent.yFirst : kExtent.xFirst;
    const double last = c.mode == 1 ? kExtent.yLast : kExtent.xLast;
    for (size_t i = 0; i < c.values.size(); ++i)
        EXPECT_DOUBLE_EQ(curve.At(i), first + (last - first) * double(i) / double(c.values.size() - 1)) << i;
}

INSTANTIATE_TEST_SUITE_P(
    ModesAndPositions, SectionCut,
    ::testing::Values(CutCase{1, 0.0, 0, {0, 1, 2, 3}}, CutCase{1, 50.0, 2, {20, 21, 22, 23}},
                      CutCase{1, 100.0, 4, {40, 41, 42, 43}}, CutCase{1, 62.0, 2, {20, 21, 22, 23}},
                      CutCase{1, 63.0, 3, {30, 31, 32, 33}}, CutCase{1, 250.0, 4, {40, 41, 42, 43}},
                      CutCase{1, -5.0, 0, {0, 1, 2, 3}}, CutCase{2, 0.0, 0, {0, 10, 20, 30, 40}},
                      CutCase{2, 100.0, 3, {3, 13, 23, 33, 43}}, CutCase{2, 40.0, 1, {1, 11, 21, 31, 41}},
                      CutCase{0, 50.0, 0, {}}, CutCase{3, 50.0, 0, {}}));

TEST(SectionCurve, KeepsMissingValuesAndRejectsShortGrids) {
    std::vector<float> grid = Grid();
    grid[7] = std::numeric_limits<float>::quiet_NaN();  // (2, 1)
    const SectionCurve curve = SectionCurve::Extract(grid, 5, 4, kExtent, 1, 50.0);
    ASSERT_EQ(curve.Values().size(), 4u);
    EXPECT_TRUE(std::isnan(curve.Values()[1]));
    EXPECT_TRUE(SectionCurve::Extract(std::vector<float>(19), 5, 4, kExtent, 1, 50.0).Values().empty());
    EXPECT_TRUE(
        SectionCurve::Extract(grid, 5, 4, kExtent, 1, std::numeric_limits<double>::quiet_NaN()).Values().size() == 4);
}

TEST(SectionCurve, SymbolsStayWithinTheirRadiusAndDiffer) {
    std::vector<std::vector<FlatLine>> shapes;
    for (int style = 0; style <= 6; ++style) {
        std::vector<FlatLine> lines;
        AppendSymbol(lines, static_cast<PointStyle>(style), 100.0f, 50.0f, 4.0f, 0x123456);
        for (const FlatLine& l : lines) {
            for (float x : {l.x0, l.x1}) EXPECT_NEAR(x, 100.0f, 4.01f) << style;
            for (float y : {l.y0, l.y1}) EXPECT_NEAR(y, 50.0f, 4.01f) << style;
            EXPECT_EQ(l.color, 0x123456u);
        }
        EXPECT_EQ(lines.empty(), style == 0) << style;
        shapes.push_back(lines);
    }
    // The triangle points upwards (screen y grows downwards).
    float top = 1e9f;
    for (const FlatLine& l : shapes[5]) top = std::min({top, l.y0, l.y1});
    EXPECT_NEAR(top, 46.0f, 0.01f);
    EXPECT_EQ(shapes[6].size(), shapes[3].size() + shapes[4].size()) << "the star is the cross and the x";
}

}  // namespace
}  // namespace vexplot
