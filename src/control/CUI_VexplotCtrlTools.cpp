// The interaction tools on the control's side: the tool commands and the
// title bar's icon menu, the view windows' mouse and keys given to the
// active tool, the position read-out, the data-cell tool tip, zooming and
// panning the visible range, and input a host or a script sends.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "annotations/AnnotationActions.h"
#include "annotations/CGD_AnnotationList.h"
#include "annotations/CGD_DiffTracer.h"
#include "annotations/CGD_Label.h"
#include "annotations/CGD_Marker.h"
#include "annotations/CGD_Region.h"
#include "annotations/CGD_Tracer.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "control/CommandTable.h"
#include "tools/CTool.h"
#include "tools/CToolsCtrl.h"
#include "tools/ToolIconMenu.h"
#include "tools/ZoomStep.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot {

namespace {

constexpr double kNoZ = NoZValue;
constexpr const char* kNoPosition = "Pos: X(-) Y(-) Z(-)";
// A horizontal drag across one pixel turns the view by ten times the
// rotation step in degrees: with the stored steps (0.01 to 0.05) a drag
// across a typical view turns it by one or two half turns.
constexpr double kDegreesPerStepPixel = 10.0;
// The tools button sits between the "M" and "L" buttons.
constexpr int32_t kToolsButtonLeft = 27;
constexpr int32_t kToolsButtonSize = 16;
// The icon menu's entries per column.
constexpr int32_t kToolMenuColumns = 4;

// "X(%f) Y(%f) Z(%f)", or "Z(-)" for a point without Z.
std::string Coordinates(const Point3& p) {
    char text[1100];
    if (p.z == kNoZ || !std::isfinite(p.z))
        std::snprintf(text, sizeof text, "X(%f) Y(%f) Z(-)", p.x, p.y);
    else
        std::snprintf(text, sizeof text, "X(%f) Y(%f) Z(%f)", p.x, p.y, p.z);
    return text;
}

bool IsToolCommand(int32_t command) {
    switch (command) {
        case cmd::kSelect:
        case cmd::kPan:
        case cmd::kZoom:
        case cmd::kLabel:
        case cmd::kMarker:
        case cmd::kTracer:
        case cmd::kDiffTracer:
        case cmd::kRegion: return true;
        default: return false;
    }
}

}  // namespace

// The control as the tools see it.
class CUI_VexplotCtrl::ToolContext final : public IToolContext {
public:
    explicit ToolContext(CUI_VexplotCtrl& control) : c_(control) {}

    bool HasData() override { return c_.Active() && c_.Active()->Access(); }

    bool SurfacePoint(PixelPoint pixel, Point3* point) override {
        CGD_GraphObject* graph = c_.Active();
        if (!graph || !graph->Access() || !point) return false;
        Point3 hit{};
        if (c_.Is3DViewCurrent()) {
            if (c_.GetView3D()->Pick(pixel.x, pixel.y, &hit) != S_OK) return false;
        } else {
            IGraphDevice2D* device = c_.GetDevice2D();
            if (!device || device->ClientToData(pixel.x, pixel.y, &hit.x, &hit.y) != S_OK) return false;
        }
        if (!std::isfinite(hit.x) || !std::isfinite(hit.y)) return false;
        // Snap to the nearest grid node: the read-out shows stored values.
        IGraphDataAccess* access = graph->Access();
        int32_t ix = 0, iy = 0;
        double z = kNoZ;
        if (FAILED(access->ValuesToIndices(hit.x, hit.y, &ix, &iy)) ||
            FAILED(access->IndicesToValues(ix, iy, &point->x, &point->y)) ||
            FAILED(access->GetValueAt(point->x, point->y, &z)))
            return false;
        point->z = std::isfinite(z) ? z : kNoZ;
        return true;
    }

    void ShowPosition(const Point3* point) override {
        CUIW_InfoWnd* info = c_.info_.get();
        const bool infoLine = info && info->Visible() && (info->VisibilityMask() & 1) && c_.positionSection_;
        if (!point) {
            if (info && c_.positionSection_) info->SetHeader(c_.positionSection_, kNoPosition, 0);
            return;
        }
        const std::string where = Coordinates(*point);
        if (infoLine)
            info->SetHeader(c_.positionSection_, "Pos: " + where, 0);
        else
            c_.SetStatusText(("Position: " + where).c_str());
    }

