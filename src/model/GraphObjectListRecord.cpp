#include "model/GraphObjectListRecord.h"

#include <memory>
#include <string>
#include <vector>

#include "model/CArchive.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_GraphObjectList.h"

namespace vexplot {

namespace {

// The shortest graph object record: both markers with their length bytes
// (17 + 15), four flags, ten counts, the colour and the view mode (4 bytes
// each), and a null class id (16).
constexpr uint64_t kMinimumRecordSize = 17 + 15 + 16 * 4 + 16;

}  // namespace

void GraphObjectListRecord::Write(const CGD_GraphObjectList& list, CArchive& archive) {
    archive.WriteInt32(list.Count());
    for (int32_t i = 0; i < list.Count(); ++i) list.At(i)->Serialize(archive);
}

void GraphObjectListRecord::Read(CGD_GraphObjectList& list, CArchive& archive, IViewHost* owner) {
    const int32_t count = archive.ReadInt32("graph object count");
    if (count < 0) archive.Fail("graph object count", "is negative (" + std::to_string(count) + ")");
    archive.Require(static_cast<uint64_t>(count) * kMinimumRecordSize, "graph object records");
    std::vector<std::unique_ptr<CGD_GraphObject>> loaded;
    for (int32_t i = 0; i < count; ++i) {
        auto graph = std::make_unique<CGD_GraphObject>();
        if (graph->LoadRecord(archive, owner)) loaded.push_back(std::move(graph));
    }
    list.Clear();
    for (auto& graph : loaded) list.Add(std::move(graph));
}

}  // namespace vexplot
