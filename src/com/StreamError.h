#pragma once
#include <string>

#include "com/ComError.h"
#include "com/IStream.h"

namespace vexplot {

// A failed read or write of persisted data: a ComError on IStream, so that
// callers that only know ComError catch it.
class StreamError : public ComError {
public:
    StreamError(HRESULT hr, const std::string& description) : ComError(hr, IStream::kIid, description) {}
};

}  // namespace vexplot
