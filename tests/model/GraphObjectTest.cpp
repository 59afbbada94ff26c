#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "GraphFixture.h"

namespace vexplot::test {
namespace {

class GraphObjectTest : public GraphFixture {};

using Names = std::vector<std::string>;

// UpdateEngine with the 3-D view on screen, the 1-D view off, not suppressed.
const Names kUpdateEngine = {"device.SetGrid",     "host.Is3DViewCurrent", "view.Refresh",
                             "view.SetGrid",       "view.SetDataVisible",  "host.Redraw",
                             "host.SetSurfaceViewAvailable", "host.SetXLabel", "host.SetYLabel",
                             "host.SetZLabel"};

Names Concat(Names a, const Names& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST_F(GraphObjectTest, PreviewSamplesTheGridAtItsSteps) {
    struct Case {
        int xCount, yCount, previewX, previewY, stepX, stepY;
    };
    const Case cases[] = {
        {120, 40, 60, 20, 2, 2},  {600, 30, 50, 10, 12, 3}, {101, 20, 50, 10, 2, 2},
        {100, 3, 50, 3, 2, 1},    {50, 50, 0, 0, 0, 0},     {51, 1, 0, 0, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.xCount) + " x " + std::to_string(c.yCount));
        CGD_GraphObject& graph = Show(MakeData(c.xCount, c.yCount).Get());
        if (c.previewX == 0) {
            EXPECT_TRUE(graph.Preview().empty());
            continue;
        }
        const CGD_GraphObject::Geometry& g = graph.GetGeometry();
        EXPECT_EQ(g.previewXCount, c.previewX);
        EXPECT_EQ(g.previewYCount, c.previewY);
        EXPECT_EQ(g.previewXStep, c.stepX);
        EXPECT_EQ(g.previewYStep, c.stepY);
        ASSERT_EQ(graph.Preview().size(), static_cast<size_t>(c.previewX * c.previewY));
        for (int i = 0; i < c.previewX; ++i)
            for (int j = 0; j < c.previewY; ++j)
                ASSERT_EQ(graph.Preview()[static_cast<size_t>(i * c.previewY + j)], Cell(i * c.stepX, j * c.stepY))
                    << i << ", " << j;
    }
    CGD_GraphObject& graph = Show(MakeData(120, 40).Get());
    graph.BuildPreview(0);  // without a usable factor: none
    EXPECT_TRUE(graph.Preview().empty());
}

struct RowsCase {
    int x0, y0, nx, ny;
    size_t rows;
};

// Row k must start at the cell (firstX + k * step, firstY).
void ExpectRows(const std::vector<const double*>& rows, const RowsCase& c, int step) {
    ASSERT_EQ(rows.size(), c.rows);
    const int firstX = c.x0 / step * step;
    const int firstY = c.y0 / step * step;
    for (size_t k = 0; k < rows.size(); ++k)
        EXPECT_EQ(rows[k][0], Cell(firstX + static_cast<int>(k) * step, firstY)) << "row " << k;
}

TEST_F(GraphObjectTest, RowsOfTheFullGridAreCutAtItsEnd) {
    CGD_GraphObject& graph = Show(MakeData(10, 5).Get());
    const RowsCase cases[] = {
        {2, 1, 3, 2, 3},  {8, 0, 5, 1, 2},  {0, 0, 0, 1, 0},  {0, 0, 1, 0, 0},
        {0, 0, -1, 3, 0}, {10, 0, 1, 1, 0}, {0, 5, 1, 1, 0},  {0, 0, 10, 5, 10},
    };
    for (const RowsCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.x0 << "," << c.y0 << "," << c.nx << "," << c.ny);
        const auto rows = graph.GetRows(c.x0, c.y0, c.nx, c.ny);
        ExpectRows(rows, c, 1);
        if (!rows.empty()) {
            EXPECT_EQ(rows[0][1], Cell(c.x0, c.y0 + 1));  // a row runs along Y
        }
    }
}

// Rows stop at the preview's last row: 101 / 2 rounds to 51, but the
// preview of 101 x 20 has 50.
TEST_F(GraphObjectTest, RowsOfThePreviewSampleTheRequestedRows) {
    const std::pair<int, RowsCase> cases[] = {
        {120, {0, 0, 10, 5, 5}}, {120, {4, 6, 6, 1, 3}}, {120, {100, 0, 50, 1, 10}},
        {120, {0, 0, 5, 1, 3}},  {120, {118, 0, 2, 1, 1}}, {101, {0, 0, 101, 1, 50}},
    };
    for (const auto& [xCount, c] : cases) {
        SCOPED_TRACE(testing::Message() << xCount << ": " << c.x0 << "," << c.y0 << "," << c.nx);
        CGD_GraphObject& graph = Show(MakeData(xCount, xCount == 101 ? 20 : 40).Get());
        graph.SetUsePreview(true);
        ExpectRows(graph.GetRows(c.x0, c.y0, c.nx, c.ny), c, 2);
    }
}

TEST_F(GraphObjectTest, RangesAreTheScalesEndsAndShownRangeMapsToNearestIndices) {
    struct Case {
        std::vector<double> xScale;
        double x1, x2;
        double xFirst, xLast;  // GetXRange
        int firstShownX, shownXCount;
    };
    const Case cases[] = {
        {{0, 1, 2, 3, 4, 5}, 1.2, 3.9, 0, 5, 1, 4},
        {{50, 40, 30, 20, 10, 0}, 40, 10, 50, 0, 1, 4},
        {{50, 40, 30, 20, 10, 0}, 50, 0, 50, 0, 0, 6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.x1 << " .. " << c.x2);
        CGD_GraphObject& graph = Show(MakeData(6, 3, c.xScale, {0, 10, 20}).Get(), false);
        EXPECT_EQ(graph.GetGeometry().shownXCount, 6);  // bound over the whole scale
        EXPECT_EQ(graph.GetXRange().first, c.xFirst);
        EXPECT_EQ(graph.GetXRange().last, c.xLast);
        graph.SetShownRange(c.x1, c.x2, 10, 20);
        EXPECT_EQ(graph.GetGeometry().firstShownX, c.firstShownX);
        EXPECT_EQ(graph.GetGeometry().shownXCount, c.shownXCount);
        EXPECT_EQ(graph.GetGeometry().firstShownY, 1);
        EXPECT_EQ(graph.GetGeometry().shownYCount, 2);
    }
}

// The grid goes to both surfaces, then the owner hears of it, as far as the
// view mode, the one-dimensional view and suppression allow.
TEST_F(GraphObjectTest, UpdateEngineSendsGridToBothSurfacesThenOwner) {
    struct Case {
        const char* name;
        int32_t is3DCurrent;
        int32_t oneDimensional;
        bool suppressed;
        Names expected;  // before the three label setters
    };
    const std::string deviceGrid = "device.SetGrid(4,3,0,3,0,2,0,3002,0)";
    const std::string viewGrid = "view.SetGrid(4,3,0,3,0,2,0,3002,0)";
    const Case cases[] = {
        {"3-D current", 1, 0, false,
         {deviceGrid, "host.Is3DViewCurrent()", "view.Refresh(1)", viewGrid, "view.SetDataVisible(1)",
          "host.Redraw(0)", "host.SetSurfaceViewAvailable(1)"}},
        {"2-D current", 0, 0, false,
         {deviceGrid, "host.Is3DViewCurrent()", viewGrid, "view.SetDataVisible(1)", "host.Redraw(0)",
          "host.SetSurfaceViewAvailable(1)"}},
        {"1-D view on", 1, 2, false,
         {deviceGrid, "host.Is3DViewCurrent()", viewGrid, "view.SetDataVisible(0)",
          "host.SetSurfaceViewAvailable(0)"}},
        {"suppressed", 1, 0, true,
         {deviceGrid, "host.Is3DViewCurrent()", "view.Refresh(1)", viewGrid, "view.SetDataVisible(0)",
          "host.Redraw(0)", "host.SetSurfaceViewAvailable(1)"}},
    };
    CGD_GraphObject& graph = Show(MakeData(4, 3).Get());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        host->is3DCurrent = c.is3DCurrent;
        graph.SetOneDimensionalView(c.oneDimensional);
        graph.SetDisplaySuppressed(c.suppressed);
        log->calls.clear();
        graph.UpdateEngine();
        EXPECT_EQ(log->calls, Concat(c.expected, {"host.SetXLabel(time)", "host.SetYLabel(depth)",
                                                  "host.SetZLabel(level)"}));
    }
    EXPECT_EQ(engine->device->grid, Cells(4, 3));
    EXPECT_EQ(engine->view->grid, Cells(4, 3));
}

