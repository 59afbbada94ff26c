#pragma once
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "com/ComObject.h"
#include "engine/IGraphSceneExport.h"
#include "engine/IGraphView3D.h"
#include "opengl/view3d/Axes3D.h"
#include "opengl/view3d/Camera.h"
#include "opengl/view3d/Layer.h"
#include "opengl/view3d/Overlay3D.h"
#include "opengl/gl/PixelScale.h"
#include "opengl/view3d/Projector.h"
#include "opengl/view3d/SceneBox.h"
#include "opengl/view3d/SurfaceRenderer.h"

namespace vexplot {

class EngineContext;
class LineRenderer;
class RenderTarget;
class SurfaceRenderer;

// The engine's 3-D view: the graph objects' grids as layers drawn in GL
// into an off-screen framebuffer, read back, and finished on the CPU with
// the axis texts and the annotation overlay. Update renders into a pixel
// cache at the window's size that Draw copies out; RenderToImage renders
// into the caller's buffer and leaves the cache alone.
class View3D final : public ComObject<IGraphView3D, IGraphSceneExport> {
public:
    // Cells drawn by Update(kUpdateMoving) unless SetDetailBudget says
    // otherwise: a moving frame at 1024 x 768 stays near 30 ms on llvmpipe
    // with two busy cores (256 x 256 cells took 50 to 60 ms).
    static constexpr uint32_t kDefaultDetailBudget = 128 * 128;
    // Cells of the coarse level a pick starts from.
    static constexpr uint64_t kPickCoarseCells = 256 * 256;
    // Samples per pixel at rest on a GPU; moving frames use one. A software
    // renderer always uses one: there 2 or 4 samples cost 3 to 5 times the
    // frame (measured with llvmpipe on two cores).
    static constexpr int32_t kRestSamples = 4;
    // Primitives a software renderer gets per batch. It keeps every binned
    // triangle it has not rasterised yet in host memory, about 140 bytes
    // each: a frame at rest drawn in one call peaked some 60 MiB above the
    // picture itself; batches of this size (two in flight) keep it to a
    // few MiB at no cost in frame time.
    static constexpr uint32_t kSoftwareBatchPrimitives = 1u << 14;

    explicit View3D(EngineContext& engine);
    // Frees every GL object while the context still exists; afterwards
    // every call fails with E_UNEXPECTED. The engine calls it when it goes.
    void Shutdown();

