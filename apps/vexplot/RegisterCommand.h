#pragma once

namespace vexplot {

// `vexplot register [PLUGIN]`: writes the OpenGL engine plug-in's
// registration record (the library's absolute path) and lists it as
// "OpenGL" under the "Engine" settings sub-key. Without PLUGIN the library
// is looked for beside the program: in the build tree, then where an
// installation puts it. Returns 0 on success, 1 when the library is not
// found or the settings cannot be written, 2 for wrong arguments.
int RunRegisterCommand(int argc, char** argv);

}  // namespace vexplot
