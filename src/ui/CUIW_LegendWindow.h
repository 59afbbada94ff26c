#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "site/IControlSite.h"
#include "model/RgbaRaster.h"
#include "ui/LegendAnimation.h"

namespace vexplot {

class CArchive;
class CGD_GraphObject;
class CGD_GraphObjectList;
class CGD_Palette;
class CRegistryKey;
class MessageSink;
class SettingsStore;

// The control as the legend window sees it. The control implements it; the
// legend borrows it for its whole life.
class ILegendOwner {
public:
    // The graph objects with their active entry; null while there are none.
    virtual CGD_GraphObjectList* LegendGraphObjects() = 0;
    // Makes the object at `index` of that list the active one.
    virtual void MakeGraphObjectActive(int32_t index) = 0;
    // Redraws the plot and refreshes the view (after a name or visibility change).
    virtual void RedrawPlot() = 0;
    // 1 in 3-D mode, 0 in 2-D mode.
    virtual int32_t LegendViewMode() = 0;
    // The text of the control's title window.
    virtual void SetTitleText(const std::string& text) = 0;
    // The palette the previews are painted with; null: no previews.
    virtual const CGD_Palette* PreviewPalette() = 0;
    // Whether the data editor / the property dialog can be opened for
    // `graph`; the context menu disables an entry that cannot.
    virtual bool CanEditData(const CGD_GraphObject* graph) = 0;
    virtual bool CanEditProperties(const CGD_GraphObject* graph) = 0;
    // Opens the data editor of `graph`.
    virtual void EditGraphData(CGD_GraphObject* graph) = 0;
    // Runs the property dialog of `graph`; true when the user confirmed it.
    virtual bool EditGraphProperties(CGD_GraphObject* graph) = 0;
    // Removes `graph` from the list and destroys it. The legend has already
    // dropped its row; the owner may rebuild the legend from its list.
    virtual void DeleteGraphObject(CGD_GraphObject* graph) = 0;

protected:
    ~ILegendOwner() = default;
};

// The legend window: one row per graph object with a 32 x 32 preview, the
// object's name and a check box for its visibility. From it the user makes
// an object active, shows or hides it, opens its data editor or properties,
// or deletes it.
//
// It either stays where the user put it (pinned), or auto-hides: it then
// pops up at a point the control gives (under its legend button) with an
// animation, and a timer (id 1, every second) hides it again once the mouse
// has left it. The window is driven only through the site; the site's
// widget draws itself from Rows() and passes the user's input to the On...
// methods.
//
// Settings ("Legend" group): "Width" and "Height" are written whenever the
// placement is saved, "Top", "Left" and "Visible" only while auto hide is
// off. The placement is saved whenever the window is shown, hidden, moved
// or sized, and read whenever it is shown pinned.
class CUIW_LegendWindow final : public IWindowHandler {
public:
    static constexpr uint32_t kHideTimerId = 1;
    static constexpr uint32_t kHideTimerMs = 1000;
    static constexpr int32_t kDefaultImage = 0;
    static constexpr int32_t kColumnWidth = 120;
    // The smallest legend: the caption and two rows of the list. The sizing
    // frame stops there, and a remembered size below it (the first run's
    // settings hold 50 x 50) is shown at it.
    static constexpr int32_t kMinWidth = 140;
    static constexpr int32_t kMinHeight = 90;

    // Commands of the row menu.
    enum Command : int32_t {
        kCmdActivate = 1,
        kCmdVisible = 2,
        kCmdData = 3,
        kCmdProperties = 4,
        kCmdDelete = 5,
    };

    struct Row {
        CGD_GraphObject* graph = nullptr;  // borrowed; owned by the control's list
        std::string name;
        int32_t image = kDefaultImage;  // index into Images()
        bool checked = true;            // mirrors the object's visible flag
    };

    // Settings go through `store` (null: the default store); `sink` receives
    // the store's failure messages (null: stderr).
    explicit CUIW_LegendWindow(MessageSink* sink = nullptr, std::shared_ptr<SettingsStore> store = nullptr);
    ~CUIW_LegendWindow();
    CUIW_LegendWindow(const CUIW_LegendWindow&) = delete;
    CUIW_LegendWindow& operator=(const CUIW_LegendWindow&) = delete;

    // window:
    // Creates the hidden window under `parent` at `rect`, captioned "Legend",
    // and builds the rows from the owner's list. False when the site could
    // not make the window. Both `site` and `owner` are borrowed.
    bool Create(IControlSite& site, WindowHandle parent, const PixelRect& rect, ILegendOwner& owner);
    void Destroy();
    WindowHandle Window() const { return window_; }

    // rows:
    // Appends a row for `graph` with its preview and makes it active.
    void AddObject(CGD_GraphObject* graph);
    // Rows anew from the owner's list, in list order; the active object's
    // row is selected. Images are made again.
    void Rebuild();
    // Re-reads the object's name, sets the title text and redraws the plot.
    void RefreshRow(int32_t row);
    // Renders the row's preview again: it replaces the row's own image, or
    // is appended to the images for a row still showing the default image.
    // Returns the row's image index (-1 for no such row). A preview that
    // cannot be made leaves the row's image as it was.
    int32_t UpdateImage(int32_t row);
    // Selects the row (-1: the selection mark, or row 0 when there is none)
    // and makes its object the active one, then refreshes the row. A row
    // whose object is no longer in the owner's list changes nothing.
    void Activate(int32_t row);
    void DeleteSelected();
    // Flips the row's check mark: the object is shown or hidden.
    void ToggleVisible(int32_t row);
    void EditData(int32_t row);
    // Refreshes the row when the user confirmed the dialog.
    void EditProperties(int32_t row);

