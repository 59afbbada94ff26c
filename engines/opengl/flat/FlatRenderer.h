#pragma once
#include <GL/glcorearb.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/IGraphEngine.h"
#include "opengl/gl/GlObject.h"
#include "opengl/gl/GlProgram.h"
#include "opengl/gl/GridTexture.h"
#include "opengl/gl/RenderTarget.h"

namespace vexplot {

class PaletteTexture;

// A straight line in client pixels (y down), `width` pixels thick.
struct FlatLine {
    float x0, y0, x1, y1;
    float width;
    uint32_t color;  // 0x00BBGGRR
};

// The GL side of the flat view: the grid's texture (shared with the 3-D
// view when both show the same grid), the programs
// that draw it as a palette image or as contour lines, the colour bar, and
// batches of anti-aliased lines, all into a multisampled off-screen target
// that is read back into the caller's pixels. The context must be current
// for every call, and for destruction.
class FlatRenderer {
public:
    // How the image's pixels map to grid indices: grid index = a * pixel + b
    // per direction, evaluated at pixel centres.
    struct GridMapping {
        double ax, bx;  // continuous X index (0 .. xCount - 1) from the pixel column
        double ay, by;  // continuous Y index from the pixel row
    };
    struct ImageParams {
        PixelRect rect;
        GridMapping mapping;
        float zMin, zMax;
        bool smooth;
        bool contours;  // isolines over the background instead of the image
        float levelFirst, levelStep;  // contour levels: levelFirst + k * levelStep
    };

    FlatRenderer();  // compiles the programs; throws std::runtime_error
    ~FlatRenderer();
    FlatRenderer(const FlatRenderer&) = delete;
    FlatRenderer& operator=(const FlatRenderer&) = delete;

    // Draws the image from `grid` from now on (held until the next call or
    // ClearGrid); null is no grid.
    void SetGrid(std::shared_ptr<const GridTexture> grid) { grid_ = std::move(grid); }
    void ClearGrid() { grid_.reset(); }
    bool HasGrid() const { return grid_ != nullptr; }
    // The texture's size, after any sampling down.
    int32_t GridX() const { return grid_ ? grid_->XCount() : 0; }
    int32_t GridY() const { return grid_ ? grid_->YCount() : 0; }

    // Starts a frame of `width` x `height` filled with `background`.
    void Begin(int32_t width, int32_t height, uint32_t background);
    void DrawImage(const ImageParams& params, const PaletteTexture& palette, int32_t paletteSize);
    // The palette from its lowest colour at the bottom to its highest at the top.
    void DrawColorBar(const PixelRect& rect, const PaletteTexture& palette, int32_t paletteSize);
    // Lines, clipped to `clip` when it is given.
    void DrawLines(std::span<const FlatLine> lines, const PixelRect* clip = nullptr);
    // Reads the frame into `target` (top row first).
    void Finish(const ImageBuffer& target);

private:
    void DrawQuad(const PixelRect& rect);
    void Scissor(const PixelRect& rect);

    RenderTarget target_;
    GlProgram flatProgram_;
    GlProgram smoothProgram_;
    GlProgram contourProgram_;
    GlProgram barProgram_;
    GlProgram lineProgram_;
    GlVertexArray quadVao_;
    GlBuffer quadVbo_;
    GlVertexArray lineVao_;
    GlBuffer lineVbo_;
    std::shared_ptr<const GridTexture> grid_;
    int32_t width_ = 0;
    int32_t height_ = 0;
};

}  // namespace vexplot
