// The older interface's behaviour: thin forwards to the current methods and
// properties, members read back as they are, the tick sums, the axis scale
// factors, the data window of the active graph object, and the members that
// were never implemented (one table).
#include <cmath>

#include "com/ComError.h"
#include "control/CUI_VexplotCtrl.h"
#include "com/HResult.h"
#include "engine/IGraphView3D.h"

namespace vexplot {

namespace {

// Dispids of the current properties the older setters forward to. Per-axis
// properties lie nine dispids apart (X, Y, Z).
constexpr DISPID kPropBackgroundColor = 3;
constexpr DISPID kPropShowToolTips = 7;
constexpr DISPID kPropXAxisColor = 8;
constexpr DISPID kPropXMajorTicks = 11;
constexpr DISPID kPropXMinorTicks = 12;
constexpr DISPID kAxisStride = 9;

// X, Y or Z as an index; the colour bar's axis is none of them.
bool DataAxis(AxisId axis, size_t* index) {
    *index = static_cast<size_t>(axis);
    return *index < 3;
}

DISPID TickProperty(size_t index, bool major) {
    return (major ? kPropXMajorTicks : kPropXMinorTicks) + kAxisStride * static_cast<DISPID>(index);
}

}  // namespace

// -- forwards with arithmetic --

int32_t CUI_VexplotCtrl::GetResolution() { return GetLowResolution() > 0 ? 2 : 1; }

void CUI_VexplotCtrl::SetResolution(int32_t resolution) { SetLowResolution(resolution - 1); }

// -- forwards to properties --

// A failing put (which the values given here never cause) is reported as
// any failure of the control is.
void CUI_VexplotCtrl::PutForwarded(DISPID property, const Variant& value) {
    const HRESULT hr = PutProperty(property, value);
    if (FAILED(hr)) FireError(hr, HResultText(hr).c_str());
}

int16_t CUI_VexplotCtrl::GetTickmarks(AxisId axis, bool major) const {
    size_t i = 0;
    if (!DataAxis(axis, &i)) return 0;
    return major ? settings_.axes[i].majorTicks : settings_.axes[i].minorTicks;
}

// Counts outside 1..10 are ignored silently; a count in range is stored and
// applied even when it equals the current one.
void CUI_VexplotCtrl::SetTickmarks(AxisId axis, bool major, int16_t count) {
    size_t i = 0;
    if (!DataAxis(axis, &i) || count < 1 || count > 10) return;
    PutForwarded(TickProperty(i, major), Variant(count));
}

int32_t CUI_VexplotCtrl::GetNumGridLines(AxisId axis) const {
    return int32_t{GetTickmarks(axis, true)} + int32_t{GetTickmarks(axis, false)};
}

// Both counts become half of `count` (truncated toward zero), so an odd
// count loses one line: 5 reads back as 4.
void CUI_VexplotCtrl::SetNumGridLines(AxisId axis, int32_t count) {
    size_t i = 0;
    if (!DataAxis(axis, &i)) return;
    const auto half = static_cast<int16_t>(count / 2);
    PutForwarded(TickProperty(i, true), Variant(half));
    PutForwarded(TickProperty(i, false), Variant(half));
}

void CUI_VexplotCtrl::SetBackColor(uint32_t color) {
    if (color != settings_.backgroundColor) PutForwarded(kPropBackgroundColor, Variant(static_cast<int32_t>(color)));
}

void CUI_VexplotCtrl::SetShowDataTip(bool show) {
    if (show != settings_.showToolTips) PutForwarded(kPropShowToolTips, Variant::Bool(show));
}

void CUI_VexplotCtrl::SetAxisColor(uint32_t color) {
    for (size_t i = 0; i < 3; ++i)
        if (settings_.axes[i].numberColor != color)
            PutForwarded(kPropXAxisColor + kAxisStride * static_cast<DISPID>(i), Variant(static_cast<int32_t>(color)));
}

// -- axes and palette --

void CUI_VexplotCtrl::SetShowAxis(bool show) {
    settings_.axesShown = show;
    for (AxisId id : {AxisId::X, AxisId::Y, AxisId::Z}) ApplyAxis(id);
    Redraw(true);
}

std::string CUI_VexplotCtrl::GetAxisFontName() const {
    return axes_[0] ? axes_[0]->Font(AxisFontRole::Label).face : std::string();
}

// The colour bar's labels are its tick numbers.
bool CUI_VexplotCtrl::GetShowPaletteLabels() {
    const CGD_Axis* axis = GetAxis(AxisId::Palette);
    return axis && axis->GetAppearance().numbersShown;
}

void CUI_VexplotCtrl::SetShowPaletteLabels(bool show) {
    CGD_Axis* axis = GetAxis(AxisId::Palette);
    if (!axis) return;
    CGD_Axis::Appearance look = axis->GetAppearance();
    look.numbersShown = show;
    axis->SetAppearance(look);
    ApplyAxis(AxisId::Palette);
    Redraw(true);
}

void CUI_VexplotCtrl::SetPaletteId(int32_t id) {
    palette_.ApplyPaletteId(id);
    ApplyPalette();
    UpdateLegend();
}

void CUI_VexplotCtrl::SetUseColorPalette(bool useColor) {
    palette_.SetUseColorPalette(useColor);
    ApplyPalette();
    UpdateLegend();
}

double CUI_VexplotCtrl::GetAxisScale(AxisId axis) const {
    size_t i = 0;
    return DataAxis(axis, &i) ? axisScale_[i] : 0.0;
}

void CUI_VexplotCtrl::SetAxisScale(AxisId axis, double factor) {
    size_t i = 0;
    if (!DataAxis(axis, &i) || !std::isfinite(factor)) return;
    axisScale_[i] = factor;
    if (IGraphView3D* view = GetView3D()) {
        Guarded([&] { ThrowIfFailed(view->SetAxisScale(axis, factor), IGraphView3D::kIid); });
        LayoutAndRedrawIn3D();
    }
}

// -- the active graph object --

int32_t CUI_VexplotCtrl::GetColumnStart() const { return Active() ? Active()->GetGeometry().firstShownX : 0; }
int32_t CUI_VexplotCtrl::GetRowStart() const { return Active() ? Active()->GetGeometry().firstShownY : 0; }
int32_t CUI_VexplotCtrl::GetNumColumns() const { return Active() ? Active()->GetGeometry().shownXCount : 0; }
int32_t CUI_VexplotCtrl::GetNumRows() const { return Active() ? Active()->GetGeometry().shownYCount : 0; }

double CUI_VexplotCtrl::GetPaletteMinVal() {
    double lo = 0.0;
    double hi = 0.0;
    return GetZRange(&lo, &hi) == S_OK ? lo : 0.0;
}

double CUI_VexplotCtrl::GetPaletteMaxVal() {
    double lo = 0.0;
    double hi = 0.0;
    return GetZRange(&lo, &hi) == S_OK ? hi : 0.0;
}

// A data object that cannot answer is reported through the Error event.
double CUI_VexplotCtrl::GetZMinClamp() {
    double value = 0.0;
    if (graphs_) Guarded([&] { value = graphs_->ZMinClamp(); });
    return value;
}

double CUI_VexplotCtrl::GetZMaxClamp() {
    double value = 0.0;
    if (graphs_) Guarded([&] { value = graphs_->ZMaxClamp(); });
    return value;
}

// -- the cursor --

void CUI_VexplotCtrl::SetShowCursor(bool show) {
    showCursor_ = show;
    if (site_) site_->ShowCursor(show);
}

// -- members never implemented --

const std::vector<CUI_VexplotCtrl::UnimplementedMember>& CUI_VexplotCtrl::UnimplementedMembers() {
    static const std::vector<UnimplementedMember> members = {
        {63, "SetLineWidth", VT_EMPTY, 0},
        {67, "SetColumnStart", VT_EMPTY, 0},
        {69, "SetRowStart", VT_EMPTY, 0},
        {71, "SetNumColumns", VT_EMPTY, 0},
        {73, "SetNumRows", VT_EMPTY, 0},
        {79, "SetAxisFontName", VT_EMPTY, 0},
        {87, "GetAxisStyle", VT_I4, 0},
        {88, "SetAxisStyle", VT_EMPTY, 0},
        {107, "GetLineSmooth", VT_BOOL, 1},
        {108, "SetLineSmooth", VT_EMPTY, 0},
        {109, "GetDepthCue", VT_BOOL, 1},
        {110, "SetDepthCue", VT_EMPTY, 0},
        {111, "GetHiddenLine", VT_BOOL, 1},
        {112, "SetHiddenLine", VT_EMPTY, 0},
        {117, "SetPaletteMinVal", VT_EMPTY, 0},
        {119, "SetPaletteMaxVal", VT_EMPTY, 0},
        {128, "GetGridDensity", VT_R8, 0.0},
        {129, "SetGridDensity", VT_EMPTY, 0},
        {148, "GetTextureMode", VT_I4, 0},
        {149, "SetTextureMode", VT_EMPTY, 0},
        {150, "GetLighting", VT_BOOL, 1},
        {151, "SetLighting", VT_EMPTY, 0},
        {154, "GetFontAutoScale", VT_BOOL, 0},
        {155, "SetFontAutoScale", VT_EMPTY, 0},
        {160, "GetDataType", VT_I4, 0},
        {161, "SetDataType", VT_EMPTY, 0},
        {162, "GetAxisAutoScale", VT_BOOL, 1},
        {163, "SetAxisAutoScale", VT_EMPTY, 0},
        {164, "GetPaletteAutoAdjust", VT_BOOL, 0},
        {165, "SetPaletteAutoAdjust", VT_EMPTY, 0},
        {167, "SetFileName", VT_EMPTY, 0},
        {168, "GetGraphType", VT_I4, -1},
        {169, "SetGraphType", VT_EMPTY, 0},
        {170, "GetGridDensityAutoAdjust", VT_BOOL, 0},
        {171, "SetGridDensityAutoAdjust", VT_EMPTY, 0},
        {172, "GetRow", VT_I4, -1},
        {173, "SetRow", VT_EMPTY, 0},
        {175, "SetZMinClamp", VT_EMPTY, 0},
        {177, "SetZMaxClamp", VT_EMPTY, 0},
        {180, "GetCol", VT_I4, -1},
        {181, "SetCol", VT_EMPTY, 0},
        {182, "GetResolutionAutoAdjust", VT_BOOL, 0},
        {183, "SetResolutionAutoAdjust", VT_EMPTY, 0},
        {184, "GetAxisAutoDetail", VT_BOOL, 0},
        {185, "SetAxisAutoDetail", VT_EMPTY, 0},
        {186, "GetDataClamp", VT_BOOL, 0},
        {187, "SetDataClamp", VT_EMPTY, 0},
        {188, "GetFixedAspect", VT_BOOL, 0},
        {189, "SetFixedAspect", VT_EMPTY, 0},
        {190, "GetImageOrientation", VT_I4, -1},
        {191, "SetImageOrientation", VT_EMPTY, 0},
        {194, "GetRowDim", VT_I4, -1},
        {195, "SetRowDim", VT_EMPTY, 0},
        {198, "GetColDim", VT_I4, -1},
        {199, "SetColDim", VT_EMPTY, 0},
        {200, "GetImageFilter", VT_I4, 0},
        {201, "SetImageFilter", VT_EMPTY, 0},
        {202, "GetHighLight", VT_BOOL, 0},
        {203, "SetHighLight", VT_EMPTY, 0},
        {204, "GetUseAxisScales", VT_BOOL, 0},
        {205, "SetUseAxisScales", VT_EMPTY, 0},
        {206, "GetMetaFileStatus", VT_I4, 0},
        {207, "SetMetaFileStatus", VT_EMPTY, 0},
    };
    return members;
}

Variant CUI_VexplotCtrl::CallUnimplemented(const UnimplementedMember& member) {
    ReportNotImplemented();
    switch (member.result) {
        case VT_BOOL: return Variant::Bool(member.value != 0.0);
        case VT_I4: return Variant(static_cast<int32_t>(member.value));
        case VT_R8: return Variant(member.value);
        default: return Variant();
    }
}

}  // namespace vexplot
