#include "ui/LegendAnimation.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

namespace vexplot {

namespace {

constexpr uint32_t kHorizontal = anim::kHorPositive | anim::kHorNegative;
constexpr uint32_t kVertical = anim::kVerPositive | anim::kVerNegative;

uint32_t WithTransition(uint32_t flags, bool show) { return flags | (show ? anim::kActivate : anim::kHide); }

// The visible span of one axis of `full` pixels when `fraction` of it shows,
// and how far the picture is moved along that axis.
struct Span {
    int32_t start;
    int32_t length;
    int32_t offset;
};

Span AxisSpan(int32_t full, bool positive, bool negative, bool slide, double fraction) {
    const auto length = static_cast<int32_t>(std::lround(full * fraction));
    if (positive && negative) return {(full - length) / 2, length, 0};
    // Moving towards larger coordinates: the part grows from the low edge
    // and, sliding, shows the far end of the picture first.
    if (positive) return {0, length, slide ? length - full : 0};
    if (negative) return {full - length, length, slide ? full - length : 0};
    return {0, full, 0};
}

// A hide moving one way shows what a show moving the other way shows at the
// same fraction; swapping both pairs of direction bits gives that show.
uint32_t Reversed(uint32_t flags) {
    uint32_t directions = 0;
    if (flags & anim::kHorPositive) directions |= anim::kHorNegative;
    if (flags & anim::kHorNegative) directions |= anim::kHorPositive;
    if (flags & anim::kVerPositive) directions |= anim::kVerNegative;
    if (flags & anim::kVerNegative) directions |= anim::kVerPositive;
    return (flags & ~(kHorizontal | kVertical)) | directions;
}

}  // namespace

LegendAnimation::LegendAnimation(RandomSource random) { SetRandomSource(std::move(random)); }

void LegendAnimation::SetRandomSource(RandomSource random) {
    if (random) {
        random_ = std::move(random);
        return;
    }
    auto engine = std::make_shared<std::minstd_rand>(std::random_device{}());
    random_ = [engine] { return static_cast<uint32_t>((*engine)()); };
}

uint32_t LegendAnimation::Draw() { return random_(); }

uint32_t LegendAnimation::Flags(int32_t mode, bool show) {
    return IsRandom(mode) ? RandomFlags(Draw(), show) : FixedFlags(mode, show);
}

uint32_t LegendAnimation::FixedFlags(int32_t mode, bool show) {
    // The show's direction per mode; the hide goes the opposite way.
    struct Directions {
        uint32_t show;
        uint32_t hide;
    };
    static constexpr Directions kSlides[] = {
        {anim::kHorNegative, anim::kHorPositive},                                            // 1
        {anim::kHorPositive, anim::kHorNegative},                                            // 2
        {anim::kVerNegative, anim::kVerPositive},                                            // 3
        {anim::kVerPositive, anim::kVerNegative},                                            // 4
        {anim::kHorPositive | anim::kVerPositive, anim::kHorNegative | anim::kVerNegative},  // 5
        {anim::kHorNegative | anim::kVerNegative, anim::kHorPositive | anim::kVerPositive},  // 6
    };
    if (mode <= 0 || mode >= kRandomize) return WithTransition(anim::kCenter, show);
    const Directions& d = kSlides[mode - 1];
    return WithTransition(anim::kSlide | (show ? d.show : d.hide), show);
}

uint32_t LegendAnimation::RandomFlags(uint32_t r, bool show) {
    r %= 32;
    if (r == 0) return WithTransition(anim::kCenter, show);
    uint32_t flags = 0;
    if (r & 1) flags |= anim::kHorNegative;
    if (r & 2) flags |= anim::kHorPositive;
    if (r & 4) flags |= anim::kVerNegative;
    if (r & 8) flags |= anim::kVerPositive;
    if (r & 16) flags |= anim::kSlide;
    return WithTransition(flags, show);
}

LegendAnimation::Frame LegendAnimation::FrameAt(uint32_t flags, int32_t width, int32_t height, double t) {
    width = std::max(width, 0);
    height = std::max(height, 0);
    const bool hide = (flags & anim::kHide) != 0;
    const double fraction = hide ? 1.0 - std::clamp(t, 0.0, 1.0) : std::clamp(t, 0.0, 1.0);
    if (flags & anim::kCenter) flags |= kHorizontal | kVertical;
    else if (hide) flags = Reversed(flags);
    const bool slide = (flags & anim::kSlide) != 0 && (flags & anim::kCenter) == 0;
    const Span x = AxisSpan(width, flags & anim::kHorPositive, flags & anim::kHorNegative, slide, fraction);
    const Span y = AxisSpan(height, flags & anim::kVerPositive, flags & anim::kVerNegative, slide, fraction);
    return Frame{PixelRect{x.start, y.start, x.start + x.length, y.start + y.length}, PixelPoint{x.offset, y.offset}};
}

LegendAnimation::Placement LegendAnimation::PlacementAt(uint32_t flags, const PixelRect& picture, PixelPoint frame,
                                                        double t) {
    const Frame f = FrameAt(flags, picture.right - picture.left, picture.bottom - picture.top, t);
    // The picture travels by the offset; the mask follows it back, so that
    // what shows stays inside the window's final rectangle.
    Placement p;
    p.origin = PixelPoint{picture.left - frame.x + f.offset.x, picture.top - frame.y + f.offset.y};
    p.mask = PixelRect{f.clip.left - f.offset.x, f.clip.top - f.offset.y, f.clip.right - f.offset.x,
                       f.clip.bottom - f.offset.y};
    return p;
}

}  // namespace vexplot
