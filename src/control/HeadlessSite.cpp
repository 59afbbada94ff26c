#include "control/HeadlessSite.h"

#include <algorithm>
#include <cmath>

namespace vexplot {

namespace {

int32_t Width(const PixelRect& r) { return std::max(0, r.right - r.left); }
int32_t Height(const PixelRect& r) { return std::max(0, r.bottom - r.top); }

// Off-screen buffers larger than this are not made (a 16k x 16k window is
// far beyond any screen); the window then has no pixels to paint.
constexpr size_t kMaxBufferPixels = size_t{1} << 28;

}  // namespace

HeadlessSite::Window* HeadlessSite::Find(WindowHandle window) {
    const auto it = windows_.find(window);
    return it == windows_.end() ? nullptr : &it->second;
}

const HeadlessSite::Window* HeadlessSite::Find(WindowHandle window) const {
    const auto it = windows_.find(window);
    return it == windows_.end() ? nullptr : &it->second;
}

void HeadlessSite::SizeBuffer(Window& w) {
    if (!IsView(w.role)) return;
    const size_t n = static_cast<size_t>(Width(w.rect)) * static_cast<size_t>(Height(w.rect));
    w.pixels.assign(n <= kMaxBufferPixels ? n : 0, 0u);
}

WindowHandle HeadlessSite::CreateWindow(WindowRole role, WindowHandle parent, const PixelRect& rect,
                                        IWindowHandler* handler) {
    const WindowHandle handle = nextWindow_++;
    Window& w = windows_[handle];
    w.role = role;
    w.parent = parent;
    w.rect = rect;
    w.handler = handler;
    SizeBuffer(w);
    return handle;
}

void HeadlessSite::DestroyWindow(WindowHandle window) {
    windows_.erase(window);
    std::erase_if(timers_, [window](const auto& t) { return t.first.first == window; });
}

void HeadlessSite::ShowWindow(WindowHandle window, bool show) {
    if (Window* w = Find(window)) w->visible = show;
}

bool HeadlessSite::IsWindowVisible(WindowHandle window) const {
    const Window* w = Find(window);
    return w && w->visible;
}

void HeadlessSite::MoveWindow(WindowHandle window, const PixelRect& rect) {
    Window* w = Find(window);
    if (!w) return;
    const bool resized = Width(rect) != Width(w->rect) || Height(rect) != Height(w->rect);
    w->rect = rect;
    if (!resized) return;
    SizeBuffer(*w);
    w->paintPending = true;
    if (w->handler) w->handler->OnSize(window, Width(rect), Height(rect));
}

PixelRect HeadlessSite::GetWindowRect(WindowHandle window) const {
    const Window* w = Find(window);
    return w ? w->rect : PixelRect{};
}

void HeadlessSite::SetWindowText(WindowHandle window, const std::string& text) {
    if (Window* w = Find(window)) w->text = text;
}

std::string HeadlessSite::GetWindowText(WindowHandle window) const {
    const Window* w = Find(window);
    return w ? w->text : std::string();
}

void HeadlessSite::Invalidate(WindowHandle window, const PixelRect*, bool) {
    if (Window* w = Find(window)) w->paintPending = true;
}

int32_t HeadlessSite::MessageBox(const std::string& text, const std::string& caption, MessageButtons buttons) {
    std::fprintf(log_, "%s: %s\n", caption.c_str(), text.c_str());
    return buttons == MessageButtons::YesNo ? kAnswerYes : kAnswerOk;
}

bool HeadlessSite::CopyToClipboard(const ImageBuffer&, const std::string&, std::string* error) {
    if (error) *error = "There is no clipboard: the control runs without a display.";
    return false;
}

bool HeadlessSite::PrintScene(const SceneBuilder&, bool, std::string* error) {
    if (error) *error = "There is no printer: the control runs without a display.";
    return false;
}

int32_t HeadlessSite::RunDialog(IDialogLogic& dialog) {
    dialogsRun_.emplace_back(dialog.DialogName());
    const auto it = dialogScripts_.find(dialog.DialogName());
    if (it == dialogScripts_.end()) {
        std::fprintf(log_, "Vexplot: dialog \"%s\" cancelled: nobody to answer it\n", dialogsRun_.back().c_str());
        return kAnswerCancel;
    }
    return it->second(dialog);
}

bool HeadlessSite::OpenModelessDialog(IDialogLogic& dialog) {
    RunDialog(dialog);
    return true;
}

void HeadlessSite::CloseModelessDialog(IDialogLogic&) {}

std::optional<std::string> HeadlessSite::ChooseFile(const FileDialogRequest& request) {
    dialogsRun_.push_back(request.title);
    if (fileDialogScript_) return fileDialogScript_(request);
    std::fprintf(log_, "Vexplot: file dialog \"%s\" cancelled: nobody to answer it\n", request.title.c_str());
    return std::nullopt;
}

void HeadlessSite::SimulateDisplayChange(const ScreenMode& mode) { DisplayChangeHook::Instance().Notify(mode); }

void HeadlessSite::AnswerDialog(std::string name, DialogScript script) {
    if (script) {
        dialogScripts_[std::move(name)] = std::move(script);
    } else {
        dialogScripts_.erase(name);
    }
}

std::optional<EngineEntry> HeadlessSite::ChooseEngine(const std::vector<EngineEntry>& engines) {
    for (const EngineEntry& e : engines) {
        if (!offeredEngines_.insert(e.name).second) continue;
        std::fprintf(log_, "Vexplot: choosing graph engine \"%s\" %s\n", e.name.c_str(), e.clsidText.c_str());
        return e;
    }
    std::fprintf(log_, "Vexplot: no graph engine left to choose\n");
    return std::nullopt;
}

void HeadlessSite::SetTimer(WindowHandle window, uint32_t timerId, uint32_t milliseconds) {
    if (!Find(window)) return;
    const uint32_t period = std::max<uint32_t>(milliseconds, 1);
    timers_[{window, timerId}] = Timer{period, now_ + period};
}

void HeadlessSite::KillTimer(WindowHandle window, uint32_t timerId) { timers_.erase({window, timerId}); }

void HeadlessSite::AdvanceTime(uint32_t milliseconds) {
    const uint64_t end = now_ + milliseconds;
    for (;;) {
        // The earliest due timer within the interval; a handler may set or
        // kill timers, so the table is searched afresh each time.
        auto next = timers_.end();
        for (auto it = timers_.begin(); it != timers_.end(); ++it)
            if (it->second.due <= end && (next == timers_.end() || it->second.due < next->second.due)) next = it;
        if (next == timers_.end()) break;
        const auto [window, id] = next->first;
        now_ = next->second.due;
        next->second.due += next->second.period;
        if (Window* w = Find(window); w && w->handler) w->handler->OnTimer(window, id);
    }
    now_ = end;
}

int HeadlessSite::Flush() {
    int painted = 0;
    for (auto& [handle, w] : windows_) {
        if (!w.paintPending || !w.visible || !IsView(w.role) || !w.handler) continue;
        w.paintPending = false;
        if (w.pixels.empty()) continue;
        const ImageBuffer target{w.pixels.data(), Width(w.rect), Height(w.rect), Width(w.rect), 0};
        w.handler->OnPaint(handle, target);
        ++painted;
    }
    return painted;
}

const std::vector<uint32_t>& HeadlessSite::Pixels(WindowHandle window) const {
    static const std::vector<uint32_t> kNone;
    const Window* w = Find(window);
    return w ? w->pixels : kNone;
}

WindowRole HeadlessSite::Role(WindowHandle window) const {
    const Window* w = Find(window);
    return w ? w->role : WindowRole::Control;
}

uint32_t HeadlessSite::CreateBitmap(const ImageBuffer& image) {
    if (!image.pixels || image.width <= 0 || image.height <= 0 || image.stride < image.width) return 0;
    Bitmap b;
    b.width = image.width;
    b.height = image.height;
    b.pixels.reserve(static_cast<size_t>(image.width) * static_cast<size_t>(image.height));
    for (int32_t y = 0; y < image.height; ++y) {
        const uint32_t* row = image.pixels + static_cast<size_t>(y) * static_cast<size_t>(image.stride);
        b.pixels.insert(b.pixels.end(), row, row + image.width);
    }
    const uint32_t handle = nextBitmap_++;
    bitmaps_.emplace(handle, std::move(b));
    return handle;
}

bool HeadlessSite::ReadBitmap(uint32_t bitmap, std::vector<uint32_t>* pixels, int32_t* width,
                              int32_t* height) const {
    const auto it = bitmaps_.find(bitmap);
    if (it == bitmaps_.end()) return false;
    if (pixels) *pixels = it->second.pixels;
    if (width) *width = it->second.width;
    if (height) *height = it->second.height;
    return true;
}

void HeadlessSite::DeleteBitmap(uint32_t bitmap) { bitmaps_.erase(bitmap); }

void HeadlessSite::SetWindowShape(WindowHandle window, const std::vector<PixelRect>* runs) {
    if (Window* w = Find(window)) w->shape = runs ? *runs : std::vector<PixelRect>{};
}

const std::vector<PixelRect>& HeadlessSite::Shape(WindowHandle window) const {
    static const std::vector<PixelRect> none;
    const Window* w = Find(window);
    return w ? w->shape : none;
}

void HeadlessSite::AnimateWindow(WindowHandle window, uint32_t flags, uint32_t) {
    ShowWindow(window, (flags & anim::kHide) == 0);
}

PixelPoint HeadlessSite::CursorPosition(WindowHandle window) const {
    // The windows' rectangles are in their parents' client pixels; walk up
    // to the control window, whose client area the cursor is kept in.
    PixelPoint point = cursor_;
    for (const Window* w = Find(window); w && w->parent != 0; w = Find(w->parent)) {
        point.x -= w->rect.left;
        point.y -= w->rect.top;
    }
    return point;
}

FontMetrics HeadlessSite::GetFontMetrics(const LogicalFont& font) const {
    // A negative height is the character height (ascent + descent without
    // internal leading); a positive one the cell height. Liberation Sans
    // has an ascent of 0.905 and a descent of 0.212 em, a line gap of 0.033.
    const double em = font.height < 0 ? -font.height : std::max(font.height, 1) / 1.117;
    FontMetrics m;
    m.ascent = static_cast<int32_t>(std::lround(em * 0.905));
    m.descent = static_cast<int32_t>(std::lround(em * 0.212));
    m.height = m.ascent + m.descent;
    m.externalLeading = static_cast<int32_t>(std::lround(em * 0.033));
    m.averageCharWidth = static_cast<int32_t>(std::lround(em * 0.5));
    m.maxCharWidth = static_cast<int32_t>(std::lround(em * 1.0));
    if (font.width > 0) m.averageCharWidth = font.width;
    return m;
}

}  // namespace vexplot
