// The control's auxiliary windows: the title bar's "M" and "L" buttons, the
// info window, the legend and the navigator, how they are made, laid out
// and told of changes, and the control's side of the legend (its owner).
#include <algorithm>

#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "settings/CRegistryKey.h"
#include "tools/CToolsCtrl.h"
#include "ui/CUIW_InfoWnd.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/NavigatorPad.h"

namespace vexplot {

namespace {

constexpr int32_t kButtonSize = 16;
constexpr int32_t kNavigatorSize = 48;
constexpr int32_t kLegendMinWidth = 180;
constexpr int32_t kLegendMinHeight = 120;
// Turning and zooming per repeat of a pressed navigator zone (its timer
// repeats every millisecond): the steps are small so that a press can be
// held for fine control.
constexpr double kNavigatorZoomDivisor = 500.0;

PixelRect ButtonRect(int32_t left, int32_t top) { return PixelRect{left, top, left + kButtonSize, top + kButtonSize}; }

}  // namespace

void CUI_VexplotCtrl::CreateTitleButtons() {
    const WindowHandle control = Window(WindowRole::Control);
    const ControlSettings& s = settings_;
    menuButton_ = std::make_unique<CToolsCtrl>();
    if (menuButton_->Create(*site_, WindowRole::MenuButton, control, ButtonRect(s.menuControlLeft, s.menuControlTop),
                            cmd::kOpenMenu, "M")) {
        menuButton_->SetOwnPopup([this] { return PopupMenu(); });
        menuButton_->SetOwner({nullptr, [this](int32_t command) { OnCommand(command); }, nullptr});
        windows_[static_cast<size_t>(WindowRole::MenuButton)] = menuButton_->Window();
    }
    legendButton_ = std::make_unique<CToolsCtrl>();
    if (legendButton_->Create(*site_, WindowRole::LegendButton, control,
                              ButtonRect(s.legendControlLeft, s.legendControlTop), cmd::kLegendWindow, "L")) {
        // A click pops the legend up under the button, as the mouse coming
        // over it does.
        legendButton_->SetOwner({[this](int32_t, int32_t, int32_t) { PopUpLegend(); }, nullptr,
                                 [this] { PopUpLegend(); }});
        windows_[static_cast<size_t>(WindowRole::LegendButton)] = legendButton_->Window();
    }
}

void CUI_VexplotCtrl::CreateLegend() {
    legend_ = std::make_unique<CUIW_LegendWindow>(sink_, store_);
    // The first run's settings hold a legend of no size; the window needs
    // room for a few rows until the user gives it a size of their own.
    PixelRect rect = settings_.legendRect;
    rect.right = std::max(rect.right, rect.left + kLegendMinWidth);
    rect.bottom = std::max(rect.bottom, rect.top + kLegendMinHeight);
    if (!legend_->Create(*site_, Window(WindowRole::Control), rect, *this)) return;
    legend_->SetAnimationMode(settings_.moveDirection);
    legend_->SetFastHide(settings_.fastHideLegend);
    legend_->SetAutoHide(settings_.autoHideLegend, false);
    windows_[static_cast<size_t>(WindowRole::LegendWindow)] = legend_->Window();
}

void CUI_VexplotCtrl::CreateInfoWindow() {
    info_ = std::make_unique<CUIW_InfoWnd>();
    CUIW_InfoWnd::Owner owner;
    owner.visibilityChanged = [this] { RecalcLayout(); };
    owner.dockingChanged = [this](bool docked) {
        settings_.info.docked = docked;
        CRegistryKey key(sink_, store_);
        if (key.Open("")) key.WriteInt("InfoDocked", docked ? 1 : 0);
        RecalcLayout();
    };
    owner.wantedSizeChanged = [this] {
        if (info_ && info_->Docked()) LayOutDockedInfo();
    };
    if (!info_->Create(*site_, Window(WindowRole::Control), settings_.childInfoWindow, owner)) return;
    // Both variants answer as "the info window" to the rest of the control.
    windows_[static_cast<size_t>(WindowRole::InfoWindow)] = info_->Window();
    CRegistryKey key(sink_, store_);
    if (key.Open("")) info_->LoadSettings(key);
}

void CUI_VexplotCtrl::ApplyInfoSettings() {
    if (!info_) return;
    const ControlSettings::Info& s = settings_.info;
    info_->SetTextColor(s.textColor);
    info_->SetBackColor(s.backColor);
    info_->SetVisibilityMask(static_cast<int32_t>(s.itemBits));
    info_->SetTransparent(s.transparent);
    info_->SetDocked(s.docked);
}

void CUI_VexplotCtrl::CreateNavigator() {
    navigator_ = std::make_unique<NavigatorPad>();
    if (!navigator_->Create(*site_, Window(WindowRole::Control), PixelRect{0, 0, kNavigatorSize, kNavigatorSize}))
        return;
    navigator_->SetOwner([this](NavigatorPad::Zone zone, bool secondary) { NavigatorMove(zone, secondary); });
    windows_[static_cast<size_t>(WindowRole::Navigator)] = navigator_->Window();
}

void CUI_VexplotCtrl::DestroyAuxiliaryWindows() {
    // Where the user left the floating info window is where the next
    // control puts it (nothing is written while it is docked).
    if (info_) {
        CRegistryKey key(sink_, store_);
        if (key.Open("")) info_->SavePlacement(key);
    }
    for (auto& axis : axes_)
        if (axis) axis->AttachInfoWindow(nullptr);
    for (WindowRole role : {WindowRole::MenuButton, WindowRole::LegendButton, WindowRole::LegendWindow,
                            WindowRole::InfoWindow, WindowRole::Navigator})
        windows_[static_cast<size_t>(role)] = 0;
    menuButton_.reset();
    legendButton_.reset();
    legend_.reset();
    info_.reset();
    navigator_.reset();
}

// -- layout --

void CUI_VexplotCtrl::LayOutAuxiliaryWindows(const PixelRect& view) {
    site_->MoveWindow(Window(WindowRole::Navigator),
                      PixelRect{view.right - kNavigatorSize, view.top, view.right, view.top + kNavigatorSize});
    viewArea_ = view;
    LayOutDockedInfo();
}

void CUI_VexplotCtrl::LayOutDockedInfo() {
    if (!info_ || !info_->Docked() || !site_) return;
    // Docked, the info window lies in the top-left corner of the view area,
    // as large as its text wants and no larger than the view.
    const int32_t width = std::min(info_->WantedWidth(), viewArea_.right - viewArea_.left);
    const int32_t height = std::min(info_->WantedHeight(), viewArea_.bottom - viewArea_.top);
    site_->MoveWindow(info_->Window(), PixelRect{viewArea_.left, viewArea_.top, viewArea_.left + std::max(width, 1),
                                                 viewArea_.top + std::max(height, 1)});
}

// -- legend --

void CUI_VexplotCtrl::PopUpLegend() {
    if (!legend_ || !site_) return;
    // Under the middle of the legend button when the title bar is there,
    // else at the point the legend remembers.
    if (legendButton_ && site_->IsWindowVisible(legendButton_->Window())) {
        const PixelRect b = site_->GetWindowRect(legendButton_->Window());
        legend_->PopUpAt((b.left + b.right) / 2, b.bottom);
    } else {
        const PixelPoint p = legend_->PopUpPoint();
        legend_->PopUpAt(p.x, p.y);
    }
}

void CUI_VexplotCtrl::UpdateLegend() {
    if (legend_) legend_->Rebuild();
}

CGD_GraphObjectList* CUI_VexplotCtrl::LegendGraphObjects() { return graphs_.get(); }

void CUI_VexplotCtrl::MakeGraphObjectActive(int32_t index) {
    if (!graphs_ || index < 0 || index >= graphs_->Count()) return;
    graphs_->SetActiveIndex(index);
    CGD_GraphObject* graph = graphs_->Active();
    Guarded([graph] { graph->UpdateEngine(); });
    ApplyAllAxes();
    Redraw(false);
}

void CUI_VexplotCtrl::RedrawPlot() {
    // The check boxes of the legend show and hide the objects' layers.
    if (IGraphView3D* view = GetView3D(); view && graphs_)
        for (int32_t i = 0; i < graphs_->Count(); ++i)
            if (const CGD_GraphObject* graph = graphs_->At(i); graph->Layer() >= 0)
                view->SetLayerVisible(graph->Layer(), graph->Flags().visible);
    Redraw(true);
}

void CUI_VexplotCtrl::SetTitleText(const std::string& text) {
    if (site_ && HasWindow(WindowRole::Title)) site_->SetWindowText(Window(WindowRole::Title), text);
}

void CUI_VexplotCtrl::DeleteGraphObject(CGD_GraphObject* graph) {
    if (!graphs_ || !graph) return;
    if (IGraphView3D* view = GetView3D(); view && graph->Layer() >= 0) view->RemoveLayer(graph->Layer());
    graphs_->Remove(graph);
    if (CGD_GraphObject* active = graphs_->Active()) Guarded([active] { active->UpdateEngine(); });
    ApplyAllAxes();
    UpdateLegend();
    Redraw(true);
}

// -- navigator --

void CUI_VexplotCtrl::NavigatorMove(NavigatorPad::Zone zone, bool secondary) {
    const double turn = 1.0;  // degrees per repeat, scaled by the rotation steps below
    switch (zone) {
        case NavigatorPad::Zone::Left: TurnBy(-turn * UsableStep(settings_.camRotation[1]) * 10.0, 0.0); break;
        case NavigatorPad::Zone::Right: TurnBy(turn * UsableStep(settings_.camRotation[1]) * 10.0, 0.0); break;
        case NavigatorPad::Zone::Top: TurnBy(0.0, turn * UsableStep(settings_.camRotation[0]) * 10.0); break;
        case NavigatorPad::Zone::Bottom: TurnBy(0.0, -turn * UsableStep(settings_.camRotation[0]) * 10.0); break;
        case NavigatorPad::Zone::Centre: {
            const double step = UsableStep(settings_.camTranslation[2]) / kNavigatorZoomDivisor;
            ZoomBy(secondary ? 1.0 + step : 1.0 - step);
            break;
        }
        default: break;
    }
}

}  // namespace vexplot
