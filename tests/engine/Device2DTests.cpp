#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "View3DTestSupport.h"
#include "engine/IGraphDevice2D.h"

namespace vexplot {
namespace {

constexpr uint32_t kBackground = 0x00302010;
constexpr uint32_t kRed = 0x000000FF, kGreen = 0x0000FF00, kBlue = 0x00FF0000, kWhite = 0x00FFFFFF;
constexpr WindowHandle kWindow = 0x1234;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using testing::ExpectMatchesReference;
using testing::Picture;

AxisStyle PlainStyle(uint32_t color) { return AxisStyle{color, 0x808080, 0x606060, 1, 1, 0, 0, 1}; }

// An engine with a four-colour palette and a 4 x 3 grid whose value
// (ix, iy) is ix * 3 + iy, so the palette index of a node is known.
class Device2DTest : public ::testing::Test {
protected:
    void SetUp() override {
        engine_ = MakeComObject<OpenGLEngine>();
        if (engine_->Initialize() != S_OK) GTEST_SKIP() << "no OpenGL 3.3 context: " << engine_->InitializeError();
        const uint32_t palette[] = {kRed, kGreen, kBlue, kWhite};
        ASSERT_EQ(engine_->SetPalette(4, palette), S_OK);
        ASSERT_EQ(engine_->GetDevice2D(device_.ReleaseAndGetAddressOf()), S_OK);
        ASSERT_TRUE(device_);
        device_->Attach(kWindow);
        device_->SetBackgroundColor(kBackground);
        device_->SetParameters(60, 15, 50, 60);
        device_->Resize(400, 300);
        for (AxisId axis : {AxisId::X, AxisId::Y, AxisId::Palette}) {
            const AxisStyle style = PlainStyle(0x00FFFF80);
            device_->SetAxisStyle(axis, &style);
        }
        values_.resize(12);
        for (int i = 0; i < 12; ++i) values_[size_t(i)] = i;
    }
    void SendGrid() {
        const GridExtent extent{0.0, 3.0, 0.0, 2.0, 0.0, 11.0};
        ASSERT_EQ(device_->SetGrid(values_.data(), 4, 3, &extent, true), S_OK);
    }
    Picture Render(int32_t w = 400, int32_t h = 300) {
        Picture picture(w, h);
        device_->Resize(w, h);
        ImageBuffer buffer = picture.Buffer();
        EXPECT_EQ(device_->Draw(&buffer), S_OK);
        return picture;
    }
    PixelRect ImageRect() {
        PixelRect r{};
        device_->GetImageRect(&r);
        return r;
    }
    static uint32_t PaletteColor(double v) {
        const uint32_t colors[] = {kRed, kGreen, kBlue, kWhite};
        return colors[std::min(int(std::floor(v / 11.0 * 4)), 3)];
    }

