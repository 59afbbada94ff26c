// The plug-in's one entry point: the class registry loads this library and
// asks it for the engine's class factory.
#include "com/ClassFactory.h"
#include "opengl/OpenGLEngine.h"

using namespace vexplot;

HRESULT VexplotGetClassObject(const CLSID* clsid, const IID* iid, void** out) {
    if (!clsid || !iid || !out) return E_POINTER;
    *out = nullptr;
    if (*clsid != CLSID_OpenGLEngine) return CLASS_E_CLASSNOTAVAILABLE;
    return MakeComObject<ClassFactory<OpenGLEngine>>()->QueryInterface(*iid, out);
}
