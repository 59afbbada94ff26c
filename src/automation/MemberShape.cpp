#include "automation/MemberShape.h"

#include "automation/CoAnnotationCollection.h"
#include "automation/CoLabel.h"
#include "automation/CoMarker.h"
#include "automation/CoRegion.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

namespace {

template <class Table>
std::vector<MemberShape> ShapesOf(const Table& table) {
    std::vector<MemberShape> shapes;
    for (const auto& m : table.Members()) shapes.push_back(MemberShape::Of(m));
    return shapes;
}

}  // namespace

std::vector<MemberShape> MemberShapes::Of(IDispatch& object) {
    if (dynamic_cast<CUI_VexplotCtrl*>(&object)) return ShapesOf(DispatchTable::Vexplot());
    if (dynamic_cast<CoMarker*>(&object)) return ShapesOf(CoMarker::Table());
    if (dynamic_cast<CoLabel*>(&object)) return ShapesOf(CoLabel::Table());
    if (dynamic_cast<CoRegion*>(&object)) return ShapesOf(CoRegion::Table());
    if (auto* collection = dynamic_cast<CoAnnotationCollection*>(&object)) return ShapesOf(collection->Rows());
    return {};
}

std::optional<MemberShape> MemberShapes::Find(IDispatch& object, DISPID id) {
    for (MemberShape& shape : Of(object))
        if (shape.id == id) return std::move(shape);
    return std::nullopt;
}

}  // namespace vexplot
