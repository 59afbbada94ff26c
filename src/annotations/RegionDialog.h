#pragma once
#include <cstdint>
#include <string>

#include "annotations/AnnotationDialog.h"

namespace vexplot {

class CGD_Region;

// "Region property": " Top left corner " X, Y, Z and " Bottom right corner "
// X, Y, Z, "Color:", "Spacing:" and "Style: " ("Dots", "Lines", "Invert",
// "Logo").
class RegionDialog final : public AnnotationDialog {
public:
    static constexpr const char* kStyleNames[4] = {"Dots", "Lines", "Invert", "Logo"};

    explicit RegionDialog(CGD_Region& region);
    std::string_view DialogName() const override { return "RegionProperties"; }
    const char* Caption() const override { return "Region property"; }
    // Spacing 1..100 pixels; style 0..3.
    bool Accept(std::string* error) override;

    double x1, y1, z1, x2, y2, z2;
    uint32_t color;
    int32_t spacing;
    int32_t style;

private:
    CGD_Region& region_;
};

}  // namespace vexplot
