#pragma once
#include <functional>

#include "com/ComObject.h"
#include "com/IClassFactory.h"

namespace vexplot {

// A class factory over a creation function, for built-in classes and plug-ins.
// `T` must derive from ComObject and have a public default constructor.
template <class T>
class ClassFactory final : public ComObject<IClassFactory> {
public:
    HRESULT CreateInstance(IUnknown* outer, const IID& iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        try {
            ComPtr<T> object = MakeComObject<T>();
            return object->QueryInterface(iid, out);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT LockServer(bool) override { return S_OK; }
};

}  // namespace vexplot
