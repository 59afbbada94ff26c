#pragma once
#include <string>
#include <vector>

#include "settings/MessageSink.h"

namespace vexplot::test {

// Keeps every message instead of showing it, and answers OK.
class RecordingSink final : public MessageSink {
public:
    struct Message {
        std::string text;
        std::string caption;
        int flags;
    };

    int ShowMessage(const std::string& text, const std::string& caption, int flags) override {
        messages.push_back({text, caption, flags});
        return 1;
    }

    std::vector<Message> messages;
};

}  // namespace vexplot::test
