#pragma once
#include <stdlib.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexplot::test {

// A fresh directory under the system's temporary directory ($TMPDIR or
// /tmp), removed with its contents when the test ends.
class TempDir {
public:
    explicit TempDir(const std::string& prefix = "vexplot") {
        std::string pattern = (std::filesystem::temp_directory_path() / (prefix + "-XXXXXX")).string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed for " + pattern);
        path_ = pattern;
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string File(const std::string& name) const { return (path_ / name).string(); }
    std::string operator/(const std::string& name) const { return File(name); }

    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    void Write(const std::string& name, const std::vector<uint8_t>& bytes) const {
        Write(name, std::string(bytes.begin(), bytes.end()));
    }
    std::string Read(const std::string& name) const {
        std::ifstream in(path_ / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    // The names in the directory, sorted.
    std::vector<std::string> Listing() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    size_t EntryCount() const { return Listing().size(); }

private:
    std::filesystem::path path_;
};

}  // namespace vexplot::test
