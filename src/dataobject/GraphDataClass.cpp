#include "dataobject/GraphDataClass.h"

#include <mutex>

#include "com/ClassFactory.h"
#include "com/ClassRegistry.h"
#include "dataobject/GraphDataObject.h"

namespace vexplot {

void RegisterGraphDataClass() {
    static std::once_flag once;
    std::call_once(once, [] {
        ClassRegistry::Instance().Register(CLSID_GraphData, MakeComObject<ClassFactory<GraphDataObject>>(),
                                           CLSCTX_INPROC);
    });
}

}  // namespace vexplot
