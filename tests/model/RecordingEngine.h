#pragma once
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "CallLog.h"
#include "com/ComObject.h"
#include "engine/IGraphDevice2D.h"
#include "engine/IGraphEngine.h"
#include "engine/IGraphView3D.h"

namespace vexplot::test {

// Engine doubles: every call is recorded in the shared log as
// "engine.X", "device.X" or "view.X" with its arguments, and answers the
// failure injected for it. Grids are recorded as
// SetGrid(xCount,yCount,xFirst,xLast,yFirst,yLast,zMin,zMax,dataFlag) and
// their values kept in `grid`. Out-parameters are left alone unless a field
// below says what the double answers.

// The calls the 2-D device and the 3-D view have in common.
template <class Surface>
class RecordingSurface : public ComObject<Surface> {
public:
    RecordingSurface(std::shared_ptr<CallLog> callLog, const char* who) : log(std::move(callLog)), who_(who) {}

    HRESULT Attach(WindowHandle window) override { return Note("Attach", window); }
    HRESULT Detach() override { return Note("Detach"); }
    HRESULT Resize(int32_t width, int32_t height) override { return Note("Resize", width, height); }
    HRESULT Draw(const ImageBuffer*) override { return Note("Draw"); }
    HRESULT RenderToImage(const ImageBuffer*) override { return Note("RenderToImage"); }
    HRESULT SetBackgroundColor(uint32_t color) override { return Note("SetBackgroundColor", color); }
    HRESULT SetShading(ShadingMode shading) override { return Note("SetShading", shading); }
    HRESULT SetVisibleRange(const DataRect*) override { return Note("SetVisibleRange"); }
    HRESULT SetAxisStyle(AxisId axis, const AxisStyle*) override { return Note("SetAxisStyle", axis); }
    // Recorded as SetAxisTicks(axis,count,first,last).
    HRESULT SetAxisTicks(AxisId axis, uint32_t count, const double* values, const char* const*) override {
        if (count == 0 || !values) return Note("SetAxisTicks", axis, count);
        return Note("SetAxisTicks", axis, count, values[0], values[count - 1]);
    }
    HRESULT SetAxisLabel(AxisId axis, const char* text) override { return Note("SetAxisLabel", axis, text); }
    HRESULT SetAxisFont(AxisId axis, AxisText text, const FontDescription*) override {
        return Note("SetAxisFont", axis, text);
    }
    int32_t QueryTextMarkup() override {
        Note("QueryTextMarkup");
        return markup;
    }
    HRESULT SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* e,
                    bool dataFlag) override {
        const size_t n = xCount > 0 && yCount > 0 ? static_cast<size_t>(xCount) * static_cast<size_t>(yCount) : 0;
        grid.assign(values, values + (values ? n : 0));
        if (!e) return Note("SetGrid", xCount, yCount, "null", dataFlag);
        return Note("SetGrid", xCount, yCount, e->xFirst, e->xLast, e->yFirst, e->yLast, e->zMin, e->zMax, dataFlag);
    }

    // Text is 7 pixels a byte and 16 high, so that boxes are predictable.
    HRESULT MeasureText(const char* text, const FontDescription*, int32_t* width, int32_t* height) override {
        if (width) *width = text ? 7 * static_cast<int32_t>(std::string_view(text).size()) : 0;
        if (height) *height = 16;
        return Note("MeasureText");
    }

    // Records "who.Release()" for every Release while set, so that a test
    // can see the order in which an owner lets go of its surfaces.
    uint32_t Release() override {
        if (logReleases) log->Record(who_ + "Release");
        return ComObject<Surface>::Release();
    }

    std::shared_ptr<CallLog> log;
    std::vector<double> grid;
    int32_t markup = 0;  // what QueryTextMarkup answers (0: the surface draws \SUP)
    bool logReleases = false;

protected:
    ~RecordingSurface() override = default;

    template <class... A>
    HRESULT Note(const char* operation, const A&... args) {
        return log->Record(who_ + operation, Args(args...));
    }

private:
    std::string who_;
};

class RecordingDevice final : public RecordingSurface<IGraphDevice2D> {
public:
    explicit RecordingDevice(std::shared_ptr<CallLog> calls) : RecordingSurface(std::move(calls), "device.") {}

