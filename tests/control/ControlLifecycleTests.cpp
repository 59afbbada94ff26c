#include <functional>

#include "ControlFixture.h"

namespace vexplot::test {
namespace {

using Strings = std::vector<std::string>;

TEST_F(ControlFixture, CreationBuildsWindowsThenBindsTheEngineInOrder) {
    InstallEngine();
    ASSERT_TRUE(Create());

    EXPECT_EQ(Calls("site.CreateWindow"),
              (Strings{"site.CreateWindow(0)", "site.CreateWindow(4)", "site.CreateWindow(5)", "site.CreateWindow(8)",
                       "site.CreateWindow(7)", "site.CreateWindow(3)", "site.CreateWindow(6)", "site.CreateWindow(1)",
                       "site.CreateWindow(2)", "site.CreateWindow(9)", "site.CreateWindow(11)"}));
    // Discovery found "OpenGL" and wrote both settings.
    EXPECT_EQ(Read("", "EngineName"), "OpenGL");
    EXPECT_EQ(Read("", "Engine"), kRecordingEngineClass.ToString());
    EXPECT_EQ(control->EngineName(), "OpenGL");

    Strings binding;
    for (const std::string& c : log->Names())
        for (const char* step : {"factory.", "engine.", "device.Attach", "device.SetBackgroundColor",
                                 "device.SetParameters", "view.Attach", "view.SetGridVisible", "view.SetLogZ",
                                 "view.SetBackgroundColor"})
            if (c.rfind(step, 0) == 0) binding.push_back(c);
    EXPECT_EQ(binding, (Strings{"factory.CreateInstance", "engine.Initialize", "engine.GetDevice2D", "device.Attach",
                                "engine.SetPalette", "device.SetBackgroundColor", "device.SetParameters",
                                "engine.GetView3D", "view.Attach", "view.SetBackgroundColor",
                                "view.SetGridVisible", "view.SetLogZ"}));
    EXPECT_EQ(Calls("engine.SetPalette"), (Strings{"engine.SetPalette(1024)"}));
    EXPECT_EQ(Calls("device.SetParameters"), (Strings{"device.SetParameters(60,15,50,60)"}));
    EXPECT_EQ(Calls("view.SetGridVisible"), (Strings{"view.SetGridVisible(1)"}));

    // The control starts in 3-D with the 3-D window shown.
    EXPECT_EQ(control->GetViewMode(), 1);
    EXPECT_EQ(control->GetCurrentViewWindow(), site.Find(WindowRole::View3D));
    EXPECT_TRUE(site.Visible(WindowRole::View3D));
    EXPECT_FALSE(site.Visible(WindowRole::View2D));
    EXPECT_TRUE(site.messages.empty());
}

TEST(ControlEngineStart, FailuresShowTheirMessagesAndStopOrRecover) {
    const std::string notInitialized = StringTable::Get(57671);
    const std::string notSelected = StringTable::Get(57672);
    const std::string notInstantiated = StringTable::Get(57673);
    ASSERT_EQ(notInitialized, "Halcyra graph engine couldn't be initialized.\nTry another one.");
    ASSERT_EQ(notSelected, "You must select graph engine.\nProgram cannot run.");
    ASSERT_EQ(notInstantiated, "Cannot instantiate graph engine.\nProgram cannot run.");

    struct Case {
        const char* name;
        std::function<void(ControlHarness&)> setUp;
        bool created;
        Strings messages;
    };
    const Case cases[] = {
        {"nothing installed, choice cancelled", [](ControlHarness&) {}, false, {notInitialized}},
        {"wanted name missing, another engine confirmed",
         [](ControlHarness& f) {
             f.InstallEngine("Other");
             f.site.choices = {{"Other", kRecordingEngineClass.ToString()}};
         },
         true,
         {notInitialized}},
        {"unknown class, then an empty choice confirmed",
         [](ControlHarness& f) {
             f.Write("", "Engine", "{00000000-0000-0000-0000-000000000001}");
             f.site.choices = {{"Broken", ""}};
         },
         false,
         {notInitialized, notSelected}},
        {"engine without a 2-D device",
         [](ControlHarness& f) {
             f.InstallEngine();
             f.factory->noDevice = true;
         },
         false,
         {notInstantiated}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ControlHarness f;
        c.setUp(f);
        EXPECT_EQ(f.Create(), c.created);
        EXPECT_EQ(f.site.messages, c.messages);
        EXPECT_EQ(f.control->IsCreated(), c.created);
        if (c.created) {
            // The confirmed choice is written as the engine settings.
            EXPECT_EQ(f.site.offered.size(), 1u);
            EXPECT_EQ(f.Read("", "Engine"), kRecordingEngineClass.ToString());
            EXPECT_EQ(f.Read("", "EngineName"), "Other");
            EXPECT_EQ(f.control->EngineName(), "Other");
        } else {
            // A control without a plot: every later call is harmless.
            EXPECT_EQ(f.control->GetEngine(), nullptr);
            EXPECT_NE(f.control->SetData(CreateGraphData(std::vector<double>(4, 1.0), 2, 2).Get()), S_OK);
            f.control->SetGraphMode(3);
            f.control->ShowWindows(CUI_VexplotCtrl::wndAll, 0);
            f.control->SetCamAzim(10.0f);
            f.control->RecalcLayout();
            EXPECT_EQ(f.control->RetrieveBitmap(), 0);
            EXPECT_EQ(f.control->GetGraphMode(), 0);
        }
    }
}

TEST_F(ControlFixture, ThreeDViewThatRefusesAttachLeavesA2DControl) {
    InstallEngine();
    log->failures["view.Attach"] = E_FAIL;
    Construct();
    ListenForErrors();
    ASSERT_TRUE(Create());

    EXPECT_EQ(site.messages, (Strings{"Can't start 3D device."}));
    EXPECT_EQ(control->GetView3D(), nullptr);
    EXPECT_EQ(control->GetViewMode(), 0);
    EXPECT_TRUE(site.Visible(WindowRole::View2D));

    log->calls.clear();
    control->SetGraphMode(0);
    EXPECT_EQ(control->GetViewMode(), 0);
    EXPECT_TRUE(Calls("site.ShowWindow").empty());
    EXPECT_TRUE(errors.empty());
    // The camera needs the 3-D view: getters answer 0, setters do nothing.
    control->SetCamXPosition(4.0);
    EXPECT_EQ(control->GetCamXPosition(), 0.0);
    EXPECT_TRUE(Calls("view.").empty());
}

TEST_F(WorkingControl, ModeSwitchShowsOnlyOnChangeAndAlwaysRedrawsWithErase) {
    const WindowHandle view2D = site.Find(WindowRole::View2D);
    const WindowHandle view3D = site.Find(WindowRole::View3D);

    // The mode already shown: no hide or show, but a redraw with erase.
    control->SetViewMode(1);
    EXPECT_TRUE(Calls("site.ShowWindow").empty());
    ASSERT_FALSE(Calls("site.Invalidate").empty());
    EXPECT_EQ(Calls("site.Invalidate").back(), "site.Invalidate(2,1)");
    EXPECT_TRUE(control->RedrawPending());

    log->calls.clear();
    control->SetViewMode(0);
    const Strings shows = Calls("site.ShowWindow");
    ASSERT_GE(shows.size(), 2u);
    EXPECT_EQ(shows[0], "site.ShowWindow(2,0)");
    EXPECT_EQ(shows[1], "site.ShowWindow(1,1)");
    EXPECT_EQ(control->GetCurrentViewWindow(), view2D);
    EXPECT_EQ(Calls("site.Invalidate").back(), "site.Invalidate(1,1)");

    // Back to 3-D: the view is refreshed after it is shown.
    log->calls.clear();
    control->SetViewMode(1);
    EXPECT_EQ(control->GetCurrentViewWindow(), view3D);
    EXPECT_EQ(Calls("view.Refresh"), (Strings{"view.Refresh(0)"}));
}

TEST_F(WorkingControl, PaintDrawsTheCurrentSurfaceAndClearsThePendingRedraw) {
    control->SetViewMode(0);
    ASSERT_TRUE(control->RedrawPending());
    log->calls.clear();
    std::vector<uint32_t> pixels(16);
    const ImageBuffer target{pixels.data(), 4, 4, 4, 0};
    auto* handler = site.windows[site.Find(WindowRole::View2D)].handler;
    handler->OnPaint(site.Find(WindowRole::View3D), target);  // not on screen: ignored
    EXPECT_TRUE(Calls("view.Draw").empty());
    handler->OnPaint(site.Find(WindowRole::View2D), target);
    EXPECT_EQ(Calls("device.Draw").size(), 1u);
    EXPECT_FALSE(control->RedrawPending());
}

TEST_F(WorkingControl, RelayoutUpdatesAHealthy3DViewAndSwitchesTo2DOnItsLoss) {
    control->RecalcLayout();
    Strings names = log->Names();
    const auto refresh = std::find(names.begin(), names.end(), "view.Refresh");
    ASSERT_NE(refresh, names.end());
    EXPECT_EQ(*(refresh + 1), "view.Update");
    EXPECT_EQ(Calls("view.Resize"), (Strings{"view.Resize(400,260)"}));
    EXPECT_TRUE(site.messages.empty());

    log->failures["view.Refresh"] = E_FAIL;
    control->RecalcLayout();
    EXPECT_EQ(site.messages, (Strings{"ERROR! 3D mode should be disabled."}));
    EXPECT_EQ(control->GetView3D(), nullptr);
    EXPECT_EQ(control->GetViewMode(), 0);
    EXPECT_TRUE(site.Visible(WindowRole::View2D));
    EXPECT_FALSE(site.Visible(WindowRole::View3D));
}

TEST_F(WorkingControl, DestroyReleases3DViewThen2DDeviceThenEngine) {
    factory->engine->logReleases = true;
    View().logReleases = true;
    factory->engine->device->logReleases = true;
    control->Destroy();
    const Strings releases = [&] {
        Strings r;
        for (const std::string& n : log->Names())
            if (n.find("Release") != std::string::npos && n != "view.ReleaseGrid") r.push_back(n);
        return r;
    }();
    ASSERT_GE(releases.size(), 3u);
    EXPECT_EQ(Strings(releases.end() - 3, releases.end()),
              (Strings{"view.Release", "device.Release", "engine.Release"}));
    EXPECT_TRUE(site.windows.empty());
}

// Before window creation the info window's settings are not read yet, so
// its bit is the InfoVisible member's default (off).
TEST_F(ControlFixture, WindowsVisibleBeforeTheWindowsExistComesFromTheSettings) {
    constexpr int32_t kAlways = CUI_VexplotCtrl::wndTitle | CUI_VexplotCtrl::wndStatus | CUI_VexplotCtrl::wndNavigator;
    struct Case {
        const char* name;
        int32_t legendVisible;  // Legend "Visible", -1: missing
        int32_t expected;
    };
    const Case cases[] = {
        {"fresh settings", -1, kAlways},
        {"legend shown", 1, kAlways | CUI_VexplotCtrl::wndLegend},
        {"legend hidden", 0, kAlways},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        store = SettingsStore::OpenUnshared(":memory:");
        if (c.legendVisible >= 0) WriteInt("Legend", "Visible", c.legendVisible);
        Construct();
        EXPECT_EQ(control->GetWindowsVisible(), c.expected);
        EXPECT_TRUE(site.windows.empty());
    }
}

TEST_F(WorkingControl, ShowWindowsAllOffBeforeAnyVisibilityCallHidesAllFive) {
    control->ShowWindows(CUI_VexplotCtrl::wndAll, 0);
    for (WindowRole role : {WindowRole::Title, WindowRole::MenuButton, WindowRole::LegendButton,
                            WindowRole::StatusBar, WindowRole::InfoWindow, WindowRole::LegendWindow,
                            WindowRole::Navigator})
        EXPECT_FALSE(site.Visible(role)) << static_cast<int>(role);
    EXPECT_EQ(control->GetWindowsVisible(), 0);

    // Bits switch single windows back; the view grows into the title's place.
    control->ShowWindows(CUI_VexplotCtrl::wndTitle | CUI_VexplotCtrl::wndNavigator, 1);
    EXPECT_TRUE(site.Visible(WindowRole::Title));
    EXPECT_TRUE(site.Visible(WindowRole::LegendButton));
    EXPECT_TRUE(site.Visible(WindowRole::Navigator));
    EXPECT_FALSE(site.Visible(WindowRole::StatusBar));
    EXPECT_EQ(control->GetWindowsVisible(), CUI_VexplotCtrl::wndTitle | CUI_VexplotCtrl::wndNavigator);
    const PixelRect view = site.GetWindowRect(site.Find(WindowRole::View3D));
    EXPECT_EQ(view.top, 20);
    EXPECT_EQ(view.bottom, 300);
}

}  // namespace
}  // namespace vexplot::test
