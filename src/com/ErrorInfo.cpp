#include "com/ErrorInfo.h"

#include <utility>

namespace vexplot {

namespace {

struct PendingError {
    IID iid;
    std::string description;
};

// Per thread, like the system's error object: failures on one thread never
// describe calls on another.
thread_local PendingError pending;

}  // namespace

void SetErrorInfo(const IID& iid, std::string description) { pending = {iid, std::move(description)}; }

std::string TakeErrorInfo(const IID& iid) {
    if (iid != GUID_NULL && pending.iid != iid && pending.iid != GUID_NULL) return {};
    return std::exchange(pending, PendingError{}).description;
}

void ClearErrorInfo() { pending = {}; }

}  // namespace vexplot
