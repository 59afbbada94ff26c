#pragma once
#include <cstdint>
#include <string>

#include "annotations/AnnotationDialog.h"

namespace vexplot {

class CGD_Marker;

// "Marker Properties": the anchor ("&X:", "&Y:", "&Z:"), "Marker &Label:"
// (the caption), "Draw &Lines" and the "&Color" button.
class MarkerDialog final : public AnnotationDialog {
public:
    explicit MarkerDialog(CGD_Marker& marker);
    std::string_view DialogName() const override { return "MarkerProperties"; }
    const char* Caption() const override { return "Marker Properties"; }
    bool Accept(std::string* error) override;

    double x, y, z;
    std::string label;
    bool drawLines;
    uint32_t color;

private:
    CGD_Marker& marker_;
};

}  // namespace vexplot
