#pragma once
#include "model/ArchiveClass.h"

namespace vexplot {

class CArchive;

// A model object that lives in plot files: it names its class (name and
// schema, through which a loading archive makes it again) and writes and
// reads its own record. The axes and the annotations derive from it.
class ArchiveObject {
public:
    virtual ~ArchiveObject() = default;

    virtual const ArchiveClass& GetRuntimeClass() const = 0;
    // Stores or loads the record, by the archive's direction. Loading raises
    // ArchiveError on a malformed record and leaves the object consistent
    // (its invariants hold, though fields read so far may be new).
    virtual void Serialize(CArchive& archive) = 0;
};

}  // namespace vexplot
