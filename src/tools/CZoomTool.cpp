#include "tools/CZoomTool.h"

#include <algorithm>
#include <cstdlib>

#include "tools/ToolIconMenu.h"
#include "tools/ZoomStep.h"

namespace vexplot {

CZoomTool::CZoomTool(IToolContext& context) : CTool(context, ToolIconMenu::kZoom) { help_ = HelpString(kHelpZoom); }

void CZoomTool::ButtonDown(PixelPoint pixel, const MouseEvent& event) {
    if (event.button != MouseEvent::Button::Left || !PointAt(pixel, &start_)) return;
    startPixel_ = pixel;
    end_ = start_;
    current_ = context_.Create(ToolAnnotation::RubberBand, start_);
    dragging_ = true;
}

void CZoomTool::MouseMove(PixelPoint pixel, const MouseEvent&) {
    if (!dragging_ || !PointAt(pixel, &end_)) return;
    if (current_) context_.Span(current_, end_);
    context_.Redraw();
}

void CZoomTool::ButtonUp(PixelPoint pixel) {
    if (!dragging_) return;
    Point3 end{};
    if (PointAt(pixel, &end)) end_ = end;
    const bool wide = std::abs(pixel.x - startPixel_.x) >= kMinDragPixels &&
                      std::abs(pixel.y - startPixel_.y) >= kMinDragPixels;
    Cancel();
    if (!wide || start_.x == end_.x || start_.y == end_.y) return;
    const DataRect range{std::min(start_.x, end_.x), std::max(start_.x, end_.x), std::min(start_.y, end_.y),
                         std::max(start_.y, end_.y)};
    context_.SetVisibleRange(&range);
}

void CZoomTool::Cancel() {
    if (current_) context_.Delete(current_);
    current_ = nullptr;
    dragging_ = false;
    context_.Redraw();
}

void CZoomTool::Key(int32_t key) {
    if (key == kKeyZoomAll) context_.SetVisibleRange(nullptr);
    else if (key == kKeyZoomIn) Step(true);
    else if (key == kKeyZoomOut) Step(false);
}

void CZoomTool::Step(bool in) {
    DataRect shown{}, full{};
    double sx = 0, sy = 0;
    if (!context_.VisibleRange(&shown, &full)) return;
    context_.ZoomSteps(&sx, &sy);
    if (const auto next = ZoomStep::Next(shown, full, sx, sy, in)) context_.SetVisibleRange(&*next);
}

}  // namespace vexplot