    // showing and hiding:
    // Turning auto hide on with `apply` hides the window at once; turning it
    // off stops the hide timer and, with `apply`, shows the window at once
    // at its remembered placement. No change, no effect.
    void SetAutoHide(bool on, bool apply);
    void SetFastHide(bool on) { fastHide_ = on; }
    void SetAnimationMode(int32_t mode) { mode_ = mode; }
    // Shows the window at (x, y) of the parent's client area (it opens to the
    // left of the point when it would pass the parent's right edge): from
    // hidden with auto hide on, animated (unless fast hide) and with the hide
    // timer running; otherwise at once.
    void PopUpAt(int32_t x, int32_t y);
    // Shows or hides the window where it is, at once. An auto-hiding window
    // is never left shown without its hide timer: showing starts it.
    void ToggleShown();
    void SetShown(bool show);
    bool Shown() const { return shown_; }

    // settings and saved state:
    // Writes the placement into the open "Legend" key.
    void SaveSettings(CRegistryKey& legendKey);
    // The remembered placement from the open "Legend" key; a missing value
    // keeps the window's current one.
    PixelRect LoadPlacement(CRegistryKey& legendKey);
    // The window block of the control's saved state: "LegendWnd", then shown,
    // auto hide, fast hide, animation mode, width, height, left, top (int32).
    // Loading discards the animation mode, takes left/top as the pop-up
    // point, and unless auto hide is on restores the placement shown or
    // hidden. Does nothing while the window does not exist. ArchiveError
    // propagates.
    void Serialize(CArchive& archive);

    // user input (the site's widget calls these):
    // The row's check box was set or cleared.
    void OnRowChecked(int32_t row, bool checked);
    // The row became selected and focused.
    void OnRowSelected(int32_t row);
    void OnRowDoubleClicked(int32_t row);
    // The right button on `row` at `at` (client pixels): the row menu.
    void OnRowContextMenu(int32_t row, PixelPoint at);
    void OnKey(WindowHandle window, const KeyEvent& event) override;
    void OnTimer(WindowHandle window, uint32_t timerId) override;
    void OnSize(WindowHandle window, int32_t width, int32_t height) override;
    // The user moved or sized the window to `rect` (parent's client pixels).
    void OnMovedByUser(const PixelRect& rect);

    // state for the widget and for tests:
    const std::vector<Row>& Rows() const { return rows_; }
    const std::vector<RgbaRaster>& Images() const { return images_; }
    int32_t Selection() const { return selection_; }
    int32_t AnimationMode() const { return mode_; }
    bool AutoHide() const { return autoHide_; }
    bool FastHide() const { return fastHide_; }
    PixelPoint PopUpPoint() const { return popUp_; }
    // The row menu for `row` (entries disabled where the owner cannot help).
    MenuModel RowMenu(int32_t row) const;
    // "<name> - 3Dview" / "<name> - 2Dview" by the view mode; "TITLE" for an
    // empty name.
    static std::string TitleText(std::string_view name, int32_t viewMode);
    // The animation choice, so that tests can make mode 7 predictable.
    LegendAnimation& Animation() { return animation_; }
    // Called after every change of the rows, their images or the selection.
    void SetChangedHook(std::function<void()> hook) { changed_ = std::move(hook); }
    uint64_t Revision() const { return revision_; }

private:
    bool ValidRow(int32_t row) const { return row >= 0 && row < static_cast<int32_t>(rows_.size()); }
    bool ValidImage(int32_t image) const { return image >= 0 && image < static_cast<int32_t>(images_.size()); }
    int32_t IndexInList(const CGD_GraphObject* graph) const;
    // The object's name; `fallback` when the data object cannot tell it.
    static std::string NameOf(const CGD_GraphObject* graph, const std::string& fallback);
    void ShowOrHide(bool show, bool immediate);
    int32_t TargetX() const;
    void ShowPinned();
    void RecordShown(bool shown);
    void StartHideTimer();
    void StopHideTimer();
    PixelRect WindowRect() const;
    void SaveSettings();
    PixelRect LoadPlacement();
    void DispatchMenuCommand(int32_t command, int32_t row);
    void Changed();

    IControlSite* site_ = nullptr;
    ILegendOwner* owner_ = nullptr;
    WindowHandle window_ = 0;
    WindowHandle parent_ = 0;
    MessageSink* sink_;
    std::shared_ptr<SettingsStore> store_;

    std::vector<Row> rows_;
    std::vector<RgbaRaster> images_;
    int32_t selection_ = -1;  // the selected row, which is also the selection mark

    bool shown_ = false;
    bool autoHide_ = true;
    bool fastHide_ = false;
    int32_t mode_ = 2;
    PixelPoint popUp_;
    int32_t width_ = 0;
    int32_t height_ = 0;
    LegendAnimation animation_;

    std::function<void()> changed_;
    uint64_t revision_ = 0;
};

}  // namespace vexplot
