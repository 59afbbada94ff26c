#pragma once
#include "tools/CTool.h"

namespace vexplot {

// The Tracer and Difference tracer tools: activating one creates its
// tracer, which follows the surface under the cursor; deactivating deletes
// it. With the tracer a double click adds a marker at the traced point;
// with the difference tracer a click sets the fixed point and a double
// click opens its properties.
class CTracerTool final : public CTool {
public:
    // What the difference tracer's status line says (shorter than its help).
    static constexpr const char* kDiffStatus = "<LClick> Set Fixed position";

    CTracerTool(IToolContext& context, bool difference);
    void Activate() override;
    void Deactivate() override;

protected:
    void ButtonDown(PixelPoint pixel, const MouseEvent& event) override;
    void DoubleClick(PixelPoint pixel) override;
    void MouseMove(PixelPoint pixel, const MouseEvent& event) override;
    void ButtonUp(PixelPoint) override {}
    void Key(int32_t) override {}

private:
    bool Ensure(const Point3& at);

    bool difference_;
};

}  // namespace vexplot
