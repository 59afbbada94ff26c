#pragma once
#include "opengl/gl/GlObject.h"
#include "opengl/gl/GlProgram.h"
#include "opengl/view3d/HeightField.h"
#include "opengl/view3d/Layer.h"
#include "opengl/gl/Matrix4.h"
#include "opengl/view3d/SceneBox.h"

namespace vexplot {

class PaletteTexture;

// Draws one layer's grid in its style from a level of its height field.
// Every program reads the heights from the texture and makes positions
// from vertex and instance numbers; only the nodes inside the shown x/y
// range are submitted, and clip planes trim the cells at its border.
class SurfaceRenderer {
public:
    struct Frame {
        Matrix4 viewProjection;
        Vec3 lightDirection;  // unit, scene coordinates, towards the light
        Vec3 eye;             // scene coordinates
        const PaletteTexture* palette;
        int32_t paletteSize;
        float lineWidth;   // target pixels
        float pixelRatio;  // target pixels per logical pixel, for the layers' point sizes
        // Primitives per draw call, 0 for one call per style. A software
        // rasteriser bins every primitive it has not yet rasterised in host
        // memory (about 140 bytes a triangle): drawing in batches, with few
        // of them in flight, keeps that to a few batches' worth instead of
        // a few hundred thousand cells'.
        uint32_t batchPrimitives = 0;
        // Surfaces get their grid lines drawn over them in a dark grey.
        bool mesh = false;
    };

    SurfaceRenderer();
    // Draws `level` of `layer` (style, shading, points) mapped through `box`.
    void Draw(const Layer& layer, const HeightField::Level& level, const SceneBox& box, const Frame& frame);
    // Nodes of the full grid, both ends included.
    struct NodeWindow {
        int32_t xFirst, xLast, yFirst, yLast;
    };
    // Draws `level` as a filled surface whatever the style (picking); with
    // `window`, only the cells of the full grid's nodes inside it.
    void DrawFilled(const Layer& layer, const HeightField::Level& level, const SceneBox& box, const Frame& frame,
                    const NodeWindow* window = nullptr);

private:
    struct Range {
        int32_t first, count;
    };
    void Bind(const GlProgram& program, const Layer& layer, const HeightField::Level& level, const SceneBox& box,
              const Frame& frame, int32_t ix0, int32_t iy0);
    static Range ShownNodes(double first, double last, int32_t count, double shownMin, double shownMax);
    // Calls draw(first, count) over the rows [0, rows) of `primitivesPerRow`
    // primitives each, in batches of whole rows within frame.batchPrimitives
    // (at least one row), waiting before each batch until at most two
    // earlier ones are still being rasterised; one call when batching is off.
    template <typename DrawRows>
    static void InBatches(const Frame& frame, int32_t rows, uint64_t primitivesPerRow, DrawRows draw);

    GlProgram surface_;
    GlProgram lines_;
    GlProgram points_;
    GlProgram bars_;
    GlVertexArray noAttributes_;
};

}  // namespace vexplot