    HRESULT SetImageOrientation(int32_t orientation) override { return Note("SetImageOrientation", orientation); }
    HRESULT SetColorBarVisible(bool visible) override { return Note("SetColorBarVisible", visible); }
    HRESULT ResetData() override { return Note("ResetData"); }
    HRESULT SetSection(const SectionSettings* s) override {
        if (!s) return Note("SetSection", "null");
        return Note("SetSection", s->mode, s->plotStyle, s->pointStyle, s->curveColor, s->position);
    }
    HRESULT SetParameters(int32_t a, int32_t b, int32_t c, int32_t d) override {
        return Note("SetParameters", a, b, c, d);
    }
    HRESULT GetDataRange(DataRect*) override { return Note("GetDataRange"); }
    HRESULT GetVisibleRange(DataRect*) override { return Note("GetVisibleRange"); }
    // Identity mapping (a data unit is a pixel), so that hit tests can be
    // checked at exact pixels.
    HRESULT DataToClient(double x, double y, int32_t* px, int32_t* py) override {
        if (px) *px = static_cast<int32_t>(std::lround(x));
        if (py) *py = static_cast<int32_t>(std::lround(y));
        return Note("DataToClient", x, y);
    }
    HRESULT ClientToData(int32_t px, int32_t py, double*, double*) override { return Note("ClientToData", px, py); }
    HRESULT GetImageRect(PixelRect* rect) override {
        if (rect) *rect = imageRect;
        return Note("GetImageRect");
    }
    PixelRect imageRect{10, 10, 110, 110};
    HRESULT SetImageVisible(bool visible) override { return Note("SetImageVisible", visible); }
    HRESULT ClearOverlay() override { return Note("ClearOverlay"); }
    HRESULT AddOverlayLines(uint32_t count, const double*, uint32_t color, OverlayStroke, float, bool) override {
        return Note("AddOverlayLines", count, color);
    }
    HRESULT AddOverlayBox(const OverlayBox* box) override { return Note("AddOverlayBox", box ? box->fill : -1); }
    HRESULT AddOverlaySymbol(double x, double y, PointStyle symbol, float, uint32_t color) override {
        return Note("AddOverlaySymbol", x, y, symbol, color);
    }
    HRESULT AddOverlayTextBox(double x, double y, const char* text, const FontDescription*,
                              const OverlayTextBox*) override {
        return Note("AddOverlayTextBox", x, y, text ? text : "");
    }

private:
    ~RecordingDevice() override = default;
};

class RecordingView final : public RecordingSurface<IGraphView3D> {
public:
    explicit RecordingView(std::shared_ptr<CallLog> calls = std::make_shared<CallLog>())
        : RecordingSurface(std::move(calls), "view.") {}

    // Answers `shown` and `full` unless a failure is injected.
    HRESULT GetViewBounds(DataRect* s, DataRect* f) override {
        const HRESULT hr = Note("GetViewBounds");
        if (FAILED(hr)) return hr;
        *s = shown;
        *f = full;
        return S_OK;
    }
    HRESULT Refresh(int32_t flags) override { return Note("Refresh", flags); }
    HRESULT Update(int32_t detail) override { return Note("Update", detail); }
    HRESULT SetDetailBudget(uint32_t cells) override { return Note("SetDetailBudget", cells); }
    HRESULT SelectLayer(int32_t layer) override { return Note("SelectLayer", layer); }
    HRESULT RemoveLayer(int32_t layer) override { return Note("RemoveLayer", layer); }
    HRESULT SetLayerVisible(int32_t layer, bool visible) override { return Note("SetLayerVisible", layer, visible); }
    HRESULT SetGraphStyle(GraphStyle style) override { return Note("SetGraphStyle", style); }
    HRESULT ReleaseGrid() override { return Note("ReleaseGrid"); }
    HRESULT ProjectPoint(double x, double y, double z, int32_t* px, int32_t* py) override {
        if (px) *px = static_cast<int32_t>(std::lround(x));
        if (py) *py = static_cast<int32_t>(std::lround(y));
        return Note("ProjectPoint", x, y, z);
    }
    HRESULT SetPointStyle(PointStyle style, float size) override { return Note("SetPointStyle", style, size); }
    HRESULT SetLineWidth(float pixels) override { return Note("SetLineWidth", pixels); }
    HRESULT ClearOverlay() override { return Note("ClearOverlay"); }
    HRESULT AddOverlayText(const Point3*, const char* text, uint32_t color, const FontDescription*) override {
        return Note("AddOverlayText", text, color);
    }
    HRESULT AddOverlayImage(const Point3*, const ImageBuffer*, uint32_t transparent) override {
        return Note("AddOverlayImage", transparent);
    }
    HRESULT AddOverlayPolyline(uint32_t count, const Point3*, uint32_t color, bool closed) override {
        return Note("AddOverlayPolyline", count, color, closed);
    }
    HRESULT SetAxesVisible(bool visible) override { return Note("SetAxesVisible", visible); }
    HRESULT SetDataVisible(bool visible) override { return Note("SetDataVisible", visible); }
    HRESULT SetLowResolution(bool low) override { return Note("SetLowResolution", low); }
    HRESULT SetAxisScale(AxisId axis, double factor) override { return Note("SetAxisScale", axis, factor); }
    HRESULT SetGridVisible(bool visible) override { return Note("SetGridVisible", visible); }
    HRESULT SetLogZ(bool logarithmic) override { return Note("SetLogZ", logarithmic); }
    // The camera answers from and stores into the fields below.
    HRESULT GetCameraPosition(CameraVector* v) override { return Answer(Note("GetCameraPosition"), v, position); }
    HRESULT SetCameraPosition(CameraVector v) override {
        return Store(Note("SetCameraPosition", v.x, v.y, v.z, v.w), position, v);
    }
    HRESULT GetCameraCenter(CameraVector* v) override { return Answer(Note("GetCameraCenter"), v, center); }
    HRESULT SetCameraCenter(CameraVector v) override {
        return Store(Note("SetCameraCenter", v.x, v.y, v.z, v.w), center, v);
    }
    HRESULT GetAzimuth(float* v) override { return Answer(Note("GetAzimuth"), v, azimuth); }
    HRESULT SetAzimuth(float degrees) override { return Store(Note("SetAzimuth", degrees), azimuth, degrees); }
    HRESULT GetElevation(float* v) override { return Answer(Note("GetElevation"), v, elevation); }
    HRESULT SetElevation(float degrees) override { return Store(Note("SetElevation", degrees), elevation, degrees); }
    HRESULT GetSceneScale(double*) override { return Note("GetSceneScale"); }
    HRESULT SetSceneScale(double scale) override { return Note("SetSceneScale", scale); }
    HRESULT GetDistance(float* v) override { return Answer(Note("GetDistance"), v, distance); }
    HRESULT SetDistance(float d) override { return Store(Note("SetDistance", d), distance, d); }
    HRESULT ResetCamera() override { return Note("ResetCamera"); }
    HRESULT Pick(int32_t px, int32_t py, Point3*) override { return Note("Pick", px, py); }
    HRESULT SetEveryCell(bool everyCell) override { return Note("SetEveryCell", everyCell); }
    HRESULT SetMeshVisible(bool visible) override { return Note("SetMeshVisible", visible); }
    HRESULT SetOverlayDepthTest(bool enabled) override { return Note("SetOverlayDepthTest", enabled); }
    HRESULT AddOverlaySymbol(const Point3*, PointStyle symbol, float, uint32_t color) override {
        return Note("AddOverlaySymbol", symbol, color);
    }
    HRESULT AddOverlayTextBox(const Point3*, int32_t, int32_t, const char* text, const FontDescription*,
                              const OverlayTextBox*) override {
        return Note("AddOverlayTextBox", text ? text : "");
    }
    HRESULT AddOverlayStroke(uint32_t count, const Point3*, uint32_t color, OverlayStroke, float, bool) override {
        return Note("AddOverlayStroke", count, color);
    }

