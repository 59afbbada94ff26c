#pragma once
#include <memory>
#include <vector>

#include "com/ComObject.h"
#include "engine/IGraphDevice2D.h"
#include "engine/IGraphEngine.h"
#include "engine/IGraphView3D.h"
#include "CallLog.h"

namespace vexplot::test {

// Engine doubles: every call is recorded in the shared log as
// "engine.X", "device.X" or "view.X" with its arguments, and answers the
// failure injected for it. Grids are recorded as
// SetGrid(xCount,yCount,xFirst,xLast,yFirst,yLast,zMin,zMax,dataFlag) and
// their values kept in `grid`.

class RecordingDevice final : public ComObject<IGraphDevice2D> {
public:
    explicit RecordingDevice(std::shared_ptr<CallLog> log) : log_(std::move(log)) {}

    HRESULT Attach(WindowHandle window) override;
    HRESULT Detach() override;
    HRESULT Resize(int32_t width, int32_t height) override;
    HRESULT Draw(const ImageBuffer* windowPixels) override;
    HRESULT RenderToImage(const ImageBuffer* image) override;
    HRESULT SetAxisStyle(AxisId axis, const AxisStyle* style) override;
    HRESULT SetAxisTicks(AxisId axis, uint32_t count, const double* values, const char* const* texts) override;
    HRESULT SetAxisLabel(AxisId axis, const char* text) override;
    HRESULT SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) override;
    HRESULT SetImageOrientation(int32_t orientation) override;
    HRESULT SetColorBarVisible(bool visible) override;
    HRESULT SetVisibleRange(const DataRect* range) override;
    HRESULT SetBackgroundColor(uint32_t color) override;
    HRESULT SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                    bool dataFlag) override;
    HRESULT ResetData() override;
    HRESULT SetSection(const SectionSettings* section) override;
    HRESULT SetShading(ShadingMode shading) override;
    HRESULT SetParameters(int32_t leftMargin, int32_t colorBarWidth, int32_t paletteAxisWidth,
                          int32_t bottomMargin) override;
    HRESULT GetDataRange(DataRect* range) override;
    HRESULT GetVisibleRange(DataRect* range) override;
    int32_t QueryTextMarkup() override;
    HRESULT DataToClient(double x, double y, int32_t* px, int32_t* py) override;
    HRESULT ClientToData(int32_t px, int32_t py, double* x, double* y) override;
    HRESULT GetImageRect(PixelRect* rect) override;

    std::vector<double> grid;

private:
    ~RecordingDevice() override = default;
    HRESULT Note(const char* operation, const std::string& args = {});

    std::shared_ptr<CallLog> log_;
};

class RecordingView final : public ComObject<IGraphView3D> {
public:
    explicit RecordingView(std::shared_ptr<CallLog> log) : log_(std::move(log)) {}

    HRESULT Attach(WindowHandle window) override;
    HRESULT Detach() override;
    HRESULT Refresh(int32_t flags) override;
    HRESULT Resize(int32_t width, int32_t height) override;
    HRESULT Update(int32_t detail) override;
    HRESULT SetDetailBudget(uint32_t cells) override;
    HRESULT Draw(const ImageBuffer* windowPixels) override;
    HRESULT RenderToImage(const ImageBuffer* image) override;
    HRESULT SelectLayer(int32_t layer) override;
    HRESULT RemoveLayer(int32_t layer) override;
    HRESULT SetBackgroundColor(uint32_t color) override;
    HRESULT SetLayerVisible(int32_t layer, bool visible) override;
    HRESULT SetGraphStyle(GraphStyle style) override;
    HRESULT SetShading(ShadingMode shading) override;
    HRESULT SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                    bool dataFlag) override;
    HRESULT ReleaseGrid() override;
    HRESULT SetAxisStyle(AxisId axis, const AxisStyle* style) override;
    HRESULT SetAxisTicks(AxisId axis, uint32_t count, const double* values, const char* const* texts) override;
    HRESULT SetAxisLabel(AxisId axis, const char* text) override;
    HRESULT SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) override;
    int32_t QueryTextMarkup() override;
    HRESULT ProjectPoint(double x, double y, double z, int32_t* px, int32_t* py) override;
    HRESULT GetViewBounds(DataRect* shown, DataRect* full) override;
    HRESULT SetVisibleRange(const DataRect* range) override;
    HRESULT SetPointStyle(PointStyle style, float sizePixels) override;
    HRESULT SetLineWidth(float pixels) override;
    HRESULT ClearOverlay() override;
    HRESULT AddOverlayText(const Point3* at, const char* text, uint32_t color, const FontDescription* font) override;
    HRESULT AddOverlayImage(const Point3* at, const ImageBuffer* image, uint32_t transparentColor) override;
    HRESULT AddOverlayPolyline(uint32_t count, const Point3* points, uint32_t color, bool closed) override;
    HRESULT SetAxesVisible(bool visible) override;
    HRESULT SetDataVisible(bool visible) override;
    HRESULT SetLowResolution(bool low) override;
    HRESULT SetAxisScale(AxisId axis, double factor) override;
    HRESULT SetGridVisible(bool visible) override;
    HRESULT SetLogZ(bool logarithmic) override;
    HRESULT GetCameraPosition(CameraVector* position) override;
    HRESULT SetCameraPosition(CameraVector position) override;
    HRESULT GetCameraCenter(CameraVector* center) override;
    HRESULT SetCameraCenter(CameraVector center) override;
    HRESULT GetAzimuth(float* degrees) override;
    HRESULT SetAzimuth(float degrees) override;
    HRESULT GetElevation(float* degrees) override;
    HRESULT SetElevation(float degrees) override;
    HRESULT GetSceneScale(double* scale) override;
    HRESULT SetSceneScale(double scale) override;
    HRESULT GetDistance(float* distance) override;
    HRESULT SetDistance(float distance) override;
    HRESULT ResetCamera() override;
    HRESULT Pick(int32_t px, int32_t py, Point3* point) override;

    std::vector<double> grid;
    CameraVector position{};
    CameraVector center{};

private:
    ~RecordingView() override = default;
    HRESULT Note(const char* operation, const std::string& args = {});

    std::shared_ptr<CallLog> log_;
};

class RecordingEngine final : public ComObject<IGraphEngine> {
public:
    explicit RecordingEngine(std::shared_ptr<CallLog> log);

    HRESULT GetName(char* buffer, uint32_t size) override;
    HRESULT GetCapabilities(uint32_t* flags) override;
    HRESULT Initialize() override;
    HRESULT SetPalette(uint32_t count, const uint32_t* colors) override;
    HRESULT GetDevice2D(IGraphDevice2D** device) override;
    HRESULT GetView3D(IGraphView3D** view) override;

    ComPtr<RecordingDevice> device;
    ComPtr<RecordingView> view;

private:
    ~RecordingEngine() override = default;

    std::shared_ptr<CallLog> log_;
};

}  // namespace vexplot::test
