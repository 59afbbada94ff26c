#include "tools/ZoomStep.h"

#include <algorithm>
#include <cmath>

namespace vexplot {

double ZoomStep::StepSize(double min, double max, int32_t n) {
    const double range = std::abs(max - min);
    return n > 10 ? range * 10 / n : range;
}

std::optional<DataRect> ZoomStep::Next(const DataRect& shown, const DataRect& full, double sx, double sy, bool in) {
    if (!(sx > 0) || !(sy > 0)) return std::nullopt;
    DataRect next = shown;
    if (in) {
        next.xMin += sx / 2, next.xMax -= sx / 2;
        next.yMin += sy / 2, next.yMax -= sy / 2;
    } else {
        next.xMin = std::max(shown.xMin - sx, std::min(full.xMin, full.xMax));
        next.xMax = std::min(shown.xMax + sx, std::max(full.xMin, full.xMax));
        next.yMin = std::max(shown.yMin - sy, std::min(full.yMin, full.yMax));
        next.yMax = std::min(shown.yMax + sy, std::max(full.yMin, full.yMax));
    }
    if (!(next.xMax - next.xMin >= sx) || !(next.yMax - next.yMin >= sy)) return std::nullopt;
    return next;
}

}  // namespace vexplot
