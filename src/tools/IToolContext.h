#pragma once
#include <cstdint>
#include <string_view>

#include "engine/IGraphEngine.h"
#include "site/IControlSite.h"
#include "site/WindowInput.h"

namespace vexplot {

class CGD_Annotation;

// The Z of a point that has none (off the surface, or a missing value).
inline constexpr double kNoSurfaceZ = 4294967295.0;

// The kinds of annotation a tool makes. The rubber band is the Zoom tool's
// internal region: drawn like a region, never listed or saved.
enum class ToolAnnotation : int32_t { Label, Marker, Region, Tracer, DiffTracer, RubberBand };

// What the interaction tools need of the control. Points are in the view
// window's client pixels (device pixels); data points in data units. The
// control implements it; tests drive the tools through a double.
//
// Every operation is harmless without data: the queries answer false or
// null and the changes do nothing.
class IToolContext {
public:
    // -- the plot under the cursor --
    virtual bool HasData() = 0;
    // The grid point nearest to what lies under `pixel`: in the 3-D view
    // the surface picked on the full grid, in the flat views the cell under
    // it; x and y of that grid node and its value. False off the data.
    virtual bool SurfacePoint(PixelPoint pixel, Point3* point) = 0;
    // The position read-out: `point` under the cursor, or null when the
    // cursor is off the plot.
    virtual void ShowPosition(const Point3* point) = 0;
    // The mouse moved over the plot to `point` (a grid point): the host's
    // data-cell tool tip, when it asked for one.
    virtual void DataCellMouseOver(PixelPoint pixel, const Point3& point, bool select) = 0;
    virtual void SetHelpText(std::string_view text) = 0;
    virtual void SetCursor(CursorShape shape) = 0;
    virtual void Redraw() = 0;

    // -- the view --
    virtual bool Is3D() = 0;
    // Turns (3-D only) or pans the view by a mouse drag of `dx`, `dy` pixels.
    virtual void TurnBy(int32_t dx, int32_t dy) = 0;
    virtual void PanBy(int32_t dx, int32_t dy) = 0;
    // The drag that turned or panned the view ended: the view draws at
    // full detail again.
    virtual void EndMotion() = 0;
    // The visible X-Y range and the whole data range; false without data
    // or in the one-dimensional view.
    virtual bool VisibleRange(DataRect* shown, DataRect* full) = 0;
    // Shows `range` (null: all data), re-samples and redraws; the info
    // window's scale entries follow.
    virtual void SetVisibleRange(const DataRect* range) = 0;
    // The smallest zoom steps along X and Y over all graph objects (0 in
    // the one-dimensional view or without data).
    virtual void ZoomSteps(double* sx, double* sy) = 0;

    // -- annotations --
    // A new annotation of `kind` at `at`, registered and shown; null when
    // it cannot be made.
    virtual CGD_Annotation* Create(ToolAnnotation kind, const Point3& at) = 0;
    // Moves an annotation to `to` (a region keeps its size).
    virtual void Move(CGD_Annotation* annotation, const Point3& to) = 0;
    // Spans a region (or the rubber band) from its first corner to `corner`.
    virtual void Span(CGD_Annotation* region, const Point3& corner) = 0;
    // Where the annotation is now (a region: its first corner).
    virtual bool PositionOf(CGD_Annotation* annotation, Point3* at) = 0;
    // Removes and deletes it (the internal rubber band included).
    virtual void Delete(CGD_Annotation* annotation) = 0;
    // The user finished drawing or dragging it (a region tells the host).
    virtual void Finished(CGD_Annotation* annotation) = 0;
    // The topmost annotation under `pixel`, or null.
    virtual CGD_Annotation* HitTest(PixelPoint pixel) = 0;
    // The annotation after `after` in the graph object's order (the first
    // one for null); null when there is none.
    virtual CGD_Annotation* Next(CGD_Annotation* after) = 0;
    virtual void SetSelected(CGD_Annotation* annotation, bool selected) = 0;
    virtual CGD_Annotation* Selected() = 0;
    // Opens the annotation's properties; true when something changed.
    virtual bool ShowProperties(CGD_Annotation* annotation) = 0;
    // A key the selected annotation may act on.
    virtual void PassKey(CGD_Annotation* annotation, int32_t key) = 0;
    // The difference tracer's fixed point.
    virtual void SetFixedPoint(CGD_Annotation* diffTracer, const Point3& at) = 0;

protected:
    ~IToolContext() = default;
};

}  // namespace vexplot
