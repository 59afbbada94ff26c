#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace vexplot {

// Paints data values with a palette's colours: the value range [min, max]
// (the control's PaletteMinVal and PaletteMaxVal) is cut into as many equal
// bins as the list has colours, and a value takes the colour of its bin:
//
//     index = floor((v - min) / (max - min) * count), clamped to 0 .. count - 1
//
// so min takes index 0, max the last index (the top bin is closed), and
// values outside the range take the colour of the end they lie beyond.
// The range is directed: with min above max the list runs the other way
// (min still takes index 0). When min equals max every value takes index 0.
//
// No colour: for NaN, for an empty list, and for a range with an end that is
// NaN or infinite. Infinite values clamp like any value outside the range.
// Ranges as wide as the whole of double (-DBL_MAX .. DBL_MAX) work: the
// arithmetic runs on halved values so that differences cannot overflow.
class PaletteMapping {
public:
    // `colors` is borrowed (a palette's Colors()) and must outlive the mapping.
    PaletteMapping(double min, double max, std::span<const uint32_t> colors);

    std::optional<size_t> IndexOf(double value) const;
    std::optional<uint32_t> ColorOf(double value) const;

private:
    double halfMin_;
    double halfSpan_;  // (max - min) / 2; 0 when min == max
    bool usable_;      // a list with colours and a range with finite ends
    std::span<const uint32_t> colors_;
};

}  // namespace vexplot
