#include "annotations/MarkerDialog.h"

#include "annotations/CGD_Marker.h"

namespace vexplot {

MarkerDialog::MarkerDialog(CGD_Marker& marker)
    : x(marker.GetX()),
      y(marker.GetY()),
      z(marker.GetZ()),
      label(marker.GetCaption()),
      drawLines(marker.DrawLines()),
      color(marker.Color()),
      marker_(marker) {}

bool MarkerDialog::Accept(std::string* error) {
    if (!CheckFinite({x, y, z}, "the position", error)) return false;
    marker_.SetPosition(x, y, z);
    marker_.SetCaption(label);
    marker_.SetDrawLines(drawLines);
    marker_.SetColor(color);
    return true;
}

}  // namespace vexplot
