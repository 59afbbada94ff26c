#include <cmath>
#include <sstream>

#include "ControlFixture.h"
#include "support/Grid.h"

namespace vexplot::test {
namespace {

using Strings = std::vector<std::string>;

// The setters are called as scripts call them: text and floating-point
// numbers convert to the declared integer type.
TEST_F(WorkingControl, GraphModeTableAndItsAsymmetry) {
    ShowGrid();
    struct Case {
        const char* setter;
        Variant mode;
        int32_t readBack;
        int32_t viewMode;
    };
    // Points (2) read back as 0, as hosts have always seen it. The older
    // interface's graph style is the same member.
    const Case cases[] = {{"SetGraphMode", Variant("0"), 0, 1},        {"SetGraphMode", Variant("1"), 1, 1},
                          {"SetGraphMode", Variant(int16_t{2}), 0, 1}, {"SetGraphStyle", Variant(3.0), 3, 0},
                          {"SetGraphMode", Variant(int32_t{4}), 4, 0}, {"SetGraphMode", Variant(1.0), 1, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.setter << " " << c.readBack);
        Method(c.setter, {c.mode});
        EXPECT_EQ(Method("GetGraphMode").I4(), c.readBack);
        EXPECT_EQ(Method("GetGraphStyle").I4(), c.readBack);
        EXPECT_EQ(control->GetViewMode(), c.viewMode);
    }
    log->calls.clear();
    control->SetGraphMode(2);
    EXPECT_EQ(Calls("view.SetGraphStyle"), (Strings{"view.SetGraphStyle(4)"}));
}

TEST_F(WorkingControl, InvalidGraphModeRaisesTheErrorEventAtEverySink) {
    ShowGrid();
    const auto older = Advise(CUI_VexplotCtrl::kEventsIid);
    const auto current = Advise();
    ListenForErrors();
    const int32_t before = control->GetGraphMode();

    control->SetGraphMode(5);

    EXPECT_EQ(control->GetGraphMode(), before);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].text, "Sorry, property value isn't valid.");
    for (RecordingEventSink* sink : {older.Get(), current.Get()}) {
        ASSERT_EQ(sink->events.size(), 1u);
        const auto& e = sink->events[0];
        EXPECT_EQ(e.dispid, -608);
        ASSERT_EQ(e.args.size(), 7u);
        EXPECT_EQ(e.args[0].I2(), 0x017C);
        EXPECT_EQ(e.args[1].Bstr(), "Sorry, property value isn't valid.");
        EXPECT_EQ(static_cast<uint32_t>(e.args[2].I4()), 0x800A017Cu);
    }
    // The view is laid out and redrawn even so.
    EXPECT_FALSE(Calls("view.Refresh").empty());
}

TEST_F(WorkingControl, ShadingModeAcceptsOneAndTwoAndRedrawsOnlyIn2D) {
    EXPECT_EQ(control->GetShadingMode(), 1);  // no graph object
    ShowGrid();
    struct Case {
        Variant value;
        int16_t readBack;
    };
    const Case cases[] = {{Variant("2"), 2}, {Variant(3.0), 2}, {Variant("0"), 2}, {Variant(int32_t{1}), 1},
                          {Variant(int16_t{-1}), 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.readBack);
        Method("SetShadingMode", {c.value});
        EXPECT_EQ(Method("GetShadingMode").I2(), c.readBack);
    }

    log->calls.clear();
    control->SetShadingMode(2);  // 3-D mode: shading changes, no redraw
    EXPECT_EQ(Calls("view.SetShading"), (Strings{"view.SetShading(1)"}));
    EXPECT_EQ(Calls("device.SetShading"), (Strings{"device.SetShading(1)"}));
    EXPECT_TRUE(Calls("site.Invalidate").empty());

    control->SetViewMode(0);
    log->calls.clear();
    control->SetShadingMode(1);
    EXPECT_FALSE(Calls("site.Invalidate").empty());
}

