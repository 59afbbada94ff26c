#pragma once
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <tuple>

namespace vexplot {

// Turns a font description (face name, weight, italic) into a font file
// through the system's font configuration. fontconfig's metric aliases make
// "Arial" resolve to Liberation Sans and "Times New Roman" to Liberation
// Serif; an unknown face falls back to the configured sans-serif face.
// Answers are cached: a resolved request costs one map look-up.
class FontResolver {
public:
    struct FontFile {
        std::string path;  // empty when the system has no usable font at all
        int32_t index = 0;  // face index inside a collection file
        bool bold = false;    // the file's own face is bold (no emboldening needed)
        bool italic = false;  // the file's own face is italic or oblique (no slant needed)
    };

    FontResolver();
    ~FontResolver();
    FontResolver(const FontResolver&) = delete;
    FontResolver& operator=(const FontResolver&) = delete;

    // weight on the 100..900 scale of CSS and Windows (400 normal, 700 bold).
    FontFile Resolve(const std::string& face, int32_t weight, bool italic);

private:
    FontFile Match(const std::string& face, int32_t weight, bool italic) const;

    std::mutex mutex_;
    std::map<std::tuple<std::string, int32_t, bool>, FontFile> cache_;
};

}  // namespace vexplot
