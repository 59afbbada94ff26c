#pragma once
#include <cstdint>
#include <string>

#include "annotations/CGD_Annotation.h"

namespace vexplot {

// The difference tracer: a fixed point (the anchor, placed by the first
// click) and the current point under the mouse. Its info section
// ("DeltaTracer:") shows both, their difference (current - fixed, per
// axis) and their distance in the plane: sqrt(dx^2 + dy^2) over the first
// two coordinates. Z is deliberately left out of the distance, in every
// view; the Delta line takes its "Z(-)" form when either Z is NoZValue.
// With its line flag set it draws a line from the fixed to the current
// point. Not hit-testable; its record holds no fields.
class CGD_DiffTracer final : public CGD_Annotation {
public:
    CGD_DiffTracer();
    ~CGD_DiffTracer() override;

    const ArchiveClass& GetRuntimeClass() const override { return RuntimeClass(); }
    static const ArchiveClass& RuntimeClass();
    void Serialize(CArchive& archive) override;

    void Draw() override;
    bool ShowProperties() override;
    bool HitTest(int32_t, int32_t) override { return false; }
    void DragTo(int32_t, int32_t) override {}
    void AttachInfoWindow(IInfoWindow* window) override;
    // The fixed point; with data, Z becomes the data value at (x, y).
    void SetPosition(double x, double y, double z) override;
    void RemoveFromInfoWindow() override;

    // The traced point (Z = NoZValue off the surface); Draw shows it.
    void SetCurrent(double x, double y, double z);
    void ClearCurrent();
    bool HasCurrent() const { return tracing_; }
    double CurrentX() const { return current_.x; }
    double CurrentY() const { return current_.y; }
    double CurrentZ() const { return current_.z; }
    // sqrt((fixed.x - current.x)^2 + (fixed.y - current.y)^2)
    double Distance() const;
    bool DrawLine() const { return drawLine_ != 0; }
    void SetDrawLine(bool draw) { drawLine_ = draw ? 1 : 0; }
    uint32_t Color() const { return color_; }
    void SetColor(uint32_t color) { color_ = color & 0x00FFFFFFu; }

    // The four info lines.
    std::string FixedLine() const;
    std::string CurrentLine() const;
    std::string DeltaLine() const;
    std::string DistanceLine() const;

private:
    void DrawPath();

    int32_t value_ = 0;
    Point3 current_{0.0, 0.0, 0.0};
    int32_t drawLine_ = 1;
    uint32_t color_ = 0x00FFFF;
    bool tracing_ = false;
};

}  // namespace vexplot
