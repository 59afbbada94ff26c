#pragma once
#include <atomic>
#include <new>
#include <type_traits>
#include <utility>

#include "com/ComPtr.h"

namespace vexplot {

namespace com_detail {

template <class I>
concept HasBase = requires { typename I::Base; };

// `object` as the interface that `iid` names, when that is I or one of the
// interfaces I derives from; null otherwise. The pointer is converted to the
// named interface itself, so it is right whatever the layout of the bases.
template <class I>
void* Find(I* object, const IID& iid) {
    if (iid == I::kIid) return object;
    if constexpr (HasBase<I>) return Find<typename I::Base>(object, iid);
    else return nullptr;
}

}  // namespace com_detail

// QueryInterface and atomic reference counting for a class implementing the
// listed interfaces, generated once here rather than by hand in every class.
// The first interface gives the object's IUnknown identity. Objects are made
// with MakeComObject and destroyed by their last Release.
template <class... Interfaces>
class ComObject : public Interfaces... {
    static_assert(sizeof...(Interfaces) > 0, "a component implements at least one interface");
    using First = std::tuple_element_t<0, std::tuple<Interfaces...>>;

public:
    HRESULT QueryInterface(const IID& iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (iid == IID_IUnknown) {
            *out = static_cast<IUnknown*>(static_cast<First*>(this));
        } else {
            (void)(((*out = com_detail::Find<Interfaces>(this, iid)) != nullptr) || ...);
            if (!*out) *out = QueryExtraInterface(iid);
        }
        if (!*out) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    uint32_t AddRef() override { return refs_.fetch_add(1, std::memory_order_relaxed) + 1; }
    uint32_t Release() override {
        const uint32_t left = refs_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) delete this;
        return left;
    }

    // This object's IUnknown, without a new reference.
    IUnknown* Identity() { return static_cast<IUnknown*>(static_cast<First*>(this)); }

protected:
    ComObject() = default;
    virtual ~ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    // Interfaces served by a separate part (a tear-off or an inner sink);
    // the returned pointer is AddRef'ed by QueryInterface.
    virtual void* QueryExtraInterface(const IID&) { return nullptr; }

private:
    std::atomic<uint32_t> refs_{0};
};

// Creates a counted object and returns its first reference.
template <class T, class... Args>
ComPtr<T> MakeComObject(Args&&... args) {
    return ComPtr<T>(new T(std::forward<Args>(args)...));
}

}  // namespace vexplot