// The ranges come back through references, as an automation client asks
// for them: a FALSE answer leaves the caller's values alone.
TEST_F(WorkingControl, MethodsWithoutAGraphObjectAnswerEmpty) {
    double a = 7.0;
    double b = 7.0;
    for (const char* range : {"GetXRange", "GetYRange", "GetZRange"}) {
        const Variant answer = Method(range, {Variant::Ref(&a), Variant::Ref(&b)});
        EXPECT_EQ(answer.Type(), VT_BOOL) << range;
        EXPECT_FALSE(answer.BoolValue()) << range;
    }
    EXPECT_EQ(control->GetZRange(&a, &b), S_FALSE);
    EXPECT_EQ(a, 7.0);
    EXPECT_EQ(b, 7.0);
    EXPECT_EQ(control->GetLowResolution(), 0);
    EXPECT_EQ(control->GetGraphMode(), 0);
    control->Enable1DView(1, 1);
    EXPECT_EQ(control->GetViewMode(), 1);  // nothing to show in 1-D: no switch
}

TEST_F(WorkingControl, SetDataShowsTheGridWithItsRanges) {
    std::vector<double> z = {1, 2, 3, -4, 5, 6};
    const std::vector<double> xs = {10, 20, 30};
    const std::vector<double> ys = {-1, 1};
    ASSERT_EQ(control->SetData(CreateGraphData(z, 3, 2, xs, ys, "t", "d", "v").Get()), S_OK);
    // A reference to a Variant, as script clients pass it, takes the value too.
    double lo = 0.0;
    Variant hi;
    const auto range = [&](const char* name) {
        EXPECT_TRUE(Method(name, {Variant::Ref(&lo), Variant::Ref(&hi)}).BoolValue()) << name;
        return std::pair{lo, hi.Deref().R8()};
    };
    EXPECT_EQ(range("GetXRange"), std::pair(10.0, 30.0));
    EXPECT_EQ(range("GetYRange"), std::pair(-1.0, 1.0));
    EXPECT_EQ(range("GetZRange"), std::pair(-4.0, 6.0));
    // The first graph object is layer 0; the data set's labels reach both surfaces.
    EXPECT_FALSE(Calls("view.SelectLayer(0)").empty());
    EXPECT_FALSE(Calls("view.SetAxisLabel(0,t)").empty());
    EXPECT_FALSE(Calls("device.SetAxisLabel(1,d)").empty());
    EXPECT_FALSE(Calls("device.SetAxisTicks(3,").empty());  // the colour bar's axis
    EXPECT_TRUE(Calls("device.SetAxisTicks(2,").empty());   // the device has no Z axis

    // Each graph object draws into a layer of its own.
    log->calls.clear();
    ASSERT_EQ(control->SetData(CreateGraphData(z, 3, 2).Get()), S_OK);
    EXPECT_EQ(Calls("view.SelectLayer"), (Strings{"view.SelectLayer(1)"}));
}

// The first and last tick of the newest SetAxisTicks call starting with
// `prefix` ("view.SetAxisTicks(2,").
std::pair<double, double> TickEnds(const std::vector<std::string>& calls) {
    if (calls.empty()) return {std::nan(""), std::nan("")};
    std::vector<std::string> args;
    std::stringstream in(calls.back().substr(calls.back().find('(') + 1));
    for (std::string a; std::getline(in, a, ',');) args.push_back(a);
    if (args.size() < 4) return {std::nan(""), std::nan("")};
    return {std::stod(args[2]), std::stod(args[3])};
}

