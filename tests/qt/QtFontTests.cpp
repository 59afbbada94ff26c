#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "qt/QtFont.h"

namespace vexplot {
namespace {

LogicalFont Font(int32_t height, int32_t weight) {
    LogicalFont font;
    font.height = height;
    font.weight = weight;
    return font;
}

TEST(QtFont, WeightZeroIsTheNormalWeightAndOthersAreKept) {
    EXPECT_EQ(ToQFont(Font(-11, 0)).weight(), QFont::Normal);
    EXPECT_EQ(ToQFont(Font(-11, 700)).weight(), QFont::Bold);
    EXPECT_EQ(ToQFont(Font(-11, 100)).weight(), QFont::Thin);
    EXPECT_EQ(ToQFont(Font(-11, 5000)).weight(), 1000);
}

TEST(QtFont, NegativeHeightIsTheEmAndPositiveTheCell) {
    EXPECT_EQ(ToQFont(Font(-14, 400)).pixelSize(), 14);
    // A cell height of 20: ascent + descent come to about 20 pixels, so the
    // em is smaller than 20.
    const QFont cell = ToQFont(Font(20, 400));
    EXPECT_LT(cell.pixelSize(), 20);
    EXPECT_NEAR(QFontMetricsF(cell).height(), 20.0, 2.0);
    EXPECT_EQ(ToQFont(Font(0, 400)).pixelSize(), 11);
}

}  // namespace
}  // namespace vexplot
