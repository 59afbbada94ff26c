#include <gtest/gtest.h>

#include <limits>

#include "com/SafeArray.h"

namespace vexplot {
namespace {

TEST(SafeArray, TwoDimensionsWithLowerBoundsAddressDimensionZeroFastest) {
    SafeArray a = SafeArray::Create2D(3, 2, 1, -1);  // indices (1..3, -1..0)
    for (int32_t j = -1; j <= 0; ++j)
        for (int32_t i = 1; i <= 3; ++i) {
            const int32_t at[] = {i, j};
            ASSERT_EQ(a.PutElement(at, 10 * i + j), S_OK);
        }
    EXPECT_EQ(a.UpperBound(0), 3);
    EXPECT_EQ(a.UpperBound(1), 0);
    const double expected[] = {9, 19, 29, 10, 20, 30};
    ASSERT_EQ(a.ElementCount(), 6u);
    for (size_t k = 0; k < 6; ++k) EXPECT_EQ(a.Values()[k], expected[k]);
}

TEST(SafeArray, ElementAccessOutsideTheBoundsIsRefused) {
    SafeArray a = SafeArray::Create2D(2, 2, 1, 1);
    double v = 0;
    const int32_t below[] = {0, 1}, above[] = {1, 3}, oneIndex[] = {1};
    EXPECT_EQ(a.GetElement(below, &v), DISP_E_BADINDEX);
    EXPECT_EQ(a.PutElement(above, 1), DISP_E_BADINDEX);
    EXPECT_EQ(a.GetElement(oneIndex, &v), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArray().GetElement(oneIndex, &v), DISP_E_BADINDEX);
}

TEST(SafeArray, CopiesShareStorageUntilWritten) {
    SafeArray a = SafeArray::FromValues(std::vector<double>{1, 2, 3});
    SafeArray b = a;
    EXPECT_TRUE(b.SharesStorageWith(a));
    b.MutableData()[0] = 7;
    EXPECT_FALSE(b.SharesStorageWith(a));
    EXPECT_EQ(a.Values()[0], 1);
    EXPECT_EQ(b.Values()[0], 7);
    const double* before = b.Data();
    b.MutableData()[1] = 8;  // sole owner now: no second copy
    EXPECT_EQ(b.Data(), before);
}

TEST(SafeArray, OverflowingSizesAreRefusedBeforeAllocating) {
    const uint32_t huge = std::numeric_limits<uint32_t>::max();
    EXPECT_NO_THROW(SafeArray::Create2D(0, huge));
    if constexpr (sizeof(size_t) == 8) {
        // 2^32 * 2^32 elements cannot be addressed at all.
        EXPECT_THROW(SafeArray::Create2D(huge, huge), std::length_error);
    }
}

}  // namespace
}  // namespace vexplot
