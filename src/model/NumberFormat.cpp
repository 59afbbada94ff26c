#include "model/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace vexplot {

namespace {

constexpr int32_t kMaxDecimals = 99;

// Exponents of the SI prefixes and their texts; index 11 ('P') is never
// reached by the search (see GetEngineeringScale).
constexpr std::array<int, 12> kPrefixExponents = {-18, -15, -12, -9, -6, -3, 0, 3, 6, 9, 12, 15};
constexpr std::array<double, 12> kPrefixDivisors = {1e-18, 1e-15, 1e-12, 1e-9, 1e-6, 1e-3,
                                                    1.0,   1e3,   1e6,   1e9,  1e12, 1e15};
constexpr std::array<std::string_view, 12> kPrefixes = {"a", "f", "p", "n", "\u00B5", "m",
                                                        " ", "k", "M", "G", "T", "P"};

[[gnu::format(printf, 1, 2)]] std::string Printf(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int size = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string text(size > 0 ? static_cast<size_t>(size) : 0, '\0');
    if (size > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

// Mantissa and power of ten, as the exponential and Base10 texts show them.
struct Scientific {
    double mantissa;
    double exponent;
};

Scientific Split(double v) {
    const double t = GetPowerOfTen(v);
    return {v / t, std::log10(t)};
}

}  // namespace

std::string FormatValue(double v, ScaleFormat format, int32_t decimalCount, TextMarkup markup) {
    if (std::isnan(v)) return "nan";
    if (std::isinf(v)) return v > 0 ? "inf" : "-inf";
    const int n = std::clamp(decimalCount, 0, kMaxDecimals);
    switch (format) {
    case ScaleFormat::Decimal:
        return Printf("%.*lg", n, v);
    case ScaleFormat::Exponential: {
        const Scientific s = Split(v);
        return Printf("%.3lfe%.lf", s.mantissa, s.exponent);
    }
    case ScaleFormat::Engineering: {
        const EngineeringScale e = GetEngineeringScale(v);
        return Printf("%.*lg %.*s", n, v / e.divisor, static_cast<int>(e.prefix.size()), e.prefix.data());
    }
    case ScaleFormat::Base10: {
        const Scientific s = Split(v);
        if (markup == TextMarkup::Superscript) return Printf("%.3lfx10\\SUP%.1f", s.mantissa, s.exponent);
        return Printf("%.3lfx10 %.1f", s.mantissa, s.exponent);
    }
    }
    return Printf("%.*lf", n, v);
}

EngineeringScale GetEngineeringScale(double v) {
    if (v == 0.0) return {};
    const double l = std::log10(std::fabs(v));
    for (size_t i = 0; i <= 10; ++i) {
        if (l < kPrefixExponents[i]) return {};
        if (l < kPrefixExponents[i + 1]) return {kPrefixDivisors[i], kPrefixes[i]};
    }
    return {};
}

double GetPowerOfTen(double v) {
    if (v == 0.0 || !std::isfinite(v)) return 1.0;
    return std::pow(10.0, std::floor(std::log10(std::fabs(v))));
}

}  // namespace vexplot
