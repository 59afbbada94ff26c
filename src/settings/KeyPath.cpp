#include "settings/KeyPath.h"

namespace vexplot {

namespace {
constexpr char kSeparator = '\\';
}

bool IsValidKeyPath(std::string_view path) {
    if (path.empty()) {
        return true;
    }
    return path.front() != kSeparator && path.back() != kSeparator &&
           path.find("\\\\") == std::string_view::npos;
}

std::string JoinKeyPath(std::string_view parent, std::string_view child) {
    std::string joined(parent);
    if (!parent.empty() && !child.empty()) {
        joined += kSeparator;
    }
    joined += child;
    return joined;
}

std::string_view ParentKeyPath(std::string_view path) {
    const size_t last = path.rfind(kSeparator);
    return last == std::string_view::npos ? std::string_view() : path.substr(0, last);
}

std::string_view LastKeyName(std::string_view path) {
    const size_t last = path.rfind(kSeparator);
    return last == std::string_view::npos ? path : path.substr(last + 1);
}

std::vector<std::string_view> KeyPathPrefixes(std::string_view path) {
    std::vector<std::string_view> prefixes;
    if (path.empty()) {
        return prefixes;
    }
    for (size_t at = path.find(kSeparator); at != std::string_view::npos;
         at = path.find(kSeparator, at + 1)) {
        prefixes.push_back(path.substr(0, at));
    }
    prefixes.push_back(path);
    return prefixes;
}

}  // namespace vexplot
