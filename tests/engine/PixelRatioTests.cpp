// Targets with more physical pixels than logical ones (HiDPI windows, print
// exports): sizes grow with the ratio, mapping stays in logical pixels, and
// the picture at ratio 2 shrunk by 2 looks like the picture at ratio 1.
#include <algorithm>
#include <initializer_list>
#include <tuple>
#include <utility>

#include "View3DTestSupport.h"
#include "engine/IGraphDevice2D.h"

namespace vexplot::testing {
namespace {

Picture Draw(auto& surface, int32_t width, int32_t height, int32_t hundredths) {
    Picture picture(width, height);
    ImageBuffer buffer = picture.Buffer();
    buffer.pixelRatio = hundredths;
    EXPECT_EQ(surface->Draw(&buffer), S_OK);
    return picture;
}

// Averages blocks of 2 x 2 pixels, as a screen at ratio 2 shows them.
Picture Halved(const Picture& p) {
    Picture half(p.width / 2, p.height / 2);
    for (int32_t i = 0; i < half.width * half.height; ++i) {
        const int32_t x = 2 * (i % half.width), y = 2 * (i / half.width);
        auto mean = [&](auto channel) {
            return (channel(p.At(x, y)) + channel(p.At(x + 1, y)) + channel(p.At(x, y + 1)) +
                    channel(p.At(x + 1, y + 1))) / 4;
        };
        half.pixels[size_t(i)] = mean(R) | mean(G) << 8 | mean(B) << 16;
    }
    return half;
}

TEST(PixelScale, BufferRatioIsHundredthsWithZeroAsOneAndClamped) {
    using Ratios = std::initializer_list<std::pair<int32_t, double>>;
    for (const auto& [hundredths, factor] : Ratios{{0, 1.0}, {125, 1.25}, {-150, 1.0}, {10, 0.25}, {5000, 8.0}})
        EXPECT_DOUBLE_EQ(PixelRatio(ImageBuffer{nullptr, 1, 1, 1, hundredths}), factor) << hundredths;
}

class Device2DRatio : public ViewFixture {};

TEST_F(Device2DRatio, RatioTwoScalesTextsAndMarginsWhileMappingStaysLogical) {
    ComPtr<IGraphDevice2D> device;
    ASSERT_EQ(engine->GetDevice2D(device.ReleaseAndGetAddressOf()), S_OK);
    constexpr uint32_t kBackground = 0x302010;
    device->Attach(1);
    device->SetBackgroundColor(kBackground);
    device->Resize(400, 300);
    std::vector<double> values(20 * 10);
    for (size_t i = 0; i < values.size(); ++i) values[i] = double(i / 10);  // a gentle slope along X
    const GridExtent extent{0, 19, 0, 9, 0, 19};
    ASSERT_EQ(device->SetGrid(values.data(), 20, 10, &extent, true), S_OK);
    device->SetAxisLabel(AxisId::X, "Distance [m]");
    auto mapping = [&] {
        PixelRect r{};
        int32_t px = 0, py = 0;
        double x = 0, y = 0;
        device->GetImageRect(&r);
        device->DataToClient(12.5, 3.0, &px, &py);
        device->ClientToData(150, 120, &x, &y);
        return std::tuple(r.left, r.top, r.right, r.bottom, px, py, x, y);
    };
    // Rows from `top` down holding the X axis's tick texts and label.
    auto textHeight = [](const Picture& p, int32_t top) {
        int32_t first = p.height, last = -1;
        for (int32_t y = top; y < p.height; ++y)
            for (int32_t x = 0; x < p.width; ++x)
                if (p.At(x, y) != kBackground) first = std::min(first, y), last = std::max(last, y);
        return double(last - first + 1);
    };
    const Picture one = Draw(device, 400, 300, 0);
    const auto logical = mapping();
    const int32_t below = std::get<3>(logical) + 8;  // below the image and its tick marks
    const Picture two = Draw(device, 800, 600, 200);
    EXPECT_EQ(mapping(), logical) << "mapping answers in the logical pixels of Resize";
    EXPECT_NEAR(textHeight(two, 2 * below) / textHeight(one, below), 2.0, 0.2) << "up to font size rounding";
    EXPECT_LT(DifferentPixels(Halved(two), one, 60), 400 * 300 / 60) << "same framing, same proportions";
    EXPECT_GT(DifferentPixels(Draw(device, 800, 600, 100), two, 60), 1000) << "a new ratio is a new frame";
}

class View3DRatio : public ViewFixture {};

TEST_F(View3DRatio, RatioTwoScalesTextsLinesAndOverlayWhileMappingStaysLogical) {
    SetGrid(MakeGrid(16, 16, [](int32_t ix, int32_t iy) { return Peaks(ix / 3.0 - 2.5, iy / 3.0 - 2.5); }), 16, 16);
    view->SetAxesVisible(true);
    view->SetGridVisible(false);
    view->SetAxisLabel(AxisId::X, "Distance");
    constexpr uint32_t kGreen = 0x00C000;
    uint32_t marker[4] = {kGreen, kGreen, kGreen, kGreen};
    const ImageBuffer markerImage{marker, 2, 2, 2, 0};
    const Point3 at{0.5, 0.5, 0};
    ASSERT_EQ(view->AddOverlayImage(&at, &markerImage, kWhite), S_OK);
    auto green = [](uint32_t c) { return (c & 0xFFFFFF) == kGreen; };
    // The axes' and texts' ink, black and anti-aliased greys (the surface
    // is red and blue), summed by darkness.
    auto ink = [](const Picture& p) {
        double sum = 0;
        for (uint32_t c : p.pixels)
            if (std::max({R(c), G(c), B(c)}) < std::min({R(c), G(c), B(c)}) + 20) sum += 255 - G(c);
        return sum;
    };
    const Picture one = Draw(view, kWidth, kHeight, 100);
    const auto corner = Project(1, 1, 0);
    const Picture two = Draw(view, 2 * kWidth, 2 * kHeight, 200);
    EXPECT_EQ(Project(1, 1, 0), corner) << "ProjectPoint answers in logical pixels";
    EXPECT_NEAR(ink(two) / ink(one), 4.0, 0.5) << "axis lines and texts twice as wide and tall";
    EXPECT_EQ(one.Count(green), 4);
    EXPECT_EQ(two.Count(green), 16) << "the overlay image grows with the picture";
    EXPECT_LT(DifferentPixels(Halved(two), one, 60), kWidth * kHeight / 60);
    EXPECT_EQ(Draw(view, 2 * kWidth, 2 * kHeight, 0).Count(green), 4) << "a new ratio renders again; 0 means 100";
}

}  // namespace
}  // namespace vexplot::testing
