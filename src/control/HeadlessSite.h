#pragma once
#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "control/DisplayChangeHook.h"
#include "site/IControlSite.h"

namespace vexplot {

// The site of batch use (the command-line renderer, scripts, servers): no
// display at all. View windows are off-screen pixel buffers of their own
// size that the control paints into when Flush() delivers their pending
// paints; the other windows only keep their state (visibility, rectangle,
// text). Message boxes are printed to `log` as "caption: text" and answered
// with their default button. The engine-choice dialog takes the first
// listed engine it has not offered before (so a batch run that keeps
// failing cannot loop for ever) and cancels when none is left. Timers are
// kept and fire only through AdvanceTime(). Bitmaps live in a table until
// deleted.
class HeadlessSite final : public IControlSite {
public:
    // `log` is borrowed; stderr by default.
    explicit HeadlessSite(std::FILE* log = stderr) : log_(log) {}

    // IControlSite:
    WindowHandle CreateWindow(WindowRole role, WindowHandle parent, const PixelRect& rect,
                              IWindowHandler* handler) override;
    void DestroyWindow(WindowHandle window) override;
    void ShowWindow(WindowHandle window, bool show) override;
    bool IsWindowVisible(WindowHandle window) const override;
    void MoveWindow(WindowHandle window, const PixelRect& rect) override;
    PixelRect GetWindowRect(WindowHandle window) const override;
    void SetWindowText(WindowHandle window, const std::string& text) override;
    std::string GetWindowText(WindowHandle window) const override;
    void Invalidate(WindowHandle window, const PixelRect* rect, bool erase) override;
    int32_t MessageBox(const std::string& text, const std::string& caption, MessageButtons buttons) override;
    std::optional<EngineEntry> ChooseEngine(const std::vector<EngineEntry>& engines) override;
    // A dialog with a script (AnswerDialog) is played by it; any other is
    // printed to the log and cancelled.
    int32_t RunDialog(IDialogLogic& dialog) override;
    bool OpenModelessDialog(IDialogLogic& dialog) override;
    // Answered by the script of AnswerFileDialog; without one, printed to
    // the log and cancelled.
    std::optional<std::string> ChooseFile(const FileDialogRequest& request) override;
    void CloseModelessDialog(IDialogLogic& dialog) override;
    void SetTimer(WindowHandle window, uint32_t timerId, uint32_t milliseconds) override;
    void KillTimer(WindowHandle window, uint32_t timerId) override;
    void SetCursorShape(WindowHandle, CursorShape shape) override { cursorShape_ = shape; }
    void ShowCursor(bool show) override { cursorShown_ = show; }
    uint32_t CreateBitmap(const ImageBuffer& pixels) override;
    bool ReadBitmap(uint32_t bitmap, std::vector<uint32_t>* pixels, int32_t* width, int32_t* height) const override;
    void DeleteBitmap(uint32_t bitmap) override;
    // No display: neither a clipboard nor a printer; each says so.
    bool CopyToClipboard(const ImageBuffer&, const std::string&, std::string* error) override;
    bool PrintScene(const SceneBuilder&, bool, std::string* error) override;
    void BindWindowLogic(WindowHandle, WindowLogic) override {}
    void SetWindowShape(WindowHandle window, const std::vector<PixelRect>* runs) override;
    void AnimateWindow(WindowHandle window, uint32_t flags, uint32_t milliseconds) override;
    PixelPoint CursorPosition(WindowHandle window) const override;
    // Nobody can choose: the menu is dismissed.
    int32_t TrackPopupMenu(WindowHandle, const MenuModel&, PixelPoint) override { return 0; }
    // Metrics of the Liberation faces, scaled from the font's height, so
    // that layouts come out as they do on screen.
    FontMetrics GetFontMetrics(const LogicalFont& font) const override;
    bool MouseInputPending() const override { return false; }
    // Keeps the tool tip's text for ToolTip().
    void ShowToolTip(WindowHandle, PixelPoint, const std::string& text) override { toolTip_ = text; }

