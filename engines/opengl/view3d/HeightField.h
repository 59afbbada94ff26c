#pragma once
#include <cstdint>
#include <map>
#include <memory>

#include "opengl/gl/GlObject.h"
#include "opengl/gl/GlProgram.h"
#include "opengl/gl/GridTexture.h"

namespace vexplot {

// One layer's grid on the GPU: a GridTexture (texel (iy, ix) holds value
// (ix, iy), NaN for "no value"), possibly shared with the 2-D device;
// positions are computed from indices in the shaders, so nothing else per
// node exists.
// Coarser levels for drawing within a cell budget are reduced on the GPU on
// first use and cached until the next upload; a coarse texel keeps its
// block's maximum or minimum, whichever lies farther from the block's mean,
// so peaks and pits survive the reduction; only blocks that are gentle
// slopes on the grid's scale keep their mean, so that slopes stay smooth.
//
// The context must be current for every call but the counts.
class HeightField {
public:
    struct Level {
        GLuint texture = 0;
        int32_t xCount = 0;
        int32_t yCount = 0;
        int32_t factor = 1;  // nodes of the full grid per node of this level, in each direction
    };

    // Uploads `values` (xCount * yCount doubles, value (ix, iy) at
    // ix * yCount + iy) as a grid of its own (GridTexture::Upload). Throws
    // std::runtime_error when the grid exceeds the texture size limit.
    void Upload(const double* values, int32_t xCount, int32_t yCount);
    // Draws `grid` from now on (null releases); the levels of the grid
    // before are freed. The grid must hold every node (not sampled down).
    void Assign(std::shared_ptr<const GridTexture> grid);
    // Lets go of the grid and frees every level.
    void Release();

    bool Empty() const { return !grid_; }
    int32_t XCount() const { return grid_ ? grid_->XCount() : 0; }
    int32_t YCount() const { return grid_ ? grid_->YCount() : 0; }
    // The smallest finite value above 0 (for a logarithmic Z), NaN when none.
    double MinPositive() const;

    Level Full() const { return grid_ ? Level{grid_->Id(), grid_->XCount(), grid_->YCount(), 1} : Level{}; }
    // The level with `factor` (>= 1) nodes per coarse node in each
    // direction, reduced with `reduce` (from MakeReduceProgram) on first
    // use; the full grid for factor 1 or a grid too small to reduce.
    Level Reduced(int32_t factor, const GlProgram& reduce);
    static GlProgram MakeReduceProgram();
    // The smallest power-of-two factor whose level has at most `cells`
    // cells; 1 for no limit.
    static int32_t FactorForBudget(int32_t xCount, int32_t yCount, uint64_t cells);

private:
    std::shared_ptr<const GridTexture> grid_;
    std::map<int32_t, GlTexture> levels_;
};

}  // namespace vexplot
