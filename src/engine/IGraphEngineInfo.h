#pragma once
#include <cstdint>

#include "com/IUnknown.h"

namespace vexplot {

// What an engine tells the user about itself (the about box); an engine
// root may offer it beside IGraphEngine. Optional: a control copes with
// E_NOINTERFACE.
class IGraphEngineInfo : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{3C1E6A52-8F0B-4D7E-A1C9-5B27E04D9F61}");

    // The renderer the engine draws with, as its graphics driver names it
    // ("llvmpipe (LLVM 15.0.6, 256 bits), surfaceless"), UTF-8 and
    // terminated; E_INVALIDARG when `size` cannot hold it, E_FAIL before
    // the engine is initialized.
    virtual HRESULT GetRenderer(char* buffer, uint32_t size) = 0;  // slot 3

protected:
    ~IGraphEngineInfo() = default;
};

}  // namespace vexplot
