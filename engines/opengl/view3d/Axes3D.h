#pragma once
#include <array>
#include <string>
#include <vector>

#include "engine/IGraphEngine.h"
#include "opengl/gl/LineRenderer.h"
#include "opengl/gl/PixelScale.h"
#include "opengl/view3d/Projector.h"
#include "opengl/view3d/SceneBox.h"
#include "opengl/text/TextPainter.h"

namespace vexplot {

// The three axes of the 3-D view: axis lines, tick marks, tick texts and
// labels on the box edges nearest the viewer, and major and minor grid
// lines on the three back planes of the box. Holds the axes' settings;
// Build turns them into line segments (drawn in GL) and placed texts
// (drawn on the read-back pixels).
class Axes3D {
public:
    struct Axis {
        AxisStyle style{0x000000, 0xC0C0C0, 0xACACAC, 1, 1, 1, 0, 1};
        std::vector<double> ticks;
        std::vector<std::string> texts;
        std::string label;
        FontDescription numberFont{};
        FontDescription labelFont{};
    };
    struct PlacedText {
        std::string text;
        int32_t x, y;
        TextPainter::Anchor anchor;
        FontDescription font;
        uint32_t color;
    };

    Axes3D();

    Axis& Get(AxisId id) { return axes_[static_cast<size_t>(id)]; }
    bool axesVisible = true;
    bool gridVisible = true;

    // Adds the axes' segments to `lines` and returns their texts placed in
    // the pixels of `projector`, for a box seen from `eye` (scene units).
    // `scale` turns the fonts and gaps into the projector's pixels.
    std::vector<PlacedText> Build(const SceneBox& box, const Vec3& eye, const Projector& projector,
                                  TextPainter& painter, LineRenderer& lines,
                                  const PixelScale& scale) const;

private:
    // One axis's edge: from `start` to `end` in the scene, ticks at data
    // values mapped by `toScene`, texts pushed out along `outward`.
    struct Edge {
        Vec3 start, end, outward;
    };
    void BuildGrid(const SceneBox& box, const Vec3& eye, LineRenderer& lines) const;
    void BuildAxis(const Axis& axis, int index, const Edge& edge, const SceneBox& box, const Projector& projector,
                   TextPainter& painter, LineRenderer& lines, const PixelScale& scale,
                   std::vector<PlacedText>& texts) const;

    std::array<Axis, 3> axes_;
};

}  // namespace vexplot
