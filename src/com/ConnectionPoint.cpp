#include "com/ConnectionPoint.h"

#include <algorithm>

#include "com/Variant.h"

namespace vexplot {

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (!iid) return E_POINTER;
    *iid = iid_;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** out) {
    if (!out) return E_POINTER;
    *out = container_;
    if (!container_) return E_UNEXPECTED;
    container_->AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, uint32_t* cookie) {
    if (!sink || !cookie) return E_POINTER;
    *cookie = 0;
    // A sink answers to the outgoing interface itself or to IDispatch
    // (outgoing dispatch interfaces are called through Invoke).
    ComPtr<IUnknown> typed;
    ComPtr<IDispatch> dispatch;
    if (FAILED(sink->QueryInterface(iid_, typed.ReleaseAndGetVoidAddress()))) {
        if (FAILED(sink->QueryInterface(IID_IDispatch, dispatch.ReleaseAndGetVoidAddress())))
            return CONNECT_E_CANNOTCONNECT;
        typed = ComPtr<IUnknown>(dispatch.Get());
    } else {
        sink->QueryInterface(IID_IDispatch, dispatch.ReleaseAndGetVoidAddress());
    }
    *cookie = nextCookie_++;
    sinks_.push_back({*cookie, std::move(typed), std::move(dispatch)});
    return S_OK;
}

HRESULT ConnectionPoint::Unadvise(uint32_t cookie) {
    auto it = std::find_if(sinks_.begin(), sinks_.end(), [&](const Sink& s) { return s.cookie == cookie; });
    if (it == sinks_.end()) return CONNECT_E_NOCONNECTION;
    Sink gone = std::move(*it);  // released after the list is consistent again
    sinks_.erase(it);
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionCount(uint32_t* count) {
    if (!count) return E_POINTER;
    *count = static_cast<uint32_t>(sinks_.size());
    return S_OK;
}

void ConnectionPoint::ForEachSink(const std::function<void(IUnknown*)>& call) const {
    const std::vector<Sink> snapshot = sinks_;
    for (const Sink& s : snapshot) call(s.unknown.Get());
}

void ConnectionPoint::FireDispatch(DISPID dispid, std::vector<Variant> args) const {
    std::reverse(args.begin(), args.end());
    const std::vector<Sink> snapshot = sinks_;
    for (const Sink& s : snapshot) {
        if (!s.dispatch) continue;
        std::vector<Variant> copy = args;  // a sink may change by-value arguments
        DispParams params{copy.data(), nullptr, static_cast<uint32_t>(copy.size()), 0};
        s.dispatch->Invoke(dispid, GUID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
    }
}

namespace {

HRESULT FindPoint(IUnknown* source, const IID& iid, ComPtr<IConnectionPoint>* point) {
    if (!source) return E_POINTER;
    ComPtr<IConnectionPointContainer> container;
    HRESULT hr = source->QueryInterface(IConnectionPointContainer::kIid, container.ReleaseAndGetVoidAddress());
    if (FAILED(hr)) return hr;
    return container->FindConnectionPoint(iid, point->ReleaseAndGetAddressOf());
}

}  // namespace

HRESULT ConnectionAdvise(IUnknown* source, const IID& iid, IUnknown* sink, uint32_t* cookie) {
    ComPtr<IConnectionPoint> point;
    HRESULT hr = FindPoint(source, iid, &point);
    return FAILED(hr) ? hr : point->Advise(sink, cookie);
}

HRESULT ConnectionUnadvise(IUnknown* source, const IID& iid, uint32_t cookie) {
    ComPtr<IConnectionPoint> point;
    HRESULT hr = FindPoint(source, iid, &point);
    return FAILED(hr) ? hr : point->Unadvise(cookie);
}

}  // namespace vexplot
