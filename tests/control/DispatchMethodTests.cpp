// The method rows of the control's dispatch table, called the way an
// automation client calls them: by name, by dispid, with converted,
// by-reference and wrong arguments.
#include <map>
#include <set>

#include "ControlFixture.h"
#include "automation/DispatchTable.h"
#include "support/Grid.h"

namespace vexplot::test {
namespace {

const DispatchTable& Table() { return DispatchTable::Vexplot(); }

// Every method dispid of both interfaces but the four state methods.
std::set<DISPID> MethodIds() {
    std::set<DISPID> ids{-552, 500};
    for (DISPID id = 503; id <= 549; ++id)
        if (id != 540 && id != 541) ids.insert(id);
    for (DISPID id = 54; id <= 207; ++id)
        if (id != 113) ids.insert(id);
    for (DISPID id = 1000; id <= 1004; ++id) ids.insert(id);
    return ids;
}

// Arguments of `m` in Invoke's reversed order: plain values of the declared
// types, references to `out` for out parameters.
std::vector<Variant> ArgsFor(const DispatchMember& m, std::vector<double>& out) {
    std::vector<Variant> args;
    out.assign(m.params.size(), 0.0);
    for (size_t i = 0; i < m.params.size(); ++i) {
        const ParamInfo& p = m.params[i];
        Variant v;
        if (p.byRef) v = Variant::Ref(&out[i]);
        else if (p.type == VT_BSTR) v = Variant("");
        else if (p.type == VT_UNKNOWN) v = Variant(ComPtr<IUnknown>(CreateGraphData(std::vector<double>(4, 1.0), 2, 2)));
        else if (p.type == VT_VARIANT) v = Variant(MakeGrid(3, 2, 1.0));
        // Converted to I2, R4, R8, BOOL as declared; CopyAxisScaleData gets
        // an axis it ignores, as a grid is no scale.
        else v = Variant(int32_t{m.id == 1001 ? 7 : 1});
        args.insert(args.begin(), v);
    }
    return args;
}

class DispatchMethods : public WorkingControl {
protected:
    HRESULT Call(DISPID id, std::vector<Variant> args, Variant* result = nullptr, uint32_t* argErr = nullptr) {
        DispParams p;
        p.args = args.data();
        p.argCount = static_cast<uint32_t>(args.size());
        ExcepInfo info;
        return control->Invoke(id, GUID{}, 0, DISPATCH_METHOD, &p, result, &info, argErr);
    }
    DISPID IdOf(const char* name) {
        DISPID id = 0;
        return control->GetIDsOfNames(GUID{}, &name, 1, 0, &id) == S_OK ? id : DISPID_UNKNOWN;
    }
};

TEST_F(DispatchMethods, EveryMethodAnswersByNameAndByNumberWithItsArgumentCount) {
    ShowGrid();
    const std::set<DISPID> ids = MethodIds();
    for (DISPID id : ids) {
        SCOPED_TRACE(id);
        const DispatchMember* m = Table().Find(id);
        ASSERT_NE(m, nullptr);
        EXPECT_FALSE(m->isProperty);
        EXPECT_EQ(IdOf(m->name.c_str()), id);
        std::vector<double> out;
        std::vector<Variant> args = ArgsFor(*m, out);
        std::vector<Variant> tooMany = args;
        tooMany.push_back(Variant(int32_t{0}));
        EXPECT_EQ(Call(id, tooMany), DISP_E_BADPARAMCOUNT);
        if (!args.empty()) {
            EXPECT_EQ(Call(id, {}), DISP_E_BADPARAMCOUNT);
        }
        Variant result;
        ASSERT_EQ(Call(id, args, &result), S_OK) << m->name;
        if (m->type != VT_EMPTY) {
            EXPECT_EQ(result.Type(), m->type) << m->name;
        }
    }
    // Spot checks of the published numbering, name for name.
    const std::map<std::string, DISPID> published = {
        {"SetZScale", 59},          {"GetLineWidth", 62},        {"SetLineWidth", 63},
        {"GetXNumMajorTickmarks", 89}, {"SetXNumMinorTickmarks", 92}, {"GetYNumMajorTickmarks", 93},
        {"SetZNumMinorTickmarks", 100}, {"GetLineSmooth", 107},   {"SetMetaFile", 106},
        {"SetCamXPos", 131},        {"GetCamZCoi", 140},         {"GetCamAzimuth", 144},
        {"SetCamDistance", 145},    {"GetShading", 152},         {"SetCol", 181},
        {"SetCamViewType", 197},    {"SetMetaFileStatus", 207},  {"CopyAxisScaleData", 1001},
        {"SetZAxisLabel", 1004},    {"GetShowYAxis", 513},       {"SetCamXPosition", 515},
        {"SetCamZCenter", 525},     {"GetCamAzim", 530},         {"EnableCustomDataCellToolTip", 539},
        {"Print", 542},             {"SetActive", 549},          {"AboutBox", -552},
    };
    for (const auto& [name, id] : published) EXPECT_EQ(IdOf(name.c_str()), id) << name;
    EXPECT_EQ(Table().Find(539)->typelibName, "EnableDataCellToolTip");
    EXPECT_EQ(IdOf("getxrange"), 509);  // names are matched without regard to case
}

TEST_F(DispatchMethods, UnknownMembersAndUnconvertibleArgumentsAreRefused) {
    for (DISPID id : {113, 208, 550, 1005}) EXPECT_EQ(Call(id, {}), DISP_E_MEMBERNOTFOUND) << id;
    EXPECT_EQ(IdOf("SetLineThickness"), DISPID_UNKNOWN);
    uint32_t argErr = 99;
    EXPECT_EQ(Call(504, {Variant("three")}, nullptr, &argErr), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(argErr, 0u);
}

TEST_F(DispatchMethods, UnimplementedMembersReportThemselvesAndAnswerTheirFixedValue) {
    ListenForErrors();
    // The answers hosts have always had from the getters.
    const std::map<std::string, double> answers = {
        {"GetAxisStyle", 0},        {"GetLineSmooth", 1},         {"GetDepthCue", 1},
        {"GetHiddenLine", 1},       {"GetGridDensity", 0},        {"GetTextureMode", 0},
        {"GetLighting", 1},         {"GetFontAutoScale", 0},      {"GetDataType", 0},
        {"GetAxisAutoScale", 1},    {"GetPaletteAutoAdjust", 0},  {"GetGraphType", -1},
        {"GetGridDensityAutoAdjust", 0}, {"GetRow", -1},          {"GetCol", -1},
        {"GetResolutionAutoAdjust", 0},  {"GetAxisAutoDetail", 0}, {"GetDataClamp", 0},
        {"GetFixedAspect", 0},      {"GetImageOrientation", -1},  {"GetRowDim", -1},
        {"GetColDim", -1},          {"GetImageFilter", 0},        {"GetHighLight", 0},
        {"GetUseAxisScales", 0},    {"GetMetaFileStatus", 0},
    };
    size_t getters = 0;
    for (const auto& m : CUI_VexplotCtrl::UnimplementedMembers()) {
        SCOPED_TRACE(m.name);
        errors.clear();
        const bool setter = m.result == VT_EMPTY;
        Variant result;
        ASSERT_EQ(Call(IdOf(m.name), setter ? std::vector<Variant>{Variant("any")} : std::vector<Variant>{}, &result),
                  S_OK);
        ASSERT_EQ(errors.size(), 1u);
        EXPECT_EQ(static_cast<uint32_t>(errors[0].code), 0x800A0005u);
        EXPECT_EQ(errors[0].text, "Sorry but this function is not yet implemented.");
        if (setter) {
            EXPECT_TRUE(result.IsEmpty());
            continue;
        }
        ++getters;
        ASSERT_EQ(answers.count(m.name), 1u);
        Variant number;
        ASSERT_EQ(result.ChangeType(VT_R8, &number), S_OK);
        // A TRUE answer reads as -1 once converted to a number.
        EXPECT_EQ(result.Type() == VT_BOOL ? -number.R8() : number.R8(), answers.at(m.name));
    }
    EXPECT_EQ(getters, answers.size());
    EXPECT_EQ(CUI_VexplotCtrl::UnimplementedMembers().size(), answers.size() + 37);  // and 37 setters
}

TEST_F(DispatchMethods, MetafileAndPrintSayWhatStopsThemWhileAboutOpensTheAboutBox) {
    // The recording engine draws no scene: the metafile export and printing
    // report that.
    ListenForErrors();
    Method("SetMetaFileName", {Variant("/tmp/view.emf")});
    EXPECT_EQ(Method("GetMetaFile").Bstr(), "/tmp/view.emf");  // the older name reads the same member
    Method("Print");
    Method("AboutBox");
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[0].text, "There is no view to export.");
    EXPECT_EQ(errors[1].text, "There is no view to print.");
    EXPECT_EQ(site.dialogs, std::vector<std::string>{"About"});
}

TEST_F(DispatchMethods, DataCellMouseOverCarriesTheHostsTextBack) {
    const auto tips = Advise();
    tips->reply = "host text";
    const auto older = Advise(CUI_VexplotCtrl::kEventsIid);

    std::string text = "z = 4";
    control->FireDataCellMouseOver(1.5, 2.5, 4.0, true, &text);

    ASSERT_EQ(tips->events.size(), 1u);
    const auto& e = tips->events[0];
    EXPECT_EQ(e.dispid, 3);
    ASSERT_EQ(e.args.size(), 5u);
    EXPECT_EQ(e.args[0].R8(), 1.5);
    EXPECT_EQ(e.args[3].I4(), 1);
    EXPECT_EQ(e.args[4].Bstr(), "z = 4");
    EXPECT_EQ(text, "host text");
    EXPECT_TRUE(older->events.empty());  // the older event interface has no such event
    control->FireDataCellMouseOver(0, 0, 0, false, nullptr);  // no text wanted back
    EXPECT_EQ(tips->events.back().args[3].I4(), 0);
}

}  // namespace
}  // namespace vexplot::test
