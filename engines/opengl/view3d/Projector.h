#pragma once
#include <cmath>

#include "opengl/gl/Matrix4.h"

namespace vexplot {

// Scene points to pixels of a viewport (x right, y down, top-left origin).
struct Projector {
    Matrix4 viewProjection;
    int32_t width = 1;
    int32_t height = 1;

    // False when the point lies behind the eye (x and y are then unset).
    bool Project(const Vec3& p, double& x, double& y) const {
        const Vec4 clip = viewProjection * Vec4{p.x, p.y, p.z, 1.0};
        if (!(clip.w > 1e-9)) return false;
        x = (clip.x / clip.w + 1.0) * 0.5 * width;
        y = (1.0 - clip.y / clip.w) * 0.5 * height;
        return true;
    }
};

}  // namespace vexplot
