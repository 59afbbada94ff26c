#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

#include "com/ComPtr.h"
#include "engine/IGraphDevice2D.h"
#include "engine/IGraphEngine.h"
#include "engine/IGraphView3D.h"

namespace vexplot {

class IControlSite;
class MessageSink;
class SettingsStore;

// Creation stopped for good: the user cancelled the engine choice, chose
// nothing, or the engine has no 2-D device. The message was shown already;
// the control's window creation fails and the control shows no plot.
class EngineStartError : public std::runtime_error {
public:
    EngineStartError() : std::runtime_error("Error") {}
};

// Finds, creates and binds the graph engine, and holds its three
// interfaces: the root, the 2-D device and the 3-D view.
//
// Discovery: the root setting "Engine" (a CLSID text) names the engine.
// When it is empty the "Engine" sub-key is searched for the wanted name;
// this platform is never the old Windows NT the search distinguishes, so
// the wanted name is "OpenGL". The name found is written as "EngineName"
// and its CLSID text as "Engine" (both empty when not found, which then
// fails creation and leads to the engine-choice dialog).
class EngineHost {
public:
    // What the engine is bound with.
    struct Binding {
        WindowHandle view2D = 0;
        WindowHandle view3D = 0;
        // Sent with SetPalette when not empty (no graph object exists yet).
        std::span<const uint32_t> palette;
        uint32_t backgroundColor = 0;
        int32_t axisMargin = 0;  // the first and last SetParameters value
        bool gridVisible = true;
        bool logZ = false;
    };

    // `site` is borrowed and must outlive the host; `sink` and `store` go to
    // the settings keys (null: defaults).
    EngineHost(IControlSite& site, MessageSink* sink, std::shared_ptr<SettingsStore> store);
    ~EngineHost();
    EngineHost(const EngineHost&) = delete;
    EngineHost& operator=(const EngineHost&) = delete;

    // Runs discovery, creation and binding. Throws EngineStartError when
    // creation stops; the interfaces are then all null. A 3-D view that
    // cannot attach is dropped after "Can't start 3D device." and Create
    // succeeds with the 2-D device alone.
    void Create(const Binding& binding);
    // Releases the 3-D view, the 2-D device and the engine, in that order.
    void Release();
    // Drops the 3-D view alone (the device was lost).
    void DropView3D() { view_.Reset(); }

    IGraphEngine* Engine() const { return engine_.Get(); }
    IGraphDevice2D* Device() const { return device_.Get(); }
    IGraphView3D* View() const { return view_.Get(); }
    // "EngineName" as read after creation.
    const std::string& EngineName() const { return engineName_; }

    static constexpr const char* kWantedEngine = "OpenGL";
    static constexpr const char* kCaption = "Vexplot";

private:
    std::string ReadEngineSetting();
    // Writes the wanted engine of the "Engine" list as the setting and
    // answers its CLSID text (empty when the list lacks it).
    std::string Discover();
    bool TryCreate(const std::string& clsidText);
    std::string ChooseAnother();
    void Show(const std::string& text);
    [[noreturn]] void Stop(uint32_t messageId);

    IControlSite& site_;
    MessageSink* sink_;
    std::shared_ptr<SettingsStore> store_;
    ComPtr<IGraphEngine> engine_;
    ComPtr<IGraphDevice2D> device_;
    ComPtr<IGraphView3D> view_;
    std::string loadFailure_;  // why the last engine could not be created, in words
    std::string engineName_;
};

}  // namespace vexplot
