#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace vexplot {

// How an axis writes its tick values: the index into the list "Decimal",
// "Exponential", "Engineering", "Base10". Any other value, negative ones
// included, means fixed-point with the decimal count as decimals; settings
// and plot files may hold such values, so they are legal, not errors.
enum class ScaleFormat : int32_t { Decimal = 0, Exponential = 1, Engineering = 2, Base10 = 3 };

// Whether the surface that draws the text renders the "\SUP" superscript
// markup (an engine surface answers 0 to QueryTextMarkup when it does).
enum class TextMarkup { Plain, Superscript };

// The SI prefix of a value: value / divisor is what is printed before it.
struct EngineeringScale {
    double divisor = 1.0;
    std::string_view prefix = " ";  // a blank, a letter or the micro sign "µ" (UTF-8)
};

// The text of one tick value, N = decimalCount (clamped to 0 .. 99, so no
// setting makes a malformed format):
// Decimal      "%.Nlg" of v
// Exponential  "%.3lfe%.lf" of v / t and log10 t, t = GetPowerOfTen(v): 12500 -> "1.250e4"
// Engineering  "%.Nlg %s" of v / divisor and the prefix: 1500 -> "1.5 k", 0 -> "0  "
// Base10       "%.3lfx10\SUP%.1f" of v / t and log10 t with superscript markup,
//              "%.3lfx10 %.1f" without it
// other        "%.Nlf" of v
// A value that is not finite is written "inf", "-inf" or "nan" in every format.
std::string FormatValue(double v, ScaleFormat format, int32_t decimalCount, TextMarkup markup);

// The engineering prefix of v from atto (1e-18) to tera (1e12). Values of
// 0, below 1e-18 in magnitude, or of 1e15 and above keep divisor 1 and a
// blank. 'P' is in the table but never chosen: the search stops below 1e15,
// and the texts of saved plots and exports have always shown it that way.
EngineeringScale GetEngineeringScale(double v);

// 10 raised to floor(log10 |v|): 12500 -> 1e4, -0.05 -> 1e-2. For 0 and for
// values that are not finite there is no such power; the result is 1, so
// "v / power" stays v and "log10 power" is 0 (0 reads "0.000e0").
double GetPowerOfTen(double v);

}  // namespace vexplot
