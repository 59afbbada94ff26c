#pragma once
#include <cstdint>
#include <string>

#include "annotations/CGD_Annotation.h"

namespace vexplot {

// A marker: a named point on the plot ("A", "B", ... from MarkerLetters)
// with a symbol, optional guide lines to the plot's edges, an indicator
// beside the colour scale in the flat view, and its section in the info
// window ("Marker %s:" with its coordinates).
//
// Record: x, y, z (double), colour (u32), caption (string), selected
// (int32), kind (int32), draw lines (u32), name (string), the trailing
// value (u32).
class CGD_Marker final : public CGD_Annotation {
public:
    CGD_Marker();
    ~CGD_Marker() override;

    // ArchiveObject:
    const ArchiveClass& GetRuntimeClass() const override { return RuntimeClass(); }
    static const ArchiveClass& RuntimeClass();
    void Serialize(CArchive& archive) override;

    // CGD_Annotation:
    void Draw() override;
    bool ShowProperties() override;
    bool HitTest(int32_t x, int32_t y) override;
    void DragTo(int32_t x, int32_t y) override;
    void AttachInfoWindow(IInfoWindow* window) override;
    void SetPosition(double x, double y, double z) override;
    std::string GetDescription() override;
    void UpdateInfoWindow() override;
    void RemoveFromInfoWindow() override;
    bool HitTestHandle(int32_t x, int32_t y) override;
    bool Selectable() const override { return true; }

    // getters:
    bool DrawLines() const { return drawLines_ != 0; }
    uint32_t Color() const { return color_; }
    const std::string& Name() const { return name_; }
    // Where the marker was last placed in the flat view, client pixels.
    int32_t ScreenX() const { return screenX_; }
    int32_t ScreenY() const { return screenY_; }
    // setters:
    void SetDrawLines(bool draw) { drawLines_ = draw ? 1 : 0; }
    void SetColor(uint32_t color) { color_ = color & 0x00FFFFFFu; }
    void SetName(const std::string& name) { name_ = name; }
    // Maps the anchor to the flat view's client pixels again (after a
    // zoom, a pan or a resize).
    void UpdateScreenPoint();

    // The info line: "\tX(%f) Y(%f) Z(%f)" in the current coordinate order.
    std::string InfoLine() const;
    // The info section's title: "Marker %s:".
    std::string Title() const;
    // The indicator's vertical position beside the colour scale: top +
    // trunc((zmax - z) / (zmax - zmin) * (bottom - top)); false without a
    // Z range.
    bool IndicatorY(const PixelRect& plot, int32_t* yz) const;

private:
    void DrawFlat();
    void Draw3D();

    int32_t drawLines_ = 1;
    uint32_t value_ = 0;  // kept in the record
    uint32_t color_ = 0xFFFFFF;
    int32_t screenX_ = 0;
    int32_t screenY_ = 0;
    std::string name_ = "A";
    int32_t symbolWidth_ = 16;
    int32_t symbolHeight_ = 16;
    int32_t reserved_ = 0;
};


}  // namespace vexplot
