#include "RecordingEngine.h"

#include <cstring>

namespace vexplot::test {

namespace {

std::string GridArgs(int32_t xCount, int32_t yCount, const GridExtent* e, bool dataFlag) {
    if (!e) return Args(xCount, yCount, "null", dataFlag);
    return Args(xCount, yCount, e->xFirst, e->xLast, e->yFirst, e->yLast, e->zMin, e->zMax, dataFlag);
}

void KeepGrid(std::vector<double>* kept, const double* values, int32_t xCount, int32_t yCount) {
    const size_t n = xCount > 0 && yCount > 0 ? static_cast<size_t>(xCount) * static_cast<size_t>(yCount) : 0;
    kept->assign(values, values + (values ? n : 0));
}

const char* Text(const char* text) { return text ? text : "null"; }

}  // namespace

// -- device --

HRESULT RecordingDevice::Note(const char* operation, const std::string& args) {
    return log_->Record(std::string("device.") + operation, args);
}

HRESULT RecordingDevice::Attach(WindowHandle window) { return Note("Attach", Args(window)); }
HRESULT RecordingDevice::Detach() { return Note("Detach"); }
HRESULT RecordingDevice::Resize(int32_t width, int32_t height) { return Note("Resize", Args(width, height)); }
HRESULT RecordingDevice::Draw(const ImageBuffer*) { return Note("Draw"); }
HRESULT RecordingDevice::RenderToImage(const ImageBuffer*) { return Note("RenderToImage"); }
HRESULT RecordingDevice::SetAxisStyle(AxisId axis, const AxisStyle*) { return Note("SetAxisStyle", Args(axis)); }
HRESULT RecordingDevice::SetAxisTicks(AxisId axis, uint32_t count, const double*, const char* const*) {
    return Note("SetAxisTicks", Args(axis, count));
}
HRESULT RecordingDevice::SetAxisLabel(AxisId axis, const char* text) {
    return Note("SetAxisLabel", Args(axis, Text(text)));
}
HRESULT RecordingDevice::SetAxisFont(AxisId axis, AxisText text, const FontDescription*) {
    return Note("SetAxisFont", Args(axis, text));
}
HRESULT RecordingDevice::SetImageOrientation(int32_t orientation) {
    return Note("SetImageOrientation", Args(orientation));
}
HRESULT RecordingDevice::SetColorBarVisible(bool visible) { return Note("SetColorBarVisible", Args(visible)); }
HRESULT RecordingDevice::SetVisibleRange(const DataRect*) { return Note("SetVisibleRange"); }
HRESULT RecordingDevice::SetBackgroundColor(uint32_t color) { return Note("SetBackgroundColor", Args(color)); }
HRESULT RecordingDevice::SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                                 bool dataFlag) {
    KeepGrid(&grid, values, xCount, yCount);
    return Note("SetGrid", GridArgs(xCount, yCount, extent, dataFlag));
}
HRESULT RecordingDevice::ResetData() { return Note("ResetData"); }
HRESULT RecordingDevice::SetSection(const SectionSettings* s) {
    return Note("SetSection", s ? Args(s->mode, s->plotStyle, s->pointStyle, s->curveColor, s->position) : "null");
}
HRESULT RecordingDevice::SetShading(ShadingMode shading) { return Note("SetShading", Args(shading)); }
HRESULT RecordingDevice::SetParameters(int32_t a, int32_t b, int32_t c, int32_t d) {
    return Note("SetParameters", Args(a, b, c, d));
}
HRESULT RecordingDevice::GetDataRange(DataRect*) { return Note("GetDataRange"); }
HRESULT RecordingDevice::GetVisibleRange(DataRect*) { return Note("GetVisibleRange"); }
int32_t RecordingDevice::QueryTextMarkup() {
    Note("QueryTextMarkup");
    return 0;
}
HRESULT RecordingDevice::DataToClient(double x, double y, int32_t*, int32_t*) {
    return Note("DataToClient", Args(x, y));
}
HRESULT RecordingDevice::ClientToData(int32_t px, int32_t py, double*, double*) {
    return Note("ClientToData", Args(px, py));
}
HRESULT RecordingDevice::GetImageRect(PixelRect*) { return Note("GetImageRect"); }

