#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "com/ComObject.h"
#include "engine/IGraphDevice2D.h"
#include "engine/IGraphSceneExport.h"
#include "opengl/flat/FlatLayout.h"
#include "opengl/flat/FlatOverlay.h"
#include "opengl/flat/FlatScene.h"
#include "opengl/gl/GridTexture.h"
#include "opengl/flat/SectionCurve.h"

namespace vexplot {

class EngineContext;
class FlatRenderer;

// The OpenGL engine's 2-D device: the flat palette image (or its contour
// lines) with X and Y axes, the colour bar with the palette axis, and the
// one-dimensional section. GL draws the image, the colour bar and all lines
// into an off-screen target; the texts are drawn on the CPU into the pixels
// read back.
//
// The grid goes to the GPU once per change, as the engine context's shared
// grid texture: the 3-D view fed the same grid draws from the same texture,
// and the device keeps no copy of its own (a section reads its one line
// back). Only a grid beyond the texture size limit is kept as 32-bit floats
// on the CPU and shown sampled down. Redraws cost the same whatever the
// grid's size.
// Calls come from the control's user-interface thread.
class Device2D final : public ComObject<IGraphDevice2D, IGraphSceneExport> {
public:
    // Makes the context current and builds the GL programs; throws
    // std::runtime_error when that fails. `engine` must outlive the device
    // or be released through Shutdown() first.
    explicit Device2D(EngineContext& engine);

    // Frees the GL objects while the engine's context is still there; later
    // calls that need GL answer E_UNEXPECTED.
    void Shutdown();

    // IGraphDevice2D
    HRESULT Attach(WindowHandle window) override;
    HRESULT Detach() override;
    HRESULT Resize(int32_t width, int32_t height) override;
    HRESULT Draw(const ImageBuffer* windowPixels) override;
    HRESULT RenderToImage(const ImageBuffer* image) override;
    HRESULT SetAxisStyle(AxisId axis, const AxisStyle* style) override;
    HRESULT SetAxisTicks(AxisId axis, uint32_t count, const double* values, const char* const* texts) override;
    HRESULT SetAxisLabel(AxisId axis, const char* text) override;
    HRESULT SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) override;
    HRESULT SetImageOrientation(int32_t orientation) override;
    HRESULT SetColorBarVisible(bool visible) override;
    HRESULT SetVisibleRange(const DataRect* range) override;
    HRESULT SetBackgroundColor(uint32_t color) override;
    HRESULT SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                    bool dataFlag) override;
    HRESULT ResetData() override;
    HRESULT SetSection(const SectionSettings* section) override;
    HRESULT SetShading(ShadingMode shading) override;
    HRESULT SetParameters(int32_t leftMargin, int32_t colorBarWidth, int32_t paletteAxisWidth,
                          int32_t bottomMargin) override;
    HRESULT GetDataRange(DataRect* range) override;
    HRESULT GetVisibleRange(DataRect* range) override;
    int32_t QueryTextMarkup() override;
    HRESULT DataToClient(double x, double y, int32_t* px, int32_t* py) override;
    HRESULT ClientToData(int32_t px, int32_t py, double* x, double* y) override;
    HRESULT GetImageRect(PixelRect* rect) override;
    HRESULT SetImageVisible(bool visible) override;
    HRESULT ClearOverlay() override;
    HRESULT AddOverlayLines(uint32_t count, const double* xy, uint32_t color, OverlayStroke stroke, float width,
                            bool closed) override;
    HRESULT AddOverlayBox(const OverlayBox* box) override;
    HRESULT AddOverlaySymbol(double x, double y, PointStyle symbol, float size, uint32_t color) override;
    HRESULT AddOverlayTextBox(double x, double y, const char* text, const FontDescription* font,
                              const OverlayTextBox* style) override;
    HRESULT MeasureText(const char* text, const FontDescription* font, int32_t* width, int32_t* height) override;

    // getters for tests and the engine:
    const FlatLayout& Layout() const { return layout_; }
    bool DataFlag() const { return dataFlag_; }

    // IGraphSceneExport (Device2DExport.cpp): the palette image as pixels
    // under the axes' lines and texts.
    HRESULT BuildScene(int32_t width, int32_t height, ISceneSink* sink) override;
    HRESULT RenderTile(const ImageBuffer* tile, int32_t fullWidth, int32_t fullHeight, int32_t left,
                       int32_t top) override;
    HRESULT GetMaxRenderSize(int32_t* size) override;

