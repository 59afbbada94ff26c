#include "model/DetachedViewHost.h"

#include "com/HResult.h"
#include "settings/StderrMessageSink.h"

namespace vexplot {

DetachedViewHost::DetachedViewHost(MessageSink* sink) : sink_(sink ? *sink : StderrMessageSink::ProcessDefault()) {}

void DetachedViewHost::FireError(HRESULT code, const char* text) {
    sink_.ShowMessage(HResultText(code) + ": " + (text ? text : ""), "Error", MessageSink::kIconStop);
}

int32_t DetachedViewHost::ShowMessage(const char* text, uint32_t buttons) {
    return sink_.ShowMessage(text ? text : "", "Vexplot", static_cast<int>(buttons));
}

// The axis keeps its own name as its label.
void DetachedViewHost::ResetAxisLabel(const char* axis) {
    if (!axis || !*axis) return;
    const int index = axis[0] == 'X' ? 0 : axis[0] == 'Y' ? 1 : axis[0] == 'Z' ? 2 : -1;
    if (index >= 0) labels_[index] = axis;
}

}  // namespace vexplot
