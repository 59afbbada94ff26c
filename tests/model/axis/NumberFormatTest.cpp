#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "model/NumberFormat.h"

namespace vexplot {
namespace {

constexpr auto kDecimal = ScaleFormat::Decimal;
constexpr auto kExponential = ScaleFormat::Exponential;
constexpr auto kEngineering = ScaleFormat::Engineering;
constexpr auto kBase10 = ScaleFormat::Base10;
constexpr auto kPlain = TextMarkup::Plain;
constexpr auto kSup = TextMarkup::Superscript;

TEST(FormatValue, WritesEachScaleFormat) {
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        double v;
        ScaleFormat format;
        int32_t decimals;
        TextMarkup markup;
        std::string expected;
    } cases[] = {
        {1234.5678, kDecimal, 6, kPlain, "1234.57"},
        {0.000125, kDecimal, 10, kPlain, "0.000125"},
        {1234.5, kDecimal, -5, kPlain, "1e+03"},  // a negative count is taken as 0
        {12500, kExponential, 10, kPlain, "1.250e4"},
        {-0.05, kExponential, 10, kPlain, "-5.000e-2"},
        {0, kExponential, 10, kPlain, "0.000e0"},
        {0, kEngineering, 3, kPlain, "0  "},
        {1500, kEngineering, 3, kPlain, "1.5 k"},
        {-1500, kEngineering, 3, kPlain, "-1.5 k"},
        {2.5e-6, kEngineering, 10, kPlain, "2.5 \u00B5"},
        {3e15, kEngineering, 10, kPlain, "3e+15  "},
        {999.999e-3, kEngineering, 10, kPlain, "999.999 m"},
        {12500, kBase10, 10, kSup, "1.250x10\\SUP4.0"},
        {12500, kBase10, 10, kPlain, "1.250x10 4.0"},
        {-0.05, kBase10, 10, kSup, "-5.000x10\\SUP-2.0"},
        {1234.5678, ScaleFormat{7}, 2, kPlain, "1234.57"},
        {-2.5, ScaleFormat{-1}, 3, kPlain, "-2.500"},
        {1234.5678, ScaleFormat{4}, 0, kPlain, "1235"},
        {inf, kExponential, 10, kPlain, "inf"},
        {-inf, kEngineering, 10, kPlain, "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), kBase10, 10, kSup, "nan"},
        // The power of ten is floored: 999 is 9.99 hundreds, 1 is 1 x 10^0.
        {999, kExponential, 10, kPlain, "9.990e2"},
        {1, kBase10, 10, kPlain, "1.000x10 0.0"},
        // The engineering prefixes run from atto to tera; outside that
        // range, and at 1e15, the value keeps divisor 1 and a blank.
        {9.99e-19, kEngineering, 10, kPlain, "9.99e-19  "},
        {1e-18, kEngineering, 10, kPlain, "1 a"},
        {-2.5e-6, kEngineering, 10, kPlain, "-2.5 \u00B5"},
        {1, kEngineering, 10, kPlain, "1  "},
        {999, kEngineering, 10, kPlain, "999  "},
        {1e3, kEngineering, 10, kPlain, "1 k"},
        {1e12, kEngineering, 10, kPlain, "1 T"},
        {9.99e14, kEngineering, 10, kPlain, "999 T"},
        {1e15, kEngineering, 10, kPlain, "1e+15  "},
        {-1e18, kEngineering, 10, kPlain, "-1e+18  "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.v << " format " << static_cast<int>(c.format) << " N " << c.decimals);
        EXPECT_EQ(FormatValue(c.v, c.format, c.decimals, c.markup), c.expected);
    }
    EXPECT_EQ(GetPowerOfTen(inf), 1.0);  // FormatValue answers "inf" before asking
}

}  // namespace
}  // namespace vexplot
