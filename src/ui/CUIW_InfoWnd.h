#pragma once
#include <cstdint>
#include <functional>
#include <string_view>

#include "site/IControlSite.h"
#include "model/LogicalFont.h"
#include "model/IInfoWindow.h"
#include "ui/InfoCaption.h"
#include "ui/InfoEntryList.h"
#include "ui/InfoLayout.h"
#include "ui/TextRegion.h"

namespace vexplot {

class CArchive;
class CRegistryKey;

// The info window: live read-outs of the plot in sections that annotations
// and tools open and fill (IInfoWindow). It keeps the lines in an
// InfoEntryList, lays out their picture and scroll state after every
// change, owns its caption strip with the close, transparent and dock
// buttons, and persists its looks in the settings store and the saved state.
//
// Coordinates are the window's own pixels, caption included: the caption
// strip (kCaptionHeight high, absent while docked and opaque) runs along the
// top, the text area below it, the scroll bar (kScrollBarWidth) at the right
// of the text area while the picture is more than a client height.
//
// Without a window (before Create, after Destroy) operations only change
// the state; nothing is laid out or painted.
class CUIW_InfoWnd final : public IInfoWindow, public IWindowHandler {
public:
    // Told of what the user did through the caption. The owner lays the
    // docked window out itself (see WantedWidth/WantedHeight).
    struct Owner {
        std::function<void()> visibilityChanged;        // closed, or transparency toggled
        std::function<void(bool docked)> dockingChanged;  // dock button, or a docked window dragged away
        std::function<void()> wantedSizeChanged;        // optional: the picture's size changed
    };
    // Draws `content` as a mask (black text on white, whatever the line
    // colours) and fills `mask` with it; false when it cannot. The Qt widget
    // installs one; without it a transparent window keeps its shape.
    using MaskRenderer = std::function<bool(const InfoContent& content, const LogicalFont& font, TextMask* mask)>;

    static constexpr uint32_t kDefaultTextColor = 0xFAFAFA;
    static constexpr uint32_t kDefaultBackColor = 0xF0F0F0;  // the button face of the default theme
    static constexpr int32_t kCaptionHeight = 16;
    static constexpr int32_t kScrollBarWidth = 16;
    static constexpr PixelRect kCreateRect{0, 0, 100, 500};
    static constexpr const char* kTitle = "Info";
    // The smallest floating window the sizing frame leaves: the caption's
    // title and buttons, and one line's worth of text area.
    static constexpr int32_t kMinWidth = 64;
    static constexpr int32_t kMinHeight = kCaptionHeight + 12;
    // The timer that applies a coalesced shape rebuild (see UpdateShape).
    static constexpr uint32_t kShapeTimerId = 1;

    CUIW_InfoWnd();
    ~CUIW_InfoWnd();
    CUIW_InfoWnd(const CUIW_InfoWnd&) = delete;
    CUIW_InfoWnd& operator=(const CUIW_InfoWnd&) = delete;

    // lifecycle:
    // A child window under `parent` that can dock (`child`), or a tool
    // window of its own owned by the control that cannot. `site` is borrowed
    // and must outlive the window. False when the site made no window.
    bool Create(IControlSite& site, WindowHandle parent, bool child, Owner owner);
    void Destroy();
    WindowHandle Window() const { return window_; }

    // IInfoWindow:
    InfoSection AddSection(int32_t kind, std::string_view header, uint32_t color) override;
    bool AddLine(InfoSection section, std::string_view text, uint32_t color) override;
    // Redraws only the line's strip (all of the window when the picture's
    // width changes), nothing when text and colour are unchanged. While the
    // window is transparent and mouse input is pending it returns true at
    // once, changing nothing: the shape rebuild is the slow part, and the
    // next mouse event brings newer text anyway.
    bool SetLine(InfoSection section, int32_t index, std::string_view text, uint32_t color) override;
    bool SetHeader(InfoSection section, std::string_view text, uint32_t color) override;
    bool RemoveSection(InfoSection section) override;

    // persistence:
    // Reads the window's values of the control's key `root` (open) and
    // applies them; missing values keep the current state.
    void LoadSettings(CRegistryKey& root);
    // Writes the floating rectangle when it differs from the stored one.
    void SavePlacement(CRegistryKey& root);
    // The "InfoWnd" block of the control's saved state, either direction.
    void Serialize(CArchive& archive);

