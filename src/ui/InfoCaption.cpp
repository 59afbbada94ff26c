#include "ui/InfoCaption.h"

namespace vexplot {

void InfoCaption::Layout(int32_t width, int32_t height, bool dockable) {
    width_ = width;
    height_ = height;
    rects_ = {};
    if (height <= 0) {
        held_ = InfoButton::None;
        return;
    }
    const int32_t top = (height - kButtonHeight) / 2;
    const int count = dockable ? 3 : 2;
    int32_t right = width - kGap;
    for (int i = 0; i < count; ++i) {
        rects_[static_cast<size_t>(i)] = PixelRect{right - kButtonWidth, top, right, top + kButtonHeight};
        right -= kButtonWidth + kGap;
    }
}

PixelRect InfoCaption::ButtonRect(InfoButton button) const {
    if (button == InfoButton::None) return {};
    return rects_[static_cast<size_t>(button)];
}

InfoButton InfoCaption::HitTest(PixelPoint point) const {
    for (const InfoButton b : {InfoButton::Close, InfoButton::Transparent, InfoButton::Dock})
        if (Contains(ButtonRect(b), point)) return b;
    return InfoButton::None;
}

InfoCaption::Press InfoCaption::OnPress(PixelPoint point) {
    if (!Contains(Strip(), point)) return Press::Outside;
    held_ = HitTest(point);
    over_ = held_ != InfoButton::None;
    return over_ ? Press::Button : Press::Drag;
}

bool InfoCaption::OnMove(PixelPoint point) {
    if (held_ == InfoButton::None) return false;
    const bool over = Contains(ButtonRect(held_), point);
    const bool changed = over != over_;
    over_ = over;
    return changed;
}

InfoButton InfoCaption::OnRelease(PixelPoint point) {
    const InfoButton held = held_;
    held_ = InfoButton::None;
    over_ = false;
    if (held == InfoButton::None || !Contains(ButtonRect(held), point)) return InfoButton::None;
    return held;
}

bool InfoCaption::Pushed(InfoButton button, bool transparent, bool docked) const {
    const bool on = (button == InfoButton::Transparent && transparent) || (button == InfoButton::Dock && docked);
    return held_ == button && over_ ? !on : on;
}

}  // namespace vexplot
