#pragma once
#include <vector>

#include "opengl/gl/OverlayCanvas.h"
#include "opengl/gl/OverlayPen.h"

namespace vexplot {

class TextPainter;

// The overlay drawn into the pixels of a frame: lines through the scene's
// depth image (when there is one), symbols, boxes and texts whole on top.
class PixelOverlayPen final : public OverlayPen {
public:
    PixelOverlayPen(const ImageBuffer& target, double ratio, TextPainter& painter,
                    const std::vector<float>* depth = nullptr)
        : target_(target), painter_(painter), deep_(target, ratio, depth), flat_(target, ratio) {}

    double Ratio() const override { return flat_.Ratio(); }
    bool Visible(double x, double y, double z) const override { return deep_.Visible(x, y, z); }
    void Line(double x0, double y0, double z0, double x1, double y1, double z1, uint32_t color, float width,
              OverlayStroke stroke) override {
        deep_.Line(x0, y0, z0, x1, y1, z1, color, width, stroke);
    }
    void Box(double left, double top, double right, double bottom, uint32_t color, int32_t stroke, OverlayFill fill,
             int32_t spacing, float width) override {
        flat_.Box(left, top, right, bottom, color, stroke, fill, spacing, width);
    }
    void Symbol(double x, double y, PointStyle symbol, float size, uint32_t color) override {
        flat_.Symbol(x, y, 0, symbol, size, color);
    }
    void Text(double x, double y, std::string_view line, const FontDescription& font, uint32_t color) override;

private:
    const ImageBuffer& target_;
    TextPainter& painter_;
    OverlayCanvas deep_;
    OverlayCanvas flat_;
};

}  // namespace vexplot
