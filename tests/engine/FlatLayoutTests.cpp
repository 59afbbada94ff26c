#include <gtest/gtest.h>

#include <optional>

#include "opengl/flat/FlatLayout.h"

namespace vexplot {
namespace {

FlatLayout MakeLayout(int32_t orientation, std::optional<DataRect> visible = std::nullopt, bool bar = true) {
    FlatLayout layout;
    layout.SetClientSize(640, 480);
    layout.SetParameters(70, 15, 50, 55);
    layout.SetColorBarVisible(bar);
    layout.SetDataRange(DataRect{-3.0, 7.0, 100.0, 400.0});
    layout.SetVisibleRange(visible);
    layout.SetOrientation(orientation);
    return layout;
}

TEST(FlatLayout, ImageAndColorBarFollowTheParameters) {
    const FlatLayout layout = MakeLayout(0);
    const PixelRect image = layout.ImageRect();
    EXPECT_EQ(image.left, 70);
    EXPECT_EQ(image.bottom, 480 - 55);
    EXPECT_EQ(image.top, FlatLayout::kTopMargin);
    const PixelRect bar = layout.ColorBarRect();
    EXPECT_EQ(bar.right - bar.left, 15);
    EXPECT_EQ(bar.top, image.top);
    EXPECT_EQ(bar.bottom, image.bottom);
    EXPECT_GT(bar.left, image.right);
    EXPECT_EQ(bar.right + 50, 640) << "the palette axis takes the rest of the width";

    const FlatLayout noBar = MakeLayout(0, std::nullopt, false);
    EXPECT_GT(noBar.ImageRect().right, image.right) << "a hidden colour bar gives its room to the image";
    EXPECT_EQ(noBar.ColorBarRect().right, noBar.ColorBarRect().left);
}

TEST(FlatLayout, TooSmallClientGivesAnEmptyImageWithoutNegativeSizes) {
    FlatLayout layout = MakeLayout(0);
    layout.SetClientSize(50, 20);
    const PixelRect image = layout.ImageRect();
    EXPECT_GE(image.right, image.left);
    EXPECT_GE(image.bottom, image.top);
    double x = 0, y = 0;
    int32_t px = 0, py = 0;
    EXPECT_FALSE(layout.ClientToData(70, 12, x, y));
    layout.DataToClient(0.0, 200.0, px, py);  // must not divide by zero
}

struct RoundTripCase {
    int32_t orientation;
    std::optional<DataRect> visible;
};

void PrintTo(const RoundTripCase& c, std::ostream* os) {
    *os << "orientation " << c.orientation << (c.visible ? ", zoomed" : "");
}

class FlatLayoutRoundTrip : public ::testing::TestWithParam<RoundTripCase> {};

TEST_P(FlatLayoutRoundTrip, EveryImagePixelMapsToDataAndBack) {
    const FlatLayout layout = MakeLayout(GetParam().orientation, GetParam().visible);
    const PixelRect r = layout.ImageRect();
    for (int32_t py = r.top; py < r.bottom; py += 7)
        for (int32_t px = r.left; px < r.right; px += 5) {
            double x = 0, y = 0;
            ASSERT_TRUE(layout.ClientToData(px, py, x, y));
            int32_t bx = -1, by = -1;
            EXPECT_TRUE(layout.DataToClient(x, y, bx, by));
            ASSERT_EQ(bx, px) << "at " << px << "," << py;
            ASSERT_EQ(by, py) << "at " << px << "," << py;
        }
    // Pixels just outside the image map outside the visible range.
    double x = 0, y = 0;
    EXPECT_FALSE(layout.ClientToData(r.left - 1, r.top, x, y));
    EXPECT_FALSE(layout.ClientToData(r.left, r.bottom, x, y));
}

INSTANTIATE_TEST_SUITE_P(OrientationsAndZoom, FlatLayoutRoundTrip,
                         ::testing::Values(RoundTripCase{0, std::nullopt}, RoundTripCase{1, std::nullopt},
                                           RoundTripCase{2, std::nullopt}, RoundTripCase{3, std::nullopt},
                                           RoundTripCase{0, DataRect{0.5, 1.5, 150.0, 160.0}},
                                           RoundTripCase{3, DataRect{-10.0, 20.0, 0.0, 1000.0}}));

struct CornerCase {
    int32_t orientation;
    bool right;  // where the lowest x and y land
    bool bottom;
    std::optional<DataRect> visible = std::nullopt;  // zoomed: its corners land on the image's
};

void PrintTo(const CornerCase& c, std::ostream* os) {
    *os << "orientation " << c.orientation << (c.visible ? ", zoomed" : "");
}

class FlatLayoutCorner : public ::testing::TestWithParam<CornerCase> {};

TEST_P(FlatLayoutCorner, OrientationMirrorsWhereTheLowestCornerLands) {
    const CornerCase c = GetParam();
    const FlatLayout layout = MakeLayout(c.orientation, c.visible);
    const DataRect d = c.visible.value_or(layout.DataRange());
    const PixelRect r = layout.ImageRect();
    int32_t px = 0, py = 0;
    EXPECT_TRUE(layout.DataToClient(d.xMin, d.yMin, px, py));
    EXPECT_EQ(px, c.right ? r.right - 1 : r.left);
    EXPECT_EQ(py, c.bottom ? r.bottom - 1 : r.top);
    EXPECT_TRUE(layout.DataToClient(d.xMax, d.yMax, px, py));
    EXPECT_EQ(px, c.right ? r.left : r.right - 1);
    EXPECT_EQ(py, c.bottom ? r.top : r.bottom - 1);
    EXPECT_TRUE(layout.DataToClient((d.xMin + d.xMax) / 2, (d.yMin + d.yMax) / 2, px, py));
    EXPECT_NEAR(px, (r.left + r.right) / 2, 1);
    EXPECT_NEAR(py, (r.top + r.bottom) / 2, 1);
}

INSTANTIATE_TEST_SUITE_P(AllOrientations, FlatLayoutCorner,
                         ::testing::Values(CornerCase{0, false, true}, CornerCase{1, true, true},
                                           CornerCase{2, false, false}, CornerCase{3, true, false},
                                           CornerCase{0, false, true, DataRect{0.0, 2.0, 200.0, 300.0}},
                                           CornerCase{3, true, false, DataRect{0.0, 2.0, 200.0, 300.0}}));

TEST(FlatLayout, ZoomKeepsTheDataRangeAndMapsPointsOutsideItOutsideTheImage) {
    const FlatLayout layout = MakeLayout(0, DataRect{0.0, 2.0, 200.0, 300.0});
    int32_t px = 0, py = 0;
    EXPECT_FALSE(layout.DataToClient(-1.0, 250.0, px, py));
    EXPECT_LT(px, layout.ImageRect().left);
    EXPECT_DOUBLE_EQ(layout.DataRange().xMax, 7.0) << "the data range stays the whole grid";
}

TEST(FlatLayout, DegenerateRangeDoesNotDivideByZero) {
    FlatLayout layout = MakeLayout(0);
    layout.SetDataRange(DataRect{5.0, 5.0, 1.0, 1.0});
    int32_t px = 0, py = 0;
    EXPECT_TRUE(layout.DataToClient(5.0, 1.0, px, py));
    const PixelRect r = layout.ImageRect();
    EXPECT_GE(px, r.left);
    EXPECT_LT(px, r.right);
}

}  // namespace
}  // namespace vexplot
