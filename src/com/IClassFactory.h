#pragma once
#include "com/IUnknown.h"

namespace vexplot {

// Makes instances of one class.
class IClassFactory : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{00000001-0000-0000-C000-000000000046}");

    // `outer` must be null: no class of this system supports aggregation.
    virtual HRESULT CreateInstance(IUnknown* outer, const IID& iid, void** out) = 0;  // slot 3
    virtual HRESULT LockServer(bool lock) = 0;                                          // slot 4

protected:
    ~IClassFactory() = default;
};

// Class contexts of object creation.
inline constexpr uint32_t CLSCTX_INPROC_SERVER = 1;
inline constexpr uint32_t CLSCTX_INPROC_HANDLER = 2;
inline constexpr uint32_t CLSCTX_LOCAL_SERVER = 4;
inline constexpr uint32_t CLSCTX_REMOTE_SERVER = 16;
inline constexpr uint32_t CLSCTX_INPROC = CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER;
inline constexpr uint32_t CLSCTX_ALL = CLSCTX_INPROC | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;

// The one C entry point a plug-in library exports: hands out the class
// factory of `clsid` as interface `iid` (IClassFactory). Same contract as
// DllGetClassObject: CLASS_E_CLASSNOTAVAILABLE for a class it does not serve.
using GetClassObjectFunction = HRESULT (*)(const CLSID* clsid, const IID* iid, void** out);
inline constexpr const char* kPluginEntryPoint = "VexplotGetClassObject";

}  // namespace vexplot

// Declared here so that a plug-in defines it with this exact signature.
extern "C" __attribute__((visibility("default"))) vexplot::HRESULT VexplotGetClassObject(const vexplot::CLSID* clsid,
                                                                                       const vexplot::IID* iid,
                                                                                       void** out);
