#include "control/CUI_VexplotCtrl.h"

#include <algorithm>

#include "com/ComError.h"
#include "dataobject/GraphDataClass.h"
#include "tools/CTool.h"
#include "tools/CToolsCtrl.h"
#include "tools/ToolIconMenu.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot {

namespace {

constexpr int32_t kTitleHeight = 20;
constexpr int32_t kStatusHeight = 20;
constexpr const char* kCaption = "Vexplot";

PixelRect Rect(int32_t left, int32_t top, int32_t right, int32_t bottom) {
    return {left, top, std::max(left, right), std::max(top, bottom)};
}

}  // namespace

CUI_VexplotCtrl::CUI_VexplotCtrl(MessageSink* sink, std::shared_ptr<SettingsStore> store)
    : sink_(sink), store_(std::move(store)), points_(this) {
    // The control makes data objects itself (CopyArrayData, data files, plot
    // files), so its data-object class is served in-process whatever the
    // host registered.
    RegisterGraphDataClass();
    settings_.Read(sink_, store_);
    labels_ = {settings_.axes[0].label, settings_.axes[1].label, settings_.axes[2].label};
    points_.Add(kEventsIid);
    points_.Add(kExEventsIid);
    annotations_ = std::make_unique<CGD_AnnotationList>();
    AddViewCommands();
    AddExportCommands();
    AddFileCommands();
    AddHelpCommands();
    AddToolCommands();
    AddDialogCommands();
    AddPaletteCommands();
}

CUI_VexplotCtrl::~CUI_VexplotCtrl() { Destroy(); }

// -- lifecycle --

WindowHandle CUI_VexplotCtrl::MakeWindow(WindowRole role, const PixelRect& rect) {
    const WindowHandle parent = role == WindowRole::Control ? 0 : Window(WindowRole::Control);
    const WindowHandle window = site_->CreateWindow(role, parent, rect, this);
    windows_[static_cast<size_t>(role)] = window;
    return window;
}

bool CUI_VexplotCtrl::Create(IControlSite& site, const PixelRect& rect) {
    Destroy();
    site_ = &site;
    rect_ = rect;
    if (!MakeWindow(WindowRole::Control, rect)) {
        site_ = nullptr;
        return false;
    }
    CreateChildWindows();
    try {
        CreateEngine();
    } catch (const EngineStartError&) {
        // The user has been told; the control stays without a plot.
        engine_.reset();
        return false;
    }
    graphs_ = std::make_unique<CGD_GraphObjectList>();
    AttachAnnotations();
    CreateAxes();
    ApplyAllAxes();
    ApplyQuality3D();
    ShowInitialWindows();
    SetViewMode(GetView3D() ? 1 : 0);
    SetUpTools();
    RecalcLayout();
    RegisterForDisplayChanges();
    return true;
}

// The windows in the order the control has always made them: the title
// bar's buttons, legend and info windows (with the info settings), the
// static title and status texts, the view windows with the navigator over
// the 3-D one, then the palette.
void CUI_VexplotCtrl::CreateChildWindows() {
    CreateTitleButtons();
    CreateLegend();
    CreateInfoWindow();
    settings_.ReadInfo(sink_, store_);
    ApplyInfoSettings();
    MakeWindow(WindowRole::Title, Rect(0, 0, 0, 0));
    site_->SetWindowText(Window(WindowRole::Title), "TITLE");
    MakeWindow(WindowRole::StatusBar, Rect(0, 0, 0, 0));
    site_->SetWindowText(Window(WindowRole::StatusBar), "Info bar");
    MakeWindow(WindowRole::View2D, Rect(0, 0, 0, 0));
    MakeWindow(WindowRole::View3D, Rect(0, 0, 0, 0));
    CreateNavigator();
    palette_.SetStandard(palette_.GetPaletteId());
}

void CUI_VexplotCtrl::CreateEngine() {
    engine_ = std::make_unique<EngineHost>(*site_, sink_, store_);
    EngineHost::Binding binding;
    binding.view2D = Window(WindowRole::View2D);
    binding.view3D = Window(WindowRole::View3D);
    if (!graphs_ || graphs_->Count() == 0) binding.palette = palette_.Colors();
    binding.backgroundColor = settings_.backgroundColor;
    binding.axisMargin = axisMargin_;
    binding.gridVisible = settings_.gridFlag;
    binding.logZ = settings_.axes[2].displayMode == 1;
    engine_->Create(binding);
}

