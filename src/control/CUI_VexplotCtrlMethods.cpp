// The automation methods of the control: data, graph mode, shading,
// resolution, ranges, windows, the one-dimensional view and the bitmap.
#include <vector>

#include "com/ComError.h"
#include "com/ErrorInfo.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

// Runs `action`; a component failure inside it reaches the host as the
// Error event with the failing code and text. False when it failed.
bool CUI_VexplotCtrl::Guarded(const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (const ComError& e) {
        FireError(e.Code(), e.Description().empty() ? e.what() : e.Description().c_str());
    }
    return false;
}

// Runs a call that reaches the data object and returns its failure code.
HRESULT CUI_VexplotCtrl::DataCall(const std::function<void()>& call) {
    try {
        call();
        return S_OK;
    } catch (const ComError& e) {
        // The reason in words stays with the thread's error information, for
        // a caller that shows it to a person (LoadDataFile).
        if (!e.Description().empty()) SetErrorInfo(GUID_NULL, e.Description());
        return e.Code();
    } catch (const std::bad_alloc&) {
        SetErrorInfo(GUID_NULL, "not enough memory for the data");
        return E_OUTOFMEMORY;
    }
}

void CUI_VexplotCtrl::LayoutAndRedraw() {
    RecalcLayout();
    Redraw(true);
}

void CUI_VexplotCtrl::LayoutAndRedrawIn3D() {
    if (viewMode_ == 1) LayoutAndRedraw();
}

// A new or replaced graph object: a layer of its own in the 3-D view (never
// one an earlier object used), its grid and settings to the engine, the
// axes over its ranges.
void CUI_VexplotCtrl::ShowGraph(CGD_GraphObject& graph) {
    graph.SetLayer(nextLayer_++);
    graph.UpdateEngine();
    ApplyAllAxes();
    UpdateLegend();
    Redraw(true);
}

template <class Change>
void CUI_VexplotCtrl::ChangeDrawing(Change change) {
    CGD_GraphObject* graph = Active();
    if (!graph) return;
    CGD_GraphObject::DrawingSettings drawing = graph->Drawing();
    change(drawing);
    graph->SetDrawing(drawing);
    Guarded([graph] { graph->SendDrawingSettings(); });
}

bool CUI_VexplotCtrl::In1DView() const {
    const CGD_GraphObject* graph = Active();
    return graph && graph->OneDimensionalView() != 0;
}

// -- data --

HRESULT CUI_VexplotCtrl::SetData(IUnknown* dataObject) {
    if (!graphs_) return E_UNEXPECTED;
    if (!dataObject) return E_POINTER;
    return DataCall([&] {
        CGD_GraphObject& graph = graphs_->AddDataObject(dataObject, this, settings_.dataFlag, true);
        ShowGraph(graph);
    });
}

HRESULT CUI_VexplotCtrl::CopyArrayData(const Variant& array) {
    if (!graphs_) return E_UNEXPECTED;
    const Variant value = array.Deref();
    if (value.Type() != (VT_ARRAY | VT_R8) || value.Array().Dims() != 2) return DISP_E_TYPEMISMATCH;
    if (value.Array().Bound(1).count < 2) return S_FALSE;
    return DataCall([&] {
        if (CGD_GraphObject* graph = graphs_->CopyArrayData(value.Array(), this, settings_.dataFlag, true))
            ShowGraph(*graph);
    });
}

HRESULT CUI_VexplotCtrl::CopyAxisScaleData(int16_t axis, const Variant& array) {
    // Only the X (0) and Y (1) scales can be replaced; another axis is
    // the control's own complaint (the Error event), not a failed call.
    if (axis != 0 && axis != 1) {
        FireError(kErrorInvalidValue, kTextInvalidValue);
        return S_FALSE;
    }
    if (!graphs_ || !graphs_->ExternalData()) return S_FALSE;
    const Variant value = array.Deref();
    if (value.Type() != (VT_ARRAY | VT_R8)) return DISP_E_TYPEMISMATCH;
    return DataCall([&] { graphs_->CopyAxisScaleData(axis, value.Array()); });
}

// -- graph mode, shading, resolution --

void CUI_VexplotCtrl::SetGraphMode(int32_t mode) {
    switch (mode) {
        case 0:
        case 1:
        case 2:
            ChangeDrawing([mode](auto& d) { d.style = CGD_GraphObject::StyleOfGraphMode(mode); });
            SetViewMode(1);
            break;
        case 3:
        case 4:
            ChangeDrawing([mode](auto& d) { d.image = mode == 3; });
            SetViewMode(0);
            break;
        default:
            FireError(kErrorInvalidValue, kTextInvalidValue);
            break;
    }
    LayoutAndRedraw();
}

