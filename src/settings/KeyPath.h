#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vexplot {

// Key paths name a key below a root as backslash-separated key names, the way
// the registry writes them ("Software\Kestrune Corporation\Vexplot"). The
// empty path is the root itself.

// True when no key name in `path` is empty (no leading, trailing or doubled
// backslash), which the registry refuses as well.
bool IsValidKeyPath(std::string_view path);

// `parent` and `child` joined by one backslash; either may be empty.
std::string JoinKeyPath(std::string_view parent, std::string_view child);

// Everything before the last backslash ("" for a top-level key).
std::string_view ParentKeyPath(std::string_view path);

// The last key name of `path`.
std::string_view LastKeyName(std::string_view path);

// The paths of `path` and all its ancestors below the root, outermost first:
// "A\B\C" gives "A", "A\B", "A\B\C".
std::vector<std::string_view> KeyPathPrefixes(std::string_view path);

}  // namespace vexplot
