#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "ControlFixture.h"
#include "control/HeadlessSite.h"

namespace vexplot::test {
namespace {

// Records what the site delivers to a window's handler.
struct HandlerLog final : IWindowHandler {
    void OnPaint(WindowHandle, const ImageBuffer& t) override {
        paints.push_back(std::to_string(t.width) + "x" + std::to_string(t.height));
        t.pixels[0] = 0x00ABCDEF;
    }
    void OnSize(WindowHandle, int32_t w, int32_t h) override { sizes.push_back(std::to_string(w) + "x" + std::to_string(h)); }
    void OnTimer(WindowHandle, uint32_t id) override { timers.push_back(id); }
    std::vector<std::string> paints, sizes;
    std::vector<uint32_t> timers;
};

class HeadlessSiteTest : public ::testing::Test {
protected:
    void TearDown() override {
        if (out) std::fclose(out);
    }
    std::string Printed() {
        std::fflush(out);
        std::rewind(out);
        std::string text;
        for (int c; (c = std::fgetc(out)) != EOF;) text.push_back(static_cast<char>(c));
        return text;
    }
    std::FILE* out = std::tmpfile();
    HeadlessSite site{out};
    HandlerLog handler;
};

TEST_F(HeadlessSiteTest, ViewWindowsPaintIntoTheirOwnBuffersWhenVisibleAndPending) {
    const WindowHandle view = site.CreateWindow(WindowRole::View3D, 0, {0, 0, 8, 6}, &handler);
    const WindowHandle title = site.CreateWindow(WindowRole::Title, 0, {0, 0, 8, 6}, &handler);
    EXPECT_EQ(site.Pixels(view).size(), 48u);
    EXPECT_TRUE(site.Pixels(title).empty());

    site.Invalidate(view, nullptr, true);
    EXPECT_EQ(site.Flush(), 0);  // hidden
    site.ShowWindow(view, true);
    site.ShowWindow(title, true);
    site.Invalidate(title, nullptr, true);
    EXPECT_EQ(site.Flush(), 1);  // the pending paint of the view only
    EXPECT_EQ(site.Pixels(view)[0], 0x00ABCDEFu);
    EXPECT_EQ(site.Flush(), 0);  // nothing pending any more

    site.MoveWindow(view, {2, 2, 12, 7});
    EXPECT_EQ(handler.sizes, (std::vector<std::string>{"10x5"}));
    EXPECT_EQ(site.Pixels(view).size(), 50u);
    EXPECT_EQ(site.Flush(), 1);
    EXPECT_EQ(handler.paints, (std::vector<std::string>{"8x6", "10x5"}));
}

TEST_F(HeadlessSiteTest, MessagesArePrintedAndAnsweredWithTheDefault) {
    EXPECT_EQ(site.MessageBox("Replace?", "Vexplot", MessageButtons::YesNo), kAnswerYes);
    EXPECT_EQ(site.MessageBox("Done.", "Vexplot", MessageButtons::Ok), kAnswerOk);
    EXPECT_EQ(Printed(), "Vexplot: Replace?\nVexplot: Done.\n");
}

TEST_F(HeadlessSiteTest, EngineChoiceOffersEachEngineOnceThenCancels) {
    const std::vector<EngineEntry> engines = {{"OpenGL", "{A}"}, {"Other", "{B}"}};
    EXPECT_EQ(site.ChooseEngine(engines)->name, "OpenGL");
    EXPECT_EQ(site.ChooseEngine(engines)->name, "Other");
    EXPECT_FALSE(site.ChooseEngine(engines));
    EXPECT_FALSE(HeadlessSite(out).ChooseEngine({}));
}

TEST_F(HeadlessSiteTest, TimersFireOnlyWhenTimeIsAdvanced) {
    const WindowHandle w = site.CreateWindow(WindowRole::Control, 0, {0, 0, 1, 1}, &handler);
    site.SetTimer(w, 1, 100);
    site.SetTimer(w, 2, 250);
    EXPECT_TRUE(handler.timers.empty());
    site.AdvanceTime(500);
    EXPECT_EQ(handler.timers, (std::vector<uint32_t>{1, 1, 2, 1, 1, 1, 2}));
    site.KillTimer(w, 1);
    handler.timers.clear();
    site.AdvanceTime(250);
    EXPECT_EQ(handler.timers, (std::vector<uint32_t>{2}));
    site.DestroyWindow(w);
    site.AdvanceTime(1000);
    EXPECT_EQ(handler.timers.size(), 1u);
}

TEST_F(HeadlessSiteTest, BitmapsKeepRowsWithoutTheStride) {
    std::vector<uint32_t> pixels = {1, 2, 99, 3, 4, 99};
    const uint32_t bitmap = site.CreateBitmap(ImageBuffer{pixels.data(), 2, 2, 3, 0});
    ASSERT_NE(bitmap, 0u);
    std::vector<uint32_t> read;
    int32_t w = 0;
    int32_t h = 0;
    ASSERT_TRUE(site.ReadBitmap(bitmap, &read, &w, &h));
    EXPECT_EQ(read, (std::vector<uint32_t>{1, 2, 3, 4}));
    site.DeleteBitmap(bitmap);
    EXPECT_FALSE(site.ReadBitmap(bitmap, &read, &w, &h));
    EXPECT_EQ(site.CreateBitmap(ImageBuffer{pixels.data(), 0, 2, 3, 0}), 0u);
}

// The control on the real batch site: the bitmap is the current view
// rendered at its window's size.
TEST_F(HeadlessSiteTest, AControlOnItGivesABitmapOfTheViewWindowsSize) {
    ControlHarness h;  // after the site: the control is destroyed first
    h.InstallEngine();
    h.Construct();
    ASSERT_TRUE(h.control->Create(site, {0, 0, 320, 240}));
    const PixelRect view = site.GetWindowRect(h.control->Window(WindowRole::View3D));
    const int32_t bitmap = h.control->RetrieveBitmap();
    ASSERT_NE(bitmap, 0);
    EXPECT_EQ(h.Calls("view.RenderToImage").size(), 1u);
    std::vector<uint32_t> pixels;
    int32_t w = 0;
    int32_t ht = 0;
    ASSERT_TRUE(site.ReadBitmap(static_cast<uint32_t>(bitmap), &pixels, &w, &ht));
    EXPECT_EQ(w, view.right - view.left);
    EXPECT_EQ(ht, view.bottom - view.top);
    EXPECT_EQ(w, 320);
    EXPECT_EQ(ht, 200);
    // Painting goes through the engine surface's Draw into the window pixels.
    h.log->calls.clear();
    EXPECT_EQ(site.Flush(), 1);
    EXPECT_EQ(h.log->Names(), (std::vector<std::string>{"view.Update", "view.Draw"}));

    // A render that fails raises the error event and gives no bitmap.
    h.control->SetViewMode(0);
    h.log->failures["device.RenderToImage"] = E_OUTOFMEMORY;
    h.ListenForErrors();
    EXPECT_EQ(h.control->RetrieveBitmap(), 0);
    ASSERT_EQ(h.errors.size(), 1u);
    EXPECT_EQ(h.errors[0].code, E_OUTOFMEMORY);
}

}  // namespace
}  // namespace vexplot::test
