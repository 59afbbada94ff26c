// The control's properties: one generic get and put over PropertyTable,
// the method properties the control computes itself, and re-creating the
// engine when the Engine property changes.
#include <cstdio>
#include <optional>
#include <utility>

#include "com/ErrorInfo.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/PropertyTable.h"
#include "dataobject/IGraphData.h"
#include "settings/CRegistryKey.h"
#include "settings/NumberText.h"
#include "ui/CUIW_InfoWnd.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/LogFontRecord.h"

namespace vexplot {

namespace {

// Cells the 3-D view draws while it moves at normal quality: the view's
// own default, so that setting the quality back restores it.
constexpr uint32_t kMovingDetailBudget = 128 * 128;

// Pure black and pure white are the transparency keys of the info window's
// mask: text of either colour would vanish in transparent mode.
int32_t AwayFromTransparencyKeys(int32_t color) {
    if (color == 0) return 1;
    if (color == 0xFFFFFF) return 0xFEFEFE;
    return color;
}

}  // namespace

// -- the generic get and put --

HRESULT CUI_VexplotCtrl::GetProperty(DISPID id, Variant* value) {
    if (!value) return E_POINTER;
    const PropertyRow* row = PropertyTable::Find(id);
    if (!row) return DISP_E_MEMBERNOTFOUND;
    if (!row->IsMemberProperty()) return GetMethodProperty(*row, value);
    *value = row->slot.get(settings_);
    return S_OK;
}

Variant CUI_VexplotCtrl::GetProperty(DISPID id) {
    Variant value;
    if (FAILED(GetProperty(id, &value))) return Variant();
    return value;
}

HRESULT CUI_VexplotCtrl::PutProperty(DISPID id, const Variant& value) {
    const PropertyRow* row = PropertyTable::Find(id);
    if (!row) return DISP_E_MEMBERNOTFOUND;
    if (row->effect == PropertyEffect::Collection) {
        SetErrorInfo(IID_IDispatch, kTextSetNotSupported);
        return kErrorSetNotSupported;
    }
    Variant converted;
    if (const HRESULT hr = value.ChangeType(row->type, &converted); FAILED(hr)) return hr;
    if (!row->IsMemberProperty()) return PutMethodProperty(*row, converted);
    if (row->effect == PropertyEffect::InfoTextColor) converted = Variant(AwayFromTransparencyKeys(converted.I4()));
    row->slot.set(settings_, converted);
    if (row->effect == PropertyEffect::StoreOnly) return S_OK;
    WriteSetting(*row);
    ApplyProperty(*row);
    SetModified();
    return S_OK;
}

void CUI_VexplotCtrl::WriteSetting(const PropertyRow& row) {
    const char* group = PropertyTable::GroupName(row.group);
    if (!group || row.setting.empty()) return;
    CRegistryKey key(sink_, store_);
    if (!key.Open(group)) return;
    const Variant value = row.slot.get(settings_);
    switch (row.type) {
        case VT_BOOL: key.WriteInt(row.setting, value.BoolValue() ? 1 : 0); break;
        case VT_I2: key.WriteInt(row.setting, value.I2()); break;
        case VT_I4: key.WriteInt(row.setting, value.I4()); break;
        // "%f" in the C locale whatever the host's: the store is shared
        // with processes under other locales.
        case VT_R8: key.WriteString(row.setting, FormatFixed(value.R8())); break;
        case VT_BSTR: key.WriteString(row.setting, value.Bstr()); break;
        default: break;
    }
}

void CUI_VexplotCtrl::ApplyProperty(const PropertyRow& row) {
    switch (row.effect) {
        case PropertyEffect::Axis:
            ApplyAxis(static_cast<AxisId>(row.axis));
            // The colour bar's axis is styled by the Z settings.
            if (row.axis == 2) ApplyAxis(AxisId::Palette);
            Redraw(false);
            break;
        case PropertyEffect::ZDisplayMode:
            ApplyAxis(AxisId::Z);
            ApplyAxis(AxisId::Palette);
            if (IGraphView3D* view = GetView3D()) view->SetLogZ(settings_.axes[2].displayMode == 1);
            Redraw(false);
            break;
        case PropertyEffect::Background:
            if (IGraphDevice2D* device = GetDevice2D()) device->SetBackgroundColor(settings_.backgroundColor);
            if (IGraphView3D* view = GetView3D()) view->SetBackgroundColor(settings_.backgroundColor);
            LayoutAndRedraw();
            break;
        case PropertyEffect::LegendAutoHide:
            if (legend_) legend_->SetAutoHide(settings_.autoHideLegend, true);
            Redraw(true);
            break;
        case PropertyEffect::LegendFastHide:
            if (legend_) legend_->SetFastHide(settings_.fastHideLegend);
            break;
        case PropertyEffect::LegendMoveDirection:
            if (legend_) legend_->SetAnimationMode(settings_.moveDirection);
            break;
        case PropertyEffect::InfoTextColor:
            if (info_) info_->SetTextColor(settings_.info.textColor);
            break;
        case PropertyEffect::InfoBackColor:
            if (info_) info_->SetBackColor(settings_.info.backColor);
            break;
        case PropertyEffect::InfoItems:
            if (info_) info_->SetVisibilityMask(static_cast<int32_t>(settings_.info.itemBits));
            break;
        case PropertyEffect::InfoTransparent:
            if (info_) info_->SetTransparent(settings_.info.transparent);
            break;
        case PropertyEffect::InfoVisible:
            if (info_) info_->Show(settings_.info.visible);
            break;
        case PropertyEffect::Quality3D:
            ApplyQuality3D();
            LayoutAndRedrawIn3D();
            break;
        // The navigator and the mouse read the camera steps at each move.
        case PropertyEffect::CameraStep:
        case PropertyEffect::WriteOnly:
        default: break;
    }
}

void CUI_VexplotCtrl::ApplyQuality3D() {
    if (IGraphView3D* view = GetView3D()) view->SetDetailBudget(settings_.quality3D == 1 ? 0 : kMovingDetailBudget);
}

// -- method properties --

HRESULT CUI_VexplotCtrl::GetMethodProperty(const PropertyRow& row, Variant* value) {
    switch (row.effect) {
        case PropertyEffect::Engine: *value = Variant(GetGraphEngine()); return S_OK;
        case PropertyEffect::InfoFont: *value = Variant(GetInfoFont()); return S_OK;
        case PropertyEffect::WindowsVisible: *value = Variant(GetWindowsVisible()); return S_OK;
        case PropertyEffect::AxisLabel: *value = Variant(GetAxisLabel(static_cast<AxisId>(row.axis))); return S_OK;
        case PropertyEffect::Caption: *value = Variant(GetCaption()); return S_OK;
        case PropertyEffect::Collection: {
            const AnnotationKind kind = row.id == 607   ? AnnotationKind::Marker
                                        : row.id == 608 ? AnnotationKind::Region
                                                        : AnnotationKind::Label;
            *value = Variant(AnnotationCollection(kind));
            return S_OK;
        }
        default: return E_UNEXPECTED;
    }
}

HRESULT CUI_VexplotCtrl::PutMethodProperty(const PropertyRow& row, const Variant& value) {
    switch (row.effect) {
        case PropertyEffect::Engine: SetGraphEngine(value.Bstr()); break;
        case PropertyEffect::InfoFont: SetInfoFont(value.Bstr()); break;
        case PropertyEffect::WindowsVisible: SetWindowsVisible(value.I4()); break;
        case PropertyEffect::AxisLabel: SetAxisLabel(static_cast<AxisId>(row.axis), value.Bstr()); break;
        case PropertyEffect::Caption: SetCaption(value.Bstr()); break;
        default: return E_UNEXPECTED;
    }
    SetModified();
    return S_OK;
}

void CUI_VexplotCtrl::SetInfoFont(const std::string& face) {
    settings_.info.font.face = LogFontRecord::CutFace(face, LogFontRecord::kFaceBytes);
    CRegistryKey key(sink_, store_);
    if (key.Open("")) {
        const LogFontRecord::Bytes record = LogFontRecord::Encode(settings_.info.font);
        key.WriteBinary("Font", record.data(), record.size());
    }
    if (info_) info_->SetFont(settings_.info.font);
    SetModified();
}

std::string CUI_VexplotCtrl::GetAxisLabel(AxisId axis) const {
    const auto i = static_cast<size_t>(axis);
    return i < labels_.size() ? labels_[i] : std::string();
}

void CUI_VexplotCtrl::SetAxisLabel(AxisId axis, const std::string& text) {
    const auto i = static_cast<size_t>(axis);
    if (i >= labels_.size()) return;
    settings_.axes[i].label = text;
    {
        CRegistryKey key(sink_, store_);
        if (key.Open("")) key.WriteString(std::string(1, "XYZ"[i]) + "-Axis Label", text);
    }
    SetAxisLabelText(axis, text);
    // The control's own data object carries the label too, so that it
    // survives the data object's next change of labels.
    if (IGraphData* data = graphs_ ? graphs_->ExternalData() : nullptr) {
        if (axis == AxisId::X) data->PutXLabel(text);
        else if (axis == AxisId::Y) data->PutYLabel(text);
        else data->PutZLabel(text);
    }
    SetModified();
}

// -- the engine --

void CUI_VexplotCtrl::SetGraphEngine(const std::string& name) {
    std::string clsid;
    {
        CRegistryKey list(sink_, store_);
        if (!name.empty() && list.Open("Engine")) clsid = list.ReadString(name);
    }
    {
        CRegistryKey root(sink_, store_);
        if (!root.Open("")) return;
        // An unknown name changes nothing: "Engine" and "EngineName" keep
        // naming the same engine.
        if (!clsid.empty()) {
            root.WriteString("Engine", clsid);
            root.WriteString("EngineName", name);
        }
        settings_.graphEngine = root.ReadString("EngineName");
    }
    if (site_ && HasWindow(WindowRole::Control)) RecreateEngine();
    SetModified();
}

void CUI_VexplotCtrl::RecreateEngine() {
    if (!site_ || !HasWindow(WindowRole::Control)) return;
    std::optional<std::pair<CameraVector, CameraVector>> camera;
    if (IGraphView3D* view = GetView3D()) {
        CameraVector position{};
        CameraVector center{};
        if (view->GetCameraPosition(&position) == S_OK && view->GetCameraCenter(&center) == S_OK)
            camera.emplace(position, center);
    }
    // Everything that holds engine interfaces lets go before the engine.
    if (graphs_)
        for (int32_t i = 0; i < graphs_->Count(); ++i) {
            CGD_GraphObject* graph = graphs_->At(i);
            Guarded([graph] { graph->SetEngine(nullptr); });
        }
    for (auto& axis : axes_)
        if (axis) axis->SetView(nullptr);
    annotations_->ReleaseEngine();
    if (engine_) engine_->Release();
    engine_.reset();
    const int32_t mode = viewMode_;
    if (currentView_) site_->ShowWindow(currentView_, false);
    currentView_ = 0;
    try {
        CreateEngine();
    } catch (const EngineStartError&) {
        // The user has been told; the control stays without a plot.
        engine_.reset();
        return;
    }
    for (auto& axis : axes_)
        if (axis) axis->SetView(GetView3D());
    AttachAnnotations();
    ApplyQuality3D();
    ApplyPalette();
    ResendGraphObjects();
    ApplyAllAxes();
    SetViewMode(mode == 1 && GetView3D() ? 1 : 0);
    if (IGraphView3D* view = GetView3D(); view && camera) {
        view->SetCameraPosition(camera->first);
        view->SetCameraCenter(camera->second);
    }
    RedrawPlot();  // the legend's check boxes to the new layers
    UpdateLegend();
    LayoutAndRedraw();
}

// The active graph object goes last: the 2-D device shows the grid it was
// given last.
void CUI_VexplotCtrl::ResendGraphObjects() {
    if (!graphs_) return;
    IGraphEngine* engine = GetEngine();
    auto resend = [this, engine](CGD_GraphObject* graph) {
        Guarded([graph, engine] {
            graph->SetEngine(engine);
            graph->UpdateEngine();
        });
    };
    CGD_GraphObject* active = Active();
    for (int32_t i = 0; i < graphs_->Count(); ++i)
        if (graphs_->At(i) != active) resend(graphs_->At(i));
    if (active) resend(active);
}

}  // namespace vexplot
