#include "RegisterCommand.h"

#include <dlfcn.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "com/ClassRegistry.h"
#include "com/IClassFactory.h"
#include "engine/EngineClasses.h"
#include "settings/CRegistryKey.h"

namespace vexplot {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLibrary = "libvexplot_opengl.so";

// Where the plug-in lies relative to the program's folder: the build tree
// (apps/vexplot/ or a flat bin folder beside engines/) or an installation.
std::vector<fs::path> DefaultCandidates() {
    std::error_code ec;
    const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return {};
    const fs::path dir = exe.parent_path();
    return {dir / ".." / "engines" / "opengl" / kLibrary, dir / ".." / ".." / "engines" / "opengl" / kLibrary,
            dir / ".." / "lib" / "vexplot" / kLibrary};
}

std::string FindPlugin(int argc, char** argv) {
    std::error_code ec;
    if (argc > 1) {
        const fs::path given = fs::absolute(argv[1], ec);
        if (!ec && fs::is_regular_file(given, ec)) return fs::weakly_canonical(given, ec).string();
        std::fprintf(stderr, "vexplot register: no plug-in at %s\n", argv[1]);
        return {};
    }
    for (const fs::path& candidate : DefaultCandidates())
        if (fs::is_regular_file(candidate, ec)) return fs::weakly_canonical(candidate, ec).string();
    std::fprintf(stderr, "vexplot register: %s not found beside the program; give its path\n", kLibrary);
    return {};
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
                         HResultText(hr).c_str());
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
    const std::string clsid = CLSID_OpenGLEngine.ToString();
    const std::string record = InprocServerKey(CLSID_OpenGLEngine);

    CRegistryKey key;
    if (!key.OpenUnder(RootKey::CurrentUser, record) || key.WriteString("", plugin) != 0) {
        std::fprintf(stderr, "vexplot register: cannot write %s\n", record.c_str());
        return 1;
    }
    std::printf("HKEY_CURRENT_USER\\%s\n  (default) = %s\n", record.c_str(), plugin.c_str());
    if (!key.Open("Engine") || key.WriteString("OpenGL", clsid) != 0) {
        std::fprintf(stderr, "vexplot register: cannot write the engine list\n");
        return 1;
    }
    std::printf("HKEY_CURRENT_USER\\%s\\Engine\n  OpenGL = %s\n", CRegistryKey::kProductPath, clsid.c_str());
    return 0;
}

}  // namespace vexplot
