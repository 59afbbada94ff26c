#include "tools/CSelectTool.h"

#include "tools/ToolIconMenu.h"

namespace vexplot {

CSelectTool::CSelectTool(IToolContext& context) : CTool(context, ToolIconMenu::kSelect) {
    help_ = HelpString(kHelpSelect);
}

void CSelectTool::Activate() {
    current_ = context_.Selected();
    context_.SetHelpText(help_);
}

void CSelectTool::Select(CGD_Annotation* annotation) {
    if (current_ == annotation) return;
    if (current_) context_.SetSelected(current_, false);
    current_ = annotation;
    if (current_) context_.SetSelected(current_, true);
    context_.SetCursor(CursorShape::Arrow);
    context_.Redraw();
}

void CSelectTool::ButtonDown(PixelPoint pixel, const MouseEvent& event) {
    const bool pan = event.button == MouseEvent::Button::Right ||
                     (event.button == MouseEvent::Button::Left && (event.modifiers & kModShift));
    if (event.button != MouseEvent::Button::Left && !pan) return;
    CGD_Annotation* hit = pan ? nullptr : context_.HitTest(pixel);
    if (hit) {
        Select(hit);
        drag_ = context_.PositionOf(hit, &origin_) ? Drag::Object : Drag::None;
    } else {
        if (!pan) Select(nullptr);
        drag_ = pan ? Drag::Pan : context_.Is3D() ? Drag::Turn : Drag::None;
    }
    dragging_ = drag_ != Drag::None;
}

void CSelectTool::MouseMove(PixelPoint pixel, const MouseEvent&) {
    if (!dragging_) return;
    const int32_t dx = pixel.x - last_.x;
    const int32_t dy = pixel.y - last_.y;
    Point3 point{};
    switch (drag_) {
        case Drag::Object:
            if (current_ && PointAt(pixel, &point)) {
                context_.Move(current_, point);
                moved_ = true;
            }
            break;
        case Drag::Turn:
            if (dx || dy) context_.TurnBy(dx, dy);
            break;
        case Drag::Pan:
            if (dx || dy) context_.PanBy(dx, dy);
            break;
        case Drag::None: break;
    }
}

void CSelectTool::ButtonUp(PixelPoint) {
    if (drag_ == Drag::Turn || drag_ == Drag::Pan) context_.EndMotion();
    if (drag_ == Drag::Object && moved_ && current_) context_.Finished(current_);
    moved_ = false;
    drag_ = Drag::None;
    dragging_ = false;
}

void CSelectTool::Cancel() {
    if (drag_ == Drag::Object && current_) context_.Move(current_, origin_);
    moved_ = false;
    if (drag_ == Drag::Turn || drag_ == Drag::Pan) context_.EndMotion();
    drag_ = Drag::None;
    dragging_ = false;
}

void CSelectTool::DoubleClick(PixelPoint pixel) {
    CGD_Annotation* hit = context_.HitTest(pixel);
    if (!hit) return;
    Select(hit);
    if (context_.ShowProperties(hit)) context_.Redraw();
}

void CSelectTool::Key(int32_t key) {
    // The selection may have gone meanwhile (deleted by the host).
    if (current_ != context_.Selected()) current_ = context_.Selected();
    if (key == vk::kDelete && current_) {
        CGD_Annotation* gone = current_;
        current_ = nullptr;
        context_.Delete(gone);
        context_.Redraw();
    } else if (key == vk::kTab) {
        CGD_Annotation* next = context_.Next(current_);
        if (current_) context_.SetSelected(current_, false);
        current_ = next;
        if (current_) context_.SetSelected(current_, true);
        context_.SetCursor(CursorShape::Arrow);
        context_.Redraw();
    } else if (key == vk::kReturn && current_) {
        if (context_.ShowProperties(current_)) context_.Redraw();
    }
    if (current_) context_.PassKey(current_, key);
}

}  // namespace vexplot
