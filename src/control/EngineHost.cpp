#include "control/EngineHost.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "com/ClassRegistry.h"
#include "com/ErrorInfo.h"
#include "com/Guid.h"
#include "site/IControlSite.h"
#include "control/StringTable.h"
#include "settings/CRegistryKey.h"

namespace vexplot {

EngineHost::EngineHost(IControlSite& site, MessageSink* sink, std::shared_ptr<SettingsStore> store)
    : site_(site), sink_(sink), store_(std::move(store)) {}

EngineHost::~EngineHost() { Release(); }

void EngineHost::Release() {
    view_.Reset();
    device_.Reset();
    engine_.Reset();
}

std::string EngineHost::ReadEngineSetting() {
    CRegistryKey key(sink_, store_);
    return key.Open("") ? key.ReadString("Engine") : std::string();
}

std::string EngineHost::Discover() {
    CRegistryKey list(sink_, store_);
    std::string name;
    std::string clsid;
    if (list.Open("Engine")) {
        for (const std::string& value : list.ValueNames()) {
            if (value != kWantedEngine) continue;
            name = value;
            clsid = list.ReadString(value);
            break;
        }
    }
    CRegistryKey root(sink_, store_);
    if (root.Open("")) {
        root.WriteString("EngineName", name);
        root.WriteString("Engine", clsid);
    }
    return clsid;
}

bool EngineHost::TryCreate(const std::string& clsidText) {
    const std::optional<CLSID> clsid = GUID::Parse(clsidText);
    if (!clsid) return false;
    HRESULT hr = S_OK;
    ClearErrorInfo();
    ComPtr<IGraphEngine> engine = CreateInstance<IGraphEngine>(*clsid, CLSCTX_INPROC_SERVER, &hr);
    // The loader's reason (a missing library, a symbol it lacks) goes into
    // the message that follows, so the user can act on it.
    loadFailure_ = FAILED(hr) || !engine ? TakeErrorInfo() : std::string();
    if (FAILED(hr) || !engine) return false;
    engine_ = std::move(engine);
    return true;
}

// The engine-choice dialog over the "Engine" sub-key. A confirmed choice is
// written as "Engine" and "EngineName"; the setting is then read again.
// Returns that setting, or throws when the dialog was cancelled.
std::string EngineHost::ChooseAnother() {
    std::vector<EngineEntry> engines;
    CRegistryKey list(sink_, store_);
    if (list.Open("Engine"))
        for (const std::string& name : list.ValueNames()) engines.push_back({name, list.ReadString(name)});
    list.Close();
    const std::optional<EngineEntry> choice = site_.ChooseEngine(engines);
    if (!choice) throw EngineStartError();
    CRegistryKey root(sink_, store_);
    const bool written = root.Open("") && root.WriteString("Engine", choice->clsidText) == 0;
    if (written) root.WriteString("EngineName", choice->name);
    // Unwritten, the setting would still name the engine that just failed.
    return written ? ReadEngineSetting() : choice->clsidText;
}

void EngineHost::Show(const std::string& text) { site_.MessageBox(text, kCaption, MessageButtons::Ok); }

void EngineHost::Stop(uint32_t messageId) {
    Show(StringTable::Get(messageId));
    Release();
    throw EngineStartError();
}

void EngineHost::Create(const Binding& binding) {
    Release();
    std::string clsid = ReadEngineSetting();
    if (clsid.empty()) {
        const std::string discovered = Discover();
        clsid = ReadEngineSetting();
        // A store that could not take the setting (locked, read-only) still
        // lets this run use the engine it found.
        if (clsid.empty()) clsid = discovered;
    }
    // An engine that cannot be created, or whose rendering context cannot
    // be set up, is the same failure to the user: choose another one.
    for (;;) {
        if (TryCreate(clsid)) {
            if (SUCCEEDED(engine_->Initialize())) break;
            engine_.Reset();
        }
        const std::string reason = std::exchange(loadFailure_, std::string());
        Show(StringTable::Get(StringTable::kEngineNotInitialized) + (reason.empty() ? "" : "\n\n" + reason + "."));
        try {
            clsid = ChooseAnother();
        } catch (const EngineStartError&) {
            Release();
            throw;
        }
        if (clsid.empty()) Stop(StringTable::kEngineNotSelected);
    }
    {
        CRegistryKey root(sink_, store_);
        engineName_ = root.Open("") ? root.ReadString("EngineName") : std::string();
    }

    if (FAILED(engine_->GetDevice2D(device_.ReleaseAndGetAddressOf())) || !device_)
        Stop(StringTable::kEngineNotInstantiated);
    device_->Attach(binding.view2D);
    if (!binding.palette.empty())
        engine_->SetPalette(static_cast<uint32_t>(binding.palette.size()), binding.palette.data());
    device_->SetBackgroundColor(binding.backgroundColor);
    device_->SetParameters(binding.axisMargin, 15, 50, binding.axisMargin);

    if (FAILED(engine_->GetView3D(view_.ReleaseAndGetAddressOf()))) view_.Reset();
    if (view_ && view_->Attach(binding.view3D) == S_OK) {
        view_->SetBackgroundColor(binding.backgroundColor);
        view_->SetGridVisible(binding.gridVisible);
        view_->SetLogZ(binding.logZ);
    } else {
        Show("Can't start 3D device.");
        view_.Reset();
    }
}

}  // namespace vexplot