TEST_F(GraphObjectTest, NewEngineRootReleasesTheOldViewsGridFirst) {
    CGD_GraphObject& graph = Show(MakeData(4, 3).Get());
    auto other = MakeComObject<RecordingEngine>(log);
    graph.SetEngine(other.Get());
    EXPECT_EQ(log->calls, (Names{"view.ReleaseGrid()", "engine.GetDevice2D()", "engine.GetView3D()"}));
    EXPECT_EQ(graph.Device(), other->device.Get());
    EXPECT_EQ(graph.View(), other->view.Get());

    // Without an engine only the owner hears of new data.
    graph.SetEngine(nullptr);
    log->calls.clear();
    graph.UpdateEngine();
    EXPECT_EQ(log->Names(), (Names{"host.Is3DViewCurrent", "host.Redraw", "host.SetSurfaceViewAvailable",
                                   "host.SetXLabel", "host.SetYLabel", "host.SetZLabel"}));
}

TEST_F(GraphObjectTest, NotificationsToAnInactiveGraphObjectChangeNothing) {
    auto data = MakeData(120, 40);
    CGD_GraphObject& inactive = Show(data.Get());
    Show(MakeData(4, 3).Get());
    const std::vector<double> preview(inactive.Preview().begin(), inactive.Preview().end());

    SafeArray grid;
    ASSERT_EQ(data->GetData(&grid), S_OK);
    grid.MutableData()[0] = -7.0;
    ASSERT_EQ(data->PutData(grid), S_OK);
    ASSERT_EQ(data->PutXScale(SafeArray::FromValues(Cells(120, 1))), S_OK);
    ASSERT_EQ(data->PutXLabel("other"), S_OK);

    EXPECT_TRUE(log->calls.empty());
    EXPECT_TRUE(std::equal(preview.begin(), preview.end(), inactive.Preview().begin(), inactive.Preview().end()));
}

