#include "annotations/CoordinateText.h"

#include <array>
#include <charconv>

#include "annotations/CGD_Annotation.h"

namespace vexplot {

CoordinateOrder CoordinateText::OrderOfMode(int32_t mode) {
    if (mode == 2) return CoordinateOrder::XZY;
    if (mode == 1) return CoordinateOrder::YZX;
    return CoordinateOrder::XYZ;
}

std::string CoordinateText::Fixed(double value) {
    // The largest double needs 309 digits before the point.
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 6);
    return std::string(buffer.data(), result.ptr);
}

std::string CoordinateText::Join(std::initializer_list<std::string_view> parts) {
    size_t size = 0;
    for (std::string_view part : parts) size += part.size();
    std::string text;
    text.reserve(size);
    for (std::string_view part : parts) text.append(part);
    return text;
}

std::string CoordinateText::Triple(CoordinateOrder order, double a, double b, double c, bool dashForNoZ) {
    const char* names = order == CoordinateOrder::XZY ? "XZY" : order == CoordinateOrder::YZX ? "YZX" : "XYZ";
    const std::array<double, 3> values{a, b, c};
    std::string text;
    for (size_t i = 0; i < 3; ++i) {
        if (i > 0) text += ' ';
        text += names[i];
        const bool dash = dashForNoZ && names[i] == 'Z' && values[i] == NoZValue;
        text += dash ? std::string("(-)") : Join({"(", Fixed(values[i]), ")"});
    }
    return text;
}

}  // namespace vexplot
