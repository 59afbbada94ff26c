// A plug-in library as the class registry loads it: one exported entry point
// that hands out the class factory of the classes it serves.
#include "TestPlugin.h"

#include "com/ClassFactory.h"

using namespace vexplot;
using namespace vexplot::testing;

namespace {

class Counter final : public ComObject<ITestCounter> {
public:
    int32_t Next() override { return ++value_; }

private:
    int32_t value_ = 0;
};

}  // namespace

HRESULT VexplotGetClassObject(const CLSID* clsid, const IID* iid, void** out) {
    if (!clsid || !iid || !out) return E_POINTER;
    *out = nullptr;
    if (*clsid != CLSID_TestPlugin) return CLASS_E_CLASSNOTAVAILABLE;
    return MakeComObject<ClassFactory<Counter>>()->QueryInterface(*iid, out);
}
