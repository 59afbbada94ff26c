// The tools' state machines against a context that logs what they do, and
// the keypad zoom's arithmetic.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tools/CTool.h"
#include "tools/ToolIconMenu.h"
#include "tools/ZoomStep.h"

namespace vexplot {
namespace {

// Two annotations "A" at pixel (50, 50) and "B" at (60, 60); made ones are
// "N1", "N2"... The surface point under pixel (x, y) is (x, y, x + y); off
// the data where x < 0. The visible range is 0..100 in X and Y, steps 10.
class LoggingContext final : public IToolContext {
public:
    bool hasData = true;
    bool threeD = true;
    bool annotations = true;
    std::vector<std::string> log;

    std::string Name(CGD_Annotation* a) const {
        for (size_t i = 0; i < names_.size(); ++i)
            if (Id(i) == a) return names_[i];
        return a ? "?" : "-";
    }

    bool HasData() override { return hasData; }
    bool SurfacePoint(PixelPoint p, Point3* point) override {
        if (p.x < 0) return false;
        *point = {double(p.x), double(p.y), double(p.x + p.y)};
        return true;
    }
    void ShowPosition(const Point3*) override {}
    void DataCellMouseOver(PixelPoint, const Point3&, bool) override {}
    void SetHelpText(std::string_view text) override { help = text; }
    void SetCursor(CursorShape) override {}
    void Redraw() override {}
    bool Is3D() override { return threeD; }
    void TurnBy(int32_t dx, int32_t dy) override { Log("Turn", dx, dy); }
    void PanBy(int32_t dx, int32_t dy) override { Log("Pan", dx, dy); }
    void EndMotion() override { log.push_back("EndMotion"); }
    bool VisibleRange(DataRect* shown, DataRect* full) override {
        *shown = *full = {0, 100, 0, 100};
        return hasData;
    }
    void SetVisibleRange(const DataRect* r) override {
        if (!r) return log.push_back("ShowAll");
        Log("Visible", r->xMin, r->xMax, r->yMin, r->yMax);
    }
    void ZoomSteps(double* sx, double* sy) override { *sx = *sy = 10; }

    CGD_Annotation* Create(ToolAnnotation kind, const Point3& at) override {
        static const char* const kKinds[] = {"Label", "Marker", "Region", "Tracer", "DiffTracer", "RubberBand"};
        names_.push_back("N" + std::to_string(names_.size() - 2));
        Log(std::string("Create ") + kKinds[static_cast<int>(kind)], at.x, at.y);
        return Id(names_.size() - 1);
    }
    void Move(CGD_Annotation* a, const Point3& to) override { Log("Move " + Name(a), to.x, to.y); }
    void Span(CGD_Annotation* a, const Point3& to) override { Log("Span " + Name(a), to.x, to.y); }
    bool PositionOf(CGD_Annotation*, Point3* at) override {
        *at = {1, 1, 2};
        return true;
    }
    void Finished(CGD_Annotation* a) override { log.push_back("Done " + Name(a)); }
    void Delete(CGD_Annotation* a) override {
        log.push_back("Delete " + Name(a));
        if (selected_ == a) selected_ = nullptr;
    }
    CGD_Annotation* HitTest(PixelPoint p) override {
        if (!annotations) return nullptr;
        return p == PixelPoint{50, 50} ? Id(0) : p == PixelPoint{60, 60} ? Id(1) : nullptr;
    }
    CGD_Annotation* Next(CGD_Annotation* after) override {
        if (!annotations) return nullptr;
        return after == nullptr ? Id(0) : after == Id(0) ? Id(1) : nullptr;
    }
    void SetSelected(CGD_Annotation* a, bool selected) override {
        log.push_back((selected ? "Select " : "Deselect ") + Name(a));
        selected_ = selected ? a : nullptr;
    }
    CGD_Annotation* Selected() override { return selected_; }
    bool ShowProperties(CGD_Annotation* a) override {
        log.push_back("Props " + Name(a));
        return true;
    }
    void PassKey(CGD_Annotation*, int32_t) override {}
    void SetFixedPoint(CGD_Annotation* a, const Point3& at) override { Log("Fixed " + Name(a), at.x, at.y); }

