#pragma once
#include "tools/CTool.h"

namespace vexplot {

// Drags the plot: the camera's centre in the 3-D view, the visible range
// in the flat views.
class CPanTool final : public CTool {
public:
    explicit CPanTool(IToolContext& context);
    void Activate() override { context_.SetHelpText(help_); }
    CursorShape Cursor() const override { return CursorShape::SizeAll; }

protected:
    void ButtonDown(PixelPoint pixel, const MouseEvent& event) override;
    void DoubleClick(PixelPoint) override {}
    void MouseMove(PixelPoint pixel, const MouseEvent& event) override;
    void ButtonUp(PixelPoint pixel) override;
    void Key(int32_t) override {}
    void Cancel() override;
};

}  // namespace vexplot
