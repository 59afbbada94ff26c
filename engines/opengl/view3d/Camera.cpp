#include "opengl/view3d/Camera.h"

#include <algorithm>
#include <numbers>

namespace vexplot {

namespace {

constexpr double kRadians = std::numbers::pi / 180.0;

// Unit vector from the centre towards the eye.
Vec3 EyeDirection(double azimuth, double elevation) {
    const double a = (azimuth - 90.0) * kRadians;
    const double e = elevation * kRadians;
    return {std::cos(e) * std::cos(a), std::cos(e) * std::sin(a), std::sin(e)};
}

}  // namespace

void Camera::Reset(double radius) {
    center_ = {};
    azimuth_ = kDefaultAzimuth;
    elevation_ = kDefaultElevation;
    sceneScale_ = 1;
    // The bounding sphere fits the view angle with room for the axis texts.
    distance_ = 1.2 * radius / std::sin(kHalfFieldOfView * kRadians);
}

Vec3 Camera::Position() const { return center_ + EyeDirection(azimuth_, elevation_) * distance_; }

bool Camera::SetPosition(const Vec3& position) {
    const Vec3 offset = position - center_;
    const double distance = offset.Length();
    if (!(distance > 0) || !std::isfinite(distance)) return false;
    distance_ = distance;
    elevation_ = std::asin(std::clamp(offset.z / distance, -1.0, 1.0)) / kRadians;
    if (std::hypot(offset.x, offset.y) > 1e-12 * distance)
        azimuth_ = std::remainder(std::atan2(offset.y, offset.x) / kRadians + 90.0, 360.0);
    return true;
}

void Camera::SetElevation(double degrees) { elevation_ = std::clamp(degrees, -90.0, 90.0); }

bool Camera::SetDistance(double distance) {
    if (!(distance > 0) || !std::isfinite(distance)) return false;
    distance_ = distance;
    return true;
}

bool Camera::SetSceneScale(double scale) {
    if (!(scale > 0) || !std::isfinite(scale)) return false;
    sceneScale_ = scale;
    return true;
}

Vec3 Camera::Up() const {
    // Perpendicular to the eye direction, towards +z; well defined at the poles.
    const double a = (azimuth_ - 90.0) * kRadians;
    const double e = elevation_ * kRadians;
    return {-std::sin(e) * std::cos(a), -std::sin(e) * std::sin(a), std::cos(e)};
}

Matrix4 Camera::View() const { return Matrix4::LookAt(Position(), center_, Up()); }

Matrix4 Camera::Projection(double aspect) const {
    const double tanHalf = std::tan(kHalfFieldOfView * kRadians) / sceneScale_;
    double tanX = tanHalf * aspect, tanY = tanHalf;
    if (aspect < 1) {
        tanX = tanHalf;
        tanY = tanHalf / aspect;
    }
    // Near and far planes around the centre: a box of radius up to ~distance
    // around it stays inside.
    const double zNear = std::max(distance_ * 0.05, 1e-3);
    const double zFar = distance_ * 3.0 + 10.0;
    return Matrix4::Perspective(tanX, tanY, zNear, zFar);
}

}  // namespace vexplot
