// The engine as the control gets it: the plug-in library registered in the
// settings store and created through the class registry.
#include <gtest/gtest.h>

#include "com/ClassRegistry.h"
#include "engine/IGraphDevice2D.h"
#include "engine/IGraphView3D.h"
#include "opengl/OpenGLEngine.h"
#include "settings/CRegistryKey.h"
#include "View3DTestSupport.h"

using namespace vexplot;
using namespace vexplot::testing;

namespace {

ComPtr<IGraphEngine> CreateThroughPlugin() {
    CRegistryKey key;
    EXPECT_NE(key.OpenUnder(RootKey::CurrentUser, InprocServerKey(CLSID_OpenGLEngine)), 0);
    key.WriteString("", VEXPLOT_OPENGL_PLUGIN_PATH);
    HRESULT hr = E_FAIL;
    ComPtr<IGraphEngine> engine = CreateInstance<IGraphEngine>(CLSID_OpenGLEngine, CLSCTX_INPROC_SERVER, &hr);
    EXPECT_EQ(hr, S_OK);
    return engine;
}

TEST(EngineTest, PluginEngineNamesItselfAndHandsOutWorkingSurfaces) {
    ComPtr<IGraphEngine> engine = CreateThroughPlugin();
    ASSERT_TRUE(engine);
    char name[16] = {};
    ASSERT_EQ(engine->GetName(name, sizeof(name)), S_OK);
    EXPECT_STREQ(name, "OpenGL");
    char tiny[3] = {};
    EXPECT_EQ(engine->GetName(tiny, sizeof(tiny)), E_INVALIDARG);

    // Before Initialize there is no surface.
    ComPtr<IGraphView3D> view;
    EXPECT_NE(engine->GetView3D(view.ReleaseAndGetAddressOf()), S_OK);
    EXPECT_FALSE(view);

    // The palette may come before the context exists.
    const uint32_t red[] = {kRed, kRed};
    ASSERT_EQ(engine->SetPalette(2, red), S_OK);
    if (engine->Initialize() != S_OK) GTEST_SKIP() << "no OpenGL context on this machine";
    uint32_t flags = 0;
    ASSERT_EQ(engine->GetCapabilities(&flags), S_OK);
    EXPECT_TRUE(flags & kEngineRenderToImage);

    ASSERT_EQ(engine->GetView3D(view.ReleaseAndGetAddressOf()), S_OK);
    ASSERT_TRUE(view);
    ComPtr<IGraphDevice2D> device;
    ASSERT_EQ(engine->GetDevice2D(device.ReleaseAndGetAddressOf()), S_OK);
    EXPECT_TRUE(device);
    EXPECT_EQ(view->Attach(0), E_INVALIDARG);
    EXPECT_EQ(view->Attach(42), S_OK);
    EXPECT_EQ(view->Refresh(kRefreshCheck), S_OK);

    const auto grid = MakeGrid(8, 8, [](int32_t ix, int32_t iy) { return ix + iy; });
    const GridExtent extent = ExtentOf(grid, 0, 1, 0, 1);
    ASSERT_EQ(view->SetGrid(grid.data(), 8, 8, &extent, true), S_OK);
    view->SetAxesVisible(false);
    view->SetBackgroundColor(kWhite);
    Picture picture(200, 150);
    ImageBuffer buffer = picture.Buffer();
    ASSERT_EQ(view->RenderToImage(&buffer), S_OK);
    EXPECT_EQ(picture.At(0, 0), kWhite);
    EXPECT_EQ(picture.At(100, 75) & 0xFFFF00u, 0u) << std::hex << picture.At(100, 75);  // lit palette red
    EXPECT_GT(R(picture.At(100, 75)), 100u);

    // Draw without an Update renders at the window's size; the
    // RenderToImage before it left no cache to show.
    ASSERT_EQ(view->Resize(120, 90), S_OK);
    Picture window(120, 90);
    ImageBuffer windowBuffer = window.Buffer();
    ASSERT_EQ(view->Draw(&windowBuffer), S_OK);
    EXPECT_GT(window.Count([](uint32_t c) { return R(c) > 100 && G(c) < 40; }), 200);
}

class EngineViewTest : public ViewFixture {
protected:
    const std::vector<double> ramp = MakeGrid(4, 4, [](int32_t ix, int32_t) { return ix; });
};

TEST_F(EngineViewTest, PaletteReplacementRecoloursTheView) {
    EXPECT_EQ(engine->SetPalette(0, nullptr), E_INVALIDARG);
    SetGrid(ramp, 4, 4);
    view->SetGraphStyle(GraphStyle::Wireframe);  // unlit: exact palette colours
    Picture picture = Render();
    ImageBuffer buffer = picture.Buffer();
    for (uint32_t color : {0x00FF00u, 0xFF00FFu}) {
        const uint32_t palette[] = {color};
        ASSERT_EQ(engine->SetPalette(1, palette), S_OK);
        // Draw shows the new palette even though the last Update used the old one.
        ASSERT_EQ(view->Draw(&buffer), S_OK);
        EXPECT_GT(picture.Count([&](uint32_t c) { return c == color; }), 50) << std::hex << color;
    }
}

TEST_F(EngineViewTest, AViewOutlivingItsEngineRefusesWorkInsteadOfTouchingFreedState) {
    SetGrid(ramp, 4, 4);
    engine.Reset();
    Picture picture(32, 32);
    ImageBuffer buffer = picture.Buffer();
    EXPECT_EQ(view->RenderToImage(&buffer), E_UNEXPECTED);
    EXPECT_NE(view->Refresh(kRefreshCheck), S_OK);
    const GridExtent extent = ExtentOf(ramp, 0, 1, 0, 1);
    EXPECT_NE(view->SetGrid(ramp.data(), 4, 4, &extent, true), S_OK);
}

}  // namespace
