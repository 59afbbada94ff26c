#pragma once
#include <string>

#include "com/Guid.h"

namespace vexplot {

// The description of the last failure on this thread, as SetErrorInfo /
// GetErrorInfo carry it beside an HRESULT: a component that fails sets it
// just before returning the failure, and the caller that turns the HRESULT
// into a ComError takes it (once) for the message.
void SetErrorInfo(const IID& iid, std::string description);
// The description set for `iid` (or for any interface when `iid` is
// GUID_NULL), cleared by the call; empty when none is pending.
std::string TakeErrorInfo(const IID& iid = GUID_NULL);
void ClearErrorInfo();

}  // namespace vexplot
