#include <algorithm>
#include <clocale>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ControlFixture.h"
#include "automation/DispatchTable.h"
#include "control/PropertyTable.h"
#include "support/Grid.h"
#include "ui/CUIW_InfoWnd.h"
#include "ui/LogFontRecord.h"

namespace vexplot::test {
namespace {

// A Variant as "type:value", so that a wrong type fails as loudly as a
// wrong value.
std::string Show(const Variant& v) {
    char number[64];
    switch (v.Type()) {
        case VT_BOOL: return std::string("bool:") + (v.BoolValue() ? "1" : "0");
        case VT_I2: return "i2:" + std::to_string(v.I2());
        case VT_I4: return "i4:" + std::to_string(v.I4());
        case VT_R8: std::snprintf(number, sizeof number, "r8:%g", v.R8()); return number;
        case VT_BSTR: return "s:" + v.Bstr();
        default: return "vt:" + std::to_string(v.Type());
    }
}

Variant B(bool b) { return Variant::Bool(b); }
Variant I2(int16_t v) { return Variant(v); }
Variant I4(int32_t v) { return Variant(v); }

// A value other than the default for each property a host can set; what a
// control created afterwards on the same store reads when that differs.
struct Change {
    Change(DISPID i, Variant v, std::optional<Variant> next = std::nullopt)
        : id(i), value(std::move(v)), nextControl(std::move(next)) {}
    DISPID id;
    Variant value;
    std::optional<Variant> nextControl;  // nullopt: the value itself
};

std::vector<Change> Changes() {
    std::vector<Change> c = {
        {3, I4(0x102030)}, {5, B(false)}, {6, B(false)},
        {7, B(true), B(false)},  // tool tips start off in every control
        {36, I4(0x123456)}, {37, I4(0x654321)}, {38, B(false)}, {39, B(false)}, {40, B(false)}, {41, B(false)},
        {42, B(false)}, {43, B(false)}, {44, B(true)}, {45, B(true)},
        {46, Variant(0.75)}, {47, Variant(1.5)}, {48, Variant(0.125)}, {49, Variant(0.25)}, {50, Variant(2.0)},
        {51, Variant(0.0625)}, {52, I2(1)}, {53, Variant("Courier New")},
        {600, B(true)}, {601, I4(5)},
    };
    // Per axis: grid flags, colours, ticks, format, display mode, label, decimals.
    const DISPID first[] = {1, 15, 24};
    const DISPID label[] = {33, 34, 35};
    const DISPID decimals[] = {604, 605, 606};
    for (int a = 0; a < 3; ++a) {
        const DISPID f = first[a];
        const DISPID rest = a == 0 ? 8 : f + 2;  // X numbers its colours after the general properties
        if (a != 2) {  // the Z grid flags are not persisted (see StoreOnlyProperties...)
            c.push_back({f, B(false)});
            c.push_back({f + 1, B(false)});
        }
        c.push_back({rest, I4(0x010203 * (a + 1))});
        c.push_back({rest + 1, I4(0x112233)});
        c.push_back({rest + 2, I4(0x445566)});
        c.push_back({rest + 3, I2(static_cast<int16_t>(7 + a))});
        c.push_back({rest + 4, I2(2)});
        c.push_back({rest + 5, I2(3)});
        c.push_back({rest + 6, I2(1)});
        c.push_back({label[a], Variant(std::string("Axis ") + "XYZ"[a])});
        c.push_back({decimals[a], I2(4)});
    }
    return c;
}

class PropertyTest : public ControlFixture {
protected:
    // A second control on the same store, created.
    ComPtr<CUI_VexplotCtrl> Next() {
        auto next = MakeComObject<CUI_VexplotCtrl>(nullptr, store);
        EXPECT_TRUE(next->Create(site, {0, 0, 400, 300}));
        return next;
    }
    int32_t ReadInt(const char* group, const char* name) {
        CRegistryKey key(nullptr, store);
        return key.Open(group) ? key.ReadInt(name) : -2;
    }
    bool Stored(const char* group, const char* name) {
        CRegistryKey key(nullptr, store);
        return key.Open(group) && key.QueryValue(name).has_value();
    }
    // The property `name` through the control's IDispatch.
    Variant Get(const std::string& name) { return Dispatch(control.Get(), name.c_str(), {}, DISPATCH_PROPERTYGET); }
    HRESULT Put(const std::string& name, Variant value) {
        HRESULT hr = S_OK;
        Dispatch(control.Get(), name.c_str(), {std::move(value)}, DISPATCH_PROPERTYPUT, &hr);
        return hr;
    }
};

class WorkingPropertyTest : public PropertyTest {
protected:
    void SetUp() override { CreateWorking(); }
};

TEST_F(WorkingPropertyTest, AFreshStoreGivesTheDefaultsAndReceivesEveryValue) {
    std::map<DISPID, Variant> defaults = {
        {3, I4(0)}, {5, B(true)}, {6, B(true)}, {7, B(false)}, {36, I4(0xFFFFFF)}, {37, I4(0xF0F0F0)},
        {38, B(true)}, {39, B(true)}, {40, B(true)}, {41, B(true)}, {42, B(true)}, {43, B(true)}, {44, B(false)},
        {45, B(false)}, {46, Variant(0.2)}, {47, Variant(0.2)}, {48, Variant(0.2)}, {49, Variant(0.01)},
        {50, Variant(0.01)}, {51, Variant(0.1)}, {52, I2(0)}, {53, Variant("Arial")}, {600, B(false)},
        {601, I4(2)}, {602, B(false)}, {33, Variant("X")}, {34, Variant("Y")}, {35, Variant("Z")}};
    for (DISPID f : {1, 15, 24}) defaults.insert({{f, B(true)}, {f + 1, B(true)}});
    for (DISPID c : {8, 17, 26})
        defaults.insert({{c, I4(0xFFFFFF)}, {c + 1, I4(0xD7D7D7)}, {c + 2, I4(0xACACAC)}, {c + 3, I2(5)},
                         {c + 4, I2(5)}, {c + 5, I2(0)}, {c + 6, I2(0)}});
    for (DISPID d : {604, 605, 606}) defaults.insert({d, I2(10)});
    for (const auto& [id, value] : defaults) {
        SCOPED_TRACE(id);
        EXPECT_EQ(Show(control->GetProperty(id)), Show(value));
    }

    struct Value {
        const char* group;
        std::string name;
        int32_t dword;
        const char* text = nullptr;  // set: a text value
    };
    std::vector<Value> stored = {
        {"", "Background color", 0}, {"", "Child info window", 1}, {"", "Show ToolTips", 0},
        {"", "LegendControlTop", 0}, {"", "LegendControlLeft", 50}, {"", "MenuControlTop", 0},
        {"", "MenuControlLeft", 5}, {"", "TextColor", 0xFFFFFF}, {"", "InfoBackgroundColor", 0xF0F0F0},
        {"", "CurrPosVisible", 1}, {"", "MarkerVisible", 1}, {"", "TracerVisible", 1},
        {"", "DiffTracerVisible", 1}, {"", "RegionVisible", 1}, {"", "ZoomVisible", 1}, {"", "Transparent", 0},
        {"", "InfoTop", 50}, {"", "InfoBottom", 150}, {"", "InfoLeft", 50}, {"", "InfoRight", 250},
        {"", "InfoDocked", 1}, {"3DView", "Quality", 0}, {"3DView", "X-Translation", 0, "0.3"},
        {"3DView", "Y-Translation", 0, "0.3"}, {"3DView", "Z-Translation", 0, "0.3"},
        {"3DView", "X-Rotation", 0, "0.05"}, {"3DView", "Y-Rotation", 0, "0.05"}, {"3DView", "Z-Rotation", 0, "0.5"},
        {"Legend", "AutoHide", 1}, {"Legend", "FastHide", 0}, {"Legend", "MoveDirection", 2},
        {"Legend", "Visible", 0}, {"Legend", "Top", 50}, {"Legend", "Left", 50},
        // A missing height and width are written as the top and left.
        {"Legend", "Height", 50}, {"Legend", "Width", 50}};
    for (const char* axis : {"X", "Y", "Z"}) {
        const std::string p = std::string(axis) + "-Axis ";
        for (Value v : std::vector<Value>{{"", "Number color", 0xFFFFFF}, {"", "Minor Grid color", 0xACACAC},
                                          {"", "Major Grid color", 0xD7D7D7}, {"", "Minor Grid", 1},
                                          {"", "Major Grid", 1}, {"", "Number Minor Ticks", 5},
                                          {"", "Number Major Ticks", 5}, {"", "Scale Format", 0},
                                          {"", "Display Mode", 0}, {"", "Label", 0, axis}, {"", "Decimal Count", 10}}) {
            v.name = p + v.name;
            stored.push_back(v);
        }
    }
    for (const Value& v : stored) {
        SCOPED_TRACE(std::string(v.group) + "/" + v.name);
        if (v.text)
            EXPECT_EQ(Read(v.group, v.name.c_str()), v.text);
        else
            EXPECT_EQ(ReadInt(v.group, v.name.c_str()), v.dword);
    }
    // The info window's "Visible" and the construction-only "GraphEngine" are never written back.
    EXPECT_FALSE(Stored("", "Visible"));
    EXPECT_FALSE(Stored("", "GraphEngine"));
    LogFontRecord::Bytes font{};
    CRegistryKey key(nullptr, store);
    ASSERT_NE(key.Open(""), 0);
    ASSERT_EQ(key.ReadBinary("Font", font.data(), font.size()), 1);
    const auto decoded = LogFontRecord::Decode(font);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->face, "Arial");
    EXPECT_EQ(decoded->height, -11);
    EXPECT_EQ(decoded->weight, 400);
}

// A host whose locale writes "0,75" (Qt programs take LC_NUMERIC from the
// environment) still shares its store with every other process: numbers go
// in with a point, and a comma written by an older run reads as one.
TEST_F(PropertyTest, CameraStepsKeepTheirValueUnderACommaLocale) {
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) GTEST_SKIP() << "the de_DE.UTF-8 locale is not installed";
    char comma[16];
    std::snprintf(comma, sizeof comma, "%.2f", 0.75);
    ASSERT_STREQ(comma, "0,75");
    CreateWorking();
    ASSERT_EQ(control->PutProperty(46, Variant(0.75)), S_OK);
    EXPECT_EQ(Read("3DView", "X-Translation"), "0.750000");
    {
        CRegistryKey key(nullptr, store);
        ASSERT_NE(key.Open("3DView"), 0);
        key.WriteString("Z-Rotation", "0,500000");
    }
    auto next = Next();
    const double x = next->GetProperty(46).R8();
    const double z = next->GetProperty(51).R8();
    next->Destroy();
    std::setlocale(LC_ALL, previous.c_str());
    EXPECT_EQ(x, 0.75);
    EXPECT_EQ(z, 0.5);
}

