#pragma once
#include <mutex>
#include <unordered_map>

#include "com/ComPtr.h"
#include "com/IClassFactory.h"

namespace vexplot {

// Maps class identifiers to class factories: the built-in classes register
// themselves here; other classes are plug-ins found through their
// registration record "Software\Classes\CLSID\{...}\InprocServer32" in the
// settings store, whose unnamed value is the path of the shared library.
// Process-wide (one per process, as the system's class table) and guarded by
// a mutex; loaded plug-in libraries stay loaded for the life of the process.
class ClassRegistry {
public:
    static ClassRegistry& Instance();

    // Registers a class for the contexts in `contexts` (CLSCTX_ bits);
    // a second registration of the same class replaces the first, and a
    // null factory revokes it.
    void Register(const CLSID& clsid, ComPtr<IClassFactory> factory, uint32_t contexts);
    void Revoke(const CLSID& clsid);

    // The factory for `clsid` in one of the contexts of `clsctx`: a built-in
    // class first, then a plug-in when in-process servers are allowed.
    // REGDB_E_CLASSNOTREG when neither exists; CO_E_DLLNOTFOUND or
    // CO_E_ERRORINDLL when the registered library cannot be used.
    HRESULT GetClassObject(const CLSID& clsid, uint32_t clsctx, ComPtr<IClassFactory>* factory);

private:
    struct Entry {
        ComPtr<IClassFactory> factory;
        uint32_t contexts;
    };
    HRESULT LoadPlugin(const CLSID& clsid, ComPtr<IClassFactory>* factory);

    std::mutex mutex_;
    std::unordered_map<CLSID, Entry> classes_;
};

// Creates an instance of `clsid` and returns its `iid` interface in *out.
HRESULT CoCreateInstance(const CLSID& clsid, IUnknown* outer, uint32_t clsctx, const IID& iid, void** out);

// Typed form: the object as a ComPtr<T>, or an empty pointer with *hr set.
template <class T>
ComPtr<T> CreateInstance(const CLSID& clsid, uint32_t clsctx, HRESULT* hr = nullptr) {
    ComPtr<T> result;
    HRESULT r = CoCreateInstance(clsid, nullptr, clsctx, T::kIid, result.ReleaseAndGetVoidAddress());
    if (hr) *hr = r;
    return result;
}

// Puts an object into its running state (IRunnableObject::Run); an object
// without that interface is running already.
HRESULT OleRun(IUnknown* object);

// The registration record of an in-process class, below HKEY_CURRENT_USER.
std::string InprocServerKey(const CLSID& clsid);

}  // namespace vexplot
