#pragma once
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "site/IControlSite.h"
#include "model/CallLog.h"

namespace vexplot::test {

// The control's site as a test sees it: keeps each window's state (role,
// visibility, rectangle, text), records the calls a test checks the order
// of in the shared log as "site.X(args)", and answers the engine-choice
// dialog from `choices`, one entry per call (none left: cancelled). Every
// other dialog is cancelled.
class RecordingSite final : public IControlSite {
public:
    explicit RecordingSite(std::shared_ptr<CallLog> callLog) : log(std::move(callLog)) {}

    struct Window {
        WindowRole role;
        PixelRect rect;
        bool visible = false;
        std::string text;
        IWindowHandler* handler = nullptr;
        WindowLogic logic;
        std::vector<PixelRect> shape;
    };

    WindowHandle CreateWindow(WindowRole role, WindowHandle, const PixelRect& rect, IWindowHandler* h) override {
        log->Record("site.CreateWindow", Args(role));
        const WindowHandle handle = next_++;
        windows[handle] = Window{role, rect, false, {}, h, {}, {}};
        return handle;
    }
    void DestroyWindow(WindowHandle w) override {
        log->Record("site.DestroyWindow", Args(Role(w)));
        windows.erase(w);
    }
    void ShowWindow(WindowHandle w, bool show) override {
        if (!windows.count(w)) return;
        log->Record("site.ShowWindow", Args(Role(w), show));
        windows[w].visible = show;
    }
    bool IsWindowVisible(WindowHandle w) const override {
        const auto it = windows.find(w);
        return it != windows.end() && it->second.visible;
    }
    void MoveWindow(WindowHandle w, const PixelRect& rect) override {
        if (windows.count(w)) windows[w].rect = rect;
    }
    PixelRect GetWindowRect(WindowHandle w) const override {
        const auto it = windows.find(w);
        return it == windows.end() ? PixelRect{} : it->second.rect;
    }
    void SetWindowText(WindowHandle w, const std::string& text) override {
        if (windows.count(w)) windows[w].text = text;
    }
    std::string GetWindowText(WindowHandle w) const override {
        const auto it = windows.find(w);
        return it == windows.end() ? std::string() : it->second.text;
    }
    void Invalidate(WindowHandle w, const PixelRect*, bool erase) override {
        log->Record("site.Invalidate", Args(Role(w), erase));
    }
    int32_t MessageBox(const std::string& text, const std::string&, MessageButtons) override {
        log->Record("site.MessageBox", text);
        messages.push_back(text);
        if (answers.empty()) return kAnswerOk;
        const int32_t answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    }
    std::optional<std::string> ChooseFile(const FileDialogRequest& request) override {
        fileRequests.push_back(request);
        if (files.empty()) return std::nullopt;
        const std::string path = files.front();
        files.erase(files.begin());
        return path;
    }
    int32_t RunDialog(IDialogLogic& dialog) override {
        dialogs.emplace_back(dialog.DialogName());
        return kAnswerCancel;
    }
    std::optional<EngineEntry> ChooseEngine(const std::vector<EngineEntry>& engines) override {
        log->Record("site.ChooseEngine", Args(engines.size()));
        offered = engines;
        if (choices.empty()) return std::nullopt;
        const EngineEntry choice = choices.front();
        choices.erase(choices.begin());
        return choice;
    }
    void SetTimer(WindowHandle w, uint32_t id, uint32_t milliseconds) override {
        log->Record("site.SetTimer", Args(Role(w), id, milliseconds));
        timers[{w, id}] = milliseconds;
    }
    void KillTimer(WindowHandle w, uint32_t id) override {
        log->Record("site.KillTimer", Args(Role(w), id));
        timers.erase({w, id});
    }
    void SetCursorShape(WindowHandle, CursorShape) override {}
    void ShowCursor(bool) override {}
    uint32_t CreateBitmap(const ImageBuffer& image) override {
        log->Record("site.CreateBitmap", Args(image.width, image.height));
        return ++bitmapCount_;
    }
    bool ReadBitmap(uint32_t, std::vector<uint32_t>*, int32_t*, int32_t*) const override { return false; }
    void DeleteBitmap(uint32_t) override {}
    void BindWindowLogic(WindowHandle w, WindowLogic logic) override {
        if (windows.count(w)) windows[w].logic = logic;
    }
    void SetWindowShape(WindowHandle w, const std::vector<PixelRect>* runs) override {
        if (windows.count(w)) windows[w].shape = runs ? *runs : std::vector<PixelRect>{};
    }
    void AnimateWindow(WindowHandle w, uint32_t flags, uint32_t milliseconds) override {
        log->Record("site.AnimateWindow", Args(Role(w), flags, milliseconds));
        animations.push_back(flags);
        if (windows.count(w)) windows[w].visible = (flags & anim::kHide) == 0;
    }
    // The cursor as a test placed it, in the client pixels of every window.
    PixelPoint CursorPosition(WindowHandle) const override { return cursor; }
    int32_t TrackPopupMenu(WindowHandle w, const MenuModel& menu, PixelPoint) override {
        log->Record("site.TrackPopupMenu", Args(Role(w), menu.size()));
        menus.push_back(menu);
        return menuAnswer ? menuAnswer(menu) : 0;
    }
    // Fixed metrics: a tenth of the height per unit, so that tests compute
    // layouts by hand.
    FontMetrics GetFontMetrics(const LogicalFont& font) const override {
        const int32_t h = font.height < 0 ? -font.height : font.height;
        return FontMetrics{h, h - h / 5, h / 5, 1, h / 2, h};
    }
    bool MouseInputPending() const override { return mouseInputPending; }

    // The window of a role, 0 when there is none.
    WindowHandle Find(WindowRole role) const {
        for (const auto& [handle, w] : windows)
            if (w.role == role) return handle;
        return 0;
    }
    bool Visible(WindowRole role) const { return IsWindowVisible(Find(role)); }
    WindowRole Role(WindowHandle w) const {
        const auto it = windows.find(w);
        return it == windows.end() ? WindowRole::Control : it->second.role;
    }

    std::shared_ptr<CallLog> log;
    std::map<WindowHandle, Window> windows;
    std::vector<std::string> messages;
    std::vector<int32_t> answers;                 // what MessageBox answers, in turn; then kAnswerOk
    std::vector<std::string> files;               // what ChooseFile answers, in turn; then cancelled
    std::vector<FileDialogRequest> fileRequests;  // the file dialogs asked for
    std::vector<std::string> dialogs;             // the names of the dialogs run
    std::vector<EngineEntry> choices;  // what ChooseEngine answers, in turn
    std::vector<EngineEntry> offered;  // what it was last offered
    std::map<std::pair<WindowHandle, uint32_t>, uint32_t> timers;  // running: period
    std::vector<uint32_t> animations;                               // AnimateWindow flags, in turn
    std::vector<MenuModel> menus;                                   // menus tracked, in turn
    std::function<int32_t(const MenuModel&)> menuAnswer;            // null: every menu is dismissed
    PixelPoint cursor;
    bool mouseInputPending = false;

private:
    WindowHandle next_ = 1;
    uint32_t bitmapCount_ = 0;
};

}  // namespace vexplot::test
