#pragma once
#include "dataobject/GraphContents.h"

namespace vexplot {

class StreamReader;

// Reads a NumPy ".npy" array (format versions 1.0, 2.0 and 3.0) as a grid:
// shape (rows, columns) = (Y count, X count), so that row iy, column ix is
// value (ix, iy); a one-dimensional array of n is one row (n x 1). Elements
// of any of float32/64, int8..64, uint8..64 and bool, either byte order,
// C or Fortran order, are converted to doubles (large 64-bit integers round
// to the nearest double). Both scales are 0, 1, 2, ...; labels stay empty.
//
// Faults throw StreamError: STG_E_INVALIDHEADER when the magic is not
// NumPy's, STG_E_DOCFILECORRUPT for an unsupported version, dtype or shape or
// a malformed header, STG_E_READFAULT when fewer bytes follow than the shape
// needs (checked before allocating).
class NpyReader {
public:
    static GraphContents Read(StreamReader& reader);
};

}  // namespace vexplot
