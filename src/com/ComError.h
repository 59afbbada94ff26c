#pragma once
#include <stdexcept>
#include <string>

#include "com/Guid.h"
#include "com/HResult.h"

namespace vexplot {

// A failed component call: the result code and the interface that gave it,
// with a message for people. The control catches these at its automation
// boundary and turns them into error events or result codes.
class ComError : public std::runtime_error {
public:
    ComError(HRESULT hr, const IID& iid, const std::string& message = {});

    HRESULT Code() const { return hr_; }
    const IID& Interface() const { return iid_; }
    // The message alone, without the code and interface what() appends: what
    // a component hands on (SetErrorInfo) when it turns this back into an
    // HRESULT.
    const std::string& Description() const { return description_; }

private:
    HRESULT hr_;
    IID iid_;
    std::string description_;
};

// Throws ComError(hr, iid) when hr is a failure. The message is the failing
// component's own description (ErrorInfo) when it left one, else `context`.
void ThrowIfFailed(HRESULT hr, const IID& iid, const char* context = nullptr);

}  // namespace vexplot
