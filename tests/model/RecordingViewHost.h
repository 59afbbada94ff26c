#pragma once
#include <memory>
#include <string>

#include "CallLog.h"
#include "com/ComObject.h"
#include "model/IViewHost.h"

namespace vexplot::test {

// The control as a graph object sees it: records every call as "host.X" in
// the shared log and answers from its public fields. The queries a graph
// object asks on every step (the list, the engine, the background colour,
// the view mode) and the wait cursor stay out of the log.
class RecordingViewHost final : public ComObject<IViewHost> {
public:
    explicit RecordingViewHost(std::shared_ptr<CallLog> log) : log_(std::move(log)) {}

    void RecalcLayout() override { Note("RecalcLayout"); }
    CGD_GraphObjectList* GetGraphObjects() override { return list; }
    void RefreshGraphObject(CGD_GraphObject*) override { Note("RefreshGraphObject"); }
    void Rebuild1DView(CGD_GraphObject*) override { Note("Rebuild1DView"); }
    void BeginWaitCursor() override { ++waitDepth; }
    void EndWaitCursor() override { --waitDepth; }
    int32_t GetViewMode() override { return is3DCurrent; }
    void SetViewMode(int32_t mode) override { Note("SetViewMode", mode); }
    PixelRect GetPlotRect() override { return {}; }
    void SetModified() override { Note("SetModified"); }
    void FireError(HRESULT code, const char*) override { Note("FireError", code); }
    CGD_Axis* GetAxis(AxisId) override { return nullptr; }
    void CreateAxes() override { Note("CreateAxes"); }
    CUIW_InfoWnd* GetInfoWindow() override { return nullptr; }
    void UpdateLegend() override { Note("UpdateLegend"); }
    void SetStatusText(const char* text) override { Note("SetStatusText", text); }
    uint32_t GetBackgroundColor() override { return backgroundColor; }
    IGraphEngine* GetEngine() override { return engine; }
    WindowHandle GetCurrentViewWindow() override { return 0; }
    int32_t Is3DViewCurrent() override {
        Note("Is3DViewCurrent");
        return is3DCurrent;
    }
    void InvalidateView(const PixelRect*) override { Note("InvalidateView"); }
    int32_t ShowMessage(const char* text, uint32_t) override {
        Note("ShowMessage", text);
        return 1;
    }
    void AddAnnotation(CGD_Annotation*) override { Note("AddAnnotation"); }
    void RemoveAnnotation(CGD_Annotation*) override { Note("RemoveAnnotation"); }
    void SelectAnnotation(CGD_Annotation*) override { Note("SelectAnnotation"); }
    CGD_Annotation* GetSelectedAnnotation() override { return nullptr; }
    void ResetAxisLabel(const char* axis) override { Note("ResetAxisLabel", axis); }
    void SetXLabel(const char* text) override { Note("SetXLabel", text); }
    void SetYLabel(const char* text) override { Note("SetYLabel", text); }
    void SetZLabel(const char* text) override { Note("SetZLabel", text); }
    void BeginViewMotion() override { Note("BeginViewMotion"); }
    void EndViewMotion() override { Note("EndViewMotion"); }
    bool ClientToData(int32_t, int32_t, Point3*) override { return false; }
    bool DataToClient(const Point3&, int32_t*, int32_t*) override { return false; }
    void FireDataSelect(const DataRect&, double, double) override { Note("FireDataSelect"); }
    void FireResample(const DataRect&) override { Note("FireResample"); }
    void Redraw(bool erase) override { Note("Redraw", erase); }
    void SetCursorShape(int32_t shape) override { Note("SetCursorShape", shape); }
    void SetTimer(uint32_t id, uint32_t milliseconds) override { Note("SetTimer", id, milliseconds); }
    void KillTimer(uint32_t id) override { Note("KillTimer", id); }
    IGraphDevice2D* GetDevice2D() override { return nullptr; }
    IGraphView3D* GetView3D() override { return nullptr; }
    void SetSurfaceViewAvailable(int32_t available) override { Note("SetSurfaceViewAvailable", available); }
    void ShowContextMenu(int32_t x, int32_t y) override { Note("ShowContextMenu", x, y); }

    CGD_GraphObjectList* list = nullptr;
    IGraphEngine* engine = nullptr;
    uint32_t backgroundColor = 0;
    int32_t is3DCurrent = 1;
    int waitDepth = 0;  // Begin minus End

private:
    ~RecordingViewHost() override = default;

    template <class... A>
    void Note(const char* operation, const A&... args) {
        log_->Record(std::string("host.") + operation, Args(args...));
    }

    std::shared_ptr<CallLog> log_;
};

}  // namespace vexplot::test
