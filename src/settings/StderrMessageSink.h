#pragma once
#include <cstdio>
#include <string>

#include "settings/MessageSink.h"

namespace vexplot {

// The message sink of batch use: prints "caption: text" as one line and
// answers OK (1), the default button of every message the settings code shows.
class StderrMessageSink final : public MessageSink {
public:
    // `stream` is borrowed; stderr unless a test wants the output.
    explicit StderrMessageSink(std::FILE* stream = stderr) : stream_(stream) {}

    // The sink used where no other is given. Stateless, so sharing it across
    // the process needs no guarding.
    static StderrMessageSink& ProcessDefault();

    int ShowMessage(const std::string& text, const std::string& caption, int flags) override;

private:
    std::FILE* stream_;
};

}  // namespace vexplot
