// The annotations on a created control over the recording engine, whose
// surfaces map a data unit to a pixel (the image at 10..110 each way), so
// that hit tests can be checked at exact pixels; their automation objects
// through IDispatch; their records in plot files; their dialogs played by
// the headless site.
#include <cmath>
#include <tuple>

#include "ControlFixture.h"
#include "annotations/AnnotationActions.h"
#include "annotations/CGD_DiffTracer.h"
#include "annotations/CGD_Label.h"
#include "annotations/CGD_Marker.h"
#include "annotations/CGD_Region.h"
#include "annotations/CGD_Tracer.h"
#include "annotations/CoordinateText.h"
#include "annotations/MarkerDialog.h"
#include "annotations/MarkerLetters.h"
#include "annotations/RegionDialog.h"
#include "control/HeadlessSite.h"
#include "model/CGD_GraphObject.h"
#include "support/TempDir.h"
#include "ui/InfoEntryList.h"

namespace vexplot::test {
namespace {

// The lines of an info window, as shown (tabs come out as three blanks).
std::vector<std::string> Lines(const InfoEntryList& info) {
    std::vector<std::string> lines;
    for (const InfoEntry& e : info.Entries()) lines.push_back(e.text);
    return lines;
}

class AnnotationTest : public ControlFixture {
protected:
    void SetUp() override {
        CreateWorking();
        graph = ShowGrid(4, 3);  // values 0 .. 11
        MarkerLetters::Reset();
    }
    CGD_AnnotationList& List() { return *control->GetAnnotations(); }
    void Flat() { control->SetViewMode(0); }

    // The collection of a control property, and calls on any dispatch.
    ComPtr<IDispatch> Collection(DISPID property) {
        Variant v;
        EXPECT_EQ(control->GetProperty(property, &v), S_OK);
        return v.Dispatch();
    }
    static Variant Call(IDispatch* object, const char* name, std::vector<Variant> args = {},
                        uint16_t flags = DISPATCH_METHOD, HRESULT* hr = nullptr) {
        return Dispatch(object, name, std::move(args), flags, hr);
    }
    static void Put(IDispatch* object, const char* name, Variant value) {
        Dispatch(object, name, {std::move(value)}, DISPATCH_PROPERTYPUT);
    }
    // Position() of a marker wrapper: "ok x y z".
    static std::string Position(IDispatch* marker) {
        double x = -1, y = -1, z = -1;
        const Variant ok = Call(marker, "Position", {Variant::Ref(&x), Variant::Ref(&y), Variant::Ref(&z)});
        return std::to_string(ok.BoolValue()) + " " + std::to_string(x) + " " + std::to_string(y) + " " +
               std::to_string(z);
    }