    void DataCellMouseOver(PixelPoint pixel, const Point3& point, bool select) override {
        CGD_GraphObject* graph = c_.Active();
        if (!graph || !graph->CustomToolTip() || !c_.site_) return;
        std::string text;
        c_.FireDataCellMouseOver(point.x, point.y, point.z, select, &text);
        if (c_.currentView_) c_.site_->ShowToolTip(c_.currentView_, pixel, text);
    }

    void SetHelpText(std::string_view text) override { c_.SetStatusText(std::string(text).c_str()); }
    void SetCursor(CursorShape shape) override { c_.SetCursorShape(static_cast<int32_t>(shape)); }
    void Redraw() override { c_.Redraw(false); }
    bool Is3D() override { return c_.Is3DViewCurrent() != 0; }

    void TurnBy(int32_t dx, int32_t dy) override {
        if (!Is3D()) return;
        c_.BeginViewMotion();
        c_.TurnBy(-dx * kDegreesPerStepPixel * UsableStep(c_.settings_.camRotation[1]),
                  dy * kDegreesPerStepPixel * UsableStep(c_.settings_.camRotation[0]));
    }

    void PanBy(int32_t dx, int32_t dy) override {
        if (Is3D()) {
            c_.BeginViewMotion();
            c_.PanBy(dx, dy);
            c_.UpdateScaleEntries();
            return;
        }
        // The flat views move the visible range with the mouse, kept
        // inside the data.
        IGraphDevice2D* device = c_.GetDevice2D();
        DataRect shown{}, full{};
        double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
        if (!device || !VisibleRange(&shown, &full) || FAILED(device->ClientToData(0, 0, &x0, &y0)) ||
            FAILED(device->ClientToData(dx, dy, &x1, &y1)))
            return;
        const double shiftX = Clamp(x0 - x1, full.xMin - shown.xMin, full.xMax - shown.xMax);
        const double shiftY = Clamp(y0 - y1, full.yMin - shown.yMin, full.yMax - shown.yMax);
        if (shiftX == 0 && shiftY == 0) return;
        const DataRect moved{shown.xMin + shiftX, shown.xMax + shiftX, shown.yMin + shiftY, shown.yMax + shiftY};
        SetVisibleRange(&moved);
    }

    void EndMotion() override { c_.EndViewMotion(); }

    bool VisibleRange(DataRect* shown, DataRect* full) override {
        if (!HasData() || c_.In1DView()) return false;
        if (IGraphView3D* view = c_.GetView3D(); view && SUCCEEDED(view->GetViewBounds(shown, full)))
            return Ordered(shown) && Ordered(full);
        IGraphDevice2D* device = c_.GetDevice2D();
        return device && SUCCEEDED(device->GetVisibleRange(shown)) && SUCCEEDED(device->GetDataRange(full)) &&
               Ordered(shown) && Ordered(full);
    }

    void SetVisibleRange(const DataRect* range) override {
        if (!HasData()) return;
        if (IGraphView3D* view = c_.GetView3D()) view->SetVisibleRange(range);
        if (IGraphDevice2D* device = c_.GetDevice2D()) device->SetVisibleRange(range);
        // The graph objects keep the shown part of their grids.
        for (int32_t i = 0; i < c_.graphs_->Count(); ++i) {
            CGD_GraphObject* graph = c_.graphs_->At(i);
            if (!graph || !graph->Access()) continue;
            c_.Guarded([&] {
                if (range) {
                    graph->SetShownRange(range->xMin, range->xMax, range->yMin, range->yMax);
                } else {
                    const auto x = graph->GetXRange();
                    const auto y = graph->GetYRange();
                    graph->SetShownRange(x.first, x.last, y.first, y.last);
                }
            });
        }
        c_.ApplyAllAxes();
        c_.UpdateScaleEntries();
        c_.Redraw(false);
    }

