#pragma once
#include "tools/CTool.h"

namespace vexplot {

// Zooms the visible X-Y range: a drag spans a rubber band (an internal
// region) and the release zooms to it; keypad + and - zoom in and out by
// one step, keypad 0 shows all data.
class CZoomTool final : public CTool {
public:
    // Keypad codes.
    static constexpr int32_t kKeyZoomAll = 0x60;
    static constexpr int32_t kKeyZoomIn = 0x6B;
    static constexpr int32_t kKeyZoomOut = 0x6D;
    // A rubber band smaller than this many pixels either way is a click.
    static constexpr int32_t kMinDragPixels = 4;

    explicit CZoomTool(IToolContext& context);
    void Activate() override { context_.SetHelpText(help_); }

protected:
    void ButtonDown(PixelPoint pixel, const MouseEvent& event) override;
    void DoubleClick(PixelPoint) override {}
    void MouseMove(PixelPoint pixel, const MouseEvent& event) override;
    void ButtonUp(PixelPoint pixel) override;
    void Key(int32_t key) override;
    void Cancel() override;

private:
    void Step(bool in);

    PixelPoint startPixel_;
    Point3 start_{};
    Point3 end_{};
};

}  // namespace vexplot
