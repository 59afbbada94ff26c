#pragma once
#include <string>

namespace vexplot {

// The letters that name new markers, shared by every control and every
// marker collection of the process. Each call hands out 'A' plus the
// counter, then advances it: below 26 it is incremented, otherwise reset to
// 0. The names thus run "A" ... "Z", "[" once, then "A" again. Guarded by a
// mutex (controls may live on different user-interface threads).
class MarkerLetters {
public:
    static std::string Next();
    // Back to "A" (tests, and a host that wants its letters from the start).
    static void Reset();
};

}  // namespace vexplot
