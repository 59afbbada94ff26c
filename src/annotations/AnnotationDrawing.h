#pragma once
#include <cstdint>
#include <string>

#include "engine/IGraphDevice2D.h"

namespace vexplot {

// Shapes the annotations share in the flat view's overlay (logical client
// pixels): the selection frame, captions, and the indicators beside the
// colour scale whose hit areas the kinds test.
class AnnotationDrawing {
public:
    // The colour of the selected object's frame and handles (yellow).
    static constexpr uint32_t kSelectionColor = 0x0000FFFF;
    // A dashed frame around [left, right) x [top, bottom).
    static void SelectionFrame(IGraphDevice2D& device, int32_t left, int32_t top, int32_t right, int32_t bottom);
    // `text` without a box, its top-left corner at (x, y).
    static void Caption(IGraphDevice2D& device, double x, double y, const std::string& text, uint32_t color);
    // A marker's indicator: a triangle pointing at the colour scale from
    // the gap beside it, at height yz, with the marker's name; the hit area
    // is right+1 < x < right+21, yz-10 < y < yz+10.
    static void MarkerIndicator(IGraphDevice2D& device, int32_t right, int32_t yz, uint32_t color, bool selected,
                                const std::string& name);
    // A region's Z limit: a bar in the gap, hit area right+2 < x < right+13,
    // yz-3 < y < yz+3.
    static void RegionIndicator(IGraphDevice2D& device, int32_t right, int32_t yz, uint32_t color, bool selected);
};

}  // namespace vexplot
