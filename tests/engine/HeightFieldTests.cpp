// The height field's coarse levels, reduced on the GPU and read back.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "opengl/gl/EglContext.h"
#include "opengl/view3d/HeightField.h"

using namespace vexplot;

namespace {

TEST(HeightFieldTest, FactorForBudgetIsTheSmallestPowerOfTwoWithinTheBudget) {
    struct Case {
        int32_t xCount, yCount;
        uint64_t cells;
        int32_t factor;
    };
    const Case cases[] = {
        {2048, 2048, 0, 1},             // no limit
        {2048, 2048, 2047 * 2047, 1},   // the whole grid fits
        {2048, 2048, 1024 * 1024, 2},   // 1024 nodes a side: 1023 x 1023 cells
        {2048, 2048, 256 * 256, 8},
        {8192, 100, 4096, 16},          // long and thin: 512 x 7 nodes
        {3, 3, 1, 2},                   // never below two nodes a side
    };
    for (const Case& c : cases)
        EXPECT_EQ(HeightField::FactorForBudget(c.xCount, c.yCount, c.cells), c.factor)
            << c.xCount << " x " << c.yCount << " in " << c.cells;
}

class HeightFieldGlTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string error;
        context = EglContext::Create(error);
        if (!context) GTEST_SKIP() << error;
        ASSERT_TRUE(context->MakeCurrent());
    }
    // The level's values, value (ix, iy) at ix * yCount + iy.
    static std::vector<float> Read(const HeightField::Level& level) {
        std::vector<float> values(static_cast<size_t>(level.xCount) * level.yCount);
        glBindTexture(GL_TEXTURE_2D, level.texture);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RED, GL_FLOAT, values.data());
        glBindTexture(GL_TEXTURE_2D, 0);
        return values;
    }
    std::unique_ptr<EglContext> context;
};

TEST_F(HeightFieldGlTest, CoarseNodesKeepPeaksPitsAndHolesAndSmoothSlopes) {
    // 8 x 6 nodes in 2 x 2 blocks: (0,0) a spike, (1,0) a pit, (2,0) a
    // gentle slope, (0,1) all holes, (1,1) a value among holes, (3,2) flat.
    constexpr int32_t nx = 8, ny = 6;
    std::vector<double> grid(nx * ny, 0.0);
    auto at = [&](int32_t ix, int32_t iy) -> double& { return grid[static_cast<size_t>(ix) * ny + iy]; };
    at(1, 1) = 9;                                               // block (0, 0)
    at(2, 0) = -7;                                              // block (1, 0)
    at(4, 0) = 1, at(4, 1) = 1.1, at(5, 0) = 1.2, at(5, 1) = 1.3;  // block (2, 0): a gentle slope, mean 1.15
    for (int32_t ix : {0, 1}) at(ix, 2) = at(ix, 3) = std::nan("");  // block (0, 1)
    at(2, 2) = at(3, 2) = at(2, 3) = std::nan(""), at(3, 3) = 5;    // block (1, 1)
    HeightField field;
    field.Upload(grid.data(), nx, ny);
    EXPECT_EQ(field.XCount(), nx);
    EXPECT_EQ(field.MinPositive(), 1.0);

    const std::vector<float> full = Read(field.Full());
    EXPECT_EQ(full[1 * ny + 1], 9.0f);
    EXPECT_TRUE(std::isnan(full[0 * ny + 2]));

    const GlProgram reduce = HeightField::MakeReduceProgram();
    const HeightField::Level level = field.Reduced(2, reduce);
    ASSERT_EQ(level.xCount, 4);
    ASSERT_EQ(level.yCount, 3);
    const std::vector<float> coarse = Read(level);
    auto c = [&](int32_t ix, int32_t iy) { return coarse[static_cast<size_t>(ix) * 3 + iy]; };
    EXPECT_EQ(c(0, 0), 9.0f);
    EXPECT_EQ(c(1, 0), -7.0f);
    EXPECT_FLOAT_EQ(c(2, 0), 1.15f);
    EXPECT_TRUE(std::isnan(c(0, 1)));
    EXPECT_EQ(c(1, 1), 5.0f);
    EXPECT_EQ(c(3, 2), 0.0f);
    EXPECT_EQ(field.Reduced(2, reduce).texture, level.texture);  // cached

    // A coarser level is reduced from the cached one; its first block holds
    // both the spike and the pit, and one of them must survive.
    const HeightField::Level quarter = field.Reduced(4, reduce);
    ASSERT_EQ(quarter.xCount, 2);
    ASSERT_EQ(quarter.yCount, 2);
    EXPECT_GE(std::fabs(Read(quarter)[0]), 7.0f);

    field.Release();
    EXPECT_TRUE(field.Empty());
}

}  // namespace
