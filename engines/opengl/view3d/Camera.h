#pragma once
#include "opengl/gl/Matrix4.h"

namespace vexplot {

// The 3-D view's camera in scene units: the point looked at (centre), the
// direction from it to the eye as azimuth and elevation in degrees, the
// distance, and a zoom about the centre (scene scale, 1 = the data box
// fills the view). The eye position is derived from these and setting it
// recomputes them, so the records always agree.
//
// Azimuth 0 looks along +y (the eye on the -y side), growing azimuth turns
// the eye counter-clockwise seen from above; elevation 90 looks straight down.
class Camera {
public:
    static constexpr double kDefaultAzimuth = -60.0;
    static constexpr double kDefaultElevation = 30.0;
    // Half the vertical view angle at scene scale 1, degrees.
    static constexpr double kHalfFieldOfView = 15.0;

    Camera() { Reset(1.6); }

    // The default view of a data box whose bounding sphere has `radius`.
    void Reset(double radius);

    Vec3 Center() const { return center_; }
    void SetCenter(const Vec3& center) { center_ = center; }
    Vec3 Position() const;
    // Keeps the centre; false (nothing changed) when `position` is the centre.
    bool SetPosition(const Vec3& position);
    double Azimuth() const { return azimuth_; }
    void SetAzimuth(double degrees) { azimuth_ = degrees; }
    double Elevation() const { return elevation_; }
    void SetElevation(double degrees);
    double Distance() const { return distance_; }
    bool SetDistance(double distance);
    double SceneScale() const { return sceneScale_; }
    bool SetSceneScale(double scale);

    Matrix4 View() const;
    // Projection for a viewport of `aspect` = width / height; the view angle
    // fits the box in the narrower direction.
    Matrix4 Projection(double aspect) const;

private:
    Vec3 Up() const;

    Vec3 center_;
    double azimuth_ = kDefaultAzimuth;
    double elevation_ = kDefaultElevation;
    double distance_ = 6;
    double sceneScale_ = 1;
};

}  // namespace vexplot
