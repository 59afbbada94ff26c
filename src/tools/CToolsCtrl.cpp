#include "tools/CToolsCtrl.h"

#include <algorithm>

#include "model/CArchive.h"

namespace vexplot {

namespace {

constexpr char kRecordTag[] = "ToolsCtrl";

int32_t Width(const PixelRect& r) { return r.right - r.left; }
int32_t Height(const PixelRect& r) { return r.bottom - r.top; }

// The start of a span of `length` kept inside [low, high); a span longer
// than the room left starts at `low`.
int32_t ClampStart(int32_t start, int32_t length, int32_t low, int32_t high) {
    return std::max(low, std::min(start, high - length));
}

// Rectangles are stored top, bottom, left, right: the order of the record.
void WriteRect(CArchive& archive, const PixelRect& r) {
    archive.WriteInt32(r.top);
    archive.WriteInt32(r.bottom);
    archive.WriteInt32(r.left);
    archive.WriteInt32(r.right);
}

PixelRect ReadRect(CArchive& archive, const char* what) {
    PixelRect r{};
    r.top = archive.ReadInt32(what);
    r.bottom = archive.ReadInt32(what);
    r.left = archive.ReadInt32(what);
    r.right = archive.ReadInt32(what);
    return r;
}

}  // namespace

CToolsCtrl::~CToolsCtrl() { Destroy(); }

bool CToolsCtrl::Create(IControlSite& site, WindowRole role, WindowHandle parent, const PixelRect& rect,
                        int32_t command, std::string caption) {
    Destroy();
    site_ = &site;
    role_ = role;
    parent_ = parent;
    command_ = command;
    caption_ = std::move(caption);
    picture_ = ButtonPicture(static_cast<uint32_t>(std::max(0, Width(rect))),
                             static_cast<uint32_t>(std::max(0, Height(rect))));
    window_ = site.CreateWindow(role, parent, rect, this);
    if (window_ == 0) return false;
    site.BindWindowLogic(window_, this);
    site.SetWindowText(window_, caption_);
    return true;
}

void CToolsCtrl::Destroy() {
    if (window_ == 0) return;
    const WindowHandle window = window_;
    window_ = 0;
    pressed_ = false;
    dragSwitch_ = false;
    site_->DestroyWindow(window);
}

PixelRect CToolsCtrl::Rect() const { return window_ ? site_->GetWindowRect(window_) : PixelRect{}; }

void CToolsCtrl::SetEnabledState(int32_t state) {
    if (state == enabledState_) return;
    enabledState_ = state;
    Repaint();
}

void CToolsCtrl::SetCaption(std::string caption) {
    caption_ = std::move(caption);
    if (window_) site_->SetWindowText(window_, caption_);
    Repaint();
}

void CToolsCtrl::SetBounds(const PixelRect& bounds) {
    bounds_ = bounds;
    useBounds_ = true;
}

void CToolsCtrl::SetSubMenu(MenuModel menu) {
    subMenuSwitch_ = !menu.empty();
    subMenuSource_ = std::move(menu);
}

void CToolsCtrl::SetOwnPopup(std::function<MenuModel()> provider) {
    ownPopupSwitch_ = static_cast<bool>(provider);
    ownPopup_ = std::move(provider);
}

void CToolsCtrl::SetDropDown(WindowHandle window) {
    dropDownSwitch_ = window != 0;
    dropDown_ = window;
}

bool CToolsCtrl::Contains(PixelPoint point) const {
    const PixelRect r = Rect();
    return point.x >= 0 && point.y >= 0 && point.x < Width(r) && point.y < Height(r);
}

void CToolsCtrl::Repaint() {
    if (window_) site_->Invalidate(window_, nullptr, false);
}

void CToolsCtrl::OnButtonDown(PixelPoint point) {
    if (window_ == 0 || !Contains(point) || IgnoresPresses()) return;
    pressed_ = true;
    // A press is also where a drag starts; the widget holds the mouse until
    // the release (the platform's implicit grab).
    dragSwitch_ = dragMode_ != DragMode::None;
    dragStartRect_ = Rect();
    grabOffset_ = point;
    Repaint();
}

void CToolsCtrl::OnButtonUp(PixelPoint point) {
    if (!pressed_) return;
    releasedInside_ = Contains(point);
    pressed_ = false;
    dragSwitch_ = false;
    Repaint();
    OpenPopups();
    // The owner hears of every release, inside the button or not; it reads
    // ReleasedInside() when it cares.
    if (owner_.message) owner_.message(kMessageToolsCommand, command_, 0);
}

void CToolsCtrl::OpenPopups() {
    if (popupState_ != 2 || window_ == 0) return;
    if (subMenuSwitch_ && !subMenuSource_.empty() && !subMenuSource_.front().submenu.empty())
        OpenMenu(subMenuSource_.front().submenu);
    if (ownPopupSwitch_) {
        OpenMenu(ownPopup_());
    } else if (dropDownSwitch_) {
        const PixelRect r = Rect();
        site_->MoveWindow(dropDown_, PixelRect{r.left, r.bottom, r.left + kDropDownWidth, r.bottom + kDropDownHeight});
        site_->ShowWindow(dropDown_, true);
    }
}

void CToolsCtrl::OpenMenu(const MenuModel& menu) {
    if (menu.empty()) return;
    // At the button's bottom-left corner, left-aligned.
    const int32_t chosen = site_->TrackPopupMenu(window_, menu, PixelPoint{0, Height(Rect())});
    if (chosen != 0 && owner_.command) owner_.command(chosen);
}

PixelRect CToolsCtrl::DragArea() const {
    if (useBounds_) return bounds_;
    const PixelRect parent = site_->GetWindowRect(parent_);
    return PixelRect{0, 0, Width(parent), Height(parent)};
}

void CToolsCtrl::OnMouseMove(PixelPoint point) {
    if (!dragSwitch_ || window_ == 0 || dragMode_ == DragMode::None) return;
    // The point is in the button's client pixels, which move with the
    // button: in the parent it lies at the button's current corner plus it.
    const PixelRect now = Rect();
    const PixelRect area = DragArea();
    const int32_t w = Width(now);
    const int32_t h = Height(now);
    int32_t left = ClampStart(now.left + point.x - grabOffset_.x, w, area.left, area.right);
    int32_t top = ClampStart(now.top + point.y - grabOffset_.y, h, area.top, area.bottom);
    if (dragMode_ == DragMode::Horizontal) top = dragStartRect_.top;
    if (left == now.left && top == now.top) return;
    site_->MoveWindow(window_, PixelRect{left, top, left + w, top + h});
}

void CToolsCtrl::OnMouseEnter() {
    if (owner_.hover) owner_.hover();
}

void CToolsCtrl::OnSize(WindowHandle window, int32_t width, int32_t height) {
    if (window != window_) return;
    picture_ = ButtonPicture(static_cast<uint32_t>(std::max(0, width)), static_cast<uint32_t>(std::max(0, height)),
                             picture_.FaceColor());
}

void CToolsCtrl::Serialize(CArchive& archive) {
    if (window_ == 0) return;
    if (archive.IsStoring()) {
        archive.WriteString(kRecordTag);
        archive.WriteInt32(value_);
        archive.WriteInt32(enabledState_);
        archive.WriteString(caption_);
        WriteRect(archive, Rect());
        archive.WriteInt32(useBounds_ ? 1 : 0);
        WriteRect(archive, bounds_);
        archive.WriteInt32(popupState_);
        return;
    }
    // The tag is read and not checked: records of other spellings load too.
    static_cast<void>(archive.ReadString("button tag"));
    const int32_t value = archive.ReadInt32("button value");
    const int32_t enabledState = archive.ReadInt32("button enabled state");
    std::string caption = archive.ReadString("button caption");
    const PixelRect rect = ReadRect(archive, "button rectangle");
    const bool useBounds = archive.ReadInt32("button bounds switch") != 0;
    const PixelRect bounds = ReadRect(archive, "button bounds");
    const int32_t popupState = archive.ReadInt32("button popup state");
    // Applied only once the whole record has been read, so a truncated
    // record leaves the button as it was.
    value_ = value;
    enabledState_ = enabledState;
    useBounds_ = useBounds;
    bounds_ = bounds;
    popupState_ = popupState;
    site_->MoveWindow(window_, rect);
    SetCaption(std::move(caption));
}

}  // namespace vexplot
