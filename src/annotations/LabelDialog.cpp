#include "annotations/LabelDialog.h"

#include <algorithm>
#include <cstdlib>

#include "annotations/CGD_Label.h"

namespace vexplot {

LabelDialog::LabelDialog(CGD_Label& label)
    : text(label.GetCaption()),
      appendCoordinates(label.AppendCoordinates()),
      font(label.Font()),
      x(label.GetX()),
      y(label.GetY()),
      z(label.GetZ()),
      style(label.Style()),
      label_(label) {}

bool LabelDialog::Accept(std::string* error) {
    if (!CheckFinite({x, y, z}, "the coordinates", error)) return false;
    if (style < 0 || style > 3) {
        if (error) *error = "Please choose a style.";
        return false;
    }
    if (font.face.empty() || std::abs(font.height) < 1 || std::abs(font.height) > 500) {
        if (error) *error = "Please choose a font of 1 to 500 pixels.";
        return false;
    }
    label_.SetCaption(text);
    label_.SetAppendCoordinates(appendCoordinates);
    label_.SetFont(font);
    label_.SetPosition(x, y, z);
    label_.SetStyle(static_cast<int16_t>(style));
    return true;
}

std::string LabelDialog::Preview() const {
    CGD_Label preview;
    preview.SetCaption(text);
    preview.SetAppendCoordinates(appendCoordinates);
    preview.SetPosition(x, y, z);
    preview.SetStyle(static_cast<int16_t>(std::clamp(style, 0, 3)));
    preview.SetMarkupFlag(label_.MarkupFlag());
    return preview.Text();
}

}  // namespace vexplot
