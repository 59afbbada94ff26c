#include "ui/CUIW_InfoWnd.h"

#include <array>
#include <utility>

#include "model/CArchive.h"
#include "settings/CRegistryKey.h"
#include "ui/LogFontRecord.h"

namespace vexplot {

namespace {

struct KindSetting {
    const char* name;
    InfoKind kind;
};
constexpr std::array<KindSetting, 6> kKindSettings{{
    {"CurrPosVisible", InfoKind::Position},
    {"MarkerVisible", InfoKind::Marker},
    {"RegionVisible", InfoKind::Region},
    {"TracerVisible", InfoKind::Tracer},
    {"DiffTracerVisible", InfoKind::DiffTracer},
    {"ZoomVisible", InfoKind::Zoom},
}};

LogicalFont DefaultFont() {
    LogicalFont font;
    font.face = "Arial";
    font.height = -11;
    font.weight = 400;
    font.pitchAndFamily = LogicalFont::kSwiss;
    return font;
}

uint8_t Byte(bool b) { return b ? 1 : 0; }

}  // namespace

CUIW_InfoWnd::CUIW_InfoWnd() : font_(DefaultFont()) {
    entries_.SetChangedHook([this] {
        if (quietEntries_) return;
        Relayout();
        Repaint();
    });
}

CUIW_InfoWnd::~CUIW_InfoWnd() { Destroy(); }

bool CUIW_InfoWnd::Create(IControlSite& site, WindowHandle parent, bool child, Owner owner) {
    Destroy();
    site_ = &site;
    owner_ = std::move(owner);
    dockable_ = child;
    if (!dockable_) docked_ = false;
    const WindowRole role = child ? WindowRole::InfoWindow : WindowRole::InfoPopup;
    window_ = site.CreateWindow(role, parent, kCreateRect, this);
    if (window_ == 0) return false;
    site.BindWindowLogic(window_, this);
    site.SetWindowText(window_, kTitle);
    normalRect_ = kCreateRect;
    if (!fontSet_) font_ = DefaultFont();
    Relayout();
    site.ShowWindow(window_, visible_);
    return true;
}

void CUIW_InfoWnd::Destroy() {
    CancelShapeRebuild();
    if (window_ != 0 && site_ != nullptr) site_->DestroyWindow(window_);
    window_ = 0;
    dragging_ = false;
    shapeSet_ = false;
}

// --- IInfoWindow ---------------------------------------------------------

InfoSection CUIW_InfoWnd::AddSection(int32_t kind, std::string_view header, uint32_t color) {
    return entries_.AddSection(kind, header, color);
}

bool CUIW_InfoWnd::AddLine(InfoSection section, std::string_view text, uint32_t color) {
    return entries_.AddLine(section, text, color);
}

bool CUIW_InfoWnd::SetLine(InfoSection section, int32_t index, std::string_view text, uint32_t color) {
    if (window_ != 0 && transparent_ && site_->MouseInputPending()) return true;
    bool changed = false;
    quietEntries_ = true;
    const bool ok = entries_.SetLine(section, index, text, color, &changed);
    quietEntries_ = false;
    if (!ok || !changed || window_ == 0) return ok;

    const int32_t oldWidth = content_.width;
    Relayout();
    if (content_.width != oldWidth) {
        // The longest line grew or shrank: the whole picture changes width.
        Repaint();
        return true;
    }
    const auto& all = entries_.Entries();
    size_t at = 0;
    while (at < all.size() && !(all[at].isHeader && all[at].section == section)) ++at;
    at += static_cast<size_t>(index);
    for (const InfoLine& line : content_.lines) {
        if (line.entryIndex != at) continue;
        const PixelRect client = ClientRect();
        const int32_t top = client.top + line.top - scroll_.offset;
        const PixelRect strip{client.left, top, client.right, top + content_.lineHeight};
        Repaint(&strip);
        break;
    }
    return true;
}

bool CUIW_InfoWnd::SetHeader(InfoSection section, std::string_view text, uint32_t color) {
    return entries_.SetHeader(section, text, color);
}

bool CUIW_InfoWnd::RemoveSection(InfoSection section) { return entries_.RemoveSection(section); }

// --- setters -------------------------------------------------------------

void CUIW_InfoWnd::SetVisibilityMask(int32_t mask) { entries_.SetVisibilityMask(mask); }

void CUIW_InfoWnd::SetTransparent(bool transparent) {
    if (transparent == transparent_) return;
    transparent_ = transparent;
    // Leaving the mode gives the window its whole rectangle back before the
    // layout, which drops the caption again when the window is docked.
    CancelShapeRebuild();
    shapeSet_ = false;
    if (!transparent_ && window_ != 0) site_->SetWindowShape(window_, nullptr);
    Relayout();
    Repaint();
}

void CUIW_InfoWnd::SetDocked(bool docked) {
    if (!dockable_ || docked == docked_) return;
    docked_ = docked;
    dragging_ = false;
    if (!docked_ && window_ != 0) site_->MoveWindow(window_, normalRect_);
    Relayout();
    Repaint();
}

void CUIW_InfoWnd::SetFont(const LogicalFont& font) {
    font_ = font;
    fontSet_ = true;
    Relayout();
    Repaint();
}

void CUIW_InfoWnd::SetTextColor(uint32_t color) {
    textColor_ = color;
    Relayout();
    Repaint();
}

void CUIW_InfoWnd::SetBackColor(uint32_t color) {
    backColor_ = color;
    Repaint();
}

void CUIW_InfoWnd::Show(bool show) {
    visible_ = show;
    if (window_ != 0) site_->ShowWindow(window_, show);
}

void CUIW_InfoWnd::Refresh() {
    Relayout();
    Repaint();
}

// --- geometry ------------------------------------------------------------

PixelRect CUIW_InfoWnd::WindowSize() const {
    if (window_ == 0) return {0, 0, kCreateRect.right, kCreateRect.bottom};
    const PixelRect r = site_->GetWindowRect(window_);
    return {0, 0, r.right - r.left, r.bottom - r.top};
}

PixelRect CUIW_InfoWnd::ClientRect() const {
    const PixelRect size = WindowSize();
    const int32_t right = size.right - (ScrollBarShown() ? kScrollBarWidth : 0);
    return {0, CaptionHeight(), right < 0 ? 0 : right, size.bottom};
}

PixelRect CUIW_InfoWnd::ScrollBarRect() const {
    if (!ScrollBarShown()) return {};
    const PixelRect size = WindowSize();
    return {size.right - kScrollBarWidth, CaptionHeight(), size.right, size.bottom};
}

int32_t CUIW_InfoWnd::WantedWidth() const {
    return content_.width + (ScrollBarShown() ? kScrollBarWidth : 0);
}

int32_t CUIW_InfoWnd::WantedHeight() const { return content_.height + CaptionHeight(); }

// --- layout and painting -------------------------------------------------

void CUIW_InfoWnd::Relayout() {
    if (window_ == 0) return;
    const int32_t oldWidth = WantedWidth();
    const int32_t oldHeight = WantedHeight();
    content_ = InfoLayout::Content(entries_.Entries(), site_->GetFontMetrics(font_), textColor_);
    const PixelRect size = WindowSize();
    const int32_t clientHeight = size.bottom - CaptionHeight();
    scroll_ = InfoLayout::Scroll(scroll_.position, content_.height, clientHeight, scroll_);
    caption_.Layout(size.right, CaptionHeight(), dockable_);
    if (transparent_) UpdateShape();
    if (layoutHook_) layoutHook_();
    if (oldWidth != WantedWidth() || oldHeight != WantedHeight()) Notify(owner_.wantedSizeChanged);
}

void CUIW_InfoWnd::Repaint(const PixelRect* rect) {
    if (window_ != 0) site_->Invalidate(window_, rect, false);
}

// The shape is the slow part of a transparent window: a picture of the
// text, its runs of text pixels, and a new window region. While lines
// change at every mouse move, a rebuild per change would cost more than a
// frame can pay, so once the window has its shape, further rebuilds are
// coalesced: the first change asks the site for a zero-delay timer, which
// fires after the events already queued (the rest of the burst) have been
// handled, and the one rebuild then takes the text as it stands. The sites
// cannot say whether mouse input is waiting (Qt has no look into its
// queue), so this, not MouseInputPending, is what bounds the cost. The
// first shape of the mode is built at once, so that the window never shows
// as a solid block.
void CUIW_InfoWnd::UpdateShape() {
    if (window_ == 0 || !transparent_) return;
    if (!shapeSet_) {
        RebuildShape();
        return;
    }
    if (shapePending_) return;
    shapePending_ = true;
    site_->SetTimer(window_, kShapeTimerId, 0);
}

void CUIW_InfoWnd::CancelShapeRebuild() {
    if (shapePending_ && window_ != 0 && site_ != nullptr) site_->KillTimer(window_, kShapeTimerId);
    shapePending_ = false;
}

void CUIW_InfoWnd::OnTimer(WindowHandle, uint32_t timerId) {
    if (timerId != kShapeTimerId) return;
    CancelShapeRebuild();
    RebuildShape();
}

void CUIW_InfoWnd::RebuildShape() {
    if (window_ == 0 || !transparent_) return;
    const PixelRect client = ClientRect();
    std::vector<PixelRect> shape;
    if (!entries_.Entries().empty()) {
        TextMask mask;
        // No picture of the text, no shape: the window keeps the one it has.
        if (!maskRenderer_ || !maskRenderer_(content_, font_, &mask)) return;
        shape = TextRegion::Place(TextRegion::Runs(mask, 0xFFFFFF), 0, client.top - scroll_.offset, client);
    } else {
        const int32_t right = client.right + (ScrollBarShown() ? kScrollBarWidth : 0);
        if (right > client.left && client.bottom > client.top)
            shape.push_back({client.left, client.top, right, client.bottom});
    }
    const PixelRect strip = caption_.Strip();
    if (strip.bottom > strip.top && strip.right > strip.left) shape.push_back(strip);
    site_->SetWindowShape(window_, &shape);
    shapeSet_ = true;
}

// --- input ---------------------------------------------------------------

void CUIW_InfoWnd::ScrollBy(InfoScrollAction action, int32_t thumb) {
    if (window_ == 0) return;
    const int32_t position = InfoLayout::Move(scroll_, action, thumb);
    if (position == scroll_.position) return;
    scroll_.position = position;
    Relayout();
    Repaint();
}

void CUIW_InfoWnd::OnMouse(WindowHandle, const MouseEvent& event) {
    using Kind = MouseEvent::Kind;
    switch (event.kind) {
        case Kind::Press:
            if (event.button != MouseEvent::Button::Left) return;
            switch (caption_.OnPress(event.point)) {
                case InfoCaption::Press::Button: Repaint(); break;
                case InfoCaption::Press::Drag: StartDrag(event.point); break;
                case InfoCaption::Press::Outside: break;
            }
            return;
        case Kind::Move:
            if (caption_.Held() != InfoButton::None) {
                if (caption_.OnMove(event.point)) Repaint();
            } else if (dragging_) {
                Drag(event.point);
            }
            return;
        case Kind::Release:
            if (event.button != MouseEvent::Button::Left) return;
            if (dragging_) {
                dragging_ = false;
            } else if (caption_.Held() != InfoButton::None) {
                const InfoButton button = caption_.OnRelease(event.point);
                Repaint();
                Perform(button);
            }
            return;
        case Kind::Wheel:
            if (event.wheelDelta != 0)
                ScrollBy(event.wheelDelta > 0 ? InfoScrollAction::LineUp : InfoScrollAction::LineDown);
            return;
        case Kind::DoubleClick:
        case Kind::Leave: return;
    }
}

void CUIW_InfoWnd::OnKey(WindowHandle, const KeyEvent& event) {
    switch (event.key) {
        case vk::kUp: ScrollBy(InfoScrollAction::LineUp); break;
        case vk::kDown: ScrollBy(InfoScrollAction::LineDown); break;
        case vk::kPageUp: ScrollBy(InfoScrollAction::PageUp); break;
        case vk::kPageDown: ScrollBy(InfoScrollAction::PageDown); break;
        case vk::kHome: ScrollBy(InfoScrollAction::ThumbTrack, 0); break;
        case vk::kEnd: ScrollBy(InfoScrollAction::ThumbTrack, scroll_.range); break;
        default: break;
    }
}

void CUIW_InfoWnd::OnSize(WindowHandle, int32_t, int32_t) {
    if (window_ == 0) return;
    if (!docked_) normalRect_ = site_->GetWindowRect(window_);
    Relayout();
    Repaint();
}

void CUIW_InfoWnd::OnSizedByUser(const PixelRect& rect) {
    if (!Sizable()) return;
    normalRect_ = rect;
    site_->MoveWindow(window_, rect);
    Relayout();
    Repaint();
}

void CUIW_InfoWnd::Perform(InfoButton button) {
    switch (button) {
        case InfoButton::Close:
            Show(false);
            Notify(owner_.visibilityChanged);
            break;
        case InfoButton::Transparent:
            SetTransparent(!transparent_);
            Notify(owner_.visibilityChanged);
            break;
        case InfoButton::Dock:
            SetDocked(!docked_);
            if (owner_.dockingChanged) owner_.dockingChanged(docked_);
            break;
        case InfoButton::None: break;
    }
}

void CUIW_InfoWnd::StartDrag(PixelPoint point) {
    if (docked_) {
        // A docked window dragged away floats from where it is now.
        docked_ = false;
        normalRect_ = site_->GetWindowRect(window_);
        Relayout();
        Repaint();
        if (owner_.dockingChanged) owner_.dockingChanged(false);
    }
    dragging_ = true;
    dragAnchor_ = point;
}

void CUIW_InfoWnd::Drag(PixelPoint point) {
    // Points come in the window's own pixels, which move with it: keeping
    // the anchor under the cursor means moving by the point's distance from it.
    const int32_t dx = point.x - dragAnchor_.x;
    const int32_t dy = point.y - dragAnchor_.y;
    if (dx == 0 && dy == 0) return;
    const PixelRect r = site_->GetWindowRect(window_);
    normalRect_ = {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
    site_->MoveWindow(window_, normalRect_);
}

void CUIW_InfoWnd::ApplyPlacement(const PixelRect& rect) {
    normalRect_ = rect;
    if (window_ != 0 && !docked_) {
        site_->MoveWindow(window_, rect);
        Relayout();
        Repaint();
    }
}

// --- persistence ---------------------------------------------------------

void CUIW_InfoWnd::LoadSettings(CRegistryKey& root) {
    int32_t mask = 0;
    for (const KindSetting& s : kKindSettings)
        if (root.ReadInt(s.name) == 1) mask |= static_cast<int32_t>(s.kind);

    const int32_t text = root.ReadInt("TextColor");
    const int32_t back = root.ReadInt("InfoBackgroundColor");
    const int32_t transparent = root.ReadInt("Transparent");
    const int32_t visible = root.ReadInt("Visible");
    textColor_ = text == -1 ? kDefaultTextColor : static_cast<uint32_t>(text);
    backColor_ = back == -1 ? kDefaultBackColor : static_cast<uint32_t>(back);

    // Only a whole record is a font: a shorter binary value would read as a
    // zero-padded record with a cut face.
    const auto stored = root.QueryValue("Font");
    LogFontRecord::Bytes record{};
    if (stored && stored->type == ValueType::Binary && stored->data.size() == record.size() &&
        root.ReadBinary("Font", record.data(), record.size()) == 1 && record != LogFontRecord::Encode(font_)) {
        // A record that names no face cannot make a font: the old one stays.
        if (auto font = LogFontRecord::Decode(record)) {
            font_ = *font;
            fontSet_ = true;
        }
    }

    entries_.SetVisibilityMask(mask);  // relayouts with the new colours and font
    SetTransparent(transparent != -1 && transparent != 0);

    const int32_t top = root.ReadInt("InfoTop");
    const int32_t bottom = root.ReadInt("InfoBottom");
    const int32_t left = root.ReadInt("InfoLeft");
    const int32_t right = root.ReadInt("InfoRight");
    if (top != -1 && bottom != -1 && left != -1 && right != -1) ApplyPlacement({left, top, right, bottom});

    Show(visible == -1 || visible != 0);
}

void CUIW_InfoWnd::SavePlacement(CRegistryKey& root) {
    if (docked_) return;
    const PixelRect r = normalRect_;
    if (root.ReadInt("InfoTop") == r.top && root.ReadInt("InfoBottom") == r.bottom &&
        root.ReadInt("InfoLeft") == r.left && root.ReadInt("InfoRight") == r.right)
        return;
    root.WriteInt("InfoTop", r.top);
    root.WriteInt("InfoBottom", r.bottom);
    root.WriteInt("InfoLeft", r.left);
    root.WriteInt("InfoRight", r.right);
}

void CUIW_InfoWnd::Serialize(CArchive& ar) {
    static constexpr const char* kTag = "InfoWnd";
    if (ar.IsStoring()) {
        ar.WriteString(kTag);
        ar.WriteBool(docked_);
        ar.WriteBool(visible_);
        ar.WriteColor(textColor_);
        ar.WriteColor(backColor_);
        ar.WriteUInt32(static_cast<uint32_t>(entries_.VisibilityMask()));
        ar.WriteBool(transparent_);
        ar.WriteBool(dockable_);
        ar.WriteBool(visible_);
        ar.WriteInt32(normalRect_.top);
        ar.WriteInt32(normalRect_.left);
        ar.WriteInt32(normalRect_.bottom);
        ar.WriteInt32(normalRect_.right);
        ar.WriteString(LogFontRecord::CutFace(font_.face, LogFontRecord::kFaceBytes));
        const uint8_t pitch[] = {font_.pitchAndFamily};
        ar.WriteBytes(pitch);
        ar.WriteInt32(font_.height);
        ar.WriteInt32(font_.width);
        ar.WriteInt32(font_.escapement);
        const uint8_t styles[] = {Byte(font_.underline), Byte(font_.italic), font_.charset};
        ar.WriteBytes(styles);
        ar.WriteInt32(font_.weight);
        return;
    }

    ar.ExpectString(kTag);
    const bool docked = ar.ReadBool("info window docked");
    ar.ReadBool("info window visible");
    const uint32_t text = ar.ReadColor("info text colour");
    const uint32_t back = ar.ReadColor("info background colour");
    const uint32_t mask = ar.ReadUInt32("info visibility mask");
    const bool transparent = ar.ReadBool("info window transparent");
    // Whether the window can dock was settled when it was created; the
    // stored flag only says what the saving window was.
    ar.ReadBool("info window dockable");
    const bool visible = ar.ReadBool("info window visible");
    PixelRect rect{};
    rect.top = ar.ReadInt32("info window top");
    rect.left = ar.ReadInt32("info window left");
    rect.bottom = ar.ReadInt32("info window bottom");
    rect.right = ar.ReadInt32("info window right");
    LogicalFont font;
    font.face = LogFontRecord::CutFace(ar.ReadString("info font face"), LogFontRecord::kFaceBytes);
    uint8_t pitch[1] = {};
    ar.ReadBytes(pitch, "info font pitch and family");
    font.pitchAndFamily = pitch[0];
    font.height = ar.ReadInt32("info font height");
    font.width = ar.ReadInt32("info font width");
    font.escapement = ar.ReadInt32("info font escapement");
    uint8_t styles[3] = {};
    ar.ReadBytes(styles, "info font underline, italic and character set");
    font.underline = styles[0] != 0;
    font.italic = styles[1] != 0;
    font.charset = styles[2];
    font.weight = ar.ReadInt32("info font weight");

    // Everything is read before anything changes, so a truncated block
    // leaves the window as it was.
    textColor_ = text;
    backColor_ = back;
    if (!font.face.empty()) {
        font_ = font;
        fontSet_ = true;
    }
    SetDocked(docked);
    entries_.SetVisibilityMask(static_cast<int32_t>(mask));
    SetTransparent(transparent);
    ApplyPlacement(rect);
    Show(visible);
}

}  // namespace vexplot
