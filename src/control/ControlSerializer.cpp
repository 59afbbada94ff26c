#include "control/ControlSerializer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "control/CUI_VexplotCtrl.h"
#include "model/CArchive.h"
#include "model/CGD_Axis.h"
#include "model/CGD_ObjectList.h"
#include "annotations/CGD_AnnotationList.h"
#include "model/GraphObjectListRecord.h"
#include "tools/CToolsCtrl.h"
#include "ui/CUIW_InfoWnd.h"
#include "ui/CUIW_LegendWindow.h"

namespace vexplot {

namespace {

// The largest extent a loaded header may give the control; anything else
// (including the 0 x 0 of a control saved before it had a window) leaves
// the control's size alone.
constexpr int32_t kMaxExtent = 16384;
// The most pixels a loaded extent may ask for (4096 x 4096): a few bytes in
// a file must not make the host allocate gigabytes of picture buffers.
constexpr int64_t kMaxPlotPixels = int64_t{4096} * 4096;

// A stored extent within kMaxPlotPixels, scaled down in proportion when it
// asks for more.
std::pair<int32_t, int32_t> FitPlotExtent(int32_t width, int32_t height) {
    const int64_t pixels = int64_t{width} * height;
    if (pixels <= kMaxPlotPixels) return {width, height};
    const double scale = std::sqrt(static_cast<double>(kMaxPlotPixels) / static_cast<double>(pixels));
    return {std::max(1, static_cast<int32_t>(width * scale)), std::max(1, static_cast<int32_t>(height * scale))};
}

// The highest major version taken for a real plot of a later program.
constexpr uint32_t kLastPlausibleMajor = 255;

// The info window's item bits in the order the stream holds their flags:
// diff tracer, region, tracer, marker, zoom (position comes last, after
// the transparency and visibility flags).
constexpr std::array<uint32_t, 5> kInfoItemOrder{8, 16, 4, 2, 32};
constexpr uint32_t kInfoPosition = 1;
constexpr uint32_t kInfoItemMask = 63;

constexpr std::array<const char*, 3> kAxisNames{"X", "Y", "Z"};

std::string Item(size_t axis, const char* what) { return std::string(kAxisNames[axis]) + " axis " + what; }

double ReadFinite(CArchive& archive, const std::string& what) {
    const double value = archive.ReadDouble(what);
    if (!std::isfinite(value)) archive.Fail(what, "is not a finite number");
    return value;
}

}  // namespace

// What a load has read so far, for the one application at its end.
struct ControlSerializer::Loaded {
    bool settings = false;
    bool palette = false;
    bool graphs = false;
    std::vector<int32_t> oldLayers;  // of the graph objects a loaded list replaced
    struct Camera {
        CameraVector position;
        CameraVector center;
        double scale;
    };
    std::optional<Camera> camera;
    std::optional<std::string> caption;
};

// -- the two directions --

void ControlSerializer::Store(CArchive& archive, bool whole) {
    StoreHeader(archive);
    if (!whole) return;
    StoreSettings(archive);
    StoreRecords(archive);
    StoreCamera(archive);
}

void ControlSerializer::Load(CArchive& archive, bool whole) {
    Loaded loaded;
    try {
        LoadHeader(archive, loaded);
        if (whole) {
            LoadSettings(archive, loaded);
            LoadRecords(archive, loaded);
            LoadCamera(archive, loaded);
        }
    } catch (...) {
        // What was read whole stays; the control is left consistent with it.
        ApplyLoaded(loaded);
        throw;
    }
    ApplyLoaded(loaded);
}

// -- header --

void ControlSerializer::StoreHeader(CArchive& archive) {
    const CUI_VexplotCtrl& c = control_;
    archive.WriteUInt32(kVersion);
    archive.WriteInt32(c.rect_.right - c.rect_.left);
    archive.WriteInt32(c.rect_.bottom - c.rect_.top);
    archive.WriteString(c.GetCaption());
}

ControlSerializer::Header ControlSerializer::ReadHeader(CArchive& archive) {
    Header h;
    h.version = archive.ReadUInt32("header version");
    const std::string text = std::to_string(h.version >> 16) + "." + std::to_string(h.version & 0xFFFF);
    const std::string ours = std::to_string(kVersion >> 16) + "." + std::to_string(kVersion & 0xFFFF);
    // A later minor version, or a major version a little above ours, is a
    // plot from a newer program; other numbers are not a plot at all.
    const uint32_t major = h.version >> 16;
    const bool newer = h.version > kVersion && major >= kVersion >> 16 && major <= kLastPlausibleMajor;
    if (newer)
        archive.Fail("header version", "is " + text + ": the file was written by a newer version of Vexplot, and "
                                       "this one reads versions up to " + ours);
    if (major != kVersion >> 16) archive.Fail("header version", "is " + text + ", not 1.x");
    h.width = archive.ReadInt32("control width");
    h.height = archive.ReadInt32("control height");
    h.caption = archive.ReadString("caption");
    return h;
}

void ControlSerializer::LoadHeader(CArchive& archive, Loaded& loaded) {
    const auto [version, width, height, caption] = ReadHeader(archive);
    CUI_VexplotCtrl& c = control_;
    loaded.caption = caption;
    const bool sized = width > 0 && height > 0 && width <= kMaxExtent && height <= kMaxExtent;
    if (!sized || !c.site_ || !c.HasWindow(WindowRole::Control)) return;
    const auto [w, h] = FitPlotExtent(width, height);
    PixelRect rect = c.rect_;
    rect.right = rect.left + w;
    rect.bottom = rect.top + h;
    if (rect.right == c.rect_.right && rect.bottom == c.rect_.bottom) return;
    // The stored extent is the size the control asks its host for.
    c.site_->MoveWindow(c.Window(WindowRole::Control), rect);
    c.rect_ = rect;
}

// -- settings and the visibility record --

void ControlSerializer::StoreSettings(CArchive& archive) {
    CUI_VexplotCtrl& c = control_;
    const ControlSettings& s = c.settings_;
    archive.WriteDouble(kFormatMark);
    archive.WriteInt32(c.viewMode_);
    archive.WriteColor(s.backgroundColor);
    archive.WriteString(c.EngineName());
    archive.WriteBool(s.autoHideLegend);
    archive.WriteBool(s.childInfoWindow);
    archive.WriteBool(s.showToolTips);
    for (const ControlSettings::Axis& a : s.axes) {
        archive.WriteString(a.label);
        archive.WriteBool(a.majorGrid);
        archive.WriteBool(a.minorGrid);
        archive.WriteColor(a.numberColor);
        archive.WriteColor(a.majorGridColor);
        archive.WriteColor(a.minorGridColor);
        archive.WriteInt16(a.majorTicks);
        archive.WriteInt16(a.minorTicks);
        archive.WriteInt16(a.scaleFormat);
        archive.WriteInt16(a.displayMode);
    }
    archive.WriteColor(s.info.textColor);
    archive.WriteColor(s.info.backColor);
    for (uint32_t bit : kInfoItemOrder) archive.WriteBool((s.info.itemBits & bit) != 0);
    archive.WriteBool(s.info.transparent);
    archive.WriteBool(s.info.visible);
    archive.WriteBool((s.info.itemBits & kInfoPosition) != 0);
    archive.WriteString(s.info.font.face);
    archive.WriteInt32(s.info.font.height);
    for (double step : s.camTranslation) archive.WriteDouble(step);
    for (double step : s.camRotation) archive.WriteDouble(step);
    archive.WriteInt16(s.quality3D);
    archive.WriteString(s.graphEngine);
    archive.WriteBool(s.dataFlag);
    archive.WriteBool(s.fastHideLegend);
    archive.WriteInt32(s.moveDirection);
    archive.WriteBool(s.fixedAspectRatio);

    const CUI_VexplotCtrl::WindowVisibility v = c.ReadVisibility();
    for (bool flag : {v.title, v.status, v.info, v.legend, v.navigator}) archive.WriteBool(flag);
}

// Reads into a copy of the settings, which replaces the control's only
// once the whole group, visibility record included, has been read.
void ControlSerializer::LoadSettings(CArchive& archive, Loaded& loaded) {
    CUI_VexplotCtrl& c = control_;
    ControlSettings s = c.settings_;
    CUI_VexplotCtrl::WindowVisibility v;
    ReadSettings(archive, s, v);

    c.settings_ = std::move(s);
    for (size_t i = 0; i < c.labels_.size(); ++i) c.labels_[i] = c.settings_.axes[i].label;
    c.visibility_ = v;
    loaded.settings = true;
    // Before the window blocks, which then have the last word on their windows.
    ApplySettings();
}

void ControlSerializer::ReadSettings(CArchive& archive, ControlSettings& s, CUI_VexplotCtrl::WindowVisibility& v) {
    archive.ReadDouble("format mark");
    archive.ReadInt32("view mode");
    s.backgroundColor = archive.ReadColor("background colour");
    archive.ReadString("engine name");
    s.autoHideLegend = archive.ReadBool("legend auto hide");
    s.childInfoWindow = archive.ReadBool("child info window");
    s.showToolTips = archive.ReadBool("tool tips");
    for (size_t i = 0; i < s.axes.size(); ++i) {
        ControlSettings::Axis& a = s.axes[i];
        a.label = archive.ReadString(Item(i, "label"));
        a.majorGrid = archive.ReadBool(Item(i, "major grid"));
        a.minorGrid = archive.ReadBool(Item(i, "minor grid"));
        a.numberColor = archive.ReadColor(Item(i, "colour"));
        a.majorGridColor = archive.ReadColor(Item(i, "major grid colour"));
        a.minorGridColor = archive.ReadColor(Item(i, "minor grid colour"));
        a.majorTicks = archive.ReadInt16(Item(i, "major ticks"));
        a.minorTicks = archive.ReadInt16(Item(i, "minor ticks"));
        // Kept as stored, as the property keeps it; the axis brings an
        // unknown format to Decimal where it formats.
        a.scaleFormat = archive.ReadInt16(Item(i, "scale format"));
        a.displayMode = archive.ReadInt16(Item(i, "display mode"));
    }
    s.info.textColor = archive.ReadColor("info text colour");
    s.info.backColor = archive.ReadColor("info background colour");
    uint32_t items = s.info.itemBits & ~kInfoItemMask;
    for (uint32_t bit : kInfoItemOrder)
        if (archive.ReadBool("info item flag")) items |= bit;
    s.info.transparent = archive.ReadBool("info transparency");
    s.info.visible = archive.ReadBool("info visibility");
    if (archive.ReadBool("info position flag")) items |= kInfoPosition;
    s.info.itemBits = items;
    const std::string face = archive.ReadString("info font");
    if (!face.empty()) s.info.font.face = face;
    s.info.font.height = archive.ReadInt32("info font height");
    for (double& step : s.camTranslation) step = ReadFinite(archive, "camera translation step");
    for (double& step : s.camRotation) step = ReadFinite(archive, "camera rotation step");
    s.quality3D = archive.ReadInt16("3-D quality");
    s.graphEngine = archive.ReadString("graph engine setting");
    s.dataFlag = archive.ReadBool("data flag");
    s.fastHideLegend = archive.ReadBool("legend fast hide");
    s.moveDirection = archive.ReadInt32("legend move direction");
    s.fixedAspectRatio = archive.ReadBool("fixed aspect ratio");

    for (bool* flag : {&v.title, &v.status, &v.info, &v.legend, &v.navigator})
        *flag = archive.ReadBool("window visibility");
}

// -- records --

void ControlSerializer::StoreRecords(CArchive& archive) {
    CUI_VexplotCtrl& c = control_;
    c.palette_.Serialize(archive);
    if (c.stateOperation_) GraphObjectListRecord::Write(*c.graphs_, archive);
    StoreObjectList(archive);
    if (c.info_) c.info_->Serialize(archive);
    if (c.legend_) c.legend_->Serialize(archive);
    if (c.legendButton_) c.legendButton_->Serialize(archive);
    if (c.menuButton_) c.menuButton_->Serialize(archive);
}

void ControlSerializer::LoadRecords(CArchive& archive, Loaded& loaded) {
    CUI_VexplotCtrl& c = control_;
    c.palette_.Serialize(archive);
    loaded.palette = true;
    if (c.stateOperation_) {
        std::vector<int32_t> layers;
        for (int32_t i = 0; i < c.graphs_->Count(); ++i) layers.push_back(c.graphs_->At(i)->Layer());
        GraphObjectListRecord::Read(*c.graphs_, archive, &c);
        loaded.graphs = true;
        loaded.oldLayers = std::move(layers);
    }
    LoadObjectList(archive);
    if (c.info_) c.info_->Serialize(archive);
    if (c.legend_) c.legend_->Serialize(archive);
    if (c.legendButton_) c.legendButton_->Serialize(archive);
    if (c.menuButton_) c.menuButton_->Serialize(archive);
}

// The axes are the control's own objects, not the list's: the list's
// record form is written from them, and a loaded list hands its axes'
// appearance to the control's axes of the same id.
void ControlSerializer::StoreObjectList(CArchive& archive) {
    std::vector<const CGD_Axis*> axes;
    for (const auto& axis : control_.axes_)
        if (axis) axes.push_back(axis.get());
    const std::vector<const CGD_Annotation*> annotations = control_.annotations_->Persistent();
    archive.WriteInt32(static_cast<int32_t>(axes.size() + annotations.size()));
    for (const CGD_Axis* axis : axes) archive.WriteObjectRecord(axis);
    for (const CGD_Annotation* annotation : annotations) archive.WriteObjectRecord(annotation);
}

void ControlSerializer::LoadObjectList(CArchive& archive) {
    RegisterAxisClass();
    RegisterAnnotationClasses();
    CGD_ObjectList list;
    list.Serialize(archive);
    CUI_VexplotCtrl& c = control_;
    TakeAnnotations(list);
    for (ArchiveObject* object : list.ObjectsOf(CGD_Axis::RuntimeClass().Name())) {
        const auto* loaded = static_cast<const CGD_Axis*>(object);
        CGD_Axis* own = c.GetAxis(loaded->Id());
        if (!own) continue;
        own->SetAppearance(loaded->GetAppearance());
        // The label the axis showed, which may be the data set's own.
        const auto index = static_cast<size_t>(loaded->Id());
        if (index < c.labels_.size()) c.labels_[index] = loaded->GetAppearance().label;
    }
}

// The loaded annotations replace the control's, in the file's order; each
// is bound to the engine and opens its info section as a new one does.
void ControlSerializer::TakeAnnotations(CGD_ObjectList& list) {
    CUI_VexplotCtrl& c = control_;
    c.annotations_->Clear();
    for (int32_t i = 0; i < list.Count();) {
        if (!dynamic_cast<CGD_Annotation*>(list.At(i))) {
            ++i;
            continue;
        }
        std::unique_ptr<ArchiveObject> object = list.Remove(list.At(i));
        std::unique_ptr<CGD_Annotation> annotation(static_cast<CGD_Annotation*>(object.release()));
        annotation->Attach(c.GetEngine(), nullptr, &c);
        annotation->AttachInfoWindow(c.GetInfoWindow());
        CGD_Annotation& added = c.annotations_->Add(std::move(annotation));
        if (added.IsSelected()) c.annotations_->Select(&added);
    }
}

// -- camera --

void ControlSerializer::StoreCamera(CArchive& archive) {
    IGraphView3D* view = control_.GetView3D();
    if (!view) return;
    CameraVector position{};
    CameraVector center{};
    double scale = 0.0;
    view->GetCameraPosition(&position);
    view->GetCameraCenter(&center);
    view->GetSceneScale(&scale);
    for (double value : {position.x, position.y, position.z, center.x, center.y, center.z, scale})
        archive.WriteDouble(value);
}

void ControlSerializer::LoadCamera(CArchive& archive, Loaded& loaded) {
    IGraphView3D* view = control_.GetView3D();
    // A control without a 3-D view writes no camera; such a stream ends here.
    if (!view || archive.Remaining() == 0) return;
    Loaded::Camera camera{};
    // The fourth component is the engine's own: it is kept.
    view->GetCameraPosition(&camera.position);
    view->GetCameraCenter(&camera.center);
    for (double* value : {&camera.position.x, &camera.position.y, &camera.position.z, &camera.center.x,
                          &camera.center.y, &camera.center.z, &camera.scale})
        *value = ReadFinite(archive, "camera");
    loaded.camera = camera;
}

// -- applying what was loaded --

void ControlSerializer::ApplyLoaded(const Loaded& loaded) {
    CUI_VexplotCtrl& c = control_;
    if (loaded.palette) c.ApplyPalette();
    if (loaded.graphs) ShowLoadedGraphs(loaded);
    c.ApplyAllAxes();
    // After the grids: a new grid may move the engine's camera.
    if (IGraphView3D* view = c.GetView3D(); view && loaded.camera) {
        view->SetCameraPosition(loaded.camera->position);
        view->SetCameraCenter(loaded.camera->center);
        if (loaded.camera->scale > 0.0) view->SetSceneScale(loaded.camera->scale);
    }
    c.UpdateLegend();
    // The legend shows the active graph's name in the title bar; the loaded
    // caption replaces it, as a host's caption does.
    if (loaded.caption) c.SetCaption(*loaded.caption);
    if (loaded.settings) c.ApplyVisibility(nullptr);
    c.RecalcLayout();
    c.Redraw(true);
}

void ControlSerializer::ApplySettings() {
    CUI_VexplotCtrl& c = control_;
    const ControlSettings& s = c.settings_;
    c.ApplyInfoSettings();
    if (c.info_) {
        // The stream holds the face and the height; the rest of the font stays.
        LogicalFont font = c.info_->Font();
        font.face = s.info.font.face;
        font.height = s.info.font.height;
        c.info_->SetFont(font);
    }
    if (c.legend_) {
        c.legend_->SetAnimationMode(s.moveDirection);
        c.legend_->SetFastHide(s.fastHideLegend);
        // The visibility record decides whether it shows now.
        c.legend_->SetAutoHide(s.autoHideLegend, false);
    }
    if (IGraphDevice2D* device = c.GetDevice2D()) device->SetBackgroundColor(s.backgroundColor);
    if (IGraphView3D* view = c.GetView3D()) {
        view->SetBackgroundColor(s.backgroundColor);
        // The loaded Z display mode and quality reach the view as their
        // properties would: dB ticks over linear heights would misstate
        // every value.
        view->SetLogZ(s.axes[2].displayMode == 1);
    }
    c.ApplyQuality3D();
}

void ControlSerializer::ShowLoadedGraphs(const Loaded& loaded) {
    CUI_VexplotCtrl& c = control_;
    if (IGraphView3D* view = c.GetView3D())
        for (int32_t layer : loaded.oldLayers)
            if (layer >= 0) view->RemoveLayer(layer);
    // In list order, so the active (last) object is the one the 2-D device
    // is left with.
    for (int32_t i = 0; i < c.graphs_->Count(); ++i) {
        CGD_GraphObject* graph = c.graphs_->At(i);
        graph->SetLayer(c.nextLayer_++);
        c.Guarded([graph] { graph->UpdateEngine(); });
    }
}

}  // namespace vexplot
