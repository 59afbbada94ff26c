#pragma once
#include <cstdint>
#include <stdexcept>
#include <string>

namespace vexplot {

// A malformed, truncated or unreadable archive: what was expected, and the
// byte offset in the stream where the reader stood. Raised by CArchive and
// by the records that validate what they read.
class ArchiveError : public std::runtime_error {
public:
    ArchiveError(const std::string& message, uint64_t offset)
        : std::runtime_error(message), offset_(offset) {}

    uint64_t Offset() const { return offset_; }

private:
    uint64_t offset_;
};

}  // namespace vexplot
