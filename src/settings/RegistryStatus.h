#pragma once
#include <string>

namespace vexplot {

// Status codes of the settings store. They are the Windows error codes the
// registry calls return for the same situations, so code that compares a
// write's status with 0 or with a known code behaves as it did there.
struct RegistryStatus {
    static constexpr long kSuccess = 0;
    static constexpr long kFileNotFound = 2;        // ERROR_FILE_NOT_FOUND: no such key or value
    static constexpr long kAccessDenied = 5;        // ERROR_ACCESS_DENIED: the database is read-only
    static constexpr long kInvalidHandle = 6;       // ERROR_INVALID_HANDLE: no key is open
    static constexpr long kOutOfMemory = 14;        // ERROR_OUTOFMEMORY
    static constexpr long kLockViolation = 33;      // ERROR_LOCK_VIOLATION: still busy after the timeout
    static constexpr long kInvalidParameter = 87;   // ERROR_INVALID_PARAMETER
    static constexpr long kDiskFull = 112;          // ERROR_DISK_FULL
    static constexpr long kBadPathname = 161;       // ERROR_BAD_PATHNAME: malformed key path
    static constexpr long kBadDatabase = 1009;      // ERROR_BADDB: corrupt or not a settings database
    static constexpr long kCannotOpen = 1011;       // ERROR_CANTOPEN: the database cannot be opened
    static constexpr long kIoFailed = 1016;         // ERROR_REGISTRY_IO_FAILED
    static constexpr long kKeyDeleted = 1018;       // ERROR_KEY_DELETED: the open key was deleted meanwhile

    // A short English description of `status`, for command-line output.
    static std::string Text(long status);
};

}  // namespace vexplot