    HRESULT Attach(WindowHandle window) override;
    HRESULT Detach() override;
    HRESULT Refresh(int32_t flags) override;
    HRESULT Resize(int32_t width, int32_t height) override;
    HRESULT Update(int32_t detail) override;
    HRESULT SetDetailBudget(uint32_t cells) override;
    HRESULT Draw(const ImageBuffer* windowPixels) override;
    HRESULT RenderToImage(const ImageBuffer* image) override;
    HRESULT SelectLayer(int32_t layer) override;
    HRESULT RemoveLayer(int32_t layer) override;
    HRESULT SetBackgroundColor(uint32_t color) override;
    HRESULT SetLayerVisible(int32_t layer, bool visible) override;
    HRESULT SetGraphStyle(GraphStyle style) override;
    HRESULT SetShading(ShadingMode shading) override;
    HRESULT SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                    bool dataFlag) override;
    HRESULT ReleaseGrid() override;
    HRESULT SetAxisStyle(AxisId axis, const AxisStyle* style) override;
    HRESULT SetAxisTicks(AxisId axis, uint32_t count, const double* values, const char* const* texts) override;
    HRESULT SetAxisLabel(AxisId axis, const char* text) override;
    HRESULT SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) override;
    int32_t QueryTextMarkup() override { return 0; }
    HRESULT ProjectPoint(double x, double y, double z, int32_t* px, int32_t* py) override;
    HRESULT GetViewBounds(DataRect* shown, DataRect* full) override;
    HRESULT SetVisibleRange(const DataRect* range) override;
    HRESULT SetPointStyle(PointStyle style, float sizePixels) override;
    HRESULT SetLineWidth(float pixels) override;
    HRESULT ClearOverlay() override;
    HRESULT AddOverlayText(const Point3* at, const char* text, uint32_t color, const FontDescription* font) override;
    HRESULT AddOverlayImage(const Point3* at, const ImageBuffer* image, uint32_t transparentColor) override;
    HRESULT AddOverlayPolyline(uint32_t count, const Point3* points, uint32_t color, bool closed) override;
    HRESULT SetAxesVisible(bool visible) override;
    HRESULT SetDataVisible(bool visible) override;
    HRESULT SetLowResolution(bool low) override;
    HRESULT SetAxisScale(AxisId axis, double factor) override;
    HRESULT SetGridVisible(bool visible) override;
    HRESULT SetMeshVisible(bool visible) override;
    HRESULT SetLogZ(bool logarithmic) override;
    HRESULT GetCameraPosition(CameraVector* position) override;
    HRESULT SetCameraPosition(CameraVector position) override;
    HRESULT GetCameraCenter(CameraVector* center) override;
    HRESULT SetCameraCenter(CameraVector center) override;
    HRESULT GetAzimuth(float* degrees) override;
    HRESULT SetAzimuth(float degrees) override;
    HRESULT GetElevation(float* degrees) override;
    HRESULT SetElevation(float degrees) override;
    HRESULT GetSceneScale(double* scale) override;
    HRESULT SetSceneScale(double scale) override;
    HRESULT GetDistance(float* distance) override;
    HRESULT SetDistance(float distance) override;
    HRESULT ResetCamera() override;
    HRESULT Pick(int32_t px, int32_t py, Point3* point) override;
    HRESULT SetEveryCell(bool everyCell) override;
    HRESULT SetOverlayDepthTest(bool enabled) override;
    HRESULT AddOverlaySymbol(const Point3* at, PointStyle symbol, float size, uint32_t color) override;
    HRESULT AddOverlayTextBox(const Point3* at, int32_t dx, int32_t dy, const char* text, const FontDescription* font,
                              const OverlayTextBox* style) override;
    HRESULT MeasureText(const char* text, const FontDescription* font, int32_t* width, int32_t* height) override;
    HRESULT AddOverlayStroke(uint32_t count, const Point3* points, uint32_t color, OverlayStroke stroke, float width,
                             bool closed) override;

    // IGraphSceneExport (View3DExport.cpp)
    HRESULT BuildScene(int32_t width, int32_t height, ISceneSink* sink) override;
    HRESULT RenderTile(const ImageBuffer* tile, int32_t fullWidth, int32_t fullHeight, int32_t left,
                       int32_t top) override;
    HRESULT GetMaxRenderSize(int32_t* size) override;

