// A grid on the GPU: its texture, the height field's coarse levels reduced
// from it, one texture serving both surfaces, and surfaces drawn in batches.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "View3DTestSupport.h"
#include "engine/IGraphDevice2D.h"
#include "opengl/view3d/Camera.h"
#include "opengl/view3d/HeightField.h"
#include "opengl/gl/EglContext.h"
#include "opengl/gl/EngineContext.h"
#include "opengl/gl/GridTexture.h"
#include "opengl/gl/PaletteTexture.h"
#include "opengl/gl/RenderTarget.h"
#include "opengl/view3d/SurfaceRenderer.h"
#include "opengl/text/TextPainter.h"

namespace vexplot {
namespace {

using testing::MakeGrid;
using testing::Picture;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool SameBits(float a, float b) { return (std::isnan(a) && std::isnan(b)) || a == b; }

class GridTextureTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string error;
        std::unique_ptr<EglContext> gl = EglContext::Create(error);
        if (!gl) GTEST_SKIP() << error;
        context = std::make_unique<EngineContext>(text);
        context->SetGl(std::move(gl));
        ASSERT_TRUE(context->MakeCurrent());
    }
    // A height field level's values, value (ix, iy) at ix * yCount + iy.
    static std::vector<float> ReadLevel(const HeightField::Level& level) {
        std::vector<float> values(static_cast<size_t>(level.xCount) * level.yCount);
        glBindTexture(GL_TEXTURE_2D, level.texture);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RED, GL_FLOAT, values.data());
        glBindTexture(GL_TEXTURE_2D, 0);
        return values;
    }
    TextPainter text;
    std::unique_ptr<EngineContext> context;
};

// A 5 x 3 grid (not square, so a swapped index shows) read back line by
// line in both directions, holes included.
TEST_F(GridTextureTest, ReadLineGivesEveryLineOfNodesInBothDirections) {
    constexpr int32_t nx = 5, ny = 3;
    auto value = [](int32_t ix, int32_t iy) { return ix == 3 && iy == 1 ? kNaN : ix * 10.0 + iy; };
    const std::vector<double> grid = MakeGrid(nx, ny, value);
    const std::shared_ptr<GridTexture> texture = GridTexture::Upload(grid.data(), nx, ny);
    for (int32_t ix = 0; ix < nx; ++ix) {
        const std::vector<float> line = texture->ReadLine(true, ix);
        ASSERT_EQ(line.size(), size_t(ny));
        for (int32_t iy = 0; iy < ny; ++iy)
            EXPECT_TRUE(SameBits(line[size_t(iy)], float(value(ix, iy)))) << ix << ", " << iy;
    }
    for (int32_t iy = 0; iy < ny; ++iy) {
        const std::vector<float> line = texture->ReadLine(false, iy);
        ASSERT_EQ(line.size(), size_t(nx));
        for (int32_t ix = 0; ix < nx; ++ix)
            EXPECT_TRUE(SameBits(line[size_t(ix)], float(value(ix, iy)))) << ix << ", " << iy;
    }
    EXPECT_TRUE(texture->ReadLine(true, nx).empty());
    EXPECT_TRUE(texture->ReadLine(false, -1).empty());
}

TEST_F(GridTextureTest, UploadKeepsTheStatisticsTheSurfacesAskFor) {
    // 1e300 is finite as a double but not as a float; -inf makes the range infinite.
    const std::vector<double> grid{kNaN, -2.0, 0.0, 0.25, 1e300, -std::numeric_limits<double>::infinity()};
    const std::shared_ptr<GridTexture> texture = GridTexture::Upload(grid.data(), 2, 3);
    EXPECT_EQ(texture->MinPositive(), 0.25);
    EXPECT_EQ(texture->FiniteLow(), -2.0f);
    EXPECT_EQ(texture->FiniteHigh(), 0.25f);
    EXPECT_EQ(texture->Range(), 0.0);
}

