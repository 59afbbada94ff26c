#include "model/CGD_ObjectList.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "model/CArchive.h"

namespace vexplot {

namespace {

// The shortest class record: a back-reference tag of a class that stores no
// fields.
constexpr uint64_t kMinimumRecordSize = 2;

}  // namespace

CGD_ObjectList::CGD_ObjectList() = default;

CGD_ObjectList::~CGD_ObjectList() = default;

ArchiveObject& CGD_ObjectList::Add(std::unique_ptr<ArchiveObject> object) {
    if (!object) throw std::invalid_argument("CGD_ObjectList::Add: no object");
    objects_.push_back(std::move(object));
    return *objects_.back();
}

std::unique_ptr<ArchiveObject> CGD_ObjectList::Remove(const ArchiveObject* object) {
    const auto it = std::find_if(objects_.begin(), objects_.end(), [&](const auto& o) { return o.get() == object; });
    if (it == objects_.end()) return nullptr;
    std::unique_ptr<ArchiveObject> taken = std::move(*it);
    objects_.erase(it);
    return taken;
}

void CGD_ObjectList::Clear() {
    // Taken out first, so that a destructor that looks at the list sees it empty.
    std::vector<std::unique_ptr<ArchiveObject>> gone;
    gone.swap(objects_);
}

ArchiveObject* CGD_ObjectList::At(int32_t index) const {
    if (index < 0 || index >= Count()) return nullptr;
    return objects_[static_cast<size_t>(index)].get();
}

int32_t CGD_ObjectList::IndexOf(const ArchiveObject* object) const {
    const auto it = std::find_if(objects_.begin(), objects_.end(), [&](const auto& o) { return o.get() == object; });
    return it == objects_.end() ? -1 : static_cast<int32_t>(it - objects_.begin());
}

std::vector<ArchiveObject*> CGD_ObjectList::ObjectsOf(std::string_view className) const {
    std::vector<ArchiveObject*> found;
    for (const auto& object : objects_)
        if (object->GetRuntimeClass().Name() == className) found.push_back(object.get());
    return found;
}

void CGD_ObjectList::Serialize(CArchive& archive) {
    if (archive.IsLoading()) {
        Load(archive);
        return;
    }
    archive.WriteInt32(Count());
    for (const auto& object : objects_) archive.WriteObjectRecord(object.get());
}

void CGD_ObjectList::Load(CArchive& archive) {
    const int32_t count = archive.ReadInt32("object count");
    if (count < 0) archive.Fail("object count", "is negative (" + std::to_string(count) + ")");
    archive.Require(static_cast<uint64_t>(count) * kMinimumRecordSize, "object records");
    std::vector<std::unique_ptr<ArchiveObject>> loaded;
    for (int32_t i = 0; i < count; ++i) {
        const std::string what = "object " + std::to_string(i + 1) + " of " + std::to_string(count);
        std::unique_ptr<ArchiveObject> object = archive.ReadObjectRecord(what);
        if (!object) archive.Fail(what, "is the null object");
        loaded.push_back(std::move(object));
    }
    objects_.swap(loaded);
}

}  // namespace vexplot
