#include "com/ClassRegistry.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstring>

#include "com/ErrorInfo.h"
#include "com/IPersist.h"
#include "settings/CRegistryKey.h"

namespace vexplot {

ClassRegistry& ClassRegistry::Instance() {
    static ClassRegistry registry;
    return registry;
}

void ClassRegistry::Register(const CLSID& clsid, ComPtr<IClassFactory> factory, uint32_t contexts) {
    if (!factory) return Revoke(clsid);
    std::lock_guard lock(mutex_);
    classes_[clsid] = Entry{std::move(factory), contexts};
}

void ClassRegistry::Revoke(const CLSID& clsid) {
    std::lock_guard lock(mutex_);
    classes_.erase(clsid);
}

HRESULT ClassRegistry::GetClassObject(const CLSID& clsid, uint32_t clsctx, ComPtr<IClassFactory>* factory) {
    if (!factory) return E_POINTER;
    {
        std::lock_guard lock(mutex_);
        auto it = classes_.find(clsid);
        if (it != classes_.end() && (it->second.contexts & clsctx) != 0) {
            *factory = it->second.factory;
            return S_OK;
        }
    }
    if ((clsctx & CLSCTX_INPROC_SERVER) == 0) return REGDB_E_CLASSNOTREG;
    return LoadPlugin(clsid, factory);
}

std::string InprocServerKey(const CLSID& clsid) {
    return "Software\\Classes\\CLSID\\" + clsid.ToString() + "\\InprocServer32";
}

namespace {

// The library path of the registration record, or "" when the class has
// none. A quiet read: an unregistered class is no error to show, and looking
// creates no key. The path is read whole, without the 255-byte limit of
// ReadString, since library paths may be long.
std::string RegisteredLibrary(const CLSID& clsid) {
    CRegistryKey key;
    if (key.OpenExisting(RootKey::CurrentUser, InprocServerKey(clsid)) != 1) return {};
    const std::optional<RegistryValue> value = key.QueryValue("");
    if (!value || value->type != ValueType::String) return {};
    std::string path(value->data.begin(), value->data.end());
    path.resize(std::strlen(path.c_str()));  // up to the terminating NUL
    return path;
}

}  // namespace

HRESULT ClassRegistry::LoadPlugin(const CLSID& clsid, ComPtr<IClassFactory>* factory) {
    const std::string path = RegisteredLibrary(clsid);
    if (path.empty()) return REGDB_E_CLASSNOTREG;
    // RTLD_NODELETE: a library's code must outlive every object it made, and
    // objects may be released after any bookkeeping of ours is gone.
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!library) {
        SetErrorInfo(GUID_NULL, "cannot load plug-in " + path + ": " + dlerror());
        return access(path.c_str(), F_OK) == 0 ? CO_E_ERRORINDLL : CO_E_DLLNOTFOUND;
    }
    auto entry = reinterpret_cast<GetClassObjectFunction>(dlsym(library, kPluginEntryPoint));
    if (!entry) {
        SetErrorInfo(GUID_NULL, "plug-in " + path + " has no entry point " + kPluginEntryPoint);
        return CO_E_ERRORINDLL;
    }
    ComPtr<IClassFactory> result;
    HRESULT hr = entry(&clsid, &IClassFactory::kIid, result.ReleaseAndGetVoidAddress());
    if (FAILED(hr)) return hr;
    if (!result) return CO_E_ERRORINDLL;
    *factory = std::move(result);
    return S_OK;
}

HRESULT CoCreateInstance(const CLSID& clsid, IUnknown* outer, uint32_t clsctx, const IID& iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    ComPtr<IClassFactory> factory;
    HRESULT hr = ClassRegistry::Instance().GetClassObject(clsid, clsctx, &factory);
    if (FAILED(hr)) return hr;
    return factory->CreateInstance(outer, iid, out);
}

HRESULT OleRun(IUnknown* object) {
    if (!object) return E_POINTER;
    ComPtr<IRunnableObject> runnable;
    if (FAILED(object->QueryInterface(IRunnableObject::kIid, runnable.ReleaseAndGetVoidAddress()))) return S_OK;
    return runnable->Run();
}

}  // namespace vexplot
