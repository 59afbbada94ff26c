#include "vexplot/Version.h"

namespace vexplot {

const char* Version() { return VEXPLOT_VERSION_STRING; }

}  // namespace vexplot
