#pragma once
#include "com/ComObject.h"
#include "engine/IGraphView3D.h"

namespace vexplot::test {

// A 3-D view that answers only what an axis asks: the text-markup query
// (slot 23) and the view bounds (slot 25). Every other call fails with
// E_NOTIMPL, so an axis that reached for more would show in its results.
class ViewBoundsDouble final : public ComObject<IGraphView3D> {
public:
    int32_t markup = 0;  // 0: the surface draws \SUP
    HRESULT boundsResult = S_OK;
    DataRect shown{};
    DataRect full{};

    int32_t QueryTextMarkup() override { return markup; }
    HRESULT GetViewBounds(DataRect* s, DataRect* f) override {
        if (FAILED(boundsResult)) return boundsResult;
        *s = shown;
        *f = full;
        return S_OK;
    }

    HRESULT Attach(WindowHandle) override { return E_NOTIMPL; }
    HRESULT Detach() override { return E_NOTIMPL; }
    HRESULT Refresh(int32_t) override { return E_NOTIMPL; }
    HRESULT Resize(int32_t, int32_t) override { return E_NOTIMPL; }
    HRESULT Update(int32_t) override { return E_NOTIMPL; }
    HRESULT SetDetailBudget(uint32_t) override { return E_NOTIMPL; }
    HRESULT Draw(const ImageBuffer*) override { return E_NOTIMPL; }
    HRESULT RenderToImage(const ImageBuffer*) override { return E_NOTIMPL; }
    HRESULT SelectLayer(int32_t) override { return E_NOTIMPL; }
    HRESULT RemoveLayer(int32_t) override { return E_NOTIMPL; }
    HRESULT SetBackgroundColor(uint32_t) override { return E_NOTIMPL; }
    HRESULT SetLayerVisible(int32_t, bool) override { return E_NOTIMPL; }
    HRESULT SetGraphStyle(GraphStyle) override { return E_NOTIMPL; }
    HRESULT SetShading(ShadingMode) override { return E_NOTIMPL; }
    HRESULT SetGrid(const double*, int32_t, int32_t, const GridExtent*, bool) override { return E_NOTIMPL; }
    HRESULT ReleaseGrid() override { return E_NOTIMPL; }
    HRESULT SetAxisStyle(AxisId, const AxisStyle*) override { return E_NOTIMPL; }
    HRESULT SetAxisTicks(AxisId, uint32_t, const double*, const char* const*) override { return E_NOTIMPL; }
    HRESULT SetAxisLabel(AxisId, const char*) override { return E_NOTIMPL; }
    HRESULT SetAxisFont(AxisId, AxisText, const FontDescription*) override { return E_NOTIMPL; }
    HRESULT ProjectPoint(double, double, double, int32_t*, int32_t*) override { return E_NOTIMPL; }
    HRESULT SetVisibleRange(const DataRect*) override { return E_NOTIMPL; }
    HRESULT SetPointStyle(PointStyle, float) override { return E_NOTIMPL; }
    HRESULT SetLineWidth(float) override { return E_NOTIMPL; }
    HRESULT ClearOverlay() override { return E_NOTIMPL; }
    HRESULT AddOverlayText(const Point3*, const char*, uint32_t, const FontDescription*) override { return E_NOTIMPL; }
    HRESULT AddOverlayImage(const Point3*, const ImageBuffer*, uint32_t) override { return E_NOTIMPL; }
    HRESULT AddOverlayPolyline(uint32_t, const Point3*, uint32_t, bool) override { return E_NOTIMPL; }
    HRESULT SetAxesVisible(bool) override { return E_NOTIMPL; }
    HRESULT SetDataVisible(bool) override { return E_NOTIMPL; }
    HRESULT SetLowResolution(bool) override { return E_NOTIMPL; }
    HRESULT SetAxisScale(AxisId, double) override { return E_NOTIMPL; }
    HRESULT SetGridVisible(bool) override { return E_NOTIMPL; }
    HRESULT SetLogZ(bool) override { return E_NOTIMPL; }
    HRESULT GetCameraPosition(CameraVector*) override { return E_NOTIMPL; }
    HRESULT SetCameraPosition(CameraVector) override { return E_NOTIMPL; }
    HRESULT GetCameraCenter(CameraVector*) override { return E_NOTIMPL; }
    HRESULT SetCameraCenter(CameraVector) override { return E_NOTIMPL; }
    HRESULT GetAzimuth(float*) override { return E_NOTIMPL; }
    HRESULT SetAzimuth(float) override { return E_NOTIMPL; }
    HRESULT GetElevation(float*) override { return E_NOTIMPL; }
    HRESULT SetElevation(float) override { return E_NOTIMPL; }
    HRESULT GetSceneScale(double*) override { return E_NOTIMPL; }
    HRESULT SetSceneScale(double) override { return E_NOTIMPL; }
    HRESULT GetDistance(float*) override { return E_NOTIMPL; }
    HRESULT SetDistance(float) override { return E_NOTIMPL; }
    HRESULT ResetCamera() override { return E_NOTIMPL; }
    HRESULT Pick(int32_t, int32_t, Point3*) override { return E_NOTIMPL; }

private:
    ~ViewBoundsDouble() override = default;
};

}  // namespace vexplot::test
