#pragma once
#include <string>

#include "dataobject/GraphContents.h"

namespace vexplot {

// Reads a data file into new contents, choosing the format by the file's
// extension (case-insensitive):
//   ".3do"  the data object's own form (GraphStreamFormat), the whole file
//   ".npy"  a NumPy array (NpyReader)
//   ".csv"  comma-separated text (TextGridReader)
//   other   text with commas or blanks between the fields (TextGridReader)
// The contents' name is the file's base name without its extension.
//
// Throws StreamError whose description starts with `path` and names the
// fault ("peaks.3do: grid needs 8000 bytes but only 1000 remain at offset
// 88"): the open error (STG_E_FILENOTFOUND, STG_E_ACCESSDENIED), the format's
// error, STG_E_DOCFILECORRUPT when bytes follow the data, E_OUTOFMEMORY.
class GraphFileLoader {
public:
    // Text files larger than this (2 GiB) are refused rather than read whole.
    static constexpr uint64_t kMaxTextBytes = uint64_t{1} << 31;

    static GraphContents Load(const std::string& path);
};

}  // namespace vexplot
