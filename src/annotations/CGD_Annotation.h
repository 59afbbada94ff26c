#pragma once
#include <cstdint>
#include <string>

#include "com/ComPtr.h"
#include "engine/IGraphDevice2D.h"
#include "engine/IGraphView3D.h"
#include "model/ArchiveObject.h"
#include "model/IInfoWindow.h"

namespace vexplot {

class CGD_GraphObject;
class IViewHost;

// The kind codes GetKind answers. The tracer and the difference tracer keep
// the base value 10.
enum class AnnotationKind : int32_t { Region = 2, Marker = 3, Label = 5, Tracer = 10 };

// A Z coordinate equal to this means "no Z value" (the cursor is off the
// surface, or the view has no Z); the tracers' texts then print "Z(-)".
inline constexpr double NoZValue = 4294967295.0;

// The common base of the user's marks on the plot: label, marker, region,
// tracer and difference tracer. Holds the anchor point in data units (a
// region's first corner), the caption, the selected flag, the engine
// binding (the 2-D device as the "view interface" for flat mapping, the 3-D
// view as the "projection interface") and the info-window binding.
//
// The virtual operations are declared in their published slot order; the
// five object slots (runtime class, destructor, Serialize and two hooks)
// come from ArchiveObject. Every operation that needs the info window, the
// engine or a surface returns without effect while it is absent.
//
// Annotations belong to the control's object list (CGD_AnnotationList); the
// automation wrappers keep plain pointers that the list clears before an
// annotation is deleted.
class CGD_Annotation : public ArchiveObject {
public:
    ~CGD_Annotation() override;
    CGD_Annotation(const CGD_Annotation&) = delete;
    CGD_Annotation& operator=(const CGD_Annotation&) = delete;

    // ---- virtual operations, in slot order ----
    // Draws the object into the current view through the engine (label,
    // marker, region); the tracers rewrite their info lines instead.
    virtual void Draw() = 0;                                             // 1
    // Opens the kind's modal property dialog through the owner's site;
    // true when the user accepted it. The tracer has none: false.
    virtual bool ShowProperties() = 0;                                   // 2
    // Client pixels of the current view; rectangles include their left and
    // top edges and exclude their right and bottom edges.
    virtual bool HitTest(int32_t x, int32_t y) = 0;                      // 3
    // Moves the object with the mouse to client pixel (x, y) of the current
    // view: the data point under it becomes the new anchor.
    virtual void DragTo(int32_t x, int32_t y) = 0;                       // 4
    virtual void SetSelected(bool selected);                             // 5
    virtual void AttachInfoWindow(IInfoWindow* window);                  // 6
    virtual void SetPosition(double x, double y, double z);              // 7
    virtual int32_t GetKind() const { return kind_; }                    // 8
    virtual std::string GetDescription();                                // 9
    virtual void UpdateInfoWindow() {}                                   // 10
    virtual void RemoveFromInfoWindow() {}                               // 11
    virtual void SetCaption(const std::string& text) { caption_ = text; }  // 12
    virtual std::string GetCaption() const { return caption_; }          // 13
    // The secondary handles (a marker's guide lines and indicator, a
    // region's Z indicators).
    virtual bool HitTestHandle(int32_t /*x*/, int32_t /*y*/) { return false; }  // 14
    // Binds the object to `engine` (borrowed), the owner's plot rectangle
    // (borrowed, may be null: the owner's own is asked then) and the owner.
    // Called once the engine exists and again whenever it is re-created.
    virtual void Attach(IGraphEngine* engine, const PixelRect* plotRect, IViewHost* owner);  // 15
    virtual void OnAttached() {}                                         // 16
    virtual double GetX() const { return x_; }                           // 17
    virtual double GetY() const { return y_; }                           // 18
    virtual double GetZ() const { return z_; }                           // 19
    // A key the Select tool passes on while this object is selected
    // (virtual-key code).
    virtual void OnKey(uint32_t /*key*/) {}                              // 20
    virtual void OnDetached() {}                                         // 21

    // ---- non-virtual ----
    // Drops the engine and its surfaces (the engine is about to go).
    void ReleaseEngine();
    bool IsSelected() const { return selected_ != 0; }
    int32_t ListIndex() const { return listIndex_; }
    void SetListIndex(int32_t index) { listIndex_ = index; }
    int32_t AuxValue() const { return aux_; }
    void SetAuxValue(int32_t value) { aux_ = value; }
    IViewHost* Owner() const { return owner_; }
    IInfoWindow* InfoWindow() const { return info_; }
    InfoSection InfoEntry() const { return infoEntry_; }
    IGraphEngine* Engine() const { return engine_; }
    IGraphDevice2D* ViewInterface() const { return view_.Get(); }
    IGraphView3D* ProjectionInterface() const { return projection_.Get(); }
    // Whether the object can be selected, tabbed to and hit: labels,
    // markers and regions that are not internal.
    virtual bool Selectable() const { return false; }

protected:
    explicit CGD_Annotation(AnnotationKind kind);

    // The owner's view: true when the 3-D view is on screen.
    bool In3D() const;
    // The plot rectangle: the flat image's rectangle in the 2-D view, the
    // borrowed rectangle or the owner's otherwise.
    PixelRect PlotRect() const;
    // The active graph object of the owner, or null.
    CGD_GraphObject* ActiveGraph() const;
    // The one-dimensional view mode of the active graph object (0 without one).
    int32_t ViewMode1D() const;
    // The Z range the owner shows (the active data's lowest and highest
    // finite value); false without data or for an empty range.
    bool CurrentZRange(double* zmin, double* zmax) const;
    // (x, y, z) as the info lines name it in the current coordinate order:
    // in the one-dimensional views z gives way to where the section cuts.
    std::string CoordinateTriple(double x, double y, double z, bool dashForNoZ) const;
    // The active data's value at (x, y), or `fallback` without data or
    // outside the grid.
    double SurfaceZ(double x, double y, double fallback) const;
    // Refreshes the owner: layout, then a redraw with erase.
    void RefreshOwner() const;
    // The data point under client pixel (x, y) of the current view; false
    // when there is none.
    bool PointAt(int32_t x, int32_t y, Point3* point) const;
    // Opens an info section of `kind` with `header` and `lines`; keeps the
    // handle as the info entry.
    void OpenInfoSection(InfoKind kind, const std::string& header, std::initializer_list<std::string> lines);
    // Removes the info entry, if any.
    void CloseInfoSection();
    // Replaces line `index` (1 = first) of the info entry.
    void SetInfoLine(int32_t index, const std::string& text) const;

    int32_t listIndex_ = -1;
    int32_t kind_;
    double x_ = 0.0;
    double y_ = 0.0;
    double z_ = 0.0;
    std::string caption_;
    int32_t selected_ = 0;
    IGraphEngine* engine_ = nullptr;    // borrowed
    ComPtr<IGraphDevice2D> view_;       // one reference
    ComPtr<IGraphView3D> projection_;   // one reference
    const PixelRect* plotRect_ = nullptr;  // borrowed
    int32_t aux_ = 0;
    std::string description_;
    IViewHost* owner_ = nullptr;        // borrowed
    IInfoWindow* info_ = nullptr;       // borrowed
    InfoSection infoEntry_ = kNoSection;
    int32_t infoLine_ = 0;
};

}  // namespace vexplot
