#include "annotations/CGD_DiffTracer.h"

#include <cmath>

#include "annotations/CoordinateText.h"
#include "annotations/DiffTracerDialog.h"
#include "model/ArchiveClass.h"
#include "model/IViewHost.h"
#include "site/IControlSite.h"

namespace vexplot {

CGD_DiffTracer::CGD_DiffTracer() : CGD_Annotation(AnnotationKind::Tracer) {}

CGD_DiffTracer::~CGD_DiffTracer() = default;

const ArchiveClass& CGD_DiffTracer::RuntimeClass() {
    static const ArchiveClass cls("CGD_DiffTracer", 1, [] { return std::make_unique<CGD_DiffTracer>(); });
    return cls;
}

void CGD_DiffTracer::Serialize(CArchive&) {}

// -- texts --

std::string CGD_DiffTracer::FixedLine() const { return CoordinateText::Join({"\tFixed: ", CoordinateTriple(x_, y_, z_, true)}); }

std::string CGD_DiffTracer::CurrentLine() const {
    if (!tracing_) return "\tCurrent: X(-) Y(-) Z(-)";
    return CoordinateText::Join({"\tCurrent: ", CoordinateTriple(current_.x, current_.y, current_.z, true)});
}

std::string CGD_DiffTracer::DeltaLine() const {
    if (!tracing_) return "\tDelta: X(-) Y(-) Z(-)";
    const CoordinateOrder order = CoordinateText::OrderOfMode(ViewMode1D());
    const bool noZ = z_ == NoZValue || current_.z == NoZValue;
    if (order == CoordinateOrder::XYZ)
        return CoordinateText::Join(
            {"\tDelta: ", CoordinateText::Triple(order, current_.x - x_, current_.y - y_, noZ ? NoZValue : current_.z - z_,
                                                  true)});
    // The section's cut is the same for both points.
    const bool noValue = y_ == NoZValue || current_.y == NoZValue;
    return CoordinateText::Join(
        {"\tDelta: ", CoordinateText::Triple(order, current_.x - x_, noValue ? NoZValue : current_.y - y_, 0.0, true)});
}

std::string CGD_DiffTracer::DistanceLine() const {
    return tracing_ ? CoordinateText::Join({"\tDistance: ", CoordinateText::Fixed(Distance())}) : std::string("\tDistance: -");
}

double CGD_DiffTracer::Distance() const {
    const double dx = x_ - current_.x, dy = y_ - current_.y;
    return std::sqrt(dx * dx + dy * dy);
}

// -- info window --

void CGD_DiffTracer::AttachInfoWindow(IInfoWindow* window) {
    info_ = window;
    if (window) OpenInfoSection(InfoKind::DiffTracer, "DeltaTracer:", {FixedLine(), CurrentLine(), DeltaLine(), DistanceLine()});
}

void CGD_DiffTracer::RemoveFromInfoWindow() { CloseInfoSection(); }

void CGD_DiffTracer::SetPosition(double x, double y, double z) {
    CGD_Annotation::SetPosition(x, y, ActiveGraph() ? SurfaceZ(x, y, z) : z);
    SetInfoLine(1, FixedLine());
}

void CGD_DiffTracer::SetCurrent(double x, double y, double z) {
    current_ = {x, y, z};
    tracing_ = true;
}

void CGD_DiffTracer::ClearCurrent() {
    tracing_ = false;
    SetInfoLine(2, CurrentLine());
    SetInfoLine(3, DeltaLine());
    SetInfoLine(4, DistanceLine());
}

void CGD_DiffTracer::Draw() {
    SetInfoLine(2, CurrentLine());
    SetInfoLine(3, DeltaLine());
    SetInfoLine(4, DistanceLine());
    DrawPath();
}

void CGD_DiffTracer::DrawPath() {
    const Point3 fixed{x_, y_, z_ == NoZValue ? 0.0 : z_};
    if (In3D()) {
        projection_->AddOverlaySymbol(&fixed, PointStyle::Cross, 12.0f, color_);
        if (!tracing_ || !drawLine_ || current_.z == NoZValue) return;
        const Point3 path[] = {fixed, current_};
        projection_->AddOverlayStroke(2, path, color_, OverlayStroke::Dashed, 1.5f, false);
        return;
    }
    int32_t fx = 0, fy = 0, cx = 0, cy = 0;
    if (!view_ || FAILED(view_->DataToClient(x_, y_, &fx, &fy))) return;
    view_->AddOverlaySymbol(fx + 0.5, fy + 0.5, PointStyle::Cross, 12.0f, color_);
    if (!tracing_ || !drawLine_ || FAILED(view_->DataToClient(current_.x, current_.y, &cx, &cy))) return;
    const double path[] = {fx + 0.5, fy + 0.5, cx + 0.5, cy + 0.5};
    view_->AddOverlayLines(2, path, color_, OverlayStroke::Dashed, 1.5f, false);
}

bool CGD_DiffTracer::ShowProperties() {
    if (!owner_) return false;
    DiffTracerDialog dialog(*this);
    const bool accepted = owner_->RunDialog(dialog) == kAnswerOk;
    // The fixed point may have moved.
    SetInfoLine(1, FixedLine());
    if (accepted) RefreshOwner();
    return accepted;
}

}  // namespace vexplot