    // getters:
    int32_t VisibilityMask() const { return entries_.VisibilityMask(); }
    bool Transparent() const { return transparent_; }
    bool Docked() const { return docked_; }
    bool Dockable() const { return dockable_; }
    const LogicalFont& Font() const { return font_; }
    uint32_t TextColor() const { return textColor_; }
    uint32_t BackColor() const { return backColor_; }
    bool Visible() const { return visible_; }
    const InfoEntryList& Entries() const { return entries_; }
    // The floating rectangle, in the parent's pixels.
    const PixelRect& NormalRect() const { return normalRect_; }

    // setters:
    void SetVisibilityMask(int32_t mask);
    void SetTransparent(bool transparent);
    // Ignored on a window that cannot dock. Undocking puts the window back
    // at its floating rectangle; docked, the owner places it.
    void SetDocked(bool docked);
    void SetFont(const LogicalFont& font);
    void SetTextColor(uint32_t color);
    void SetBackColor(uint32_t color);
    void Show(bool show);

    // What the window shows (for painting):
    const InfoContent& Content() const { return content_; }
    const InfoScroll& Scroll() const { return scroll_; }
    int32_t CaptionHeight() const { return HasCaption() ? kCaptionHeight : 0; }
    // The text area: below the caption, left of the scroll bar.
    PixelRect ClientRect() const;
    bool ScrollBarShown() const { return scroll_.range >= 1; }
    PixelRect ScrollBarRect() const;
    const InfoCaption& Caption() const { return caption_; }
    bool ButtonPushed(InfoButton button) const { return caption_.Pushed(button, transparent_, docked_); }
    // The size that shows the whole picture with the caption the window has
    // now: what the owner gives a docked window when it has the room.
    int32_t WantedWidth() const;
    int32_t WantedHeight() const;

    // sizing:
    // Whether the user may size the window by its frame: a floating window
    // may; a docked one is laid out by its owner.
    bool Sizable() const { return window_ != 0 && !docked_; }
    // The user dragged the frame to `rect` (the parent's pixels; the
    // screen's for the tool-window variant). The text keeps its picture:
    // a smaller window scrolls it vertically and clips it at the right, a
    // larger one shows the background below and beside it. The rectangle
    // is the floating one that SavePlacement and the saved state keep.
    void OnSizedByUser(const PixelRect& rect);

    // input (from the window):
    void ScrollBy(InfoScrollAction action, int32_t thumb = 0);
    void OnMouse(WindowHandle window, const MouseEvent& event) override;
    void OnKey(WindowHandle window, const KeyEvent& event) override;
    void OnSize(WindowHandle window, int32_t width, int32_t height) override;
    void OnTimer(WindowHandle window, uint32_t timerId) override;

    // the window's drawing side (installing either lays nothing out: call
    // Refresh when the window is ready):
    void SetMaskRenderer(MaskRenderer renderer) { maskRenderer_ = std::move(renderer); }
    // Called after every layout, so a window can follow the scroll state.
    void SetLayoutHook(std::function<void()> hook) { layoutHook_ = std::move(hook); }
    // Lays out again (shape included) and repaints.
    void Refresh();

private:
    bool HasCaption() const { return !docked_ || transparent_; }
    PixelRect WindowSize() const;  // {0, 0, width, height}
    void Relayout();
    void Repaint(const PixelRect* rect = nullptr);
    void UpdateShape();
    void RebuildShape();
    void CancelShapeRebuild();
    void Perform(InfoButton button);
    void StartDrag(PixelPoint point);
    void Drag(PixelPoint point);
    void ApplyPlacement(const PixelRect& rect);
    void Notify(const std::function<void()>& f) {
        if (f) f();
    }

    IControlSite* site_ = nullptr;  // borrowed
    WindowHandle window_ = 0;
    Owner owner_;
    InfoEntryList entries_;
    bool quietEntries_ = false;  // SetLine handles its own repaint

    LogicalFont font_;
    bool fontSet_ = false;
    uint32_t textColor_ = kDefaultTextColor;
    uint32_t backColor_ = kDefaultBackColor;
    bool transparent_ = false;
    bool docked_ = false;
    bool dockable_ = false;
    bool visible_ = true;
    PixelRect normalRect_ = kCreateRect;

    InfoContent content_;
    InfoScroll scroll_;
    InfoCaption caption_;
    bool dragging_ = false;
    PixelPoint dragAnchor_;
    bool shapeSet_ = false;      // the window has a shape of the current text mode
    bool shapePending_ = false;  // a rebuild waits for the shape timer
    MaskRenderer maskRenderer_;
    std::function<void()> layoutHook_;
};

}  // namespace vexplot
