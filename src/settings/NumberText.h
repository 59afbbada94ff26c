#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexplot {

// Numbers as text in settings, files and command lines, the same in every
// locale: the decimal point is always '.', whatever LC_NUMERIC a host (a Qt
// program sets it from the environment) has chosen.

// `value` as printf's "%f" writes it in the C locale ("0.300000").
std::string FormatFixed(double value, int decimals = 6);

// The whole of `text` as a double: optional sign, digits with an optional
// fraction and exponent, "inf" or "nan". A ',' is taken as the decimal
// point when the text has no '.', so "0,750000" written by a process under
// a comma locale reads as 0.75. Surrounding blanks are ignored; anything
// else left over, or no number at all, is nullopt.
std::optional<double> ParseDouble(std::string_view text);

// The whole of `text` as a decimal integer in [min, max]; nullopt when it
// is not one or lies outside (never wrapped round).
std::optional<int64_t> ParseInteger(std::string_view text, int64_t min, int64_t max);

}  // namespace vexplot
