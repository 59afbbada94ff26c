#pragma once
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vexplot {

// The order in which an annotation's texts name the three coordinates: X Y Z
// normally; X Z Y while the one-dimensional view cuts an X-Z plane, Y Z X
// while it cuts a Y-Z plane. In the one-dimensional orders the first two
// numbers are the object's stored first two coordinates (position along the
// curve and value) and the third is where the section cuts.
enum class CoordinateOrder { XYZ, XZY, YZX };

class CoordinateText {
public:
    // The order of a graph object's one-dimensional mode (0 none, 1 the Y-Z
    // plane, 2 the X-Z plane; anything else is treated as none).
    static CoordinateOrder OrderOfMode(int32_t mode);
    // "%f" (six decimals, fixed) in the C locale whatever the process's
    // locale: texts and files must read the same on every machine.
    static std::string Fixed(double value);
    // "X(a) Y(b) Z(c)" in `order`'s letters ("X(a) Z(b) Y(c)", "Y(a) Z(b)
    // X(c)"). With `dashForNoZ`, the coordinate named Z prints "Z(-)" when it
    // equals NoZValue.
    // The parts one after another (reserves once; texts are built often).
    static std::string Join(std::initializer_list<std::string_view> parts);
    static std::string Triple(CoordinateOrder order, double a, double b, double c, bool dashForNoZ);
};

}  // namespace vexplot
