#pragma once

namespace vexplot {

// The version of the Vexplot library this program runs with, "MAJOR.MINOR.PATCH".
const char* Version();

}  // namespace vexplot