// Mode 2 (points) reads back as 0: hosts have always seen it so.
int32_t CUI_VexplotCtrl::GetGraphMode() {
    const CGD_GraphObject* graph = Active();
    if (!graph) return 0;
    if (viewMode_ == 0) return graph->Drawing().image ? 3 : 4;
    const GraphStyle style = graph->Drawing().style;
    return style == GraphStyle::Surface || style == GraphStyle::Points ? 0 : 1;
}

void CUI_VexplotCtrl::SetDrawingStyle(GraphStyle style) {
    if (!Active()) return;
    if (style == GraphStyle::Wireframe) settings_.quality3D = 1;
    ChangeDrawing([style](auto& d) { d.style = style; });
    LayoutAndRedrawIn3D();
}

int16_t CUI_VexplotCtrl::GetShadingMode() {
    const CGD_GraphObject* graph = Active();
    return graph ? static_cast<int16_t>(static_cast<int32_t>(graph->Drawing().shading) + 1) : int16_t{1};
}

void CUI_VexplotCtrl::SetShadingMode(int16_t shading) {
    if (shading != 1 && shading != 2) return;
    ChangeDrawing([shading](auto& d) { d.shading = static_cast<ShadingMode>(shading - 1); });
    if (viewMode_ == 0) Redraw(true);
}

int32_t CUI_VexplotCtrl::GetLowResolution() {
    const CGD_GraphObject* graph = Active();
    return graph && graph->Drawing().lowResolution ? 1 : 0;
}

void CUI_VexplotCtrl::SetLowResolution(int32_t low) {
    if (!Active()) return;
    ChangeDrawing([low](auto& d) { d.lowResolution = low != 0; });
    LayoutAndRedrawIn3D();
}

// -- ranges --

bool CUI_VexplotCtrl::GetXRange(double* xmin, double* xmax) {
    const CGD_GraphObject* graph = Active();
    if (!graph || !xmin || !xmax) return false;
    return Guarded([&] {
        const auto ends = graph->GetXRange();
        *xmin = ends.first;
        *xmax = ends.last;
    });
}

bool CUI_VexplotCtrl::GetYRange(double* ymin, double* ymax) {
    const CGD_GraphObject* graph = Active();
    if (!graph || !ymin || !ymax) return false;
    return Guarded([&] {
        const auto ends = graph->GetYRange();
        *ymin = ends.first;
        *ymax = ends.last;
    });
}

HRESULT CUI_VexplotCtrl::GetZRange(double* zmin, double* zmax) {
    const CGD_GraphObject* graph = Active();
    if (!graph) return S_FALSE;
    if (!zmin || !zmax) return E_POINTER;
    bool valid = true;
    const HRESULT hr = DataCall([&] {
        *zmin = graph->ZMinClamp();
        *zmax = graph->ZMaxClamp();
        valid = graph->HasZExtent();
    });
    // Data without one finite value has no range to report.
    return hr == S_OK && !valid ? S_FALSE : hr;
}

// -- windows --

namespace {

void SetFlags(CUI_VexplotCtrl::WindowVisibility& v, int32_t windows, bool show) {
    if (windows & CUI_VexplotCtrl::wndTitle) v.title = show;
    if (windows & CUI_VexplotCtrl::wndStatus) v.status = show;
    if (windows & CUI_VexplotCtrl::wndInfo) v.info = show;
    if (windows & CUI_VexplotCtrl::wndLegend) v.legend = show;
    if (windows & CUI_VexplotCtrl::wndNavigator) v.navigator = show;
}

}  // namespace

void CUI_VexplotCtrl::ShowWindows(int32_t windows, int32_t visible) {
    WindowVisibility v = ReadVisibility();
    SetFlags(v, windows, visible != 0);
    *visibility_ = v;
    ApplyVisibility(&v);
    LayoutAndRedraw();
}

int32_t CUI_VexplotCtrl::GetWindowsVisible() {
    const WindowVisibility v = ReadVisibility();
    return (v.info ? wndInfo : 0) | (v.legend ? wndLegend : 0) | (v.navigator ? wndNavigator : 0) |
           (v.title ? wndTitle : 0) | (v.status ? wndStatus : 0);
}

void CUI_VexplotCtrl::SetWindowsVisible(int32_t windows) {
    WindowVisibility v = ReadVisibility();
    SetFlags(v, wndAll, false);
    SetFlags(v, windows, true);
    *visibility_ = v;
    ApplyVisibility(&v);
    LayoutAndRedraw();
}

// -- the one-dimensional view --

