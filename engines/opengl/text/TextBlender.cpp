#include "opengl/text/TextBlender.h"

#include <algorithm>
#include <cmath>

namespace vexplot {

namespace {

// sRGB <-> linear light: 8-bit sRGB to 16-bit linear, and 12-bit linear back.
struct GammaTables {
    std::array<uint16_t, 256> toLinear{};
    std::array<uint8_t, 4096> toSrgb{};
    GammaTables() {
        for (int i = 0; i < 256; ++i) {
            const double c = i / 255.0;
            const double l = c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
            toLinear[size_t(i)] = uint16_t(std::lround(l * 65535.0));
        }
        for (int i = 0; i < 4096; ++i) {
            const double l = (i + 0.5) / 4096.0;
            const double c = l <= 0.0031308 ? l * 12.92 : 1.055 * std::pow(l, 1.0 / 2.4) - 0.055;
            toSrgb[size_t(i)] = uint8_t(std::clamp<long>(std::lround(c * 255.0), 0, 255));
        }
    }
};

const GammaTables& Gamma() {
    static const GammaTables tables;
    return tables;
}

}  // namespace

TextBlender::TextBlender() { SetColor(0); }

void TextBlender::SetColor(uint32_t color) {
    color &= 0x00FFFFFF;
    if (color == color_ && memoDst_ != 0xFFFFFFFF) return;
    color_ = color;
    const GammaTables& g = Gamma();
    for (int c = 0; c < 3; ++c) source_[size_t(c)] = g.toLinear[(color >> (8 * c)) & 0xFF];
    memoDst_ = 0xFFFFFFFF;
    known_.fill(0);
}

uint32_t TextBlender::Compute(uint32_t dst, uint32_t coverage) const {
    const GammaTables& g = Gamma();
    uint32_t out = 0;
    for (int c = 0; c < 3; ++c) {
        const uint32_t d = g.toLinear[(dst >> (8 * c)) & 0xFF];
        const uint32_t l = (source_[size_t(c)] * coverage + d * (255 - coverage)) / 255;
        out |= uint32_t(g.toSrgb[l >> 4]) << (8 * c);
    }
    return out;
}

}  // namespace vexplot
