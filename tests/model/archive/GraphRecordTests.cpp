// The graph object's record and the records of the graph object list.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "../DataObjectDouble.h"
#include "ArchiveSupport.h"
#include "com/ComError.h"
#include "dataobject/GraphDataFactory.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_GraphObjectList.h"
#include "model/DetachedViewHost.h"
#include "model/GraphObjectListRecord.h"
#include "support/Caught.h"

namespace vexplot::test {
namespace {

// Byte offsets of the record's items (after the 19 bytes of its begin
// marker "GraphObjectBegin:2").
constexpr size_t kFlagsAt = 19;
constexpr size_t kYCountAt = 35, kXCountAt = 39, kShownYAt = 43, kShownXAt = 47, kFirstXAt = 51, kFirstYAt = 55;
constexpr size_t kPreviewYAt = 59, kPreviewXAt = 63, kStepXAt = 67, kStepYAt = 71, kContrastAt = 75, kViewAt = 79;
constexpr size_t kStyleAt = 83, kShadingAt = 91, kPointAt = 103, kSectionAt = 111;
constexpr size_t kObjectAt = 119;
// The drawing settings the first layout lacks: from the style to the object.
constexpr size_t kDrawingSize = kObjectAt - kStyleAt;

Bytes Record(CGD_GraphObject& graph) {
    return Stored([&](CArchive& a) { graph.Serialize(a); });
}

// What a load could change: the record the graph object writes (every field
// it restores), its data object and its preview.
struct GraphState {
    Bytes record;
    const IGraphData* dataObject;
    size_t previewSize;

    static GraphState Of(CGD_GraphObject& g) { return {Record(g), g.Data(), g.Preview().size()}; }
    bool operator==(const GraphState&) const = default;
};

class GraphRecord : public GraphDataTest {
protected:
    // X scale 0, 0.5, 1, ...; Y scale descending from 10; cell (ix, iy) = ix * 1000 + iy + offset.
    static ComPtr<IGraphData> MakeData(int xCount, int yCount, double offset = 0.0) {
        std::vector<double> cells, x, y;
        for (int ix = 0; ix < xCount; ++ix)
            for (int iy = 0; iy < yCount; ++iy) cells.push_back(ix * 1000.0 + iy + offset);
        for (int ix = 0; ix < xCount; ++ix) x.push_back(ix * 0.5);
        for (int iy = 0; iy < yCount; ++iy) y.push_back(10.0 - iy);
        return CreateGraphData(cells, xCount, yCount, x, y, "x", "y", "z");
    }

    CGD_GraphObject& Show(IUnknown* data, bool keepFullRange = true) {
        return List().AddDataObject(data, host.Get(), true, keepFullRange);
    }

    CGD_GraphObjectList& List() { return *host->GetGraphObjects(); }

    ComPtr<DetachedViewHost> host = MakeComObject<DetachedViewHost>();
};

TEST_F(GraphRecord, RoundTripsByteForByteWithItsDataObject) {
    CGD_GraphObject& graph = Show(MakeData(120, 40).Get(), /*keepFullRange=*/false);
    graph.SetVisible(false);
    graph.SetUsePreview(true);
    graph.SetDisplaySuppressed(true);
    graph.SetOneDimensionalView(2);
    CGD_GraphObject::DrawingSettings drawing;
    drawing.style = GraphStyle::Barchart;
    drawing.shading = ShadingMode::Smooth;
    drawing.pointStyle = PointStyle::Star;
    drawing.secantPosition = 25.0;
    graph.SetDrawing(drawing);
    const Bytes bytes = Record(graph);

    ASSERT_GT(bytes.size(), kObjectAt + 16 + 15);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 19), "\x12GraphObjectBegin:2");
    const std::pair<size_t, int32_t> items[] = {
        {kFlagsAt, 0},      {kFlagsAt + 4, 1},  {kFlagsAt + 8, 1}, {kFlagsAt + 12, 1}, {kYCountAt, 40},
        {kXCountAt, 120},   {kShownYAt, 40},    {kShownXAt, 120},  {kFirstXAt, 0},     {kFirstYAt, 0},
        {kPreviewYAt, 20},  {kPreviewXAt, 60},  {kStepXAt, 2},     {kStepYAt, 2},
        {kContrastAt, 0},  // the complement of the host's white background
        {kViewAt, 2},       {kStyleAt, 2},      {kShadingAt, 1},   {kPointAt, 6},
    };
    for (const auto& [at, value] : items) EXPECT_EQ(Int32At(bytes, at), value) << "at " << at;
    EXPECT_EQ(Bytes(bytes.begin() + kObjectAt, bytes.begin() + kObjectAt + 4), (Bytes{0x92, 0x1D, 0x5D, 0x8D}));
    EXPECT_EQ(std::string(bytes.end() - 15, bytes.end()), "\x0EGraphObjectEnd");

