#pragma once
#include <functional>

#include "engine/IGraphSceneExport.h"
#include "opengl/gl/OverlayPen.h"

namespace vexplot {

// The overlay written into a drawing (SVG, PDF, EMF, the printer): lines
// and outlines as polylines, cut into their dashes and around what hides
// them; solid and hatched fills as polygons and lines; texts as text. A
// drawing has no blending, so the tinted and the inverting fills keep only
// their outlines there.
class SceneOverlayPen final : public OverlayPen {
public:
    // Whether a point (x, y) at window depth z is in front of the scene;
    // empty: everything is.
    using Visibility = std::function<bool(double x, double y, double z)>;

    SceneOverlayPen(ISceneSink& sink, int32_t width, int32_t height, double ratio, Visibility visible = {});

    double Ratio() const override { return ratio_; }
    bool Visible(double x, double y, double z) const override { return !visible_ || visible_(x, y, z); }
    void Line(double x0, double y0, double z0, double x1, double y1, double z1, uint32_t color, float width,
              OverlayStroke stroke) override;
    void Box(double left, double top, double right, double bottom, uint32_t color, int32_t stroke, OverlayFill fill,
             int32_t spacing, float width) override;
    void Symbol(double x, double y, PointStyle symbol, float size, uint32_t color) override;
    void Text(double x, double y, std::string_view line, const FontDescription& font, uint32_t color) override;

private:
    void Hatch(double left, double top, double right, double bottom, uint32_t color, int32_t spacing);
    void Segment(double x0, double y0, double x1, double y1, uint32_t color, double width);

    ISceneSink& sink_;
    int32_t width_, height_;
    double ratio_;
    Visibility visible_;
};

}  // namespace vexplot
