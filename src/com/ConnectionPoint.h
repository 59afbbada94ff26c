#pragma once
#include <cstdint>
#include <functional>
#include <vector>

#include "com/ComObject.h"
#include "com/IConnectionPoint.h"
#include "com/IDispatch.h"
#include "com/Variant.h"

namespace vexplot {

// The connection point of one outgoing interface, kept by its container.
// Sinks are called in the order they advised; a sink may unadvise itself or
// others while being called.
class ConnectionPoint final : public ComObject<IConnectionPoint> {
public:
    // `container` owns this point and must call Disconnect() before it dies.
    ConnectionPoint(IConnectionPointContainer* container, const IID& iid) : container_(container), iid_(iid) {}

    HRESULT GetConnectionInterface(IID* iid) override;
    HRESULT GetConnectionPointContainer(IConnectionPointContainer** out) override;
    HRESULT Advise(IUnknown* sink, uint32_t* cookie) override;
    HRESULT Unadvise(uint32_t cookie) override;
    HRESULT GetConnectionCount(uint32_t* count) override;

    const IID& Iid() const { return iid_; }
    void Disconnect() { container_ = nullptr; }

    // Calls `call` for each advised sink, on a snapshot of the list.
    void ForEachSink(const std::function<void(IUnknown*)>& call) const;
    // Invokes `dispid` as a method on every sink that is a dispatch sink.
    // `args` are in natural order (this reverses them for Invoke).
    void FireDispatch(DISPID dispid, std::vector<Variant> args = {}) const;

private:
    struct Sink {
        uint32_t cookie;
        ComPtr<IUnknown> unknown;
        ComPtr<IDispatch> dispatch;  // null when the sink is not a dispatch sink
    };

    IConnectionPointContainer* container_;
    IID iid_;
    uint32_t nextCookie_ = 1;
    std::vector<Sink> sinks_;
};

// Advise / unadvise `sink` on the `iid` connection point of `source`.
HRESULT ConnectionAdvise(IUnknown* source, const IID& iid, IUnknown* sink, uint32_t* cookie);
HRESULT ConnectionUnadvise(IUnknown* source, const IID& iid, uint32_t cookie);

}  // namespace vexplot
