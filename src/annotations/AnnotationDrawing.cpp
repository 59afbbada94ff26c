#include "annotations/AnnotationDrawing.h"

namespace vexplot {

void AnnotationDrawing::SelectionFrame(IGraphDevice2D& device, int32_t left, int32_t top, int32_t right,
                                       int32_t bottom) {
    const OverlayBox frame{{left, top, right, bottom}, kSelectionColor, static_cast<int32_t>(OverlayStroke::Dashed),
                           static_cast<int32_t>(OverlayFill::None), 2, 1.0f, 0};
    device.AddOverlayBox(&frame);
}

void AnnotationDrawing::Caption(IGraphDevice2D& device, double x, double y, const std::string& text,
                                uint32_t color) {
    const OverlayTextBox style{color, kOverlayNoColor, kOverlayNoColor, 0};
    device.AddOverlayTextBox(x, y, text.c_str(), nullptr, &style);
}

void AnnotationDrawing::MarkerIndicator(IGraphDevice2D& device, int32_t right, int32_t yz, uint32_t color,
                                        bool selected, const std::string& name) {
    const double tip = right + 2.5, base = right + 11.5, y = yz + 0.5;
    const double triangle[] = {tip, y, base, y - 5, base, y + 5};
    device.AddOverlayLines(3, triangle, selected ? kSelectionColor : color, OverlayStroke::Solid,
                           selected ? 2.0f : 1.0f, true);
    // The name goes left of the tip, over the image's edge, where the
    // colour scale's own numbers are not.
    Caption(device, right - 12.0, y - 16.0, name, color);
}

void AnnotationDrawing::RegionIndicator(IGraphDevice2D& device, int32_t right, int32_t yz, uint32_t color,
                                        bool selected) {
    const OverlayBox bar{{right + 3, yz - 2, right + 13, yz + 3},
                         selected ? kSelectionColor : color,
                         static_cast<int32_t>(OverlayStroke::Solid),
                         static_cast<int32_t>(OverlayFill::Solid),
                         1,
                         1.0f,
                         0};
    device.AddOverlayBox(&bar);
}

}  // namespace vexplot
