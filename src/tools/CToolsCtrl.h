#pragma once
#include <cstdint>
#include <functional>
#include <string>

#include "site/IControlSite.h"
#include "site/MenuModel.h"
#include "tools/ButtonPicture.h"

namespace vexplot {

class CArchive;

// A button of the title bar ("M", "L"): a picture button that reports its
// clicks to its owner, can open a menu or a drop-down window when released,
// and can be dragged inside the control. The logic lives here; the site's
// window for the role paints it from Pressed(), Caption(), Picture() and
// EnabledState(), and passes the mouse to OnButtonDown/Up, OnMouseMove and
// OnMouseEnter in the button's client pixels.
class CToolsCtrl final : public IWindowHandler {
public:
    // The message the owner receives on every release of a press:
    // (kMessageToolsCommand, command, 0).
    static constexpr int32_t kMessageToolsCommand = 0x400 + 103;
    // The size of a drop-down window opened under the button.
    static constexpr int32_t kDropDownWidth = 100;
    static constexpr int32_t kDropDownHeight = 500;

    // How the button may be dragged (mouse moves while pressed).
    enum class DragMode : int32_t { Both = 0, Horizontal = 1, None = 2 };

    // What the button tells its owner. Every member may be empty.
    struct Owner {
        // (kMessageToolsCommand, command, 0) after each release.
        std::function<void(int32_t message, int32_t wParam, int32_t lParam)> message;
        // A command the user chose from a menu the button opened.
        std::function<void(int32_t command)> command;
        // The mouse came over the button.
        std::function<void()> hover;
    };

    CToolsCtrl() = default;
    // Destroys the window when it still exists.
    ~CToolsCtrl();
    CToolsCtrl(const CToolsCtrl&) = delete;
    CToolsCtrl& operator=(const CToolsCtrl&) = delete;

    // Creates the button's window of `role` (MenuButton or LegendButton)
    // under `parent` at `rect` (the parent's client pixels), binds it and
    // gives it `caption`. `site` must outlive the button. False when the
    // site could make no window; then the button stays without one.
    bool Create(IControlSite& site, WindowRole role, WindowHandle parent, const PixelRect& rect, int32_t command,
                std::string caption);
    // Destroys the window; the button keeps its settings.
    void Destroy();

    // getters:
    WindowHandle Window() const { return window_; }
    WindowRole Role() const { return role_; }
    bool Pressed() const { return pressed_; }
    bool ReleasedInside() const { return releasedInside_; }
    int32_t EnabledState() const { return enabledState_; }
    bool IgnoresPresses() const { return enabledState_ == 1; }
    DragMode GetDragMode() const { return dragMode_; }
    bool DragSwitch() const { return dragSwitch_; }
    const std::string& Caption() const { return caption_; }
    int32_t Command() const { return command_; }
    int32_t PopupState() const { return popupState_; }
    int32_t StoredValue() const { return value_; }
    bool UsesBounds() const { return useBounds_; }
    const PixelRect& Bounds() const { return bounds_; }
    // The face for the current state: sunken while pressed.
    const RgbaRaster& Picture() const { return pressed_ ? picture_.Sunken() : picture_.Raised(); }
    const ButtonPicture& Faces() const { return picture_; }
    // The button's rectangle in its parent's client pixels (empty without window).
    PixelRect Rect() const;

    // setters:
    void SetOwner(Owner owner) { owner_ = std::move(owner); }
    // 1 makes the button ignore presses (drawn greyed); any other value enables it.
    void SetEnabledState(int32_t state);
    void SetDragMode(DragMode mode) { dragMode_ = mode; }
    void SetCaption(std::string caption);
    void SetCommand(int32_t command) { command_ = command; }
    // Menus and windows open on release only while this is 2.
    void SetPopupState(int32_t state) { popupState_ = state; }
    void SetStoredValue(int32_t value) { value_ = value; }
    // Keeps drags inside `bounds` (the parent's client pixels) instead of
    // the parent's client area.
    void SetBounds(const PixelRect& bounds);
    void ClearBounds() { useBounds_ = false; }
    // The release opens sub-menu 0 of `menu` (the entry's submenu); an empty
    // model switches this off.
    void SetSubMenu(MenuModel menu);
    // The release opens the menu `provider` builds at that moment; null
    // switches this off.
    void SetOwnPopup(std::function<MenuModel()> provider);
    // The release shows `window` under the button (0 switches this off).
    // Used only when no own popup is set.
    void SetDropDown(WindowHandle window);

    // input, in the button's client pixels:
    void OnButtonDown(PixelPoint point);
    void OnButtonUp(PixelPoint point);
    void OnMouseMove(PixelPoint point);
    void OnMouseEnter();

    // IWindowHandler:
    void OnSize(WindowHandle window, int32_t width, int32_t height) override;

    // Stores or loads the button's record: the tag "ToolsCtrl", the stored
    // value, the enabled state, the caption, the window rectangle as top,
    // bottom, left, right, the bounds switch, the bounds as top, bottom,
    // left, right, and the popup state. Does nothing without a window.
    // Loading moves the window to the stored rectangle; a malformed record
    // raises ArchiveError.
    void Serialize(CArchive& archive);

private:
    bool Contains(PixelPoint point) const;
    void Repaint();
    void OpenPopups();
    void OpenMenu(const MenuModel& menu);
    PixelRect DragArea() const;

    IControlSite* site_ = nullptr;
    WindowHandle window_ = 0;
    WindowHandle parent_ = 0;
    WindowRole role_ = WindowRole::MenuButton;
    Owner owner_;

    // in the order of the button's record and state:
    bool releasedInside_ = false;
    int32_t value_ = 0;
    int32_t enabledState_ = 2;
    DragMode dragMode_ = DragMode::None;
    std::string caption_ = "A";
    bool dragSwitch_ = false;
    bool useBounds_ = false;
    PixelRect bounds_{};
    PixelRect dragStartRect_{};   // the button's rectangle when the drag began
    PixelPoint grabOffset_;       // where in the button the drag began
    int32_t command_ = 0;
    bool subMenuSwitch_ = false;
    bool ownPopupSwitch_ = false;
    bool dropDownSwitch_ = false;
    int32_t popupState_ = 2;
    MenuModel subMenuSource_;
    std::function<MenuModel()> ownPopup_;
    WindowHandle dropDown_ = 0;
    bool pressed_ = false;
    ButtonPicture picture_;
};

}  // namespace vexplot