    ComPtr<OpenGLEngine> engine_;
    ComPtr<IGraphDevice2D> device_;
    std::vector<double> values_;
};

struct ViewCase {
    int32_t orientation;
    bool zoom;
    ShadingMode shading;
    bool descending = false;  // both scales run from their highest value to their lowest
};

void PrintTo(const ViewCase& c, std::ostream* os) {
    *os << "orientation " << c.orientation << (c.zoom ? ", zoomed" : "") << ", shading " << int(c.shading)
        << (c.descending ? ", descending" : "");
}

class Device2DView : public Device2DTest, public ::testing::WithParamInterface<ViewCase> {};

// The image and the mapping queries agree: at every node's pixel the
// image shows that node's palette colour, however it is mirrored, zoomed or
// its scales run; a node without a value shows the background.
TEST_P(Device2DView, NodesShowTheirColourWhereDataToClientPutsThem) {
    const ViewCase c = GetParam();
    values_[9] = kNaN;  // node (3, 0)
    const GridExtent extent =
        c.descending ? GridExtent{3.0, 0.0, 2.0, 0.0, 0.0, 11.0} : GridExtent{0.0, 3.0, 0.0, 2.0, 0.0, 11.0};
    ASSERT_EQ(device_->SetGrid(values_.data(), 4, 3, &extent, true), S_OK);
    DataRect range{};
    device_->GetDataRange(&range);
    EXPECT_EQ(range.xMin, 0.0) << "the data range is ascending";
    EXPECT_EQ(range.xMax, 3.0);
    device_->SetImageOrientation(c.orientation);
    device_->SetShading(c.shading);
    const DataRect zoom{1.0, 3.0, 0.5, 2.0};
    device_->SetVisibleRange(c.zoom ? &zoom : nullptr);
    const Picture picture = Render();
    EXPECT_EQ(picture.At(3, 3), kBackground);
    EXPECT_EQ(picture.At(picture.width - 3, picture.height - 3), kBackground);
    int32_t checked = 0;
    for (int ix = 0; ix < 4; ++ix)
        for (int iy = 0; iy < 3; ++iy) {
            int32_t px = 0, py = 0;
            const double x = c.descending ? 3 - ix : ix, y = c.descending ? 2 - iy : iy;
            if (device_->DataToClient(x, y, &px, &py) != S_OK) continue;
            const uint32_t expected = ix == 3 && iy == 0 ? kBackground : PaletteColor(ix * 3 + iy);
            EXPECT_EQ(picture.At(px, py), expected) << "node " << ix << "," << iy;
            ++checked;
        }
    EXPECT_GE(checked, c.zoom ? 4 : 12);
}

INSTANTIATE_TEST_SUITE_P(OrientationZoomShading, Device2DView,
                         ::testing::Values(ViewCase{0, false, ShadingMode::Flat},
                                           ViewCase{1, false, ShadingMode::Flat},
                                           ViewCase{2, false, ShadingMode::Smooth},
                                           ViewCase{3, false, ShadingMode::Flat},
                                           ViewCase{0, true, ShadingMode::Flat},
                                           ViewCase{3, true, ShadingMode::Smooth},
                                           ViewCase{0, false, ShadingMode::Flat, true},
                                           ViewCase{2, false, ShadingMode::Smooth, true}));

// A grid longer than any texture is sampled down, and still shows its ends.
TEST_F(Device2DTest, GridBeyondTheTextureSizeStillShowsItsEnds) {
    const int32_t n = 40000;
    values_.resize(size_t(n) * 2);
    for (int32_t ix = 0; ix < n; ++ix) values_[size_t(ix) * 2] = values_[size_t(ix) * 2 + 1] = ix < n / 2 ? 0.0 : 11.0;
    const GridExtent extent{0.0, 1.0, 0.0, 1.0, 0.0, 11.0};
    ASSERT_EQ(device_->SetGrid(values_.data(), n, 2, &extent, false), S_OK);
    const Picture picture = Render();
    int32_t px = 0, py = 0;
    device_->DataToClient(0.0, 0.0, &px, &py);
    EXPECT_EQ(picture.At(px, py), kRed);
    device_->DataToClient(1.0, 1.0, &px, &py);
    EXPECT_EQ(picture.At(px, py), kWhite);
}

TEST_F(Device2DTest, SmoothShadingInterpolatesBetweenNodes) {
    std::vector<uint32_t> ramp(256);
    for (uint32_t i = 0; i < 256; ++i) ramp[i] = i | ((255 - i) << 16);
    engine_->SetPalette(256, ramp.data());
    SendGrid();
    auto distinct = [&](ShadingMode mode) {
        device_->SetShading(mode);
        const Picture picture = Render();
        const PixelRect r = ImageRect();
        std::set<uint32_t> colors;
        for (int32_t y = r.top; y < r.bottom; ++y)
            for (int32_t x = r.left; x < r.right; ++x) colors.insert(picture.At(x, y));
        return colors.size();
    };
    EXPECT_LE(distinct(ShadingMode::Flat), 12u) << "one colour per node";
    EXPECT_GT(distinct(ShadingMode::Smooth), 100u);
}

TEST_F(Device2DTest, ColorBarRunsFromTheFirstPaletteColourUpToTheLast) {
    SendGrid();
    const PixelRect image = ImageRect();
    Picture picture = Render();
    const int32_t barX = image.right + 12 + 7;  // inside the 15-pixel bar after its gap
    EXPECT_EQ(picture.At(barX, image.bottom - 2), kRed);
    EXPECT_EQ(picture.At(barX, image.top + 1), kWhite);
    device_->SetColorBarVisible(false);
    picture = Render();
    const std::set<uint32_t> palette{kRed, kGreen, kBlue, kWhite};
    EXPECT_TRUE(palette.count(picture.At(barX, image.top + 1))) << "the image takes the bar's place";
    EXPECT_EQ(picture.At(picture.width - 10, (image.top + image.bottom) / 2), kBackground);
}

TEST_F(Device2DTest, TickTextsAndLabelsAppearInTheMargins) {
    SendGrid();
    const double ticks[] = {0.0, 1.0, 2.0, 3.0};
    const char* texts[] = {"0.0", "1.0", "2.0", "3.0"};
    const PixelRect image = ImageRect();
    const PixelRect below{image.left - 20, image.bottom + 8, image.right + 20, 300};
    const PixelRect left{0, image.top, image.left - 8, image.bottom};
    auto ink = [&](const Picture& p, const PixelRect& r) {
        return p.Count(r, [](uint32_t c) { return c != kBackground; });
    };
    device_->SetAxisTicks(AxisId::X, 4, ticks, texts);
    AxisStyle style = PlainStyle(0x00FFFF80);
    style.numbersVisible = 0;
    device_->SetAxisStyle(AxisId::X, &style);
    const int32_t bare = ink(Render(), below);
    style.numbersVisible = 1;
    device_->SetAxisStyle(AxisId::X, &style);
    const int32_t withTexts = ink(Render(), below);
    EXPECT_GT(withTexts, bare + 40);
    device_->SetAxisLabel(AxisId::X, "Distance [m]");
    EXPECT_GT(ink(Render(), below), withTexts + 40);

    const int32_t leftBare = ink(Render(), left);
    device_->SetAxisLabel(AxisId::Y, "Height");
    const Picture labelled = Render();
    EXPECT_GT(ink(labelled, left), leftBare + 30);
    // The Y label reads upwards: its ink is taller than wide.
    PixelRect strip{0, image.top, 20, image.bottom};
    int32_t top = 1 << 30, bottom = -1, l = 1 << 30, r = -1;
    for (int32_t y = strip.top; y < strip.bottom; ++y)
        for (int32_t x = strip.left; x < strip.right; ++x)
            if (labelled.At(x, y) != kBackground)
                top = std::min(top, y), bottom = std::max(bottom, y), l = std::min(l, x), r = std::max(r, x);
    ASSERT_GE(bottom, top);
    EXPECT_GT(bottom - top, 2 * (r - l));
}

TEST_F(Device2DTest, GridLinesLieOverTheImageInTheirColour) {
    SendGrid();
    const double ticks[] = {1.0, 2.0};
    device_->SetAxisTicks(AxisId::X, 2, ticks, nullptr);
    AxisStyle style = PlainStyle(0x00FFFF80);
    style.majorGrid = 1;
    style.majorGridColor = 0x00123456;
    device_->SetAxisStyle(AxisId::X, &style);
    const Picture picture = Render();
    int32_t px = 0, py = 0;
    device_->DataToClient(1.0, 1.0, &px, &py);
    const PixelRect column{px, ImageRect().top, px + 1, ImageRect().bottom};
    EXPECT_GT(picture.Count(column, [](uint32_t c) { return c == 0x123456; }), (column.bottom - column.top) * 9 / 10);
}

TEST_F(Device2DTest, ContourModeDrawsLinesOverTheBackground) {
    // A smooth bowl, so that the isolines are closed curves.
    values_.assign(40 * 40, 0.0);
    for (int ix = 0; ix < 40; ++ix)
        for (int iy = 0; iy < 40; ++iy) values_[size_t(ix * 40 + iy)] = (ix - 20) * (ix - 20) + (iy - 20) * (iy - 20);
    const GridExtent extent{0.0, 1.0, 0.0, 1.0, 0.0, 800.0};
    device_->SetGrid(values_.data(), 40, 40, &extent, true);
    device_->SetImageVisible(false);
    const Picture picture = Render();
    const PixelRect r = ImageRect();
    const int32_t area = (r.right - r.left) * (r.bottom - r.top);
    const int32_t lines = picture.Count(r, [](uint32_t c) { return c != kBackground; });
    EXPECT_GT(lines, area / 100);
    EXPECT_LT(lines, area / 3);
    device_->SetImageVisible(true);
    EXPECT_EQ(Render().Count(r, [](uint32_t c) { return c == kBackground; }), 0);
}

TEST_F(Device2DTest, SectionDrawsTheCurveInItsColourAndBreaksAtMissingValues) {
    // z = x along X, with no value in the middle of the cut row.
    const int n = 21;
    values_.assign(size_t(n * n), 0.0);
    for (int ix = 0; ix < n; ++ix)
        for (int iy = 0; iy < n; ++iy) values_[size_t(ix * n + iy)] = ix;
    values_[size_t(10 * n + 10)] = kNaN;
    const GridExtent extent{0.0, 20.0, 0.0, 20.0, 0.0, 20.0};
    device_->SetGrid(values_.data(), n, n, &extent, true);
    constexpr uint32_t kCurve = 0x00FF00FF;
    const SectionSettings section{2, 2, 0, kCurve, 50.0};  // X-Z plane through the middle row
    ASSERT_EQ(device_->SetSection(&section), S_OK);
    const Picture picture = Render();
    const PixelRect r{0, 0, picture.width, picture.height};
    auto isCurve = [](uint32_t c) { return c == kCurve; };
    ASSERT_GT(picture.Count(r, isCurve), 100);
    // Rising: the curve's pixels on the left lie lower (larger y) than on the right.
    auto meanRow = [&](int32_t x0, int32_t x1) {
        double sum = 0;
        int32_t count = 0;
        for (int32_t y = 0; y < picture.height; ++y)
            for (int32_t x = x0; x < x1; ++x)
                if (isCurve(picture.At(x, y))) sum += y, ++count;
        return count ? sum / count : -1.0;
    };
    EXPECT_GT(meanRow(0, 150), meanRow(250, 400));
    // The gap around the missing value at x = 10.
    const PixelRect plot = ImageRect();
    const int32_t mid = plot.left + (plot.right - plot.left) / 2;
    // The colour bar is hidden in the section, so the plot is wider than the image.
    int32_t gapHits = 0;
    for (int32_t x = mid - 30; x < mid + 30; ++x)
        gapHits += picture.Count(PixelRect{x, 0, x + 1, picture.height}, isCurve) > 0 ? 0 : 1;
    EXPECT_GT(gapHits, 5);

    const SectionSettings drops{2, 3, int32_t(PointStyle::Circle), kCurve, 50.0};
    device_->SetSection(&drops);
    EXPECT_GT(Render().Count(r, isCurve), picture.Count(r, isCurve) * 2) << "drop lines reach down to the axis";
    const SectionSettings off{0, 2, 0, kCurve, 50.0};
    device_->SetSection(&off);
    EXPECT_EQ(Render().Count(r, isCurve), 0);
}

// Unchanged frames are served from a copy; every change must show at once.
TEST_F(Device2DTest, EveryChangeShowsInTheNextFrame) {
    SendGrid();
    int32_t px = 0, py = 0;
    device_->DataToClient(0.0, 0.0, &px, &py);
    EXPECT_EQ(Render().At(px, py), kRed);
    EXPECT_EQ(Render().At(px, py), kRed);
    const uint32_t other[] = {kBlue, kGreen};
    engine_->SetPalette(2, other);
    EXPECT_EQ(Render().At(px, py), kBlue) << "a new palette";
    device_->SetImageOrientation(3);
    EXPECT_EQ(Render().At(px, py), kGreen) << "mirrored: the highest node lies there now";
    const uint32_t background = 0x00010203;
    device_->SetBackgroundColor(background);
    EXPECT_EQ(Render().At(2, 2), background) << "a new background";
    // Without data only the background and the axes are left.
    ASSERT_EQ(device_->ResetData(), S_OK);
    const PixelRect r = ImageRect();
    const PixelRect inner{r.left + 2, r.top + 2, r.right - 2, r.bottom - 2};
    EXPECT_EQ(Render().Count(inner, [&](uint32_t c) { return c != background; }), 0);
}

TEST_F(Device2DTest, CallsCheckTheirArguments) {
    Picture picture(64, 64);
    ImageBuffer buffer = picture.Buffer();
    const SectionSettings badMode{3, 2, 0, 0, 50.0};
    const SectionSettings badPoint{1, 2, 7, 0, 50.0};
    const FontDescription font{"Arial", 12, 400, 0, 0};
    struct Case {
        const char* what;
        HRESULT got, want;
    } cases[] = {
        {"image orientation 4", device_->SetImageOrientation(4), E_INVALIDARG},
        {"section mode 3", device_->SetSection(&badMode), E_INVALIDARG},
        {"point style 7", device_->SetSection(&badPoint), E_INVALIDARG},
        {"null section", device_->SetSection(nullptr), E_POINTER},
        {"null grid", device_->SetGrid(nullptr, 2, 2, nullptr, false), E_POINTER},
        {"empty grid", device_->SetGrid(values_.data(), 0, 3, nullptr, false), E_POINTER},
        {"axis Z style", device_->SetAxisStyle(AxisId::Z, nullptr), E_POINTER},
        {"font of axis 9", device_->SetAxisFont(static_cast<AxisId>(9), AxisText::Label, &font), E_INVALIDARG},
        {"negative margin", device_->SetParameters(-1, 15, 50, 60), E_INVALIDARG},
        {"null rect", device_->GetImageRect(nullptr), E_POINTER},
        {"null image", device_->RenderToImage(nullptr), E_POINTER},
        {"markup", HRESULT(device_->QueryTextMarkup()), 0},
    };
    for (const Case& c : cases) EXPECT_EQ(c.got, c.want) << c.what;
    device_->Detach();
    EXPECT_EQ(device_->Draw(&buffer), E_UNEXPECTED) << "drawing needs a window";
    EXPECT_EQ(device_->RenderToImage(&buffer), S_OK) << "an image does not";
}

TEST_F(Device2DTest, RenderToImageKeepsTheWindowLayout) {
    SendGrid();
    const PixelRect before = ImageRect();
    Picture big(800, 600);
    ImageBuffer buffer = big.Buffer();
    ASSERT_EQ(device_->RenderToImage(&buffer), S_OK);
    const PixelRect after = ImageRect();
    EXPECT_EQ(after.right, before.right);
    // The colour bar lies at the right of the larger picture.
    const std::set<uint32_t> palette{kRed, kGreen, kBlue, kWhite};
    EXPECT_TRUE(palette.count(big.At(800 - 50 - 7, 300))) << std::hex << big.At(800 - 50 - 7, 300);
    EXPECT_TRUE(palette.count(big.At(before.right + 50, 300))) << "the image reaches past the window's width";
}

// A full flat view: smooth image with a missing value and grid lines, axes
// with \SUP texts, labels with UTF-8 symbols, the colour bar.
TEST_F(Device2DTest, FlatViewMatchesTheStoredPicture) {
    values_.assign(30 * 20, 0.0);
    for (int ix = 0; ix < 30; ++ix)
        for (int iy = 0; iy < 20; ++iy) values_[size_t(ix * 20 + iy)] = std::sin(ix * 0.3) * std::cos(iy * 0.25) * 1e-3;
    values_[size_t(5 * 20 + 5)] = kNaN;
    std::vector<uint32_t> ramp(64);
    for (uint32_t i = 0; i < 64; ++i) ramp[i] = (i * 4) | ((255 - i * 4) << 16) | ((i * 2) << 8);
    engine_->SetPalette(64, ramp.data());
    const GridExtent extent{0.0, 29.0, -1.0, 1.0, -1e-3, 1e-3};
    device_->SetGrid(values_.data(), 30, 20, &extent, true);
    AxisStyle style = PlainStyle(0x00E0E0E0);
    style.majorGrid = 1;
    style.minorTicks = 4;
    device_->SetAxisStyle(AxisId::X, &style);
    device_->SetAxisStyle(AxisId::Y, &style);
    const double xt[] = {0, 10, 20}, yt[] = {-1, 0, 1}, zt[] = {-1e-3, 0, 1e-3};
    const char* xs[] = {"0", "10", "20"};
    const char* ys[] = {"-1.0", "0.0", "1.0"};
    const char* zs[] = {"-1.000x10\\SUP-3", "0", "1.000x10\\SUP-3"};
    device_->SetAxisTicks(AxisId::X, 3, xt, xs);
    device_->SetAxisTicks(AxisId::Y, 3, yt, ys);
    device_->SetAxisTicks(AxisId::Palette, 3, zt, zs);
    device_->SetAxisLabel(AxisId::X, "Time [\xC2\xB5s]");
    device_->SetAxisLabel(AxisId::Y, "Angle [\xC2\xB0]");
    device_->SetAxisLabel(AxisId::Palette, "Level");
    device_->SetParameters(70, 15, 90, 60);
    device_->SetShading(ShadingMode::Smooth);

    ExpectMatchesReference("flat_view_reference.png", Render(480, 320), 10);
}

// The section of the same kind of grid: drop lines with star symbols in the
// curve colour over the Z axis, and a gap where a value is missing.
TEST_F(Device2DTest, SectionMatchesTheStoredPicture) {
    values_.assign(25 * 16, 0.0);
    for (int ix = 0; ix < 25; ++ix)
        for (int iy = 0; iy < 16; ++iy) values_[size_t(ix * 16 + iy)] = std::sin(ix * 0.4) + iy * 0.01;
    values_[size_t(12 * 16 + 8)] = kNaN;
    const GridExtent extent{-12.0, 12.0, 0.0, 15.0, -1.0, 1.2};
    device_->SetGrid(values_.data(), 25, 16, &extent, true);
    device_->SetAxisLabel(AxisId::X, "Offset");
    device_->SetAxisLabel(AxisId::Y, "Row");
    device_->SetAxisLabel(AxisId::Palette, "Amplitude");
    const SectionSettings section{2, 3, int32_t(PointStyle::Star), 0x0000C0FF, 50.0};
    device_->SetSection(&section);
    ExpectMatchesReference("section_reference.png", Render(480, 320), 10);
}

}  // namespace
}  // namespace vexplot
