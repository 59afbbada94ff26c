// The graph object's plot-file record (see CGD_GraphObject::Serialize).
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "com/ComError.h"
#include "model/CArchive.h"
#include "model/CGD_GraphObject.h"
#include "model/IViewHost.h"

namespace vexplot {

namespace {

// The first layout begins with kBeginMarker; the second, which adds the
// drawing settings, with kBeginMarker2, so a reader knows which it holds
// before it reads a field.
constexpr std::string_view kBeginMarker = "GraphObjectBegin";
constexpr std::string_view kBeginMarker2 = "GraphObjectBegin:2";
constexpr std::string_view kEndMarker = "GraphObjectEnd";

// What one record holds, read whole before anything is applied.
struct GraphRecord {
    CGD_GraphObject::DisplayFlags flags;
    CGD_GraphObject::Geometry geometry;
    uint32_t contrastColor = 0;
    int32_t oneDimensionalView = 0;
    std::optional<CGD_GraphObject::DrawingSettings> drawing;  // second layout only
    ComPtr<IUnknown> data;
};

int32_t ReadEnumeration(CArchive& archive, std::string_view what, int32_t low, int32_t high) {
    const int32_t value = archive.ReadInt32(what);
    if (value < low || value > high)
        archive.Fail(what, "is " + std::to_string(value) + ", not " + std::to_string(low) + " to " +
                               std::to_string(high));
    return value;
}

CGD_GraphObject::DrawingSettings ReadDrawing(CArchive& archive) {
    CGD_GraphObject::DrawingSettings d;
    d.style = static_cast<GraphStyle>(ReadEnumeration(archive, "drawing style", 0, 4));
    d.image = archive.ReadBool("image flag");
    d.shading = static_cast<ShadingMode>(ReadEnumeration(archive, "shading mode", 0, 1));
    d.lowResolution = archive.ReadBool("low resolution flag");
    d.plotStyle = ReadEnumeration(archive, "section plot style", 0, 3);
    d.pointStyle = static_cast<PointStyle>(ReadEnumeration(archive, "section point style", 0, 6));
    d.curveColor = archive.ReadColor("section curve colour");
    d.secantPosition = archive.ReadDouble("section position");
    if (!std::isfinite(d.secantPosition)) archive.Fail("section position", "is not a finite number");
    return d;
}

void WriteDrawing(CArchive& archive, const CGD_GraphObject::DrawingSettings& d) {
    archive.WriteInt32(static_cast<int32_t>(d.style));
    archive.WriteBool(d.image);
    archive.WriteInt32(static_cast<int32_t>(d.shading));
    archive.WriteBool(d.lowResolution);
    archive.WriteInt32(d.plotStyle);
    archive.WriteInt32(static_cast<int32_t>(d.pointStyle));
    archive.WriteColor(d.curveColor);
    archive.WriteDouble(d.secantPosition);
}

void RequireNotNegative(CArchive& archive, int32_t value, std::string_view what) {
    if (value < 0) archive.Fail(what, "is negative (" + std::to_string(value) + ")");
}

// The shown part runs from `first` through first + count - 1. The count may
// be 0 or below (SetShownRange keeps a range whose end maps before its
// start), but both ends must be grid indices; an empty grid has the one
// index 0, which is where an unbounded range maps. The whole grid (first 0,
// count = size) always fits.
void RequireShownPartFits(CArchive& archive, int32_t first, int32_t count, int32_t size, std::string_view what) {
    if (first == 0 && count == size) return;
    const int64_t last = int64_t{first} + count - 1;
    const int64_t top = std::max(size, 1) - 1;
    if (first >= 0 && first <= top && last >= 0 && last <= top) return;
    archive.Fail(what, "first index " + std::to_string(first) + " and count " + std::to_string(count) +
                           " reach outside a grid of " + std::to_string(size));
}

void ReadGeometry(CArchive& archive, CGD_GraphObject::Geometry& g) {
    g.yCount = archive.ReadInt32("Y count");
    g.xCount = archive.ReadInt32("X count");
    g.shownYCount = archive.ReadInt32("shown Y count");
    g.shownXCount = archive.ReadInt32("shown X count");
    g.firstShownX = archive.ReadInt32("first shown X index");
    g.firstShownY = archive.ReadInt32("first shown Y index");
    g.previewYCount = archive.ReadInt32("preview Y count");
    g.previewXCount = archive.ReadInt32("preview X count");
    g.previewXStep = archive.ReadInt32("preview X step");
    g.previewYStep = archive.ReadInt32("preview Y step");

    RequireNotNegative(archive, g.yCount, "Y count");
    RequireNotNegative(archive, g.xCount, "X count");
    RequireNotNegative(archive, g.previewYCount, "preview Y count");
    RequireNotNegative(archive, g.previewXCount, "preview X count");
    RequireNotNegative(archive, g.previewXStep, "preview X step");
    RequireNotNegative(archive, g.previewYStep, "preview Y step");
    RequireShownPartFits(archive, g.firstShownX, g.shownXCount, g.xCount, "shown X part");
    RequireShownPartFits(archive, g.firstShownY, g.shownYCount, g.yCount, "shown Y part");
}

GraphRecord ReadRecord(CArchive& archive) {
    GraphRecord record;
    const std::string begin = archive.ReadString("graph object begin marker");
    if (begin != kBeginMarker && begin != kBeginMarker2)
        archive.Fail("graph object begin marker", "found \"" + begin + "\" instead");
    record.flags.visible = archive.ReadBool("visible flag");
    record.flags.data = archive.ReadBool("data flag");
    record.flags.usePreview = archive.ReadBool("use preview flag");
    record.flags.suppressDisplay = archive.ReadBool("display suppression flag");
    ReadGeometry(archive, record.geometry);
    record.contrastColor = archive.ReadColor("contrast colour");
    record.oneDimensionalView = archive.ReadInt32("one-dimensional view");
    if (record.oneDimensionalView < 0 || record.oneDimensionalView > 2)
        archive.Fail("one-dimensional view", "is " + std::to_string(record.oneDimensionalView) + ", not 0, 1 or 2");
    if (begin == kBeginMarker2) record.drawing = ReadDrawing(archive);
    record.data = archive.ReadObject("data object");
    archive.ExpectString(kEndMarker);
    return record;
}

int32_t ScaleLength(IGraphData* data, HRESULT (IGraphData::*get)(SafeArray*)) {
    SafeArray scale;
    ThrowIfFailed((data->*get)(&scale), IGraphData::kIid);
    return static_cast<int32_t>(std::min<size_t>(scale.ElementCount(), INT32_MAX));
}

// The record's grid sizes must be the embedded grid's: the shown part and
// the row access index by them.
void RequireSameGrid(CArchive& archive, const CGD_GraphObject::Geometry& g, const ComPtr<IUnknown>& object) {
    const ComPtr<IGraphData> data = object.As<IGraphData>();
    if (!data) archive.Fail("data object", "is not a data object (it has no IGraphData)");
    const int32_t xCount = ScaleLength(data.Get(), &IGraphData::GetXScale);
    const int32_t yCount = ScaleLength(data.Get(), &IGraphData::GetYScale);
    if (xCount == g.xCount && yCount == g.yCount) return;
    archive.Fail("data object", "holds " + std::to_string(xCount) + " x " + std::to_string(yCount) +
                                    " values (X by Y), but the record says " + std::to_string(g.xCount) + " x " +
                                    std::to_string(g.yCount));
}

}  // namespace

void CGD_GraphObject::Serialize(CArchive& archive) {
    if (archive.IsLoading()) {
        LoadRecord(archive, owner_);
        return;
    }
    archive.WriteString(kBeginMarker2);
    archive.WriteBool(flags_.visible);
    archive.WriteBool(flags_.data);
    archive.WriteBool(flags_.usePreview);
    archive.WriteBool(flags_.suppressDisplay);
    const Geometry& g = geometry_;
    for (int32_t value : {g.yCount, g.xCount, g.shownYCount, g.shownXCount, g.firstShownX, g.firstShownY,
                          g.previewYCount, g.previewXCount, g.previewXStep, g.previewYStep})
        archive.WriteInt32(value);
    archive.WriteColor(contrastColor_);
    archive.WriteInt32(oneDimensionalView_);
    WriteDrawing(archive, drawing_);
    archive.Flush();
    archive.WriteObject(data_.Get());
    archive.WriteString(kEndMarker);
}

bool CGD_GraphObject::LoadRecord(CArchive& archive, IViewHost* owner) {
    if (!owner) throw ComError(E_POINTER, IViewHost::kIid, "a graph object record is loaded for an owner");
    const GraphRecord record = ReadRecord(archive);
    if (!record.data) return false;
    RequireSameGrid(archive, record.geometry, record.data);

    Attach(record.data.Get(), owner, /*keepFullRange=*/true);
    RestoreRecord(record.flags, record.geometry, record.contrastColor);
    SetOneDimensionalView(record.oneDimensionalView);
    // A record of the first layout keeps the drawing the object has.
    if (record.drawing) drawing_ = *record.drawing;
    // The preview is derived state: made again by the rule binding uses.
    const int32_t factor = std::max(geometry_.xCount, geometry_.yCount) / 50;
    if (factor > 1) BuildPreview(factor);
    return true;
}

}  // namespace vexplot
