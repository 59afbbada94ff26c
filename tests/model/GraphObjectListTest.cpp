#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "GraphFixture.h"

namespace vexplot::test {
namespace {

class GraphObjectListTest : public GraphFixture {
protected:
    // A grid array of the given sizes holding `offset` + Cell.
    static SafeArray Grid(uint32_t xCount, uint32_t yCount, double offset = 0.0) {
        return MakeGrid(xCount, yCount, [offset](uint32_t ix, uint32_t iy) { return Cell(ix, iy) + offset; });
    }

    static std::vector<double> Scale(IGraphData* data, bool x) {
        SafeArray scale;
        EXPECT_EQ(x ? data->GetXScale(&scale) : data->GetYScale(&scale), S_OK);
        return {scale.Values().begin(), scale.Values().end()};
    }
};

TEST_F(GraphObjectListTest, CopyArrayDataPutsSameSizedGridsInPlaceAndReplacesOthers) {
    CGD_GraphObject* first = list.CopyArrayData(Grid(4, 3), host.Get(), true, true);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(list.Active(), first);
    EXPECT_EQ(first->Data(), list.ExternalData());
    EXPECT_TRUE(first->Flags().data);
    EXPECT_EQ(Scale(list.ExternalData(), true), (std::vector<double>{0, 1, 2, 3}));
    EXPECT_EQ(Scale(list.ExternalData(), false), (std::vector<double>{0, 1, 2}));
    const ComPtr<IGraphData> kept(list.ExternalData());

    log->calls.clear();
    EXPECT_EQ(list.CopyArrayData(Grid(4, 3, 0.5), host.Get(), true, true), nullptr);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.ExternalData(), kept.Get());
    EXPECT_EQ(first->GetValue(3, 2), Cell(3, 2) + 0.5);
    ASSERT_FALSE(log->calls.empty());
    EXPECT_EQ(log->calls.front(), "device.ResetData()");  // the active object heard DataChanged

    CGD_GraphObject* second = list.CopyArrayData(Grid(5, 3), host.Get(), false, true);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.Active(), second);
    EXPECT_NE(list.ExternalData(), kept.Get());
    EXPECT_EQ(second->GetGeometry().xCount, 5);
}

TEST_F(GraphObjectListTest, CopyArrayDataLeavesTheHostsDataObjectAlone) {
    auto hostData = MakeData(4, 3);
    Show(hostData.Get());
    ASSERT_NE(list.CopyArrayData(Grid(4, 3, 0.5), host.Get(), false, true), nullptr);
    EXPECT_EQ(list.Count(), 2);
    double value = 0.0;
    ASSERT_EQ(hostData->GetValue(0, 0, &value), S_OK);
    EXPECT_EQ(value, Cell(0, 0));
}

TEST_F(GraphObjectListTest, CopyAxisScaleDataReplacesOnlyTheXAndYScales) {
    list.CopyAxisScaleData(0, SafeArray::FromValues(std::vector<double>{1, 2}));  // no data object yet

    const std::vector<double> xScale{10, 20, 30, 40}, yScale{-1, -2, -3};
    struct Case {
        int32_t axis;
        std::vector<double> scale;
        std::vector<double> x, y;  // afterwards
    };
    const Case cases[] = {
        {2, xScale, {0, 1, 2, 3}, {0, 1, 2}},
        {-1, xScale, {0, 1, 2, 3}, {0, 1, 2}},
        {0, xScale, xScale, {0, 1, 2}},
        {1, yScale, xScale, yScale},
    };
    list.CopyArrayData(Grid(4, 3), host.Get(), false, true);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.axis);
        list.CopyAxisScaleData(c.axis, SafeArray::FromValues(c.scale));
        EXPECT_EQ(Scale(list.ExternalData(), true), c.x);
        EXPECT_EQ(Scale(list.ExternalData(), false), c.y);
    }
    ExpectComError([&] { list.CopyAxisScaleData(0, SafeArray::FromValues(yScale)); }, E_INVALIDARG,
                   IGraphData::kIid);
}

TEST_F(GraphObjectListTest, ClampGettersReadTheActiveObjectsExtent) {
    EXPECT_EQ(list.ZMinClamp(), 0.0);
    EXPECT_EQ(list.ZMaxClamp(), 0.0);
    const std::vector<double> values{-5, 2, 9, 4};
    Show(CreateGraphData(values, 2, 2).Get());
    EXPECT_EQ(list.ZMinClamp(), -5.0);
    EXPECT_EQ(list.ZMaxClamp(), 9.0);
}

TEST_F(GraphObjectListTest, RemovingKeepsTheActiveObjectOrLeavesNone) {
    struct Case {
        int removed;
        int activeAfter;  // index into the original three, -1 for none
    };
    const Case cases[] = {{0, 1}, {1, -1}, {2, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.removed);
        list.Clear();
        std::vector<CGD_GraphObject*> graphs;
        for (int i = 0; i < 3; ++i) graphs.push_back(&Show(MakeData(2, 2).Get()));
        list.SetActiveIndex(1);
        list.Remove(graphs[static_cast<size_t>(c.removed)]);
        EXPECT_EQ(list.Count(), 2);
        EXPECT_EQ(list.Active(), c.activeAfter < 0 ? nullptr : graphs[static_cast<size_t>(c.activeAfter)]);
    }
}

}  // namespace
}  // namespace vexplot::test
