#pragma once
#include <array>
#include <cstdint>

namespace vexplot {

// Blends a text colour over pixels (0x00BBGGRR) by 8-bit coverage in linear
// light, which keeps the stems' apparent weight the same on light and dark
// backgrounds. Texts mostly lie on a plain background, so the blends over
// the last destination colour are remembered per coverage value: most
// pixels then cost one table look-up. The memo lives as long as the colour.
class TextBlender {
public:
    TextBlender();
    void SetColor(uint32_t color);

    uint32_t Blend(uint32_t dst, uint32_t coverage) {
        if (coverage == 255) return color_;
        dst &= 0x00FFFFFF;
        if (dst != memoDst_) {
            memoDst_ = dst;
            known_.fill(0);
        }
        uint64_t& word = known_[coverage >> 6];
        const uint64_t bit = uint64_t(1) << (coverage & 63);
        if (!(word & bit)) {
            memo_[coverage] = Compute(dst, coverage);
            word |= bit;
        }
        return memo_[coverage];
    }

private:
    uint32_t Compute(uint32_t dst, uint32_t coverage) const;

    uint32_t color_ = 0;
    std::array<uint32_t, 3> source_{};  // the colour's channels in linear light, 0..65535
    uint32_t memoDst_ = 0xFFFFFFFF;    // no pixel has this value: the memo starts empty
    std::array<uint64_t, 4> known_{};  // which memo_ entries hold a blend
    std::array<uint32_t, 256> memo_{};
};

}  // namespace vexplot
