#include "com/ComError.h"

#include "com/ErrorInfo.h"

namespace vexplot {

namespace {

std::string Describe(HRESULT hr, const IID& iid, const std::string& message) {
    std::string text = message.empty() ? std::string("component call failed") : message;
    text += ": " + HResultText(hr);
    if (iid != GUID_NULL) text += " on interface " + iid.ToString();
    return text;
}

}  // namespace

ComError::ComError(HRESULT hr, const IID& iid, const std::string& message)
    : std::runtime_error(Describe(hr, iid, message)), hr_(hr), iid_(iid), description_(message) {}

void ThrowIfFailed(HRESULT hr, const IID& iid, const char* context) {
    if (SUCCEEDED(hr)) return;
    std::string description = TakeErrorInfo(iid);
    if (description.empty() && context) description = context;
    throw ComError(hr, iid, description);
}

}  // namespace vexplot
