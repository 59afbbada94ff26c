#pragma once
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexplot::test {

// A fresh directory under the build tree, removed with its contents when the
// test ends, so no test touches the user's real settings.
class TempDir {
public:
    TempDir() {
        std::string pattern = std::string(SETTINGS_TEST_TMPDIR) + "/settings-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("mkdtemp failed for " + pattern);
        }
        path_ = pattern;
    }
    ~TempDir() { std::filesystem::remove_all(path_); }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string File(const std::string& name) const { return (path_ / name).string(); }
    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    std::string Read(const std::string& name) const {
        std::ifstream in(path_ / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    // The names in the directory, sorted.
    std::vector<std::string> Listing() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path path_;
};

}  // namespace vexplot::test
