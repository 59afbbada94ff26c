#include "vexplot/EngineSetup.h"

#include <dlfcn.h>

#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "com/ClassRegistry.h"
#include "engine/EngineClasses.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"

namespace vexplot {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPluginFile = "libvexplot_opengl.so";
constexpr const char* kEngineName = "OpenGL";

// The folder of the file this code was loaded from: the shared library in an
// installation, or the program or Python module that linked it statically.
std::optional<fs::path> CodeFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&CodeFolder), &info) == 0 || !info.dli_fname) return std::nullopt;
    std::error_code ec;
    fs::path file = fs::canonical(info.dli_fname, ec);
    if (ec) return std::nullopt;
    return file.parent_path();
}

// Where the plug-in lies relative to that folder, in the order tried: beside
// the library (<libdir>/vexplot/), from a program in <prefix>/bin, from the
// Python package in <prefix>/lib/python3*/dist-packages/vexplot, and in the
// build tree (lib/, apps/<program>/, python/vexplot/ next to engines/).
std::vector<fs::path> Candidates(const fs::path& dir) {
    const fs::path fromBin = dir / "..";
    const fs::path fromPython = dir / ".." / ".." / ".." / "..";
    return {dir / "vexplot" / kPluginFile,
            fromBin / VEXPLOT_INSTALL_LIBDIR / "vexplot" / kPluginFile,
            fromBin / "lib" / "vexplot" / kPluginFile,
            fromPython / VEXPLOT_INSTALL_LIBDIR / "vexplot" / kPluginFile,
            fromPython / "lib" / "vexplot" / kPluginFile,
            dir / ".." / "engines" / "opengl" / kPluginFile,
            dir / ".." / ".." / "engines" / "opengl" / kPluginFile};
}

bool IsFile(const std::string& path) {
    std::error_code ec;
    return !path.empty() && fs::is_regular_file(path, ec);
}

// The library of the engine's class record in the user's settings; "" when
// there is none. A quiet read that creates nothing.
std::string RegisteredLibrary() {
    CRegistryKey key;
    if (key.OpenExisting(RootKey::CurrentUser, InprocServerKey(CLSID_OpenGLEngine)) != 1) return {};
    const std::optional<RegistryValue> value = key.QueryValue("");
    if (!value || value->type != ValueType::String) return {};
    std::string path(value->data.begin(), value->data.end());
    path.resize(std::char_traits<char>::length(path.c_str()));
    return path;
}

// Whether the control's discovery finds an engine in `store`: a chosen
// "Engine", or "OpenGL" in the engine list.
bool EngineListed(const std::shared_ptr<SettingsStore>& store) {
    const std::string product = CRegistryKey::kProductPath;
    CRegistryKey root(nullptr, store);
    if (root.OpenExisting(RootKey::CurrentUser, product) == 1 && !root.ReadString("Engine").empty()) return true;
    CRegistryKey list(nullptr, store);
    return list.OpenExisting(RootKey::CurrentUser, product + "\\Engine") == 1 && !list.ReadString(kEngineName).empty();
}

bool ListEngine(const std::shared_ptr<SettingsStore>& store, std::string* error) {
    CRegistryKey list(nullptr, store);
    if (list.Open("Engine") != 0 && list.WriteString(kEngineName, CLSID_OpenGLEngine.ToString()) == 0) return true;
    if (error) *error = std::string("cannot write the engine list in ") + CRegistryKey::kProductPath + "\\Engine";
    return false;
}

}  // namespace

std::string ShippedEnginePath() {
    const std::optional<fs::path> dir = CodeFolder();
    if (!dir) return {};
    std::error_code ec;
    for (const fs::path& candidate : Candidates(*dir))
        if (fs::is_regular_file(candidate, ec)) return fs::canonical(candidate, ec).string();
    return {};
}

bool RegisterEngine(const std::string& plugin, const std::shared_ptr<SettingsStore>& store, std::string* error) {
    const std::string record = InprocServerKey(CLSID_OpenGLEngine);
    CRegistryKey key;
    if (key.OpenUnder(RootKey::CurrentUser, record) == 0 || key.WriteString("", plugin) != 0) {
        if (error) *error = "cannot write " + record;
        return false;
    }
    return ListEngine(store, error);
}

EngineSetupResult RegisterShippedEngine(const std::shared_ptr<SettingsStore>& store) {
    EngineSetupResult result;
    result.plugin = RegisteredLibrary();
    const bool recordUsable = IsFile(result.plugin);
    if (recordUsable && EngineListed(store)) {
        result.ready = true;
        return result;
    }
    std::string error;
    if (recordUsable) {
        // The user's engine stands; only this store's list lacks it (a fresh
        // store of a script, say), which is no news to the user.
        result.ready = ListEngine(store, &error);
        if (!result.ready) result.message = "vexplot: " + error;
        return result;
    }
    const std::string shipped = ShippedEnginePath();
    if (shipped.empty()) {
        result.message = std::string("vexplot: no graph engine is registered and ") + kPluginFile +
                         " was not found beside this program; register one with `vexplot register PLUGIN`";
        return result;
    }
    if (!RegisterEngine(shipped, store, &error)) {
        result.message = "vexplot: " + error;
        return result;
    }
    result.ready = result.registered = true;
    result.plugin = shipped;
    result.message = "vexplot: registered the OpenGL graph engine for this user: " + shipped;
    return result;
}

}  // namespace vexplot
