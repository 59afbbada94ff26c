#pragma once

namespace vexplot {

// `vexplot info FILE...`: loads each data file, binds it to a graph object
// and prints what it holds. Returns 0 when every file loaded, 1 otherwise,
// 2 for wrong arguments.
int RunInfoCommand(int argc, char** argv);

}  // namespace vexplot
