#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "com/ErrorInfo.h"
#include "com/IConnectionPoint.h"
#include "com/Variant.h"
#include "dataobject/GraphDataObject.h"
#include "TestSupport.h"

namespace vexplot {
namespace {

using test::MakeGrid;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(GraphDataObjectTest, WithoutGridHasZeroSizesAndEmptyArrays) {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    EXPECT_EQ(test::Capture(*object), test::Snapshot{});  // sizes and state 0, nothing in the arrays
    SafeArray grid, scale;
    ASSERT_EQ(object->GetData(&grid), S_OK);
    EXPECT_EQ(grid.Dims(), 2u);
    ASSERT_EQ(object->GetXScale(&scale), S_OK);
    EXPECT_EQ(scale.Dims(), 1u);
    const double* values = reinterpret_cast<const double*>(1);
    int32_t x = -1, y = -1;
    ASSERT_EQ(object->GetGridPointer(&values, &x, &y), S_OK);
    EXPECT_EQ(values, nullptr);
    double z = 1;
    EXPECT_EQ(object->GetZMin(&z), S_OK);
    EXPECT_EQ(z, 0);
    EXPECT_EQ(object->ValuesToIndices(1.0, 2.0, &x, &y), S_OK);
    EXPECT_EQ(x + y, 0);
    EXPECT_EQ(object->GetValue(0, 0, &z), DISP_E_BADINDEX);
    EXPECT_EQ(object->GetValueAt(0, 0, &z), DISP_E_BADINDEX);
    EXPECT_EQ(object->IndicesToValues(0, 0, &z, &z), DISP_E_BADINDEX);
    ClearErrorInfo();
}

TEST(GraphDataObjectTest, PutDataSharesStorageAndTheFirstWriteCopiesOnce) {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    const SafeArray mine = MakeGrid(4, 3, [](uint32_t ix, uint32_t iy) { return ix + 0.5 * iy; });
    ASSERT_EQ(object->PutData(mine), S_OK);
    SafeArray got;
    object->GetData(&got);
    EXPECT_TRUE(got.SharesStorageWith(mine));
    Variant asVariant;
    ASSERT_EQ(object->GetData(&asVariant), S_OK);
    EXPECT_TRUE(asVariant.Array().SharesStorageWith(mine));

    got = SafeArray();
    asVariant = Variant();
    ASSERT_EQ(object->PutValue(2, 1, 99.0), S_OK);  // row = X index, column = Y index
    EXPECT_EQ(mine.Values()[2 * 3 + 1], 2.5) << "the caller's array must not change";
    const double* first = nullptr;
    int32_t x = 0, y = 0;
    object->GetGridPointer(&first, &x, &y);
    EXPECT_EQ(first[2 * 3 + 1], 99.0);
    ASSERT_EQ(object->PutValue(0, 0, -1.0), S_OK);
    const double* second = nullptr;
    object->GetGridPointer(&second, &x, &y);
    EXPECT_EQ(second, first) << "storage no longer shared: no second copy";
}

TEST(GraphDataObjectTest, PutDataResetsOnlyTheScalesThatNoLongerFit) {
    ComPtr<GraphDataObject> object = test::FilledObject();  // 3 x 2, X scale -1 0 1, Y scale 5 7
    ASSERT_EQ(object->PutData(MakeGrid(4, 2, 1.0)), S_OK);
    test::Snapshot s = test::Capture(*object);
    EXPECT_EQ(s.xScale, (std::vector<double>{0, 1, 2, 3}));
    EXPECT_EQ(s.yScale, (std::vector<double>{5, 7}));

    ASSERT_EQ(object->PutData(SafeArray()), S_OK);  // clears
    s = test::Capture(*object);
    EXPECT_EQ(s.xCount + s.yCount, 0);
    EXPECT_EQ(s.xLabel, "x") << "clearing the grid keeps the labels";
}

TEST(GraphDataObjectTest, InvalidPutsFailAndChangeNothing) {
    ComPtr<GraphDataObject> object = test::FilledObject();
    const test::Snapshot before = test::Capture(*object);
    struct Case {
        const char* name;
        std::function<HRESULT(IGraphData&)> call;
        HRESULT expected;
        const char* message;
    };
    const SafeArray grid3x2 = MakeGrid(3, 2, 0.0);
    const Case cases[] = {
        {"1-D data", [](IGraphData& d) { return d.PutData(SafeArray::Create1D(6)); }, E_INVALIDARG,
         "1 dimensions instead of two"},
        {"short X scale", [](IGraphData& d) { return d.PutXScale(SafeArray::Create1D(2)); }, E_INVALIDARG,
         "the X scale has 2 values but the grid has 3 X indices"},
        {"2-D Y scale", [](IGraphData& d) { return d.PutYScale(SafeArray::Create2D(2, 1)); }, E_INVALIDARG,
         "one dimension"},
        {"null X scale", [](IGraphData& d) { return d.PutXScale(SafeArray()); }, E_INVALIDARG, "one dimension"},
        {"SetGrid X mismatch",
         [&](IGraphData& d) { return d.SetGrid(grid3x2, SafeArray::Create1D(2), SafeArray::Create1D(2)); },
         E_INVALIDARG, "the X scale has 2 values but the grid has 3 X indices"},
        {"SetGrid Y mismatch",
         [&](IGraphData& d) { return d.SetGrid(grid3x2, SafeArray::Create1D(3), SafeArray::Create1D(3)); },
         E_INVALIDARG, "the Y scale has 3 values but the grid has 2 Y indices"},
        {"SetGrid scales without grid",
         [](IGraphData& d) { return d.SetGrid(SafeArray(), SafeArray::Create1D(3), SafeArray()); }, E_INVALIDARG,
         "an empty grid has an X scale"},
        {"value row past end", [](IGraphData& d) { return d.PutValue(3, 0, 1.0); }, DISP_E_BADINDEX,
         "cell (3, 0) is outside the grid of 3 x 2"},
        {"value column past end", [](IGraphData& d) { return d.PutValue(0, 2, 1.0); }, DISP_E_BADINDEX, "(0, 2)"},
        {"negative row", [](IGraphData& d) { return d.PutValue(-1, 0, 1.0); }, DISP_E_BADINDEX, "(-1, 0)"},
        {"negative column", [](IGraphData& d) { double v; return d.GetValue(0, -1, &v); }, DISP_E_BADINDEX,
         "(0, -1)"},
    };
    for (const Case& c : cases) {
        ClearErrorInfo();
        EXPECT_EQ(c.call(*object), c.expected) << c.name;
        EXPECT_NE(TakeErrorInfo().find(c.message), std::string::npos) << c.name;
        EXPECT_EQ(test::Capture(*object), before) << c.name;
    }
}

// The lowest and highest finite values and the count of NaN cells.
struct Extent {
    double min, max;
    int64_t missing;
    bool operator==(const Extent&) const = default;
};

Extent ExtentOf(IGraphDataAccess& data) {
    Extent e{1e9, -1e9, -1};
    data.GetZMin(&e.min);
    data.GetZMax(&e.max);
    data.GetMissingCount(&e.missing);
    return e;
}

TEST(GraphDataObjectTest, ZExtentsSkipNaNAndInfinities) {
    struct Case {
        const char* name;
        std::vector<double> cells;  // a 1 x n grid
        Extent extent;
    };
    const Case cases[] = {
        {"plain", {3, -2, 5}, {-2, 5, 0}},
        {"NaN skipped", {kNaN, 4, kNaN, 1}, {1, 4, 2}},
        {"infinities skipped", {-kInf, 2, kInf, 3}, {2, 3, 0}},
        {"nothing finite", {kNaN, kInf, kNaN}, {0, 0, 2}},
        {"single", {-7}, {-7, -7, 0}},
    };
    for (const Case& c : cases) {
        ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
        SafeArray grid = SafeArray::Create2D(static_cast<uint32_t>(c.cells.size()), 1);
        std::copy(c.cells.begin(), c.cells.end(), grid.MutableData());
        ASSERT_EQ(object->PutData(grid), S_OK) << c.name;
        EXPECT_EQ(ExtentOf(*object), c.extent) << c.name;
    }
}

// The cache updated by PutValue must always agree with a fresh scan. Random
// edits on a small grid hit every case: raising the maximum, moving the
// minimum inwards, NaN and infinities in and out, the last finite value gone.
TEST(GraphDataObjectTest, ZExtentCacheAgreesWithAFreshScanAfterEveryEdit) {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    object->PutData(MakeGrid(3, 3, [](uint32_t ix, uint32_t iy) { return double(ix * 3 + iy); }));
    std::mt19937 random(12345);
    const double choices[] = {kNaN, kInf, -kInf, -3, 0, 1, 2, 4, 8, 9, 12};
    for (int step = 0; step < 2000; ++step) {
        const auto cell = static_cast<int32_t>(random() % 9);
        const double value = choices[random() % std::size(choices)];
        ASSERT_EQ(object->PutValue(cell / 3, cell % 3, value), S_OK);
        if (random() % 3 != 0) continue;  // let edits pile up between reads
        ComPtr<GraphDataObject> fresh = MakeComObject<GraphDataObject>();
        SafeArray grid;
        object->GetData(&grid);
        fresh->PutData(SafeArray(grid));
        ASSERT_EQ(ExtentOf(*object), ExtentOf(*fresh)) << "step " << step;
    }
}

TEST(GraphDataObjectTest, IndexAndValueMappingUsesTheScales) {
    ComPtr<GraphDataObject> object = test::FilledObject();  // X scale -1 0 1, Y scale 5 7
    int32_t ix = 0, iy = 0;
    ASSERT_EQ(object->ValuesToIndices(0.6, 100, &ix, &iy), S_OK);
    EXPECT_EQ(ix, 2);
    EXPECT_EQ(iy, 1);
    double x = 0, y = 0;
    ASSERT_EQ(object->IndicesToValues(-5, 1, &x, &y), S_OK);  // clamped
    EXPECT_EQ(x, -1);
    EXPECT_EQ(y, 7);
    double z = 0;
    ASSERT_EQ(object->GetValueAt(1, 5, &z), S_OK);
    EXPECT_EQ(z, 20.0);
}

TEST(GraphDataObjectTest, StateCountsChangesAndDirtyFollowsSaves) {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    EXPECT_EQ(object->IsDirty(), S_FALSE);
    object->PutData(MakeGrid(2, 2, 0.0));
    object->PutValue(0, 0, 1);
    object->PutName("n");
    EXPECT_EQ(object->GetState(), 3);
    EXPECT_EQ(object->IsDirty(), S_OK);
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    ASSERT_EQ(object->Save(stream.Get(), false), S_OK);
    EXPECT_EQ(object->IsDirty(), S_OK);
    ASSERT_EQ(object->Save(stream.Get(), true), S_OK);
    EXPECT_EQ(object->IsDirty(), S_FALSE);
    object->PutXLabel("changed");
    EXPECT_EQ(object->IsDirty(), S_OK);
}

TEST(GraphDataObjectTest, AnswersEveryInterfaceWithOneIdentity) {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    const IID answered[] = {IID_IUnknown,       IID_IDispatch,      IGraphData::kIid,
                            IGraphDataAccess::kIid, IConnectionPointContainer::kIid, IPersist::kIid,
                            IPersistStream::kIid, IPersistFile::kIid};
    for (const IID& iid : answered) {
        void* raw = nullptr;
        ASSERT_EQ(object->QueryInterface(iid, &raw), S_OK) << iid.ToString();
        ComPtr<IUnknown> itf = ComPtr<IUnknown>::Adopt(static_cast<IUnknown*>(raw));
        ComPtr<IUnknown> identity = itf.As<IUnknown>();
        EXPECT_EQ(identity.Get(), object->Identity()) << iid.ToString();
    }
    void* none = nullptr;
    EXPECT_EQ(object->QueryInterface(IRunnableObject::kIid, &none), E_NOINTERFACE);
    char file[16];
    EXPECT_EQ(object->GetCurFile(file, sizeof file), S_FALSE);
    EXPECT_STREQ(file, "*.3do");
}

}  // namespace
}  // namespace vexplot