    void ZoomSteps(double* sx, double* sy) override {
        *sx = *sy = 0;
        if (c_.In1DView() || !c_.graphs_) return;
        for (int32_t i = 0; i < c_.graphs_->Count(); ++i) {
            const CGD_GraphObject* graph = c_.graphs_->At(i);
            if (!graph || !graph->Access()) continue;
            c_.Guarded([&] {
                const auto x = graph->GetXRange();
                const auto y = graph->GetYRange();
                *sx = std::max(*sx, ZoomStep::StepSize(x.first, x.last, graph->GetGeometry().xCount));
                *sy = std::max(*sy, ZoomStep::StepSize(y.first, y.last, graph->GetGeometry().yCount));
            });
        }
    }

    // -- annotations --
    CGD_Annotation* Create(ToolAnnotation kind, const Point3& at) override {
        switch (kind) {
            // A new label reads the caption a label starts with.
            case ToolAnnotation::Label: return AnnotationActions::AddLabel(c_, CGD_Label().GetCaption(), at.x, at.y, at.z);
            case ToolAnnotation::Marker: return AnnotationActions::AddMarker(c_, at.x, at.y, at.z);
            case ToolAnnotation::Region:
            case ToolAnnotation::RubberBand:
                return AnnotationActions::AddRegion(c_, at.x, at.y, at.z, at.x, at.y, at.z,
                                                    kind == ToolAnnotation::RubberBand);
            case ToolAnnotation::Tracer: return AnnotationActions::AddTracer(c_);
            case ToolAnnotation::DiffTracer: return AnnotationActions::AddDiffTracer(c_, at.x, at.y, at.z);
        }
        return nullptr;
    }

    void Move(CGD_Annotation* annotation, const Point3& to) override {
        if (!Listed(annotation)) return;
        // The tracers follow every mouse move: their read-out and a redraw,
        // no layout.
        if (auto* tracer = dynamic_cast<CGD_Tracer*>(annotation)) {
            tracer->SetPosition(to.x, to.y, to.z);
            c_.Redraw(false);
        } else if (auto* diff = dynamic_cast<CGD_DiffTracer*>(annotation)) {
            diff->SetCurrent(to.x, to.y, to.z);
            c_.Redraw(false);
        } else {
            AnnotationActions::Move(c_, *annotation, to.x, to.y, to.z);
        }
    }

    void Span(CGD_Annotation* annotation, const Point3& corner) override {
        auto* region = dynamic_cast<CGD_Region*>(annotation);
        if (!region || !Listed(annotation)) return;
        region->MoveCorners(region->GetX(), region->GetY(), region->GetZ(), corner.x, corner.y, corner.z);
        region->UpdateInfoWindow();
        c_.Redraw(false);
    }

    bool PositionOf(CGD_Annotation* annotation, Point3* at) override {
        if (!Listed(annotation)) return false;
        *at = {annotation->GetX(), annotation->GetY(), annotation->GetZ()};
        return true;
    }

    void Delete(CGD_Annotation* annotation) override {
        if (Listed(annotation)) AnnotationActions::Delete(c_, annotation);
    }

    // A region drawn with the Region tool raises DataSelect, where enabled.
    void Finished(CGD_Annotation* annotation) override {
        if (auto* region = dynamic_cast<CGD_Region*>(annotation); region && Listed(annotation))
            region->NotifySelection();
    }

    CGD_Annotation* HitTest(PixelPoint pixel) override { return c_.annotations_->HitTest(pixel.x, pixel.y); }
    CGD_Annotation* Next(CGD_Annotation* after) override { return c_.annotations_->Next(after); }

    void SetSelected(CGD_Annotation* annotation, bool selected) override {
        if (selected)
            AnnotationActions::Select(c_, annotation);
        else if (c_.annotations_->Selected() == annotation)
            AnnotationActions::Select(c_, nullptr);
    }