    DataRect shown{}, full{};  // what GetViewBounds answers
    CameraVector position{1, 2, 3, 1};
    CameraVector center{0, 0, 0, 1};
    float azimuth = 30.0f;
    float elevation = 20.0f;
    float distance = 5.0f;

private:
    ~RecordingView() override = default;

    template <class T>
    static HRESULT Answer(HRESULT hr, T* out, const T& value) {
        if (SUCCEEDED(hr) && out) *out = value;
        return hr;
    }
    template <class T>
    static HRESULT Store(HRESULT hr, T& field, const T& value) {
        if (SUCCEEDED(hr)) field = value;
        return hr;
    }
};

class RecordingEngine final : public ComObject<IGraphEngine> {
public:
    explicit RecordingEngine(std::shared_ptr<CallLog> log)
        : device(MakeComObject<RecordingDevice>(log)), view(MakeComObject<RecordingView>(log)), log_(std::move(log)) {}

    HRESULT GetName(char*, uint32_t) override { return log_->Record("engine.GetName"); }
    HRESULT GetCapabilities(uint32_t*) override { return log_->Record("engine.GetCapabilities"); }
    HRESULT Initialize() override { return log_->Record("engine.Initialize"); }
    HRESULT SetPalette(uint32_t n, const uint32_t*) override { return log_->Record("engine.SetPalette", Args(n)); }
    HRESULT GetDevice2D(IGraphDevice2D** out) override {
        if (!noDevice) return HandOut("engine.GetDevice2D", device, out);
        if (out) *out = nullptr;
        return log_->Record("engine.GetDevice2D");
    }
    uint32_t Release() override {
        if (logReleases) log_->Record("engine.Release");
        return ComObject<IGraphEngine>::Release();
    }
    HRESULT GetView3D(IGraphView3D** out) override { return HandOut("engine.GetView3D", view, out); }

    ComPtr<RecordingDevice> device;
    ComPtr<RecordingView> view;
    bool noDevice = false;     // GetDevice2D answers S_OK with no device
    bool logReleases = false;  // as RecordingSurface::logReleases

private:
    ~RecordingEngine() override = default;

    template <class I, class T>
    HRESULT HandOut(const char* operation, const ComPtr<T>& surface, I** out) {
        const HRESULT hr = log_->Record(operation);
        if (!out) return E_POINTER;
        *out = SUCCEEDED(hr) ? ComPtr<I>(surface).Detach() : nullptr;
        return hr;
    }

    std::shared_ptr<CallLog> log_;
};

}  // namespace vexplot::test