    CGD_GraphObject* graph = nullptr;
};

TEST_F(AnnotationTest, MarkerHitTestsStopAtTheirEdges) {
    CGD_Marker* marker = AnnotationActions::AddMarker(*control, 50, 50, 5);
    ASSERT_TRUE(marker);
    // 3-D: the rectangle (px-4, py-4) .. (px+4, py+4), right and bottom out.
    for (auto [x, y, hit] : {std::tuple{46, 46, true}, {53, 53, true}, {54, 50, false}, {50, 54, false},
                             {45, 50, false}})
        EXPECT_EQ(marker->HitTest(x, y), hit) << "3-D " << x << "," << y;
    Flat();
    marker->SetDrawLines(false);
    marker->UpdateScreenPoint();
    // Flat: strictly inside 3 pixels; the indicator beside the colour scale
    // at yz = 10 + trunc((11 - 5) / 11 * 100) = 64, right = 110.
    for (auto [x, y, hit] : {std::tuple{52, 52, true}, {53, 50, false}, {47, 50, false}, {50, 90, false},
                             {112, 64, true}, {111, 64, false}, {130, 73, true}, {131, 64, false}, {112, 74, false}})
        EXPECT_EQ(marker->HitTest(x, y), hit) << "flat " << x << "," << y;
    // With its guide lines the marker is hit along the vertical one too.
    marker->SetDrawLines(true);
    EXPECT_TRUE(marker->HitTest(52, 90));
    EXPECT_FALSE(marker->HitTest(53, 90));
}

TEST_F(AnnotationTest, RegionHitsItsBoxWithThreePixelsAndItsZIndicators) {
    Flat();
    CGD_Region* region = AnnotationActions::AddRegion(*control, 20, 20, 2, 40, 30, 0);
    ASSERT_TRUE(region);
    EXPECT_EQ(region->GetZ2(), 11.0);  // the top of the data
    // The box 20..40 x 20..30 grown by 3 (left/top in, right/bottom out);
    // the indicators of z1 = 2 (yz 91) and z2 = 11 (yz 10) in right+2 < x < right+13.
    for (auto [x, y, hit] : {std::tuple{17, 17, true}, {16, 20, false}, {43, 33, true}, {44, 25, false},
                             {30, 34, false}, {113, 91, true}, {112, 91, false}, {122, 93, true}, {123, 91, false},
                             {113, 10, true}, {113, 50, false}})
        EXPECT_EQ(region->HitTest(x, y), hit) << x << "," << y;
    // The list answers the newest selectable object under the point.
    CGD_Marker* marker = AnnotationActions::AddMarker(*control, 30, 25, 1);
    EXPECT_EQ(List().HitTest(30, 25), marker);
    EXPECT_EQ(List().HitTest(18, 18), region);
    EXPECT_EQ(List().HitTest(90, 90), nullptr);
}

TEST_F(AnnotationTest, InfoTextsInEveryCoordinateOrder) {
    InfoEntryList info;
    CGD_Marker marker;
    marker.Attach(control->GetEngine(), nullptr, control.Get());
    marker.SetPosition(1.5, 2, NoZValue);
    marker.AttachInfoWindow(&info);
    // A marker prints its Z even when it is the no-Z value.
    EXPECT_EQ(Lines(info), (std::vector<std::string>{"Marker A:", "   X(1.500000) Y(2.000000) Z(4294967295.000000)"}));
    EXPECT_EQ(marker.GetDescription(), "Marker A:\n\tX(1.500000) Y(2.000000) Z(4294967295.000000)\n");
    const auto xs = graph->GetXRange(), ys = graph->GetYRange();
    graph->SetOneDimensionalView(2);
    EXPECT_EQ(marker.InfoLine(), "\tX(1.500000) Z(2.000000) Y(" + CoordinateText::Fixed((ys.first + ys.last) / 2) + ")");
    graph->SetOneDimensionalView(1);
    EXPECT_EQ(marker.InfoLine(), "\tY(1.500000) Z(2.000000) X(" + CoordinateText::Fixed((xs.first + xs.last) / 2) + ")");
    graph->SetOneDimensionalView(0);
    marker.RemoveFromInfoWindow();
    EXPECT_TRUE(info.Entries().empty());

    // Regions: " - " when the entry is made, " , " once rewritten.
    CGD_Region region;
    region.SetPosition(1, 2, 3);
    region.SetSecondCorner(4, 5, 6);
    region.AttachInfoWindow(&info);
    EXPECT_EQ(Lines(info), (std::vector<std::string>{"Region:", "   X(1.000000 - 4.000000)",
                                                     "   Y(2.000000 - 5.000000)", "   Z(3.000000 - 6.000000)"}));
    region.UpdateInfoWindow();
    EXPECT_EQ(Lines(info)[1], "   X(1.000000 , 4.000000)");
    EXPECT_EQ(region.GetDescription(),
              "Region:\n\tX(1.000000,4.000000)\n\tY(2.000000,5.000000)\n\tZ(3.000000,6.000000)\n");
    region.RemoveFromInfoWindow();
    // An internal region is never listed.
    CGD_Region(true).AttachInfoWindow(&info);
    EXPECT_TRUE(info.Entries().empty());
}

TEST_F(AnnotationTest, TracersWriteDashesForNoZAndTheDistanceLeavesZOut) {
    InfoEntryList info;
    CGD_Tracer tracer;
    tracer.AttachInfoWindow(&info);
    EXPECT_EQ(Lines(info), (std::vector<std::string>{"Tracer:", "   X(-) Y(-) Z(-)"}));
    tracer.SetPosition(1, 2, NoZValue);
    tracer.Draw();
    EXPECT_EQ(Lines(info)[1], "   X(1.000000) Y(2.000000) Z(-)");
    tracer.RemoveFromInfoWindow();

    CGD_DiffTracer diff;  // unattached: the fixed Z stays as given
    diff.SetPosition(0, 0, 1);
    diff.AttachInfoWindow(&info);
    EXPECT_EQ(Lines(info), (std::vector<std::string>{"DeltaTracer:", "   Fixed: X(0.000000) Y(0.000000) Z(1.000000)",
                                                     "   Current: X(-) Y(-) Z(-)", "   Delta: X(-) Y(-) Z(-)",
                                                     "   Distance: -"}));
    diff.SetCurrent(3, 4, NoZValue);
    diff.Draw();
    EXPECT_EQ(Lines(info), (std::vector<std::string>{"DeltaTracer:", "   Fixed: X(0.000000) Y(0.000000) Z(1.000000)",
                                                     "   Current: X(3.000000) Y(4.000000) Z(-)",
                                                     "   Delta: X(3.000000) Y(4.000000) Z(-)",
                                                     "   Distance: 5.000000"}));
    diff.SetCurrent(3, 4, 100);
    EXPECT_EQ(diff.DeltaLine(), "\tDelta: X(3.000000) Y(4.000000) Z(99.000000)");
    EXPECT_EQ(diff.Distance(), 5.0);
}

TEST_F(AnnotationTest, LabelCoordinatesUseTheAxesNumberStyles) {
    CGD_Label label;
    label.SetCaption("P");
    label.SetPosition(2500, 0.5, -1);
    struct Case {
        int16_t style;
        int32_t markup;
        const char* text;
    };
    for (const Case& c : {Case{0, 0, "P (2500, 0.5, -1)"}, Case{1, 0, "P (2.500e3, 5.000e-1, -1.000e0)"},
                          Case{2, 0, "P (2.5 k, 500 m, -1  )"}, Case{3, 0, "P (2.500x10 3.0, 5.000x10 -1.0, -1.000x10 0.0)"},
                          Case{3, 1, "P (2.500x10\\SUP3.0, 5.000x10\\SUP-1.0, -1.000x10\\SUP0.0)"},
                          Case{7, 0, "P (2500.0000, 0.5000, -1.0000)"}}) {
        label.SetStyle(c.style);
        label.SetMarkupFlag(c.markup);
        EXPECT_EQ(label.Text(), c.text) << c.style;
    }
    label.SetAppendCoordinates(false);
    EXPECT_EQ(label.Text(), "P");
}

TEST_F(AnnotationTest, PlotFilesKeepMarkersAndRegionsAndBringLabelsBackWithDefaults) {
    CGD_Marker* marker = AnnotationActions::AddMarker(*control, 1, 2, 3);
    marker->SetColor(0x123456);
    marker->SetCaption("peak");
    List().Select(marker);
    CGD_Region* region = AnnotationActions::AddRegion(*control, 0, 0, 1, 2, 1, 0);
    region->SetColor(0x00FF00);
    CGD_Label* label = AnnotationActions::AddLabel(*control, "custom", 1, 1, 1);
    label->SetStyle(2);
    AnnotationActions::AddRegion(*control, 0, 0, 0, 1, 1, 0, true);  // the rubber band is not kept
    const TempDir dir;
    ASSERT_EQ(control->SaveSerialize(dir / "annotations.vxg"), 1);
    List().Clear();
    ASSERT_TRUE(control->OpenPlotFile(dir / "annotations.vxg"));

    ASSERT_EQ(List().Count(), 3);
    auto* m = dynamic_cast<CGD_Marker*>(List().At(0));
    auto* r = dynamic_cast<CGD_Region*>(List().At(1));
    auto* l = dynamic_cast<CGD_Label*>(List().At(2));
    ASSERT_TRUE(m && r && l);
    EXPECT_EQ(m->GetDescription(), "Marker A:\n\tX(1.000000) Y(2.000000) Z(3.000000)\n");
    EXPECT_EQ(m->Color(), 0x123456u);
    EXPECT_EQ(m->GetCaption(), "peak");
    EXPECT_TRUE(m->IsSelected());
    EXPECT_EQ(List().Selected(), m);
    EXPECT_EQ(m->GetKind(), 3);
    EXPECT_EQ(r->Color(), 0x00FF00u);
    EXPECT_EQ(r->GetZ2(), 11.0);
    EXPECT_EQ(r->GetKind(), 2);
    EXPECT_EQ(l->GetCaption(), "Label Text Here");
    EXPECT_EQ(l->Style(), 0);
}

TEST_F(AnnotationTest, MarkerCollectionNamesAddsAndKeepsOrderOnRemoval) {
    const ComPtr<IDispatch> markers = Collection(607);
    ASSERT_TRUE(markers);
    std::string names;
    for (int i = 0; i < 28; ++i) {
        const Variant m = Call(markers.Get(), "Add", {Variant(double(i)), Variant(1.0), Variant(2.0)});
        ASSERT_TRUE(m.Dispatch());
        names += static_cast<CGD_Marker*>(List().At(i))->Name();
    }
    EXPECT_EQ(names, "ABCDEFGHIJKLMNOPQRSTUVWXYZ[A");
    EXPECT_EQ(Call(markers.Get(), "Count", {}, DISPATCH_PROPERTYGET).I2(), 28);

    const ComPtr<IDispatch> first = Call(markers.Get(), "Item", {Variant(int16_t{0})}).Dispatch();
    const ComPtr<IDispatch> second = Call(markers.Get(), "Item", {Variant(int16_t{1})}).Dispatch();
    Call(markers.Get(), "RemoveAt", {Variant(int16_t{0})});
    EXPECT_EQ(Call(markers.Get(), "GetIndex", {Variant(second)}).I2(), 0);
    EXPECT_EQ(Position(first.Get()), "0 -1.000000 -1.000000 -1.000000");  // detached: FALSE, nothing written
    EXPECT_EQ(Call(first.Get(), "Caption", {}, DISPATCH_PROPERTYGET).Bstr(), "");
    Put(first.Get(), "Caption", Variant(std::string("ignored")));
    // Out of range: an empty dispatch, nothing removed.
    for (int16_t index : {int16_t{-1}, int16_t{27}, int16_t{500}}) {
        EXPECT_FALSE(Call(markers.Get(), "Item", {Variant(index)}).Dispatch());
        Call(markers.Get(), "RemoveAt", {Variant(index)});
    }
    Call(markers.Get(), "Remove", {Variant(first)});  // not in the collection: -1, nothing
    EXPECT_EQ(List().Count(), 27);
    // Count is read-only; an object of another collection is not found.
    HRESULT hr = S_OK;
    Call(markers.Get(), "Count", {Variant(int16_t{3})}, DISPATCH_PROPERTYPUT, &hr);
    EXPECT_EQ(hr, DISP_E_MEMBERNOTFOUND);
    const ComPtr<IDispatch> label = Call(Collection(609).Get(), "Add",
                                         {Variant(std::string("L")), Variant(1.0), Variant(1.0), Variant(1.0)})
                                        .Dispatch();
    EXPECT_EQ(Call(markers.Get(), "GetIndex", {Variant(label)}).I2(), -1);
    // Move refuses what is not a number; the marker stays.
    EXPECT_FALSE(Call(second.Get(), "Move", {Variant(NAN), Variant(0.0), Variant(0.0)}).BoolValue());
    EXPECT_EQ(Position(second.Get()), "1 1.000000 1.000000 2.000000");
    // Destroying the control detaches what a script still holds.
    control->Destroy();
    EXPECT_EQ(Position(second.Get()), "0 -1.000000 -1.000000 -1.000000");
    EXPECT_EQ(Call(markers.Get(), "Count", {}, DISPATCH_PROPERTYGET).I2(), 0);
}

TEST_F(AnnotationTest, RegionSettersKeepTheirRulesAndRaiseDataSelect) {
    const auto sink = Advise();
    const ComPtr<IDispatch> regions = Collection(608);
    const ComPtr<IDispatch> region =
        Call(regions.Get(), "Add", {Variant(3.0), Variant(2.0), Variant(1.0), Variant(1.0), Variant(0.0), Variant(0.0)})
            .Dispatch();
    ASSERT_TRUE(region);
    ASSERT_EQ(sink->events.size(), 1u);
    EXPECT_EQ(sink->events[0].dispid, CUI_VexplotCtrl::kDispidDataSelect);
    EXPECT_EQ(sink->events[0].args[0].R8(), 1.0);   // xmin
    EXPECT_EQ(sink->events[0].args[3].R8(), 2.0);   // ymax
    EXPECT_EQ(sink->events[0].args[5].R8(), 11.0);  // zmax: the region reaches the top of the data
    Put(region.Get(), "Style", Variant(int16_t{2}));
    Put(region.Get(), "Style", Variant(int16_t{7}));
    EXPECT_EQ(Call(region.Get(), "Style", {}, DISPATCH_PROPERTYGET).I2(), 2);
    Put(region.Get(), "Spacing", Variant(int16_t{-5}));
    EXPECT_EQ(Call(region.Get(), "Spacing", {}, DISPATCH_PROPERTYGET).I2(), -5);
    Put(region.Get(), "EnableEvent", Variant::Bool(false));
    Call(region.Get(), "Move", {Variant(0.0), Variant(0.0), Variant(0.0), Variant(1.0), Variant(1.0), Variant(0.0)});
    EXPECT_EQ(sink->events.size(), 1u);
    // Without data nothing can be marked: Add answers nothing.
    control->GetGraphObjects()->Clear();
    EXPECT_FALSE(Call(Collection(607).Get(), "Add", {Variant(0.0), Variant(0.0), Variant(0.0)}).Dispatch());
}

TEST_F(AnnotationTest, PropertyDialogsApplyOnOkAndLeaveTheObjectOnCancel) {
    std::FILE* out = std::tmpfile();
    HeadlessSite headless(out);
    control->Destroy();
    ASSERT_TRUE(control->Create(headless, {0, 0, 400, 300}));
    ShowGrid(4, 3);
    CGD_Marker* marker = AnnotationActions::AddMarker(*control, 1, 1, 1);
    headless.AnswerDialog("MarkerProperties", [](IDialogLogic& d) {
        auto& dialog = dynamic_cast<MarkerDialog&>(d);
        EXPECT_STREQ(dialog.Caption(), "Marker Properties");
        dialog.x = 2.5;
        dialog.label = "moved";
        dialog.drawLines = false;
        std::string error;
        return dialog.Accept(&error) ? kAnswerOk : kAnswerCancel;
    });
    EXPECT_TRUE(marker->ShowProperties());
    EXPECT_EQ(marker->GetX(), 2.5);
    EXPECT_EQ(marker->GetCaption(), "moved");
    EXPECT_FALSE(marker->DrawLines());
    // A refused field writes nothing; Cancel changes nothing.
    headless.AnswerDialog("MarkerProperties", [](IDialogLogic& d) {
        auto& dialog = dynamic_cast<MarkerDialog&>(d);
        dialog.y = INFINITY;
        dialog.label = "never";
        std::string error;
        EXPECT_FALSE(dialog.Accept(&error));
        EXPECT_EQ(error, "Please enter a finite number for the position.");
        return kAnswerCancel;
    });
    EXPECT_FALSE(marker->ShowProperties());
    EXPECT_EQ(marker->GetCaption(), "moved");
    CGD_Region* region = AnnotationActions::AddRegion(*control, 0, 0, 0, 1, 1, 0);
    headless.AnswerDialog("RegionProperties", [](IDialogLogic& d) {
        auto& dialog = dynamic_cast<RegionDialog&>(d);
        dialog.style = 4;
        std::string error;
        EXPECT_FALSE(dialog.Accept(&error));
        dialog.style = 3;
        dialog.spacing = 6;
        return dialog.Accept(&error) ? kAnswerOk : kAnswerCancel;
    });
    EXPECT_TRUE(region->ShowProperties());
    EXPECT_EQ(region->Style(), 3);
    EXPECT_EQ(region->Spacing(), 6);
    control->Destroy();
    std::fclose(out);
}

}  // namespace
}  // namespace vexplot::test
