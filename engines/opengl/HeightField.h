#pragma once
#include <cstdint>
#include <map>

#include "opengl/GlObject.h"
#include "opengl/GlProgram.h"

namespace vexplot {

// One grid on the GPU: the values as 32-bit floats in an R32F texture whose
// texel (iy, ix) holds value (ix, iy), NaN for "no value"; positions are
// computed from indices in the shaders, so nothing else per node exists.
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

    // Converts `values` (xCount * yCount doubles, value (ix, iy) at
    // ix * yCount + iy) to floats band by band and uploads them, so no
    // second copy of the whole grid exists on the CPU. Throws
    // std::runtime_error when the grid exceeds the texture size limit.
    void Upload(const double* values, int32_t xCount, int32_t yCount);
    // Frees the texture and every level.
    void Release();

    bool Empty() const { return !texture_; }
    int32_t XCount() const { return xCount_; }
    int32_t YCount() const { return yCount_; }
    // The smallest finite value above 0 (for a logarithmic Z), NaN when none.
    double MinPositive() const { return minPositive_; }

    Level Full() const { return {texture_.Id(), xCount_, yCount_, 1}; }
    // The level with `factor` (>= 1) nodes per coarse node in each
    // direction, reduced with `reduce` (from MakeReduceProgram) on first
    // use; the full grid for factor 1 or a grid too small to reduce.
    Level Reduced(int32_t factor, const GlProgram& reduce);
    static GlProgram MakeReduceProgram();
    // The smallest power-of-two factor whose level has at most `cells`
    // cells; 1 for no limit.
    static int32_t FactorForBudget(int32_t xCount, int32_t yCount, uint64_t cells);

private:
    GlTexture texture_;
    int32_t xCount_ = 0;
    int32_t yCount_ = 0;
    double minPositive_ = 0;
    double range_ = 0;  // highest minus lowest finite value
    std::map<int32_t, GlTexture> levels_;
};

}  // namespace vexplot
