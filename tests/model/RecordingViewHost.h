#pragma once
#include <memory>

#include "CallLog.h"
#include "com/ComObject.h"
#include "model/IViewHost.h"

namespace vexplot::test {

// The control as a graph object sees it: records every call as "host.X" in
// the shared log and answers from its public fields.
class RecordingViewHost final : public ComObject<IViewHost> {
public:
    explicit RecordingViewHost(std::shared_ptr<CallLog> log) : log_(std::move(log)) {}

    void RecalcLayout() override;
    CGD_GraphObjectList* GetGraphObjects() override;
    void RefreshGraphObject(CGD_GraphObject* graph) override;
    void Rebuild1DView(CGD_GraphObject* graph) override;
    void BeginWaitCursor() override;
    void EndWaitCursor() override;
    int32_t GetViewMode() override;
    void SetViewMode(int32_t mode) override;
    PixelRect GetPlotRect() override;
    void SetModified() override;
    void FireError(HRESULT code, const char* text) override;
    CGD_Axis* GetAxis(AxisId axis) override;
    void CreateAxes() override;
    CUIW_InfoWnd* GetInfoWindow() override;
    void UpdateLegend() override;
    void SetStatusText(const char* text) override;
    uint32_t GetBackgroundColor() override;
    IGraphEngine* GetEngine() override;
    WindowHandle GetCurrentViewWindow() override;
    int32_t Is3DViewCurrent() override;
    void InvalidateView(const PixelRect* rect) override;
    int32_t ShowMessage(const char* text, uint32_t buttons) override;
    void AddAnnotation(CGD_Annotation* annotation) override;
    void RemoveAnnotation(CGD_Annotation* annotation) override;
    void SelectAnnotation(CGD_Annotation* annotation) override;
    CGD_Annotation* GetSelectedAnnotation() override;
    void ResetAxisLabel(const char* axis) override;
    void SetXLabel(const char* text) override;
    void SetYLabel(const char* text) override;
    void SetZLabel(const char* text) override;
    void BeginViewMotion() override;
    void EndViewMotion() override;
    bool ClientToData(int32_t px, int32_t py, Point3* point) override;
    bool DataToClient(const Point3& point, int32_t* px, int32_t* py) override;
    void FireDataSelect(const DataRect& xy, double zMin, double zMax) override;
    void FireResample(const DataRect& xy) override;
    void Redraw(bool erase) override;
    void SetCursorShape(int32_t shape) override;
    void SetTimer(uint32_t id, uint32_t milliseconds) override;
    void KillTimer(uint32_t id) override;
    IGraphDevice2D* GetDevice2D() override;
    IGraphView3D* GetView3D() override;
    void SetSurfaceViewAvailable(int32_t available) override;
    void ShowContextMenu(int32_t x, int32_t y) override;

    CGD_GraphObjectList* list = nullptr;
    IGraphEngine* engine = nullptr;
    uint32_t backgroundColor = 0;
    int32_t is3DCurrent = 1;
    int waitDepth = 0;  // Begin minus End
    // Queries the graph object asks on every step are left out of the log
    // unless a test wants them.
    bool logQueries = false;

private:
    ~RecordingViewHost() override = default;
    void Note(const char* operation, const std::string& args = {});
    void NoteQuery(const char* operation);

    std::shared_ptr<CallLog> log_;
};

}  // namespace vexplot::test