TEST_F(WorkingPropertyTest, InfoTextColorAvoidsTheTransparencyKeys) {
    struct Case {
        int32_t set, kept;
    };
    for (const Case& c : {Case{0, 1}, Case{0xFFFFFF, 0xFEFEFE}, Case{0x010101, 0x010101}}) {
        SCOPED_TRACE(c.set);
        ASSERT_EQ(control->PutProperty(36, I4(c.set)), S_OK);
        EXPECT_EQ(Show(control->GetProperty(36)), Show(I4(c.kept)));
        EXPECT_EQ(ReadInt("", "TextColor"), c.kept);
        EXPECT_EQ(control->GetInfoWindow()->TextColor(), static_cast<uint32_t>(c.kept));
    }
}

TEST_F(WorkingPropertyTest, StoreOnlyPropertiesTouchNeitherStoreNorDrawing) {
    for (DISPID id : {24, 25, 602}) {
        SCOPED_TRACE(id);
        const bool before = control->GetProperty(id).BoolValue();
        ASSERT_EQ(control->PutProperty(id, B(!before)), S_OK);
        EXPECT_EQ(control->GetProperty(id).BoolValue(), !before);
    }
    EXPECT_TRUE(log->calls.empty());
    EXPECT_FALSE(control->IsModified());
    EXPECT_EQ(ReadInt("", "Z-Axis Major Grid"), 1);
    EXPECT_EQ(ReadInt("", "Z-Axis Minor Grid"), 1);
    auto next = Next();
    EXPECT_TRUE(next->GetProperty(24).BoolValue());
    next->Destroy();
}

