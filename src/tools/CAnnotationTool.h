#pragma once
#include "tools/CTool.h"

namespace vexplot {

// The Label, Marker and Region tools. A press on an annotation drags it;
// a press elsewhere creates one at the surface point under the cursor and
// drags it (a region spans from the press to the release; one spanning
// fewer than kMinRegionPixels either way is dropped). Double click opens
// the properties of the annotation under the cursor; Escape undoes the
// drag or creation in progress.
class CAnnotationTool final : public CTool {
public:
    static constexpr int32_t kMinRegionPixels = 3;

    CAnnotationTool(IToolContext& context, int32_t command, ToolAnnotation kind);
    void Activate() override;

protected:
    void ButtonDown(PixelPoint pixel, const MouseEvent& event) override;
    void DoubleClick(PixelPoint pixel) override;
    void MouseMove(PixelPoint pixel, const MouseEvent& event) override;
    void ButtonUp(PixelPoint pixel) override;
    void Key(int32_t) override {}
    void Cancel() override;

private:
    ToolAnnotation kind_;
    bool created_ = false;  // the dragged annotation was made by this drag
    bool moved_ = false;    // the drag has moved it
    PixelPoint startPixel_;
    Point3 origin_{};       // where a moved annotation was
};

}  // namespace vexplot
