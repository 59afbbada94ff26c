#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "site/IDialogLogic.h"
#include "site/MenuModel.h"
#include "site/WindowInput.h"
#include "engine/ExportScene.h"
#include "engine/IGraphEngine.h"
#include "engine/WindowHandle.h"
#include "model/LogicalFont.h"

namespace vexplot {

class CToolsCtrl;
class CUIW_InfoWnd;
class CUIW_LegendWindow;
class NavigatorPad;

// The logic object behind an auxiliary window. The site's window for that
// role draws itself from it and passes the user's input to it; a site that
// draws nothing (headless) only keeps the windows' state.
using WindowLogic = std::variant<std::monostate, CUIW_InfoWnd*, CUIW_LegendWindow*, CToolsCtrl*, NavigatorPad*>;

// Metrics of a font as the site draws it, in pixels.
struct FontMetrics {
    int32_t height = 0;  // ascent + descent
    int32_t ascent = 0;
    int32_t descent = 0;
    int32_t externalLeading = 0;  // extra space the font asks for between lines
    int32_t averageCharWidth = 0;
    int32_t maxCharWidth = 0;
};

// What a window of the control is for. The site may give each role its own
// look (a button, a static text, a tool window); the control only relies on
// the state operations below.
enum class WindowRole : int32_t {
    Control = 0,       // the control's own window, parent of all others
    View2D = 1,        // target of the engine's 2-D device
    View3D = 2,        // target of the engine's 3-D view
    Title = 3,         // the static "TITLE" text of the title bar
    MenuButton = 4,    // "M" on the title bar
    LegendButton = 5,  // "L" on the title bar
    StatusBar = 6,     // the one-line "Info bar" under the view
    InfoWindow = 7,
    LegendWindow = 8,
    Navigator = 9,     // the camera pad over the 3-D view
    InfoPopup = 10,    // the info window as a tool window of its own, owned by the control
    ToolsButton = 11,  // the title bar's button with the menu of tool icons
};

// Buttons of a message box and the answers it gives (the platform's codes,
// which IViewHost::ShowMessage passes through unchanged).
enum class MessageButtons : uint32_t { Ok = 0, OkCancel = 1, YesNo = 4 };
inline constexpr int32_t kAnswerOk = 1;
inline constexpr int32_t kAnswerCancel = 2;
inline constexpr int32_t kAnswerYes = 6;
inline constexpr int32_t kAnswerNo = 7;

// An open or save file dialog: what the control asks the site to show.
struct FileDialogRequest {
    bool save = false;          // a save dialog (asks before replacing a file) or an open one
    std::string title;          // the dialog's caption, "Load Vexplot"
    std::string filter;         // "Vexplot Data (*.vxg)": the one file type offered
    std::string extension;      // ".vxg": added to a typed name that has none
    std::string initialPath;    // the name proposed first; may be empty
};

// Cursor shapes over a window (the values of IViewHost::SetCursorShape).
enum class CursorShape : int32_t { Arrow = 0, Cross = 1, Hand = 2, SizeAll = 3, Zoom = 4, Wait = 5 };

// One installed engine as the "Engine" settings sub-key lists it.
struct EngineEntry {
    std::string name;       // "OpenGL"
    std::string clsidText;  // brace form; may be empty or malformed, the control copes
};

// Events a window passes back to its owner (the control, or the logic
// object of an auxiliary window). The site calls these on the
// user-interface thread; the handler outlives its windows (owners destroy
// their windows before they die). A handler takes the events it cares for.
class IWindowHandler {
public:
    // The window needs its pixels: `target` is the window's client area,
    // lent for the call (0x00BBGGRR, top row first). Only view windows are
    // painted by the control; the site draws the other roles itself.
    virtual void OnPaint(WindowHandle /*window*/, const ImageBuffer& /*target*/) {}
    // The window's client area changed to `width` x `height` pixels.
    virtual void OnSize(WindowHandle /*window*/, int32_t /*width*/, int32_t /*height*/) {}
    // A timer set with IControlSite::SetTimer on `window` is due.
    virtual void OnTimer(WindowHandle /*window*/, uint32_t /*timerId*/) {}
    // Mouse and keys in the window. The site delivers them to the view
    // windows' handler (the control); auxiliary windows pass their input to
    // their logic object directly.
    virtual void OnMouse(WindowHandle /*window*/, const MouseEvent& /*event*/) {}
    virtual void OnKey(WindowHandle /*window*/, const KeyEvent& /*event*/) {}
    // A command chosen by the user outside a menu the control tracked
    // itself: an accelerator the site matched, a menu the site opened.
    virtual void OnCommand(int32_t /*command*/) {}

protected:
    ~IWindowHandler() = default;
};

// The control's way to its windows and to the user: one small interface,
// implemented once per platform (Qt widgets for interactive use, the
// headless site for batch use, a recording double in tests). Texts are
// UTF-8; rectangles are in the parent's client pixels (the control window's
// in the host's). A site never calls back into the control from inside one
// of these calls except through the handler's OnPaint/OnSize/OnTimer, and
// only where noted.
class IControlSite {
public:
    virtual ~IControlSite() = default;

