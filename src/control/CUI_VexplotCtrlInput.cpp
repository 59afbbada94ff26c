// The user's side of the control: turning, panning and zooming the 3-D view
// with the mouse, the keys and their accelerators, the pop-up menu and the
// commands it and the title bar send, and data files opened by the user.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "com/ComError.h"
#include "com/ErrorInfo.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "control/CommandTable.h"
#include "dataobject/GraphDataFactory.h"
#include "tools/CTool.h"

namespace vexplot {

namespace {

// A pan across one pixel moves the point looked at by the translation
// step times the distance over this many pixels.
constexpr double kPanPixels = 250.0;


}  // namespace

HRESULT CUI_VexplotCtrl::LoadDataFile(const std::string& path, std::string* error) {
    if (!graphs_) {
        if (error) *error = "the control has no graph engine";
        return E_UNEXPECTED;
    }
    // A plot file brings the whole plot, not a grid of text. Opened by the
    // user into a window, it keeps the control's place and size there, as
    // a loaded control state does.
    if (IsPlotFileName(path)) {
        const std::string before = lastErrorText_;
        lastErrorText_.clear();
        const PixelRect placement = rect_;
        const bool opened = OpenPlotFile(path);
        if (site_ && HasWindow(WindowRole::Control)) site_->MoveWindow(Window(WindowRole::Control), placement);
        rect_ = placement;
        LayoutAndRedraw();
        if (opened) return S_OK;
        if (error) *error = lastErrorText_.empty() ? path + " cannot be opened as a plot file" : lastErrorText_;
        lastErrorText_ = before;
        return STG_E_DOCFILECORRUPT;
    }
    // The graph object loads the file into a data object of its own.
    ClearErrorInfo();
    const HRESULT hr = DataCall([&] {
        ShowGraph(graphs_->AddFromFile(path, this, settings_.dataFlag, true));
    });
    if (FAILED(hr) && error) {
        std::string why = TakeErrorInfo();
        if (why.empty()) why = HResultWords(hr);
        // The loader's texts name the file already.
        *error = why.find(path) != std::string::npos ? why : path + " cannot be shown: " + why;
    }
    return hr;
}

// -- mouse --

// The view windows' mouse goes to the active tool (the Select tool turns
// the 3-D view by default); the wheel zooms the 3-D view whatever the tool.
void CUI_VexplotCtrl::OnMouse(WindowHandle window, const MouseEvent& event) {
    if (window == 0 || window != currentView_) return;
    if (window != Window(WindowRole::View3D) && window != Window(WindowRole::View2D)) return;
    ToolMouse(event);
}

// -- camera moves shared by the mouse and the navigator --

void CUI_VexplotCtrl::TurnBy(double azimuthDegrees, double elevationDegrees) {
    IGraphView3D* view = GetView3D();
    float azimuth = 0.0f;
    float elevation = 0.0f;
    if (!view || FAILED(view->GetAzimuth(&azimuth)) || FAILED(view->GetElevation(&elevation))) return;
    view->SetAzimuth(static_cast<float>(std::remainder(azimuth + azimuthDegrees, 360.0)));
    view->SetElevation(static_cast<float>(std::clamp(elevation + elevationDegrees, -90.0, 90.0)));
    Redraw(false);
}

void CUI_VexplotCtrl::PanBy(double dx, double dy) {
    IGraphView3D* view = GetView3D();
    CameraVector center{};
    float azimuth = 0.0f;
    float distance = 0.0f;
    if (!view || FAILED(view->GetCameraCenter(&center)) || FAILED(view->GetAzimuth(&azimuth)) ||
        FAILED(view->GetDistance(&distance)))
        return;
    // Screen right and screen up, laid on the ground plane: azimuth 0
    // looks along +y with +x to the right, and azimuth turns counter-clockwise.
    const double a = azimuth * std::numbers::pi / 180.0;
    const double perPixel = distance / kPanPixels;
    const double right = -dx * perPixel * UsableStep(settings_.camTranslation[0]) / 0.3;
    const double ahead = dy * perPixel * UsableStep(settings_.camTranslation[1]) / 0.3;
    center.x += right * std::cos(a) - ahead * std::sin(a);
    center.y += right * std::sin(a) + ahead * std::cos(a);
    view->SetCameraCenter(center);
    Redraw(false);
}

void CUI_VexplotCtrl::ZoomBy(double factor) {
    IGraphView3D* view = GetView3D();
    float distance = 0.0f;
    if (!view || factor <= 0.0 || FAILED(view->GetDistance(&distance))) return;
    view->SetDistance(static_cast<float>(distance * factor));
    Redraw(false);
}

// -- keys, menu, commands --

void CUI_VexplotCtrl::OnKey(WindowHandle, const KeyEvent& event) {
    if (event.key == vk::kApps && event.modifiers == 0) {
        OnCommand(cmd::kOpenMenu);
        return;
    }
    if (const int32_t command = CommandTable::FindAccelerator(event)) {
        OnCommand(command);
        return;
    }
    if (tool_ && (event.modifiers & (kModControl | kModAlt)) == 0) tool_->OnKey(event.key);
}

MenuModel CUI_VexplotCtrl::PopupMenu() {
    return CommandTable::PopupMenu([this](int32_t command) { return CommandState(command); });
}

void CUI_VexplotCtrl::ShowContextMenu(int32_t x, int32_t y) {
    if (!site_) return;
    const WindowHandle view = currentView_ ? currentView_ : Window(WindowRole::Control);
    if (const int32_t command = site_->TrackPopupMenu(view, PopupMenu(), PixelPoint{x, y})) OnCommand(command);
}

CommandTable::EntryState CUI_VexplotCtrl::CommandState(int32_t command) { return commands_.StateOf(command); }

// The view and window commands; the other groups add theirs beside.
void CUI_VexplotCtrl::AddViewCommands() {
    auto shown = [this](bool WindowVisibility::*flag, WindowRole a, WindowRole b) {
        return [this, flag, a, b] {
            return CommandTable::EntryState{HasWindow(a) || HasWindow(b), ReadVisibility().*flag};
        };
    };
    auto toggle = [this](bool WindowVisibility::*flag) {
        return [this, flag] {
            WindowVisibility v = ReadVisibility();
            v.*flag = !(v.*flag);
            *visibility_ = v;
            ApplyVisibility(&v);
            RecalcLayout();
        };
    };
    auto has3D = [this](bool checked) { return CommandTable::EntryState{GetView3D() != nullptr, checked}; };
    commands_.Add(cmd::k2DMode, [this] { return CommandTable::EntryState{true, viewMode_ == 0}; },
                  [this] { SetViewMode(0); });
    commands_.Add(cmd::k3DMode, [this, has3D] { return has3D(viewMode_ == 1); }, [this] { SetViewMode(1); });
    commands_.Add(cmd::kGraphTitle, [this] { return CommandTable::EntryState{true, ReadVisibility().title}; },
                  toggle(&WindowVisibility::title));
    commands_.Add(cmd::kInfoWindow, shown(&WindowVisibility::info, WindowRole::InfoWindow, WindowRole::InfoPopup),
                  toggle(&WindowVisibility::info));
    commands_.Add(cmd::kLegendWindow,
                  shown(&WindowVisibility::legend, WindowRole::LegendWindow, WindowRole::LegendWindow),
                  toggle(&WindowVisibility::legend));
    commands_.Add(cmd::kNavigatorWindow, [this, has3D] { return has3D(ReadVisibility().navigator); },
                  toggle(&WindowVisibility::navigator));
    commands_.Add(cmd::kStatusBar, [this] { return CommandTable::EntryState{true, ReadVisibility().status}; },
                  toggle(&WindowVisibility::status));
    commands_.Add(cmd::kOpenMenu, {}, [this] { ShowContextMenu(0, 0); });
}

void CUI_VexplotCtrl::OnCommand(int32_t command) { commands_.Run(command); }

bool CUI_VexplotCtrl::DoCommand(int32_t command) { return commands_.Run(command); }

}  // namespace vexplot
