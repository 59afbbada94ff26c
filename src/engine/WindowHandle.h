#pragma once
#include <cstdint>

namespace vexplot {

// A window as the control's site names it to the engine: an opaque token
// that only the site can resolve (a widget, an off-screen pixel buffer of the
// headless site, a recording double). The engine compares and stores it and
// never dereferences it. 0 means "no window".
using WindowHandle = uintptr_t;

}  // namespace vexplot
