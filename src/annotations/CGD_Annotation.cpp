#include "annotations/CGD_Annotation.h"

#include <cmath>

#include "annotations/CoordinateText.h"
#include "dataobject/IGraphDataAccess.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_GraphObjectList.h"
#include "model/IViewHost.h"

namespace vexplot {

CGD_Annotation::CGD_Annotation(AnnotationKind kind) : kind_(static_cast<int32_t>(kind)) {}

// The surfaces go with their ComPtrs.
CGD_Annotation::~CGD_Annotation() = default;

void CGD_Annotation::SetSelected(bool selected) { selected_ = selected ? 1 : 0; }

void CGD_Annotation::AttachInfoWindow(IInfoWindow* window) { info_ = window; }

void CGD_Annotation::SetPosition(double x, double y, double z) {
    x_ = x;
    y_ = y;
    z_ = z;
}

std::string CGD_Annotation::GetDescription() { return description_; }

void CGD_Annotation::Attach(IGraphEngine* engine, const PixelRect* plotRect, IViewHost* owner) {
    engine_ = engine;
    plotRect_ = plotRect;
    owner_ = owner;
    if (!engine) return;
    // A re-created engine hands out new surfaces; the old ones go first.
    view_.Reset();
    projection_.Reset();
    if (FAILED(engine->GetDevice2D(view_.ReleaseAndGetAddressOf()))) view_.Reset();
    if (FAILED(engine->GetView3D(projection_.ReleaseAndGetAddressOf()))) projection_.Reset();
}

void CGD_Annotation::ReleaseEngine() {
    view_.Reset();
    projection_.Reset();
    engine_ = nullptr;
}

// -- helpers for the kinds --

bool CGD_Annotation::In3D() const { return owner_ && owner_->Is3DViewCurrent() != 0 && projection_; }

PixelRect CGD_Annotation::PlotRect() const {
    PixelRect rect{};
    if (!In3D() && view_ && view_->GetImageRect(&rect) == S_OK) return rect;
    if (plotRect_) return *plotRect_;
    return owner_ ? owner_->GetPlotRect() : rect;
}

CGD_GraphObject* CGD_Annotation::ActiveGraph() const {
    CGD_GraphObjectList* graphs = owner_ ? owner_->GetGraphObjects() : nullptr;
    return graphs ? graphs->Active() : nullptr;
}

int32_t CGD_Annotation::ViewMode1D() const {
    const CGD_GraphObject* graph = ActiveGraph();
    return graph ? graph->OneDimensionalView() : 0;
}

bool CGD_Annotation::CurrentZRange(double* zmin, double* zmax) const {
    const CGD_GraphObject* graph = ActiveGraph();
    if (!graph || !graph->Access()) return false;
    *zmin = graph->ZMinClamp();
    *zmax = graph->ZMaxClamp();
    return *zmax > *zmin;
}

std::string CGD_Annotation::CoordinateTriple(double x, double y, double z, bool dashForNoZ) const {
    const CGD_GraphObject* graph = ActiveGraph();
    const int32_t mode = graph ? graph->OneDimensionalView() : 0;
    const CoordinateOrder order = CoordinateText::OrderOfMode(mode);
    if (order == CoordinateOrder::XYZ) return CoordinateText::Triple(order, x, y, z, dashForNoZ);
    // The section cuts the other horizontal axis at a percentage of its range.
    const auto ends = mode == 1 ? graph->GetXRange() : graph->GetYRange();
    const double cut = ends.first + graph->Drawing().secantPosition / 100.0 * (ends.last - ends.first);
    return CoordinateText::Triple(order, x, y, cut, dashForNoZ);
}

double CGD_Annotation::SurfaceZ(double x, double y, double fallback) const {
    const CGD_GraphObject* graph = ActiveGraph();
    double z = 0.0;
    if (!graph || !graph->Access() || graph->Access()->GetValueAt(x, y, &z) != S_OK || !std::isfinite(z))
        return fallback;
    return z;
}

void CGD_Annotation::RefreshOwner() const {
    if (!owner_) return;
    owner_->RecalcLayout();
    owner_->Redraw(true);
}

bool CGD_Annotation::PointAt(int32_t x, int32_t y, Point3* point) const {
    return owner_ && owner_->ClientToData(x, y, point);
}

void CGD_Annotation::OpenInfoSection(InfoKind kind, const std::string& header,
                                     std::initializer_list<std::string> lines) {
    if (!info_) return;
    infoEntry_ = info_->AddSection(static_cast<int32_t>(kind), header, 0);
    if (infoEntry_ == kNoSection) return;
    for (const std::string& line : lines) info_->AddLine(infoEntry_, line, 0);
    infoLine_ = 1;
}

void CGD_Annotation::CloseInfoSection() {
    if (!info_ || infoEntry_ == kNoSection) return;
    info_->RemoveSection(infoEntry_);
    infoEntry_ = kNoSection;
    infoLine_ = 0;
}

void CGD_Annotation::SetInfoLine(int32_t index, const std::string& text) const {
    if (info_ && infoEntry_ != kNoSection) info_->SetLine(infoEntry_, index, text, 0);
}

}  // namespace vexplot