void CUI_VexplotCtrl::Enable1DView(int32_t enable, int16_t mode) {
    CGD_GraphObject* graph = Active();
    if (!graph) return;
    if (enable && mode != 1 && mode != 2) return;
    if (enable && viewMode_ == 1) SetViewMode(0);
    graph->SetOneDimensionalView(enable ? mode : 0);
    Guarded([graph] { graph->UpdateEngine(); });
    LayoutAndRedraw();
}

void CUI_VexplotCtrl::SetSecantPlane1DView(double position) {
    if (!In1DView() || !(position >= 0.0 && position <= 100.0)) return;
    ChangeDrawing([position](auto& d) { d.secantPosition = position; });
    RecalcLayout();
    Rebuild1DView(Active());
}

void CUI_VexplotCtrl::SetPlotStyle1DView(int16_t plotStyle) {
    if (!In1DView() || plotStyle < 0 || plotStyle >= 4) return;
    ChangeDrawing([plotStyle](auto& d) { d.plotStyle = plotStyle; });
    LayoutAndRedraw();
}

void CUI_VexplotCtrl::SetPointStyle1DView(int16_t pointStyle) {
    if (!In1DView() || pointStyle < 0 || pointStyle > 6) return;
    ChangeDrawing([pointStyle](auto& d) { d.pointStyle = static_cast<PointStyle>(pointStyle); });
    LayoutAndRedraw();
}

void CUI_VexplotCtrl::SetCurveColor1DView(uint32_t color) {
    if (!In1DView()) return;
    ChangeDrawing([color](auto& d) { d.curveColor = color & 0xFFFFFF; });
    LayoutAndRedraw();
}

// -- axes, palette, files and tool tips --

int32_t CUI_VexplotCtrl::GetShowXAxis() {
    const CGD_Axis* axis = GetAxis(AxisId::X);
    return axis && axis->GetAppearance().shown ? 1 : 0;
}

int32_t CUI_VexplotCtrl::GetShowYAxis() {
    const CGD_Axis* axis = GetAxis(AxisId::Y);
    return axis && axis->GetAppearance().shown ? 1 : 0;
}

int32_t CUI_VexplotCtrl::IsShowPalette() {
    const CGD_Axis* axis = GetAxis(AxisId::Palette);
    return axis && axis->GetAppearance().shown ? 1 : 0;
}

// The colour bar keeps its own "shown" flag (AppearanceOf leaves it alone),
// so ShowAxis of the three data axes does not bring it back.
void CUI_VexplotCtrl::ShowPalette(int32_t flag) {
    CGD_Axis* axis = GetAxis(AxisId::Palette);
    if (!axis) return;
    CGD_Axis::Appearance look = axis->GetAppearance();
    look.shown = flag != 0;
    axis->SetAppearance(look);
    ApplyAxis(AxisId::Palette);
    LayoutAndRedraw();
}

void CUI_VexplotCtrl::SetPaletteFile(const std::string& file) {
    if (palette_.LoadFile(file) == 1) {
        ApplyPalette();
        UpdateLegend();
    } else if (!file.empty()) {
        // The palette stays as it was; the host learns which file and why.
        FireError(CTL_E_FILENOTFOUND,
                  ("Cannot open the palette file \"" + file + "\": " + palette_.GetOpenFailure() + ".").c_str());
    }
}

void CUI_VexplotCtrl::ReportNotImplemented() { FireError(kErrorNotImplemented, kTextNotImplemented); }


void CUI_VexplotCtrl::EnableCustomDataCellToolTip(int32_t show) {
    if (CGD_GraphObject* graph = Active()) graph->SetCustomToolTip(show != 0);
}

void CUI_VexplotCtrl::FireDataCellMouseOver(double x, double y, double z, bool select, std::string* text) {
    std::string local = text ? *text : std::string();
    FireEvent(kDispidDataCellMouseOver,
              {Variant(x), Variant(y), Variant(z), Variant(int32_t{select ? 1 : 0}), Variant::Ref(&local)}, false);
    if (text) *text = std::move(local);
}

// -- the bitmap --

int32_t CUI_VexplotCtrl::RetrieveBitmap() {
    if (!site_ || !currentView_) return 0;
    const PixelRect plot = GetPlotRect();
    const int32_t width = plot.right - plot.left;
    const int32_t height = plot.bottom - plot.top;
    if (width <= 0 || height <= 0) return 0;
    std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
    const ImageBuffer image{pixels.data(), width, height, width, 0};
    DrawAnnotations();
    const HRESULT hr = Is3DViewCurrent() ? GetView3D()->RenderToImage(&image)
                       : GetDevice2D()   ? GetDevice2D()->RenderToImage(&image)
                                         : E_UNEXPECTED;
    if (FAILED(hr)) {
        FireError(hr, "The view could not be rendered.");
        return 0;
    }
    return static_cast<int32_t>(site_->CreateBitmap(image));
}

}  // namespace vexplot
