#include "ui/NavigatorPad.h"

#include <cstdlib>

namespace vexplot {

NavigatorPad::~NavigatorPad() { Destroy(); }

bool NavigatorPad::Create(IControlSite& site, WindowHandle parent, const PixelRect& rect) {
    Destroy();
    site_ = &site;
    window_ = site.CreateWindow(WindowRole::Navigator, parent, rect, this);
    if (window_ == 0) return false;
    site.BindWindowLogic(window_, this);
    return true;
}

void NavigatorPad::Destroy() {
    if (window_ == 0) return;
    const WindowHandle window = window_;
    window_ = 0;
    site_->KillTimer(window, kHighlightTimer);
    site_->KillTimer(window, kRepeatTimer);
    highlightTimerRunning_ = false;
    highlighted_ = pressed_ = Zone::None;
    site_->DestroyWindow(window);
}

NavigatorPad::Zone NavigatorPad::ZoneAt(PixelPoint p) {
    if (p.x < 0 || p.y < 0 || p.x >= kSize || p.y >= kSize) return Zone::None;
    if (p.x >= kCentreLow && p.x < kCentreHigh && p.y >= kCentreLow && p.y < kCentreHigh) return Zone::Centre;
    // Offsets from the pad's middle (23.5, 23.5), doubled to stay integral.
    // Points on a diagonal belong to the top or bottom border.
    const int32_t dx = 2 * p.x - (kSize - 1);
    const int32_t dy = 2 * p.y - (kSize - 1);
    if (std::abs(dx) > std::abs(dy)) return dx < 0 ? Zone::Left : Zone::Right;
    return dy < 0 ? Zone::Top : Zone::Bottom;
}

void NavigatorPad::Highlight(Zone zone) {
    if (zone == highlighted_) return;
    highlighted_ = zone;
    if (window_) site_->Invalidate(window_, nullptr, false);
}

void NavigatorPad::Report() const {
    if (handler_ && pressed_ != Zone::None) handler_(pressed_, secondary_);
}

void NavigatorPad::OnMouseMove(PixelPoint point) {
    Highlight(ZoneAt(point));
    // Leaving is not always reported (the mouse may jump out between two
    // events), so the timer follows the cursor until it is off the pad.
    if (window_ && highlighted_ != Zone::None && !highlightTimerRunning_) {
        site_->SetTimer(window_, kHighlightTimer, kHighlightMilliseconds);
        highlightTimerRunning_ = true;
    }
}

void NavigatorPad::OnMouseLeave() { Highlight(Zone::None); }

void NavigatorPad::OnButtonDown(PixelPoint point, bool secondaryButton) {
    if (window_ == 0 || pressed_ != Zone::None) return;
    const Zone zone = ZoneAt(point);
    if (zone == Zone::None) return;
    pressed_ = zone;
    secondary_ = secondaryButton;
    Highlight(zone);
    site_->Invalidate(window_, nullptr, false);
    Report();
    site_->SetTimer(window_, kRepeatTimer, kRepeatMilliseconds);
}

void NavigatorPad::OnButtonUp(PixelPoint point, bool /*secondaryButton*/) {
    if (pressed_ == Zone::None) return;
    pressed_ = Zone::None;
    secondary_ = false;
    site_->KillTimer(window_, kRepeatTimer);
    site_->Invalidate(window_, nullptr, false);
    Highlight(ZoneAt(point));
}

void NavigatorPad::OnTimer(WindowHandle window, uint32_t timerId) {
    if (window != window_ || window_ == 0) return;
    if (timerId == kHighlightTimer) {
        Highlight(ZoneAt(site_->CursorPosition(window_)));
        if (highlighted_ == Zone::None) {
            site_->KillTimer(window_, kHighlightTimer);
            highlightTimerRunning_ = false;
        }
    } else if (timerId == kRepeatTimer) {
        // Held but moved off the pressed zone: the move pauses until the
        // mouse comes back.
        if (ZoneAt(site_->CursorPosition(window_)) == pressed_) Report();
    }
}

}  // namespace vexplot
