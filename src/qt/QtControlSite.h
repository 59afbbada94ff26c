#pragma once
#include <QPointer>
#include <QWidget>
#include <map>
#include <memory>

#include "site/IControlSite.h"

class QPrinter;
class QTimer;

namespace vexplot {

class WindowAnimator;

// The control's site on Qt widgets. The control window is a child of the
// host widget; every other window is a child of the window named as its
// parent, except the info window's tool-window variant, which is a window
// of its own owned by the control's top-level window.
//
// View windows paint the engine's pixels at the screen's device pixel
// ratio; the title is a label, the status bar a label with a sunken frame;
// the title-bar buttons, the navigator, the info window and the legend are
// the widgets of their logic objects (bound through BindWindowLogic).
class QtControlSite final : public IControlSite {
public:
    // `host` is borrowed and must outlive the site.
    explicit QtControlSite(QWidget* host);
    ~QtControlSite() override;
    QtControlSite(const QtControlSite&) = delete;
    QtControlSite& operator=(const QtControlSite&) = delete;

    // The widget of a window; null for unknown handles.
    QWidget* Widget(WindowHandle window) const;
    // The first window of `role`, 0 when there is none.
    WindowHandle Find(WindowRole role) const;

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
    // Dialogs come from QtDialogRegistry::BuiltIn(), over the host's window.
    int32_t RunDialog(IDialogLogic& dialog) override;
    bool OpenModelessDialog(IDialogLogic& dialog) override;
    std::optional<std::string> ChooseFile(const FileDialogRequest& request) override;
    void CloseModelessDialog(IDialogLogic& dialog) override;
    void SetTimer(WindowHandle window, uint32_t timerId, uint32_t milliseconds) override;
    void KillTimer(WindowHandle window, uint32_t timerId) override;
    void SetCursorShape(WindowHandle window, CursorShape shape) override;
    void ShowCursor(bool show) override;
    uint32_t CreateBitmap(const ImageBuffer& pixels) override;
    bool ReadBitmap(uint32_t bitmap, std::vector<uint32_t>* pixels, int32_t* width, int32_t* height) const override;
    void DeleteBitmap(uint32_t bitmap) override;
    void BindWindowLogic(WindowHandle window, WindowLogic logic) override;
    void SetWindowShape(WindowHandle window, const std::vector<PixelRect>* runs) override;
    void AnimateWindow(WindowHandle window, uint32_t flags, uint32_t milliseconds) override;
    PixelPoint CursorPosition(WindowHandle window) const override;
    int32_t TrackPopupMenu(WindowHandle window, const MenuModel& menu, PixelPoint at) override;
    FontMetrics GetFontMetrics(const LogicalFont& font) const override;
    // Qt hands mouse moves over compressed, one per pass of the event loop,
    // and offers no look into its queue, so this cannot answer truly. The
    // transparent info window bounds its shape rebuilds by itself instead:
    // it coalesces them on a zero-delay timer (one per pass of the loop).
    bool MouseInputPending() const override { return false; }
    // Clipboard and printer (QtSitePrinting.cpp).
    bool CopyToClipboard(const ImageBuffer& image, const std::string& svg, std::string* error) override;
    void SetUpPrinter() override;
    bool PrintScene(const SceneBuilder& draw, bool askUser, std::string* error) override;
    void ShowToolTip(WindowHandle window, PixelPoint at, const std::string& text) override;

private:
    struct Window {
        WindowRole role = WindowRole::Control;
        QPointer<QWidget> widget;
        IWindowHandler* handler = nullptr;
        bool visible = false;  // as the control set it; an animation may still be drawing
    };

    // The open modeless dialogs by their logic.
    std::map<const IDialogLogic*, QPointer<QWidget>> modeless_;

    Window* Find(WindowHandle window);
    const Window* Find(WindowHandle window) const;
    QWidget* MakeWidget(WindowRole role, QWidget* parent, IWindowHandler* handler, WindowHandle handle);
    void ShowPrompt(const std::string& prompt);
    void InstallAccelerators(QWidget* scope, Qt::ShortcutContext context);

    QPointer<QWidget> host_;
    std::map<WindowHandle, Window> windows_;
    std::map<std::pair<WindowHandle, uint32_t>, QTimer*> timers_;
    std::map<uint32_t, QImage> bitmaps_;
    std::unique_ptr<WindowAnimator> animator_;
    WindowHandle nextWindow_ = 1;
    uint32_t nextBitmap_ = 1;
    int hiddenCursor_ = 0;
    // The printer and page the user chose, kept for the next print; made
    // on first use. (Shared: the type is only complete where it is used.)
    std::shared_ptr<QPrinter> printer_;
    QPrinter& Printer();
};

}  // namespace vexplot
