#include "settings/NumberText.h"

#include <charconv>
#include <string>

namespace vexplot {

namespace {

std::string_view Trim(std::string_view text) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    return text;
}

}  // namespace

std::string FormatFixed(double value, int decimals) {
    char text[400];  // a finite double has at most 309 digits before the point
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc()) return "0";
    return std::string(text, result.ptr);
}

std::optional<double> ParseDouble(std::string_view text) {
    text = Trim(text);
    std::string copy(text);
    if (copy.find('.') == std::string::npos)
        if (const size_t comma = copy.find(','); comma != std::string::npos && copy.find(',', comma + 1) == std::string::npos)
            copy[comma] = '.';
    // from_chars takes no '+' sign (and a second sign is no number).
    std::string_view digits = copy;
    if (!digits.empty() && digits.front() == '+') {
        digits.remove_prefix(1);
        if (!digits.empty() && digits.front() == '-') return std::nullopt;
    }
    double value = 0.0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.empty() || result.ec != std::errc() || result.ptr != digits.data() + digits.size())
        return std::nullopt;
    return value;
}

std::optional<int64_t> ParseInteger(std::string_view text, int64_t min, int64_t max) {
    text = Trim(text);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    int64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
    if (value < min || value > max) return std::nullopt;
    return value;
}

}  // namespace vexplot
