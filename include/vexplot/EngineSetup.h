#pragma once
#include <memory>
#include <string>

namespace vexplot {

class SettingsStore;

// The OpenGL engine plug-in that came with this copy of Vexplot: beside the
// library in an installation (<libdir>/vexplot/), or in the build tree.
// "" when there is none.
std::string ShippedEnginePath();

// Writes the registration of the engine plug-in `plugin`: its class record in
// the user's settings (the process-wide class table reads it there) and
// "OpenGL" in the engine list of `store` (null: the user's settings).
// False with the reason in *error when the settings cannot be written.
bool RegisterEngine(const std::string& plugin, const std::shared_ptr<SettingsStore>& store, std::string* error);

struct EngineSetupResult {
    bool ready = false;         // a usable engine is registered now
    bool registered = false;    // this call wrote the user's class record
    std::string plugin;         // the engine library in use
    std::string message;        // one line to tell the user, "" when nothing happened
};

// First-run set-up for hosts that ship the engine plug-in: when the settings
// hold no usable registration of the OpenGL engine (none, or one whose
// library is gone), registers ShippedEnginePath(). A registration that works
// is left alone, so the user's own choice stands and the message is said once.
EngineSetupResult RegisterShippedEngine(const std::shared_ptr<SettingsStore>& store = nullptr);

}  // namespace vexplot
