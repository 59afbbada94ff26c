#include "tools/CTracerTool.h"

#include "tools/ToolIconMenu.h"

namespace vexplot {

CTracerTool::CTracerTool(IToolContext& context, bool difference)
    : CTool(context, difference ? ToolIconMenu::kDifferenceTracer : ToolIconMenu::kTracer), difference_(difference) {
    help_ = HelpString(difference ? kHelpDiffTracer : kHelpTracer);
}

void CTracerTool::Activate() {
    context_.SetHelpText(difference_ ? kDiffStatus : help_.c_str());
    DataRect shown{}, full{};
    // The tracer starts in the middle of the visible range; the first move
    // puts it on the surface.
    if (context_.VisibleRange(&shown, &full))
        Ensure({(shown.xMin + shown.xMax) / 2, (shown.yMin + shown.yMax) / 2, kNoSurfaceZ});
}

void CTracerTool::Deactivate() {
    if (current_) context_.Delete(current_);
    current_ = nullptr;
    context_.Redraw();
}

// Data may arrive after the tool was chosen: the tracer is made then.
bool CTracerTool::Ensure(const Point3& at) {
    if (!current_) current_ = context_.Create(difference_ ? ToolAnnotation::DiffTracer : ToolAnnotation::Tracer, at);
    return current_ != nullptr;
}

void CTracerTool::MouseMove(PixelPoint pixel, const MouseEvent&) {
    Point3 at{};
    if (!PointAt(pixel, &at) || !Ensure(at)) return;
    context_.Move(current_, at);
    context_.Redraw();
}

void CTracerTool::ButtonDown(PixelPoint pixel, const MouseEvent& event) {
    Point3 at{};
    if (!difference_ || event.button != MouseEvent::Button::Left || !PointAt(pixel, &at) || !Ensure(at)) return;
    context_.SetFixedPoint(current_, at);
    context_.Redraw();
}

void CTracerTool::DoubleClick(PixelPoint pixel) {
    Point3 at{};
    if (!PointAt(pixel, &at) || !Ensure(at)) return;
    if (difference_) {
        if (context_.ShowProperties(current_)) context_.Redraw();
    } else if (context_.Create(ToolAnnotation::Marker, at)) {
        context_.Redraw();
    }
}

}  // namespace vexplot
