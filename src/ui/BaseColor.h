#pragma once
#include <cstdint>

namespace vexplot {

// One base colour of the palette editor: a colour pinned at a position in
// percent of the palette (0 ... 100; the built-in banded lists reach 104).
struct BaseColor {
    uint32_t color = 0;     // 0x00BBGGRR
    int32_t position = 0;   // percent
    friend bool operator==(const BaseColor&, const BaseColor&) = default;
};

}  // namespace vexplot
