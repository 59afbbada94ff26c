#pragma once
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "model/ArchiveObject.h"

namespace vexplot {

class CArchive;

// The control's object list: the model objects that live in plot files
// beside the graph objects (the axes and the annotations). Owns them, keeps
// them in the order they were added (the annotations' tab order) and finds
// them by the name of their archive class.
class CGD_ObjectList {
public:
    CGD_ObjectList();
    ~CGD_ObjectList();
    CGD_ObjectList(const CGD_ObjectList&) = delete;
    CGD_ObjectList& operator=(const CGD_ObjectList&) = delete;

    // the list:
    // Appends `object` (not null: std::invalid_argument) and returns it.
    ArchiveObject& Add(std::unique_ptr<ArchiveObject> object);
    // Takes `object` out of the list and hands it back; null when it is not
    // in the list.
    std::unique_ptr<ArchiveObject> Remove(const ArchiveObject* object);
    void Clear();
    int32_t Count() const { return static_cast<int32_t>(objects_.size()); }
    // Null outside the list.
    ArchiveObject* At(int32_t index) const;
    // -1 when `object` is not in the list.
    int32_t IndexOf(const ArchiveObject* object) const;
    // The objects of the class named `className`, in list order.
    std::vector<ArchiveObject*> ObjectsOf(std::string_view className) const;

    // The list's records: the count (int32), then each object's class record
    // (CArchive::WriteObjectRecord). Loading replaces the contents only once
    // every record has been read; a malformed list raises ArchiveError and
    // leaves the old contents. A null record is malformed: the list never
    // holds one.
    void Serialize(CArchive& archive);

private:
    void Load(CArchive& archive);

    std::vector<std::unique_ptr<ArchiveObject>> objects_;
};

}  // namespace vexplot
