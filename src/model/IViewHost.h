#pragma once
#include <cstdint>

#include "com/IUnknown.h"
#include "engine/IGraphEngine.h"
#include "engine/WindowHandle.h"

namespace vexplot {

class CGD_Annotation;
class CGD_AnnotationList;
class IDialogLogic;
class CGD_Axis;
class CGD_GraphObject;
class CGD_GraphObjectList;
class CUIW_InfoWnd;
class IGraphDevice2D;
class IGraphView3D;

// The control as the model objects and the child windows see it: the owner
// of the view area (its layout and redraw), of the engine, the axes, the
// graph object list and the annotations, and the way out to the host
// (errors, events, messages). The control implements it; graph objects,
// axes, annotations, tools and the child windows hold it as a borrowed
// pointer that lives as long as they do.
//
// Everything runs on the user-interface thread. Borrowed results (pointers
// to model objects, the engine interfaces) carry no reference and stay
// valid until the next call that changes what they point at.
class IViewHost : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{B2B86671-3613-400C-AE6A-C5917DD9E2D0}");

    // -- layout and drawing --
    // Lays the view area out anew (view windows, title bar, status bar,
    // docked info window) and tells the engine surfaces their sizes.
    virtual void RecalcLayout() = 0;  // slot 3
    // The graph objects with their active entry; never null once the
    // control's window exists.
    virtual CGD_GraphObjectList* GetGraphObjects() = 0;  // slot 4
    // Shows `graph`'s new data: redraws the current view and renews the
    // object's preview image in the legend.
    virtual void RefreshGraphObject(CGD_GraphObject* graph) = 0;  // slot 5
    // Recomputes and redraws the one-dimensional section of `graph`.
    virtual void Rebuild1DView(CGD_GraphObject* graph) = 0;  // slot 6
    // Wait cursor over the control; calls nest, each Begin needs its End.
    virtual void BeginWaitCursor() = 0;  // slot 7
    virtual void EndWaitCursor() = 0;    // slot 8
    // The view mode: 1 in 3-D mode, 0 in 2-D mode.
    virtual int32_t GetViewMode() = 0;  // slot 9
    // The mode switch: 0 shows the 2-D window, 1 the 3-D window (when the
    // 3-D view exists); redraws in any case.
    virtual void SetViewMode(int32_t mode) = 0;  // slot 10
    // The plot area of the current view window, in its client pixels.
    virtual PixelRect GetPlotRect() = 0;  // slot 11
    // Marks the control modified (its container offers to save).
    virtual void SetModified() = 0;  // slot 12

    // -- the way to the host --
    // Raises the Error event with `code` and `text` (FireError).
    virtual void FireError(HRESULT code, const char* text) = 0;  // slot 13

    // -- axes, info window, legend, status bar --
    // The axis object: X, Y, Z, or Palette for the colour bar's axis; null
    // before the axes exist.
    virtual CGD_Axis* GetAxis(AxisId axis) = 0;  // slot 14
    // Creates the axes "X", "Y" and "Z" in the control's object list.
    virtual void CreateAxes() = 0;  // slot 15
    virtual CUIW_InfoWnd* GetInfoWindow() = 0;  // slot 16: null before window creation
    // Rebuilds the legend's rows from the graph object list.
    virtual void UpdateLegend() = 0;  // slot 17
    virtual void SetStatusText(const char* text) = 0;  // slot 18: UTF-8, one line
    // The BackgroundColor property, 0x00BBGGRR.
    virtual uint32_t GetBackgroundColor() = 0;  // slot 19

    // -- engine and windows --
    // The engine root, null while there is none.
    virtual IGraphEngine* GetEngine() = 0;  // slot 20
    // The view window on screen: the 2-D or the 3-D view window.
    virtual WindowHandle GetCurrentViewWindow() = 0;  // slot 21
    // 1 when the current view window is the 3-D view window (the engine's
    // 3-D view is on screen and alive), 0 otherwise. Graph objects ask it
    // before they make the 3-D view rebuild its geometry.
    virtual int32_t Is3DViewCurrent() = 0;  // slot 22
    // Repaints part of the current view window; null repaints all of it.
    virtual void InvalidateView(const PixelRect* rect) = 0;  // slot 23
    // A message box through the site: `buttons` 0 OK, 1 OK/Cancel, 4 Yes/No;
    // returns the answer (1 OK, 2 Cancel, 6 Yes, 7 No), the default answer
    // when nobody can be asked.
    virtual int32_t ShowMessage(const char* text, uint32_t buttons) = 0;  // slot 24