TEST_F(WorkingPropertyTest, QualityBelowOneBecomesZeroInTheNextControlAndOneDrawsFullDetailWhileMoving) {
    ASSERT_EQ(control->PutProperty(52, I2(-3)), S_OK);
    EXPECT_EQ(Calls("view.SetDetailBudget"), (std::vector<std::string>{"view.SetDetailBudget(16384)"}));
    auto next = Next();
    EXPECT_EQ(Show(next->GetProperty(52)), "i2:0");
    EXPECT_EQ(ReadInt("3DView", "Quality"), 0);
    next->Destroy();

    log->calls.clear();
    ASSERT_EQ(control->PutProperty(52, I2(1)), S_OK);
    EXPECT_EQ(Calls("view.SetDetailBudget"), (std::vector<std::string>{"view.SetDetailBudget(0)"}));
    log->calls.clear();
    next = Next();  // a control created on quality 1 starts with it
    EXPECT_EQ(Calls("view.SetDetailBudget"), (std::vector<std::string>{"view.SetDetailBudget(0)"}));
    next->Destroy();
}

TEST_F(WorkingPropertyTest, ChangesReachTheirTargets) {
    ShowGrid();
    struct Case {
        DISPID id;
        Variant value;
        std::vector<std::string> calls;  // expected among the engine calls, in order
    };
    const Case cases[] = {
        {3, I4(0x102030), {"device.SetBackgroundColor(1056816)", "view.SetBackgroundColor(1056816)"}},
        {32, I2(1), {"view.SetAxisStyle(2)", "device.SetAxisStyle(3)", "view.SetLogZ(1)"}},
        {8, I4(0xFF), {"device.SetAxisStyle(0)", "view.SetAxisStyle(0)"}},
        {34, Variant("Depth"), {"device.SetAxisLabel(1,Depth)", "view.SetAxisLabel(1,Depth)"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.id);
        log->calls.clear();
        ASSERT_EQ(control->PutProperty(c.id, c.value), S_OK);
        auto at = log->calls.begin();
        for (const std::string& call : c.calls) {
            at = std::find(at, log->calls.end(), call);
            EXPECT_NE(at, log->calls.end()) << call;
        }
    }
    // The windows: the info window's state, the legend pinned open.
    const CUIW_InfoWnd& info = *control->GetInfoWindow();
    ASSERT_EQ(control->PutProperty(39, B(false)), S_OK);
    EXPECT_EQ(info.VisibilityMask() & 2, 0);
    ASSERT_EQ(control->PutProperty(44, B(true)), S_OK);
    EXPECT_TRUE(info.Transparent());
    ASSERT_EQ(control->PutProperty(53, Variant("Courier New")), S_OK);
    EXPECT_EQ(info.Font().face, "Courier New");
    ASSERT_EQ(control->PutProperty(5, B(false)), S_OK);
    EXPECT_NE(control->GetWindowsVisible() & CUI_VexplotCtrl::wndLegend, 0);
}

// Each property put by name through IDispatch reads back through both paths
// from the same member, and what persists is the default of a control
// created afterwards on the same store.
TEST_F(PropertyTest, EveryPropertyRoundTripsThroughInvokeAndIsTheNextControlsDefault) {
    InstallEngine();
    Write("Engine", "DirectX", kRecordingEngineClass.ToString());
    ASSERT_TRUE(Create());
    const std::vector<Change> changes = Changes();
    std::map<DISPID, Variant> values;
    for (const Change& c : changes) values.emplace(c.id, c.value);
    values.insert({{24, B(false)}, {25, B(false)}, {602, B(true)}, {4, Variant("DirectX")},
                   {603, I4(CUI_VexplotCtrl::wndTitle | CUI_VexplotCtrl::wndInfo)}, {-518, Variant("Plot")}});
    for (const PropertyRow& row : PropertyTable::Rows()) {
        SCOPED_TRACE(row.name);
        const DispatchMember* member = DispatchTable::Vexplot().Find(row.id);
        ASSERT_TRUE(member);
        EXPECT_EQ(member->type, row.type);
        if (row.effect == PropertyEffect::Collection) continue;
        const auto it = values.find(row.id);
        ASSERT_NE(it, values.end()) << "no test value";
        ASSERT_EQ(Put(row.name, it->second), S_OK);
        EXPECT_EQ(Show(control->GetProperty(row.id)), Show(it->second));
        EXPECT_EQ(Show(Get(row.name)), Show(it->second));
    }
    EXPECT_TRUE(control->IsModified());
    EXPECT_EQ(Read("3DView", "X-Translation"), "0.750000");
    auto next = Next();
    for (const Change& c : changes) {
        SCOPED_TRACE(c.id);
        EXPECT_EQ(Show(next->GetProperty(c.id)), Show(c.nextControl.value_or(c.value)));
    }
    EXPECT_EQ(next->GetInfoWindow()->TextColor(), 0x123456u);
    EXPECT_EQ(next->GetInfoWindow()->Font().face, "Courier New");
    next->Destroy();

    // A number given for a bool, as scripts do, converts.
    ASSERT_EQ(Put(DispatchTable::Vexplot().Find(1)->name, I4(1)), S_OK);
    EXPECT_EQ(Show(control->GetProperty(1)), "bool:1");
    EXPECT_EQ(DispatchTable::Vexplot().Find(4)->typelibName, "GraphEngine");
    EXPECT_EQ(DispatchTable::Vexplot().Find(35)->typelibName, "zLabel");
}

TEST_F(WorkingPropertyTest, TheCollectionsAreReadOnlyAndTheSameObjectEachTime) {
    const Variant first = Get("Markers");
    ASSERT_TRUE(first.Dispatch());
    EXPECT_EQ(first.Dispatch().Get(), Get("Markers").Dispatch().Get());
    EXPECT_EQ(static_cast<uint32_t>(Put("Regions", Variant(ComPtr<IDispatch>()))), 0x800A017Fu);
    EXPECT_EQ(control->PutProperty(609, Variant(ComPtr<IDispatch>())), CUI_VexplotCtrl::kErrorSetNotSupported);
    EXPECT_EQ(control->PutProperty(610, I4(0)), DISP_E_MEMBERNOTFOUND);
}

TEST_F(PropertyTest, SettingTheEngineRecreatesItAndResendsThePlot) {
    InstallEngine();
    Write("Engine", "DirectX", kRecordingEngineClass.ToString());
    CreateWorking();
    ShowGrid();
    View().position = {4, 5, 6, 1};
    RecordingEngine* old = factory->engine.Get();

    ASSERT_EQ(control->PutProperty(4, Variant("DirectX")), S_OK);

    EXPECT_NE(factory->engine.Get(), old);
    EXPECT_EQ(Read("", "EngineName"), "DirectX");
    EXPECT_EQ(Show(control->GetProperty(4)), "s:DirectX");
    EXPECT_FALSE(Calls("view.SetGrid").empty());
    EXPECT_FALSE(Calls("engine.SetPalette").empty());
    EXPECT_EQ(View().position.x, 4);
    EXPECT_EQ(View().position.z, 6);

    // An engine nobody listed leaves the names as they were.
    ASSERT_EQ(control->PutProperty(4, Variant("Nowhere")), S_OK);
    EXPECT_EQ(Read("", "EngineName"), "DirectX");
    EXPECT_EQ(Show(control->GetProperty(4)), "s:DirectX");
}

TEST_F(WorkingPropertyTest, AxisLabelsReachTheControlsOwnDataObject) {
    ASSERT_EQ(control->CopyArrayData(Variant(MakeGrid(3, 4, 2.0))), S_OK);
    ASSERT_EQ(control->PutProperty(33, Variant("Time")), S_OK);
    std::string label;
    ASSERT_EQ(control->GetGraphObjects()->ExternalData()->GetXLabel(&label), S_OK);
    EXPECT_EQ(label, "Time");
    EXPECT_EQ(Read("", "X-Axis Label"), "Time");
}

}  // namespace
}  // namespace vexplot::test
