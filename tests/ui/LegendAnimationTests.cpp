#include <gtest/gtest.h>

#include "ui/LegendAnimation.h"

namespace vexplot {
namespace {

using namespace anim;

struct ModeCase {
    int32_t mode;
    uint32_t show;
    uint32_t hide;
};

// Modes 0..6: what each show and hide hand to the platform's animation.
TEST(LegendAnimationTest, FixedModesGiveTheirShowAndTheReverseHide) {
    const ModeCase cases[] = {
        {0, kCenter | kActivate, kCenter | kHide},
        {1, kSlide | kHorNegative | kActivate, kSlide | kHorPositive | kHide},
        {2, kSlide | kHorPositive | kActivate, kSlide | kHorNegative | kHide},
        {3, kSlide | kVerNegative | kActivate, kSlide | kVerPositive | kHide},
        {4, kSlide | kVerPositive | kActivate, kSlide | kVerNegative | kHide},
        {5, kSlide | kHorPositive | kVerPositive | kActivate, kSlide | kHorNegative | kVerNegative | kHide},
        {6, kSlide | kHorNegative | kVerNegative | kActivate, kSlide | kHorPositive | kVerPositive | kHide},
    };
    // A random source that must not be asked for the fixed modes.
    LegendAnimation animation([]() -> uint32_t {
        ADD_FAILURE() << "a fixed mode drew a random number";
        return 0;
    });
    for (const ModeCase& c : cases) {
        SCOPED_TRACE(c.mode);
        EXPECT_EQ(animation.Flags(c.mode, true), c.show);
        EXPECT_EQ(animation.Flags(c.mode, false), c.hide);
    }
}

struct RandomCase {
    uint32_t r;
    uint32_t flags;  // without kActivate / kHide
};

TEST(LegendAnimationTest, RandomizeFollowsTheBitsOfTheNumberModulo32) {
    const RandomCase cases[] = {
        {0, kCenter},
        {32, kCenter},  // only the value modulo 32 counts
        {1, kHorNegative},
        {2, kHorPositive},
        {3, kHorNegative | kHorPositive},  // both horizontal directions are kept
        {4, kVerNegative},
        {8, kVerPositive},
        {12, kVerNegative | kVerPositive},
        {16, kSlide},
        {17, kSlide | kHorNegative},
        {31, kSlide | kHorNegative | kHorPositive | kVerNegative | kVerPositive},
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
        {"start of a show", kSlide | kHorPositive | kActivate, 0.0, {0, 0, 0, 40}, {-100, 0}},
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
        EXPECT_EQ(f.clip.left, c.clip.left);
        EXPECT_EQ(f.clip.top, c.clip.top);
        EXPECT_EQ(f.clip.right, c.clip.right);
        EXPECT_EQ(f.clip.bottom, c.clip.bottom);
        EXPECT_EQ(f.offset, c.offset);
    }
}

// Every hide retraces its show: at any moment the hide of a mode shows what
// the show of that mode showed at the mirrored moment.
TEST(LegendAnimationTest, EveryFixedHideRetracesItsShow) {
    for (int32_t mode = 0; mode < LegendAnimation::kRandomize; ++mode) {
        const uint32_t show = LegendAnimation::FixedFlags(mode, true);
        const uint32_t hide = LegendAnimation::FixedFlags(mode, false);
        for (double t : {0.0, 0.3, 0.5, 0.8, 1.0}) {
            SCOPED_TRACE(testing::Message() << "mode " << mode << " t " << t);
            const auto in = LegendAnimation::FrameAt(show, 120, 90, 1.0 - t);
            const auto out = LegendAnimation::FrameAt(hide, 120, 90, t);
            EXPECT_EQ(in.clip.left, out.clip.left);
            EXPECT_EQ(in.clip.top, out.clip.top);
            EXPECT_EQ(in.clip.right, out.clip.right);
            EXPECT_EQ(in.clip.bottom, out.clip.bottom);
            EXPECT_EQ(in.offset, out.offset);
        }
    }
}

}  // namespace
}  // namespace vexplot
