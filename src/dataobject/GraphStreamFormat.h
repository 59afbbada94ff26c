#pragma once
#include <cstdint>

#include "dataobject/GraphContents.h"

namespace vexplot {

class StreamReader;
class StreamWriter;

// The data object's own binary form, used by IPersistStream and, as a whole
// file, by ".3do" files. Little-endian, strings as StreamWriter writes them:
//
//   offset  size     item
//   0       8        magic "VX3DO\r\n\x1A" (the CR LF and ^Z expose a text-mode
//                    transfer that mangled the file)
//   8       4        version, int32 = 1
//   12      4        X count, int32
//   16      4        Y count, int32
//   20      8 * X    X scale, doubles
//           8 * Y    Y scale, doubles
//           string   X label, Y label, Z label, name (four strings)
//           8 * X*Y  grid, doubles in memory order: value (ix, iy) at ix * Y + iy
//
// An object without a grid is stored with both counts 0 and no doubles.
class GraphStreamFormat {
public:
    static constexpr int32_t kVersion = 1;
    static constexpr uint8_t kMagic[8] = {'V', 'X', '3', 'D', 'O', '\r', '\n', 0x1A};

    // Throws StreamError when the stream fails.
    static void Write(const GraphContents& contents, StreamWriter& writer);
    // Reads one object from the reader's position, leaving the reader just
    // after it. Sizes are checked against the bytes that remain before
    // anything is allocated, and the grid is read straight into the new
    // array's storage. Throws StreamError: STG_E_INVALIDHEADER for a wrong
    // magic, STG_E_DOCFILECORRUPT for impossible values (unknown version,
    // bad sizes), STG_E_READFAULT for data that ends early.
    static GraphContents Read(StreamReader& reader);
    // The bytes Write puts out for `contents`.
    static uint64_t Size(const GraphContents& contents);
};

}  // namespace vexplot
