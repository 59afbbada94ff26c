#pragma once
#include <cstdint>
#include <span>

namespace vexplot {

// The lowest and highest finite value of a grid and its count of NaN cells,
// computed on demand and kept until the grid changes.
//
// Only finite values make the extent: NaN means "no value", and an infinity
// would leave no room on the Z axis for everything else. A grid without any
// finite value reports 0 for both ends. Infinities are not "missing".
class ZExtentCache {
public:
    struct Extent {
        double min = 0;
        double max = 0;
        int64_t missing = 0;  // NaN cells
    };

    // The extent of `values`, which must be the grid this cache describes;
    // scans it only when the cache is stale.
    const Extent& Get(std::span<const double> values);

    // After a wholesale change of the grid.
    void Invalidate() { valid_ = false; }
    // After one cell changed from `before` to `after`: updates the extent in
    // constant time, unless the cell held the lowest or highest value and
    // moved inwards, in which case the next Get rescans.
    void CellChanged(double before, double after);
    // The count of finite cells as of the last Get.
    int64_t FiniteCount() const { return finite_; }

private:
    Extent extent_;
    int64_t finite_ = 0;
    bool valid_ = false;
};

}  // namespace vexplot
