#pragma once
#include <cmath>

#include "engine/IGraphEngine.h"
#include "opengl/gl/Matrix4.h"

namespace vexplot {

// The data box in the scene: the shown x and y range and the z range map to
// a box centred at the origin whose half extents are the axis scales (x, y)
// and kZHalf times the z axis scale, so that a surface reads as a landscape
// rather than a cube. With a logarithmic Z the mapping takes log10 first.
struct SceneBox {
    static constexpr double kZHalf = 0.7;

    DataRect shown{0, 1, 0, 1};
    double zMin = 0, zMax = 1;  // in the (possibly log) value domain
    bool logZ = false;
    Vec3 scale{1, 1, 1};        // axis scales

    Vec3 Half() const { return {scale.x, scale.y, kZHalf * scale.z}; }
    double Radius() const { return Half().Length(); }

    // The value as the scene stores it: log10 with a logarithmic Z, NaN for
    // non-positive values there.
    double ZValue(double z) const {
        if (!logZ) return z;
        return z > 0 ? std::log10(z) : std::nan("");
    }
    static double Map(double v, double lo, double hi, double half) {
        const double extent = hi - lo;
        return extent != 0 ? ((v - lo) / extent * 2.0 - 1.0) * half : 0.0;
    }
    static double Unmap(double s, double lo, double hi, double half) {
        return lo + (s / half + 1.0) * 0.5 * (hi - lo);
    }
    Vec3 ToScene(double x, double y, double z) const {
        const Vec3 h = Half();
        return {Map(x, shown.xMin, shown.xMax, h.x), Map(y, shown.yMin, shown.yMax, h.y),
                Map(ZValue(z), zMin, zMax, h.z)};
    }
    Point3 ToData(const Vec3& s) const {
        const Vec3 h = Half();
        double z = Unmap(s.z, zMin, zMax, h.z);
        if (logZ) z = std::pow(10.0, z);
        return {Unmap(s.x, shown.xMin, shown.xMax, h.x), Unmap(s.y, shown.yMin, shown.yMax, h.y), z};
    }
};

}  // namespace vexplot
