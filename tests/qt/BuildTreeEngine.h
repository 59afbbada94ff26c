#pragma once
#include <gtest/gtest.h>

#include "com/ClassRegistry.h"
#include "engine/EngineClasses.h"
#include "settings/CRegistryKey.h"

namespace vexplot {

// Registers the engine plug-in of the build tree in the tests' in-memory
// settings store, as `vexplot register` does for a user.
inline void RegisterBuildTreeEngine() {
    CRegistryKey key;
    ASSERT_NE(key.OpenUnder(RootKey::CurrentUser, InprocServerKey(CLSID_OpenGLEngine)), 0);
    key.WriteString("", VEXPLOT_OPENGL_PLUGIN_PATH);
    ASSERT_NE(key.Open("Engine"), 0);
    key.WriteString("OpenGL", CLSID_OpenGLEngine.ToString());
}

}  // namespace vexplot
