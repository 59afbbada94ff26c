#include "control/CommandRouter.h"

#include <utility>

namespace vexplot {

void CommandRouter::Add(int32_t command, State state, Action action) {
    entries_[command] = Entry{std::move(state), std::move(action)};
}

CommandTable::EntryState CommandRouter::StateOf(int32_t command) const {
    const auto it = entries_.find(command);
    if (it == entries_.end()) return {false, false};
    return it->second.state ? it->second.state() : CommandTable::EntryState{};
}

bool CommandRouter::Run(int32_t command) const {
    const auto it = entries_.find(command);
    if (it == entries_.end() || !StateOf(command).enabled || !it->second.action) return false;
    it->second.action();
    return true;
}

}  // namespace vexplot
