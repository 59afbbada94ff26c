#include <gtest/gtest.h>

#include "com/ComError.h"
#include "com/ErrorInfo.h"
#include "com/Guid.h"
#include "support/Caught.h"

namespace vexplot {
namespace {

constexpr GUID kData = GUID::FromLiteral("{8D5D1D92-6199-4AEC-900A-EF2724B42BB0}");

TEST(Guid, FieldsFollowTheTextFormWhichParsesInEitherCase) {
    EXPECT_EQ(kData.Data1, 0x8D5D1D92u);
    EXPECT_EQ(kData.Data2, 0x6199);
    EXPECT_EQ(kData.Data3, 0x4AEC);
    EXPECT_EQ(kData.Data4[0], 0x90);
    EXPECT_EQ(kData.Data4[7], 0xB0);
    EXPECT_EQ(kData.ToString(), "{8D5D1D92-6199-4AEC-900A-EF2724B42BB0}");
    EXPECT_EQ(GUID::Parse("{8d5d1d92-6199-4aec-900a-ef2724b42bb0}"), kData);
    EXPECT_EQ(GUID::Parse(kData.ToString()), kData);
    // Compared and ordered down to the last byte (they key maps of classes).
    const GUID a = GUID::FromLiteral("{00000001-0000-0000-0000-000000000000}");
    const GUID b = GUID::FromLiteral("{00000001-0000-0000-0000-000000000001}");
    EXPECT_NE(a, b);
    EXPECT_LT(a, b);
}

TEST(Guid, ParseRefusesMalformedText) {
    for (const char* bad : {"", "8D5D1D92-6199-4AEC-900A-EF2724B42BB0", "{8D5D1D92-6199-4AEC-900A-EF2724B42BB0",
                            "{8D5D1D92-6199-4AEC-900AEF2724B42BB0-}", "{8D5D1D92-6199-4AEC-900A-EF2724B42BBG}",
                            "{8D5D1D92-6199-4AEC-900A-EF2724B42BB0}x", "{8D5D1D92 6199-4AEC-900A-EF2724B42BB0}"})
        EXPECT_FALSE(GUID::Parse(bad)) << bad;
}

TEST(ComError, CarriesCodeInterfaceAndTheComponentsDescription) {
    SetErrorInfo(kData, "peaks.3do: wrong magic");
    const auto e = test::Caught<ComError>([] { ThrowIfFailed(E_POINTER, kData, "fallback"); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->Code(), E_POINTER);
    EXPECT_EQ(e->Interface(), kData);
    EXPECT_NE(std::string(e->what()).find("peaks.3do: wrong magic"), std::string::npos);
    EXPECT_NE(std::string(e->what()).find("0x80004003"), std::string::npos);
    // The description is taken once; the next failure falls back to its context.
    const auto next = test::Caught<ComError>([] { ThrowIfFailed(E_FAIL, kData, "fallback"); });
    ASSERT_TRUE(next);
    EXPECT_NE(std::string(next->what()).find("fallback"), std::string::npos);
    EXPECT_NO_THROW(ThrowIfFailed(S_FALSE, kData));
}

TEST(ComError, DescriptionForAnotherInterfaceIsNotTaken) {
    SetErrorInfo(kData, "stale");
    EXPECT_EQ(TakeErrorInfo(IID_IUnknown), "");
    EXPECT_EQ(TakeErrorInfo(kData), "stale");
}

}  // namespace
}  // namespace vexplot
