#pragma once
#include <string_view>

#include "dataobject/GraphContents.h"

namespace vexplot {

// Reads a grid from text: one line per Y index, one field per X index.
//
// Lines: blank lines and lines whose first visible character is '#' are
// skipped; CR LF endings and a UTF-8 byte-order mark are accepted.
// Fields: separated by commas when the file is a CSV file or when the first
// line holds a comma, otherwise by runs of blanks and tabs. Blanks around a
// comma-separated field and one pair of enclosing double quotes are dropped.
// Cells: decimal numbers as strtod reads them ("1.5e-3", "-inf"); an empty
// cell and "nan" in any case are NaN ("no value").
//
// Headers: the first line is a header line of X values, and every later
// line starts with its Y value, when
//   - it has two fields or more and its first field is empty or not a
//     number (the top-left corner cell, which is ignored: ",0.5,1.0" or
//     "y\x 0.5 1.0"), or
//   - it has exactly one field fewer than the second line (the corner cell
//     left out, as whitespace-separated files do).
// A header's X values that are not all finite numbers (column names) give
// the X scale 0, 1, 2, ...; Y values must be finite numbers. Without a
// header both scales are 0, 1, 2, .... Labels and name stay empty.
//
// Faults throw StreamError(STG_E_DOCFILECORRUPT) naming the line (counted
// from 1 in the file) and the column: ragged rows, cells that are not
// numbers, no data at all, a grid larger than GraphContents::kMaxCells.
class TextGridReader {
public:
    // `commaSeparated` forces commas (for ".csv" files) instead of detecting.
    static GraphContents Read(std::string_view text, bool commaSeparated);
};

}  // namespace vexplot
