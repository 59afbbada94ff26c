#pragma once
#include <cstdint>
#include <string>

#include "annotations/CGD_Annotation.h"

namespace vexplot {

// A region: a box between two corners (the anchor and the second corner),
// drawn in one of four styles (0 "Dots", 1 "Lines", 2 "Invert", 3 "Logo"),
// with its two Z limits as indicators beside the colour scale in the flat
// view and its section in the info window. An internal region (the zoom
// tool's rubber band) is never listed in the info window, never raises
// DataSelect and is not kept in plot files.
//
// Record: x1, y1, z1 (double), caption (string), selected (int32), kind
// (int32), colour (u32), x2, y2, z2 (double), the region's first value
// (int32).
class CGD_Region final : public CGD_Annotation {
public:
    static constexpr int32_t kStyleDots = 0;
    static constexpr int32_t kStyleLines = 1;
    static constexpr int32_t kStyleInvert = 2;
    static constexpr int32_t kStyleLogo = 3;

    explicit CGD_Region(bool internal = false);
    ~CGD_Region() override;

    // ArchiveObject:
    const ArchiveClass& GetRuntimeClass() const override { return RuntimeClass(); }
    static const ArchiveClass& RuntimeClass();
    void Serialize(CArchive& archive) override;

    // CGD_Annotation:
    void Draw() override;
    bool ShowProperties() override;
    bool HitTest(int32_t x, int32_t y) override;
    // Moves the box, keeping its size, so that its centre lies under (x, y).
    void DragTo(int32_t x, int32_t y) override;
    void SetSelected(bool selected) override;
    void AttachInfoWindow(IInfoWindow* window) override;
    std::string GetDescription() override;
    void UpdateInfoWindow() override;
    void RemoveFromInfoWindow() override;
    bool HitTestHandle(int32_t x, int32_t y) override;
    bool Selectable() const override { return !internal_; }

    // The corners as IRegion's Move sets them: the anchor, the second
    // corner, and then Z2 becomes the top of the shown Z range (a region
    // selects an area of the plane and reaches up to the top of the data);
    // without data Z2 is kept.
    void MoveCorners(double x1, double y1, double z1, double x2, double y2, double z2);
    // Raises the control's DataSelect event with the box (sorted limits)
    // when EnableEvent is set and the region is not internal.
    void NotifySelection() const;

    // getters:
    double GetX2() const { return x2_; }
    double GetY2() const { return y2_; }
    double GetZ2() const { return z2_; }
    bool IsInternal() const { return internal_ != 0; }
    bool EnableEvent() const { return enableEvent_ != 0; }
    uint32_t Color() const { return color_; }
    int32_t Style() const { return style_; }
    int16_t Spacing() const { return spacing_; }
    // Where the box was last drawn in the flat view, client pixels.
    const PixelRect& ScreenRect() const { return screen_; }
    // setters:
    void SetSecondCorner(double x2, double y2, double z2);
    void SetEnableEvent(bool enable) { enableEvent_ = enable ? 1 : 0; }
    void SetColor(uint32_t color) { color_ = color & 0x00FFFFFFu; }
    // 0..3; any other value keeps the style (false).
    bool SetStyle(int32_t style);
    void SetSpacing(int16_t spacing) { spacing_ = spacing; }

    // Indicator height of a Z limit beside the colour scale (as the marker's).
    bool IndicatorY(const PixelRect& plot, double z, int32_t* yz) const;

private:
    void DrawFlat();
    void Draw3D();
    void UpdateScreenRect();
    std::string AxisLine(char axis, double a, double b, const char* separator) const;

    int32_t value_ = 0;  // kept in the record
    int32_t internal_;
    int32_t enableEvent_ = 1;
    double x2_ = 0.0;
    double y2_ = 0.0;
    double z2_ = 0.0;
    PixelRect screen_{};
    uint32_t color_ = 0xFFFFFF;
    int32_t style_ = kStyleDots;
    int16_t spacing_ = 2;
};

}  // namespace vexplot