    // batch driving:
    // Delivers the pending paints of visible view windows (OnPaint into
    // their buffers). Returns how many windows were painted.
    int Flush();
    // Lets `milliseconds` pass: every timer due in that time fires once per
    // period elapsed, in the order of their due times.
    void AdvanceTime(uint32_t milliseconds);
    // Plays the user of every later run of the dialog named `name`: the
    // script gets the dialog's logic, works its fields as a user would and
    // returns the answer (kAnswerOk or kAnswerCancel). An empty script
    // removes the answer. A modeless dialog's script runs when it opens.
    using DialogScript = std::function<int32_t(IDialogLogic&)>;
    void AnswerDialog(std::string name, DialogScript script);
    // Plays the user of every later file dialog: the script sees the request
    // and returns the chosen path, or nothing to cancel. An empty script
    // removes the answer.
    using FileDialogScript = std::function<std::optional<std::string>(const FileDialogRequest&)>;
    void AnswerFileDialog(FileDialogScript script) { fileDialogScript_ = std::move(script); }
    // Tells every live control that the display now has `mode`, as the
    // platform does when a screen's colour depth or size changes.
    static void SimulateDisplayChange(const ScreenMode& mode);
    // The names of the dialogs run or opened so far, in order.
    const std::vector<std::string>& DialogsRun() const { return dialogsRun_; }
    // Puts the mouse cursor at `point` in the control window's client pixels.
    void SetCursorPosition(PixelPoint point) { cursor_ = point; }

    // inspection:
    // The window's pixel buffer (view windows only; empty otherwise).
    const std::vector<uint32_t>& Pixels(WindowHandle window) const;
    WindowRole Role(WindowHandle window) const;
    size_t WindowCount() const { return windows_.size(); }
    size_t BitmapCount() const { return bitmaps_.size(); }
    // The runs of the window's shape; empty when it has its whole rectangle.
    const std::vector<PixelRect>& Shape(WindowHandle window) const;
    bool CursorShown() const { return cursorShown_; }
    // The last cursor shape set on any window, and the tool tip shown now.
    CursorShape LastCursorShape() const { return cursorShape_; }
    const std::string& ToolTip() const { return toolTip_; }

private:
    struct Window {
        WindowRole role = WindowRole::Control;
        WindowHandle parent = 0;
        PixelRect rect{};
        bool visible = false;
        bool paintPending = false;
        std::string text;
        IWindowHandler* handler = nullptr;
        std::vector<uint32_t> pixels;  // view windows: width x height
        std::vector<PixelRect> shape;
    };
    struct Timer {
        uint32_t period = 0;
        uint64_t due = 0;
    };
    struct Bitmap {
        int32_t width = 0;
        int32_t height = 0;
        std::vector<uint32_t> pixels;
    };

    Window* Find(WindowHandle window);
    const Window* Find(WindowHandle window) const;
    static bool IsView(WindowRole role) { return role == WindowRole::View2D || role == WindowRole::View3D; }
    static void SizeBuffer(Window& w);

    std::FILE* log_;
    WindowHandle nextWindow_ = 1;
    std::map<WindowHandle, Window> windows_;
    std::map<std::pair<WindowHandle, uint32_t>, Timer> timers_;
    uint64_t now_ = 0;
    uint32_t nextBitmap_ = 1;
    std::map<uint32_t, Bitmap> bitmaps_;
    std::set<std::string> offeredEngines_;
    std::map<std::string, DialogScript, std::less<>> dialogScripts_;
    std::vector<std::string> dialogsRun_;
    FileDialogScript fileDialogScript_;
    bool cursorShown_ = true;
    PixelPoint cursor_;
    CursorShape cursorShape_ = CursorShape::Arrow;
    std::string toolTip_;
};

}  // namespace vexplot