    CGD_Annotation* Selected() override { return c_.annotations_->Selected(); }
    bool ShowProperties(CGD_Annotation* annotation) override {
        return Listed(annotation) && annotation->ShowProperties();
    }
    void PassKey(CGD_Annotation* annotation, int32_t key) override {
        if (Listed(annotation)) annotation->OnKey(static_cast<uint32_t>(key));
    }
    void SetFixedPoint(CGD_Annotation* annotation, const Point3& at) override {
        if (auto* diff = dynamic_cast<CGD_DiffTracer*>(annotation); diff && Listed(annotation)) {
            diff->SetPosition(at.x, at.y, at.z);
            c_.Redraw(false);
        }
    }

private:
    static double Clamp(double v, double lo, double hi) { return lo > hi ? 0.0 : std::clamp(v, lo, hi); }
    // A tool may hold an annotation the host has deleted meanwhile.
    bool Listed(CGD_Annotation* annotation) const {
        return annotation && c_.annotations_ && c_.annotations_->Contains(annotation);
    }
    // Ranges come in scale order; the tools work on ascending ones.
    static bool Ordered(DataRect* r) {
        if (r->xMin > r->xMax) std::swap(r->xMin, r->xMax);
        if (r->yMin > r->yMax) std::swap(r->yMin, r->yMax);
        return std::isfinite(r->xMin) && std::isfinite(r->xMax) && std::isfinite(r->yMin) && std::isfinite(r->yMax);
    }

    CUI_VexplotCtrl& c_;
};

void CUI_VexplotCtrl::ToolContextDeleter::operator()(ToolContext* context) const { delete context; }

// -- commands --

void CUI_VexplotCtrl::AddToolCommands() {
    for (int32_t command : {cmd::kSelect, cmd::kPan, cmd::kZoom, cmd::kLabel, cmd::kMarker, cmd::kTracer,
                            cmd::kDiffTracer, cmd::kRegion}) {
        commands_.Add(command,
                      [this, command] {
                          return CommandTable::EntryState{toolContext_ != nullptr, ActiveToolCommand() == command};
                      },
                      [this, command] { ChooseTool(command); });
    }
    commands_.Add(cmd::kGrid, [this] { return CommandTable::EntryState{true, settings_.gridFlag}; },
                  [this] {
                      settings_.gridFlag = !settings_.gridFlag;
                      if (IGraphView3D* view = GetView3D()) view->SetGridVisible(settings_.gridFlag);
                      ApplyAllAxes();
                      SetModified();
                      Redraw(false);
                  });
    commands_.Add(cmd::kMesh, [this] { return CommandTable::EntryState{GetView3D() != nullptr, showMesh_}; },
                  [this] {
                      showMesh_ = !showMesh_;
                      if (IGraphView3D* view = GetView3D()) view->SetMeshVisible(showMesh_);
                      Redraw(false);
                  });
    // Tab and Enter act on the selection whichever tool is active, as the
    // Select tool does with those keys.
    auto selectKey = [this](int32_t key) {
        return [this, key] {
            if (!toolContext_) return;
            if (tool_ && tool_->Command() == cmd::kSelect) {
                tool_->OnKey(key);
                return;
            }
            auto select = CTool::Make(cmd::kSelect, *toolContext_);
            select->OnKey(key);
        };
    };
    commands_.Add(cmd::kSelectNext, {}, selectKey(vk::kTab));
    commands_.Add(cmd::kObjectProperties, {}, selectKey(vk::kReturn));
}

int32_t CUI_VexplotCtrl::ActiveToolCommand() const { return tool_ ? tool_->Command() : 0; }

void CUI_VexplotCtrl::ChooseTool(int32_t command) {
    if (!toolContext_ || !IsToolCommand(command)) return;
    if (tool_) tool_->Deactivate();
    tool_ = CTool::Make(command, *toolContext_);
    if (toolMenu_) toolMenu_->SetCurrent(command);
    tool_->Activate();
    SetCursorShape(static_cast<int32_t>(tool_->Cursor()));
}

MenuModel CUI_VexplotCtrl::ToolMenu() {
    if (!toolMenu_) return {};
    for (const MenuItem& item : MenuModel(toolMenu_->Menu()))
        toolMenu_->SetEnabled(item.command, CommandState(item.command).enabled);
    return toolMenu_->Menu();
}

// -- set-up --

