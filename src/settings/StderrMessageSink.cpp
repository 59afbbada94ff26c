#include "settings/StderrMessageSink.h"

namespace vexplot {

StderrMessageSink& StderrMessageSink::ProcessDefault() {
    static StderrMessageSink sink;
    return sink;
}

int StderrMessageSink::ShowMessage(const std::string& text, const std::string& caption,
                                   int /*flags*/) {
    // One write per message, so lines from several threads do not interleave.
    const std::string line = caption + ": " + text + "\n";
    std::fwrite(line.data(), 1, line.size(), stream_);
    std::fflush(stream_);
    return 1;
}

}  // namespace vexplot