void CUI_VexplotCtrl::ShowInitialWindows() {
    site_->ShowWindow(Window(WindowRole::Control), true);
    for (WindowRole role : {WindowRole::Title, WindowRole::MenuButton, WindowRole::LegendButton,
                            WindowRole::StatusBar})
        site_->ShowWindow(Window(role), true);
    if (info_) info_->Show(settings_.info.visible);
    // An auto-hidden legend shows only when it pops up.
    if (legend_ && !settings_.autoHideLegend) legend_->SetShown(settings_.legendVisible);
}

void CUI_VexplotCtrl::Destroy() {
    UnregisterFromDisplayChanges();
    // Everything that holds engine interfaces goes before the control's own
    // references, which are released 3-D view, 2-D device, engine.
    // The annotations go first: their wrappers are detached and their info
    // sections removed while the info window still exists.
    annotations_->Clear();
    TearDownTools();
    graphs_.reset();
    for (auto& axis : axes_) axis.reset();
    if (engine_) engine_->Release();
    engine_.reset();
    DestroyAuxiliaryWindows();
    DestroyWindows();
    currentView_ = 0;
    nextLayer_ = 0;
    site_ = nullptr;
}

void CUI_VexplotCtrl::DestroyWindows() {
    if (!site_) return;
    // Children first, the control window last.
    for (size_t i = windows_.size(); i-- > 0;) {
        if (windows_[i]) site_->DestroyWindow(windows_[i]);
        windows_[i] = 0;
    }
}

// -- layout and drawing --

void CUI_VexplotCtrl::OnSize(WindowHandle window, int32_t width, int32_t height) {
    if (window != Window(WindowRole::Control)) return;
    rect_.right = rect_.left + width;
    rect_.bottom = rect_.top + height;
    RecalcLayout();
}

void CUI_VexplotCtrl::RecalcLayout() {
    if (!site_ || !engine_) return;
    const int32_t width = rect_.right - rect_.left;
    const int32_t height = rect_.bottom - rect_.top;
    const bool title = site_->IsWindowVisible(Window(WindowRole::Title));
    const bool status = site_->IsWindowVisible(Window(WindowRole::StatusBar));
    const int32_t top = title ? kTitleHeight : 0;
    const int32_t bottom = std::max(top, height - (status ? kStatusHeight : 0));
    site_->MoveWindow(Window(WindowRole::Title), Rect(0, 0, width, kTitleHeight));
    site_->MoveWindow(Window(WindowRole::StatusBar), Rect(0, height - kStatusHeight, width, height));
    const PixelRect view = Rect(0, top, width, bottom);
    site_->MoveWindow(Window(WindowRole::View2D), view);
    site_->MoveWindow(Window(WindowRole::View3D), view);
    LayOutAuxiliaryWindows(view);
    const int32_t w = view.right - view.left;
    const int32_t h = view.bottom - view.top;
    if (IGraphDevice2D* device = GetDevice2D()) device->Resize(w, h);
    IGraphView3D* view3D = GetView3D();
    if (!view3D) return;
    view3D->Resize(w, h);
    if (view3D->Refresh(kRefreshCheck) != S_OK) {
        // The 3-D device is lost: from now on the control works in 2-D only.
        engine_->DropView3D();
        SetViewMode(0);
        ShowMessage("ERROR! 3D mode should be disabled.", 0);
        return;
    }
    view3D->Update(moving_ ? kUpdateMoving : kUpdateFull);
}

void CUI_VexplotCtrl::Redraw(bool erase) {
    if (!site_ || !currentView_) return;
    DrawAnnotations();
    if (Is3DViewCurrent()) GetView3D()->Update(moving_ ? kUpdateMoving : kUpdateFull);
    site_->Invalidate(currentView_, nullptr, erase);
}

void CUI_VexplotCtrl::EndViewMotion() {
    moving_ = false;
    Redraw(false);
}

void CUI_VexplotCtrl::OnPaint(WindowHandle window, const ImageBuffer& target) {
    if (window != currentView_) return;
    if (redrawPending_ && Is3DViewCurrent()) GetView3D()->Update(moving_ ? kUpdateMoving : kUpdateFull);
    redrawPending_ = false;
    if (window == Window(WindowRole::View3D) && GetView3D())
        GetView3D()->Draw(&target);
    else if (window == Window(WindowRole::View2D) && GetDevice2D()) {
        // The flat overlay is in client pixels: placed again for this size.
        DrawAnnotations();
        GetDevice2D()->Draw(&target);
    }
}

void CUI_VexplotCtrl::InvalidateView(const PixelRect* rect) {
    if (site_ && currentView_) site_->Invalidate(currentView_, rect, false);
}

