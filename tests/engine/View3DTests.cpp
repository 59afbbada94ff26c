// The 3-D view rendered on whatever GL the machine offers (llvmpipe on a
// headless machine): checked by structure (colours where the surface must
// be, background where it must not) and against stored pictures.
#include <cstring>
#include <filesystem>

#include "View3DTestSupport.h"

using namespace vexplot;
using namespace vexplot::testing;

namespace {

// A plane rising along x: value ix, so x = 0 is the palette's first colour
// (blue) and x = 1 its last (red).
constexpr int32_t kN = 24;
std::vector<double> Ramp() { return MakeGrid(kN, kN, [](int32_t ix, int32_t) { return ix; }); }
bool Colored(uint32_t c) { return G(c) < 40 && R(c) + B(c) > 90; }

struct StyleCase {
    const char* name;
    GraphStyle style;
    ShadingMode shading;
    double minCoverage, maxCoverage;  // coloured pixels relative to the smooth surface
};

class View3DTest : public ViewFixture {};

TEST_F(View3DTest, EveryStyleColoursItsNodesThroughThePaletteAndLeavesTheCornersEmpty) {
    const StyleCase cases[] = {
        {"smooth surface", GraphStyle::Surface, ShadingMode::Smooth, 1.0, 1.0},
        {"flat surface", GraphStyle::Surface, ShadingMode::Flat, 0.95, 1.05},
        {"wireframe", GraphStyle::Wireframe, ShadingMode::Smooth, 0.05, 0.8},
        {"bar chart", GraphStyle::Barchart, ShadingMode::Smooth, 0.6, 1.6},
        {"lines", GraphStyle::Lines, ShadingMode::Smooth, 0.02, 0.5},
        {"points", GraphStyle::Points, ShadingMode::Smooth, 0.02, 0.9},
    };
    SetGrid(Ramp(), kN, kN);
    ASSERT_EQ(view->SetPointStyle(PointStyle::Square, 4.0f), S_OK);
    double surfaceCoverage = 0;
    int32_t linesCoverage = 0, wireCoverage = 0;
    for (const StyleCase& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_EQ(view->SetGraphStyle(c.style), S_OK);
        ASSERT_EQ(view->SetShading(c.shading), S_OK);
        const Picture picture = Render();
        for (auto [x, y] : {std::pair{0, 0}, {kWidth - 1, 0}, {0, kHeight - 1}, {kWidth - 1, kHeight - 1}})
            EXPECT_EQ(picture.At(x, y), kWhite) << x << "," << y;
        const auto [lowX, lowY] = Project(0, 0.5, 0);
        const auto [highX, highY] = Project(1, 0.5, kN - 1);
        EXPECT_TRUE(picture.Near(lowX, lowY, 3, Bluish));
        EXPECT_TRUE(picture.Near(highX, highY, 3, Reddish));
        const int32_t coverage = picture.Count(Colored);
        if (c.style == GraphStyle::Surface && c.shading == ShadingMode::Smooth) surfaceCoverage = coverage;
        if (c.style == GraphStyle::Lines) linesCoverage = coverage;
        if (c.style == GraphStyle::Wireframe) wireCoverage = coverage;
        EXPECT_GE(coverage, c.minCoverage * surfaceCoverage);
        EXPECT_LE(coverage, c.maxCoverage * surfaceCoverage);
    }
    EXPECT_LT(linesCoverage, wireCoverage);  // one direction of lines, not two
}

TEST_F(View3DTest, CellsWithAMissingCornerAreHoles) {
    std::vector<double> grid = Ramp();
    grid[12 * kN + 12] = std::nan("");
    SetGrid(grid, kN, kN);
    ASSERT_EQ(view->SetElevation(90.0f), S_OK);  // straight down: only background lies behind a hole
    const Picture picture = Render();
    const double step = 1.0 / (kN - 1);
    struct Probe {
        double ix, iy;
        bool hole;
    };
    const Probe probes[] = {{12, 12, true},      {11.5, 11.5, true}, {12.5, 11.5, true}, {11.5, 12.5, true},
                            {12.5, 12.5, true},  {10.5, 12.5, false}, {13.5, 11.5, false}, {12.5, 14.5, false}};
    for (const Probe& p : probes) {
        const auto [x, y] = Project(p.ix * step, p.iy * step, p.ix);
        EXPECT_EQ(picture.At(x, y) == kWhite, p.hole) << p.ix << ", " << p.iy;
    }
}

TEST_F(View3DTest, PickInvertsProjectPointOnACurvedSurface) {
    // Nothing hides a node next to the corner nearest the eye: picking its
    // pixel finds it, on a small grid and on one picked from a coarse
    // level first (whose outline lies a little inside the full surface's).
    for (const int32_t n : {769, 49}) {
        const double step = 6.0 / (n - 1);
        const auto grid = MakeGrid(n, n, [&](int32_t ix, int32_t iy) { return Peaks(-3 + ix * step, -3 + iy * step); });
        SetGrid(grid, n, n, -3, 3, -3, 3);
        const auto k = static_cast<size_t>(std::lround(0.25 / step));
        const double z = grid[k * size_t(n) + k];
        const auto [nx, ny] = Project(-2.75, -2.75, z);
        Point3 hit{};
        ASSERT_EQ(view->Pick(nx, ny, &hit), S_OK) << n;
        EXPECT_NEAR(hit.x, -2.75, 0.1);
        EXPECT_NEAR(hit.y, -2.75, 0.1);
        EXPECT_NEAR(hit.z, z, 0.1);
    }
    Point3 hit{};
    // Elsewhere the picked point is the visible surface under the pixel,
    // which projects back onto that pixel.
    int32_t hits = 0;
    for (int32_t py = 20; py < kHeight; py += 20)
        for (int32_t px = 20; px < kWidth; px += 20) {
            if (view->Pick(px, py, &hit) != S_OK) continue;
            ++hits;
            EXPECT_GE(hit.x, -3.001);
            EXPECT_LE(hit.x, 3.001);
            int32_t bx = 0, by = 0;
            ASSERT_EQ(view->ProjectPoint(hit.x, hit.y, hit.z, &bx, &by), S_OK);
            EXPECT_NEAR(bx, px, 1) << px << "," << py;
            EXPECT_NEAR(by, py, 1) << px << "," << py;
        }
    EXPECT_GT(hits, 10);
    EXPECT_EQ(view->Pick(0, 0, &hit), S_FALSE);  // background
}

TEST_F(View3DTest, AxisTicksHaveTheirTextsNearTheirProjectedPositions) {
    SetGrid(Ramp(), kN, kN);
    ASSERT_EQ(view->SetAxesVisible(true), S_OK);
    const double ticks[] = {0, 0.5, 1};
    const char* texts[] = {"0.0", "0.5", "1.0"};
    ASSERT_EQ(view->SetAxisTicks(AxisId::X, 3, ticks, texts), S_OK);
    AxisStyle style{0x000000, 0xC0C0C0, 0xE0E0E0, 1, 1, 1, 1, 1};
    ASSERT_EQ(view->SetAxisStyle(AxisId::X, &style), S_OK);
    // Pixels around (cx, cy) that the texts darkened.
    auto darkenedNear = [&](const Picture& with, const Picture& without, int32_t cx, int32_t cy) {
        int32_t n = 0;
        for (int32_t y = std::max(0, cy - 30); y < std::min(kHeight, cy + 30); ++y)
            for (int32_t x = std::max(0, cx - 30); x < std::min(kWidth, cx + 30); ++x) {
                const uint32_t a = with.At(x, y), b = without.At(x, y);
                n += R(a) + G(a) + B(a) + 150 < R(b) + G(b) + B(b) ? 1 : 0;
            }
        return n;
    };
    const Picture withTexts = Render();
    style.numbersVisible = 0;
    ASSERT_EQ(view->SetAxisStyle(AxisId::X, &style), S_OK);
    const Picture without = Render();
    // The X axis runs along the front bottom edge: y = 0 and the lowest z
    // for the default camera (eye on the -x, -y side).
    for (double tick : ticks) {
        const auto [x, y] = Project(tick, 0, 0);
        EXPECT_GT(darkenedNear(withTexts, without, x, y), 8) << tick << " at " << x << "," << y;
    }
}

TEST_F(View3DTest, CameraRecordsStayConsistentAndMoveThePicture) {
    SetGrid(Ramp(), kN, kN);
    const Picture before = Render();
    ASSERT_EQ(view->SetAzimuth(30.0f), S_OK);
    const Picture turned = Render();
    EXPECT_GT(DifferentPixels(before, turned, 30), kWidth * kHeight / 20);

    CameraVector center{};
    ASSERT_EQ(view->GetCameraCenter(&center), S_OK);
    float distance = 0, azimuth = 0, elevation = 0;

    // Moving the eye straight up above the centre: elevation 90, distance 5.
    CameraVector position{center.x, center.y, center.z + 5.0, 1.0};
    ASSERT_EQ(view->SetCameraPosition(position), S_OK);
    view->GetElevation(&elevation);
    view->GetDistance(&distance);
    EXPECT_NEAR(elevation, 90.0f, 1e-3);
    EXPECT_NEAR(distance, 5.0f, 1e-5);

    // Moving the centre carries the eye along.
    ASSERT_EQ(view->SetCameraCenter({0.5, 0, 0, 1}), S_OK);
    ASSERT_EQ(view->GetCameraPosition(&position), S_OK);
    EXPECT_NEAR(position.x, 0.5, 1e-9);
    EXPECT_NEAR(position.z, 5.0, 1e-9);

    ASSERT_EQ(view->ResetCamera(), S_OK);
    view->GetAzimuth(&azimuth);
    view->GetElevation(&elevation);
    EXPECT_EQ(azimuth, -60.0f);
    EXPECT_EQ(elevation, 30.0f);
    EXPECT_EQ(DifferentPixels(before, Render(), 0), 0);

    // A larger scene scale magnifies about the centre.
    int32_t x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    view->ProjectPoint(1, 1, 0, &x0, &y0);
    ASSERT_EQ(view->SetSceneScale(2.0), S_OK);
    view->ProjectPoint(1, 1, 0, &x1, &y1);
    EXPECT_NEAR(x1 - kWidth / 2.0, 2.0 * (x0 - kWidth / 2.0), 2.0);
}

TEST_F(View3DTest, MovingFramesKeepANarrowPeakWithinTheDetailBudget) {
    constexpr int32_t n = 512;
    auto grid = MakeGrid(n, n, [](int32_t, int32_t) { return 0.0; });
    grid[200 * n + 300] = 10;  // one node: lost by sampling or averaging, kept by the extremes
    SetGrid(grid, n, n);
    ASSERT_EQ(view->SetDetailBudget(32 * 32), S_OK);
    EXPECT_GT(Render(kUpdateMoving).Count(Reddish), 0);
    EXPECT_GT(Render(kUpdateFull).Count(Reddish), 0);
}

TEST_F(View3DTest, LogarithmicZPlacesDecadesEvenlyAndDropsNonPositiveValues) {
    // Values 1 .. 1000 growing tenfold every third of x; node (0, 0) is 0.
    constexpr int32_t n = 31;
    auto grid = MakeGrid(n, n, [](int32_t ix, int32_t) { return std::pow(10.0, ix / 10.0); });
    grid[0] = 0;
    SetGrid(grid, n, n);
    ASSERT_EQ(view->SetLogZ(true), S_OK);
    ASSERT_EQ(view->SetElevation(10.0f), S_OK);
    const Picture picture = Render();
    // Value 10^1.5 lies halfway up the box and halfway along the palette.
    const int32_t bottomY = Project(0.5, 0.5, 1).second, topY = Project(0.5, 0.5, 1000).second;
    const auto [middleX, middleY] = Project(0.5, 0.5, std::pow(10.0, 1.5));
    EXPECT_NEAR(middleY, (bottomY + topY) / 2.0, 2.0);
    const uint32_t middle = picture.At(middleX, middleY);
    EXPECT_TRUE(R(middle) > 50 && B(middle) > 50) << std::hex << middle;
    // The cell at the non-positive node is a hole.
    const auto [holeX, holeY] = Project(0.5 / (n - 1), 0.5 / (n - 1), std::pow(10.0, 0.05));
    EXPECT_EQ(picture.At(holeX, holeY), kWhite);
}

TEST_F(View3DTest, VisibleRangeZoomsAndViewBoundsReportIt) {
    SetGrid(Ramp(), kN, kN, 0, 2, 10, 20);
    DataRect shown{}, full{};
    ASSERT_EQ(view->GetViewBounds(&shown, &full), S_OK);
    EXPECT_EQ(full.xMin, 0);
    EXPECT_EQ(full.xMax, 2);
    EXPECT_EQ(full.yMin, 10);
    EXPECT_EQ(full.yMax, 20);
    EXPECT_GT(Render().Count(Reddish), 100);

    const DataRect half{0, 1, 10, 20};
    ASSERT_EQ(view->SetVisibleRange(&half), S_OK);
    ASSERT_EQ(view->GetViewBounds(&shown, &full), S_OK);
    EXPECT_EQ(shown.xMax, 1);
    EXPECT_EQ(full.xMax, 2);
    const Picture zoomed = Render();
    EXPECT_EQ(zoomed.Count(Reddish), 0);  // the upper half of the ramp is cut away
    const auto [x, y] = Project(0.5, 15, 0);
    EXPECT_TRUE(zoomed.Near(x, y, 2, Bluish));
    ASSERT_EQ(view->SetVisibleRange(nullptr), S_OK);
    ASSERT_EQ(view->GetViewBounds(&shown, &full), S_OK);
    EXPECT_EQ(shown.xMax, 2);
}

TEST_F(View3DTest, OverlayIsDrawnOverTheSceneUntilCleared) {
    SetGrid(Ramp(), kN, kN);
    constexpr uint32_t kGreen = 0x00FF00;
    const Point3 line[] = {{0, 0.5, 0}, {1, 0.5, kN - 1}};
    ASSERT_EQ(view->AddOverlayPolyline(2, line, kGreen, false), S_OK);
    uint32_t symbol[25];
    for (uint32_t& p : symbol) p = 0x00FFFF;  // yellow square with a transparent centre
    symbol[12] = 0x123456;
    const ImageBuffer image{symbol, 5, 5, 5, 0};
    const Point3 at{0.25, 0.25, 6};
    ASSERT_EQ(view->AddOverlayImage(&at, &image, 0x123456), S_OK);
    const Point3 textAt{0.75, 0.75, 17};
    ASSERT_EQ(view->AddOverlayText(&textAt, "Peak", 0x000000, nullptr), S_OK);

    const Picture picture = Render();
    const auto [lx, ly] = Project(0.5, 0.5, (kN - 1) / 2.0);
    EXPECT_TRUE(picture.Near(lx, ly, 1, [](uint32_t c) { return G(c) > 200 && R(c) < 60 && B(c) < 60; }));
    const auto [ix, iy] = Project(0.25, 0.25, 6);
    EXPECT_EQ(picture.At(ix + 1, iy), 0x00FFFFu);
    EXPECT_NE(picture.At(ix, iy), 0x00FFFFu);
    const auto [tx, ty] = Project(0.75, 0.75, 17);
    auto dark = [](uint32_t c) { return R(c) < 80 && G(c) < 80 && B(c) < 80; };
    EXPECT_TRUE(picture.Near(tx + 12, ty, 6, dark));

    ASSERT_EQ(view->ClearOverlay(), S_OK);
    const Picture cleared = Render();
    EXPECT_NE(cleared.At(ix + 1, iy), 0x00FFFFu);
    EXPECT_FALSE(cleared.Near(tx + 12, ty, 6, dark));
}

TEST_F(View3DTest, LayersAreDrawnTogetherAndHiddenOrRemovedOneByOne) {
    SetGrid(MakeGrid(kN, kN, [](int32_t, int32_t) { return 0.0; }), kN, kN, 0, 1, 0, 1);
    ASSERT_EQ(view->SelectLayer(3), S_OK);
    // Red but for one node: the palette spans each layer's own range.
    SetGrid(MakeGrid(kN, kN, [](int32_t ix, int32_t iy) { return ix + iy == 0 ? 0.0 : 1.0; }), kN, kN, 2, 3, 0, 1);
    DataRect shown{}, full{};
    view->GetViewBounds(&shown, &full);
    EXPECT_EQ(full.xMin, 0);
    EXPECT_EQ(full.xMax, 3);
    const Picture both = Render();
    EXPECT_GT(both.Count(Bluish), 100);
    EXPECT_GT(both.Count(Reddish), 100);
    ASSERT_EQ(view->SetLayerVisible(3, false), S_OK);
    EXPECT_EQ(Render().Count(Reddish), 0);
    ASSERT_EQ(view->SetLayerVisible(3, true), S_OK);
    ASSERT_EQ(view->RemoveLayer(0), S_OK);
    const Picture one = Render();
    EXPECT_LT(one.Count(Bluish), both.Count(Bluish) / 20);  // only around the one low node
    EXPECT_GT(one.Count(Reddish), 100);
    EXPECT_EQ(view->RemoveLayer(0), E_INVALIDARG);
    ASSERT_EQ(view->SelectLayer(3), S_OK);
    ASSERT_EQ(view->ReleaseGrid(), S_OK);
    EXPECT_EQ(Render().Count(Reddish), 0);
}

TEST_F(View3DTest, DegenerateGridsRenderOnlyWhatTheyHave) {
    struct Case {
        int32_t xCount, yCount;
        double value;
        bool colored;  // whether any node or cell can show
    };
    const Case cases[] = {{1, 1, 1, true}, {1, 7, 1, true}, {7, 1, 1, true}, {4, 4, std::nan(""), false}};
    ASSERT_EQ(view->SetGraphStyle(GraphStyle::Points), S_OK);
    ASSERT_EQ(view->SetPointStyle(PointStyle::Circle, 9.0f), S_OK);
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.xCount << " x " << c.yCount);
        const auto grid = MakeGrid(c.xCount, c.yCount, [&](int32_t, int32_t) { return c.value; });
        const GridExtent extent{0, 1, 0, 1, c.value, c.value};
        ASSERT_EQ(view->SetGrid(grid.data(), c.xCount, c.yCount, &extent, true), S_OK);
        const Picture picture = Render();
        EXPECT_EQ(picture.Count(Colored) > 0, c.colored);
        Point3 hit{};
        EXPECT_EQ(view->Pick(kWidth / 2, kHeight / 2, &hit), S_FALSE);  // no cell to hit
    }
}

