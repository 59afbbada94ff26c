#include "settings/RegistryStatus.h"

namespace vexplot {

std::string RegistryStatus::Text(long status) {
    switch (status) {
    case kSuccess: return "success";
    case kFileNotFound: return "not found";
    case kAccessDenied: return "the settings database is read-only";
    case kInvalidHandle: return "no key is open";
    case kOutOfMemory: return "out of memory";
    case kLockViolation: return "the settings database is busy";
    case kInvalidParameter: return "invalid parameter";
    case kDiskFull: return "the disk is full";
    case kBadPathname: return "invalid key path";
    case kBadDatabase: return "the settings database is corrupt or not a settings database";
    case kCannotOpen: return "the settings database cannot be opened";
    case kIoFailed: return "input/output error on the settings database";
    case kKeyDeleted: return "the key has been deleted";
    default: return "error " + std::to_string(status);
    }
}

}  // namespace vexplot
