#pragma once

namespace vexplot {

class CArchive;
class CGD_GraphObjectList;
class IViewHost;

// The records of the control's graph objects in a plot file: the count
// (int32), then each graph object's record (CGD_GraphObject::Serialize), in
// list order.
class GraphObjectListRecord {
public:
    static void Write(const CGD_GraphObjectList& list, CArchive& archive);
    // Reads every record and then replaces the list's graph objects by the
    // loaded ones, bound to `owner`; the last one is active, as Add makes it
    // (none when none was loaded). Records without a data object are read
    // and left out (see CGD_GraphObject::LoadRecord). A malformed list
    // raises ArchiveError and leaves the list as it was.
    static void Read(CGD_GraphObjectList& list, CArchive& archive, IViewHost* owner);
};

}  // namespace vexplot