private:
    ~View3D() override;

    struct OverlayText {
        Point3 at;
        std::string text;
        uint32_t color;
        FontDescription font;
    };
    struct OverlayImage {
        Point3 at;
        std::vector<uint32_t> pixels;
        int32_t width, height;
        uint32_t transparent;
    };
    struct OverlayPolyline {
        std::vector<Point3> points;
        uint32_t color;
        bool closed;
    };

    bool Ready();
    Layer& Current();
    SceneBox Box() const;
    DataRect FullRange() const;
    Projector MakeProjector(int32_t width, int32_t height) const;
    static uint64_t ProjectedPixels(const SceneBox& box, const Projector& projector);
    // Screen pixels a cell of `style` needs at least to be told apart.
    static uint64_t PixelsPerCell(GraphStyle style);
    // SurfaceRenderer::Frame::batchPrimitives for this context.
    uint32_t BatchPrimitives() const;
    HeightField::Level LevelFor(Layer& layer, int32_t detail, uint64_t pixels, const SceneBox& box);
    // A part of a larger picture: the render's pixels are the window
    // (left, top) of a picture of fullWidth x fullHeight.
    struct Tile {
        int32_t fullWidth, fullHeight, left, top;
    };
    // `depth` (may be null) receives the scene's depth image when the
    // annotation overlay needs it.
    HRESULT Render(const ImageBuffer& target, int32_t detail, const Tile* tile = nullptr,
                   std::vector<float>* depth = nullptr);
    // The layer's cells as depth-sorted primitives (View3DExport.cpp).
    struct ScenePrimitive;
    void CollectLayer(const Layer& layer, const SceneBox& box, const Projector& projector, uint64_t pixels,
                      std::vector<ScenePrimitive>& out);
    // The depth (0 to 1; 1 where nothing was hit) at one pixel of the
    // surfaces of every drawable layer, each drawn from the level (and only
    // inside the node window) `levelOf` gives it.
    float PickDepth(int32_t px, int32_t py, const Projector& projector, const SceneBox& box,
                    const std::function<std::pair<HeightField::Level, std::optional<SurfaceRenderer::NodeWindow>>(
                        Layer&)>& levelOf);
    // Paints the annotation overlay over a frame rendered at `target`'s size.
    // `tile` (may be null): the target is that window of a larger picture.
    void PaintOverlay(const ImageBuffer& target, const std::vector<float>& depth, const Tile* tile = nullptr);
    // Data points to the pixels (and window depth) of the window (left, top)
    // of a picture of fullWidth x fullHeight.
    Overlay3D::Project OverlayProjection(int32_t fullWidth, int32_t fullHeight, double left, double top) const;
    // The annotation overlay as items of a drawing of width x height
    // (View3DExport.cpp), without what the surface hides.
    void ExportOverlay(int32_t width, int32_t height, ISceneSink& sink);
    HRESULT OverlayAdded(HRESULT hr);
    // Renders the pending detail into the cache at the given size and
    // pixel ratio (hundredths).
    HRESULT RenderCache(int32_t width, int32_t height, int32_t pixelRatio);
    void DrawScene(const SceneBox& box, const Projector& projector, const PixelScale& scale,
                   const std::vector<std::pair<const Layer*, HeightField::Level>>& draws);
    void DrawOverlayLines(const SceneBox& box, const Projector& projector, const PixelScale& scale);
    void DrawOverlayPixels(const ImageBuffer& target, const SceneBox& box, const Projector& projector,
                           const PixelScale& scale);
    void Invalidate() { cacheValid_ = false; }

    EngineContext& engine_;
    bool shutDown_ = false;
    WindowHandle window_ = 0;
    int32_t width_ = 0;
    int32_t height_ = 0;
    std::vector<uint32_t> cache_;
    int32_t cacheWidth_ = 0;
    int32_t cacheHeight_ = 0;
    int32_t cacheRatio_ = 0;  // hundredths
    bool cacheValid_ = false;
    uint32_t cachePalette_ = 0;  // palette version the cache was drawn with

    std::map<int32_t, std::unique_ptr<Layer>> layers_;
    int32_t current_ = 0;
    uint32_t background_ = 0xFFFFFF;
    bool dataVisible_ = true;
    bool logZ_ = false;
    Vec3 axisScale_{1, 1, 1};
    float lineWidth_ = 1.0f;
    uint32_t detailBudget_ = kDefaultDetailBudget;
    int32_t pendingDetail_ = kUpdateFull;  // what the next render of the cache draws
    bool everyCell_ = false;
    bool mesh_ = false;
    std::optional<DataRect> visibleRange_;
    Axes3D axes_;
    Camera camera_;
    double positionW_ = 1;
    double centerW_ = 1;

    std::vector<OverlayText> overlayTexts_;
    std::vector<OverlayImage> overlayImages_;
    std::vector<OverlayPolyline> overlayLines_;
    Overlay3D overlay3D_;
    bool overlayDepthTest_ = true;
    std::vector<float> cacheDepth_;  // the cached frame's depth image, while the overlay needs it

    std::unique_ptr<RenderTarget> target_;
    std::unique_ptr<RenderTarget> pickTarget_;
    std::unique_ptr<SurfaceRenderer> surfaces_;
    std::unique_ptr<LineRenderer> lines_;
    std::unique_ptr<GlProgram> reduce_;
};

}  // namespace vexplot
