#pragma once
#include "engine/IGraphEngine.h"
#include "opengl/view3d/HeightField.h"

namespace vexplot {

// One graph object's part of the 3-D scene: its grid on the GPU and how it
// is drawn.
struct Layer {
    HeightField field;
    GridExtent extent{0, 1, 0, 1, 0, 1};
    bool hasGrid = false;
    bool visible = true;
    bool lowResolution = false;
    GraphStyle style = GraphStyle::Surface;
    ShadingMode shading = ShadingMode::Smooth;
    PointStyle pointStyle = PointStyle::Circle;
    float pointSize = 5.0f;

    bool Drawable() const { return hasGrid && visible && !field.Empty(); }
};

}  // namespace vexplot
