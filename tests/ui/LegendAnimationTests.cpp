#include <gtest/gtest.h>

#include <algorithm>

#include "support/Boxes.h"
#include "ui/LegendAnimation.h"

namespace vexplot {
namespace {

using namespace anim;
using test::B;

// Modes 0..6 are fixed (where each slides from is checked with the frames
// below): they never draw a random number; mode 7 and anything out of
// range does.
TEST(LegendAnimationTest, OnlyTheRandomizedModesDraw) {
    int draws = 0;
    LegendAnimation animation([&draws]() -> uint32_t { return ++draws == 1 ? 16u + 8u : 1u; });
    for (int32_t mode = 0; mode < LegendAnimation::kRandomize; ++mode)
        EXPECT_EQ(animation.Flags(mode, true), LegendAnimation::FixedFlags(mode, true)) << mode;
    EXPECT_EQ(draws, 0);
    EXPECT_EQ(animation.Flags(7, true), kSlide | kVerPositive | kActivate);
    EXPECT_EQ(animation.Flags(-1, false), kHorNegative | kHide);
    EXPECT_EQ(LegendAnimation::FixedFlags(1, true), kSlide | kHorNegative | kActivate);
}

struct RandomCase {
    uint32_t r;
    uint32_t flags;  // without kActivate / kHide
};

TEST(LegendAnimationTest, RandomizeFollowsTheBitsOfTheNumberModulo32) {
    const RandomCase cases[] = {
        {32, kCenter},  // only the value modulo 32 counts
        {3, kHorNegative | kHorPositive},  // both horizontal directions are kept
        {12, kVerNegative | kVerPositive},
        {17, kSlide | kHorNegative},
        {32 + 10, kHorPositive | kVerPositive},
    };
    for (const RandomCase& c : cases) {
        SCOPED_TRACE(c.r);
        EXPECT_EQ(LegendAnimation::RandomFlags(c.r, true), c.flags | kActivate);
        EXPECT_EQ(LegendAnimation::RandomFlags(c.r, false), c.flags | kHide);
    }
}

struct FrameCase {
    const char* what;
    uint32_t flags;
    double t;
    PixelRect clip;
    PixelPoint offset;
};

// A 100 x 40 window; the clip is in its client pixels.
TEST(LegendAnimationTest, FramesGrowFromWhereTheMovementComesFrom) {
    const FrameCase cases[] = {
        {"slide in left to right", kSlide | kHorPositive | kActivate, 0.25, {0, 0, 25, 40}, {-75, 0}},
        {"slide in right to left", kSlide | kHorNegative | kActivate, 0.25, {75, 0, 100, 40}, {75, 0}},
        {"roll right to left", kHorNegative | kActivate, 0.25, {75, 0, 100, 40}, {0, 0}},
        {"slide in top to bottom", kSlide | kVerPositive | kActivate, 0.5, {0, 0, 100, 20}, {0, -20}},
        {"diagonal to the bottom right", kSlide | kHorPositive | kVerPositive | kActivate, 0.5,
         {0, 0, 50, 20}, {-50, -20}},
        {"centre", kCenter | kActivate, 0.5, {25, 10, 75, 30}, {0, 0}},
        {"both horizontal directions", kSlide | kHorPositive | kHorNegative | kActivate, 0.5,
         {25, 0, 75, 40}, {0, 0}},
        {"no direction at all", kSlide | kActivate, 0.1, {0, 0, 100, 40}, {0, 0}},
        // Mode 1's hide moves left to right: the window leaves by its right edge.
        {"slide out left to right", kSlide | kHorPositive | kHide, 0.25, {25, 0, 100, 40}, {25, 0}},
        {"end of a hide", kSlide | kVerNegative | kHide, 1.0, {0, 0, 100, 0}, {0, -40}},
        {"t beyond the end", kCenter | kActivate, 3.0, {0, 0, 100, 40}, {0, 0}},
    };
    for (const FrameCase& c : cases) {
        SCOPED_TRACE(c.what);
        const LegendAnimation::Frame f = LegendAnimation::FrameAt(c.flags, 100, 40, c.t);
        EXPECT_EQ(B(f.clip), B(c.clip));
        EXPECT_EQ(f.offset, c.offset);
    }
}

// A window that ends at (40, 30) .. (160, 120) of its parent, its picture
// 3 pixels right of and 22 below its origin (border and title bar). Every
// slide starts with the picture just beyond the edge it enters at, shows at
// each moment only the part inside the final rectangle, and ends with the
// picture exactly there. Every hide, the centre animation's included,
// retraces its show backwards.
TEST(LegendAnimationTest, SlidesCarryThePictureFromItsEdgeToItsPlace) {
    const PixelRect final{40, 30, 160, 120};
    const PixelPoint frame{3, 22};
    struct Entry {
        int32_t mode;
        int32_t dx, dy;  // where the picture starts, in window widths and heights
    };
    const Entry entries[] = {{0, 0, 0}, {1, 1, 0}, {2, -1, 0}, {3, 0, 1}, {4, 0, -1}, {5, -1, -1}, {6, 1, 1}};
    for (const Entry& e : entries) {
        const uint32_t show = LegendAnimation::FixedFlags(e.mode, true);
        for (double t : {0.0, 0.25, 0.5, 0.9, 1.0}) {
            SCOPED_TRACE(testing::Message() << "mode " << e.mode << " t " << t);
            const auto p = LegendAnimation::PlacementAt(show, final, frame, t);
            const int32_t left = p.origin.x + frame.x, top = p.origin.y + frame.y;
            // The picture travels in a straight line from its edge to its place.
            const double rest = 1.0 - t;
            EXPECT_NEAR(left, final.left + e.dx * 120 * rest, 1.0);
            EXPECT_NEAR(top, final.top + e.dy * 90 * rest, 1.0);
            // What shows is the moved picture cut to the final rectangle.
            const PixelRect moved{left, top, left + 120, top + 90};
            const PixelRect inside{std::max(final.left, moved.left), std::max(final.top, moved.top),
                                   std::min(final.right, moved.right), std::min(final.bottom, moved.bottom)};
            const PixelRect shown{left + p.mask.left, top + p.mask.top, left + p.mask.right, top + p.mask.bottom};
            if (t > 0.0 && e.mode != 0) {
                EXPECT_EQ(B(shown), B(inside));
            }
            // The hide retraces the same path backwards.
            const auto back = LegendAnimation::PlacementAt(LegendAnimation::FixedFlags(e.mode, false), final, frame, rest);
            EXPECT_EQ(back.origin, p.origin);
            EXPECT_EQ(B(back.mask), B(p.mask));
        }
    }
}

}  // namespace
}  // namespace vexplot
