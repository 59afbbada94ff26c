#pragma once
#include "com/Guid.h"

namespace vexplot {

// The class of the OpenGL graph engine plug-in (engines/opengl). `vexplot
// register` writes its registration record and lists it as "OpenGL" under
// the "Engine" settings sub-key.
inline constexpr CLSID CLSID_OpenGLEngine = GUID::FromLiteral("{6A8F3D2C-5B1E-4C7A-9F0D-2E4B8C1A7D35}");

}  // namespace vexplot
