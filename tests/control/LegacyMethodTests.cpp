// The older interface's behaviour on the control: forwards to properties and
// methods, tick sums, axis and palette flags, the data window, and the empty
// answers without a graph object. Where a script would call a member, the
// test calls it by name with the argument types scripts pass (text, a
// floating-point number), which convert to the declared ones.
#include "ControlFixture.h"

namespace vexplot::test {
namespace {

using Strings = std::vector<std::string>;

TEST_F(WorkingControl, TickSettersTakeOneToTenAndReachTheAxisAndTheStore) {
    struct Case {
        int16_t value;
        int16_t readBack;
    };
    // Out-of-range counts are ignored without a word; 1 and 10 are the ends.
    const Case cases[] = {{7, 7}, {0, 7}, {11, 7}, {-3, 7}, {1, 1}, {10, 10}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        Method("SetYNumMinorTickmarks", {Variant(std::to_string(c.value))});
        EXPECT_EQ(Method("GetYNumMinorTickmarks").I2(), c.readBack);
        EXPECT_EQ(control->GetAxis(AxisId::Y)->GetAppearance().minorTicks, c.readBack);
    }
    EXPECT_EQ(control->GetTickmarks(AxisId::Y, true), 5);  // the major count is left alone
    EXPECT_EQ(control->GetProperty(21).I2(), 10);          // YMinorTicks
    CRegistryKey key(nullptr, store);
    ASSERT_NE(key.Open(""), 0);
    EXPECT_EQ(key.ReadInt("Y-Axis Number Minor Ticks"), 10);
}

TEST_F(WorkingControl, GridLineCountsAreTwiceTheHalfOfWhatWasSet) {
    struct Case {
        AxisId axis;
        Variant set;
        int32_t readBack;
        int16_t eachCount;
    };
    // Odd counts lose one line; the division truncates toward zero.
    const Case cases[] = {{AxisId::X, Variant("5"), 4, 2}, {AxisId::X, Variant(8.0), 8, 4},
                          {AxisId::Y, Variant(int16_t{1}), 0, 0}, {AxisId::Y, Variant("-3"), -2, -1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.readBack);
        const bool x = c.axis == AxisId::X;
        Method(x ? "SetNumXGridLines" : "SetNumYGridLines", {c.set});
        EXPECT_EQ(Method(x ? "GetNumXGridLines" : "GetNumYGridLines").I4(), c.readBack);
        EXPECT_EQ(control->GetTickmarks(c.axis, true), c.eachCount);
        EXPECT_EQ(control->GetTickmarks(c.axis, false), c.eachCount);
    }
}

TEST_F(WorkingControl, ForwardedSettersRunTheHandlerOnlyForANewValue) {
    control->SetBackColor(control->GetBackColor());
    EXPECT_TRUE(Calls("device.SetBackgroundColor").empty());
    control->SetBackColor(0x102030);
    EXPECT_EQ(Calls("device.SetBackgroundColor"), (Strings{"device.SetBackgroundColor(1056816)"}));
    EXPECT_EQ(Calls("view.SetBackgroundColor"), (Strings{"view.SetBackgroundColor(1056816)"}));
    EXPECT_EQ(control->GetBackColor(), 0x102030u);

    // The axis colour goes to all three axes; each changed axis is re-sent.
    log->calls.clear();
    control->SetAxisColor(0x00FF00);
    EXPECT_EQ(Calls("view.SetAxisStyle"), (Strings{"view.SetAxisStyle(0)", "view.SetAxisStyle(1)",
                                                   "view.SetAxisStyle(2)"}));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(control->Settings().axes[i].numberColor, 0x00FF00u);
    log->calls.clear();
    control->SetAxisColor(0x00FF00);
    EXPECT_TRUE(Calls("view.SetAxisStyle").empty());

    control->SetShowDataTip(true);
    EXPECT_TRUE(control->GetShowDataTip());
    EXPECT_EQ(control->GetProperty(7).BoolValue(), true);  // ShowToolTips
}

TEST_F(WorkingControl, DataAxesAndColourBarAreShownEachOnTheirOwn) {
    EXPECT_EQ(control->GetShowXAxis(), 1);
    EXPECT_EQ(control->IsShowPalette(), 1);
    control->ShowPalette(0);
    control->SetShowAxis(false);
    EXPECT_EQ(control->GetShowXAxis(), 0);
    EXPECT_EQ(control->GetShowYAxis(), 0);
    EXPECT_FALSE(control->GetShowAxis());
    control->SetShowAxis(true);
    EXPECT_EQ(control->GetShowYAxis(), 1);
    EXPECT_EQ(control->IsShowPalette(), 0);  // showing the axes leaves the colour bar hidden
    EXPECT_FALSE(control->GetAxis(AxisId::Palette)->GetAppearance().shown);

    control->SetShowPaletteLabels(false);
    EXPECT_FALSE(control->GetShowPaletteLabels());
    EXPECT_TRUE(control->GetAxis(AxisId::X)->GetAppearance().numbersShown);
}

TEST_F(WorkingControl, PaletteIdAndColourChoiceRebuildThePalette) {
    struct Case {
        void (*act)(CUI_VexplotCtrl&);
        int32_t id;
        bool color;
    };
    const Case cases[] = {
        {[](CUI_VexplotCtrl& c) { c.SetPaletteId(4); }, 4, false},
        {[](CUI_VexplotCtrl& c) { c.SetUseColorPalette(true); }, 0, true},
        {[](CUI_VexplotCtrl& c) { c.SetUseColorPalette(false); }, 1, false},
        {[](CUI_VexplotCtrl& c) { c.SetPaletteId(9); }, 0, true},  // out of range: palette 0
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.id);
        log->calls.clear();
        c.act(*control);
        EXPECT_EQ(control->GetPaletteId(), c.id);
        EXPECT_EQ(control->GetUseColorPalette(), c.color);
        EXPECT_EQ(Calls("engine.SetPalette").size(), 1u);
    }
}

TEST_F(WorkingControl, ResolutionAndViewTypeMapOntoTheCurrentMethods) {
    ASSERT_EQ(ShowGrid()->Data()->PutName("ridge"), S_OK);
    Method("SetResolution", {Variant("2")});
    EXPECT_EQ(control->GetLowResolution(), 1);
    EXPECT_EQ(Method("GetResolution").I4(), 2);
    Method("SetResolution", {Variant(1.0)});
    EXPECT_EQ(Method("GetResolution").I4(), 1);

    const std::string& title = site.windows[control->Window(WindowRole::Title)].text;
    Method("SetCamViewType", {Variant("3")});
    EXPECT_EQ(control->GetViewMode(), 0);
    EXPECT_EQ(Method("GetCamViewType").I4(), 2);  // any 2-D view reads back as ViewXY
    EXPECT_EQ(title, "ridge - 2Dview");
    Method("SetCamViewType", {Variant(0.4)});     // rounds to the 3-D view
    EXPECT_EQ(control->GetViewMode(), 1);
    EXPECT_EQ(Method("GetCamViewType").I4(), 0);
    EXPECT_EQ(title, "ridge - 3Dview");
}

TEST_F(WorkingControl, AxisScaleIsKeptAndSentToThe3DView) {
    EXPECT_EQ(control->GetAxisScale(AxisId::Z), 1.0);
    control->SetAxisScale(AxisId::Z, 2.5);
    EXPECT_EQ(control->GetAxisScale(AxisId::Z), 2.5);
    EXPECT_EQ(Calls("view.SetAxisScale"), (Strings{"view.SetAxisScale(2,2.5)"}));
    EXPECT_EQ(control->GetAxisScale(AxisId::X), 1.0);
}

TEST_F(WorkingControl, GraphObjectMembersAnswerFromTheActiveGraph) {
    EXPECT_EQ(control->GetNumColumns(), 0);
    EXPECT_EQ(control->GetPaletteMaxVal(), 0.0);
    EXPECT_EQ(control->GetZMinClamp(), 0.0);
    control->EnableCustomDataCellToolTip(1);  // nothing to tell without a graph object

    CGD_GraphObject* graph = ShowGrid(5, 3);  // cells 0 .. 14
    EXPECT_EQ(control->GetColumnStart(), 0);
    EXPECT_EQ(control->GetRowStart(), 0);
    EXPECT_EQ(control->GetNumColumns(), 5);
    EXPECT_EQ(control->GetNumRows(), 3);
    EXPECT_EQ(control->GetPaletteMinVal(), 0.0);
    EXPECT_EQ(control->GetPaletteMaxVal(), 14.0);
    EXPECT_EQ(control->GetZMaxClamp(), 14.0);
    EXPECT_FALSE(graph->CustomToolTip());
    control->EnableCustomDataCellToolTip(1);
    EXPECT_TRUE(graph->CustomToolTip());
}

TEST_F(WorkingControl, StoredFlagsWaitForTheirUse) {
    control->SetShowGrid(false);
    EXPECT_FALSE(control->GetShowGrid());
    EXPECT_TRUE(Calls("view.SetGridVisible").empty());  // reaches the view only with a new engine

    control->SetDataSelectEnable(false);
    const auto sink = Advise();
    control->FireDataSelect(DataRect{0, 1, 0, 1}, 0, 1);
    EXPECT_TRUE(sink->events.empty());
    control->SetDataSelectEnable(true);
    control->FireDataSelect(DataRect{0, 1, 0, 1}, 0, 1);
    EXPECT_EQ(sink->events.size(), 1u);
}

TEST_F(WorkingControl, PaletteFileNameIsKeptEvenWhenTheFileIsMissing) {
    log->calls.clear();
    control->SetPaletteFile("/nonexistent/ramp.plt");
    EXPECT_EQ(control->GetPaletteFile(), "/nonexistent/ramp.plt");
    EXPECT_TRUE(Calls("engine.SetPalette").empty());  // the colours stay as they were
}

}  // namespace
}  // namespace vexplot::test
