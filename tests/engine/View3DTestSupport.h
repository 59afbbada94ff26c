#pragma once
// Helpers of the 3-D view's tests: an engine made directly, pictures with
// pixel queries, PNG files and grids.
#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "engine/IGraphView3D.h"
#include "opengl/OpenGLEngine.h"

namespace vexplot::testing {

inline constexpr uint32_t kWhite = 0xFFFFFF;
inline constexpr uint32_t kBlue = 0xFF0000;  // 0x00BBGGRR
inline constexpr uint32_t kRed = 0x0000FF;

inline uint32_t R(uint32_t c) { return c & 0xFF; }
inline uint32_t G(uint32_t c) { return (c >> 8) & 0xFF; }
inline uint32_t B(uint32_t c) { return (c >> 16) & 0xFF; }

// A shaded colour of the blue-to-red test palette: no green, and clearly
// more of one of red and blue.
inline bool Reddish(uint32_t c) { return G(c) < 40 && R(c) > 90 && R(c) > B(c) + 40; }
inline bool Bluish(uint32_t c) { return G(c) < 40 && B(c) > 90 && B(c) > R(c) + 40; }

struct Picture {
    int32_t width = 0, height = 0;
    std::vector<uint32_t> pixels;

    Picture() = default;
    Picture(int32_t w, int32_t h) : width(w), height(h), pixels(static_cast<size_t>(w) * h, 0xDEADBE) {}
    ImageBuffer Buffer() { return {pixels.data(), width, height, width, 0}; }
    // The colour without the byte above it, which drivers fill differently.
    uint32_t At(int32_t x, int32_t y) const { return pixels[static_cast<size_t>(y) * width + x] & 0xFFFFFF; }
    // Whether a pixel within `radius` of (x, y) satisfies `test`.
    bool Near(int32_t x, int32_t y, int32_t radius, const std::function<bool(uint32_t)>& test) const {
        for (int32_t dy = -radius; dy <= radius; ++dy)
            for (int32_t dx = -radius; dx <= radius; ++dx) {
                const int32_t px = x + dx, py = y + dy;
                if (px >= 0 && py >= 0 && px < width && py < height && test(At(px, py))) return true;
            }
        return false;
    }
    int32_t Count(const std::function<bool(uint32_t)>& test) const { return Count({0, 0, width, height}, test); }
    int32_t Count(const PixelRect& r, const std::function<bool(uint32_t)>& test) const {
        int32_t n = 0;
        for (int32_t y = r.top; y < r.bottom; ++y)
            for (int32_t x = r.left; x < r.right; ++x) n += test(At(x, y)) ? 1 : 0;
        return n;
    }
};

// Pixels whose channels differ by more than `channelTolerance`.
inline int32_t DifferentPixels(const Picture& a, const Picture& b, uint32_t channelTolerance) {
    if (a.width != b.width || a.height != b.height) return std::numeric_limits<int32_t>::max();
    int32_t n = 0;
    for (size_t i = 0; i < a.pixels.size(); ++i) {
        const uint32_t p = a.pixels[i], q = b.pixels[i];
        auto differs = [&](uint32_t u, uint32_t v) { return (u > v ? u - v : v - u) > channelTolerance; };
        n += differs(R(p), R(q)) || differs(G(p), G(q)) || differs(B(p), B(q)) ? 1 : 0;
    }
    return n;
}

inline bool ReadPng(const std::string& path, Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return false;
    image.format = PNG_FORMAT_RGBA;
    picture = Picture(static_cast<int32_t>(image.width), static_cast<int32_t>(image.height));
    if (!png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr)) return false;
    for (uint32_t& p : picture.pixels) p &= 0x00FFFFFF;
    return true;
}

inline bool WritePng(const std::string& path, const Picture& picture) {
    std::vector<uint32_t> opaque = picture.pixels;
    for (uint32_t& p : opaque) p |= 0xFF000000u;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    return png_image_write_to_file(&image, path.c_str(), 0, opaque.data(), 0, nullptr) != 0;
}

