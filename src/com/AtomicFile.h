#pragma once
#include <functional>
#include <string>

#include "com/IStream.h"

namespace vexplot {

// Replaces the file at `path` with what `write` puts into the stream it is
// given, such that a failure at any point leaves an existing file as it was:
// the bytes go to a new temporary file in the same folder, which is flushed
// to the device (fsync) and then renamed over `path` (a rename within one
// file system is atomic). The replaced file's permission bits are kept.
//
// On failure the temporary file is removed and the failure is rethrown:
// StreamError from the file operations (STG_E_ACCESSDENIED when the folder is
// not writable, STG_E_MEDIUMFULL when the disk is full, ...), or whatever
// `write` threw.
void WriteFileAtomically(const std::string& path, const std::function<void(IStream&)>& write);

}  // namespace vexplot
