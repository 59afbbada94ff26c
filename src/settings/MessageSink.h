#pragma once
#include <string>

namespace vexplot {

// Where small model objects send the messages a Windows build would put in a
// message box. The host or the window layer provides one (the Qt site shows a
// QMessageBox, the headless site prints to stderr and takes the default).
class MessageSink {
public:
    // Icon codes as the message-box flags use them.
    static constexpr int kIconStop = 16;
    static constexpr int kIconInformation = 64;

    // Shows `text` under `caption`; returns the button chosen (1 = OK).
    virtual int ShowMessage(const std::string& text, const std::string& caption, int flags) = 0;

protected:
    ~MessageSink() = default;
};

}  // namespace vexplot
