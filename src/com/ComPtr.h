#pragma once
#include <utility>

#include "com/IUnknown.h"

namespace vexplot {

// Owning smart pointer for interface references: one reference per ComPtr.
template <class T>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    // Takes a new reference to `p`.
    explicit ComPtr(T* p) : p_(p) { if (p_) p_->AddRef(); }
    ComPtr(const ComPtr& other) : ComPtr(other.p_) {}
    ComPtr(ComPtr&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}
    template <class U>
        requires std::is_convertible_v<U*, T*>
    ComPtr(const ComPtr<U>& other) : ComPtr(static_cast<T*>(other.Get())) {}
    ~ComPtr() { Reset(); }

    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(p_, other.p_);
        return *this;
    }

    // Adopts a reference the caller already owns (e.g. from an out parameter).
    static ComPtr Adopt(T* p) {
        ComPtr result;
        result.p_ = p;
        return result;
    }
    // Hands the reference to the caller, who must Release it.
    T* Detach() { return std::exchange(p_, nullptr); }

    void Reset() {
        if (T* p = std::exchange(p_, nullptr)) p->Release();
    }
    // Releases the held reference and returns the slot for an out parameter.
    T** ReleaseAndGetAddressOf() {
        Reset();
        return &p_;
    }
    void** ReleaseAndGetVoidAddress() { return reinterpret_cast<void**>(ReleaseAndGetAddressOf()); }

    T* Get() const { return p_; }
    T* operator->() const { return p_; }
    T& operator*() const { return *p_; }
    explicit operator bool() const { return p_ != nullptr; }

    // QueryInterface for U; the result is empty and `hr` tells why on failure.
    template <class U>
    ComPtr<U> As(HRESULT* hr = nullptr) const {
        ComPtr<U> result;
        HRESULT r = p_ ? p_->QueryInterface(U::kIid, result.ReleaseAndGetVoidAddress()) : E_POINTER;
        if (hr) *hr = r;
        return result;
    }

    friend bool operator==(const ComPtr& a, const ComPtr& b) { return a.p_ == b.p_; }
    friend bool operator==(const ComPtr& a, std::nullptr_t) { return a.p_ == nullptr; }

private:
    T* p_ = nullptr;
};

}  // namespace vexplot
