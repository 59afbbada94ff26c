#pragma once
#include <cstddef>
#include <string>
#include <vector>

namespace vexplot {

// The viewer's list of recently opened files, newest first, at most
// kCapacity long, kept in the settings store under "Viewer" as the string
// values "Recent0" (newest) to "Recent7".
class RecentFiles {
public:
    static constexpr size_t kCapacity = 8;
    static constexpr const char* kSubKey = "Viewer";

    // Reads the list from the settings store; empty values end it.
    void Load();
    // Writes the whole list, clearing the slots it no longer fills.
    void Save() const;

    // Puts `path` first; an entry equal to it moves instead of repeating,
    // and the oldest entry drops off beyond kCapacity.
    void Add(const std::string& path);
    // Drops `path` (a file that could not be opened any more).
    void Remove(const std::string& path);

    const std::vector<std::string>& Paths() const { return paths_; }

private:
    std::vector<std::string> paths_;
};

}  // namespace vexplot
