#pragma once
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace vexplot {

class SettingsStore;

// `vexplot settings list|get|set|delete ...` on the user's settings store.
// argv[0] is "settings". Returns the exit status: 0 done, 1 a missing key or
// value or an unusable store, 2 wrong arguments (usage printed to stderr).
int RunSettingsCommand(int argc, char** argv);

// The same on `args` (the words after "settings") and explicit streams;
// `store` nullptr means the default store, opened only once the arguments are valid.
int RunSettingsCommand(const std::vector<std::string>& args,
                       const std::shared_ptr<SettingsStore>& store, std::ostream& out,
                       std::ostream& err);

}  // namespace vexplot