// New data is resent and the preview rebuilt; new labels reset the three
// axis labels.
TEST_F(GraphObjectTest, DataAndLabelsChangedOnTheActiveObjectReachEngineAndOwner) {
    auto data = MakeData(120, 40);
    CGD_GraphObject& graph = Show(data.Get());
    ASSERT_EQ(data->PutValue(0, 0, -7.0), S_OK);
    EXPECT_EQ(log->Names(), Concat(Concat({"device.ResetData"}, kUpdateEngine), {"host.RefreshGraphObject"}));
    EXPECT_EQ(graph.Preview()[0], -7.0);
    EXPECT_EQ(engine->view->grid[0], -7.0);

    log->calls.clear();
    ASSERT_EQ(data->PutZLabel("volts"), S_OK);
    EXPECT_EQ(log->calls, (Names{"host.ResetAxisLabel(X)", "host.ResetAxisLabel(Y)", "host.ResetAxisLabel(Z)"}));
}

// Regression: a host that puts a larger grid into its data object must not
// leave the graph object indexing by the old sizes.
TEST_F(GraphObjectTest, DataChangedToAnotherSizeReadsTheNewSizes) {
    auto data = MakeData(120, 40);
    CGD_GraphObject& graph = Show(data.Get());
    ASSERT_EQ(data->PutData(MakeGrid(200, 60, Cell)), S_OK);

    const CGD_GraphObject::Geometry& g = graph.GetGeometry();
    EXPECT_EQ(g.xCount, 200);
    EXPECT_EQ(g.yCount, 60);
    EXPECT_EQ(g.shownXCount, 200);
    ASSERT_EQ(graph.Preview().size(), static_cast<size_t>(g.previewXCount * g.previewYCount));
    EXPECT_EQ(graph.Preview().back(),
              Cell((g.previewXCount - 1) * g.previewXStep, (g.previewYCount - 1) * g.previewYStep));
    const auto rows = graph.GetRows(0, 0, 500, 1);
    ASSERT_EQ(rows.size(), 200u);
    EXPECT_EQ(rows.back()[59], Cell(199, 59));
}

