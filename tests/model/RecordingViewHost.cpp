#include "RecordingViewHost.h"

namespace vexplot::test {

void RecordingViewHost::Note(const char* operation, const std::string& args) {
    log_->Record(std::string("host.") + operation, args);
}

void RecordingViewHost::NoteQuery(const char* operation) {
    if (logQueries) Note(operation);
}

void RecordingViewHost::RecalcLayout() { Note("RecalcLayout"); }
CGD_GraphObjectList* RecordingViewHost::GetGraphObjects() {
    NoteQuery("GetGraphObjects");
    return list;
}
void RecordingViewHost::RefreshGraphObject(CGD_GraphObject*) { Note("RefreshGraphObject"); }
void RecordingViewHost::Rebuild1DView(CGD_GraphObject*) { Note("Rebuild1DView"); }
void RecordingViewHost::BeginWaitCursor() { ++waitDepth; }
void RecordingViewHost::EndWaitCursor() { --waitDepth; }
int32_t RecordingViewHost::GetViewMode() { return is3DCurrent; }
void RecordingViewHost::SetViewMode(int32_t mode) { Note("SetViewMode", Args(mode)); }
PixelRect RecordingViewHost::GetPlotRect() { return {}; }
void RecordingViewHost::SetModified() { Note("SetModified"); }
void RecordingViewHost::FireError(HRESULT code, const char*) { Note("FireError", Args(code)); }
CGD_Axis* RecordingViewHost::GetAxis(AxisId) { return nullptr; }
void RecordingViewHost::CreateAxes() { Note("CreateAxes"); }
CUIW_InfoWnd* RecordingViewHost::GetInfoWindow() { return nullptr; }
void RecordingViewHost::UpdateLegend() { Note("UpdateLegend"); }
void RecordingViewHost::SetStatusText(const char* text) { Note("SetStatusText", text); }
uint32_t RecordingViewHost::GetBackgroundColor() {
    NoteQuery("GetBackgroundColor");
    return backgroundColor;
}
IGraphEngine* RecordingViewHost::GetEngine() {
    NoteQuery("GetEngine");
    return engine;
}
WindowHandle RecordingViewHost::GetCurrentViewWindow() { return 0; }
int32_t RecordingViewHost::Is3DViewCurrent() {
    Note("Is3DViewCurrent");
    return is3DCurrent;
}
void RecordingViewHost::InvalidateView(const PixelRect*) { Note("InvalidateView"); }
int32_t RecordingViewHost::ShowMessage(const char* text, uint32_t) {
    Note("ShowMessage", text);
    return 1;
}
void RecordingViewHost::AddAnnotation(CGD_Annotation*) { Note("AddAnnotation"); }
void RecordingViewHost::RemoveAnnotation(CGD_Annotation*) { Note("RemoveAnnotation"); }
void RecordingViewHost::SelectAnnotation(CGD_Annotation*) { Note("SelectAnnotation"); }
CGD_Annotation* RecordingViewHost::GetSelectedAnnotation() { return nullptr; }
void RecordingViewHost::ResetAxisLabel(const char* axis) { Note("ResetAxisLabel", axis); }
void RecordingViewHost::SetXLabel(const char* text) { Note("SetXLabel", text); }
void RecordingViewHost::SetYLabel(const char* text) { Note("SetYLabel", text); }
void RecordingViewHost::SetZLabel(const char* text) { Note("SetZLabel", text); }
void RecordingViewHost::BeginViewMotion() { Note("BeginViewMotion"); }
void RecordingViewHost::EndViewMotion() { Note("EndViewMotion"); }
bool RecordingViewHost::ClientToData(int32_t, int32_t, Point3*) { return false; }
bool RecordingViewHost::DataToClient(const Point3&, int32_t*, int32_t*) { return false; }
void RecordingViewHost::FireDataSelect(const DataRect&, double, double) { Note("FireDataSelect"); }
void RecordingViewHost::FireResample(const DataRect&) { Note("FireResample"); }
void RecordingViewHost::Redraw(bool erase) { Note("Redraw", Args(erase)); }
void RecordingViewHost::SetCursorShape(int32_t shape) { Note("SetCursorShape", Args(shape)); }
void RecordingViewHost::SetTimer(uint32_t id, uint32_t ms) { Note("SetTimer", Args(id, ms)); }
void RecordingViewHost::KillTimer(uint32_t id) { Note("KillTimer", Args(id)); }
IGraphDevice2D* RecordingViewHost::GetDevice2D() { return nullptr; }
IGraphView3D* RecordingViewHost::GetView3D() { return nullptr; }
void RecordingViewHost::SetSurfaceViewAvailable(int32_t available) {
    Note("SetSurfaceViewAvailable", Args(available));
}
void RecordingViewHost::ShowContextMenu(int32_t x, int32_t y) { Note("ShowContextMenu", Args(x, y)); }

}  // namespace vexplot::test