TEST_F(WorkingControl, TheBoxAxesSpanEveryObjectAndTheFlatViewTheActiveOne) {
    const std::vector<double> small = {0, 0.5, 1, 0.25};
    const std::vector<double> tall = {-40, 10, 90, 0};
    const std::vector<double> unit = {0, 1};
    const std::vector<double> wide = {-5, 5};
    ASSERT_EQ(control->SetData(CreateGraphData(small, 2, 2, unit, unit, "x", "y", "z").Get()), S_OK);
    View().shown = DataRect{-5, 5, 0, 1};  // the box across both objects
    ASSERT_EQ(control->SetData(CreateGraphData(tall, 2, 2, wide, unit, "x", "y", "z").Get()), S_OK);

    // With the small object active the flat view's colour bar keeps its
    // range, while the box's Z and X axes cover both objects.
    log->calls.clear();
    control->GetGraphObjects()->SetActiveIndex(0);
    control->RefreshGraphObject(control->GetGraphObjects()->Active());
    const auto [zLow, zHigh] = TickEnds(Calls("view.SetAxisTicks(2,"));
    EXPECT_LE(zLow, -20.0);
    EXPECT_GE(zHigh, 60.0);
    const auto [xLow, xHigh] = TickEnds(Calls("view.SetAxisTicks(0,"));
    EXPECT_LE(xLow, -4.0);
    EXPECT_GE(xHigh, 4.0);
    const auto [barLow, barHigh] = TickEnds(Calls("device.SetAxisTicks(3,"));
    // (Ticks may round outwards by a step.)
    EXPECT_GE(barLow, -1.0);
    EXPECT_LE(barHigh, 2.0);

    // One object left: its own range again.
    control->GetGraphObjects()->Remove(control->GetGraphObjects()->At(1));
    control->RefreshGraphObject(control->GetGraphObjects()->Active());
    const auto [onlyLow, onlyHigh] = TickEnds(Calls("view.SetAxisTicks(2,"));
    EXPECT_GE(onlyLow, -1.0);
    EXPECT_LE(onlyHigh, 2.0);
}

TEST_F(WorkingControl, CopyArrayDataNeedsTwoColumnsAndNumbersItsScales) {
    EXPECT_EQ(control->CopyArrayData(Variant(MakeGrid(1, 5, 2.0))), S_FALSE);
    EXPECT_EQ(control->GetGraphObjects()->Count(), 0);
    EXPECT_EQ(control->CopyAxisScaleData(0, Variant(SafeArray::Create1D(3))), S_FALSE);  // no data object yet
    EXPECT_EQ(control->CopyArrayData(Variant(int32_t{3})), DISP_E_TYPEMISMATCH);

    ASSERT_EQ(control->CopyArrayData(Variant(MakeGrid(3, 4, 2.0))), S_OK);
    ASSERT_EQ(control->GetGraphObjects()->Count(), 1);
    double lo = -1.0;
    double hi = -1.0;
    ASSERT_TRUE(control->GetYRange(&lo, &hi));
    EXPECT_EQ(lo, 0.0);
    EXPECT_EQ(hi, 3.0);

    const std::vector<double> scale = {5, 6, 7};
    EXPECT_EQ(control->CopyAxisScaleData(0, Variant(SafeArray::FromValues(scale))), S_OK);
    ASSERT_TRUE(control->GetXRange(&lo, &hi));
    EXPECT_EQ(hi, 7.0);
    // A scale of the wrong length is the data object's error, handed back.
    EXPECT_LT(control->CopyAxisScaleData(1, Variant(SafeArray::FromValues(scale))), 0);
}