void CUI_VexplotCtrl::CreateToolsButton() {
    toolMenu_ = std::make_unique<ToolIconMenu>(ToolIconMenu::StandardToolbar(), kToolMenuColumns);
    toolsButton_ = std::make_unique<CToolsCtrl>();
    const PixelRect rect{kToolsButtonLeft, settings_.menuControlTop, kToolsButtonLeft + kToolsButtonSize,
                         settings_.menuControlTop + kToolsButtonSize};
    if (!toolsButton_->Create(*site_, WindowRole::ToolsButton, Window(WindowRole::Control), rect, cmd::kSelect,
                              "T"))
        return;
    toolsButton_->SetOwnPopup([this] { return ToolMenu(); });
    toolsButton_->SetOwner({nullptr, [this](int32_t command) { OnCommand(command); }, nullptr});
    windows_[static_cast<size_t>(WindowRole::ToolsButton)] = toolsButton_->Window();
    site_->ShowWindow(toolsButton_->Window(), ReadVisibility().title);
}

void CUI_VexplotCtrl::SetUpTools() {
    toolContext_.reset(new ToolContext(*this));
    CreateToolsButton();
    if (info_) positionSection_ = info_->AddSection(1, kNoPosition, 0);
    ChooseTool(cmd::kSelect);
}

void CUI_VexplotCtrl::TearDownTools() {
    if (tool_) tool_->Deactivate();
    tool_.reset();
    if (info_ && positionSection_) info_->RemoveSection(positionSection_);
    positionSection_ = 0;
    toolsButton_.reset();
    windows_[static_cast<size_t>(WindowRole::ToolsButton)] = 0;
    toolMenu_.reset();
    toolContext_.reset();
}

void CUI_VexplotCtrl::UpdateScaleEntries() {
    for (AxisId id : {AxisId::X, AxisId::Y})
        if (CGD_Axis* axis = GetAxis(id)) axis->UpdateScaleEntry();
}

// -- input --

void CUI_VexplotCtrl::ToolMouse(const MouseEvent& event) {
    if (event.kind == MouseEvent::Kind::Wheel) {
        if (!GetView3D() || !Is3DViewCurrent()) return;
        ZoomBy(std::pow(1.0 - UsableStep(settings_.camTranslation[2]) / 3.0, event.wheelDelta / 120.0));
        UpdateScaleEntries();
        return;
    }
    if (tool_) tool_->OnMouse(event);
}

namespace {

MouseEvent Synthetic(MouseEvent::Kind kind, int32_t x, int32_t y, bool held) {
    MouseEvent event;
    event.kind = kind;
    event.button = kind == MouseEvent::Kind::Move ? MouseEvent::Button::None : MouseEvent::Button::Left;
    event.buttons = held ? 1u : 0u;
    event.point = PixelPoint{x, y};
    return event;
}

}  // namespace

void CUI_VexplotCtrl::MouseMove(int32_t x, int32_t y) {
    OnMouse(currentView_, Synthetic(MouseEvent::Kind::Move, x, y, tool_ && tool_->Dragging()));
}

void CUI_VexplotCtrl::MouseDown(int32_t x, int32_t y) {
    OnMouse(currentView_, Synthetic(MouseEvent::Kind::Press, x, y, true));
}

void CUI_VexplotCtrl::MouseUp(int32_t x, int32_t y) {
    OnMouse(currentView_, Synthetic(MouseEvent::Kind::Release, x, y, false));
}

void CUI_VexplotCtrl::DoubleClick(int32_t x, int32_t y) {
    OnMouse(currentView_, Synthetic(MouseEvent::Kind::DoubleClick, x, y, true));
    OnMouse(currentView_, Synthetic(MouseEvent::Kind::Release, x, y, false));
}

void CUI_VexplotCtrl::MouseLeave() {
    MouseEvent leave;
    leave.kind = MouseEvent::Kind::Leave;
    OnMouse(currentView_, leave);
}

void CUI_VexplotCtrl::KeyPress(int32_t key) { OnKey(currentView_, KeyEvent{key, 0}); }

std::vector<std::string> CUI_VexplotCtrl::InfoLines() const {
    std::vector<std::string> lines;
    if (!info_) return lines;
    for (const InfoEntry* entry : info_->Entries().VisibleEntries()) lines.push_back(entry->text);
    return lines;
}

std::string CUI_VexplotCtrl::StatusText() const {
    return site_ && HasWindow(WindowRole::StatusBar) ? site_->GetWindowText(Window(WindowRole::StatusBar))
                                                     : std::string();
}

}  // namespace vexplot
