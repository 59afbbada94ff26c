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

namespace vexplot {

namespace {

// A horizontal drag across one pixel turns the view by ten times the
// rotation step in degrees: with the stored steps (0.01 to 0.05) a drag
// across a typical view turns it by one or two half turns.
constexpr double kDegreesPerStepPixel = 10.0;
// A pan across one pixel moves the point looked at by the translation
// step times the distance over this many pixels.
constexpr double kPanPixels = 250.0;

// A camera step as the mouse and the navigator use it: the stored value may
// come from another program's store or a file, so it is held to the -1 .. 1
// the property page allows, and a value that is not a number moves nothing.
double UsableStep(double step) { return std::isfinite(step) ? std::clamp(step, -1.0, 1.0) : 0.0; }

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

void CUI_VexplotCtrl::OnMouse(WindowHandle window, const MouseEvent& event) {
    if (window != Window(WindowRole::View3D) || !GetView3D()) return;
    switch (event.kind) {
        case MouseEvent::Kind::Press: BeginDrag(event); break;
        case MouseEvent::Kind::Move:
            if (drag_) ContinueDrag(event);
            break;
        case MouseEvent::Kind::Release:
            if (drag_) EndDrag();
            break;
        case MouseEvent::Kind::Wheel:
            ZoomBy(std::pow(1.0 - UsableStep(settings_.camTranslation[2]) / 3.0, event.wheelDelta / 120.0));
            break;
        case MouseEvent::Kind::DoubleClick:
        case MouseEvent::Kind::Leave: break;
    }
}

void CUI_VexplotCtrl::BeginDrag(const MouseEvent& event) {
    const bool pan = event.button == MouseEvent::Button::Right ||
                     (event.button == MouseEvent::Button::Left && (event.modifiers & kModShift));
    if (event.button != MouseEvent::Button::Left && !pan) return;
    drag_ = Drag{pan, event.point};
    BeginViewMotion();
}

void CUI_VexplotCtrl::ContinueDrag(const MouseEvent& event) {
    const double dx = event.point.x - drag_->last.x;
    const double dy = event.point.y - drag_->last.y;
    drag_->last = event.point;
    if (dx == 0 && dy == 0) return;
    if (drag_->pan)
        PanBy(dx, dy);
    else
        TurnBy(-dx * kDegreesPerStepPixel * UsableStep(settings_.camRotation[1]),
               dy * kDegreesPerStepPixel * UsableStep(settings_.camRotation[0]));
}

void CUI_VexplotCtrl::EndDrag() {
    drag_.reset();
    // At rest the view draws the full grid again.
    EndViewMotion();
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
    if (const int32_t command = CommandTable::FindAccelerator(event)) OnCommand(command);
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
