#pragma once
#include <cstdint>
#include <functional>

#include "site/IControlSite.h"

namespace vexplot {

// The camera pad over the 3-D view: a 48 x 48 window with five zones, a
// centre square and the four borders between it and the edges (split along
// the diagonals). The zone under the mouse is highlighted; pressing a zone
// reports it to the owner at once and then again every millisecond while
// the button is held and the mouse stays over that zone.
//
// The owner maps zones to camera moves: the left and right borders turn the
// camera's azimuth one rotation step, the top and bottom borders its
// elevation; the centre zooms in with the primary button and out with the
// secondary one. The borders do the same with either button.
class NavigatorPad final : public IWindowHandler {
public:
    enum class Zone : int32_t { None = 0, Centre, Left, Right, Top, Bottom };

    static constexpr int32_t kSize = 48;
    // The centre square spans [kCentreLow, kCentreHigh) on both axes.
    static constexpr int32_t kCentreLow = 14;
    static constexpr int32_t kCentreHigh = 34;
    // Timers on the pad's window.
    static constexpr uint32_t kHighlightTimer = 1;
    static constexpr uint32_t kHighlightMilliseconds = 100;
    static constexpr uint32_t kRepeatTimer = 2;
    static constexpr uint32_t kRepeatMilliseconds = 1;

    // A zone pressed, or repeated while held; `secondaryButton` for the
    // right mouse button.
    using Handler = std::function<void(Zone zone, bool secondaryButton)>;

    NavigatorPad() = default;
    ~NavigatorPad();
    NavigatorPad(const NavigatorPad&) = delete;
    NavigatorPad& operator=(const NavigatorPad&) = delete;

    // Creates the pad's hidden window under `parent` at `rect` (the
    // parent's client pixels; the zones assume kSize x kSize) and binds it.
    // `site` must outlive the pad. False when the site could make no window.
    bool Create(IControlSite& site, WindowHandle parent, const PixelRect& rect);
    void Destroy();

    // The zone of a point in the pad's client pixels (None outside the pad).
    static Zone ZoneAt(PixelPoint point);

    // getters:
    WindowHandle Window() const { return window_; }
    Zone HighlightedZone() const { return highlighted_; }
    Zone PressedZone() const { return pressed_; }
    bool PressedWithSecondary() const { return secondary_; }

    // setters:
    void SetOwner(Handler handler) { handler_ = std::move(handler); }

    // input, in the pad's client pixels:
    void OnButtonDown(PixelPoint point, bool secondaryButton);
    void OnButtonUp(PixelPoint point, bool secondaryButton);
    void OnMouseMove(PixelPoint point);
    void OnMouseLeave();

    // IWindowHandler:
    void OnTimer(WindowHandle window, uint32_t timerId) override;

private:
    void Highlight(Zone zone);
    void Report() const;

    IControlSite* site_ = nullptr;
    WindowHandle window_ = 0;
    Handler handler_;
    Zone highlighted_ = Zone::None;
    Zone pressed_ = Zone::None;
    bool secondary_ = false;
    bool highlightTimerRunning_ = false;
};

}  // namespace vexplot