    // windows:
    // Creates a hidden window of `role` under `parent` (0 for the control
    // window itself, whose parent is the host) at `rect`. Returns 0 when the
    // window cannot be made. `handler` is borrowed.
    virtual WindowHandle CreateWindow(WindowRole role, WindowHandle parent, const PixelRect& rect,
                                      IWindowHandler* handler) = 0;
    // Destroys the window; unknown handles are ignored.
    virtual void DestroyWindow(WindowHandle window) = 0;
    virtual void ShowWindow(WindowHandle window, bool show) = 0;
    // False for unknown handles.
    virtual bool IsWindowVisible(WindowHandle window) const = 0;
    // Moves and sizes the window; the site reports a size change with OnSize.
    virtual void MoveWindow(WindowHandle window, const PixelRect& rect) = 0;
    // The window's rectangle in its parent (the control window: in the host).
    virtual PixelRect GetWindowRect(WindowHandle window) const = 0;
    virtual void SetWindowText(WindowHandle window, const std::string& text) = 0;
    virtual std::string GetWindowText(WindowHandle window) const = 0;
    // Asks for a repaint of `rect` (null: all of the window), erasing the
    // background first when `erase`. The paint comes later, through OnPaint.
    virtual void Invalidate(WindowHandle window, const PixelRect* rect, bool erase) = 0;

    // the user:
    // A modal message box; returns the answer (kAnswer...), the default
    // button's answer when nobody can be asked.
    virtual int32_t MessageBox(const std::string& text, const std::string& caption, MessageButtons buttons) = 0;
    // The engine-choice dialog over `engines`: the chosen entry, or nothing
    // when cancelled. It writes no settings; the control does.
    virtual std::optional<EngineEntry> ChooseEngine(const std::vector<EngineEntry>& engines) = 0;

    // dialogs (one call per dialog, whatever the dialog):
    // Runs `dialog` modally and returns kAnswerOk when the user accepted it
    // (the logic has then written its values) or kAnswerCancel. A site with
    // no window for the dialog's name answers kAnswerCancel and changes
    // nothing.
    virtual int32_t RunDialog(IDialogLogic& /*dialog*/) { return kAnswerCancel; }
    // Opens `dialog` without waiting (the data editor); the logic must
    // outlive its window, so its owner closes it with CloseModelessDialog
    // before it goes. False when the site has no window for it.
    virtual bool OpenModelessDialog(IDialogLogic& /*dialog*/) { return false; }
    virtual void CloseModelessDialog(IDialogLogic& /*dialog*/) {}
    // Runs an open or save file dialog: the chosen path, or nothing when the
    // user cancelled (or nobody can be asked).
    virtual std::optional<std::string> ChooseFile(const FileDialogRequest& /*request*/) { return std::nullopt; }

