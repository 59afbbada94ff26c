#pragma once
#include <cstdint>

#include "annotations/CGD_Annotation.h"

namespace vexplot {

// The tracer: follows the mouse over the plot and writes the point under
// it into its info section ("Tracer:"). The Tracer tool sets the point
// (SetPosition, Z = NoZValue off the surface) or clears it when the mouse
// leaves; Draw rewrites the line. Not hit-testable, no dialog, and its
// record holds no fields.
class CGD_Tracer final : public CGD_Annotation {
public:
    CGD_Tracer();
    ~CGD_Tracer() override;

    const ArchiveClass& GetRuntimeClass() const override { return RuntimeClass(); }
    static const ArchiveClass& RuntimeClass();
    void Serialize(CArchive& archive) override;

    void Draw() override;
    bool ShowProperties() override { return false; }
    bool HitTest(int32_t, int32_t) override { return false; }
    void DragTo(int32_t, int32_t) override {}
    void AttachInfoWindow(IInfoWindow* window) override;
    void SetPosition(double x, double y, double z) override;
    void RemoveFromInfoWindow() override;

    // No point under the mouse: the line reads "\tX(-) Y(-) Z(-)" again.
    void ClearPoint();
    bool HasPoint() const { return tracing_; }
    // The line for the current point, in the current coordinate order.
    std::string InfoLine() const;

private:
    bool tracing_ = false;
};

}  // namespace vexplot