private:
    ~Device2D() override;

    // The layout `target` is drawn with: the device's layout at the
    // target's size, scaled by its pixel ratio.
    FlatLayout FrameFor(const ImageBuffer& target) const;
    HRESULT Render(const ImageBuffer& target, const FlatLayout& frame);
    // Paints the annotation overlay over a frame rendered at `target`.
    void PaintOverlay(const ImageBuffer& target);
    // Draws the palette image and colour bar, and the axes' lines unless
    // `drawLines` is false (a drawing takes them as lines of its own).
    void RenderFlat(const FlatLayout& frame, FlatScene& scene, bool drawLines = true);
    // Draws the section's axes and curve; with `drawLines` false both are
    // left in `scene.lines` instead (the curve clipped to the plot), for a
    // drawing to take as lines of its own.
    void RenderSection(const FlatLayout& frame, FlatScene& scene, bool drawLines = true);
    void DrawImage(const FlatLayout& frame);
    FlatAxis* AxisFor(AxisId axis);
    // The axis with round ticks over [lo, hi] filled in when it was given none.
    FlatAxis WithTicks(const FlatAxis& axis, double lo, double hi) const;
    bool HasGrid() const { return xCount_ > 0; }
    bool InSection() const { return HasGrid() && section_.mode != 0; }
    // The section plot in client pixels and the data ranges it spans.
    struct SectionFrame {
        PixelRect plot;
        double lo, hi;    // the running axis, left to right
        double zLo, zHi;  // the value, bottom to top
    };
    SectionFrame SectionMapping() const;

    EngineContext* engine_;
    std::unique_ptr<FlatRenderer> renderer_;
    WindowHandle window_ = 0;
    FlatLayout layout_;
    uint32_t background_ = 0;
    std::array<FlatAxis, 4> axes_;  // by AxisId; Z is kept but not drawn
    bool imageVisible_ = true;
    ShadingMode shading_ = ShadingMode::Flat;
    SectionSettings section_{0, 2, 0, 0x0000FFFF, 50.0};

    std::span<const float> Values() const { return {values_.get(), valueCount_}; }
    // Fills grid_ (and values_ for a grid too large to share) from the caller's doubles.
    void StoreGrid(const double* values, int32_t xCount, int32_t yCount);
    // Drops the grid, its texture and the CPU copy.
    void DropGrid();
    SectionCurve Section() const;

    std::shared_ptr<const GridTexture> grid_;
    // Only for a grid beyond the texture size limit: value (ix, iy) at iy * xCount_ + ix.
    std::unique_ptr<float[]> values_;
    size_t valueCount_ = 0;
    int32_t xCount_ = 0;
    int32_t yCount_ = 0;
    GridExtent extent_{0, 1, 0, 1, 0, 1};
    bool dataFlag_ = false;

    // The last frame, served again while nothing that shows in it changed
    // (every setter raises the revision): repainting an unchanged window
    // then costs a copy instead of a render.
    struct FrameKey {
        uint64_t revision;
        uint32_t paletteVersion;
        int32_t width, height;
        int32_t ratio;  // hundredths
        bool operator==(const FrameKey&) const = default;
    };
    uint64_t revision_ = 1;
    FrameKey cachedKey_{0, 0, 0, 0, 0};
    std::vector<uint32_t> cachedFrame_;
    // Painted over every frame, cached or not; never part of the cache.
    FlatOverlay overlay_;
};

}  // namespace vexplot