    // timers of a window: OnTimer every `milliseconds` until killed; a second
    // SetTimer with the same id restarts it.
    virtual void SetTimer(WindowHandle window, uint32_t timerId, uint32_t milliseconds) = 0;
    virtual void KillTimer(WindowHandle window, uint32_t timerId) = 0;

    // cursor:
    virtual void SetCursorShape(WindowHandle window, CursorShape shape) = 0;
    virtual void ShowCursor(bool show) = 0;

    // bitmaps: the pixels a host receives from RetrieveBitmap, as a 32-bit
    // handle it can pass back. 0 means none.
    virtual uint32_t CreateBitmap(const ImageBuffer& pixels) = 0;
    // Copies the bitmap's pixels (width x height, rows without padding);
    // false for an unknown handle.
    virtual bool ReadBitmap(uint32_t bitmap, std::vector<uint32_t>* pixels, int32_t* width,
                            int32_t* height) const = 0;
    virtual void DeleteBitmap(uint32_t bitmap) = 0;

    // clipboard and printer:
    // Puts `image` on the clipboard, with `svg` (when not empty) beside it
    // as "image/svg+xml" for programs that take drawings. False, with
    // `error` saying why, where there is no clipboard.
    virtual bool CopyToClipboard(const ImageBuffer& /*image*/, const std::string& /*svg*/, std::string* error) {
        if (error) *error = "There is no clipboard to copy to.";
        return false;
    }
    // Lets the user choose the printer and the page (the page set-up
    // dialog); the choice holds for later prints of this site.
    virtual void SetUpPrinter() {}
    // Draws the view on one page. `draw` builds the picture for a page of
    // width x height pixels at 96 dpi. With `askUser` the site shows the
    // print preview, from which the user prints (to a PDF file when no
    // printer is installed); without, it prints at once on the default
    // printer. False, with `error` set, when nothing was printed: no
    // printer, cancelled (error empty), or the printer failed.
    using SceneBuilder = std::function<bool(int32_t width, int32_t height, ExportScene& scene)>;
    virtual bool PrintScene(const SceneBuilder& /*draw*/, bool /*askUser*/, std::string* error) {
        if (error) *error = "There is no printer here.";
        return false;
    }

    // auxiliary windows:
    // Hands the site the logic object of a window it made (see WindowLogic).
    virtual void BindWindowLogic(WindowHandle window, WindowLogic logic) = 0;
    // Limits the visible part of the window to the union of `runs` (client
    // pixels); null gives the window back its whole rectangle.
    virtual void SetWindowShape(WindowHandle window, const std::vector<PixelRect>* runs) = 0;
    // Shows (anim::kActivate) or hides (anim::kHide) the window with the
    // animation the other anim:: flags describe, over `milliseconds`. The
    // window's visibility changes at once; only the picture takes the time.
    virtual void AnimateWindow(WindowHandle window, uint32_t flags, uint32_t milliseconds) = 0;
    // The mouse cursor in the client pixels of `window` (may lie outside it).
    virtual PixelPoint CursorPosition(WindowHandle window) const = 0;
    // Opens `menu` at `at` (client pixels of `window`) and waits for the
    // user: the chosen command, 0 when the menu was dismissed.
    virtual int32_t TrackPopupMenu(WindowHandle window, const MenuModel& menu, PixelPoint at) = 0;
    // What `font` measures as the site draws text.
    virtual FontMetrics GetFontMetrics(const LogicalFont& font) const = 0;
    // Whether mouse input is waiting to be handled: expensive updates that
    // the next mouse event will supersede can be dropped then.
    virtual bool MouseInputPending() const = 0;
    // Shows `text` as a tool tip at `at` (client pixels of `window`); an
    // empty text hides the tool tip.
    virtual void ShowToolTip(WindowHandle /*window*/, PixelPoint /*at*/, const std::string& /*text*/) {}
};

}  // namespace vexplot
