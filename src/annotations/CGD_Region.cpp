#include "annotations/CGD_Region.h"

#include <algorithm>
#include <cmath>

#include "annotations/AnnotationDrawing.h"
#include "annotations/CoordinateText.h"
#include "annotations/RegionDialog.h"
#include "model/ArchiveClass.h"
#include "model/CArchive.h"
#include "model/IViewHost.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

constexpr int32_t kHitMargin = 3;

OverlayStroke StrokeOfStyle(int32_t style) {
    return style == CGD_Region::kStyleDots ? OverlayStroke::Dotted
           : style == CGD_Region::kStyleInvert ? OverlayStroke::Dashed
                                               : OverlayStroke::Solid;
}

OverlayFill FillOfStyle(int32_t style) {
    switch (style) {
    case CGD_Region::kStyleLines: return OverlayFill::Hatched;
    case CGD_Region::kStyleInvert: return OverlayFill::Invert;
    case CGD_Region::kStyleLogo: return OverlayFill::Tint;
    default: return OverlayFill::None;
    }
}

}  // namespace

CGD_Region::CGD_Region(bool internal) : CGD_Annotation(AnnotationKind::Region), internal_(internal ? 1 : 0) {}

CGD_Region::~CGD_Region() = default;

const ArchiveClass& CGD_Region::RuntimeClass() {
    static const ArchiveClass cls("CGD_Region", 1, [] { return std::make_unique<CGD_Region>(false); });
    return cls;
}

void CGD_Region::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive.WriteDouble(x_);
        archive.WriteDouble(y_);
        archive.WriteDouble(z_);
        archive.WriteString(caption_);
        archive.WriteInt32(selected_);
        archive.WriteInt32(kind_);
        archive.WriteUInt32(color_);
        archive.WriteDouble(x2_);
        archive.WriteDouble(y2_);
        archive.WriteDouble(z2_);
        archive.WriteInt32(value_);
        return;
    }
    x_ = archive.ReadDouble("region x1");
    y_ = archive.ReadDouble("region y1");
    z_ = archive.ReadDouble("region z1");
    caption_ = archive.ReadString("region caption");
    selected_ = archive.ReadInt32("region selected flag");
    kind_ = archive.ReadInt32("region kind");
    color_ = archive.ReadUInt32("region colour") & 0x00FFFFFFu;
    x2_ = archive.ReadDouble("region x2");
    y2_ = archive.ReadDouble("region y2");
    z2_ = archive.ReadDouble("region z2");
    value_ = archive.ReadInt32("region value");
}

// -- corners --

void CGD_Region::SetSecondCorner(double x2, double y2, double z2) {
    x2_ = x2;
    y2_ = y2;
    z2_ = z2;
}

void CGD_Region::MoveCorners(double x1, double y1, double z1, double x2, double y2, double z2) {
    SetPosition(x1, y1, z1);
    SetSecondCorner(x2, y2, z2);
    double zmin = 0, zmax = 0;
    if (CurrentZRange(&zmin, &zmax)) z2_ = zmax;
}

bool CGD_Region::SetStyle(int32_t style) {
    if (style < kStyleDots || style > kStyleLogo) return false;
    style_ = style;
    return true;
}

void CGD_Region::NotifySelection() const {
    if (!owner_ || internal_ || !enableEvent_) return;
    const DataRect xy{std::min(x_, x2_), std::max(x_, x2_), std::min(y_, y2_), std::max(y_, y2_)};
    owner_->FireDataSelect(xy, std::min(z_, z2_), std::max(z_, z2_));
}

void CGD_Region::DragTo(int32_t x, int32_t y) {
    Point3 point{};
    if (!PointAt(x, y, &point)) return;
    const double dx = point.x - (x_ + x2_) / 2, dy = point.y - (y_ + y2_) / 2;
    x_ += dx, x2_ += dx;
    y_ += dy, y2_ += dy;
    UpdateInfoWindow();
}

void CGD_Region::SetSelected(bool selected) {
    CGD_Annotation::SetSelected(selected);
    // The selection frame belongs to the drawing.
    if (owner_) owner_->Redraw(false);
}

// -- texts --

std::string CGD_Region::AxisLine(char axis, double a, double b, const char* separator) const {
    const char name[] = {axis, '\0'};
    return CoordinateText::Join({"\t", name, "(", CoordinateText::Fixed(a), separator, CoordinateText::Fixed(b), ")"});
}

std::string CGD_Region::GetDescription() {
    description_ = CoordinateText::Join({"Region:\n", AxisLine('X', x_, x2_, ","), "\n", AxisLine('Y', y_, y2_, ","), "\n",
                                         AxisLine('Z', z_, z2_, ","), "\n"});
    return description_;
}

void CGD_Region::AttachInfoWindow(IInfoWindow* window) {
    info_ = window;
    if (!window || internal_) return;
    // " - " when the entry is made, " , " when it is rewritten: both forms
    // are what users have always read.
    OpenInfoSection(InfoKind::Region, "Region:",
                    {AxisLine('X', x_, x2_, " - "), AxisLine('Y', y_, y2_, " - "), AxisLine('Z', z_, z2_, " - ")});
}

void CGD_Region::UpdateInfoWindow() {
    if (internal_) return;
    SetInfoLine(1, AxisLine('X', x_, x2_, " , "));
    SetInfoLine(2, AxisLine('Y', y_, y2_, " , "));
    SetInfoLine(3, AxisLine('Z', z_, z2_, " , "));
}

void CGD_Region::RemoveFromInfoWindow() { CloseInfoSection(); }

// -- hit tests --

