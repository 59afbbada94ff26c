#pragma once
#include <string>

#include "com/ComObject.h"
#include "model/CGD_GraphObjectList.h"
#include "model/IViewHost.h"

namespace vexplot {

class MessageSink;

// The owner of graph objects used without a control: command-line tools,
// benchmarks and batch jobs that bind data and read it back, with no engine,
// no windows and no annotations. It keeps the graph-object list, the axis
// labels the graph objects hand over, and sends errors and messages to a
// message sink (stderr by default).
class DetachedViewHost final : public ComObject<IViewHost> {
public:
    // `sink` is borrowed; null means the process's stderr sink.
    explicit DetachedViewHost(MessageSink* sink = nullptr);

    const std::string& XLabel() const { return labels_[0]; }
    const std::string& YLabel() const { return labels_[1]; }
    const std::string& ZLabel() const { return labels_[2]; }
    // How often a graph object asked for its view to be shown anew.
    int RefreshCount() const { return refreshes_; }

    // The host's slots; those that need a window or an engine do nothing.
    void RecalcLayout() override {}
    CGD_GraphObjectList* GetGraphObjects() override { return &graphs_; }
    void RefreshGraphObject(CGD_GraphObject*) override { ++refreshes_; }
    void Rebuild1DView(CGD_GraphObject*) override {}
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    int32_t GetViewMode() override { return 0; }
    void SetViewMode(int32_t) override {}
    PixelRect GetPlotRect() override { return {0, 0, 0, 0}; }
    void SetModified() override {}
    void FireError(HRESULT code, const char* text) override;
    CGD_Axis* GetAxis(AxisId) override { return nullptr; }
    void CreateAxes() override {}
    CUIW_InfoWnd* GetInfoWindow() override { return nullptr; }
    void UpdateLegend() override {}
    void SetStatusText(const char*) override {}
    uint32_t GetBackgroundColor() override { return 0x00FFFFFF; }
    IGraphEngine* GetEngine() override { return nullptr; }
    WindowHandle GetCurrentViewWindow() override { return WindowHandle{}; }
    int32_t Is3DViewCurrent() override { return 0; }
    void InvalidateView(const PixelRect*) override {}
    int32_t ShowMessage(const char* text, uint32_t buttons) override;
    void AddAnnotation(CGD_Annotation*) override {}
    void RemoveAnnotation(CGD_Annotation*) override {}
    void SelectAnnotation(CGD_Annotation*) override {}
    CGD_Annotation* GetSelectedAnnotation() override { return nullptr; }
    void ResetAxisLabel(const char* axis) override;
    void SetXLabel(const char* text) override { labels_[0] = text ? text : ""; }
    void SetYLabel(const char* text) override { labels_[1] = text ? text : ""; }
    void SetZLabel(const char* text) override { labels_[2] = text ? text : ""; }
    void BeginViewMotion() override {}
    void EndViewMotion() override {}
    bool ClientToData(int32_t, int32_t, Point3*) override { return false; }
    bool DataToClient(const Point3&, int32_t*, int32_t*) override { return false; }
    void FireDataSelect(const DataRect&, double, double) override {}
    void FireResample(const DataRect&) override {}
    void Redraw(bool) override {}
    void SetCursorShape(int32_t) override {}
    void SetTimer(uint32_t, uint32_t) override {}
    void KillTimer(uint32_t) override {}
    IGraphDevice2D* GetDevice2D() override { return nullptr; }
    IGraphView3D* GetView3D() override { return nullptr; }
    void SetSurfaceViewAvailable(int32_t) override {}
    void ShowContextMenu(int32_t, int32_t) override {}

private:
    ~DetachedViewHost() override = default;

    MessageSink& sink_;
    CGD_GraphObjectList graphs_;
    std::string labels_[3];
    int refreshes_ = 0;
};

}  // namespace vexplot
