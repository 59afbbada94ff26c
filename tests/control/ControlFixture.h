#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "RecordingSite.h"
#include "com/ClassRegistry.h"
#include "com/ConnectionPoint.h"
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
        for (uint32_t i = 0; reply && p && i < p->argCount; ++i) {
            const Variant& arg = p->args[i];
            if (arg.IsByRef() && arg.Deref().Type() == VT_BSTR) return arg.AssignThroughRef(Variant(*reply));
        }
        return S_OK;
    }

    std::vector<Event> events;
    // Set: written back through a by-reference text argument, as a host
    // answers an event that asks for a text.
    std::optional<std::string> reply;
};

// Calls member `name` of `object` as an automation client does: arguments
// in natural order (Invoke takes them last first), a put value passed as
// the named DISPID_PROPERTYPUT argument. Anything but S_OK fails the test
// unless `hr` is given to take the answer.
inline Variant Dispatch(IDispatch* object, const char* name, std::vector<Variant> args = {},
                        uint16_t flags = DISPATCH_METHOD, HRESULT* hr = nullptr) {
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(object->GetIDsOfNames(GUID_NULL, &name, 1, 0, &id), S_OK) << name;
    std::reverse(args.begin(), args.end());
    const DISPID named = DISPID_PROPERTYPUT;
    const bool put = flags == DISPATCH_PROPERTYPUT;
    DispParams params{args.data(), put ? &named : nullptr, static_cast<uint32_t>(args.size()), put ? 1u : 0u};
    Variant result;
    const HRESULT r = object->Invoke(id, GUID_NULL, 0, flags, &params, &result, nullptr, nullptr);
    if (hr) *hr = r;
    else EXPECT_EQ(r, S_OK) << name;
    return result;
}

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
    // A sink advised on the control's events of `iid` (the current ones by default).
    ComPtr<RecordingEventSink> Advise(const IID& iid = CUI_VexplotCtrl::kExEventsIid) {
        auto sink = MakeComObject<RecordingEventSink>();
        uint32_t cookie = 0;
        EXPECT_EQ(ConnectionAdvise(control->Identity(), iid, sink.Get(), &cookie), S_OK);
        return sink;
    }
    // Calls the control's member `name` through its dispatch interface.
    Variant Method(const char* name, std::vector<Variant> args = {}) {
        return Dispatch(control.Get(), name, std::move(args));
    }
    // From now on the control's error events land in `errors`.
    void ListenForErrors() {
        control->OnError([this](HRESULT code, const std::string& text) { errors.push_back({code, text}); });
    }
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
    struct HeardError {
        HRESULT code;
        std::string text;
    };
    std::vector<HeardError> errors;  // see ListenForErrors
};

class ControlFixture : public ::testing::Test, public ControlHarness {};

// A created control on the recording engine in every test.
class WorkingControl : public ControlFixture {
protected:
    void SetUp() override { CreateWorking(); }
};

}  // namespace vexplot::test
