#include "RegisterCommand.h"

#include <dlfcn.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "com/ClassRegistry.h"
#include "com/IClassFactory.h"
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

// Loads `plugin` and asks it for the engine's class factory, as the control
// will: a file that is no plug-in of this engine (any readable file would
// pass a mere existence check) is refused with the loader's reason.
bool CheckPlugin(const std::string& plugin) {
    void* library = dlopen(plugin.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* reason = dlerror();
        std::fprintf(stderr, "vexplot register: %s is not a loadable plug-in: %s\n", plugin.c_str(),
                     reason ? reason : "unknown reason");
        return false;
    }
    const auto entry = reinterpret_cast<GetClassObjectFunction>(dlsym(library, kPluginEntryPoint));
    bool ok = false;
    if (!entry) {
        std::fprintf(stderr, "vexplot register: %s is a library but not a Vexplot engine plug-in (it has no %s)\n",
                     plugin.c_str(), kPluginEntryPoint);
    } else {
        ComPtr<IClassFactory> factory;
        const HRESULT hr = entry(&CLSID_OpenGLEngine, &IClassFactory::kIid, factory.ReleaseAndGetVoidAddress());
        ok = SUCCEEDED(hr) && factory;
        if (!ok)
            std::fprintf(stderr, "vexplot register: %s does not provide the OpenGL engine (%s)\n", plugin.c_str(),
                         HResultWords(hr).c_str());
    }
    // The factory goes before its code does.
    dlclose(library);
    return ok;
}

}  // namespace

int RunRegisterCommand(int argc, char** argv) {
    if (argc > 2) {
        std::fprintf(stderr, "usage: vexplot register [PLUGIN]\n");
        return 2;
    }
    const std::string plugin = FindPlugin(argc, argv);
    if (plugin.empty() || !CheckPlugin(plugin)) return 1;
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
