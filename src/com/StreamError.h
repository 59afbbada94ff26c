#pragma once
#include <string>
#include <utility>

#include "com/ComError.h"
#include "com/IStream.h"

namespace vexplot {

// A failed read or write of persisted data. It is a ComError (so callers that
// only know ComError catch it) that also keeps its plain description, without
// the code and interface that ComError appends to what(): a component that
// turns the failure back into an HRESULT hands Description() to SetErrorInfo.
class StreamError : public ComError {
public:
    StreamError(HRESULT hr, std::string description)
        : ComError(hr, IStream::kIid, description), description_(std::move(description)) {}

    const std::string& Description() const { return description_; }

private:
    std::string description_;
};

}  // namespace vexplot
