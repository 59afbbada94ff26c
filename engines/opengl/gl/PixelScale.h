#pragma once
#include <cmath>
#include <cstdint>

#include "engine/IGraphEngine.h"

namespace vexplot {

// Turns the lengths the engine chooses in logical pixels (text heights, line
// widths, gaps, margins) into the physical pixels of one target, whose pixel
// ratio says how many physical pixels make a logical one. A ratio of 1
// leaves every length as it is, so pictures at ratio 1 stay bit-identical.
class PixelScale {
public:
    // The text height a FontDescription of height 0 stands for.
    static constexpr int32_t kDefaultFontHeight = 12;

    PixelScale() = default;
    explicit PixelScale(double ratio) : ratio_(ratio > 0 && std::isfinite(ratio) ? ratio : 1.0) {}
    explicit PixelScale(const ImageBuffer& target) : ratio_(PixelRatio(target)) {}

    double Ratio() const { return ratio_; }
    double operator()(double logical) const { return logical * ratio_; }
    float operator()(float logical) const { return logical * static_cast<float>(ratio_); }
    // Whole pixels, rounded: margins and rectangle edges.
    int32_t Pixels(int32_t logical) const { return static_cast<int32_t>(std::lround(logical * ratio_)); }

    // The font with its height in physical pixels. The sign keeps its
    // meaning (negative: em height, positive: cell height); 0, the default
    // height, becomes an explicit em height.
    FontDescription Font(const FontDescription& font) const {
        if (ratio_ == 1.0) return font;
        FontDescription scaled = font;
        const int32_t logical = font.height != 0 ? font.height : -kDefaultFontHeight;
        const int32_t physical = static_cast<int32_t>(std::lround(logical * ratio_));
        scaled.height = physical != 0 ? physical : (logical < 0 ? -1 : 1);
        return scaled;
    }

private:
    double ratio_ = 1.0;
};

}  // namespace vexplot
