#pragma once
#include <cstdint>

#include "com/Guid.h"
#include "com/HResult.h"

namespace vexplot {

// The root of every interface. Interfaces are abstract classes whose virtual
// functions are declared in slot order; they have no virtual destructor (an
// object is destroyed by its last Release, never through an interface).
// Each interface names its identifier as `kIid` and its base as `Base`.
class IUnknown {
public:
    static constexpr IID kIid = IID_IUnknown;

    virtual HRESULT QueryInterface(const IID& iid, void** out) = 0;  // slot 0
    virtual uint32_t AddRef() = 0;                                    // slot 1
    virtual uint32_t Release() = 0;                                   // slot 2

protected:
    ~IUnknown() = default;
};

}  // namespace vexplot
