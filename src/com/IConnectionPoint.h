#pragma once
#include <cstdint>

#include "com/IUnknown.h"

namespace vexplot {

class IConnectionPointContainer;

// One outgoing interface of an object: sinks advise to receive its calls.
class IConnectionPoint : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{B196B286-BAB4-101A-B69C-00AA00341D07}");

    virtual HRESULT GetConnectionInterface(IID* iid) = 0;                           // slot 3
    virtual HRESULT GetConnectionPointContainer(IConnectionPointContainer** out) = 0;  // slot 4
    // Keeps a reference to `sink` (queried for the outgoing interface or
    // IDispatch) until Unadvise(cookie). Cookies start at 1 and are not reused.
    virtual HRESULT Advise(IUnknown* sink, uint32_t* cookie) = 0;                   // slot 5
    virtual HRESULT Unadvise(uint32_t cookie) = 0;                                  // slot 6
    virtual HRESULT GetConnectionCount(uint32_t* count) = 0;                        // slot 7

protected:
    ~IConnectionPoint() = default;
};

// An object with outgoing interfaces.
class IConnectionPointContainer : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{B196B284-BAB4-101A-B69C-00AA00341D07}");

    virtual HRESULT GetConnectionPointCount(uint32_t* count) = 0;                      // slot 3
    virtual HRESULT FindConnectionPoint(const IID& iid, IConnectionPoint** out) = 0;  // slot 4

protected:
    ~IConnectionPointContainer() = default;
};

}  // namespace vexplot
