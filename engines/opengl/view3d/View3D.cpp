#include "opengl/view3d/View3D.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <tuple>

#include "opengl/gl/EngineContext.h"
#include "opengl/gl/LineRenderer.h"
#include "opengl/gl/RenderTarget.h"
#include "opengl/view3d/SurfaceRenderer.h"
#include "opengl/text/PixelOverlayPen.h"
#include "opengl/text/TextBoxPainter.h"
#include "opengl/text/TextPainter.h"

namespace vexplot {

namespace {

bool IsAxis3D(AxisId axis) { return axis == AxisId::X || axis == AxisId::Y || axis == AxisId::Z; }

bool ValidImage(const ImageBuffer* image) {
    return image && image->pixels && image->width > 0 && image->height > 0 && image->stride >= image->width;
}

FontDescription Terminated(const FontDescription& font) {
    FontDescription copy = font;
    copy.face[sizeof(copy.face) - 1] = '\0';
    return copy;
}

FontDescription DefaultOverlayFont() {
    FontDescription font{};
    std::strncpy(font.face, "Arial", sizeof(font.face) - 1);
    font.height = 12;
    font.weight = 400;
    return font;
}

}  // namespace

View3D::View3D(EngineContext& engine) : engine_(engine) {
    layers_[0] = std::make_unique<Layer>();
    camera_.Reset(Box().Radius());
}

View3D::~View3D() { Shutdown(); }

void View3D::Shutdown() {
    if (shutDown_) return;
    shutDown_ = true;
    // GL objects need their context current when they go.
    if (!engine_.MakeCurrent()) return;
    layers_.clear();
    target_.reset();
    pickTarget_.reset();
    surfaces_.reset();
    lines_.reset();
    reduce_.reset();
}

bool View3D::Ready() {
    if (shutDown_ || !engine_.MakeCurrent()) return false;
    if (!surfaces_) {
        try {
            surfaces_ = std::make_unique<SurfaceRenderer>();
            lines_ = std::make_unique<LineRenderer>();
            target_ = std::make_unique<RenderTarget>();
            pickTarget_ = std::make_unique<RenderTarget>();
            reduce_ = std::make_unique<GlProgram>(HeightField::MakeReduceProgram());
        } catch (const std::exception&) {
            surfaces_.reset();
            return false;
        }
    }
    return true;
}

Layer& View3D::Current() {
    std::unique_ptr<Layer>& layer = layers_[current_];
    if (!layer) layer = std::make_unique<Layer>();
    return *layer;
}

// ---------------------------------------------------------------------------
// window binding and rendering
// ---------------------------------------------------------------------------

HRESULT View3D::Attach(WindowHandle window) {
    if (window == 0) return E_INVALIDARG;
    if (!Ready()) return E_FAIL;
    window_ = window;
    Invalidate();
    return S_OK;
}

HRESULT View3D::Detach() {
    window_ = 0;
    return S_OK;
}

HRESULT View3D::Refresh(int32_t flags) {
    if (flags != kRefreshCheck && flags != kRefreshRebuild) return E_INVALIDARG;
    if (!Ready()) return E_FAIL;
    if (glGetError() == GL_OUT_OF_MEMORY) return E_OUTOFMEMORY;
    Invalidate();
    return S_OK;
}

HRESULT View3D::Resize(int32_t width, int32_t height) {
    if (width < 0 || height < 0) return E_INVALIDARG;
    width_ = width;
    height_ = height;
    Invalidate();
    return S_OK;
}

HRESULT View3D::Update(int32_t detail) {
    if (detail != kUpdateFull && detail != kUpdateMoving) return E_INVALIDARG;
    if (shutDown_) return E_UNEXPECTED;
    // Rendering waits for the next Draw: a host often changes several
    // things in a row (data, style, camera), each asking for an update, and
    // only the picture that is finally shown is worth rendering.
    pendingDetail_ = detail;
    cacheValid_ = false;
    return S_OK;
}

HRESULT View3D::RenderCache(int32_t width, int32_t height, int32_t pixelRatio) {
    try {
        cache_.assign(static_cast<size_t>(width) * static_cast<size_t>(height), 0);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    const ImageBuffer buffer{cache_.data(), width, height, width, pixelRatio};
    cacheDepth_.clear();
    const HRESULT hr = Render(buffer, pendingDetail_, nullptr, &cacheDepth_);
    cachePalette_ = engine_.Palette().Version();
    cacheWidth_ = width;
    cacheHeight_ = height;
    cacheRatio_ = pixelRatio;
    cacheValid_ = SUCCEEDED(hr);
    return hr;
}

HRESULT View3D::SetEveryCell(bool everyCell) {
    everyCell_ = everyCell;
    cacheValid_ = false;
    return S_OK;
}

HRESULT View3D::SetDetailBudget(uint32_t cells) {
    detailBudget_ = cells;
    return S_OK;
}

HRESULT View3D::Draw(const ImageBuffer* windowPixels) {
    if (!ValidImage(windowPixels)) return E_INVALIDARG;
    if (shutDown_) return E_UNEXPECTED;
    // A palette set since the last render makes the cache stale as well.
    const bool paletteChanged = engine_.MakeCurrent() && engine_.Palette().Version() != cachePalette_;
    // The ratio is compared as the factor it stands for: 0 and 100 are the same picture.
    const int32_t ratio = static_cast<int32_t>(std::lround(PixelRatio(*windowPixels) * 100));
    if (!cacheValid_ || paletteChanged || cacheWidth_ != windowPixels->width || cacheHeight_ != windowPixels->height ||
        cacheRatio_ != ratio) {
        if (const HRESULT hr = RenderCache(windowPixels->width, windowPixels->height, ratio); FAILED(hr)) return hr;
    }
    for (int32_t y = 0; y < cacheHeight_; ++y)
        std::memcpy(windowPixels->pixels + static_cast<size_t>(y) * static_cast<size_t>(windowPixels->stride),
                    cache_.data() + static_cast<size_t>(y) * static_cast<size_t>(cacheWidth_),
                    static_cast<size_t>(cacheWidth_) * sizeof(uint32_t));
    PaintOverlay(*windowPixels, cacheDepth_);
    return S_OK;
}

HRESULT View3D::RenderToImage(const ImageBuffer* image) {
    if (!ValidImage(image)) return E_INVALIDARG;
    if (shutDown_) return E_UNEXPECTED;
    std::vector<float> depth;
    const HRESULT hr = Render(*image, kUpdateFull, nullptr, &depth);
    if (SUCCEEDED(hr)) PaintOverlay(*image, depth);
    return hr;
}

Overlay3D::Project View3D::OverlayProjection(int32_t fullWidth, int32_t fullHeight, double left, double top) const {
    const SceneBox box = Box();
    const Projector projector = MakeProjector(fullWidth, fullHeight);
    return [box, projector, fullWidth, fullHeight, left, top](const Point3& p, double& x, double& y, double& z) {
        const Vec3 s = box.ToScene(p.x, p.y, p.z);
        const Vec4 clip = projector.viewProjection * Vec4{s.x, s.y, s.z, 1.0};
        if (!(clip.w > 1e-9)) return false;
        x = (clip.x / clip.w + 1.0) * 0.5 * fullWidth - left;
        y = (1.0 - clip.y / clip.w) * 0.5 * fullHeight - top;
        z = clip.z / clip.w * 0.5 + 0.5;
        return true;
    };
}

void View3D::PaintOverlay(const ImageBuffer& target, const std::vector<float>& depth, const Tile* tile) {
    if (overlay3D_.Empty() || !Ready()) return;
    // A tile's annotations are placed in the whole picture and shifted to
    // the tile's window, as its texts are.
    const Overlay3D::Project project =
        tile ? OverlayProjection(tile->fullWidth, tile->fullHeight, tile->left, tile->top)
             : OverlayProjection(target.width, target.height, 0, 0);
    PixelOverlayPen pen(target, PixelScale(target).Ratio(), engine_.Text(),
                        overlayDepthTest_ && !depth.empty() ? &depth : nullptr);
    overlay3D_.Paint(pen, project, engine_.Text());
}

HRESULT View3D::Render(const ImageBuffer& target, int32_t detail, const Tile* tile, std::vector<float>* depth) {
    if (!Ready()) return E_FAIL;
    try {
        const SceneBox box = Box();
        // A tile places texts with the whole picture's projector and draws
        // the GL part through a projection narrowed to the tile's window.
        const Projector projector = tile ? MakeProjector(tile->fullWidth, tile->fullHeight)
                                         : MakeProjector(target.width, target.height);
        Projector glProjector = projector;
        int32_t shiftX = 0, shiftY = 0;
        if (tile) {
            const double fw = tile->fullWidth, fh = tile->fullHeight, w = target.width, h = target.height;
            Matrix4 window = Matrix4::Identity();
            window.At(0, 0) = fw / w;
            window.At(0, 3) = (fw - 2.0 * tile->left) / w - 1.0;
            window.At(1, 1) = fh / h;
            window.At(1, 3) = 1.0 - (fh - 2.0 * tile->top) / h;
            glProjector = {window * projector.viewProjection, target.width, target.height};
            shiftX = -tile->left;
            shiftY = -tile->top;
        }
        const PixelScale scale(target);
        // Levels are reduced in framebuffers of their own: before the
        // scene's framebuffer is bound.
        std::vector<std::pair<const Layer*, HeightField::Level>> draws;
        if (dataVisible_) {
            // Counted in logical pixels: a HiDPI target draws the same cells, only sharper.
            const double ratio = scale.Ratio();
            const auto pixels = static_cast<uint64_t>(double(ProjectedPixels(box, projector)) / (ratio * ratio));
            for (auto& [id, layer] : layers_)
                if (layer && layer->Drawable()) draws.emplace_back(layer.get(), LevelFor(*layer, detail, pixels, box));
        }
        const bool multisample = detail == kUpdateFull && !engine_.SoftwareRenderer();
        target_->Ensure(target.width, target.height, multisample ? kRestSamples : 1);
        target_->Bind();
        glClearColor(static_cast<float>(background_ & 0xFF) / 255.0f,
                     static_cast<float>((background_ >> 8) & 0xFF) / 255.0f,
                     static_cast<float>((background_ >> 16) & 0xFF) / 255.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        glDisable(GL_BLEND);

        lines_->Clear();
        const std::vector<Axes3D::PlacedText> texts =
            axes_.Build(box, camera_.Position(), projector, engine_.Text(), *lines_, scale);
        // The scene first: its depth then hides the axes' lines behind a
        // wireframe, whose cells are opaque though only their lines show.
        DrawScene(box, glProjector, scale, draws);
        // Only the annotations need the depth, and only where the surface may
        // hide them: read it before the axes' lines are drawn into it.
        if (depth && !overlay3D_.Empty() && overlayDepthTest_ && !draws.empty()) target_->ReadDepth(*depth);
        lines_->Draw(glProjector.viewProjection, scale(lineWidth_));
        DrawOverlayLines(box, glProjector, scale);
        target_->ReadInto(target);

        for (const Axes3D::PlacedText& text : texts)
            engine_.Text().Draw(target, text.text, text.x + shiftX, text.y + shiftY, text.anchor, text.font,
                                text.color);
        DrawOverlayPixels(target, box, tile ? glProjector : projector, scale);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return E_FAIL;
    }
    return S_OK;
}

uint64_t View3D::ProjectedPixels(const SceneBox& box, const Projector& projector) {
    // The screen rectangle around the data box's corners, clipped to the
    // viewport: more cells than pixels inside it cannot be told apart.
    const Vec3 h = box.Half();
    double left = projector.width, right = 0, top = projector.height, bottom = 0;
    for (int corner = 0; corner < 8; ++corner) {
        double x = 0, y = 0;
        const Vec3 p{corner & 1 ? h.x : -h.x, corner & 2 ? h.y : -h.y, corner & 4 ? h.z : -h.z};
        if (!projector.Project(p, x, y)) return static_cast<uint64_t>(projector.width) * projector.height;
        left = std::min(left, x), right = std::max(right, x);
        top = std::min(top, y), bottom = std::max(bottom, y);
    }
    const double width = std::clamp(right, 0.0, double(projector.width)) - std::clamp(left, 0.0, double(projector.width));
    const double height =
        std::clamp(bottom, 0.0, double(projector.height)) - std::clamp(top, 0.0, double(projector.height));
    return static_cast<uint64_t>(std::max(width, 1.0) * std::max(height, 1.0));
}

uint64_t View3D::PixelsPerCell(GraphStyle style) {
    switch (style) {
    case GraphStyle::Surface: return 1;
    case GraphStyle::Lines: return 2;
    case GraphStyle::Wireframe:
    case GraphStyle::Points: return 4;
    case GraphStyle::Barchart: return 64;
    }
    return 1;
}

HeightField::Level View3D::LevelFor(Layer& layer, int32_t detail, uint64_t pixels, const SceneBox& box) {
    // Only the shown part of the grid counts when zoomed in.
    auto shownNodes = [](int32_t count, double first, double last, double shownMin, double shownMax) {
        const double extent = std::fabs(last - first);
        const double fraction = extent > 0 ? std::clamp((shownMax - shownMin) / extent, 0.0, 1.0) : 1.0;
        return std::max(2, static_cast<int32_t>(std::ceil(count * fraction)));
    };
    const GridExtent& e = layer.extent;
    const int32_t nx = shownNodes(layer.field.XCount(), e.xFirst, e.xLast, box.shown.xMin, box.shown.xMax);
    const int32_t ny = shownNodes(layer.field.YCount(), e.yFirst, e.yLast, box.shown.yMin, box.shown.yMax);
    int32_t factor = layer.lowResolution ? 2 : 1;
    if (detail == kUpdateFull && everyCell_) return factor > 1 ? layer.field.Reduced(factor, *reduce_) : layer.field.Full();
    // At rest: every cell while cells are at least a pixel on the screen,
    // beyond that the level that keeps about one cell per pixel (its cells
    // keep their blocks' extremes, so no peak is lost). Styles that need
    // room between their nodes to read (lines, symbols, bars) get
    // correspondingly fewer.
    const uint64_t pixelsPerCell = PixelsPerCell(layer.style);
    factor = std::max(factor, HeightField::FactorForBudget(nx, ny, std::max<uint64_t>(pixels / pixelsPerCell, 1)));
    if (detail == kUpdateMoving)
        factor = std::max(factor, HeightField::FactorForBudget(nx, ny, detailBudget_));
    return factor > 1 ? layer.field.Reduced(factor, *reduce_) : layer.field.Full();
}

uint32_t View3D::BatchPrimitives() const { return engine_.SoftwareRenderer() ? kSoftwareBatchPrimitives : 0; }

void View3D::DrawScene(const SceneBox& box, const Projector& projector, const PixelScale& scale,
                       const std::vector<std::pair<const Layer*, HeightField::Level>>& draws) {
    if (draws.empty()) return;
    const Vec3 eye = (camera_.Position() - camera_.Center()).Normalized();
    const SurfaceRenderer::Frame frame{projector.viewProjection,
                                       (eye + Vec3{0, 0, 0.8}).Normalized(),
                                       camera_.Position(),
                                       &engine_.Palette(),
                                       static_cast<int32_t>(engine_.PaletteColors().size()),
                                       scale(lineWidth_),
                                       static_cast<float>(scale.Ratio()),
                                       BatchPrimitives(),
                                       mesh_};
    // Clip planes cost the software rasteriser a clipping stage for every
    // triangle: only zoomed views need them.
    const bool clip = visibleRange_.has_value();
    if (clip)
        for (int i = 0; i < 4; ++i) glEnable(GL_CLIP_DISTANCE0 + static_cast<GLenum>(i));
    glEnable(GL_PROGRAM_POINT_SIZE);
    for (const auto& [layer, level] : draws) surfaces_->Draw(*layer, level, box, frame);
    if (clip)
        for (int i = 0; i < 4; ++i) glDisable(GL_CLIP_DISTANCE0 + static_cast<GLenum>(i));
}

void View3D::DrawOverlayLines(const SceneBox& box, const Projector& projector, const PixelScale& scale) {
    if (overlayLines_.empty()) return;
    lines_->Clear();
    for (const OverlayPolyline& line : overlayLines_) {
        const size_t n = line.points.size();
        const size_t segments = line.closed ? n : n - 1;
        for (size_t i = 0; i < segments; ++i) {
            const Point3& a = line.points[i];
            const Point3& b = line.points[(i + 1) % n];
            lines_->Add(box.ToScene(a.x, a.y, a.z), box.ToScene(b.x, b.y, b.z), line.color);
        }
    }
    glDisable(GL_DEPTH_TEST);
    lines_->Draw(projector.viewProjection, scale(lineWidth_));
    glEnable(GL_DEPTH_TEST);
}

void View3D::DrawOverlayPixels(const ImageBuffer& target, const SceneBox& box, const Projector& projector,
                               const PixelScale& scale) {
    for (const OverlayImage& image : overlayImages_) {
        double cx = 0, cy = 0;
        if (!projector.Project(box.ToScene(image.at.x, image.at.y, image.at.z), cx, cy)) continue;
        // Enlarged with the target like every other size, so that a marker
        // keeps its size next to the texts; nearest neighbour keeps the
        // transparent colour exact (blending would fringe it into the picture).
        const int32_t width = std::max(scale.Pixels(image.width), 1), height = std::max(scale.Pixels(image.height), 1);
        const int32_t left = static_cast<int32_t>(std::lround(cx)) - width / 2;
        const int32_t top = static_cast<int32_t>(std::lround(cy)) - height / 2;
        const uint32_t transparent = image.transparent & 0x00FFFFFFu;
        for (int32_t y = std::max(0, -top); y < height && top + y < target.height; ++y) {
            uint32_t* row = target.pixels + static_cast<size_t>(top + y) * static_cast<size_t>(target.stride);
            const auto sourceY = static_cast<size_t>(int64_t(y) * image.height / height);
            const uint32_t* source = image.pixels.data() + sourceY * static_cast<size_t>(image.width);
            for (int32_t x = std::max(0, -left); x < width && left + x < target.width; ++x) {
                const uint32_t pixel = source[int64_t(x) * image.width / width] & 0x00FFFFFFu;
                if (pixel != transparent) row[left + x] = pixel;
            }
        }
    }
    for (const OverlayText& text : overlayTexts_) {
        double x = 0, y = 0;
        if (!projector.Project(box.ToScene(text.at.x, text.at.y, text.at.z), x, y)) continue;
        engine_.Text().Draw(target, text.text, static_cast<int32_t>(std::lround(x)),
                            static_cast<int32_t>(std::lround(y)), TextPainter::Anchor::Left, scale.Font(text.font),
                            text.color);
    }
}

// ---------------------------------------------------------------------------
// scene geometry
// ---------------------------------------------------------------------------

DataRect View3D::FullRange() const {
    DataRect full{0, 1, 0, 1};
    bool any = false;
    for (const auto& [id, layer] : layers_) {
        if (!layer || !layer->hasGrid) continue;
        const GridExtent& e = layer->extent;
        const DataRect r{std::min(e.xFirst, e.xLast), std::max(e.xFirst, e.xLast), std::min(e.yFirst, e.yLast),
                         std::max(e.yFirst, e.yLast)};
        if (!any) full = r;
        else full = {std::min(full.xMin, r.xMin), std::max(full.xMax, r.xMax), std::min(full.yMin, r.yMin),
                     std::max(full.yMax, r.yMax)};
        any = true;
    }
    return full;
}

SceneBox View3D::Box() const {
    SceneBox box;
    box.logZ = logZ_;
    box.scale = axisScale_;
    const DataRect full = FullRange();
    box.shown = visibleRange_ ? *visibleRange_ : full;
    double lo = std::numeric_limits<double>::infinity(), hi = -lo;
    for (const auto& [id, layer] : layers_) {
        if (!layer || !layer->hasGrid) continue;
        double zMin = layer->extent.zMin, zMax = layer->extent.zMax;
        if (logZ_) {
            if (!(zMin > 0)) zMin = layer->field.MinPositive();
            if (!(zMax > 0)) zMax = layer->field.MinPositive();
        }
        const double a = box.ZValue(zMin), b = box.ZValue(zMax);
        if (std::isfinite(a)) lo = std::min(lo, a);
        if (std::isfinite(b)) hi = std::max(hi, b);
    }
    if (!(lo <= hi)) lo = 0, hi = 1;
    if (lo == hi) lo -= 0.5, hi += 0.5;
    box.zMin = lo;
    box.zMax = hi;
    // A degenerate x or y extent (one row of nodes) still gets a box.
    if (box.shown.xMin == box.shown.xMax) box.shown.xMin -= 0.5, box.shown.xMax += 0.5;
    if (box.shown.yMin == box.shown.yMax) box.shown.yMin -= 0.5, box.shown.yMax += 0.5;
    return box;
}

Projector View3D::MakeProjector(int32_t width, int32_t height) const {
    width = std::max(width, 1);
    height = std::max(height, 1);
    const double aspect = static_cast<double>(width) / static_cast<double>(height);
    return {camera_.Projection(aspect) * camera_.View(), width, height};
}

HRESULT View3D::ProjectPoint(double x, double y, double z, int32_t* px, int32_t* py) {
    if (!px || !py) return E_POINTER;
    const SceneBox box = Box();
    const Projector projector = MakeProjector(width_, height_);
    const Vec3 scene = box.ToScene(x, y, z);
    double sx = 0, sy = 0;
    if (!std::isfinite(scene.x) || !std::isfinite(scene.y) || !std::isfinite(scene.z)) return E_INVALIDARG;
    const bool inFront = projector.Project(scene, sx, sy);
    if (!inFront) {
        *px = *py = std::numeric_limits<int32_t>::min();
        return S_FALSE;
    }
    const double limit = 1e9;
    *px = static_cast<int32_t>(std::lround(std::clamp(sx, -limit, limit)));
    *py = static_cast<int32_t>(std::lround(std::clamp(sy, -limit, limit)));
    return *px >= 0 && *py >= 0 && *px < width_ && *py < height_ ? S_OK : S_FALSE;
}

HRESULT View3D::Pick(int32_t px, int32_t py, Point3* point) {
    if (!point) return E_POINTER;
    if (px < 0 || py < 0 || px >= width_ || py >= height_ || !dataVisible_) return S_FALSE;
    if (!Ready()) return E_FAIL;
    const SceneBox box = Box();
    const Projector projector = MakeProjector(width_, height_);
    auto unproject = [&](float depth) {
        const Vec4 ndc{2.0 * (px + 0.5) / width_ - 1.0, 1.0 - 2.0 * (py + 0.5) / height_, 2.0 * depth - 1.0, 1.0};
        const Vec4 scene = projector.viewProjection.Inverse() * ndc;
        return scene.w == 0 ? std::optional<Point3>()
                            : box.ToData({scene.x / scene.w, scene.y / scene.w, scene.z / scene.w});
    };
    // A full grid drawn for one pixel still costs every vertex: the pick
    // first finds the point on a coarse level (about a cell per pixel of a
    // small view), then draws the full grid only around it.
    float depth = 1.0f;
    int32_t coarsest = 1;
    try {
        depth = PickDepth(px, py, projector, box, [&](Layer& layer) {
            const int32_t factor =
                HeightField::FactorForBudget(layer.field.XCount(), layer.field.YCount(), kPickCoarseCells);
            coarsest = std::max(coarsest, factor);
            return std::make_pair(factor > 1 ? layer.field.Reduced(factor, *reduce_) : layer.field.Full(),
                                  std::optional<SurfaceRenderer::NodeWindow>());
        });
    } catch (const std::exception&) {
        return E_FAIL;
    }
    if (!(depth < 1.0f)) return S_FALSE;
    const std::optional<Point3> rough = unproject(depth);
    if (!rough) return S_FALSE;
    *point = *rough;
    if (coarsest == 1) return S_OK;
    // Around the rough point, wider where the coarse cells are: the full
    // surface lies within a few of them of the coarse one.
    for (const int32_t margin : {4 * coarsest + 8, 16 * coarsest + 32}) {
        try {
            depth = PickDepth(px, py, projector, box, [&](Layer& layer) {
                const GridExtent& e = layer.extent;
                auto node = [](double v, double first, double last, int32_t count) {
                    const double t = last != first ? (v - first) / (last - first) : 0.0;
                    return static_cast<int32_t>(std::lround(std::clamp(t, 0.0, 1.0) * (count - 1)));
                };
                const int32_t ix = node(rough->x, e.xFirst, e.xLast, layer.field.XCount());
                const int32_t iy = node(rough->y, e.yFirst, e.yLast, layer.field.YCount());
                return std::make_pair(layer.field.Full(), std::optional<SurfaceRenderer::NodeWindow>(
                                                              {ix - margin, ix + margin, iy - margin, iy + margin}));
            });
        } catch (const std::exception&) {
            return S_OK;
        }
        if (depth < 1.0f) {
            if (const auto fine = unproject(depth)) *point = *fine;
            break;
        }
    }
    return S_OK;
}

float View3D::PickDepth(int32_t px, int32_t py, const Projector& projector, const SceneBox& box,
                        const std::function<std::pair<HeightField::Level, std::optional<SurfaceRenderer::NodeWindow>>(
                            Layer&)>& levelOf) {
    // Draw the visible layers' surfaces into one pixel of a depth buffer
    // and read the depth found there.
    float depth = 1.0f;
    // The scene's target holds nothing between renders (the cache has the
    // picture): where it is single-sampled anyway, as on a software
    // renderer, picking draws there rather than into a second framebuffer
    // of the window's size.
    RenderTarget& pickTarget = engine_.SoftwareRenderer() ? *target_ : *pickTarget_;
    // The levels first: making one draws into a framebuffer of its own,
    // which would undo the pick's binding, viewport and scissor.
    std::vector<std::tuple<Layer*, HeightField::Level, std::optional<SurfaceRenderer::NodeWindow>>> draws;
    for (auto& [id, layer] : layers_) {
        if (!layer || !layer->Drawable()) continue;
        auto [level, window] = levelOf(*layer);
        draws.emplace_back(layer.get(), level, window);
    }
    try {
        pickTarget.Ensure(width_, height_, 1);
        pickTarget.Bind();
        glEnable(GL_SCISSOR_TEST);
        glScissor(px, height_ - 1 - py, 1, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        // No batches: the scissor culls every triangle away from the pixel
        // before it is binned.
        const SurfaceRenderer::Frame frame{projector.viewProjection, {0, 0, 1}, camera_.Position(), &engine_.Palette(),
                                           static_cast<int32_t>(engine_.PaletteColors().size()), 1.0f, 1.0f, 0};
        for (int i = 0; i < 4; ++i) glEnable(GL_CLIP_DISTANCE0 + static_cast<GLenum>(i));
        for (const auto& [layer, level, window] : draws)
            surfaces_->DrawFilled(*layer, level, box, frame, window ? &*window : nullptr);
        for (int i = 0; i < 4; ++i) glDisable(GL_CLIP_DISTANCE0 + static_cast<GLenum>(i));
        glReadPixels(px, height_ - 1 - py, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
        glDisable(GL_SCISSOR_TEST);
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
    } catch (...) {
        glDisable(GL_SCISSOR_TEST);
        throw;
    }
    return depth;
}

HRESULT View3D::GetViewBounds(DataRect* shown, DataRect* full) {
    if (!shown || !full) return E_POINTER;
    *full = FullRange();
    *shown = visibleRange_ ? *visibleRange_ : *full;
    return S_OK;
}

HRESULT View3D::SetVisibleRange(const DataRect* range) {
    if (!range) {
        visibleRange_.reset();
    } else {
        const DataRect& r = *range;
        if (!std::isfinite(r.xMin) || !std::isfinite(r.xMax) || !std::isfinite(r.yMin) || !std::isfinite(r.yMax) ||
            !(r.xMin < r.xMax) || !(r.yMin < r.yMax))
            return E_INVALIDARG;
        visibleRange_ = r;
    }
    Invalidate();
    return S_OK;
}

// ---------------------------------------------------------------------------
// layers
// ---------------------------------------------------------------------------

HRESULT View3D::SelectLayer(int32_t layer) {
    if (layer < 0) return E_INVALIDARG;
    current_ = layer;
    Current();
    return S_OK;
}

HRESULT View3D::RemoveLayer(int32_t layer) {
    if (shutDown_) return E_UNEXPECTED;
    auto found = layers_.find(layer);
    if (found == layers_.end()) return E_INVALIDARG;
    if (engine_.MakeCurrent()) layers_.erase(found);
    else found->second.reset();
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetLayerVisible(int32_t layer, bool visible) {
    auto found = layers_.find(layer);
    if (found == layers_.end() || !found->second) return E_INVALIDARG;
    found->second->visible = visible;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetGraphStyle(GraphStyle style) {
    if (static_cast<int32_t>(style) < 0 || static_cast<int32_t>(style) > 4) return E_INVALIDARG;
    Current().style = style;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetShading(ShadingMode shading) {
    if (shading != ShadingMode::Flat && shading != ShadingMode::Smooth) return E_INVALIDARG;
    Current().shading = shading;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent, bool) {
    if (!values || !extent) return E_POINTER;
    if (xCount < 1 || yCount < 1) return E_INVALIDARG;
    if (!Ready()) return E_FAIL;
    Layer& layer = Current();
    // The old grid goes first, so that a new one of its size is not held
    // beside it; the same grid still held by the 2-D device is shared.
    layer.field.Release();
    try {
        layer.field.Assign(engine_.ShareGrid(values, xCount, yCount));
    } catch (const std::bad_alloc&) {
        layer.hasGrid = false;
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        layer.hasGrid = false;
        return E_INVALIDARG;
    }
    layer.extent = *extent;
    layer.hasGrid = true;
    Invalidate();
    return S_OK;
}

HRESULT View3D::ReleaseGrid() {
    if (shutDown_) return E_UNEXPECTED;
    Layer& layer = Current();
    if (engine_.MakeCurrent()) layer.field.Release();
    layer.hasGrid = false;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetPointStyle(PointStyle style, float sizePixels) {
    if (static_cast<int32_t>(style) < 0 || static_cast<int32_t>(style) > 6 || !(sizePixels > 0) ||
        !std::isfinite(sizePixels))
        return E_INVALIDARG;
    Current().pointStyle = style;
    Current().pointSize = sizePixels;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetLowResolution(bool low) {
    Current().lowResolution = low;
    Invalidate();
    return S_OK;
}

// ---------------------------------------------------------------------------
// appearance
// ---------------------------------------------------------------------------

HRESULT View3D::SetBackgroundColor(uint32_t color) {
    background_ = color & 0x00FFFFFFu;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetAxisStyle(AxisId axis, const AxisStyle* style) {
    if (!style) return E_POINTER;
    if (!IsAxis3D(axis)) return E_INVALIDARG;
    axes_.Get(axis).style = *style;
    // As the 2-D device: a host's count cannot multiply the minor marks
    // without bound.
    axes_.Get(axis).style.minorTicks = std::clamp(style->minorTicks, 0, 100);
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetAxisTicks(AxisId axis, uint32_t count, const double* values, const char* const* texts) {
    if (!IsAxis3D(axis)) return E_INVALIDARG;
    if (count > 0 && !values) return E_POINTER;
    Axes3D::Axis& a = axes_.Get(axis);
    a.ticks.assign(values, values + count);
    a.texts.assign(count, std::string());
    if (texts)
        for (uint32_t i = 0; i < count; ++i)
            if (texts[i]) a.texts[i] = texts[i];
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetAxisLabel(AxisId axis, const char* text) {
    if (!IsAxis3D(axis)) return E_INVALIDARG;
    axes_.Get(axis).label = text ? text : "";
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) {
    if (!font) return E_POINTER;
    if (!IsAxis3D(axis) || (text != AxisText::Label && text != AxisText::Numbers)) return E_INVALIDARG;
    (text == AxisText::Label ? axes_.Get(axis).labelFont : axes_.Get(axis).numberFont) = Terminated(*font);
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetLineWidth(float pixels) {
    if (!(pixels > 0) || !std::isfinite(pixels)) return E_INVALIDARG;
    lineWidth_ = pixels;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetAxesVisible(bool visible) {
    axes_.axesVisible = visible;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetDataVisible(bool visible) {
    dataVisible_ = visible;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetAxisScale(AxisId axis, double factor) {
    if (!IsAxis3D(axis) || !(factor > 0) || !std::isfinite(factor)) return E_INVALIDARG;
    (axis == AxisId::X ? axisScale_.x : axis == AxisId::Y ? axisScale_.y : axisScale_.z) = factor;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetGridVisible(bool visible) {
    axes_.gridVisible = visible;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetMeshVisible(bool visible) {
    mesh_ = visible;
    Invalidate();
    return S_OK;
}

HRESULT View3D::SetLogZ(bool logarithmic) {
    logZ_ = logarithmic;
    Invalidate();
    return S_OK;
}

// ---------------------------------------------------------------------------
// overlay
// ---------------------------------------------------------------------------

HRESULT View3D::ClearOverlay() {
    // The annotations' shapes are painted over the cached scene: clearing
    // them alone leaves the scene as it is.
    if (!overlayTexts_.empty() || !overlayImages_.empty() || !overlayLines_.empty()) Invalidate();
    overlayTexts_.clear();
    overlayImages_.clear();
    overlayLines_.clear();
    overlay3D_.Clear();
    return S_OK;
}

// A first shape needs the scene's depth, which the cache keeps only while
// there is an overlay.
HRESULT View3D::OverlayAdded(HRESULT hr) {
    if (SUCCEEDED(hr) && cacheDepth_.empty()) Invalidate();
    return hr;
}

HRESULT View3D::SetOverlayDepthTest(bool enabled) {
    if (enabled != overlayDepthTest_) Invalidate();
    overlayDepthTest_ = enabled;
    return S_OK;
}

HRESULT View3D::AddOverlaySymbol(const Point3* at, PointStyle symbol, float size, uint32_t color) {
    return OverlayAdded(overlay3D_.AddSymbol(at, symbol, size, color));
}

HRESULT View3D::AddOverlayTextBox(const Point3* at, int32_t dx, int32_t dy, const char* text,
                                  const FontDescription* font, const OverlayTextBox* style) {
    return OverlayAdded(overlay3D_.AddTextBox(at, dx, dy, text, font, style));
}

HRESULT View3D::AddOverlayStroke(uint32_t count, const Point3* points, uint32_t color, OverlayStroke stroke,
                                 float width, bool closed) {
    return OverlayAdded(overlay3D_.AddStroke(count, points, color, stroke, width, closed));
}

HRESULT View3D::MeasureText(const char* text, const FontDescription* font, int32_t* width, int32_t* height) {
    if (!text || !width || !height) return E_POINTER;
    FontDescription f = font ? *font : TextBoxPainter::DefaultFont();
    f.face[sizeof(f.face) - 1] = '\0';
    const TextPainter::Extent extent = TextBoxPainter::Measure(engine_.Text(), text, f);
    *width = extent.width;
    *height = extent.height;
    return S_OK;
}

HRESULT View3D::AddOverlayText(const Point3* at, const char* text, uint32_t color, const FontDescription* font) {
    if (!at || !text) return E_POINTER;
    overlayTexts_.push_back({*at, text, color & 0x00FFFFFFu, font ? Terminated(*font) : DefaultOverlayFont()});
    Invalidate();
    return S_OK;
}

HRESULT View3D::AddOverlayImage(const Point3* at, const ImageBuffer* image, uint32_t transparentColor) {
    if (!at) return E_POINTER;
    if (!ValidImage(image)) return E_INVALIDARG;
    OverlayImage copy{*at, {}, image->width, image->height, transparentColor};
    copy.pixels.reserve(static_cast<size_t>(image->width) * static_cast<size_t>(image->height));
    for (int32_t y = 0; y < image->height; ++y) {
        const uint32_t* row = image->pixels + static_cast<size_t>(y) * static_cast<size_t>(image->stride);
        copy.pixels.insert(copy.pixels.end(), row, row + image->width);
    }
    overlayImages_.push_back(std::move(copy));
    Invalidate();
    return S_OK;
}

HRESULT View3D::AddOverlayPolyline(uint32_t count, const Point3* points, uint32_t color, bool closed) {
    if (!points) return E_POINTER;
    if (count < 2) return E_INVALIDARG;
    overlayLines_.push_back({std::vector<Point3>(points, points + count), color & 0x00FFFFFFu, closed});
    Invalidate();
    return S_OK;
}

// ---------------------------------------------------------------------------
// camera
// ---------------------------------------------------------------------------

HRESULT View3D::GetCameraPosition(CameraVector* position) {
    if (!position) return E_POINTER;
    const Vec3 p = camera_.Position();
    *position = {p.x, p.y, p.z, positionW_};
    return S_OK;
}

HRESULT View3D::SetCameraPosition(CameraVector position) {
    if (!camera_.SetPosition({position.x, position.y, position.z})) return E_INVALIDARG;
    positionW_ = position.w;
    Invalidate();
    return S_OK;
}

HRESULT View3D::GetCameraCenter(CameraVector* center) {
    if (!center) return E_POINTER;
    const Vec3 c = camera_.Center();
    *center = {c.x, c.y, c.z, centerW_};
    return S_OK;
}

HRESULT View3D::SetCameraCenter(CameraVector center) {
    if (!std::isfinite(center.x) || !std::isfinite(center.y) || !std::isfinite(center.z)) return E_INVALIDARG;
    camera_.SetCenter({center.x, center.y, center.z});
    centerW_ = center.w;
    Invalidate();
    return S_OK;
}

HRESULT View3D::GetAzimuth(float* degrees) {
    if (!degrees) return E_POINTER;
    *degrees = static_cast<float>(camera_.Azimuth());
    return S_OK;
}

HRESULT View3D::SetAzimuth(float degrees) {
    if (!std::isfinite(degrees)) return E_INVALIDARG;
    camera_.SetAzimuth(degrees);
    Invalidate();
    return S_OK;
}

HRESULT View3D::GetElevation(float* degrees) {
    if (!degrees) return E_POINTER;
    *degrees = static_cast<float>(camera_.Elevation());
    return S_OK;
}

HRESULT View3D::SetElevation(float degrees) {
    if (!std::isfinite(degrees)) return E_INVALIDARG;
    camera_.SetElevation(degrees);
    Invalidate();
    return S_OK;
}

HRESULT View3D::GetSceneScale(double* scale) {
    if (!scale) return E_POINTER;
    *scale = camera_.SceneScale();
    return S_OK;
}

HRESULT View3D::SetSceneScale(double scale) {
    if (!camera_.SetSceneScale(scale)) return E_INVALIDARG;
    Invalidate();
    return S_OK;
}

HRESULT View3D::GetDistance(float* distance) {
    if (!distance) return E_POINTER;
    *distance = static_cast<float>(camera_.Distance());
    return S_OK;
}

HRESULT View3D::SetDistance(float distance) {
    if (!camera_.SetDistance(distance)) return E_INVALIDARG;
    Invalidate();
    return S_OK;
}

HRESULT View3D::ResetCamera() {
    camera_.Reset(Box().Radius());
    positionW_ = centerW_ = 1;
    Invalidate();
    return S_OK;
}

}  // namespace vexplot
