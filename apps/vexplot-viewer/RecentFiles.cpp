#include "RecentFiles.h"

#include <algorithm>

#include "settings/CRegistryKey.h"

namespace vexplot {

namespace {

std::string SlotName(size_t index) { return "Recent" + std::to_string(index); }

}  // namespace

void RecentFiles::Load() {
    paths_.clear();
    CRegistryKey key;
    if (!key.Open(kSubKey)) return;
    for (size_t i = 0; i < kCapacity; ++i) {
        std::string path = key.ReadString(SlotName(i));
        if (path.empty()) break;
        if (std::find(paths_.begin(), paths_.end(), path) == paths_.end()) paths_.push_back(std::move(path));
    }
}

void RecentFiles::Save() const {
    CRegistryKey key;
    if (!key.Open(kSubKey)) return;
    for (size_t i = 0; i < kCapacity; ++i) {
        if (i < paths_.size())
            key.WriteString(SlotName(i), paths_[i]);
        else
            key.DeleteValue(SlotName(i));
    }
}

void RecentFiles::Add(const std::string& path) {
    if (path.empty()) return;
    Remove(path);
    paths_.insert(paths_.begin(), path);
    if (paths_.size() > kCapacity) paths_.resize(kCapacity);
}

void RecentFiles::Remove(const std::string& path) {
    paths_.erase(std::remove(paths_.begin(), paths_.end(), path), paths_.end());
}

}  // namespace vexplot
