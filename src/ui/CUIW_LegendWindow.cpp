#include "ui/CUIW_LegendWindow.h"

#include <algorithm>

#include "com/ComError.h"
#include "model/CArchive.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_GraphObjectList.h"
#include "model/CGD_Palette.h"
#include "settings/CRegistryKey.h"
#include "ui/LegendPreview.h"

namespace vexplot {

namespace {

constexpr const char* kSettingsGroup = "Legend";
constexpr const char* kArchiveTag = "LegendWnd";

int32_t Width(const PixelRect& r) { return r.right - r.left; }
int32_t Height(const PixelRect& r) { return r.bottom - r.top; }

// A stored integer, or `fallback` when the store has none (-1).
int32_t ReadOr(CRegistryKey& key, const char* name, int32_t fallback) {
    const int32_t value = key.ReadInt(name);
    return value == -1 ? fallback : value;
}

MenuItem Entry(const char* text, int32_t command, const char* prompt) {
    MenuItem item;
    item.text = text;
    item.command = command;
    item.prompt = prompt;
    return item;
}

}  // namespace

CUIW_LegendWindow::CUIW_LegendWindow(MessageSink* sink, std::shared_ptr<SettingsStore> store)
    : sink_(sink), store_(std::move(store)) {
    images_.push_back(LegendPreview::DefaultImage());
}

// The site keeps a pointer to this handler for as long as the window lives.
CUIW_LegendWindow::~CUIW_LegendWindow() { Destroy(); }

// -- window --

bool CUIW_LegendWindow::Create(IControlSite& site, WindowHandle parent, const PixelRect& rect, ILegendOwner& owner) {
    Destroy();
    site_ = &site;
    owner_ = &owner;
    parent_ = parent;
    window_ = site.CreateWindow(WindowRole::LegendWindow, parent, rect, this);
    if (window_ == 0) return false;
    site.BindWindowLogic(window_, this);
    width_ = Width(rect);
    height_ = Height(rect);
    shown_ = false;
    site.SetWindowText(window_, "Legend");
    Rebuild();
    return true;
}

void CUIW_LegendWindow::Destroy() {
    if (site_ == nullptr || window_ == 0) return;
    StopHideTimer();
    site_->DestroyWindow(window_);
    window_ = 0;
    shown_ = false;
}

// -- rows --

void CUIW_LegendWindow::AddObject(CGD_GraphObject* graph) {
    if (graph == nullptr) return;
    rows_.push_back(Row{graph, NameOf(graph, {}), kDefaultImage, graph->Flags().visible});
    const auto row = static_cast<int32_t>(rows_.size()) - 1;
    UpdateImage(row);
    Activate(row);
}

void CUIW_LegendWindow::Rebuild() {
    rows_.clear();
    images_.resize(1);  // the default image stays
    selection_ = -1;
    CGD_GraphObjectList* list = owner_ ? owner_->LegendGraphObjects() : nullptr;
    if (list != nullptr) {
        for (int32_t i = 0; i < list->Count(); ++i) {
            CGD_GraphObject* graph = list->At(i);
            rows_.push_back(Row{graph, NameOf(graph, {}), kDefaultImage, graph->Flags().visible});
            UpdateImage(i);
        }
        if (ValidRow(list->ActiveIndex())) {
            selection_ = list->ActiveIndex();
            owner_->SetTitleText(TitleText(rows_[static_cast<size_t>(selection_)].name, owner_->LegendViewMode()));
        }
    }
    Changed();
}

void CUIW_LegendWindow::RefreshRow(int32_t row) {
    if (!ValidRow(row) || owner_ == nullptr) return;
    Row& r = rows_[static_cast<size_t>(row)];
    r.name = NameOf(r.graph, r.name);
    owner_->SetTitleText(TitleText(r.name, owner_->LegendViewMode()));
    owner_->RedrawPlot();
    Changed();
}

int32_t CUIW_LegendWindow::UpdateImage(int32_t row) {
    if (!ValidRow(row)) return -1;
    Row& r = rows_[static_cast<size_t>(row)];
    const CGD_Palette* palette = owner_ ? owner_->PreviewPalette() : nullptr;
    if (palette == nullptr) return r.image;
    std::optional<RgbaRaster> picture = LegendPreview::Of(*r.graph, *palette);
    if (!picture) return r.image;
    if (r.image == kDefaultImage || !ValidImage(r.image)) {
        images_.push_back(std::move(*picture));
        r.image = static_cast<int32_t>(images_.size()) - 1;
    } else {
        images_[static_cast<size_t>(r.image)] = std::move(*picture);
    }
    Changed();
    return r.image;
}

void CUIW_LegendWindow::Activate(int32_t row) {
    if (row == -1) row = selection_ >= 0 ? selection_ : 0;
    if (!ValidRow(row) || owner_ == nullptr) return;
    selection_ = row;
    const int32_t index = IndexInList(rows_[static_cast<size_t>(row)].graph);
    if (index < 0) {
        Changed();
        return;
    }
    owner_->MakeGraphObjectActive(index);
    RefreshRow(row);
}

void CUIW_LegendWindow::DeleteSelected() {
    if (!ValidRow(selection_) || owner_ == nullptr) return;
    CGD_GraphObject* graph = rows_[static_cast<size_t>(selection_)].graph;
    rows_.erase(rows_.begin() + selection_);
    selection_ = -1;
    Changed();
    // Last: the owner may rebuild the legend while it deletes the object.
    owner_->DeleteGraphObject(graph);
}

void CUIW_LegendWindow::ToggleVisible(int32_t row) {
    if (ValidRow(row)) OnRowChecked(row, !rows_[static_cast<size_t>(row)].checked);
}

void CUIW_LegendWindow::EditData(int32_t row) {
    if (!ValidRow(row) || owner_ == nullptr) return;
    CGD_GraphObject* graph = rows_[static_cast<size_t>(row)].graph;
    if (owner_->CanEditData(graph)) owner_->EditGraphData(graph);
}

void CUIW_LegendWindow::EditProperties(int32_t row) {
    if (!ValidRow(row) || owner_ == nullptr) return;
    CGD_GraphObject* graph = rows_[static_cast<size_t>(row)].graph;
    if (owner_->CanEditProperties(graph) && owner_->EditGraphProperties(graph)) RefreshRow(row);
}

int32_t CUIW_LegendWindow::IndexInList(const CGD_GraphObject* graph) const {
    CGD_GraphObjectList* list = owner_ ? owner_->LegendGraphObjects() : nullptr;
    if (list == nullptr) return -1;
    for (int32_t i = 0; i < list->Count(); ++i)
        if (list->At(i) == graph) return i;
    return -1;
}

std::string CUIW_LegendWindow::NameOf(const CGD_GraphObject* graph, const std::string& fallback) {
    if (graph == nullptr || graph->Data() == nullptr) return fallback;
    try {
        return graph->Name();
    } catch (const ComError&) {
        return fallback;
    }
}

std::string CUIW_LegendWindow::TitleText(std::string_view name, int32_t viewMode) {
    if (name.empty()) return "TITLE";
    std::string text(name);
    text.append(viewMode == 1 ? " - 3Dview" : " - 2Dview");
    return text;
}

MenuModel CUIW_LegendWindow::RowMenu(int32_t row) const {
    const CGD_GraphObject* graph = ValidRow(row) ? rows_[static_cast<size_t>(row)].graph : nullptr;
    MenuModel menu;
    menu.push_back(Entry("&Activate", kCmdActivate, "Make selected object active"));
    menu.push_back(Entry("&Visible", kCmdVisible, "Make selected object visible"));
    menu.back().checked = graph != nullptr && rows_[static_cast<size_t>(row)].checked;
    menu.push_back(Entry("&Data", kCmdData, "Edit data for selected object"));
    menu.back().enabled = graph != nullptr && owner_ != nullptr && owner_->CanEditData(graph);
    menu.push_back(Entry("&Properties", kCmdProperties, "Edit selected object's properties"));
    menu.back().enabled = graph != nullptr && owner_ != nullptr && owner_->CanEditProperties(graph);
    menu.push_back(MenuItem::Separator());
    menu.push_back(Entry("De&lete", kCmdDelete, "Delete selected object from list"));
    return menu;
}

// -- showing and hiding --

void CUIW_LegendWindow::SetAutoHide(bool on, bool apply) {
    if (on == autoHide_) return;
    autoHide_ = on;
    if (on) {
        if (apply) ShowOrHide(false, true);
        return;
    }
    StopHideTimer();
    if (apply) ShowOrHide(true, true);
}

void CUIW_LegendWindow::PopUpAt(int32_t x, int32_t y) {
    popUp_ = PixelPoint{x, y};
    if (!shown_ && autoHide_) {
        ShowOrHide(true, fastHide_);
        StartHideTimer();
        return;
    }
    ShowOrHide(true, true);
}

void CUIW_LegendWindow::ToggleShown() { SetShown(!shown_); }

void CUIW_LegendWindow::SetShown(bool show) {
    if (site_ == nullptr || window_ == 0) return;
    if (!show) StopHideTimer();
    site_->ShowWindow(window_, show);
    RecordShown(show);
    if (show && autoHide_) StartHideTimer();
}

// The one show-and-hide routine: pinned shows go to the remembered
// placement; everything else to the pop-up point, at once or animated.
void CUIW_LegendWindow::ShowOrHide(bool show, bool immediate) {
    if (site_ == nullptr || window_ == 0) return;
    if (!autoHide_ && show) {
        ShowPinned();
        return;
    }
    const int32_t x = TargetX();
    const int32_t y = popUp_.y;
    const PixelRect target{x, y, x + width_, y + height_};
    if (immediate) {
        if (show) site_->MoveWindow(window_, target);
        site_->ShowWindow(window_, show);
    } else {
        // A show places the window while it is still hidden, so that the
        // animation starts where the window ends.
        if (show) site_->MoveWindow(window_, target);
        site_->AnimateWindow(window_, animation_.Flags(mode_, show), LegendAnimation::kDurationMs);
    }
    RecordShown(show);
}

// The pop-up x: the window opens to the left of the point when it would
// pass the right edge of the parent's client area.
int32_t CUIW_LegendWindow::TargetX() const {
    const int32_t parentWidth = Width(site_->GetWindowRect(parent_));
    return popUp_.x + width_ > parentWidth ? popUp_.x - width_ : popUp_.x;
}

void CUIW_LegendWindow::ShowPinned() {
    const PixelRect placement = LoadPlacement();
    site_->MoveWindow(window_, placement);
    width_ = Width(placement);
    height_ = Height(placement);
    site_->ShowWindow(window_, true);
    RecordShown(true);
}

void CUIW_LegendWindow::RecordShown(bool shown) {
    shown_ = shown;
    SaveSettings();
}

void CUIW_LegendWindow::StartHideTimer() {
    if (site_ != nullptr && window_ != 0) site_->SetTimer(window_, kHideTimerId, kHideTimerMs);
}

void CUIW_LegendWindow::StopHideTimer() {
    if (site_ != nullptr && window_ != 0) site_->KillTimer(window_, kHideTimerId);
}

PixelRect CUIW_LegendWindow::WindowRect() const {
    return site_ != nullptr && window_ != 0 ? site_->GetWindowRect(window_) : PixelRect{0, 0, width_, height_};
}

// -- settings and saved state --

void CUIW_LegendWindow::SaveSettings(CRegistryKey& legendKey) {
    const PixelRect rect = WindowRect();
    legendKey.WriteInt("Width", Width(rect));
    legendKey.WriteInt("Height", Height(rect));
    // An auto-hidden legend has no place of its own to remember.
    if (autoHide_) return;
    legendKey.WriteInt("Top", rect.top);
    legendKey.WriteInt("Left", rect.left);
    legendKey.WriteInt("Visible", shown_ ? 1 : 0);
}

PixelRect CUIW_LegendWindow::LoadPlacement(CRegistryKey& legendKey) {
    const PixelRect current = WindowRect();
    const int32_t left = ReadOr(legendKey, "Left", current.left);
    const int32_t top = ReadOr(legendKey, "Top", current.top);
    const int32_t width = std::max(ReadOr(legendKey, "Width", width_), kMinWidth);
    const int32_t height = std::max(ReadOr(legendKey, "Height", height_), kMinHeight);
    return PixelRect{left, top, left + width, top + height};
}

void CUIW_LegendWindow::SaveSettings() {
    CRegistryKey key(sink_, store_);
    if (key.Open(kSettingsGroup)) SaveSettings(key);
}

PixelRect CUIW_LegendWindow::LoadPlacement() {
    CRegistryKey key(sink_, store_);
    if (!key.Open(kSettingsGroup)) return WindowRect();
    return LoadPlacement(key);
}

void CUIW_LegendWindow::Serialize(CArchive& archive) {
    if (site_ == nullptr || window_ == 0) return;
    if (archive.IsStoring()) {
        const PixelRect rect = WindowRect();
        archive.WriteString(kArchiveTag);
        archive.WriteInt32(shown_ ? 1 : 0);
        archive.WriteInt32(autoHide_ ? 1 : 0);
        archive.WriteInt32(fastHide_ ? 1 : 0);
        archive.WriteInt32(mode_);
        archive.WriteInt32(Width(rect));
        archive.WriteInt32(Height(rect));
        archive.WriteInt32(rect.left);
        archive.WriteInt32(rect.top);
        return;
    }
    archive.ExpectString(kArchiveTag);
    const bool shown = archive.ReadInt32("legend shown flag") != 0;
    const bool autoHide = archive.ReadInt32("legend auto hide flag") != 0;
    const bool fastHide = archive.ReadInt32("legend fast hide flag") != 0;
    // Read and dropped: the animation mode stays what the control set.
    archive.ReadInt32("legend animation mode");
    const int32_t width = std::max(archive.ReadInt32("legend width"), 0);
    const int32_t height = std::max(archive.ReadInt32("legend height"), 0);
    const int32_t left = archive.ReadInt32("legend left");
    const int32_t top = archive.ReadInt32("legend top");

    autoHide_ = autoHide;
    fastHide_ = fastHide;
    width_ = width;
    height_ = height;
    popUp_ = PixelPoint{left, top};
    if (autoHide_) {
        // A legend that was left shown pinned must now find its way out.
        if (shown_) StartHideTimer();
        return;
    }
    StopHideTimer();
    site_->MoveWindow(window_, PixelRect{left, top, left + width, top + height});
    site_->ShowWindow(window_, shown);
    RecordShown(shown);
}

// -- user input --

void CUIW_LegendWindow::OnRowChecked(int32_t row, bool checked) {
    if (!ValidRow(row) || owner_ == nullptr) return;
    Row& r = rows_[static_cast<size_t>(row)];
    // The widget echoes the state it was given; that changes nothing.
    if (r.checked == checked && r.graph->Flags().visible == checked) return;
    r.checked = checked;
    r.graph->SetVisible(checked);
    owner_->RedrawPlot();
    Changed();
}

void CUIW_LegendWindow::OnRowSelected(int32_t row) {
    if (ValidRow(row) && row != selection_) Activate(row);
}

void CUIW_LegendWindow::OnRowDoubleClicked(int32_t row) { EditProperties(row); }

void CUIW_LegendWindow::OnRowContextMenu(int32_t row, PixelPoint at) {
    if (!ValidRow(row) || site_ == nullptr || window_ == 0) return;
    // The row under the button becomes the selected one, as a click makes it.
    if (row != selection_) Activate(row);
    StopHideTimer();
    const int32_t command = site_->TrackPopupMenu(window_, RowMenu(row), at);
    if (autoHide_) StartHideTimer();
    DispatchMenuCommand(command, row);
}

void CUIW_LegendWindow::DispatchMenuCommand(int32_t command, int32_t row) {
    switch (command) {
        case kCmdActivate: Activate(row); break;
        case kCmdVisible: ToggleVisible(row); break;
        case kCmdData: EditData(row); break;
        case kCmdProperties: EditProperties(row); break;
        case kCmdDelete: DeleteSelected(); break;
        default: break;  // dismissed
    }
}

void CUIW_LegendWindow::OnKey(WindowHandle, const KeyEvent& event) {
    if (event.key == vk::kDelete) DeleteSelected();
}

void CUIW_LegendWindow::OnTimer(WindowHandle, uint32_t timerId) {
    if (timerId != kHideTimerId || site_ == nullptr || window_ == 0) return;
    if (!shown_) {
        StopHideTimer();
        return;
    }
    const PixelRect rect = WindowRect();
    const PixelPoint cursor = site_->CursorPosition(window_);
    const bool inside = cursor.x >= 0 && cursor.y >= 0 && cursor.x < Width(rect) && cursor.y < Height(rect);
    if (inside) return;
    StopHideTimer();
    ShowOrHide(false, fastHide_);
}

void CUIW_LegendWindow::OnSize(WindowHandle, int32_t width, int32_t height) {
    width_ = width;
    height_ = height;
    SaveSettings();
}

void CUIW_LegendWindow::OnMovedByUser(const PixelRect& rect) {
    if (site_ == nullptr || window_ == 0) return;
    site_->MoveWindow(window_, rect);
    width_ = Width(rect);
    height_ = Height(rect);
    SaveSettings();
}

void CUIW_LegendWindow::Changed() {
    ++revision_;
    if (site_ != nullptr && window_ != 0) site_->Invalidate(window_, nullptr, false);
    if (changed_) changed_();
}

}  // namespace vexplot