TEST_F(View3DTest, RejectsInvalidArguments) {
    const double value = 1;
    const GridExtent extent{0, 1, 0, 1, 0, 1};
    const DataRect inverted{1, 0, 0, 1};
    const AxisStyle style{};
    int32_t px = 0;
    const std::pair<const char*, HRESULT> cases[] = {
        {"grid without values", view->SetGrid(nullptr, 1, 1, &extent, true)},
        {"empty grid", view->SetGrid(&value, 0, 1, &extent, true)},
        {"palette axis", view->SetAxisStyle(AxisId::Palette, &style)},
        {"no window pixels", view->Draw(nullptr)},
        {"inverted range", view->SetVisibleRange(&inverted)},
        {"negative layer", view->SelectLayer(-1)},
        {"zero distance", view->SetDistance(0.0f)},
        {"unknown style", view->SetGraphStyle(static_cast<GraphStyle>(9))},
        {"no output", view->ProjectPoint(0, 0, 0, &px, nullptr)},
    };
    const HRESULT expected[] = {E_POINTER, E_INVALIDARG, E_INVALIDARG, E_INVALIDARG, E_INVALIDARG,
                                E_INVALIDARG, E_INVALIDARG, E_INVALIDARG, E_POINTER};
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].second, expected[i]) << cases[i].first;
    EXPECT_EQ(view->QueryTextMarkup(), 0);
    EXPECT_EQ(view->Refresh(kRefreshRebuild), S_OK);
}

