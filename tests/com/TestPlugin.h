#pragma once
#include "com/IUnknown.h"

namespace vexplot::testing {

// The class and interface served by the test plug-in library.
inline constexpr CLSID CLSID_TestPlugin = GUID::FromLiteral("{5B0E63A1-2F4C-4D8E-9A61-0C7E2B9D4F10}");

class ITestCounter : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{5B0E63A2-2F4C-4D8E-9A61-0C7E2B9D4F10}");

    virtual int32_t Next() = 0;  // slot 3: 1, 2, 3, ... per instance

protected:
    ~ITestCounter() = default;
};

}  // namespace vexplot::testing
