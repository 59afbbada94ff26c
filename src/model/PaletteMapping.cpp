#include "model/PaletteMapping.h"

#include <cmath>

namespace vexplot {

PaletteMapping::PaletteMapping(double min, double max, std::span<const uint32_t> colors)
    : halfMin_(min / 2),
      halfSpan_(max / 2 - min / 2),
      usable_(!colors.empty() && std::isfinite(min) && std::isfinite(max)),
      colors_(colors) {}

std::optional<size_t> PaletteMapping::IndexOf(double value) const {
    if (!usable_ || std::isnan(value)) return std::nullopt;
    if (halfSpan_ == 0) return 0;
    const double count = static_cast<double>(colors_.size());
    // Compared in double before the conversion, which would be undefined
    // for infinities and huge values.
    const double bin = std::floor((value / 2 - halfMin_) / halfSpan_ * count);
    if (!(bin > 0)) return 0;
    if (bin >= count) return colors_.size() - 1;
    return static_cast<size_t>(bin);
}

std::optional<uint32_t> PaletteMapping::ColorOf(double value) const {
    const std::optional<size_t> index = IndexOf(value);
    if (!index) return std::nullopt;
    return colors_[*index];
}

}  // namespace vexplot
