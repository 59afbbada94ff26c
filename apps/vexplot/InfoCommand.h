#pragma once

namespace vexplot {

// `vexplot info FILE...`: loads each data file, binds it to a graph object
// and prints what it holds; any other file is read as an archive of records
// and described record by record. Returns 0 when every file could be read
// whole, 1 otherwise, 2 for wrong arguments.
int RunInfoCommand(int argc, char** argv);

}  // namespace vexplot
