#include "annotations/CGD_Marker.h"

#include <cmath>

#include "annotations/AnnotationDrawing.h"
#include "annotations/CoordinateText.h"
#include "annotations/MarkerDialog.h"
#include "model/ArchiveClass.h"
#include "model/CArchive.h"
#include "model/IViewHost.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

// Half the symbol's size and the reach of its hit rectangle in 3-D.
constexpr int32_t kSymbolSize = 11;
constexpr int32_t kHit3D = 4;
constexpr int32_t kHitFlat = 3;

}  // namespace

CGD_Marker::CGD_Marker() : CGD_Annotation(AnnotationKind::Marker) { caption_ = "Marker"; }

CGD_Marker::~CGD_Marker() = default;

const ArchiveClass& CGD_Marker::RuntimeClass() {
    static const ArchiveClass cls("CGD_Marker", 1, [] { return std::make_unique<CGD_Marker>(); });
    return cls;
}

void CGD_Marker::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive.WriteDouble(x_);
        archive.WriteDouble(y_);
        archive.WriteDouble(z_);
        archive.WriteUInt32(color_);
        archive.WriteString(caption_);
        archive.WriteInt32(selected_);
        archive.WriteInt32(kind_);
        archive.WriteUInt32(static_cast<uint32_t>(drawLines_));
        archive.WriteString(name_);
        archive.WriteUInt32(value_);
        return;
    }
    x_ = archive.ReadDouble("marker x");
    y_ = archive.ReadDouble("marker y");
    z_ = archive.ReadDouble("marker z");
    color_ = archive.ReadUInt32("marker colour");
    caption_ = archive.ReadString("marker caption");
    selected_ = archive.ReadInt32("marker selected flag");
    kind_ = archive.ReadInt32("marker kind");
    drawLines_ = archive.ReadUInt32("marker draw-lines flag") != 0 ? 1 : 0;
    name_ = archive.ReadString("marker name");
    value_ = archive.ReadUInt32("marker value");
}

// -- texts --

std::string CGD_Marker::InfoLine() const { return CoordinateText::Join({"\t", CoordinateTriple(x_, y_, z_, false)}); }

std::string CGD_Marker::GetDescription() {
    description_ = CoordinateText::Join({"Marker ", name_, ":\n\tX(", CoordinateText::Fixed(x_), ") Y(",
                                         CoordinateText::Fixed(y_), ") Z(", CoordinateText::Fixed(z_), ")\n"});
    return description_;
}

void CGD_Marker::AttachInfoWindow(IInfoWindow* window) {
    info_ = window;
    if (window) OpenInfoSection(InfoKind::Marker, Title(), {InfoLine()});
}

void CGD_Marker::UpdateInfoWindow() {
    if (!info_ || infoEntry_ == kNoSection) return;
    info_->SetHeader(infoEntry_, Title(), 0);
    SetInfoLine(infoLine_, InfoLine());
}

void CGD_Marker::RemoveFromInfoWindow() { CloseInfoSection(); }

std::string CGD_Marker::Title() const { return CoordinateText::Join({"Marker ", name_, ":"}); }

// -- position --

void CGD_Marker::SetPosition(double x, double y, double z) {
    CGD_Annotation::SetPosition(x, y, z);
    UpdateScreenPoint();
}

void CGD_Marker::UpdateScreenPoint() {
    if (!view_) return;
    int32_t px = 0, py = 0;
    if (SUCCEEDED(view_->DataToClient(x_, y_, &px, &py))) {
        screenX_ = px;
        screenY_ = py;
    }
}

void CGD_Marker::DragTo(int32_t x, int32_t y) {
    Point3 point{};
    if (!PointAt(x, y, &point)) return;
    // The flat view has no Z of its own: the marker keeps the surface's.
    SetPosition(point.x, point.y, In3D() ? point.z : SurfaceZ(point.x, point.y, z_));
    UpdateInfoWindow();
}

// -- hit tests --

bool CGD_Marker::IndicatorY(const PixelRect& plot, int32_t* yz) const {
    double zmin = 0, zmax = 0;
    // The section view has no colour scale to stand beside.
    if (ViewMode1D() != 0 || !CurrentZRange(&zmin, &zmax)) return false;
    const double offset = (zmax - z_) / (zmax - zmin) * (plot.bottom - plot.top);
    if (!std::isfinite(offset)) return false;
    *yz = plot.top + static_cast<int32_t>(std::trunc(offset));
    return true;
}