bool CGD_Region::IndicatorY(const PixelRect& plot, double z, int32_t* yz) const {
    double zmin = 0, zmax = 0;
    // The section view has no colour scale to stand beside.
    if (ViewMode1D() != 0 || !CurrentZRange(&zmin, &zmax)) return false;
    const double offset = (zmax - z) / (zmax - zmin) * (plot.bottom - plot.top);
    if (!std::isfinite(offset)) return false;
    *yz = plot.top + static_cast<int32_t>(std::trunc(offset));
    return true;
}

bool CGD_Region::HitTestHandle(int32_t x, int32_t y) {
    if (In3D() || !view_ || internal_) return false;
    const PixelRect plot = PlotRect();
    for (double z : {z_, z2_}) {
        int32_t yz = 0;
        if (IndicatorY(plot, z, &yz) && plot.right + 2 < x && x < plot.right + 13 && yz - 3 < y && y < yz + 3)
            return true;
    }
    return false;
}

bool CGD_Region::HitTest(int32_t x, int32_t y) {
    PixelRect r{};
    if (In3D()) {
        // The screen rectangle around the box's projected corners.
        bool any = false;
        for (int corner = 0; corner < 8; ++corner) {
            int32_t px = 0, py = 0;
            if (FAILED(projection_->ProjectPoint(corner & 1 ? x2_ : x_, corner & 2 ? y2_ : y_, corner & 4 ? z2_ : z_,
                                                 &px, &py)))
                continue;
            r = any ? PixelRect{std::min(r.left, px), std::min(r.top, py), std::max(r.right, px + 1),
                                std::max(r.bottom, py + 1)}
                    : PixelRect{px, py, px + 1, py + 1};
            any = true;
        }
        if (!any) return false;
    } else {
        if (!view_) return false;
        if (HitTestHandle(x, y)) return true;
        UpdateScreenRect();
        r = screen_;
    }
    return x >= r.left - kHitMargin && x < r.right + kHitMargin && y >= r.top - kHitMargin &&
           y < r.bottom + kHitMargin;
}

// -- drawing --

void CGD_Region::UpdateScreenRect() {
    int32_t ax = 0, ay = 0, bx = 0, by = 0;
    if (FAILED(view_->DataToClient(x_, y_, &ax, &ay)) || FAILED(view_->DataToClient(x2_, y2_, &bx, &by))) return;
    screen_ = {std::min(ax, bx), std::min(ay, by), std::max(ax, bx) + 1, std::max(ay, by) + 1};
}

void CGD_Region::Draw() {
    if (In3D())
        Draw3D();
    else if (view_)
        DrawFlat();
}

void CGD_Region::DrawFlat() {
    UpdateScreenRect();
    const PixelRect plot = PlotRect();
    // Only the part over the image: a region may reach beyond the zoom.
    const PixelRect clipped{std::max(screen_.left, plot.left), std::max(screen_.top, plot.top),
                            std::min(screen_.right, plot.right), std::min(screen_.bottom, plot.bottom)};
    if (clipped.right > clipped.left && clipped.bottom > clipped.top) {
        const OverlayBox box{clipped, color_, static_cast<int32_t>(StrokeOfStyle(style_)),
                             static_cast<int32_t>(FillOfStyle(style_)), std::max<int32_t>(spacing_, 1) + 2,
                             internal_ ? 1.0f : 1.5f, 0};
        view_->AddOverlayBox(&box);
        if (style_ == kStyleLogo && !caption_.empty())
            AnnotationDrawing::Caption(*view_, clipped.left + 4.0, clipped.top + 3.0, caption_, color_);
        if (selected_)
            AnnotationDrawing::SelectionFrame(*view_, clipped.left - 3, clipped.top - 3, clipped.right + 3,
                                              clipped.bottom + 3);
    }
    if (internal_) return;
    for (double z : {z_, z2_}) {
        int32_t yz = 0;
        if (IndicatorY(plot, z, &yz))
            AnnotationDrawing::RegionIndicator(*view_, plot.right, yz, color_, selected_ != 0);
    }
}

void CGD_Region::Draw3D() {
    const uint32_t color = selected_ ? AnnotationDrawing::kSelectionColor : color_;
    const OverlayStroke stroke = StrokeOfStyle(style_);
    const float width = selected_ ? 2.0f : 1.5f;
    const double xs[2] = {x_, x2_}, ys[2] = {y_, y2_}, zs[2] = {z_, z2_};
    // The two horizontal rectangles, then the four upright edges.
    for (double z : zs) {
        const Point3 ring[] = {{xs[0], ys[0], z}, {xs[1], ys[0], z}, {xs[1], ys[1], z}, {xs[0], ys[1], z}};
        projection_->AddOverlayStroke(4, ring, color, stroke, width, true);
    }
    for (double x : xs)
        for (double y : ys) {
            const Point3 edge[] = {{x, y, zs[0]}, {x, y, zs[1]}};
            projection_->AddOverlayStroke(2, edge, color, stroke, width, false);
        }
    if (style_ == kStyleLogo && !caption_.empty()) {
        const Point3 top{std::min(x_, x2_), std::max(y_, y2_), std::max(z_, z2_)};
        const OverlayTextBox style{color_, kOverlayNoColor, kOverlayNoColor, 0};
        projection_->AddOverlayTextBox(&top, 4, 3, caption_.c_str(), nullptr, &style);
    }
}

bool CGD_Region::ShowProperties() {
    if (!owner_) return false;
    RegionDialog dialog(*this);
    if (owner_->RunDialog(dialog) != kAnswerOk) return false;
    UpdateInfoWindow();
    NotifySelection();
    RefreshOwner();
    return true;
}

}  // namespace vexplot
