// The process-wide display-change hook and a control's answer to a change.
#include "ControlFixture.h"
#include "control/DisplayChangeHook.h"
#include "control/HeadlessSite.h"

namespace vexplot::test {
namespace {

class DisplayChange : public ControlFixture {
protected:
    int EngineCreations() { return static_cast<int>(Calls("factory.CreateInstance").size()); }
};

TEST_F(DisplayChange, OnlyADifferentDepthOrSizeRecreatesTheEngineAndTheCameraStays) {
    CreateWorking();
    ShowGrid();
    const CameraVector position{3.0, -4.0, 5.0, 1.0};
    const CameraVector center{0.5, 0.25, 0.0, 1.0};
    control->GetView3D()->SetCameraPosition(position);
    control->GetView3D()->SetCameraCenter(center);
    log->calls.clear();
    const ScreenMode start = control->LastScreenMode();

    HeadlessSite::SimulateDisplayChange(start);  // nothing changed
    EXPECT_EQ(EngineCreations(), 0);
    const ScreenMode changed{start.depth == 24 ? 16 : 24, 1920, 1080};
    HeadlessSite::SimulateDisplayChange(changed);
    HeadlessSite::SimulateDisplayChange(changed);
    EXPECT_EQ(EngineCreations(), 1);
    EXPECT_EQ(control->LastScreenMode(), changed);
    HeadlessSite::SimulateDisplayChange({changed.depth, 1920, 1200});  // the height alone
    EXPECT_EQ(EngineCreations(), 2);

    CameraVector p{};
    CameraVector c{};
    ASSERT_EQ(control->GetView3D()->GetCameraPosition(&p), S_OK);
    ASSERT_EQ(control->GetView3D()->GetCameraCenter(&c), S_OK);
    EXPECT_EQ((std::array{p.x, p.y, p.z, c.x, c.y, c.z}),
              (std::array{position.x, position.y, position.z, center.x, center.y, center.z}));
    EXPECT_EQ(control->GetGraphObjects()->Count(), 1);
    EXPECT_TRUE(control->IsModified());
}

TEST_F(DisplayChange, ThePlatformWatcherRunsExactlyWhileAControlLives) {
    DisplayChangeHook& hook = DisplayChangeHook::Instance();
    ASSERT_FALSE(hook.Installed()) << "a control of another test is still alive";
    int watching = 0;
    hook.SetPlatform([&watching] { ++watching; return std::function<void()>([&watching] { --watching; }); },
                     [] { return ScreenMode{32, 800, 600}; });
    struct Restore {
        ~Restore() { DisplayChangeHook::Instance().SetPlatform(nullptr, nullptr); }
    } restore;
    CreateWorking();
    EXPECT_EQ(watching, 1);
    EXPECT_EQ(control->LastScreenMode(), (ScreenMode{32, 800, 600}));

    control->Destroy();
    EXPECT_EQ(watching, 0);
    EXPECT_EQ(hook.Count(), 0u);
    HeadlessSite::SimulateDisplayChange({8, 640, 480});  // nobody listens: nothing happens
    EXPECT_EQ(EngineCreations(), 0);

    ASSERT_TRUE(Create());
    EXPECT_EQ(watching, 1);
    control->Destroy();
}

}  // namespace
}  // namespace vexplot::test
