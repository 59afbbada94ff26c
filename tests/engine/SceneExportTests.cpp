// The 3-D view as a drawing (IGraphSceneExport): painter's order that hides
// what the screen hides, hidden lines of the wireframe on screen, and
// renders in tiles that add up to the whole picture.
#include <cmath>
#include <limits>
#include <set>

#include "View3DTestSupport.h"
#include "engine/ExportScene.h"
#include "engine/IGraphSceneExport.h"

using namespace vexplot;
using namespace vexplot::testing;

namespace {

// A ridge across y at x = 0.5 on flat ground, seen low from +x: the
// ground at x < 0.5 lies behind the ridge.
constexpr int32_t kNx = 5, kNy = 6;
std::vector<double> Ridge(bool groundBehind) {
    return MakeGrid(kNx, kNy, [&](int32_t ix, int32_t) {
        if (ix < 2 && !groundBehind) return std::numeric_limits<double>::quiet_NaN();
        return ix == 2 ? 10.0 : 0.0;
    });
}

class SceneExportTest : public ViewFixture {
protected:
    void SetUp() override {
        ViewFixture::SetUp();
        if (IsSkipped()) return;
        exporter = ComPtr<IGraphView3D>(view).As<IGraphSceneExport>();
        ASSERT_TRUE(exporter);
        ASSERT_EQ(view->SetAzimuth(90.0f), S_OK);  // the eye on the +x side
        ASSERT_EQ(view->SetElevation(12.0f), S_OK);
    }
    ComPtr<IGraphSceneExport> exporter;
};

TEST_F(SceneExportTest, CellsComeBackToFrontSoTheRidgeHidesTheGroundBehindIt) {
    SetGrid(Ridge(true), kNx, kNy, 0, 1, 0, 1);
    ExportScene scene;
    SceneCollector collector(scene);
    ASSERT_EQ(exporter->BuildScene(kWidth, kHeight, &collector), S_OK);

    // Which cell along x a polygon is: the x nodes its corners project to.
    std::vector<std::pair<int32_t, int32_t>> nodes(kNx * kNy);
    for (int32_t ix = 0; ix < kNx; ++ix)
        for (int32_t iy = 0; iy < kNy; ++iy)
            nodes[size_t(ix * kNy + iy)] = Project(ix / double(kNx - 1), iy / double(kNy - 1), ix == 2 ? 10.0 : 0.0);
    auto cellOf = [&](const ExportScene::Polygon& p) {
        int32_t lowest = kNx;
        for (const ScenePoint& q : p.points) {
            int32_t found = -1;
            for (size_t n = 0; n < nodes.size(); ++n)
                if (std::hypot(q.x - nodes[n].first, q.y - nodes[n].second) < 1.5) found = int32_t(n) / kNy;
            if (found < 0) return -1;  // not a surface cell (the page)
            lowest = std::min(lowest, found);
        }
        return lowest;
    };
    std::vector<int32_t> order;
    for (const ExportScene::Item& item : scene.items)
        if (const auto* polygon = std::get_if<ExportScene::Polygon>(&item))
            if (const int32_t cell = cellOf(*polygon); cell >= 0) order.push_back(cell);
    // Cells of one x merge into one polygon (same colour, straight edges)
    // or stay apart; either way, farther x comes first: the ground behind
    // the ridge (cell 0) and its back slope (1) before the front slope (2).
    ASSERT_FALSE(order.empty());
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end())) << ::testing::PrintToString(order);
    EXPECT_EQ(order.front(), 0);
    EXPECT_EQ(order.back(), 3);
    EXPECT_EQ(std::set<int32_t>(order.begin(), order.end()).size(), 4u);
}

TEST_F(SceneExportTest, WireframeHidesTheLinesBehindTheSurfaceOnScreen) {
    // With hidden lines hidden, the ground behind the ridge cannot be seen:
    // the picture is the same as with no ground there at all.
    ASSERT_EQ(view->SetGraphStyle(GraphStyle::Wireframe), S_OK);
    SetGrid(Ridge(true), kNx, kNy, 0, 1, 0, 1);
    const Picture withGround = Render();
    SetGrid(Ridge(false), kNx, kNy, 0, 1, 0, 1);
    const Picture without = Render();
    EXPECT_LT(DifferentPixels(withGround, without, 60), 20);
    // ...while the ground in front of the ridge is drawn.
    EXPECT_GT(without.Count([](uint32_t c) { return c != kWhite; }), 500);
}

TEST_F(SceneExportTest, OverlaySymbolsBecomeRunsWithoutTheirTransparentColour) {
    SetGrid(Ridge(true), kNx, kNy, 0, 1, 0, 1);
    uint32_t symbol[2 * 4] = {kRed, kRed, kWhite, kBlue,  // a row: red run, transparent, blue
                              kWhite, kWhite, kWhite, kWhite};
    const ImageBuffer image{symbol, 4, 2, 4, 0};
    const Point3 at{0.5, 0.5, 10.0};
    ASSERT_EQ(view->AddOverlayImage(&at, &image, kWhite), S_OK);
    ExportScene scene;
    SceneCollector collector(scene);
    ASSERT_EQ(exporter->BuildScene(kWidth, kHeight, &collector), S_OK);
    const auto [px, py] = Project(0.5, 0.5, 10.0);
    std::vector<std::pair<uint32_t, float>> runs;  // colour and width of the last polygons
    for (size_t i = scene.items.size() - 2; i < scene.items.size(); ++i) {
        const auto* run = std::get_if<ExportScene::Polygon>(&scene.items[i]);
        ASSERT_NE(run, nullptr);
        runs.emplace_back(run->fill, run->points[1].x - run->points[0].x);
        EXPECT_NEAR(run->points[0].y, py - 1, 0.01);  // the symbol's first row, centred on the point
    }
    EXPECT_EQ(runs, (std::vector<std::pair<uint32_t, float>>{{kRed, 2.0f}, {kBlue, 1.0f}}));
    EXPECT_NEAR(std::get<ExportScene::Polygon>(scene.items[scene.items.size() - 2]).points[0].x, px - 2, 0.01);
}

TEST_F(SceneExportTest, TilesAddUpToTheWholePicture) {
    view->SetAxesVisible(true);
    SetGrid(MakeGrid(40, 40, [](int32_t ix, int32_t iy) { return Peaks(ix / 6.5 - 3, iy / 6.5 - 3); }), 40, 40);
    Picture whole(kWidth, kHeight);
    ImageBuffer buffer = whole.Buffer();
    ASSERT_EQ(view->RenderToImage(&buffer), S_OK);
    Picture tiled(kWidth, kHeight);
    const int32_t tw = 130, th = 100;  // uneven: the last tiles are narrower
    for (int32_t top = 0; top < kHeight; top += th)
        for (int32_t left = 0; left < kWidth; left += tw) {
            const ImageBuffer tile{tiled.pixels.data() + size_t(top) * kWidth + size_t(left),
                                   std::min(tw, kWidth - left), std::min(th, kHeight - top), kWidth, 0};
            ASSERT_EQ(exporter->RenderTile(&tile, kWidth, kHeight, left, top), S_OK);
        }
    // Rasterising through a narrowed projection may round an edge pixel
    // differently; the picture is otherwise the same.
    EXPECT_LT(DifferentPixels(whole, tiled, 40), kWidth * kHeight / 200);
    const ImageBuffer outside{tiled.pixels.data(), 10, 10, kWidth, 0};
    EXPECT_EQ(exporter->RenderTile(&outside, kWidth, kHeight, kWidth - 5, 0), E_INVALIDARG);
}

}  // namespace
