#include <gtest/gtest.h>

#include "opengl/view3d/Camera.h"
#include "opengl/view3d/Projector.h"

using namespace vexplot;

namespace {

TEST(CameraTest, PositionAndAnglesDescribeTheSameEye) {
    struct Case {
        double azimuth, elevation, distance;
    };
    const Case cases[] = {{-60, 30, 6}, {0, 0, 2}, {90, 45, 3}, {179, -20, 10}, {-150, 80, 1}};
    for (const Case& c : cases) {
        Camera camera;
        camera.SetCenter({0.5, -0.25, 0.1});
        camera.SetAzimuth(c.azimuth);
        camera.SetElevation(c.elevation);
        ASSERT_TRUE(camera.SetDistance(c.distance));
        const Vec3 eye = camera.Position();
        EXPECT_NEAR((eye - camera.Center()).Length(), c.distance, 1e-9);

        Camera other;
        other.SetCenter({0.5, -0.25, 0.1});
        ASSERT_TRUE(other.SetPosition(eye));
        EXPECT_NEAR(other.Azimuth(), c.azimuth, 1e-9) << c.azimuth;
        EXPECT_NEAR(other.Elevation(), c.elevation, 1e-9);
        EXPECT_NEAR(other.Distance(), c.distance, 1e-9);
    }
    Camera camera;
    EXPECT_FALSE(camera.SetPosition(camera.Center()));  // no direction to look in
    EXPECT_FALSE(camera.SetDistance(-1));
    EXPECT_FALSE(camera.SetSceneScale(0));
}

TEST(CameraTest, DefaultViewSeesTheBoxFromTheFrontLeftAndAbove) {
    Camera camera;
    camera.Reset(1.5);
    const Vec3 eye = camera.Position();
    EXPECT_LT(eye.x, 0);
    EXPECT_LT(eye.y, 0);
    EXPECT_GT(eye.z, 0);
    // Every corner of a box inside the sphere lands in the viewport, the
    // centre in its middle, and up on the screen is up in the scene.
    const Projector projector{camera.Projection(4.0 / 3.0) * camera.View(), 400, 300};
    double x = 0, y = 0;
    ASSERT_TRUE(projector.Project(camera.Center(), x, y));
    EXPECT_NEAR(x, 200, 1e-6);
    EXPECT_NEAR(y, 150, 1e-6);
    for (int corner = 0; corner < 8; ++corner) {
        const Vec3 p{corner & 1 ? 0.8 : -0.8, corner & 2 ? 0.8 : -0.8, corner & 4 ? 0.8 : -0.8};
        ASSERT_TRUE(projector.Project(p, x, y));
        EXPECT_TRUE(x > 0 && x < 400 && y > 0 && y < 300) << corner;
    }
    double topY = 0;
    projector.Project({0, 0, 0.5}, x, topY);
    EXPECT_LT(topY, 150);
}

}  // namespace
