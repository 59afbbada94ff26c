#include "dataobject/ZExtentCache.h"

#include <cmath>
#include <limits>

namespace vexplot {

const ZExtentCache::Extent& ZExtentCache::Get(std::span<const double> values) {
    if (valid_) return extent_;
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    int64_t missing = 0, finite = 0;
    for (const double v : values) {
        if (std::isfinite(v)) {
            lo = v < lo ? v : lo;
            hi = v > hi ? v : hi;
            ++finite;
        } else if (std::isnan(v)) {
            ++missing;
        }
    }
    extent_ = finite > 0 ? Extent{lo, hi, missing} : Extent{0, 0, missing};
    finite_ = finite;
    valid_ = true;
    return extent_;
}

void ZExtentCache::CellChanged(double before, double after) {
    if (!valid_) return;
    const bool wasFinite = std::isfinite(before), isFinite = std::isfinite(after);
    // The old value held an end of the extent and the new one does not hold
    // it as far out: only a rescan finds the new end.
    const bool leavesMin = wasFinite && before == extent_.min && !(isFinite && after <= before);
    const bool leavesMax = wasFinite && before == extent_.max && !(isFinite && after >= before);
    if (leavesMin || leavesMax) {
        valid_ = false;
        return;
    }
    extent_.missing += (std::isnan(after) ? 1 : 0) - (std::isnan(before) ? 1 : 0);
    if (!isFinite) {
        finite_ -= wasFinite ? 1 : 0;
        return;
    }
    if (finite_ == 0) {
        extent_.min = extent_.max = after;
    } else {
        extent_.min = after < extent_.min ? after : extent_.min;
        extent_.max = after > extent_.max ? after : extent_.max;
    }
    finite_ += wasFinite ? 0 : 1;
}

}  // namespace vexplot
