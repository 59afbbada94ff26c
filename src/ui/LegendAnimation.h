#pragma once
#include <cstdint>
#include <functional>

#include "site/WindowInput.h"
#include "engine/IGraphEngine.h"

namespace vexplot {

// How the legend window comes and goes: the window-animation flags (anim::)
// of each of the eight animation modes, the random choice of mode 7, and the
// picture of an animation at any moment for a platform that has to draw the
// animation itself.
//
// Modes, as the general property page lists them:
//   0 "Colapse/Explode"          show expands from the centre, hide collapses to it
//   1 "Right to Left"            show slides in right to left, hide slides out left to right
//   2 "Left to Right"            show slides in left to right, hide slides out right to left
//   3 "Bottom to Top"            show slides in bottom to top, hide slides out top to bottom
//   4 "Top to Bottom"            show slides in top to bottom, hide slides out bottom to top
//   5 "LeftTop to RightBottom"   show slides in towards the bottom right, hide towards the top left
//   6 "RightBottom to LeftTop"   show slides in towards the top left, hide towards the bottom right
//   7 "Randomize"                flags drawn from a random number, afresh for every show and hide
// Every hide retraces its show in reverse. Any mode outside 0..6 draws at
// random, as mode 7 does.
class LegendAnimation {
public:
    static constexpr int32_t kModeCount = 8;
    static constexpr int32_t kRandomize = 7;
    static constexpr uint32_t kDurationMs = 200;

    // A pseudo-random number; only its value modulo 32 matters.
    using RandomSource = std::function<uint32_t()>;

    // What an animation shows at one moment, in the window's client pixels:
    // only `clip` is visible, and the window's picture is drawn moved by
    // `offset` (non-zero only while a slide carries the picture in or out).
    struct Frame {
        PixelRect clip;
        PixelPoint offset;
    };

    // A null `random` draws from a generator of the object's own, seeded
    // from the system's entropy.
    explicit LegendAnimation(RandomSource random = {});

    // The flags of a show (with anim::kActivate) or of a hide (with
    // anim::kHide) in `mode`. Randomized modes draw a new number per call.
    uint32_t Flags(int32_t mode, bool show);
    void SetRandomSource(RandomSource random);

    // The flags of the fixed modes 0..6; kActivate or kHide added.
    static uint32_t FixedFlags(int32_t mode, bool show);
    // The randomized flags for the number `r` (taken modulo 32): 0 is the
    // centre animation; otherwise bit 0 adds right to left, bit 1 left to
    // right (both together when both are set), bit 2 bottom to top, bit 3
    // top to bottom and bit 4 the slide (without it the window rolls open).
    // Combinations are kept as they fall; kActivate or kHide added.
    static uint32_t RandomFlags(uint32_t r, bool show);
    // Whether `mode` draws its flags at random.
    static bool IsRandom(int32_t mode) { return mode < 0 || mode >= kRandomize; }

    // The picture of the animation `flags` at `t` (0 = start, 1 = end, clamped)
    // for a window of `width` x `height` pixels:
    //  - kCenter: a rectangle centred in the window grows (show) or shrinks (hide);
    //  - one horizontal direction: the visible part grows from the side the
    //    movement comes from (show) or shrinks towards the side it goes to
    //    (hide); with kSlide the picture travels with the moving edge, without
    //    it the picture stays put and is uncovered (a roll); vertical likewise,
    //    and both axes combine into a diagonal;
    //  - both directions of an axis at once: that axis opens from (closes to)
    //    its middle line, without travel; no direction of an axis: that axis
    //    is whole throughout.
    // A hide in one direction is thus the show of the opposite direction run
    // backwards, which is how every hide retraces its show.
    static Frame FrameAt(uint32_t flags, int32_t width, int32_t height, double t);

    // A frame as a platform draws it by moving the window: `origin` is where
    // the window's own origin goes (parent pixels), `mask` the visible part
    // in the moved window's client pixels.
    struct Placement {
        PixelPoint origin;
        PixelRect mask;
    };
    // The frame of `flags` at `t` for a window whose client area ends up at
    // `picture` (parent pixels) and lies `frame` pixels from the window's
    // origin (its border and title bar; 0 for a bare child window). A slide
    // carries the picture from the edge it enters at to exactly `picture`,
    // and at every moment shows only the part that lies inside `picture`.
    static Placement PlacementAt(uint32_t flags, const PixelRect& picture, PixelPoint frame, double t);

private:
    uint32_t Draw();

    RandomSource random_;
};

}  // namespace vexplot
