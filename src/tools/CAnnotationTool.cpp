#include "tools/CAnnotationTool.h"

#include <cstdlib>

#include "tools/ToolIconMenu.h"

namespace vexplot {

CAnnotationTool::CAnnotationTool(IToolContext& context, int32_t command, ToolAnnotation kind)
    : CTool(context, command), kind_(kind) {
    // Labels and regions have no help text of their own: their command's
    // prompt stands in.
    help_ = kind == ToolAnnotation::Marker ? HelpString(kHelpMarker)
            : kind == ToolAnnotation::Label ? "Label"
                                            : "Region";
}

void CAnnotationTool::Activate() { context_.SetHelpText(help_); }

void CAnnotationTool::ButtonDown(PixelPoint pixel, const MouseEvent& event) {
    if (event.button != MouseEvent::Button::Left) return;
    if (CGD_Annotation* hit = context_.HitTest(pixel); hit && context_.PositionOf(hit, &origin_)) {
        current_ = hit;
        created_ = false;
    } else {
        Point3 at{};
        if (!PointAt(pixel, &at)) return;
        current_ = context_.Create(kind_, at);
        if (!current_) return;
        created_ = true;
    }
    startPixel_ = pixel;
    dragging_ = true;
    context_.Redraw();
}

void CAnnotationTool::MouseMove(PixelPoint pixel, const MouseEvent&) {
    Point3 at{};
    if (!dragging_ || !current_ || !PointAt(pixel, &at)) return;
    if (created_ && kind_ == ToolAnnotation::Region)
        context_.Span(current_, at);
    else
        context_.Move(current_, at);
    moved_ = true;
    context_.Redraw();
}

void CAnnotationTool::ButtonUp(PixelPoint pixel) {
    if (!dragging_) return;
    dragging_ = false;
    const bool tiny = std::abs(pixel.x - startPixel_.x) < kMinRegionPixels ||
                      std::abs(pixel.y - startPixel_.y) < kMinRegionPixels;
    if (created_ && kind_ == ToolAnnotation::Region && tiny) {
        context_.Delete(current_);
        current_ = nullptr;
    } else if (current_ && (created_ || moved_)) {
        context_.Finished(current_);
    }
    moved_ = false;
    created_ = false;
    context_.Redraw();
}

void CAnnotationTool::Cancel() {
    if (current_) {
        if (created_) {
            context_.Delete(current_);
            current_ = nullptr;
        } else {
            context_.Move(current_, origin_);
        }
    }
    created_ = false;
    moved_ = false;
    dragging_ = false;
    context_.Redraw();
}

void CAnnotationTool::DoubleClick(PixelPoint pixel) {
    // The press before the double click made or moved an annotation: the
    // double click is about the one under the cursor.
    if (CGD_Annotation* hit = context_.HitTest(pixel))
        if (context_.ShowProperties(hit)) context_.Redraw();
}

}  // namespace vexplot
