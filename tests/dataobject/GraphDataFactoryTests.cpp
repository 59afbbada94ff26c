#include <gtest/gtest.h>

#include <vector>

#include "com/ClassRegistry.h"
#include "com/ComError.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/GraphDataFactory.h"
#include "TestSupport.h"
#include "support/Caught.h"

namespace vexplot {
namespace {

TEST(GraphDataFactoryTest, CreatesAFilledObjectThroughTheRegistry) {
    const std::vector<double> values = {1, 2, 3, 4, 5, 6};  // 2 x 3, grid order
    ComPtr<IGraphData> data = CreateGraphData(values, 2, 3, std::vector<double>{-1, 1}, {}, "east", "north", "height");
    ASSERT_TRUE(data);
    const test::Snapshot s = test::Capture(*data);
    EXPECT_EQ(s.xCount, 2);
    EXPECT_EQ(s.yCount, 3);
    EXPECT_EQ(s.grid, values);
    EXPECT_EQ(s.xScale, (std::vector<double>{-1, 1}));
    EXPECT_EQ(s.yScale, (std::vector<double>{0, 1, 2}));
    EXPECT_EQ(s.xLabel + "/" + s.yLabel + "/" + s.zLabel, "east/north/height");
}

TEST(GraphDataFactoryTest, SizeMismatchesThrowInvalidArgument) {
    const std::vector<double> six(6, 0.0);
    struct Case {
        const char* name;
        std::vector<double> values;
        int32_t x, y;
        std::vector<double> xScale, yScale;
        const char* message;
    };
    const Case cases[] = {
        {"too few values", {1, 2, 3}, 2, 2, {}, {}, "3 values do not fill a grid of 2 x 2"},
        {"negative size", {}, -1, 2, {}, {}, "grid size -1 x 2 is negative"},
        {"X scale", six, 2, 3, {1, 2, 3}, {}, "the X scale has 3 values for 2 X indices"},
        {"Y scale", six, 2, 3, {}, {1}, "the Y scale has 1 values for 3 Y indices"},
    };
    for (const Case& c : cases) {
        const auto e = test::Caught<ComError>([&] { CreateGraphData(c.values, c.x, c.y, c.xScale, c.yScale); });
        ASSERT_TRUE(e) << c.name;
        EXPECT_EQ(e->Code(), E_INVALIDARG) << c.name;
        EXPECT_NE(std::string(e->what()).find(c.message), std::string::npos) << c.name << ": " << e->what();
    }
}

TEST(GraphDataFactoryTest, LoadThrowsTheFilesDescription) {
    test::TempDir folder;
    const std::string path = folder / "grid.csv";
    folder.Write("grid.csv", "1,2\n3,x\n");
    const auto e = test::Caught<ComError>([&] { LoadGraphData(path); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->Code(), STG_E_DOCFILECORRUPT);
    EXPECT_EQ(e->Interface(), IPersistFile::kIid);
    EXPECT_NE(std::string(e->what()).find(path + ": line 2, column 2: 'x' is not a number"), std::string::npos)
        << e->what();
    folder.Write("grid.csv", "1,2\n3,4\n");
    ComPtr<IGraphData> data = LoadGraphData(path);
    std::string name;
    data->GetName(&name);
    EXPECT_EQ(name, "grid");
}

TEST(GraphDataFactoryTest, RegistrationIsIdempotentAndServesBothInprocContexts) {
    RegisterGraphDataClass();
    RegisterGraphDataClass();
    for (uint32_t context : {CLSCTX_INPROC_SERVER, CLSCTX_INPROC_HANDLER, CLSCTX_ALL}) {
        HRESULT hr = E_FAIL;
        ComPtr<IGraphData> data = CreateInstance<IGraphData>(CLSID_GraphData, context, &hr);
        EXPECT_EQ(hr, S_OK) << context;
        EXPECT_TRUE(data) << context;
    }
    HRESULT hr = S_OK;
    EXPECT_FALSE(CreateInstance<IGraphData>(CLSID_GraphData, CLSCTX_LOCAL_SERVER, &hr));
    EXPECT_TRUE(FAILED(hr));
}

}  // namespace
}  // namespace vexplot