// -- view --

HRESULT RecordingView::Note(const char* operation, const std::string& args) {
    return log_->Record(std::string("view.") + operation, args);
}

HRESULT RecordingView::Attach(WindowHandle window) { return Note("Attach", Args(window)); }
HRESULT RecordingView::Detach() { return Note("Detach"); }
HRESULT RecordingView::Refresh(int32_t flags) { return Note("Refresh", Args(flags)); }
HRESULT RecordingView::Resize(int32_t width, int32_t height) { return Note("Resize", Args(width, height)); }
HRESULT RecordingView::Update(int32_t detail) { return Note("Update", Args(detail)); }
HRESULT RecordingView::SetDetailBudget(uint32_t cells) { return Note("SetDetailBudget", Args(cells)); }
HRESULT RecordingView::Draw(const ImageBuffer*) { return Note("Draw"); }
HRESULT RecordingView::RenderToImage(const ImageBuffer*) { return Note("RenderToImage"); }
HRESULT RecordingView::SelectLayer(int32_t layer) { return Note("SelectLayer", Args(layer)); }
HRESULT RecordingView::RemoveLayer(int32_t layer) { return Note("RemoveLayer", Args(layer)); }
HRESULT RecordingView::SetBackgroundColor(uint32_t color) { return Note("SetBackgroundColor", Args(color)); }
HRESULT RecordingView::SetLayerVisible(int32_t layer, bool visible) {
    return Note("SetLayerVisible", Args(layer, visible));
}
HRESULT RecordingView::SetGraphStyle(GraphStyle style) { return Note("SetGraphStyle", Args(style)); }
HRESULT RecordingView::SetShading(ShadingMode shading) { return Note("SetShading", Args(shading)); }
HRESULT RecordingView::SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                               bool dataFlag) {
    KeepGrid(&grid, values, xCount, yCount);
    return Note("SetGrid", GridArgs(xCount, yCount, extent, dataFlag));
}
HRESULT RecordingView::ReleaseGrid() { return Note("ReleaseGrid"); }
HRESULT RecordingView::SetAxisStyle(AxisId axis, const AxisStyle*) { return Note("SetAxisStyle", Args(axis)); }
HRESULT RecordingView::SetAxisTicks(AxisId axis, uint32_t count, const double*, const char* const*) {
    return Note("SetAxisTicks", Args(axis, count));
}
HRESULT RecordingView::SetAxisLabel(AxisId axis, const char* text) {
    return Note("SetAxisLabel", Args(axis, Text(text)));
}
HRESULT RecordingView::SetAxisFont(AxisId axis, AxisText text, const FontDescription*) {
    return Note("SetAxisFont", Args(axis, text));
}
int32_t RecordingView::QueryTextMarkup() {
    Note("QueryTextMarkup");
    return 0;
}
HRESULT RecordingView::ProjectPoint(double x, double y, double z, int32_t*, int32_t*) {
    return Note("ProjectPoint", Args(x, y, z));
}
HRESULT RecordingView::GetViewBounds(DataRect*, DataRect*) { return Note("GetViewBounds"); }
HRESULT RecordingView::SetVisibleRange(const DataRect*) { return Note("SetVisibleRange"); }
HRESULT RecordingView::SetPointStyle(PointStyle style, float size) { return Note("SetPointStyle", Args(style, size)); }
HRESULT RecordingView::SetLineWidth(float pixels) { return Note("SetLineWidth", Args(pixels)); }
HRESULT RecordingView::ClearOverlay() { return Note("ClearOverlay"); }
HRESULT RecordingView::AddOverlayText(const Point3*, const char* text, uint32_t color, const FontDescription*) {
    return Note("AddOverlayText", Args(Text(text), color));
}
HRESULT RecordingView::AddOverlayImage(const Point3*, const ImageBuffer*, uint32_t transparentColor) {
    return Note("AddOverlayImage", Args(transparentColor));
}
HRESULT RecordingView::AddOverlayPolyline(uint32_t count, const Point3*, uint32_t color, bool closed) {
    return Note("AddOverlayPolyline", Args(count, color, closed));
}
HRESULT RecordingView::SetAxesVisible(bool visible) { return Note("SetAxesVisible", Args(visible)); }
HRESULT RecordingView::SetDataVisible(bool visible) { return Note("SetDataVisible", Args(visible)); }
HRESULT RecordingView::SetLowResolution(bool low) { return Note("SetLowResolution", Args(low)); }
HRESULT RecordingView::SetAxisScale(AxisId axis, double factor) { return Note("SetAxisScale", Args(axis, factor)); }
HRESULT RecordingView::SetGridVisible(bool visible) { return Note("SetGridVisible", Args(visible)); }
HRESULT RecordingView::SetLogZ(bool logarithmic) { return Note("SetLogZ", Args(logarithmic)); }
HRESULT RecordingView::GetCameraPosition(CameraVector* out) {
    if (out) *out = position;
    return Note("GetCameraPosition");
}
HRESULT RecordingView::SetCameraPosition(CameraVector v) {
    position = v;
    return Note("SetCameraPosition", Args(v.x, v.y, v.z, v.w));
}
HRESULT RecordingView::GetCameraCenter(CameraVector* out) {
    if (out) *out = center;
    return Note("GetCameraCenter");
}
HRESULT RecordingView::SetCameraCenter(CameraVector v) {
    center = v;
    return Note("SetCameraCenter", Args(v.x, v.y, v.z, v.w));
}
HRESULT RecordingView::GetAzimuth(float*) { return Note("GetAzimuth"); }
HRESULT RecordingView::SetAzimuth(float degrees) { return Note("SetAzimuth", Args(degrees)); }
HRESULT RecordingView::GetElevation(float*) { return Note("GetElevation"); }
HRESULT RecordingView::SetElevation(float degrees) { return Note("SetElevation", Args(degrees)); }
HRESULT RecordingView::GetSceneScale(double*) { return Note("GetSceneScale"); }
HRESULT RecordingView::SetSceneScale(double scale) { return Note("SetSceneScale", Args(scale)); }
HRESULT RecordingView::GetDistance(float*) { return Note("GetDistance"); }
HRESULT RecordingView::SetDistance(float distance) { return Note("SetDistance", Args(distance)); }
HRESULT RecordingView::ResetCamera() { return Note("ResetCamera"); }
HRESULT RecordingView::Pick(int32_t px, int32_t py, Point3*) { return Note("Pick", Args(px, py)); }

