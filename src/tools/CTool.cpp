#include "tools/CTool.h"

#include <array>
#include <utility>

#include "tools/CAnnotationTool.h"
#include "tools/CPanTool.h"
#include "tools/CSelectTool.h"
#include "tools/CTracerTool.h"
#include "tools/CZoomTool.h"
#include "tools/ToolIconMenu.h"

namespace vexplot {

std::string CTool::HelpString(uint32_t id) {
    static constexpr std::array<std::pair<uint32_t, const char*>, 6> kTexts{{
        {kHelpTracer, "<LDClick> Add Marker"},
        {kHelpDiffTracer, "<LDClick> Open Properties, <LClick> Set Fixed Position"},
        {kHelpMarker, "<LDClick> Open Properties, <LClick>+<MMove> Move Marker"},
        {kHelpSelect,
         "<LClick> Select Obj, <LDClick>or<Enter> Open properties for selected Obj, <LClick>+<MMove> Move selected "
         "Obj, <Del> Delete selected Obj, <Tab> Next Obj"},
        {kHelpZoom, "<LClick>+<MMove> - Zoom selected, <+> - Zoom In, <-> - Zoom Out, <0> - Zoom to all"},
        {kHelpPan, "<LClick>+<MMove> - Pan graph"},
    }};
    for (const auto& [key, text] : kTexts)
        if (key == id) return text;
    return {};
}

std::unique_ptr<CTool> CTool::Make(int32_t command, IToolContext& context) {
    switch (command) {
        case ToolIconMenu::kSelect: return std::make_unique<CSelectTool>(context);
        case ToolIconMenu::kPan: return std::make_unique<CPanTool>(context);
        case ToolIconMenu::kZoom: return std::make_unique<CZoomTool>(context);
        case ToolIconMenu::kLabel:
            return std::make_unique<CAnnotationTool>(context, command, ToolAnnotation::Label);
        case ToolIconMenu::kMarker:
            return std::make_unique<CAnnotationTool>(context, command, ToolAnnotation::Marker);
        case ToolIconMenu::kRegion:
            return std::make_unique<CAnnotationTool>(context, command, ToolAnnotation::Region);
        case ToolIconMenu::kTracer: return std::make_unique<CTracerTool>(context, false);
        case ToolIconMenu::kDifferenceTracer: return std::make_unique<CTracerTool>(context, true);
        default: return nullptr;
    }
}

void CTool::Activate() {}

void CTool::Deactivate() {
    if (dragging_) Cancel();
    dragging_ = false;
}

// The common handler: the position read-out on every move, then the
// tool's own handler.
void CTool::OnMouse(const MouseEvent& event) {
    const PixelPoint pixel = event.point;
    // The picture under the cursor may have changed since the last event.
    if (event.kind != MouseEvent::Kind::Move) probed_.reset();
    switch (event.kind) {
        case MouseEvent::Kind::Leave: context_.ShowPosition(nullptr); return;
        case MouseEvent::Kind::Wheel: return;
        case MouseEvent::Kind::Move:
            ShowPosition(pixel, (event.buttons & 1) != 0);
            if (context_.HasData()) MouseMove(pixel, event);
            break;
        case MouseEvent::Kind::Press:
            if (context_.HasData()) ButtonDown(pixel, event);
            break;
        case MouseEvent::Kind::Release:
            if (context_.HasData()) ButtonUp(pixel);
            break;
        case MouseEvent::Kind::DoubleClick:
            if (context_.HasData() && event.button == MouseEvent::Button::Left) DoubleClick(pixel);
            break;
    }
    last_ = pixel;
}

bool CTool::PointAt(PixelPoint pixel, Point3* point) {
    if (!probed_ || !(*probed_ == pixel)) {
        Point3 found{};
        probed_ = pixel;
        probe_.reset();
        if (context_.SurfacePoint(pixel, &found)) probe_ = found;
    }
    if (probe_) *point = *probe_;
    return probe_.has_value();
}

void CTool::ShowPosition(PixelPoint pixel, bool select) {
    Point3 point{};
    if (!PointAt(pixel, &point)) {
        context_.ShowPosition(nullptr);
        context_.SetCursor(CursorShape::Arrow);
        return;
    }
    context_.ShowPosition(&point);
    context_.DataCellMouseOver(pixel, point, select);
    context_.SetCursor(Cursor());
}

void CTool::OnKey(int32_t key) {
    if (key == vk::kEscape) {
        if (dragging_) Cancel();
        dragging_ = false;
        return;
    }
    if (context_.HasData()) Key(key);
}

}  // namespace vexplot
