#pragma once
#include "tools/CTool.h"

namespace vexplot {

// The default tool. A click selects the annotation under the cursor and a
// drag moves it; a drag elsewhere turns the 3-D view (with Shift or the
// right button it pans). Double click or Enter opens the selected object's
// properties, Delete deletes it, Tab selects the next one; other keys go
// to the selected object.
class CSelectTool final : public CTool {
public:
    explicit CSelectTool(IToolContext& context);
    void Activate() override;
    CursorShape Cursor() const override { return CursorShape::Arrow; }

protected:
    void ButtonDown(PixelPoint pixel, const MouseEvent& event) override;
    void DoubleClick(PixelPoint pixel) override;
    void MouseMove(PixelPoint pixel, const MouseEvent& event) override;
    void ButtonUp(PixelPoint pixel) override;
    void Key(int32_t key) override;
    void Cancel() override;

private:
    enum class Drag { None, Object, Turn, Pan };
    void Select(CGD_Annotation* annotation);

    Drag drag_ = Drag::None;
    bool moved_ = false;
    Point3 origin_{};  // where the dragged object was
};

}  // namespace vexplot