    // -- annotations --
    // Registers a new annotation in the object list; the list owns it.
    virtual void AddAnnotation(CGD_Annotation* annotation) = 0;     // slot 25
    // Removes and deletes it; wrappers that point at it are cleared.
    virtual void RemoveAnnotation(CGD_Annotation* annotation) = 0;  // slot 26
    // Makes one annotation the selected one (null: none).
    virtual void SelectAnnotation(CGD_Annotation* annotation) = 0;  // slot 27
    virtual CGD_Annotation* GetSelectedAnnotation() = 0;           // slot 28

    // -- axis labels --
    // The axis named "X", "Y" or "Z" drops its label text and takes it again
    // from the active data set at the next update.
    virtual void ResetAxisLabel(const char* axis) = 0;  // slot 29
    // The label texts the active data set gives its axes, UTF-8.
    virtual void SetXLabel(const char* text) = 0;  // slot 30
    virtual void SetYLabel(const char* text) = 0;  // slot 31
    virtual void SetZLabel(const char* text) = 0;  // slot 32

    // -- interaction --
    // The user starts / stops moving the view: between the two the 3-D view
    // draws with its moving level of detail.
    virtual void BeginViewMotion() = 0;  // slot 33
    virtual void EndViewMotion() = 0;    // slot 34
    // Data point under a client pixel of the current view; false when none.
    virtual bool ClientToData(int32_t px, int32_t py, Point3* point) = 0;  // slot 35
    // Client pixel of a data point in the current view; false when it is
    // not visible.
    virtual bool DataToClient(const Point3& point, int32_t* px, int32_t* py) = 0;  // slot 36
    // Raise the DataSelect and Resample events (DataSelect only while
    // DataSelectEnable is set).
    virtual void FireDataSelect(const DataRect& xy, double zMin, double zMax) = 0;  // slot 37
    virtual void FireResample(const DataRect& xy) = 0;  // slot 38

    // Redraws the current view, erasing the background first when `erase`.
    virtual void Redraw(bool erase) = 0;  // slot 39
    // Cursor over the view: 0 arrow, 1 cross, 2 hand, 3 size-all, 4 zoom.
    virtual void SetCursorShape(int32_t shape) = 0;  // slot 40
    // Timers of the control's window; the control routes their ticks.
    virtual void SetTimer(uint32_t id, uint32_t milliseconds) = 0;  // slot 41
    virtual void KillTimer(uint32_t id) = 0;                         // slot 42
    // The engine surfaces as the control holds them (borrowed; the 3-D view
    // is null after it was lost or could not start).
    virtual IGraphDevice2D* GetDevice2D() = 0;  // slot 43
    virtual IGraphView3D* GetView3D() = 0;      // slot 44
    // 1 while the grid is shown as surface or image, 0 while the
    // one-dimensional section replaces it: the control enables the 3-D mode
    // commands and the navigator accordingly.
    virtual void SetSurfaceViewAvailable(int32_t available) = 0;  // slot 45
    // The context menu at a point of the control's client area.
    virtual void ShowContextMenu(int32_t x, int32_t y) = 0;  // slot 46

    // -- annotations, continued --
    // Runs a modal dialog through the control's site: kAnswerOk when the
    // user accepted it (the logic has then written its values), otherwise
    // kAnswerCancel (2); a host without a site answers 2.
    virtual int32_t RunDialog(IDialogLogic& /*dialog*/) { return 2; }  // slot 47
    // The annotations in the object list, in their tab order; null for a
    // host that keeps none.
    virtual CGD_AnnotationList* GetAnnotations() { return nullptr; }  // slot 48

protected:
    ~IViewHost() = default;
};

}  // namespace vexplot
