#include "opengl/flat/Device2D.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "opengl/gl/EngineContext.h"
#include "opengl/flat/FlatRenderer.h"
#include "opengl/text/PixelOverlayPen.h"
#include "opengl/text/TextBoxPainter.h"

namespace vexplot {

namespace {

constexpr int32_t kMaxImageSide = 16384;
constexpr float kCurveWidth = 1.5f;
constexpr float kSymbolRadius = 4.0f;
constexpr float kDotSize = 3.0f;  // a point plotted without a symbol
constexpr int32_t kAutoTickCount = 5;
constexpr int32_t kContourLevels = 10;

bool ValidBuffer(const ImageBuffer& b) {
    return b.pixels && b.width > 0 && b.height > 0 && b.stride >= b.width && b.width <= kMaxImageSide &&
           b.height <= kMaxImageSide;
}

// min <= max in each direction, whatever the scales' direction.
DataRect Normalised(double x0, double x1, double y0, double y1) {
    return DataRect{std::min(x0, x1), std::max(x0, x1), std::min(y0, y1), std::max(y0, y1)};
}

// Continuous grid index along one direction for the pixel coordinate p:
// index = a * p + b. The data value at p runs linearly over the visible
// range across the image (mirrored or not), and the grid's nodes lie
// evenly from the first to the last scale value.
std::pair<double, double> IndexMapping(double dataAtStart, double dataPerPixel, double pixelStart, double first,
                                       double last, int32_t nodes) {
    const double perData = last != first ? double(nodes - 1) / (last - first) : 0.0;
    const double a = dataPerPixel * perData;
    const double b = (dataAtStart - dataPerPixel * pixelStart - first) * perData;
    return {a, b};
}

// Converts the grid (value (ix, iy) at ix * yCount + iy) to floats in rows
// of X (value (ix, iy) at iy * xCount + ix), the texture's order. Blocks of
// X keep both the reads and the writes within a few cache lines.
void ToRowsOfX(const double* values, int32_t xCount, int32_t yCount, float* out) {
    constexpr int32_t kBlock = 32;
    for (int32_t x0 = 0; x0 < xCount; x0 += kBlock) {
        const int32_t x1 = std::min(x0 + kBlock, xCount);
        for (int32_t iy = 0; iy < yCount; ++iy) {
            float* row = out + size_t(iy) * size_t(xCount);
            for (int32_t ix = x0; ix < x1; ++ix)
                row[ix] = static_cast<float>(values[size_t(ix) * size_t(yCount) + size_t(iy)]);
        }
    }
}

void CopyRows(uint32_t* to, int32_t toStride, const uint32_t* from, int32_t fromStride, int32_t width,
              int32_t height) {
    for (int32_t y = 0; y < height; ++y)
        std::memcpy(to + size_t(y) * size_t(toStride), from + size_t(y) * size_t(fromStride), size_t(width) * 4);
}

}  // namespace

Device2D::Device2D(EngineContext& engine) : engine_(&engine) {
    if (!engine.MakeCurrent()) throw std::runtime_error("the 2-D device has no current GL context");
    renderer_ = std::make_unique<FlatRenderer>();
    layout_.SetParameters(60, 15, 50, 60);
    axes_[size_t(AxisId::Y)].labelFont.escapement = 900;
    axes_[size_t(AxisId::Palette)].labelFont.escapement = 900;
}

Device2D::~Device2D() { Shutdown(); }

void Device2D::Shutdown() {
    if (renderer_ && engine_ && engine_->MakeCurrent()) {
        renderer_.reset();
        grid_.reset();
    }
    renderer_.reset();
    grid_.reset();
    engine_ = nullptr;
}

// --- window binding -------------------------------------------------------

HRESULT Device2D::Attach(WindowHandle window) {
    if (window == 0) return E_INVALIDARG;
    window_ = window;
    return S_OK;
}

HRESULT Device2D::Detach() {
    window_ = 0;
    return S_OK;
}

HRESULT Device2D::Resize(int32_t width, int32_t height) {
    if (width < 0 || height < 0) return E_INVALIDARG;
    // No new revision: a frame is rendered at its buffer's size, which its key holds.
    layout_.SetClientSize(width, height);
    return S_OK;
}

HRESULT Device2D::Draw(const ImageBuffer* windowPixels) {
    if (!windowPixels) return E_POINTER;
    if (window_ == 0) return E_UNEXPECTED;
    if (!ValidBuffer(*windowPixels)) return E_INVALIDARG;
    // The window's buffer is its current size, whatever Resize said last;
    // the mapping queries answer in its logical pixels.
    const double ratio = PixelRatio(*windowPixels);
    layout_.SetClientSize(int32_t(std::lround(windowPixels->width / ratio)),
                          int32_t(std::lround(windowPixels->height / ratio)));
    return Render(*windowPixels, FrameFor(*windowPixels));
}

HRESULT Device2D::RenderToImage(const ImageBuffer* image) {
    if (!image) return E_POINTER;
    if (!ValidBuffer(*image)) return E_INVALIDARG;
    return Render(*image, FrameFor(*image));
}

FlatLayout Device2D::FrameFor(const ImageBuffer& target) const {
    FlatLayout frame = layout_;
    frame.SetClientSize(target.width, target.height);
    frame.SetPixelRatio(PixelRatio(target));
    return frame;
}

// --- appearance -------------------------------------------------------------

FlatAxis* Device2D::AxisFor(AxisId axis) {
    const auto index = static_cast<int32_t>(axis);
    if (index < 0 || index > 3) return nullptr;
    return &axes_[size_t(index)];
}

HRESULT Device2D::SetAxisStyle(AxisId axis, const AxisStyle* style) {
    if (!style) return E_POINTER;
    FlatAxis* a = AxisFor(axis);
    if (!a) return E_INVALIDARG;
    a->style = *style;
    a->style.minorTicks = std::clamp(style->minorTicks, 0, 100);
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetAxisTicks(AxisId axis, uint32_t count, const double* values, const char* const* texts) {
    FlatAxis* a = AxisFor(axis);
    if (!a) return E_INVALIDARG;
    if (count > 0 && !values) return E_POINTER;
    a->ticks.assign(values, values + count);
    a->texts.assign(count, std::string());
    if (texts)
        for (uint32_t i = 0; i < count; ++i)
            if (texts[i]) a->texts[i] = texts[i];
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetAxisLabel(AxisId axis, const char* text) {
    FlatAxis* a = AxisFor(axis);
    if (!a) return E_INVALIDARG;
    a->label = text ? text : "";
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) {
    if (!font) return E_POINTER;
    FlatAxis* a = AxisFor(axis);
    if (!a || (text != AxisText::Label && text != AxisText::Numbers)) return E_INVALIDARG;
    FontDescription copy = *font;
    copy.face[sizeof(copy.face) - 1] = '\0';
    (text == AxisText::Label ? a->labelFont : a->numberFont) = copy;
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetImageOrientation(int32_t orientation) {
    if (orientation < 0 || orientation > 3) return E_INVALIDARG;
    layout_.SetOrientation(orientation);
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetColorBarVisible(bool visible) {
    layout_.SetColorBarVisible(visible);
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetVisibleRange(const DataRect* range) {
    if (!range) {
        layout_.SetVisibleRange(std::nullopt);
        ++revision_;
        return S_OK;
    }
    for (double v : {range->xMin, range->xMax, range->yMin, range->yMax})
        if (!std::isfinite(v)) return E_INVALIDARG;
    layout_.SetVisibleRange(Normalised(range->xMin, range->xMax, range->yMin, range->yMax));
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetBackgroundColor(uint32_t color) {
    background_ = color & 0x00FFFFFF;
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetShading(ShadingMode shading) {
    if (shading != ShadingMode::Flat && shading != ShadingMode::Smooth) return E_INVALIDARG;
    shading_ = shading;
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetImageVisible(bool visible) {
    imageVisible_ = visible;
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetSection(const SectionSettings* section) {
    if (!section) return E_POINTER;
    if (section->mode < 0 || section->mode > 2 || section->plotStyle < 0 || section->plotStyle > 3 ||
        section->pointStyle < 0 || section->pointStyle > 6 || !std::isfinite(section->position))
        return E_INVALIDARG;
    section_ = *section;
    ++revision_;
    return S_OK;
}

HRESULT Device2D::SetParameters(int32_t leftMargin, int32_t colorBarWidth, int32_t paletteAxisWidth,
                                int32_t bottomMargin) {
    if (leftMargin < 0 || colorBarWidth < 0 || paletteAxisWidth < 0 || bottomMargin < 0) return E_INVALIDARG;
    layout_.SetParameters(leftMargin, colorBarWidth, paletteAxisWidth, bottomMargin);
    ++revision_;
    return S_OK;
}

// --- data -------------------------------------------------------------------

HRESULT Device2D::SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                          bool dataFlag) {
    if (!values || !extent) return E_POINTER;
    if (xCount <= 0 || yCount <= 0) return E_INVALIDARG;
    if (!renderer_ || !engine_) return E_UNEXPECTED;
    if (!engine_->MakeCurrent()) return E_FAIL;
    try {
        StoreGrid(values, xCount, yCount);
    } catch (const std::bad_alloc&) {
        ResetData();
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        ResetData();
        return E_FAIL;
    }
    xCount_ = xCount;
    yCount_ = yCount;
    extent_ = *extent;
    // The palette spans the extent's z range; one that is missing or not
    // finite is taken from the values themselves.
    if (!std::isfinite(extent_.zMin) || !std::isfinite(extent_.zMax) || extent_.zMin > extent_.zMax) {
        float lo = std::numeric_limits<float>::infinity(), hi = -lo;
        if (values_) {
            for (float v : Values())
                if (std::isfinite(v)) lo = std::min(lo, v), hi = std::max(hi, v);
        } else {
            lo = grid_->FiniteLow(), hi = grid_->FiniteHigh();
        }
        extent_.zMin = lo <= hi ? lo : 0.0;
        extent_.zMax = lo <= hi ? hi : 1.0;
    }
    dataFlag_ = dataFlag;
    layout_.SetDataRange(Normalised(extent_.xFirst, extent_.xLast, extent_.yFirst, extent_.yLast));
    ++revision_;
    return S_OK;
}

void Device2D::StoreGrid(const double* values, int32_t xCount, int32_t yCount) {
    // The old grid goes first, so that a new one is not held beside it.
    DropGrid();
    if (GridTexture::Fits(xCount, yCount)) {
        grid_ = engine_->ShareGrid(values, xCount, yCount);
    } else {
        // Every element is written below: no zeroing pass over a large grid.
        const size_t count = size_t(xCount) * size_t(yCount);
        values_ = std::make_unique_for_overwrite<float[]>(count);
        valueCount_ = count;
        ToRowsOfX(values, xCount, yCount, values_.get());
        grid_ = GridTexture::Sampled(Values(), xCount, yCount);
    }
    renderer_->SetGrid(grid_);
}

void Device2D::DropGrid() {
    if (renderer_) renderer_->ClearGrid();
    grid_.reset();
    values_.reset();
    valueCount_ = 0;
}

// The data range stays until the next SetGrid: the graph object re-sends
// its grid right after, and the axes and mapping queries keep their range
// in between rather than jumping to a placeholder.
HRESULT Device2D::ResetData() {
    // GL objects go only with the context current; without one the
    // references stay until the device shuts down.
    if (engine_ && engine_->MakeCurrent()) DropGrid();
    values_.reset();
    valueCount_ = 0;
    xCount_ = yCount_ = 0;
    ++revision_;
    return S_OK;
}

// --- queries ----------------------------------------------------------------

HRESULT Device2D::GetDataRange(DataRect* range) {
    if (!range) return E_POINTER;
    *range = layout_.DataRange();
    return S_OK;
}

HRESULT Device2D::GetVisibleRange(DataRect* range) {
    if (!range) return E_POINTER;
    *range = layout_.VisibleRange();
    return S_OK;
}

int32_t Device2D::QueryTextMarkup() { return 0; }

// While the section is shown the mapping is the section plot's: horizontal
// the running axis (Y for the Y-Z plane, X for the X-Z plane), vertical the
// value, as RenderSection draws them.
Device2D::SectionFrame Device2D::SectionMapping() const {
    FlatLayout plotLayout = layout_;
    plotLayout.SetColorBarVisible(false);
    const DataRect v = layout_.VisibleRange();
    const bool alongY = section_.mode == 1;
    SectionFrame f{plotLayout.ImageRect(), alongY ? v.yMin : v.xMin, alongY ? v.yMax : v.xMax, extent_.zMin,
                   extent_.zMax};
    if (f.zHi <= f.zLo) f.zLo -= 0.5, f.zHi += 0.5;
    return f;
}

HRESULT Device2D::DataToClient(double x, double y, int32_t* px, int32_t* py) {
    if (!px || !py) return E_POINTER;
    if (!InSection()) return layout_.DataToClient(x, y, *px, *py) ? S_OK : S_FALSE;
    const SectionFrame f = SectionMapping();
    const double h = f.plot.left + (x - f.lo) / (f.hi - f.lo) * (f.plot.right - f.plot.left);
    const double v = f.plot.bottom - (y - f.zLo) / (f.zHi - f.zLo) * (f.plot.bottom - f.plot.top);
    if (!std::isfinite(h) || !std::isfinite(v)) return E_INVALIDARG;
    *px = static_cast<int32_t>(std::floor(std::clamp(h, -1e9, 1e9)));
    *py = static_cast<int32_t>(std::floor(std::clamp(v, -1e9, 1e9)));
    const bool inside = *px >= f.plot.left && *px < f.plot.right && *py >= f.plot.top && *py < f.plot.bottom;
    return inside ? S_OK : S_FALSE;
}

HRESULT Device2D::ClientToData(int32_t px, int32_t py, double* x, double* y) {
    if (!x || !y) return E_POINTER;
    if (!InSection()) return layout_.ClientToData(px, py, *x, *y) ? S_OK : S_FALSE;
    const SectionFrame f = SectionMapping();
    if (f.plot.right <= f.plot.left || f.plot.bottom <= f.plot.top) return S_FALSE;
    *x = f.lo + (px + 0.5 - f.plot.left) / (f.plot.right - f.plot.left) * (f.hi - f.lo);
    *y = f.zLo + (f.plot.bottom - (py + 0.5)) / (f.plot.bottom - f.plot.top) * (f.zHi - f.zLo);
    const bool inside = px >= f.plot.left && px < f.plot.right && py >= f.plot.top && py < f.plot.bottom;
    return inside ? S_OK : S_FALSE;
}

HRESULT Device2D::GetImageRect(PixelRect* rect) {
    if (!rect) return E_POINTER;
    *rect = InSection() ? SectionMapping().plot : layout_.ImageRect();
    return S_OK;
}

// --- rendering --------------------------------------------------------------

FlatAxis Device2D::WithTicks(const FlatAxis& axis, double lo, double hi) const {
    FlatAxis result = axis;
    if (result.ticks.empty()) FlatScene::AutoTicks(lo, hi, kAutoTickCount, result.ticks, result.texts);
    return result;
}

void Device2D::PaintOverlay(const ImageBuffer& target) {
    if (overlay_.Empty()) return;
    PixelOverlayPen pen(target, PixelRatio(target), engine_->Text());
    overlay_.Paint(pen, engine_->Text());
}

HRESULT Device2D::Render(const ImageBuffer& target, const FlatLayout& frame) {
    if (!renderer_ || !engine_) return E_UNEXPECTED;
    if (!engine_->MakeCurrent()) return E_FAIL;
    const FrameKey key{revision_, engine_->Palette().Version(), target.width, target.height,
                       int32_t(std::lround(frame.PixelRatio() * 100))};
    if (key == cachedKey_ && cachedFrame_.size() == size_t(target.width) * size_t(target.height)) {
        CopyRows(target.pixels, target.stride, cachedFrame_.data(), target.width, target.width, target.height);
        PaintOverlay(target);
        return S_OK;
    }
    try {
        renderer_->Begin(target.width, target.height, background_);
        FlatScene scene(engine_->Text(), PixelScale(frame.PixelRatio()));
        if (HasGrid() && section_.mode != 0) RenderSection(frame, scene);
        else RenderFlat(frame, scene);
        renderer_->Finish(target);
        for (const FlatText& t : scene.texts)
            engine_->Text().Draw(target, t.text, t.x, t.y, t.anchor, t.font, t.color);
        cachedFrame_.resize(size_t(target.width) * size_t(target.height));
        CopyRows(cachedFrame_.data(), target.width, target.pixels, target.stride, target.width, target.height);
        cachedKey_ = key;
        PaintOverlay(target);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return E_FAIL;
    }
    return S_OK;
}

void Device2D::DrawImage(const FlatLayout& frame) {
    const PixelRect image = frame.ImageRect();
    const DataRect v = frame.VisibleRange();
    const double w = std::max(image.right - image.left, 1), h = std::max(image.bottom - image.top, 1);
    const double spanX = v.xMax > v.xMin ? v.xMax - v.xMin : 1.0, spanY = v.yMax > v.yMin ? v.yMax - v.yMin : 1.0;
    // Data value per pixel across the image and the value at its first pixel edge.
    const double startX = frame.MirrorX() ? v.xMax : v.xMin, perX = (frame.MirrorX() ? -spanX : spanX) / w;
    const double startY = frame.MirrorY() ? v.yMin : v.yMax, perY = (frame.MirrorY() ? spanY : -spanY) / h;
    const auto [ax, bx] = IndexMapping(startX, perX, image.left, extent_.xFirst, extent_.xLast, renderer_->GridX());
    const auto [ay, by] = IndexMapping(startY, perY, image.top, extent_.yFirst, extent_.yLast, renderer_->GridY());

    FlatRenderer::ImageParams params{};
    params.rect = image;
    params.mapping = {ax, bx, ay, by};
    params.zMin = float(extent_.zMin);
    params.zMax = float(extent_.zMax);
    params.smooth = shading_ == ShadingMode::Smooth;
    params.contours = !imageVisible_;
    const FlatAxis& z = axes_[size_t(AxisId::Palette)];
    if (z.ticks.size() >= 2 && z.ticks[1] > z.ticks[0]) {
        params.levelFirst = float(z.ticks[0]);
        params.levelStep = float(z.ticks[1] - z.ticks[0]);
    } else {
        params.levelFirst = float(extent_.zMin);
        params.levelStep = float((extent_.zMax - extent_.zMin) / kContourLevels);
    }
    const auto& colors = engine_->PaletteColors();
    renderer_->DrawImage(params, engine_->Palette(), int32_t(colors.size()));
}

void Device2D::RenderFlat(const FlatLayout& frame, FlatScene& scene, bool drawLines) {
    const PixelRect image = frame.ImageRect();
    const DataRect v = frame.VisibleRange();
    const AxisSpan spanX{v.xMin, v.xMax, double(frame.MirrorX() ? image.right : image.left),
                         double(frame.MirrorX() ? image.left : image.right)};
    const AxisSpan spanY{v.yMin, v.yMax, double(frame.MirrorY() ? image.top : image.bottom),
                         double(frame.MirrorY() ? image.bottom : image.top)};
    if (HasGrid()) DrawImage(frame);
    const FlatAxis x = WithTicks(axes_[size_t(AxisId::X)], v.xMin, v.xMax);
    const FlatAxis y = WithTicks(axes_[size_t(AxisId::Y)], v.yMin, v.yMax);
    scene.AddGrid(x, FlatScene::Side::Bottom, image, spanX);
    scene.AddGrid(y, FlatScene::Side::Left, image, spanY);
    scene.AddAxis(x, FlatScene::Side::Bottom, image, spanX);
    scene.AddAxis(y, FlatScene::Side::Left, image, spanY);
    if (HasGrid() && frame.ColorBarVisible()) {
        const PixelRect bar = frame.ColorBarRect();
        const auto& colors = engine_->PaletteColors();
        renderer_->DrawColorBar(bar, engine_->Palette(), int32_t(colors.size()));
        const AxisSpan spanZ{extent_.zMin, extent_.zMax, double(bar.bottom), double(bar.top)};
        scene.AddAxis(WithTicks(axes_[size_t(AxisId::Palette)], extent_.zMin, extent_.zMax), FlatScene::Side::Right,
                      bar, spanZ);
    }
    if (drawLines) renderer_->DrawLines(scene.lines);
}

SectionCurve Device2D::Section() const {
    if (values_) return SectionCurve::Extract(Values(), xCount_, yCount_, extent_, section_.mode, section_.position);
    // The shared texture holds every node: read the one line the cut takes.
    const bool alongY = section_.mode == 1;
    const int32_t cut = SectionCurve::CutIndex(alongY ? xCount_ : yCount_, section_.position);
    return SectionCurve::FromLine(grid_->ReadLine(alongY, cut), extent_, section_.mode, cut);
}

namespace {

// The part of `line` inside `rect` (Liang-Barsky); false when none is. A
// point (a dot) is kept when it lies inside.
bool ClipLine(FlatLine& line, const PixelRect& rect) {
    const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    double t0 = 0, t1 = 1;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {line.x0 - rect.left, rect.right - line.x0, line.y0 - rect.top, rect.bottom - line.y0};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0) t0 = std::max(t0, t);
        else t1 = std::min(t1, t);
    }
    if (t0 > t1) return false;
    const FlatLine whole = line;
    line.x0 = float(whole.x0 + t0 * dx), line.y0 = float(whole.y0 + t0 * dy);
    line.x1 = float(whole.x0 + t1 * dx), line.y1 = float(whole.y0 + t1 * dy);
    return true;
}

}  // namespace

void Device2D::RenderSection(const FlatLayout& frame, FlatScene& scene, bool drawLines) {
    FlatLayout plotLayout = frame;
    plotLayout.SetColorBarVisible(false);
    const PixelRect plot = plotLayout.ImageRect();
    const SectionCurve curve = Section();
    const DataRect v = frame.VisibleRange();
    const bool alongY = section_.mode == 1;
    const double lo = alongY ? v.yMin : v.xMin, hi = alongY ? v.yMax : v.xMax;
    double zLo = extent_.zMin, zHi = extent_.zMax;
    if (zHi <= zLo) zLo -= 0.5, zHi += 0.5;
    const AxisSpan spanH{lo, hi, double(plot.left), double(plot.right)};
    const AxisSpan spanV{zLo, zHi, double(plot.bottom), double(plot.top)};
    const FlatAxis h = WithTicks(axes_[size_t(alongY ? AxisId::Y : AxisId::X)], lo, hi);
    FlatAxis z = WithTicks(axes_[size_t(AxisId::Palette)], zLo, zHi);
    z.labelFont.escapement = 900;
    scene.AddGrid(h, FlatScene::Side::Bottom, plot, spanH);
    scene.AddGrid(z, FlatScene::Side::Left, plot, spanV);
    scene.AddAxis(h, FlatScene::Side::Bottom, plot, spanH);
    scene.AddAxis(z, FlatScene::Side::Left, plot, spanV);

    // Where the plane cuts, in the corner of the plot.
    const FlatAxis& cut = axes_[size_t(alongY ? AxisId::X : AxisId::Y)];
    const double cutValue = alongY ? extent_.xFirst + (extent_.xLast - extent_.xFirst) * curve.CutIndex() /
                                                          std::max(xCount_ - 1, 1)
                                   : extent_.yFirst + (extent_.yLast - extent_.yFirst) * curve.CutIndex() /
                                                          std::max(yCount_ - 1, 1);
    char caption[96];
    std::snprintf(caption, sizeof(caption), "%s = %g", cut.label.empty() ? (alongY ? "X" : "Y") : cut.label.c_str(),
                  cutValue);
    const PixelScale scale(frame.PixelRatio());
    scene.texts.push_back({caption, plot.right - scale.Pixels(4), plot.top + scale.Pixels(4),
                           TextPainter::Anchor::TopRight, scale.Font(z.numberFont), z.style.numberColor});
    if (drawLines) renderer_->DrawLines(scene.lines);

    std::vector<FlatLine> strokes;
    const float curveWidth = scale(kCurveWidth), symbolRadius = scale(kSymbolRadius), dot = scale(kDotSize);
    const uint32_t color = section_.curveColor & 0x00FFFFFF;
    const auto style = static_cast<PointStyle>(section_.pointStyle);
    const auto& values = curve.Values();
    float lastX = 0, lastY = 0;
    bool hasLast = false;
    for (size_t i = 0; i < values.size(); ++i) {
        if (!std::isfinite(values[i])) {
            hasLast = false;  // a missing value breaks the curve
            continue;
        }
        const float px = float(spanH.ToPixel(curve.At(i))), py = float(spanV.ToPixel(values[i]));
        if (section_.plotStyle == 2 && hasLast) strokes.push_back({lastX, lastY, px, py, curveWidth, color});
        if (section_.plotStyle == 3) strokes.push_back({px, py, px, float(plot.bottom), curveWidth, color});
        if (section_.plotStyle == 1 && style == PointStyle::None) strokes.push_back({px, py, px, py, dot, color});
        if (section_.plotStyle != 0)
            AppendSymbol(strokes, style, px, py, symbolRadius, color, scale(kSymbolStrokeWidth));
        lastX = px, lastY = py, hasLast = true;
    }
    if (drawLines) {
        renderer_->DrawLines(strokes, &plot);
        return;
    }
    for (FlatLine& stroke : strokes)
        if (ClipLine(stroke, plot)) scene.lines.push_back(stroke);
}

}  // namespace vexplot

namespace vexplot {

// --- annotation overlay ---------------------------------------------------

HRESULT Device2D::ClearOverlay() {
    overlay_.Clear();
    return S_OK;
}

HRESULT Device2D::AddOverlayLines(uint32_t count, const double* xy, uint32_t color, OverlayStroke stroke, float width,
                                  bool closed) {
    return overlay_.AddLines(count, xy, color, stroke, width, closed);
}

HRESULT Device2D::AddOverlayBox(const OverlayBox* box) { return overlay_.AddBox(box); }

HRESULT Device2D::AddOverlaySymbol(double x, double y, PointStyle symbol, float size, uint32_t color) {
    return overlay_.AddSymbol(x, y, symbol, size, color);
}

HRESULT Device2D::AddOverlayTextBox(double x, double y, const char* text, const FontDescription* font,
                                    const OverlayTextBox* style) {
    return overlay_.AddTextBox(x, y, text, font, style);
}

HRESULT Device2D::MeasureText(const char* text, const FontDescription* font, int32_t* width, int32_t* height) {
    if (!text || !width || !height) return E_POINTER;
    if (!engine_) return E_UNEXPECTED;
    FontDescription f = font ? *font : TextBoxPainter::DefaultFont();
    f.face[sizeof(f.face) - 1] = '\0';
    const TextPainter::Extent extent = TextBoxPainter::Measure(engine_->Text(), text, f);
    *width = extent.width;
    *height = extent.height;
    return S_OK;
}

}  // namespace vexplot
