#pragma once
#include <cstdint>
#include <optional>

#include "engine/IGraphEngine.h"

namespace vexplot {

// The keypad zoom of the Zoom tool, as plain arithmetic.
struct ZoomStep {
    // One graph object's step along an axis spanning `min`..`max` with `n`
    // samples: ten samples' worth, or the whole range for 10 samples or
    // fewer.
    static double StepSize(double min, double max, int32_t n);

    // The visible range after one step in (`in`) or out, from the visible
    // range `shown`, the data range `full` and the steps `sx`, `sy`: in
    // shrinks each end by half a step, out widens each end by a step but
    // not beyond the data. Nothing (no change) when a new width would fall
    // below its step, or when a step is not positive.
    static std::optional<DataRect> Next(const DataRect& shown, const DataRect& full, double sx, double sy, bool in);
};

}  // namespace vexplot