    CGD_GraphObject loaded;
    Loaded(bytes, [&](CArchive& a) { EXPECT_TRUE(loaded.LoadRecord(a, host.Get())); });
    EXPECT_EQ(loaded.Preview().size(), graph.Preview().size());
    EXPECT_EQ(loaded.Drawing(), drawing);
    EXPECT_EQ(loaded.Owner(), host.Get());
    EXPECT_EQ(loaded.GetValue(119, 39), 119039.0);
    EXPECT_EQ(Record(loaded), bytes);
}

TEST_F(GraphRecord, ADataObjectThatCannotSaveItselfIsStoredAsNoObject) {
    auto unsaveable = MakeComObject<DataObjectDouble>(MakeData(3, 2));
    CGD_GraphObject& graph = Show(unsaveable->Identity());
    const Bytes bytes = Record(graph);
    ASSERT_EQ(bytes.size(), kObjectAt + 16 + 15);
    EXPECT_EQ(Bytes(bytes.begin() + kObjectAt, bytes.begin() + kObjectAt + 16), Bytes(16, 0));
    EXPECT_EQ(std::string(bytes.end() - 15, bytes.end()), "\x0EGraphObjectEnd");

    // Loading reads the whole record and leaves the graph object as it was.
    CGD_GraphObject& other = Show(MakeData(4, 3).Get());
    const GraphState before = GraphState::Of(other);
    Loaded(bytes, [&](CArchive& a) {
        EXPECT_FALSE(other.LoadRecord(a, host.Get()));
        EXPECT_EQ(a.Remaining(), 0u);
    });
    EXPECT_EQ(GraphState::Of(other), before);
}

// Impossible numbers, and the record cut at every length: refused, and the
// graph object keeps what it had.
TEST_F(GraphRecord, MalformedRecordsAreRefusedAndChangeNothing) {
    CGD_GraphObject& source = Show(MakeData(8, 6).Get());
    const Bytes good = Record(source);

    const struct {
        const char* name;
        std::vector<std::pair<size_t, int32_t>> patches;
        std::optional<std::string> fault;  // none: the record loads
    } patched[] = {
        {"as written", {}, std::nullopt},
        {"negative Y count", {{kYCountAt, -1}}, "Y count: is negative (-1)"},
        {"X count not the grid's", {{kXCountAt, 9}, {kShownXAt, 9}}, "holds 8 x 6 values (X by Y), but the record says 9 x 6"},
        {"shown X beyond the grid", {{kShownXAt, 9}}, "shown X part: first index 0 and count 9 reach outside a grid of 8"},
        {"first shown Y beyond the grid", {{kFirstYAt, 6}, {kShownYAt, 1}}, "shown Y part: first index 6"},
        {"negative first shown X", {{kFirstXAt, -1}, {kShownXAt, 2}}, "shown X part: first index -1"},
        {"reversed part that ends before 0", {{kFirstXAt, 5}, {kShownXAt, -6}}, "shown X part: first index 5 and count -6"},
        {"reversed part inside the grid", {{kFirstXAt, 5}, {kShownXAt, -4}}, std::nullopt},
        {"negative preview step", {{kStepXAt, -2}}, "preview X step: is negative (-2)"},
        {"one-dimensional view 3", {{kViewAt, 3}}, "one-dimensional view: is 3, not 0, 1 or 2"},
        {"begin marker", {{1, 0x70617258}}, "begin marker: found \"XraphObjectBegin:2\" instead"},
        {"drawing style 5", {{kStyleAt, 5}}, "drawing style: is 5, not 0 to 4"},
        {"point style -1", {{kPointAt, -1}}, "section point style: is -1, not 0 to 6"},
        {"section position NaN", {{kSectionAt + 4, 0x7FF80000}}, "section position: is not a finite number"},
        {"unknown class of data object", {{kObjectAt, 0x12345678}}, "data object: "},
    };
    struct Case {
        std::string name;
        Bytes bytes;
        std::optional<std::string> fault;
    };
    std::vector<Case> cases;
    for (const auto& p : patched) {
        Bytes bytes = good;
        for (const auto& [at, value] : p.patches) PutInt32At(bytes, at, value);
        cases.push_back({p.name, bytes, p.fault});
    }
    for (size_t cut = 0; cut < good.size(); ++cut)
        cases.push_back({"cut to " + std::to_string(cut), Bytes(good.begin(), good.begin() + ptrdiff_t(cut)), ""});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CGD_GraphObject& target = Show(MakeData(4, 3).Get());
        const GraphState before = GraphState::Of(target);
        try {
            Loaded(c.bytes, [&](CArchive& a) { EXPECT_TRUE(target.LoadRecord(a, host.Get())); });
            EXPECT_FALSE(c.fault) << "loaded";
            EXPECT_EQ(target.GetGeometry().xCount, 8);
        } catch (const ArchiveError& e) {
            ASSERT_TRUE(c.fault) << e.what();
            EXPECT_NE(std::string(e.what()).find(*c.fault), std::string::npos) << e.what();
            EXPECT_LE(e.Offset(), c.bytes.size());
            EXPECT_EQ(GraphState::Of(target), before);
        }
    }
}