bool CGD_Marker::HitTest(int32_t x, int32_t y) {
    if (In3D()) {
        int32_t px = 0, py = 0;
        if (FAILED(projection_->ProjectPoint(x_, y_, z_, &px, &py))) return false;
        return x >= px - kHit3D && x < px + kHit3D && y >= py - kHit3D && y < py + kHit3D;
    }
    if (!view_) return false;
    const int32_t mx = screenX_, my = screenY_;
    if (mx - kHitFlat < x && x < mx + kHitFlat && my - kHitFlat < y && y < my + kHitFlat) return true;
    return HitTestHandle(x, y);
}

bool CGD_Marker::HitTestHandle(int32_t x, int32_t y) {
    if (In3D() || !view_) return false;
    const PixelRect plot = PlotRect();
    const int32_t mx = screenX_, my = screenY_;
    if (drawLines_) {
        // The horizontal guide line is tested by the marker's own position
        // against the plot's left edge, as it always was; the vertical one
        // along its whole height.
        if (my - kHitFlat < y && y < my + kHitFlat && mx < plot.left) return true;
        if (mx - kHitFlat < x && x < mx + kHitFlat) return true;
    }
    int32_t yz = 0;
    if (!IndicatorY(plot, &yz)) return false;
    return plot.right + 1 < x && x < plot.right + 21 && yz - 10 < y && y < yz + 10;
}

// -- drawing --

void CGD_Marker::Draw() {
    if (In3D())
        Draw3D();
    else if (view_)
        DrawFlat();
}

void CGD_Marker::DrawFlat() {
    UpdateScreenPoint();
    const PixelRect plot = PlotRect();
    const double mx = screenX_ + 0.5, my = screenY_ + 0.5;
    const bool inside = screenX_ >= plot.left && screenX_ < plot.right && screenY_ >= plot.top && screenY_ < plot.bottom;
    if (inside) {
        if (drawLines_) {
            const double horizontal[] = {double(plot.left), my, mx, my};
            const double vertical[] = {mx, my, mx, double(plot.bottom)};
            view_->AddOverlayLines(2, horizontal, color_, OverlayStroke::Dotted, 1.0f, false);
            view_->AddOverlayLines(2, vertical, color_, OverlayStroke::Dotted, 1.0f, false);
        }
        view_->AddOverlaySymbol(mx, my, PointStyle::Circle, kSymbolSize, color_);
        view_->AddOverlaySymbol(mx, my, PointStyle::Cross, kSymbolSize + 6, color_);
        if (selected_) AnnotationDrawing::SelectionFrame(*view_, screenX_ - 9, screenY_ - 9, screenX_ + 10, screenY_ + 10);
        AnnotationDrawing::Caption(*view_, mx + 8, my - 22, name_, color_);
    }
    int32_t yz = 0;
    if (IndicatorY(plot, &yz)) AnnotationDrawing::MarkerIndicator(*view_, plot.right, yz, color_, selected_ != 0, name_);
}

void CGD_Marker::Draw3D() {
    const Point3 at{x_, y_, z_};
    if (drawLines_) {
        DataRect shown{}, full{};
        double zmin = 0, zmax = 0;
        if (SUCCEEDED(projection_->GetViewBounds(&shown, &full)) && CurrentZRange(&zmin, &zmax)) {
            // Down to the floor of the box; the selected marker also along
            // the floor to the box's walls, where its X and Y read off the
            // axes (for every marker that would bury the plot in lines).
            const Point3 drop[] = {at, {x_, y_, zmin}};
            projection_->AddOverlayStroke(2, drop, color_, OverlayStroke::Dotted, 1.0f, false);
            const Point3 guide[] = {{shown.xMin, y_, zmin}, {x_, y_, zmin}, {x_, shown.yMin, zmin}};
            if (selected_) projection_->AddOverlayStroke(3, guide, color_, OverlayStroke::Dotted, 1.0f, false);
        }
    }
    projection_->AddOverlaySymbol(&at, PointStyle::Circle, kSymbolSize, color_);
    projection_->AddOverlaySymbol(&at, PointStyle::Cross, kSymbolSize + 6, color_);
    if (selected_) projection_->AddOverlaySymbol(&at, PointStyle::Square, kSymbolSize + 10, AnnotationDrawing::kSelectionColor);
    const OverlayTextBox style{color_, kOverlayNoColor, kOverlayNoColor, 0};
    projection_->AddOverlayTextBox(&at, 8, -22, name_.c_str(), nullptr, &style);
}

bool CGD_Marker::ShowProperties() {
    if (!owner_) return false;
    MarkerDialog dialog(*this);
    if (owner_->RunDialog(dialog) != kAnswerOk) return false;
    UpdateInfoWindow();
    RefreshOwner();
    return true;
}

}  // namespace vexplot