TEST_F(WorkingControl, OneDimensionalViewSettersKeepToTheirRanges) {
    CGD_GraphObject* graph = ShowGrid();
    ASSERT_NE(graph, nullptr);
    // Not in the 1-D view yet: everything is ignored.
    control->SetPlotStyle1DView(1);
    control->SetSecantPlane1DView(10.0);
    EXPECT_EQ(graph->Drawing(), CGD_GraphObject::DrawingSettings{});
    EXPECT_TRUE(Calls("device.SetSection").empty());

    control->Enable1DView(1, 2);
    EXPECT_EQ(control->GetViewMode(), 0);
    EXPECT_EQ(graph->OneDimensionalView(), 2);
    EXPECT_EQ(Calls("view.SetDataVisible").back(), "view.SetDataVisible(0)");

    // Each value is called as a script calls it; an accepted one changes the
    // drawing and sends the section with it (last), a refused one changes
    // nothing.
    struct Case {
        const char* setter;
        Variant value;
        const char* section;  // null: refused
    };
    const Case cases[] = {
        {"SetSecantPlane1DView", Variant(100.0), "device.SetSection(2,2,0,16777215,100)"},
        {"SetSecantPlane1DView", Variant("0"), "device.SetSection(2,2,0,16777215,0)"},
        {"SetSecantPlane1DView", Variant(100.5), nullptr},
        {"SetSecantPlane1DView", Variant(-0.1), nullptr},
        {"SetPlotStyle1DView", Variant(int32_t{3}), "device.SetSection(2,3,0,16777215,0)"},
        {"SetPlotStyle1DView", Variant(int16_t{4}), nullptr},
        {"SetPointStyle1DView", Variant(6.0), "device.SetSection(2,3,6,16777215,0)"},
        {"SetPointStyle1DView", Variant(int16_t{7}), nullptr},
        {"SetPointStyle1DView", Variant(int16_t{-1}), nullptr},
        {"SetCurveColor1DView", Variant(int32_t{0x123456}), "device.SetSection(2,3,6,1193046,0)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << (&c - cases));
        log->calls.clear();
        const CGD_GraphObject::DrawingSettings before = graph->Drawing();
        Method(c.setter, {c.value});
        EXPECT_EQ(graph->Drawing() == before, c.section == nullptr);
        const Strings sent = Calls("device.SetSection");
        EXPECT_EQ(sent.empty() ? "refused" : sent.back(), c.section ? c.section : "refused");
    }
    EXPECT_EQ(graph->Drawing().pointStyle, PointStyle::Star);

    control->Enable1DView(0, 0);
    EXPECT_EQ(graph->OneDimensionalView(), 0);
    control->Enable1DView(1, 3);  // no such plane
    EXPECT_EQ(graph->OneDimensionalView(), 0);
}

// Each setter writes the whole record it is part of, the other members
// as they were; the getter reads the member back.
TEST_F(WorkingControl, CameraSettersReadModifyWriteTheRecord) {
    struct Case {
        const char* setter;
        const char* getter;
        double value;
        const char* written;
    };
    const Case cases[] = {
        {"SetCamYPosition", "GetCamYPosition", 9.0, "view.SetCameraPosition(1,9,3,1)"},
        {"SetCamZPosition", "GetCamZPosition", -2.0, "view.SetCameraPosition(1,9,-2,1)"},
        {"SetCamXCenter", "GetCamXCenter", 4.0, "view.SetCameraCenter(4,0,0,1)"},
        {"SetCamDist", "GetCamDist", 12.0, "view.SetDistance(12)"},
        {"SetCamAzim", "GetCamAzim", 45.0, "view.SetAzimuth(45)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.setter);
        log->calls.clear();
        Method(c.setter, {Variant(c.value)});
        Strings writes;
        for (const char* prefix : {"view.SetCamera", "view.SetDistance", "view.SetAzimuth"})
            for (const std::string& call : Calls(prefix)) writes.push_back(call);
        EXPECT_EQ(writes, Strings{c.written});
        // In 3-D mode the view is laid out and redrawn after the change.
        EXPECT_FALSE(Calls("view.Update").empty());
        Variant number;
        ASSERT_EQ(Method(c.getter).ChangeType(VT_R8, &number), S_OK);
        EXPECT_EQ(number.R8(), c.value);
    }
}

TEST_F(WorkingControl, SetActiveChangesNothing) {
    ShowGrid();
    const CGD_GraphObject* before = control->GetGraphObjects()->Active();
    control->SetActive(CreateGraphData(std::vector<double>(4, 0.0), 2, 2).Get());
    EXPECT_EQ(control->GetGraphObjects()->Active(), before);
    EXPECT_EQ(control->GetGraphObjects()->Count(), 1);
    EXPECT_TRUE(log->calls.empty());
}

}  // namespace
}  // namespace vexplot::test