PixelRect CUI_VexplotCtrl::GetPlotRect() {
    if (!site_ || !currentView_) return {};
    const PixelRect r = site_->GetWindowRect(currentView_);
    return {0, 0, r.right - r.left, r.bottom - r.top};
}

int32_t CUI_VexplotCtrl::Is3DViewCurrent() {
    return currentView_ != 0 && currentView_ == Window(WindowRole::View3D) && GetView3D() ? 1 : 0;
}

// -- the mode switch --

void CUI_VexplotCtrl::SetViewMode(int32_t mode) {
    if (!site_) return;
    const WindowHandle view2D = Window(WindowRole::View2D);
    const WindowHandle view3D = Window(WindowRole::View3D);
    const bool to2D = mode == 0 && currentView_ != view2D && GetDevice2D();
    const bool to3D = mode == 1 && currentView_ != view3D && GetView3D();
    if (to2D || to3D) {
        viewMode_ = to3D ? 1 : 0;
        if (currentView_) site_->ShowWindow(currentView_, false);
        currentView_ = to3D ? view3D : view2D;
        site_->ShowWindow(currentView_, true);
        site_->ShowWindow(Window(WindowRole::Navigator), to3D && navigatorFlag_);
        Redraw(false);
        if (to2D) UpdateLegend();  // the title names the view mode; a 3-D switch rebuilds below
    }
    if (to3D) {
        GetView3D()->Refresh(kRefreshCheck);
        if (CGD_GraphObject* graph = Active()) {
            Guarded([graph] { graph->UpdateEngine(); });
            UpdateLegend();
        }
    }
    redrawPending_ = true;
    Redraw(true);
}

// -- window visibility --

CUI_VexplotCtrl::WindowVisibility CUI_VexplotCtrl::ReadVisibility() {
    if (!visibility_) visibility_ = WindowVisibility{};
    WindowVisibility& v = *visibility_;
    auto shown = [this](WindowRole role, bool fallback) {
        return site_ && HasWindow(role) ? site_->IsWindowVisible(Window(role)) : fallback;
    };
    v.title = shown(WindowRole::Title, true);
    v.status = shown(WindowRole::StatusBar, true);
    v.info = shown(WindowRole::InfoWindow, settings_.info.visible);
    v.legend = shown(WindowRole::LegendWindow, settings_.legendVisible);
    v.navigator = site_ && HasWindow(WindowRole::View3D) ? navigatorFlag_ : true;
    return v;
}

void CUI_VexplotCtrl::ApplyVisibility(const WindowVisibility* record) {
    if (!record) {
        if (!visibility_) {
            ReadVisibility();
            return;
        }
        record = &*visibility_;
    }
    const WindowVisibility v = *record;
    if (!site_) return;
    for (WindowRole role : {WindowRole::Title, WindowRole::MenuButton, WindowRole::LegendButton,
                            WindowRole::ToolsButton})
        site_->ShowWindow(Window(role), v.title);
    site_->ShowWindow(Window(WindowRole::StatusBar), v.status);
    if (info_)
        info_->Show(v.info);
    else
        site_->ShowWindow(Window(WindowRole::InfoWindow), v.info);
    if (legend_)
        legend_->SetShown(v.legend);
    else
        site_->ShowWindow(Window(WindowRole::LegendWindow), v.legend);
    navigatorFlag_ = v.navigator;
    site_->ShowWindow(Window(WindowRole::Navigator), v.navigator && Is3DViewCurrent());
}

// -- the rest of the view host --

void CUI_VexplotCtrl::RefreshGraphObject(CGD_GraphObject*) {
    ApplyAllAxes();
    Redraw(false);
    UpdateLegend();
}

void CUI_VexplotCtrl::Rebuild1DView(CGD_GraphObject* graph) {
    if (!graph) return;
    Guarded([graph] { graph->SendDrawingSettings(); });
    Redraw(false);
}

void CUI_VexplotCtrl::BeginWaitCursor() {
    if (waitDepth_++ == 0 && site_) site_->SetCursorShape(Window(WindowRole::Control), CursorShape::Wait);
}

void CUI_VexplotCtrl::EndWaitCursor() {
    if (waitDepth_ > 0 && --waitDepth_ == 0 && site_)
        site_->SetCursorShape(Window(WindowRole::Control), CursorShape::Arrow);
}

void CUI_VexplotCtrl::SetCursorShape(int32_t shape) {
    if (site_ && currentView_) site_->SetCursorShape(currentView_, static_cast<CursorShape>(shape));
}