TEST_F(GridTextureTest, HeightFieldCoarseNodesKeepPeaksPitsAndHolesAndSmoothSlopes) {
    // 8 x 6 nodes in 2 x 2 blocks: (0,0) a spike, (1,0) a pit, (2,0) a
    // gentle slope, (0,1) all holes, (1,1) a value among holes, (3,2) flat.
    constexpr int32_t nx = 8, ny = 6;
    std::vector<double> grid(nx * ny, 0.0);
    auto at = [&](int32_t ix, int32_t iy) -> double& { return grid[static_cast<size_t>(ix) * ny + iy]; };
    at(1, 1) = 9;                                               // block (0, 0)
    at(2, 0) = -7;                                              // block (1, 0)
    at(4, 0) = 1, at(4, 1) = 1.1, at(5, 0) = 1.2, at(5, 1) = 1.3;  // block (2, 0): a gentle slope, mean 1.15
    for (int32_t ix : {0, 1}) at(ix, 2) = at(ix, 3) = std::nan("");  // block (0, 1)
    at(2, 2) = at(3, 2) = at(2, 3) = std::nan(""), at(3, 3) = 5;    // block (1, 1)
    HeightField field;
    field.Upload(grid.data(), nx, ny);
    EXPECT_EQ(field.MinPositive(), 1.0);

    const std::vector<float> full = ReadLevel(field.Full());
    EXPECT_EQ(full[1 * ny + 1], 9.0f);
    EXPECT_TRUE(std::isnan(full[0 * ny + 2]));

    const GlProgram reduce = HeightField::MakeReduceProgram();
    const HeightField::Level level = field.Reduced(2, reduce);
    ASSERT_EQ(level.xCount, 4);
    ASSERT_EQ(level.yCount, 3);
    const std::vector<float> coarse = ReadLevel(level);
    auto c = [&](int32_t ix, int32_t iy) { return coarse[static_cast<size_t>(ix) * 3 + iy]; };
    EXPECT_EQ(c(0, 0), 9.0f);
    EXPECT_EQ(c(1, 0), -7.0f);
    EXPECT_FLOAT_EQ(c(2, 0), 1.15f);
    EXPECT_TRUE(std::isnan(c(0, 1)));
    EXPECT_EQ(c(1, 1), 5.0f);
    EXPECT_EQ(c(3, 2), 0.0f);
    EXPECT_EQ(field.Reduced(2, reduce).texture, level.texture);  // cached

    // A coarser level is reduced from the cached one; its first block holds
    // both the spike and the pit, and one of them must survive.
    const HeightField::Level quarter = field.Reduced(4, reduce);
    ASSERT_EQ(quarter.xCount, 2);
    ASSERT_EQ(quarter.yCount, 2);
    EXPECT_GE(std::fabs(ReadLevel(quarter)[0]), 7.0f);

    field.Release();
    EXPECT_TRUE(field.Empty());
}

TEST(HeightFieldTest, FactorForBudgetIsTheSmallestPowerOfTwoWithinTheBudget) {
    struct Case {
        int32_t xCount, yCount;
        uint64_t cells;
        int32_t factor;
    };
    const Case cases[] = {
        {2048, 2048, 0, 1},             // no limit
        {2048, 2048, 2047 * 2047, 1},   // the whole grid fits
        {2048, 2048, 1024 * 1024, 2},   // 1024 nodes a side: 1023 x 1023 cells
        {2048, 2048, 256 * 256, 8},
        {8192, 100, 4096, 16},          // long and thin: 512 x 7 nodes
        {3, 3, 1, 2},                   // never below two nodes a side
    };
    for (const Case& c : cases)
        EXPECT_EQ(HeightField::FactorForBudget(c.xCount, c.yCount, c.cells), c.factor)
            << c.xCount << " x " << c.yCount << " in " << c.cells;
}

