#pragma once
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "RecordingSite.h"
#include "com/ClassRegistry.h"
#include "com/IDispatch.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/StringTable.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/GraphDataFactory.h"
#include "model/RecordingEngine.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"

namespace vexplot::test {

inline constexpr CLSID kRecordingEngineClass = GUID::FromLiteral("{73A0A676-91AD-4369-BCFA-4ECA3260AB39}");

// The recording engine as a built-in class: each instance logs into the
// shared log; the last one made stays reachable for the test.
class RecordingEngineFactory final : public ComObject<IClassFactory> {
public:
    explicit RecordingEngineFactory(std::shared_ptr<CallLog> log) : log_(std::move(log)) {}

    HRESULT CreateInstance(IUnknown*, const IID& iid, void** out) override {
        log_->Record("factory.CreateInstance");
        engine = MakeComObject<RecordingEngine>(log_);
        engine->noDevice = noDevice;
        return engine->QueryInterface(iid, out);
    }
    HRESULT LockServer(bool) override { return S_OK; }

    ComPtr<RecordingEngine> engine;
    bool noDevice = false;

private:
    std::shared_ptr<CallLog> log_;
};

// An event sink of the control: records each event's dispid and arguments
// (in natural order, by-reference ones dereferenced).
class RecordingEventSink final : public ComObject<IDispatch> {
public:
    struct Event {
        DISPID dispid;
        std::vector<Variant> args;
    };

    HRESULT GetTypeInfoCount(uint32_t* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT GetTypeInfo(uint32_t, LCID, IUnknown**) override { return E_NOTIMPL; }
    HRESULT GetIDsOfNames(const IID&, const char* const*, uint32_t, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT Invoke(DISPID id, const IID&, LCID, uint16_t, DispParams* p, Variant*, ExcepInfo*, uint32_t*) override {
        Event e{id, {}};
        for (uint32_t i = p ? p->argCount : 0; i-- > 0;) e.args.push_back(p->args[i].Deref());
        events.push_back(std::move(e));
        return S_OK;
    }

    std::vector<Event> events;
};

// A control on a recording site, its settings in a fresh in-memory store,
// with the recording engine registered (installed as "OpenGL" by
// InstallEngine()). Usable on its own where a table test needs one per row.
struct ControlHarness {
    ControlHarness() {
        setenv("VEXPLOT_REGISTRY", ":memory:", 1);
        RegisterGraphDataClass();
        ClassRegistry::Instance().Register(kRecordingEngineClass, factory, CLSCTX_INPROC_SERVER);
    }
    ~ControlHarness() {
        if (control) control->Destroy();
        ClassRegistry::Instance().Revoke(kRecordingEngineClass);
    }
    ControlHarness(const ControlHarness&) = delete;
    ControlHarness& operator=(const ControlHarness&) = delete;

    void Write(const char* group, const char* name, const std::string& text) {
        CRegistryKey key(nullptr, store);
        ASSERT_NE(key.Open(group), 0);
        key.WriteString(name, text);
    }
    void WriteInt(const char* group, const char* name, int32_t value) {
        CRegistryKey key(nullptr, store);
        ASSERT_NE(key.Open(group), 0);
        key.WriteInt(name, value);
    }
    std::string Read(const char* group, const char* name) {
        CRegistryKey key(nullptr, store);
        return key.Open(group) ? key.ReadString(name) : std::string();
    }
    // Lists the recording engine under `name` in the "Engine" sub-key.
    void InstallEngine(const char* name = "OpenGL") { Write("Engine", name, kRecordingEngineClass.ToString()); }

    void Construct() { control = MakeComObject<CUI_VexplotCtrl>(nullptr, store); }
    bool Create(PixelRect rect = {0, 0, 400, 300}) {
        if (!control) Construct();
        return control->Create(site, rect);
    }
    // A created control on the recording engine, the log cleared.
    void CreateWorking() {
        InstallEngine();
        ASSERT_TRUE(Create());
        log->calls.clear();
    }
    // Shows a grid of xCount x yCount through SetData.
    CGD_GraphObject* ShowGrid(int xCount = 4, int yCount = 3) {
        std::vector<double> z(static_cast<size_t>(xCount * yCount));
        for (size_t i = 0; i < z.size(); ++i) z[i] = static_cast<double>(i);
        auto data = CreateGraphData(z, xCount, yCount);
        EXPECT_EQ(control->SetData(data.Get()), S_OK);
        log->calls.clear();
        return control->GetGraphObjects()->Active();
    }
    RecordingView& View() { return *factory->engine->view; }
    // The recorded calls whose name starts with `prefix`.
    std::vector<std::string> Calls(const std::string& prefix) const {
        std::vector<std::string> out;
        for (const std::string& c : log->calls)
            if (c.rfind(prefix, 0) == 0) out.push_back(c);
        return out;
    }

    std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
    std::shared_ptr<SettingsStore> store = SettingsStore::OpenUnshared(":memory:");
    ComPtr<RecordingEngineFactory> factory = MakeComObject<RecordingEngineFactory>(log);
    RecordingSite site{log};
    ComPtr<CUI_VexplotCtrl> control;
};

class ControlFixture : public ::testing::Test, public ControlHarness {};

}  // namespace vexplot::test
