#pragma once
#include <string>

namespace vexplot {

class CGD_Annotation;
class CGD_DiffTracer;
class CGD_Label;
class CGD_Marker;
class CGD_Region;
class CGD_Tracer;
class IViewHost;

// What the interaction tools and the automation objects do to a control's
// annotations, in one place: make each kind as a user expects it (marker
// letters, info sections, engine binding), move, select and delete. The
// host is the control as IViewHost; its annotation list owns what is made.
//
// Refusals are harmless and say so through the result: no annotation list
// (a host without one), no active data set for the kinds that mark data,
// or a coordinate that is NaN or infinite give null or false and change
// nothing.
class AnnotationActions {
public:
    // A marker at (x, y, z) named by the next marker letter, with guide
    // lines, in the info window; not selected.
    static CGD_Marker* AddMarker(IViewHost& host, double x, double y, double z);
    // A label reading `caption` (coordinates appended) whose anchor and
    // text point are (x, y, z).
    static CGD_Label* AddLabel(IViewHost& host, const std::string& caption, double x, double y, double z);
    // A region between the two corners (Z2 set as CGD_Region::MoveCorners
    // does). An internal region (the zoom tool's rubber band) raises no
    // event and is neither listed in the info window nor saved.
    static CGD_Region* AddRegion(IViewHost& host, double x1, double y1, double z1, double x2, double y2, double z2,
                                 bool internal = false);
    // The tracer and the difference tracer, each with its info section; the
    // difference tracer fixed at (x, y, z).
    static CGD_Tracer* AddTracer(IViewHost& host);
    static CGD_DiffTracer* AddDiffTracer(IViewHost& host, double x, double y, double z);

    // Moves the anchor (a region: by the same offset for both corners; a
    // label: its text point follows), then refreshes. False for a
    // coordinate that is not finite or an annotation not in the list.
    static bool Move(IViewHost& host, CGD_Annotation& annotation, double x, double y, double z);
    // Removes and deletes it (wrappers are detached first); false when it
    // is not in the list.
    static bool Delete(IViewHost& host, CGD_Annotation* annotation);
    // The one selected object (null: none), redrawn.
    static void Select(IViewHost& host, CGD_Annotation* annotation);
    // Layout, then a redraw with erase.
    static void Refresh(IViewHost& host);
};

}  // namespace vexplot
