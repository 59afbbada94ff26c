#pragma once
#include <cstdint>
#include <string>

#include "annotations/AnnotationDialog.h"
#include "model/LogicalFont.h"

namespace vexplot {

class CGD_Label;

// "Label Properties": "Text:", "Append Coordinates", "Font...",
// "Coordinates:" X, Y, Z (the anchor) and "Style:" ("Decimal",
// "Exponential", "Engineering", "Base10").
class LabelDialog final : public AnnotationDialog {
public:
    static constexpr const char* kStyleNames[4] = {"Decimal", "Exponential", "Engineering", "Base10"};

    explicit LabelDialog(CGD_Label& label);
    std::string_view DialogName() const override { return "LabelProperties"; }
    const char* Caption() const override { return "Label Properties"; }
    // Style 0..3; a font needs a face and a height of 1 to 500 pixels.
    bool Accept(std::string* error) override;
    // The text the label will show with the fields as they are now.
    std::string Preview() const;

    std::string text;
    bool appendCoordinates;
    LogicalFont font;
    double x, y, z;
    int32_t style;

private:
    CGD_Label& label_;
};

}  // namespace vexplot
