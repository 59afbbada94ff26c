#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "opengl/gl/GlObject.h"

namespace vexplot {

// One grid of values on the GPU, as the engine's surfaces share it: an R32F
// texture whose texel (iy, ix) holds value (ix, iy), NaN for "no value",
// with what the surfaces need to know of the values without reading them
// back. On a software renderer the texture lives in host memory, so one
// grid shown in both the 3-D view and the 2-D device is one copy, not two.
//
// Made and destroyed with the engine's context current.
class GridTexture {
public:
    // Converts `values` (xCount * yCount doubles, value (ix, iy) at
    // ix * yCount + iy) to floats band by band and uploads them, so no
    // second copy of the whole grid exists on the CPU. Throws
    // std::runtime_error when the grid exceeds the texture size limit,
    // std::bad_alloc when GL runs out of memory.
    static std::shared_ptr<GridTexture> Upload(const double* values, int32_t xCount, int32_t yCount);
    // Every stepX-th node along X and stepY-th along Y of `rowsOfX` (value
    // (ix, iy) at iy * xCount + ix), the steps the smallest that fit the
    // texture size limit: a grid too large to share shown sampled down.
    // Only the counts are set; the values' statistics stay empty.
    static std::shared_ptr<GridTexture> Sampled(std::span<const float> rowsOfX, int32_t xCount, int32_t yCount);

    // Whether a grid of this size fits the texture size limit.
    static bool Fits(int32_t xCount, int32_t yCount);
    // A digest of the doubles' bits that tells, but for a 2^-64 chance,
    // whether two grids of the same size hold the same values.
    static uint64_t Fingerprint(const double* values, size_t count);

    GridTexture(const GridTexture&) = delete;
    GridTexture& operator=(const GridTexture&) = delete;

    GLuint Id() const { return texture_.Id(); }
    // Nodes of the texture (after any sampling down).
    int32_t XCount() const { return xCount_; }
    int32_t YCount() const { return yCount_; }
    bool SampledDown() const { return sampledDown_; }
    uint64_t Digest() const { return digest_; }
    // The smallest finite value above 0 (for a logarithmic Z), NaN when none.
    double MinPositive() const { return minPositive_; }
    // Highest minus lowest finite value, 0 when there are fewer than two.
    double Range() const { return range_; }
    // The lowest and highest value finite as a float; low > high when none is.
    float FiniteLow() const { return finiteLow_; }
    float FiniteHigh() const { return finiteHigh_; }

    // The values along one line of nodes, read back from the texture: the
    // nodes (index, 0 .. YCount - 1) when `alongY`, else (0 .. XCount - 1, index).
    std::vector<float> ReadLine(bool alongY, int32_t index) const;

private:
    GridTexture() = default;
    void Allocate(int32_t xCount, int32_t yCount);

    GlTexture texture_;
    int32_t xCount_ = 0;
    int32_t yCount_ = 0;
    bool sampledDown_ = false;
    uint64_t digest_ = 0;
    double minPositive_ = 0;
    double range_ = 0;
    float finiteLow_ = 0;
    float finiteHigh_ = -1;
};

}  // namespace vexplot
