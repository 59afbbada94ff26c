#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "engine/IGraphEngine.h"
#include "opengl/flat/FlatRenderer.h"

namespace vexplot {

// The one-dimensional section of a grid: the values along one grid line,
// cut by a plane at a percentage of the other axis's data range. Mode 1 cuts
// the Y-Z plane at an X position (the curve runs along Y), mode 2 the X-Z
// plane at a Y position (the curve runs along X). Plain data, no GL.
class SectionCurve {
public:
    // `values` holds xCount * yCount values in rows of X: (ix, iy) at iy * xCount + ix.
    // `position` is clamped to 0..100; the cut takes the nearest grid line.
    static SectionCurve Extract(std::span<const float> values, int32_t xCount, int32_t yCount,
                                const GridExtent& extent, int32_t mode, double position);
    // The grid line the cut takes among `count` lines (X nodes for mode 1,
    // Y nodes for mode 2) at `position` percent.
    static int32_t CutIndex(int32_t count, double position);
    // The curve of the values along the cut line `cutIndex` (mode 1: along
    // Y, running from the extent's yFirst to yLast; mode 2: along X), read
    // from wherever the grid lives. Empty for another mode.
    static SectionCurve FromLine(std::vector<float> line, const GridExtent& extent, int32_t mode, int32_t cutIndex);

    // Running-axis coordinate of sample i in data units.
    double At(size_t i) const;
    const std::vector<float>& Values() const { return values_; }  // NaN: no value, the curve breaks
    double First() const { return first_; }  // running-axis data value of sample 0
    double Last() const { return last_; }
    int32_t CutIndex() const { return cutIndex_; }

private:
    std::vector<float> values_;
    double first_ = 0.0;
    double last_ = 0.0;
    int32_t cutIndex_ = 0;
};

// The strokes of a point symbol centred at (x, y) with half-size `radius`
// pixels, drawn `strokeWidth` pixels thick. PointStyle::None gives nothing.
inline constexpr float kSymbolStrokeWidth = 1.2f;
void AppendSymbol(std::vector<FlatLine>& out, PointStyle style, float x, float y, float radius, uint32_t color,
                  float strokeWidth = kSymbolStrokeWidth);

}  // namespace vexplot
