#pragma once
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "control/IControlSite.h"
#include "model/CallLog.h"

namespace vexplot::test {

// The control's site as a test sees it: keeps each window's state (role,
// visibility, rectangle, text), records the calls a test checks the order
// of in the shared log as "site.X(args)", and answers the engine-choice
// dialog from `choices`, one entry per call (none left: cancelled).
class RecordingSite final : public IControlSite {
public:
    explicit RecordingSite(std::shared_ptr<CallLog> callLog) : log(std::move(callLog)) {}

    struct Window {
        WindowRole role;
        PixelRect rect;
        bool visible = false;
        std::string text;
        IWindowHandler* handler = nullptr;
    };

    WindowHandle CreateWindow(WindowRole role, WindowHandle, const PixelRect& rect, IWindowHandler* h) override {
        log->Record("site.CreateWindow", Args(role));
        const WindowHandle handle = next_++;
        windows[handle] = Window{role, rect, false, {}, h};
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
        return kAnswerOk;
    }
    std::optional<EngineEntry> ChooseEngine(const std::vector<EngineEntry>& engines) override {
        log->Record("site.ChooseEngine", Args(engines.size()));
        offered = engines;
        if (choices.empty()) return std::nullopt;
        const EngineEntry choice = choices.front();
        choices.erase(choices.begin());
        return choice;
    }
    void SetTimer(WindowHandle, uint32_t, uint32_t) override {}
    void KillTimer(WindowHandle, uint32_t) override {}
    void SetCursorShape(WindowHandle, CursorShape) override {}
    void ShowCursor(bool) override {}
    uint32_t CreateBitmap(const ImageBuffer& image) override {
        log->Record("site.CreateBitmap", Args(image.width, image.height));
        bitmaps.push_back(image);
        return static_cast<uint32_t>(bitmaps.size());
    }
    bool ReadBitmap(uint32_t, std::vector<uint32_t>*, int32_t*, int32_t*) const override { return false; }
    void DeleteBitmap(uint32_t) override {}

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
    std::vector<EngineEntry> choices;  // what ChooseEngine answers, in turn
    std::vector<EngineEntry> offered;  // what it was last offered
    std::vector<ImageBuffer> bitmaps;  // sizes only: the pixels are not kept

private:
    WindowHandle next_ = 1;
};

}  // namespace vexplot::test
