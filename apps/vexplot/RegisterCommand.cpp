#include "RegisterCommand.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "com/ClassRegistry.h"
#include "engine/EngineClasses.h"
#include "settings/CRegistryKey.h"
#include "vexplot/EngineSetup.h"

namespace vexplot {

namespace {

namespace fs = std::filesystem;

std::string FindPlugin(int argc, char** argv) {
    std::error_code ec;
    if (argc > 1) {
        const fs::path given = fs::absolute(argv[1], ec);
        if (!ec && fs::is_regular_file(given, ec)) return fs::weakly_canonical(given, ec).string();
        std::fprintf(stderr, "vexplot register: no plug-in at %s\n", argv[1]);
        return {};
    }
    std::string shipped = ShippedEnginePath();
    if (shipped.empty())
        std::fprintf(stderr, "vexplot register: libvexplot_opengl.so not found beside the program; give its path\n");
    return shipped;
}

}  // namespace

int RunRegisterCommand(int argc, char** argv) {
    if (argc > 2) {
        std::fprintf(stderr, "usage: vexplot register [PLUGIN]\n");
        return 2;
    }
    const std::string plugin = FindPlugin(argc, argv);
    if (plugin.empty()) return 1;
    std::string error;
    if (!RegisterEngine(plugin, nullptr, &error)) {
        std::fprintf(stderr, "vexplot register: %s\n", error.c_str());
        return 1;
    }
    std::printf("HKEY_CURRENT_USER\\%s\n  (default) = %s\n", InprocServerKey(CLSID_OpenGLEngine).c_str(), plugin.c_str());
    std::printf("HKEY_CURRENT_USER\\%s\\Engine\n  OpenGL = %s\n", CRegistryKey::kProductPath,
                CLSID_OpenGLEngine.ToString().c_str());
    return 0;
}

}  // namespace vexplot
