#include "annotations/RegionDialog.h"

#include "annotations/CGD_Region.h"

namespace vexplot {

RegionDialog::RegionDialog(CGD_Region& region)
    : x1(region.GetX()),
      y1(region.GetY()),
      z1(region.GetZ()),
      x2(region.GetX2()),
      y2(region.GetY2()),
      z2(region.GetZ2()),
      color(region.Color()),
      spacing(region.Spacing()),
      style(region.Style()),
      region_(region) {}

bool RegionDialog::Accept(std::string* error) {
    if (!CheckFinite({x1, y1, z1}, "the top left corner", error)) return false;
    if (!CheckFinite({x2, y2, z2}, "the bottom right corner", error)) return false;
    if (spacing < 1 || spacing > 100) {
        if (error) *error = "Please enter a spacing between 1 and 100.";
        return false;
    }
    if (style < CGD_Region::kStyleDots || style > CGD_Region::kStyleLogo) {
        if (error) *error = "Please choose a style.";
        return false;
    }
    region_.SetPosition(x1, y1, z1);
    region_.SetSecondCorner(x2, y2, z2);
    region_.SetColor(color);
    region_.SetSpacing(static_cast<int16_t>(spacing));
    region_.SetStyle(style);
    return true;
}

}  // namespace vexplot