void CUI_VexplotCtrl::SetTimer(uint32_t id, uint32_t milliseconds) {
    if (site_ && HasWindow(WindowRole::Control)) site_->SetTimer(Window(WindowRole::Control), id, milliseconds);
}

void CUI_VexplotCtrl::KillTimer(uint32_t id) {
    if (site_ && HasWindow(WindowRole::Control)) site_->KillTimer(Window(WindowRole::Control), id);
}

void CUI_VexplotCtrl::SetStatusText(const char* text) {
    if (site_ && HasWindow(WindowRole::StatusBar)) site_->SetWindowText(Window(WindowRole::StatusBar), text ? text : "");
}

void CUI_VexplotCtrl::SetCaption(const std::string& text) {
    if (site_ && HasWindow(WindowRole::Title)) site_->SetWindowText(Window(WindowRole::Title), text);
}

std::string CUI_VexplotCtrl::GetCaption() const {
    return site_ && HasWindow(WindowRole::Title) ? site_->GetWindowText(Window(WindowRole::Title)) : std::string();
}

int32_t CUI_VexplotCtrl::ShowMessage(const char* text, uint32_t buttons) {
    const auto kind = static_cast<MessageButtons>(buttons);
    if (!site_) return buttons == static_cast<uint32_t>(MessageButtons::YesNo) ? kAnswerYes : kAnswerOk;
    return site_->MessageBox(text ? text : "", kCaption, kind);
}

bool CUI_VexplotCtrl::ClientToData(int32_t px, int32_t py, Point3* point) {
    if (!point) return false;
    if (Is3DViewCurrent()) return GetView3D()->Pick(px, py, point) == S_OK;
    IGraphDevice2D* device = GetDevice2D();
    if (!device || !currentView_) return false;
    return device->ClientToData(px, py, &point->x, &point->y) == S_OK;
}

bool CUI_VexplotCtrl::DataToClient(const Point3& point, int32_t* px, int32_t* py) {
    if (Is3DViewCurrent()) return GetView3D()->ProjectPoint(point.x, point.y, point.z, px, py) == S_OK;
    IGraphDevice2D* device = GetDevice2D();
    return device && currentView_ && device->DataToClient(point.x, point.y, px, py) == S_OK;
}

void CUI_VexplotCtrl::ApplyPalette() {
    if (IGraphEngine* engine = GetEngine()) {
        const auto colors = palette_.Colors();
        Guarded([&] { ThrowIfFailed(engine->SetPalette(static_cast<uint32_t>(colors.size()), colors.data()),
                                    IGraphEngine::kIid); });
    }
    Redraw(true);
}

// -- events --

void CUI_VexplotCtrl::FireEvent(DISPID dispid, std::vector<Variant> args, bool bothInterfaces) {
    if (bothInterfaces)
        if (ConnectionPoint* point = points_.Get(kEventsIid)) point->FireDispatch(dispid, args);
    if (ConnectionPoint* point = points_.Get(kExEventsIid)) point->FireDispatch(dispid, std::move(args));
}

void CUI_VexplotCtrl::FireError(HRESULT code, const char* text) {
    std::string description = text ? text : "";
    std::string source = kCaption;
    std::string helpFile;
    VARIANT_BOOL cancelDisplay = VARIANT_FALSE;
    // Error(short Number, BSTR* Description, SCODE Scode, BSTR Source,
    //       BSTR HelpFile, long HelpContext, BOOL* CancelDisplay)
    FireEvent(kDispidError,
              {Variant(static_cast<int16_t>(static_cast<uint32_t>(code) & 0xFFFF)), Variant::Ref(&description),
               Variant(static_cast<int32_t>(code)), Variant(source), Variant(helpFile), Variant(int32_t{0}),
               Variant::BoolRef(&cancelDisplay)},
              true);
    for (const ErrorListener& listener : errorListeners_) listener(code, text ? text : "");
    if (collectedErrors_) collectedErrors_->push_back(description);
    lastErrorText_ = text ? text : "";
}

void CUI_VexplotCtrl::FireDataSelect(const DataRect& xy, double zMin, double zMax) {
    if (!settings_.dataSelectEnable) return;
    FireEvent(kDispidDataSelect, {Variant(xy.xMin), Variant(xy.xMax), Variant(xy.yMin), Variant(xy.yMax),
                                  Variant(zMin), Variant(zMax)},
              true);
}

void CUI_VexplotCtrl::FireResample(const DataRect& xy) {
    FireEvent(kDispidResample, {Variant(xy.xMin), Variant(xy.xMax), Variant(xy.yMin), Variant(xy.yMax)}, false);
}

}  // namespace vexplot