// Which sends of a grid get the texture handed out before.
TEST_F(GridTextureTest, ShareGridReusesTheLastGridOnlyForTheSameValues) {
    const std::vector<double> a = MakeGrid(6, 4, [](int32_t ix, int32_t iy) { return ix - iy * 0.5; });
    std::shared_ptr<GridTexture> held = context->ShareGrid(a.data(), 6, 4);
    struct Case {
        const char* name;
        std::vector<double> values;
        int32_t xCount, yCount;
        bool shared;
    };
    std::vector<double> oneChanged = a, zeroSign = a, swapped = a, hole = a;
    oneChanged[17] += 1e-12;
    ASSERT_EQ(a[6], 0.0);  // node (1, 2)
    zeroSign[6] = -0.0;
    std::swap(swapped[3], swapped[4]);
    hole[0] = kNaN;
    const Case cases[] = {
        {"the same values", a, 6, 4, true},
        {"one value a hair off", oneChanged, 6, 4, false},
        {"two values swapped", swapped, 6, 4, false},
        {"a hole", hole, 6, 4, false},
        {"-0 for 0", zeroSign, 6, 4, false},
        {"the same values in another shape", a, 4, 6, false},
    };
    for (const Case& c : cases) {
        const std::shared_ptr<GridTexture> got = context->ShareGrid(c.values.data(), c.xCount, c.yCount);
        EXPECT_EQ(got == held, c.shared) << c.name;
        // The case's grid is now the last one: hand the original out again.
        held = context->ShareGrid(a.data(), 6, 4);
    }
    // The context does not keep a grid alive that no surface holds.
    const std::weak_ptr<GridTexture> watched = held;
    held.reset();
    EXPECT_TRUE(watched.expired());
    const std::shared_ptr<GridTexture> again = context->ShareGrid(a.data(), 6, 4);
    EXPECT_EQ(again->ReadLine(false, 2), (std::vector<float>{-1, 0, 1, 2, 3, 4}));
}

// --- both surfaces of one engine ---------------------------------------------

constexpr WindowHandle kWindow = 0x51;

// A view and a device of one engine fed the same grids, as a graph object
// feeds them: the device first, then the view.
class SharedSurfacesTest : public testing::ViewFixture {
protected:
    void SetUp() override {
        ViewFixture::SetUp();
        if (IsSkipped()) return;
        ASSERT_EQ(engine->GetDevice2D(device.ReleaseAndGetAddressOf()), S_OK);
        ASSERT_EQ(device->Attach(kWindow), S_OK);
        device->SetParameters(40, 15, 50, 40);
        a = MakeGrid(kN, kN, [](int32_t ix, int32_t iy) { return testing::Peaks(-3 + ix * 0.2, -3 + iy * 0.2); });
        // The same values mirrored: the same z range, so only the values
        // themselves tell the two pictures apart.
        b = MakeGrid(kN, kN, [](int32_t ix, int32_t iy) { return testing::Peaks(3 - ix * 0.2, -3 + iy * 0.2); });
    }
    void SendToDevice(const std::vector<double>& grid) {
        const GridExtent extent = testing::ExtentOf(grid, -3, 3, -3, 3);
        ASSERT_EQ(device->SetGrid(grid.data(), kN, kN, &extent, true), S_OK);
    }
    void SendToView(const std::vector<double>& grid) { SetGrid(grid, kN, kN, -3, 3, -3, 3); }
    // A new 2-D frame (any setter invalidates the device's cached one),
    // with the section along Y at 30 % when `section`.
    Picture Flat(bool section = false) {
        const SectionSettings settings{section ? 1 : 0, 2, 0, 0x0000FF00, 30.0};
        EXPECT_EQ(device->SetSection(&settings), S_OK);
        Picture picture(kWidth, kHeight);
        ImageBuffer buffer = picture.Buffer();
        EXPECT_EQ(device->Draw(&buffer), S_OK);
        return picture;
    }
    Point3 PickCentre() {
        Point3 point{};
        EXPECT_EQ(view->Pick(kWidth / 2, kHeight / 2, &point), S_OK);
        return point;
    }

    static constexpr int32_t kN = 31;
    ComPtr<IGraphDevice2D> device;
    std::vector<double> a, b;
};

TEST_F(SharedSurfacesTest, EachSurfaceKeepsItsGridWhenTheOtherGetsAnother) {
    SendToDevice(a);
    SendToView(a);
    const Picture flatA = Flat(), viewA = Render();
    const Point3 pickA = PickCentre();

    SendToDevice(b);
    const Picture flatB = Flat();
    EXPECT_GT(testing::DifferentPixels(flatA, flatB, 0), 1000);
    EXPECT_EQ(testing::DifferentPixels(Render(), viewA, 0), 0) << "the view lost its grid to the device's new one";
    EXPECT_EQ(PickCentre().z, pickA.z);

    SendToView(b);
    const Picture viewB = Render();
    EXPECT_GT(testing::DifferentPixels(viewA, viewB, 0), 1000);
    SendToDevice(a);
    EXPECT_EQ(testing::DifferentPixels(Flat(), flatA, 0), 0);
    EXPECT_EQ(testing::DifferentPixels(Render(), viewB, 0), 0) << "the view took the device's grid";
}

