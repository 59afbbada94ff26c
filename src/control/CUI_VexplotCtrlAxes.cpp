// The control's axes: their appearance from the settings mirror, their
// ticks over the active grid's ranges, pushed to both engine surfaces.
#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "control/CUI_VexplotCtrl.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot {

namespace {

size_t Index(AxisId id) { return static_cast<size_t>(id); }

// The settings that style an axis: the colour bar's axis shares Z's.
size_t SettingsIndex(AxisId id) { return id == AxisId::Palette ? 2 : Index(id); }

AxisStyle EngineStyle(const CGD_Axis::Appearance& look) {
    return AxisStyle{look.numberColor,
                     look.majorGridColor,
                     look.minorGridColor,
                     look.minorTicks,
                     look.shown ? 1 : 0,
                     look.majorGrid ? 1 : 0,
                     look.minorGrid ? 1 : 0,
                     look.numbersShown ? 1 : 0};
}

// Sends one axis to one surface (a 2-D device or a 3-D view: both have the
// same axis calls).
template <class Surface>
void SendAxis(Surface* surface, AxisId id, const CGD_Axis& axis, const CGD_Axis::Ticks* ticks) {
    const AxisStyle style = EngineStyle(axis.GetAppearance());
    surface->SetAxisStyle(id, &style);
    if (ticks) {
        std::vector<const char*> texts;
        texts.reserve(ticks->texts.size());
        for (const std::string& t : ticks->texts) texts.push_back(t.c_str());
        surface->SetAxisTicks(id, static_cast<uint32_t>(ticks->values.size()), ticks->values.data(), texts.data());
    }
    surface->SetAxisLabel(id, axis.GetAppearance().label.c_str());
    const FontDescription label = axis.Font(AxisFontRole::Label).ToEngineFont();
    const FontDescription numbers = axis.Font(AxisFontRole::Numbers).ToEngineFont();
    surface->SetAxisFont(id, AxisText::Label, &label);
    surface->SetAxisFont(id, AxisText::Numbers, &numbers);
}

// A grid's range along the axis: the scale's first and last element for X
// and Y, the value extent for Z and the colour bar. False when the grid has
// no readable range.
bool RangeOfGraph(const CGD_GraphObject& graph, AxisId id, CGD_GraphObject::ScaleEnds* ends) {
    try {
        if (id == AxisId::X) *ends = graph.GetXRange();
        else if (id == AxisId::Y) *ends = graph.GetYRange();
        else *ends = {graph.ZMinClamp(), graph.ZMaxClamp()};
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

// The range the 3-D view's box spans along the axis when it holds several
// graph objects: across X and Y what the view shows of them (their union, or
// the zoomed part), along Z the union of their value extents. The direction
// is that of the active grid's range, so a falling scale stays falling.
bool SceneRangeOf(IGraphView3D& view, const CGD_GraphObjectList& graphs, AxisId id, double* min, double* max) {
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    if (id == AxisId::X || id == AxisId::Y) {
        DataRect shown{}, full{};
        if (FAILED(view.GetViewBounds(&shown, &full))) return false;
        lo = id == AxisId::X ? shown.xMin : shown.yMin;
        hi = id == AxisId::X ? shown.xMax : shown.yMax;
    } else {
        for (int32_t i = 0; i < graphs.Count(); ++i) {
            CGD_GraphObject::ScaleEnds ends;
            if (const CGD_GraphObject* graph = graphs.At(i); graph && RangeOfGraph(*graph, id, &ends))
                lo = std::min({lo, ends.first, ends.last}), hi = std::max({hi, ends.first, ends.last});
        }
    }
    if (!(lo <= hi)) return false;
    const bool falling = *min > *max;
    *min = falling ? hi : lo;
    *max = falling ? lo : hi;
    return true;
}

}  // namespace

void CUI_VexplotCtrl::CreateAxes() {
    for (AxisId id : {AxisId::X, AxisId::Y, AxisId::Z, AxisId::Palette}) {
        auto axis = std::make_unique<CGD_Axis>(id);
        axis->SetView(GetView3D());
        // The X and Y axes keep their zoom read-outs in the info window.
        if (info_) axis->AttachInfoWindow(info_.get());
        axes_[Index(id)] = std::move(axis);
    }
}

CGD_Axis* CUI_VexplotCtrl::GetAxis(AxisId id) {
    return Index(id) < axes_.size() ? axes_[Index(id)].get() : nullptr;
}

CGD_Axis::Appearance CUI_VexplotCtrl::AppearanceOf(AxisId id) const {
    const ControlSettings::Axis& s = settings_.axes[SettingsIndex(id)];
    CGD_Axis::Appearance look = axes_[Index(id)]->GetAppearance();
    look.label = id == AxisId::Palette ? std::string() : labels_[Index(id)];
    // The colour bar is shown or hidden on its own (ShowPalette).
    if (id != AxisId::Palette) look.shown = settings_.axesShown;
    look.numberColor = s.numberColor;
    look.majorGridColor = s.majorGridColor;
    look.minorGridColor = s.minorGridColor;
    look.scaleFormat = static_cast<ScaleFormat>(s.scaleFormat);
    look.displayMode = s.displayMode == 1 ? DisplayMode::Decibel : DisplayMode::Linear;
    look.majorGrid = s.majorGrid;
    look.minorGrid = s.minorGrid;
    look.majorTicks = s.majorTicks;
    look.minorTicks = s.minorTicks;
    look.decimalCount = s.decimalCount;
    return look;
}

// The active grid's range along the axis: the scale's first and last
// element for X and Y, the value extent for Z and the colour bar.
bool CUI_VexplotCtrl::RangeOf(AxisId id, double* min, double* max) const {
    const CGD_GraphObject* graph = Active();
    CGD_GraphObject::ScaleEnds ends;
    if (!graph || !RangeOfGraph(*graph, id, &ends)) return false;
    *min = ends.first;
    *max = ends.last;
    return true;
}

void CUI_VexplotCtrl::ApplyAxis(AxisId id) {
    CGD_Axis* axis = GetAxis(id);
    if (!axis) return;
    axis->SetAppearance(AppearanceOf(id));
    double min = 0.0;
    double max = 0.0;
    std::optional<CGD_Axis::Ticks> ticks;
    if (RangeOf(id, &min, &max)) ticks = axis->MakeTicks(min, max);
    const CGD_Axis::Ticks* t = ticks ? &*ticks : nullptr;
    if (IGraphDevice2D* device = GetDevice2D(); device && id != AxisId::Z) SendAxis(device, id, *axis, t);
    IGraphView3D* view = GetView3D();
    if (!view || id == AxisId::Palette) return;
    // The flat view shows the active grid alone; the 3-D view draws every
    // graph object in one box, so its axes span them all (min and max still
    // hold the active grid's range, whose direction the box's range keeps).
    std::optional<CGD_Axis::Ticks> boxTicks;
    if (ticks && graphs_->Count() > 1 && SceneRangeOf(*view, *graphs_, id, &min, &max))
        boxTicks = axis->MakeTicks(min, max);
    SendAxis(view, id, *axis, boxTicks ? &*boxTicks : t);
}

void CUI_VexplotCtrl::ApplyAllAxes() {
    for (AxisId id : {AxisId::X, AxisId::Y, AxisId::Z, AxisId::Palette}) ApplyAxis(id);
}

void CUI_VexplotCtrl::TakeDataLabel(AxisId id, const char* text) {
    if (!text || !*text) return;
    labels_[Index(id)] = text;
    ApplyAxis(id);
}

void CUI_VexplotCtrl::ResetAxisLabel(const char* axis) {
    if (!axis) return;
    const size_t i = axis[0] == 'X' ? 0 : axis[0] == 'Y' ? 1 : axis[0] == 'Z' ? 2 : 3;
    if (i > 2) return;
    labels_[i] = settings_.axes[i].label;
    ApplyAxis(static_cast<AxisId>(i));
}

void CUI_VexplotCtrl::SetAxisLabelText(AxisId id, const std::string& text) {
    if (id == AxisId::Palette) return;
    settings_.axes[Index(id)].label = text;
    labels_[Index(id)] = text;
    ApplyAxis(id);
    Redraw(true);
}

}  // namespace vexplot