// Stored pictures of the whole view with axes; up to 1.5 % of the pixels
// may differ (text anti-aliasing).
struct ReferenceCase {
    const char* file;
    GraphStyle style;
    ShadingMode shading;
};

class View3DReferenceTest : public ViewFixture, public ::testing::WithParamInterface<ReferenceCase> {};

TEST_P(View3DReferenceTest, MatchesTheStoredPicture) {
    const ReferenceCase& c = GetParam();
    constexpr int32_t n = 64;
    const auto grid = MakeGrid(n, n, [](int32_t ix, int32_t iy) { return Peaks(-3 + ix * 6.0 / 63, -3 + iy * 6.0 / 63); });
    SetGrid(grid, n, n, -3, 3, -3, 3);
    std::vector<uint32_t> rainbow(256);
    for (size_t i = 0; i < rainbow.size(); ++i) {
        const auto t = static_cast<uint32_t>(i);
        rainbow[i] = (t) | ((255 - (t > 127 ? t - 128 : 127 - t) * 2) << 8) | ((255 - t) << 16);
    }
    ASSERT_EQ(engine->SetPalette(static_cast<uint32_t>(rainbow.size()), rainbow.data()), S_OK);
    ASSERT_EQ(view->SetAxesVisible(true), S_OK);
    const double ticks[] = {-3, 0, 3};
    const char* texts[] = {"-3", "0", "3"};
    const double zTicks[] = {-5, 0, 5};
    const char* zTexts[] = {"-5", "0", "5\\SUP2"};
    view->SetAxisTicks(AxisId::X, 3, ticks, texts);
    view->SetAxisTicks(AxisId::Y, 3, ticks, texts);
    view->SetAxisTicks(AxisId::Z, 3, zTicks, zTexts);
    view->SetAxisLabel(AxisId::X, "X");
    view->SetAxisLabel(AxisId::Y, "Y");
    view->SetAxisLabel(AxisId::Z, "Z");
    view->SetGraphStyle(c.style);
    view->SetShading(c.shading);

    ExpectMatchesReference(c.file, Render(), 15);
}

INSTANTIATE_TEST_SUITE_P(View3D, View3DReferenceTest,
                         ::testing::Values(ReferenceCase{"view3d_surface.png", GraphStyle::Surface, ShadingMode::Smooth},
                                           ReferenceCase{"view3d_wireframe.png", GraphStyle::Wireframe,
                                                         ShadingMode::Flat}));

}  // namespace
