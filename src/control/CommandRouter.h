#pragma once
#include <cstdint>
#include <functional>
#include <unordered_map>

#include "control/CommandTable.h"

namespace vexplot {

// The one path every command takes, whoever asks for it: the pop-up menu,
// an accelerator, the title bar's icon menu, a C++ host (DoCommand) or a
// script. Each group of commands (views and windows, tools, dialogs, files
// and export) adds its entries once, when the control is made; the menu
// asks the same entries for its enabled and checked marks, so a command
// cannot work from one place and not from another.
class CommandRouter {
public:
    using State = std::function<CommandTable::EntryState()>;
    using Action = std::function<void()>;

    // Adds or replaces `command`. An empty `state` means always enabled and
    // never checked.
    void Add(int32_t command, State state, Action action);

    // How the command's entry looks now; {false, false} for a command no
    // group has added.
    CommandTable::EntryState StateOf(int32_t command) const;
    // Carries out `command` when it is known and enabled now; false otherwise.
    bool Run(int32_t command) const;
    bool Has(int32_t command) const { return entries_.count(command) != 0; }

private:
    struct Entry {
        State state;
        Action action;
    };
    std::unordered_map<int32_t, Entry> entries_;
};

}  // namespace vexplot