// -- root --

RecordingEngine::RecordingEngine(std::shared_ptr<CallLog> log)
    : device(MakeComObject<RecordingDevice>(log)), view(MakeComObject<RecordingView>(log)), log_(std::move(log)) {}

HRESULT RecordingEngine::GetName(char* buffer, uint32_t size) {
    static constexpr char kName[] = "Recording";
    if (!buffer || size < sizeof kName) return E_INVALIDARG;
    std::memcpy(buffer, kName, sizeof kName);
    return log_->Record("engine.GetName");
}
HRESULT RecordingEngine::GetCapabilities(uint32_t* flags) {
    if (flags) *flags = kEngineRenderToImage;
    return log_->Record("engine.GetCapabilities");
}
HRESULT RecordingEngine::Initialize() { return log_->Record("engine.Initialize"); }
HRESULT RecordingEngine::SetPalette(uint32_t count, const uint32_t*) {
    return log_->Record("engine.SetPalette", Args(count));
}
HRESULT RecordingEngine::GetDevice2D(IGraphDevice2D** out) {
    const HRESULT hr = log_->Record("engine.GetDevice2D");
    if (!out) return E_POINTER;
    *out = nullptr;
    if (FAILED(hr)) return hr;
    *out = ComPtr<IGraphDevice2D>(device).Detach();
    return S_OK;
}
HRESULT RecordingEngine::GetView3D(IGraphView3D** out) {
    const HRESULT hr = log_->Record("engine.GetView3D");
    if (!out) return E_POINTER;
    *out = nullptr;
    if (FAILED(hr)) return hr;
    *out = ComPtr<IGraphView3D>(view).Detach();
    return S_OK;
}

}  // namespace vexplot::test
