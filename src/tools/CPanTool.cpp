#include "tools/CPanTool.h"

#include "tools/ToolIconMenu.h"

namespace vexplot {

CPanTool::CPanTool(IToolContext& context) : CTool(context, ToolIconMenu::kPan) { help_ = HelpString(kHelpPan); }

void CPanTool::ButtonDown(PixelPoint, const MouseEvent& event) {
    dragging_ = event.button == MouseEvent::Button::Left;
}

void CPanTool::MouseMove(PixelPoint pixel, const MouseEvent&) {
    const int32_t dx = pixel.x - last_.x;
    const int32_t dy = pixel.y - last_.y;
    if (dragging_ && (dx || dy)) context_.PanBy(dx, dy);
}

void CPanTool::ButtonUp(PixelPoint) {
    if (dragging_) context_.EndMotion();
    dragging_ = false;
}

void CPanTool::Cancel() { ButtonUp({}); }

}  // namespace vexplot