// Compares with a stored picture in the test data folder. Drivers differ in
// how they rasterise line edges and in the last bits of interpolated
// colours, so a pixel counts as different only beyond 40 levels in some
// channel, and up to `permille` of the pixels may differ. A failing
// rendering is written to the temporary folder to look at;
// VEXPLOT_UPDATE_REFERENCES=1 rewrites the stored pictures.
inline void ExpectMatchesReference(const std::string& name, const Picture& picture, int32_t permille) {
    const std::string path = std::string(VEXPLOT_TEST_DATA_DIR) + "/" + name;
    if (std::getenv("VEXPLOT_UPDATE_REFERENCES")) {
        ASSERT_TRUE(WritePng(path, picture));
    }
    Picture reference;
    ASSERT_TRUE(ReadPng(path, reference)) << path << " missing: run with VEXPLOT_UPDATE_REFERENCES=1";
    const int32_t different = DifferentPixels(picture, reference, 40);
    if (different > picture.width * picture.height * permille / 1000) {
        WritePng(std::string(::testing::TempDir()) + name, picture);
        ADD_FAILURE() << different << " pixels differ; this rendering is in " << ::testing::TempDir() << name;
    }
}

// value (ix, iy) at ix * yCount + iy.
inline std::vector<double> MakeGrid(int32_t xCount, int32_t yCount, const std::function<double(int32_t, int32_t)>& f) {
    std::vector<double> grid(static_cast<size_t>(xCount) * yCount);
    for (int32_t ix = 0; ix < xCount; ++ix)
        for (int32_t iy = 0; iy < yCount; ++iy) grid[static_cast<size_t>(ix) * yCount + iy] = f(ix, iy);
    return grid;
}

inline double Peaks(double x, double y) {
    return 3 * (1 - x) * (1 - x) * std::exp(-x * x - (y + 1) * (y + 1)) -
           10 * (x / 5 - x * x * x - std::pow(y, 5)) * std::exp(-x * x - y * y) -
           std::exp(-(x + 1) * (x + 1) - y * y) / 3;
}

inline GridExtent ExtentOf(const std::vector<double>& grid, double xFirst, double xLast, double yFirst, double yLast) {
    double lo = std::numeric_limits<double>::infinity(), hi = -lo;
    for (double v : grid)
        if (std::isfinite(v)) lo = std::min(lo, v), hi = std::max(hi, v);
    return {xFirst, xLast, yFirst, yLast, lo, hi};
}

// An initialised engine made directly (not through the registry) and its
// view, with the blue-to-red palette, a white background and no axes; the
// test is skipped when the machine gives no GL context.
class ViewFixture : public ::testing::Test {
protected:
    void SetUp() override {
        engine = MakeComObject<OpenGLEngine>();
        if (engine->Initialize() != S_OK) GTEST_SKIP() << "no OpenGL context: " << engine->InitializeError();
        ASSERT_EQ(engine->GetView3D(view.ReleaseAndGetAddressOf()), S_OK);
        const uint32_t palette[] = {kBlue, kRed};
        ASSERT_EQ(engine->SetPalette(2, palette), S_OK);
        ASSERT_EQ(view->Attach(1), S_OK);
        ASSERT_EQ(view->Resize(kWidth, kHeight), S_OK);
        view->SetBackgroundColor(kWhite);
        view->SetAxesVisible(false);
    }
    void SetGrid(const std::vector<double>& grid, int32_t xCount, int32_t yCount, double xFirst = 0,
                 double xLast = 1, double yFirst = 0, double yLast = 1) {
        const GridExtent extent = ExtentOf(grid, xFirst, xLast, yFirst, yLast);
        ASSERT_EQ(view->SetGrid(grid.data(), xCount, yCount, &extent, true), S_OK);
    }
    Picture Render(int32_t detail = kUpdateFull) {
        Picture picture(kWidth, kHeight);
        EXPECT_EQ(view->Update(detail), S_OK);
        ImageBuffer buffer = picture.Buffer();
        EXPECT_EQ(view->Draw(&buffer), S_OK);
        return picture;
    }
    // The pixel of a data point; fails the test when it is not on screen.
    std::pair<int32_t, int32_t> Project(double x, double y, double z) {
        int32_t px = -1, py = -1;
        EXPECT_EQ(view->ProjectPoint(x, y, z, &px, &py), S_OK) << x << ", " << y << ", " << z;
        return {px, py};
    }

    static constexpr int32_t kWidth = 320;
    static constexpr int32_t kHeight = 240;
    ComPtr<OpenGLEngine> engine;
    ComPtr<IGraphView3D> view;
};

}  // namespace vexplot::testing