TEST_F(GraphRecord, ARecordOfTheFirstLayoutLoadsAndKeepsTheDrawingTheObjectHas) {
    CGD_GraphObject& source = Show(MakeData(6, 5).Get());
    source.SetOneDimensionalView(1);
    Bytes bytes = Record(source);
    // The first layout: the shorter marker, no drawing settings.
    bytes.erase(bytes.begin() + kStyleAt, bytes.begin() + kObjectAt);
    bytes.erase(bytes.begin() + 17, bytes.begin() + 19);
    bytes[0] = 16;
    ASSERT_EQ(bytes.size(), Record(source).size() - kDrawingSize - 2);

    CGD_GraphObject loaded;
    CGD_GraphObject::DrawingSettings mine;
    mine.style = GraphStyle::Points;
    loaded.SetDrawing(mine);
    Loaded(bytes, [&](CArchive& a) { EXPECT_TRUE(loaded.LoadRecord(a, host.Get())); });
    EXPECT_EQ(loaded.OneDimensionalView(), 1);
    EXPECT_EQ(loaded.GetGeometry().xCount, 6);
    EXPECT_EQ(loaded.Drawing(), mine);
}

TEST_F(GraphRecord, SerializeLoadsForTheOwnerTheObjectHas) {
    CGD_GraphObject& source = Show(MakeData(4, 3).Get());
    const Bytes bytes = Record(source);
    CGD_GraphObject unowned;
    const auto e = Caught<ComError>([&] { Loaded(bytes, [&](CArchive& a) { unowned.Serialize(a); }); });
    ASSERT_TRUE(e) << "loaded without an owner";
    EXPECT_EQ(e->Code(), E_POINTER);
    CGD_GraphObject& owned = Show(MakeData(2, 2).Get());
    Loaded(bytes, [&](CArchive& a) { owned.Serialize(a); });
    EXPECT_EQ(owned.GetGeometry().xCount, 4);
}

class GraphListRecord : public GraphRecord {
protected:
    static Bytes ListRecord(const CGD_GraphObjectList& list) {
        return Stored([&](CArchive& a) { GraphObjectListRecord::Write(list, a); });
    }
};

TEST_F(GraphListRecord, RoundTripsByteForByteAndActivatesTheLast) {
    Show(MakeData(4, 3).Get());
    Show(MakeData(60, 2, 0.5).Get()).SetVisible(false);
    List().SetActiveIndex(0);
    const Bytes bytes = ListRecord(List());
    EXPECT_EQ(Int32At(bytes, 0), 2);

    CGD_GraphObjectList loaded;
    Loaded(bytes, [&](CArchive& a) { GraphObjectListRecord::Read(loaded, a, host.Get()); });
    ASSERT_EQ(loaded.Count(), 2);
    EXPECT_EQ(loaded.ActiveIndex(), 1);
    EXPECT_FALSE(loaded.At(1)->Flags().visible);
    EXPECT_EQ(ListRecord(loaded), bytes);
}

TEST_F(GraphListRecord, RecordsWithoutDataAreLeftOut) {
    auto unsaveable = MakeComObject<DataObjectDouble>(MakeData(3, 2));
    Show(MakeData(4, 3).Get());
    Show(unsaveable->Identity());
    CGD_GraphObjectList loaded;
    Loaded(ListRecord(List()), [&](CArchive& a) { GraphObjectListRecord::Read(loaded, a, host.Get()); });
    ASSERT_EQ(loaded.Count(), 1);
    EXPECT_EQ(loaded.At(0)->GetGeometry().xCount, 4);
    EXPECT_EQ(loaded.ActiveIndex(), 0);
}

TEST_F(GraphListRecord, AFailedLoadKeepsTheOldList) {
    Show(MakeData(4, 3).Get());
    Show(MakeData(2, 5).Get());
    const Bytes good = ListRecord(List());
    Bytes negative;
    AppendInt32(negative, -2);

    CGD_GraphObjectList target;
    target.Add(std::make_unique<CGD_GraphObject>());
    target.SetActiveIndex(0);
    const CGD_GraphObject* kept = target.At(0);
    std::vector<Bytes> inputs{negative};
    for (size_t cut = 0; cut < good.size(); ++cut)
        inputs.emplace_back(good.begin(), good.begin() + static_cast<ptrdiff_t>(cut));
    for (const Bytes& bytes : inputs) {
        SCOPED_TRACE(bytes.size());
        LoadError(bytes, [&](CArchive& a) { GraphObjectListRecord::Read(target, a, host.Get()); });
        ASSERT_EQ(target.Count(), 1);
        EXPECT_EQ(target.At(0), kept);
        EXPECT_EQ(target.ActiveIndex(), 0);
    }
}

}  // namespace
}  // namespace vexplot::test