class RecordingEditor final : public CGD_GraphObject::DataEditor {
public:
    explicit RecordingEditor(bool* closed) : closed_(closed) {}
    bool WindowExists() const override { return true; }
    void Close() override { *closed_ = true; }

private:
    bool* closed_;
};

TEST_F(GraphObjectTest, TicksChangedClosesTheEditorAndRefreshesOrRebuildsTheSection) {
    for (int32_t oneDimensional : {0, 1}) {
        SCOPED_TRACE(oneDimensional);
        auto data = MakeData(4, 3);
        CGD_GraphObject& graph = Show(data.Get());
        graph.SetOneDimensionalView(oneDimensional);
        bool closed = false;
        graph.OpenDataEditor([&](const auto&) { return std::make_unique<RecordingEditor>(&closed); });
        log->calls.clear();
        ASSERT_EQ(data->PutYScale(SafeArray::FromValues(std::vector<double>{5, 6, 7})), S_OK);

        EXPECT_TRUE(closed);
        EXPECT_EQ(graph.Editor(), nullptr);
        const Names names = log->Names();
        ASSERT_FALSE(names.empty());
        EXPECT_EQ(names.front(), "device.ResetData");
        EXPECT_EQ(names.back(), oneDimensional ? "host.Rebuild1DView" : "host.RefreshGraphObject");
        EXPECT_EQ(log->calls[1], "device.SetGrid(4,3,0,3,5,7,0,3002,0)");
    }
}

TEST_F(GraphObjectTest, DataFlagReachesTheEngineOnlyWhenChangedOnTheActiveObject) {
    struct Case {
        const char* name;
        bool active;
        bool flag;
        Names expected;
    };
    const Case cases[] = {
        {"active, changed", true, true, Concat({"device.ResetData"}, kUpdateEngine)},
        {"active, unchanged", true, false, {}},
        {"inactive, changed", false, true, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CGD_GraphObject& graph = Show(MakeData(4, 3).Get());
        if (!c.active) Show(MakeData(4, 3).Get());
        graph.SetDataFlag(c.flag);
        EXPECT_EQ(graph.Flags().data, c.flag);
        EXPECT_EQ(log->Names(), c.expected);
        if (!c.expected.empty()) {
            EXPECT_EQ(log->calls[1], "device.SetGrid(4,3,0,3,0,2,0,3002,1)");
        }
        list.Clear();
    }
}

TEST_F(GraphObjectTest, DataEditorOpensWithContentsAndTitle) {
    auto data = MakeData(4, 3);
    ASSERT_EQ(data->PutName("Grid"), S_OK);
    CGD_GraphObject& graph = Show(data.Get());
    int made = 0;
    CGD_GraphObject::DataEditorContents seen;
    bool closed = false;
    auto factory = [&](const CGD_GraphObject::DataEditorContents& contents) {
        ++made;
        seen = contents;
        return std::make_unique<RecordingEditor>(&closed);
    };
    CGD_GraphObject::DataEditor* editor = graph.OpenDataEditor(factory);
    EXPECT_EQ(graph.OpenDataEditor(factory), editor);  // kept while its window exists
    EXPECT_EQ(made, 1);
    EXPECT_EQ(seen.title, "Grid -  3 x 4");
    EXPECT_EQ(seen.grid.ElementCount(), 12u);
    EXPECT_EQ(seen.yScale.ElementCount(), 3u);
    EXPECT_EQ(seen.zMin, 0.0);
    EXPECT_EQ(seen.zMax, 3002.0);
}

}  // namespace
}  // namespace vexplot::test
