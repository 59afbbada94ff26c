// The control's axes: their appearance from the settings mirror, their
// ticks over the active grid's ranges, pushed to both engine surfaces.
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
    if (!graph) return false;
    try {
        CGD_GraphObject::ScaleEnds ends;
        if (id == AxisId::X) ends = graph->GetXRange();
        else if (id == AxisId::Y) ends = graph->GetYRange();
        else ends = {graph->ZMinClamp(), graph->ZMaxClamp()};
        *min = ends.first;
        *max = ends.last;
        return true;
    } catch (const std::exception&) {
        return false;  // a grid without a readable range gets no ticks
    }
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
    if (IGraphView3D* view = GetView3D(); view && id != AxisId::Palette) SendAxis(view, id, *axis, t);
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