TEST_F(SharedSurfacesTest, ReleasingOneSurfacesGridLeavesTheOtherDrawingAndPicking) {
    for (const bool releaseView : {true, false}) {
        SCOPED_TRACE(releaseView ? "view released" : "device reset");
        SendToDevice(a);
        SendToView(a);
        const Picture flat = Flat(), curve = Flat(true), view3d = Render();
        const Point3 pick = PickCentre();
        if (releaseView) {
            ASSERT_EQ(view->ReleaseGrid(), S_OK);
            EXPECT_EQ(testing::DifferentPixels(Flat(), flat, 0), 0);
            EXPECT_EQ(testing::DifferentPixels(Flat(true), curve, 0), 0);
        } else {
            ASSERT_EQ(device->ResetData(), S_OK);
            EXPECT_EQ(testing::DifferentPixels(Render(), view3d, 0), 0);
            EXPECT_EQ(PickCentre().z, pick.z);
        }
    }
}

// --- batches ---------------------------------------------------------------------

// The same layer drawn in one call and in batches of several sizes: every
// pixel must agree, holes, the zoomed range's first node and the last,
// shorter batch included.
class BatchTest : public GridTextureTest {};

TEST_F(BatchTest, BatchedDrawingPaintsTheSamePixelsInEveryStyle) {
    constexpr int32_t nx = 41, ny = 33, width = 200, height = 150;
    Layer layer;
    const std::vector<double> grid = MakeGrid(nx, ny, [](int32_t ix, int32_t iy) {
        return (ix == 20 && iy == 7) || (ix == 5 && iy == 30) ? kNaN : testing::Peaks(-3 + ix * 0.15, -3 + iy * 0.1875);
    });
    layer.field.Upload(grid.data(), nx, ny);
    layer.extent = testing::ExtentOf(grid, 0, 1, 0, 1);
    layer.hasGrid = true;
    layer.pointStyle = PointStyle::Square;
    SceneBox box;
    box.shown = {0.2, 0.9, 0.1, 0.8};  // zoomed: the first node drawn is not node 0
    box.zMin = layer.extent.zMin;
    box.zMax = layer.extent.zMax;
    Camera camera;
    camera.Reset(box.Radius());
    const Matrix4 viewProjection = camera.Projection(double(width) / height) * camera.View();
    SurfaceRenderer renderer;
    RenderTarget target;

    struct Style {
        GraphStyle style;
        ShadingMode shading;
    };
    auto draw = [&](const Style& s, uint32_t batch) {
        layer.style = s.style;
        layer.shading = s.shading;
        const SurfaceRenderer::Frame frame{viewProjection, {0, 0, 1}, camera.Position(), &context->Palette(),
                                           int32_t(context->PaletteColors().size()), 1.0f, 1.0f, batch};
        target.Ensure(width, height, 1);
        target.Bind();
        glClearColor(1, 1, 1, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        glEnable(GL_PROGRAM_POINT_SIZE);
        for (int i = 0; i < 4; ++i) glEnable(GL_CLIP_DISTANCE0 + static_cast<GLenum>(i));
        renderer.Draw(layer, layer.field.Full(), box, frame);
        for (int i = 0; i < 4; ++i) glDisable(GL_CLIP_DISTANCE0 + static_cast<GLenum>(i));
        Picture picture(width, height);
        target.ReadInto(picture.Buffer());
        return picture;
    };
    const Style styles[] = {{GraphStyle::Surface, ShadingMode::Smooth}, {GraphStyle::Surface, ShadingMode::Flat},
                            {GraphStyle::Wireframe, ShadingMode::Flat},  {GraphStyle::Lines, ShadingMode::Flat},
                            {GraphStyle::Points, ShadingMode::Flat},     {GraphStyle::Barchart, ShadingMode::Flat}};
    for (const Style& s : styles) {
        const Picture whole = draw(s, 0);
        ASSERT_GT(whole.Count([](uint32_t p) { return p != testing::kWhite; }), 500) << int(s.style);
        // 1: one row a batch; 150: a few rows with a shorter last batch.
        for (uint32_t batch : {1u, 150u, 1000u})
            EXPECT_EQ(testing::DifferentPixels(draw(s, batch), whole, 0), 0)
                << "style " << int(s.style) << ", shading " << int(s.shading) << ", batch " << batch;
    }
}

}  // namespace
}  // namespace vexplot