    std::string help;

private:
    template <class... N>
    void Log(const std::string& what, N... numbers) {
        std::ostringstream out;
        out << what;
        const char* separator = " ";
        ((out << separator << numbers, separator = ","), ...);
        log.push_back(out.str());
    }
    CGD_Annotation* Id(size_t i) const { return reinterpret_cast<CGD_Annotation*>(&ids_[i]); }

    std::vector<std::string> names_{"A", "B"};
    mutable char ids_[64] = {};
    CGD_Annotation* selected_ = nullptr;
};

// Plays `script` ("down x y", "move x y", "up x y", "dbl x y", "key k",
// "rdown x y") on a tool.
void Play(CTool& tool, const std::string& script) {
    std::istringstream in(script);
    std::string verb;
    while (in >> verb) {
        if (verb == "key") {
            int key = 0;
            in >> std::hex >> key >> std::dec;
            tool.OnKey(key);
            continue;
        }
        MouseEvent e;
        in >> e.point.x >> e.point.y;
        e.button = verb == "rdown" ? MouseEvent::Button::Right : MouseEvent::Button::Left;
        e.kind = verb == "move" ? MouseEvent::Kind::Move
                 : verb == "up" ? MouseEvent::Kind::Release
                 : verb == "dbl" ? MouseEvent::Kind::DoubleClick
                                 : MouseEvent::Kind::Press;
        if (e.kind == MouseEvent::Kind::Move) e.button = MouseEvent::Button::None;
        tool.OnMouse(e);
    }
}

struct ToolCase {
    const char* name;
    int32_t command;
    const char* script;
    std::vector<std::string> expected;
    bool threeD = true;
    bool annotations = true;
};

TEST(ToolTest, EachToolAnswersItsGesturesAsItsStateMachineSays) {
    const std::vector<ToolCase> cases = {
        {"marker click creates and drags", ToolIconMenu::kMarker, "down 10 10 move 20 20 up 20 20 move 30 30",
         {"Create Marker 10,10", "Move N0 20,20", "Done N0"}},
        {"escape deletes a marker being made", ToolIconMenu::kMarker, "down 10 10 move 20 20 key 1B up 20 20",
         {"Create Marker 10,10", "Move N0 20,20", "Delete N0"}},
        {"escape puts a dragged marker back", ToolIconMenu::kMarker, "down 50 50 move 20 20 key 1B",
         {"Move A 20,20", "Move A 1,1"}},
        {"marker double click opens properties", ToolIconMenu::kMarker, "dbl 50 50", {"Props A"}},
        {"a press off the data makes nothing", ToolIconMenu::kLabel, "down -5 10 move 20 20 up 20 20", {}},
        {"label is made where pressed", ToolIconMenu::kLabel, "down 10 12 up 10 12", {"Create Label 10,12", "Done N0"}},
        {"region spans the drag", ToolIconMenu::kRegion, "down 10 10 move 40 30 up 40 30",
         {"Create Region 10,10", "Span N0 40,30", "Done N0"}},
        {"a region of no size is dropped", ToolIconMenu::kRegion, "down 10 10 move 11 30 up 11 30",
         {"Create Region 10,10", "Span N0 11,30", "Delete N0"}},
        {"select click, then delete", ToolIconMenu::kSelect, "down 50 50 up 50 50 key 2E",
         {"Select A", "Delete A"}},
        {"select drags the selected object", ToolIconMenu::kSelect, "down 60 60 move 70 70 up 70 70",
         {"Select B", "Move B 70,70", "Done B"}},
        {"tab walks the objects", ToolIconMenu::kSelect, "key 9 key 9", {"Select A", "Deselect A", "Select B"}},
        {"tab without objects selects nothing", ToolIconMenu::kSelect, "key 9", {}, true, false},
        {"delete with nothing selected does nothing", ToolIconMenu::kSelect, "key 2E", {}},
        {"enter opens the selected object", ToolIconMenu::kSelect, "down 50 50 up 50 50 key D",
         {"Select A", "Props A"}},
        {"a drag on empty plot turns the 3-D view", ToolIconMenu::kSelect, "down 10 10 move 15 12 up 15 12",
         {"Turn 5,2", "EndMotion"}},
        {"the right button pans", ToolIconMenu::kSelect, "rdown 10 10 move 13 14 up 13 14",
         {"Pan 3,4", "EndMotion"}},
        {"a drag on the flat view does nothing", ToolIconMenu::kSelect, "down 10 10 move 15 12 up 15 12", {},
         false},
        {"pan drags the plot", ToolIconMenu::kPan, "down 10 10 move 12 10 move 12 15 up 12 15",
         {"Pan 2,0", "Pan 0,5", "EndMotion"}},
        {"zoom to the dragged rectangle", ToolIconMenu::kZoom, "down 40 10 move 10 30 up 10 30",
         {"Create RubberBand 40,10", "Span N0 10,30", "Delete N0", "Visible 10,40,10,30"}},
        {"a tiny zoom drag zooms nowhere", ToolIconMenu::kZoom, "down 10 10 move 12 30 up 12 30",
         {"Create RubberBand 10,10", "Span N0 12,30", "Delete N0"}},
        {"escape ends the zoom drag", ToolIconMenu::kZoom, "down 10 10 move 40 40 key 1B up 40 40",
         {"Create RubberBand 10,10", "Span N0 40,40", "Delete N0"}},
        {"keypad zoom", ToolIconMenu::kZoom, "key 6B key 6D key 60 key 41",
         {"Visible 5,95,5,95", "Visible 0,100,0,100", "ShowAll"}},
        {"tracer follows and marks", ToolIconMenu::kTracer, "move 10 20 dbl 10 20",
         {"Create Tracer 50,50", "Move N0 10,20", "Create Marker 10,20"}},
        {"difference tracer fixes and opens", ToolIconMenu::kDifferenceTracer, "move 5 6 down 7 8 up 7 8 dbl 7 8",
         {"Create DiffTracer 50,50", "Move N0 5,6", "Fixed N0 7,8", "Props N0"}},
    };
    for (const ToolCase& c : cases) {
        SCOPED_TRACE(c.name);
        LoggingContext context;
        context.threeD = c.threeD;
        context.annotations = c.annotations;
        auto tool = CTool::Make(c.command, context);
        ASSERT_NE(tool, nullptr);
        tool->Activate();
        Play(*tool, c.script);
        EXPECT_EQ(context.log, c.expected);
    }
}

TEST(ToolTest, WithoutDataNoToolActsAndTheTracersGoWithTheirTool) {
    for (int32_t command : {ToolIconMenu::kSelect, ToolIconMenu::kPan, ToolIconMenu::kZoom, ToolIconMenu::kLabel,
                            ToolIconMenu::kMarker, ToolIconMenu::kTracer, ToolIconMenu::kDifferenceTracer,
                            ToolIconMenu::kRegion}) {
        LoggingContext context;
        context.hasData = false;
        auto tool = CTool::Make(command, context);
        tool->Activate();
        Play(*tool, "down 50 50 move 10 10 up 10 10 dbl 50 50 key 2E key 9 key 6B key 60");
        tool->Deactivate();
        EXPECT_TRUE(context.log.empty()) << command << ": " << context.log.front();
    }
    LoggingContext context;
    auto tracer = CTool::Make(ToolIconMenu::kTracer, context);
    tracer->Activate();
    tracer->Deactivate();
    EXPECT_EQ(context.log, (std::vector<std::string>{"Create Tracer 50,50", "Delete N0"}));
    EXPECT_EQ(CTool::Make(32909, context), nullptr);
}

TEST(ToolTest, HelpTextsAreTheToolsOwnAndTheDifferenceTracerSaysLess) {
    LoggingContext context;
    const struct {
        int32_t command;
        const char* status;
    } cases[] = {
        {ToolIconMenu::kTracer, "<LDClick> Add Marker"},
        {ToolIconMenu::kDifferenceTracer, "<LClick> Set Fixed position"},
        {ToolIconMenu::kMarker, "<LDClick> Open Properties, <LClick>+<MMove> Move Marker"},
        {ToolIconMenu::kZoom, "<LClick>+<MMove> - Zoom selected, <+> - Zoom In, <-> - Zoom Out, <0> - Zoom to all"},
        {ToolIconMenu::kPan, "<LClick>+<MMove> - Pan graph"},
    };
    for (const auto& c : cases) {
        CTool::Make(c.command, context)->Activate();
        EXPECT_EQ(context.help, c.status);
    }
    EXPECT_EQ(CTool::Make(ToolIconMenu::kDifferenceTracer, context)->HelpText(),
              "<LDClick> Open Properties, <LClick> Set Fixed Position");
    EXPECT_EQ(CTool::HelpString(57668).substr(0, 22), "<LClick> Select Obj, <");
    EXPECT_EQ(CTool::HelpString(57671), "");
}

TEST(ZoomStepTest, StepsAreTenSamplesAndKeepTheRangeInsideTheData) {
    EXPECT_DOUBLE_EQ(ZoomStep::StepSize(0, 100, 50), 20);
    EXPECT_DOUBLE_EQ(ZoomStep::StepSize(100, 0, 11), 1000.0 / 11);  // falling scale
    EXPECT_DOUBLE_EQ(ZoomStep::StepSize(0, 100, 10), 100);          // 10 samples or fewer: the range

    const DataRect full{0, 100, -50, 50};
    struct Case {
        DataRect shown;
        double sx, sy;
        bool in;
        std::optional<DataRect> expected;
    };
    const Case cases[] = {
        {full, 10, 4, true, DataRect{5, 95, -48, 48}},
        {{20, 80, -10, 10}, 10, 4, false, DataRect{10, 90, -14, 14}},
        {{5, 95, -48, 48}, 10, 4, false, full},      // clamped to the data
        {{40, 55, -10, 10}, 10, 4, true, std::nullopt},  // would fall below a step in X
        {{40, 60, -3, 3}, 10, 4, true, std::nullopt},    // ... and in Y
        {full, 0, 4, true, std::nullopt},               // no graph object or one-dimensional view
        {full, 10, 4, false, full},
    };
    for (const Case& c : cases) {
        const auto next = ZoomStep::Next(c.shown, full, c.sx, c.sy, c.in);
        ASSERT_EQ(next.has_value(), c.expected.has_value());
        if (!next) continue;
        EXPECT_DOUBLE_EQ(next->xMin, c.expected->xMin);
        EXPECT_DOUBLE_EQ(next->xMax, c.expected->xMax);
        EXPECT_DOUBLE_EQ(next->yMin, c.expected->yMin);
        EXPECT_DOUBLE_EQ(next->yMax, c.expected->yMax);
    }
}

TEST(ToolIconMenuScaleTest, DenseIconsAreDrawnAnewNotEnlarged) {
    for (double ratio : {1.5, 2.0, 3.0}) {
        const RgbaRaster dense = ToolIconMenu::ToolPicture(ToolIconMenu::kTracer, ratio);
        const uint32_t side = ToolIconMenu::ScaledSize(ratio);
        ASSERT_EQ(dense.Width(), side);
        // A one-pixel ring at 1x stays about ratio pixels thick: drawn anew,
        // its edge pixels differ from a nearest-neighbour enlargement.
        const RgbaRaster plain = ToolIconMenu::ToolPicture(ToolIconMenu::kTracer);
        size_t differing = 0, inked = 0;
        for (uint32_t y = 0; y < side; ++y)
            for (uint32_t x = 0; x < side; ++x) {
                const uint32_t c = dense.Pixel(x, y);
                inked += c != ToolIconMenu::kMaskColor;
                differing += c != plain.Pixel(std::min(31u, uint32_t(x / ratio)), std::min(31u, uint32_t(y / ratio)));
            }
        EXPECT_GT(inked, side * 2);
        EXPECT_GT(differing, 0u) << ratio;
    }
}

}  // namespace
}  // namespace vexplot
