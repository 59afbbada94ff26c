#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexplot {

// The header dictionary of a NumPy ".npy" file, e.g.
//   {'descr': '<f8', 'fortran_order': False, 'shape': (100, 120), }
// restricted to what a grid can be made of: plain numbers (no structured
// or string types).
struct NpyHeader {
    enum class Kind { Float, Signed, Unsigned, Bool };

    Kind kind = Kind::Float;
    uint32_t itemSize = 8;      // bytes per element: 1, 2, 4 or 8
    bool bigEndian = false;     // of the stored elements
    bool fortranOrder = false;  // first index fastest (column-major)
    std::vector<uint64_t> shape;

    // Parses the dictionary text; on failure returns false with *fault
    // saying what is wrong ("unsupported dtype '<f2'").
    static bool Parse(std::string_view text, NpyHeader* header, std::string* fault);
};

}  // namespace vexplot
