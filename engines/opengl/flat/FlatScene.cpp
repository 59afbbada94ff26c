#include "opengl/flat/FlatScene.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace vexplot {

namespace {

constexpr float kMajorTick = 6.0f;
constexpr float kMinorTick = 3.0f;
constexpr int32_t kTextGap = 3;   // between a tick mark and its text
constexpr int32_t kLabelGap = 5;  // between the tick texts and the label
constexpr float kLineWidth = 1.0f;

// Tolerance for ticks that lie on the range's ends up to rounding.
double Slack(double lo, double hi) { return std::fabs(hi - lo) * 1e-9; }

}  // namespace

double AxisSpan::ToPixel(double v) const {
    const double range = hi - lo;
    if (range == 0.0) return (pixelLo + pixelHi) / 2;
    return pixelLo + (v - lo) / range * (pixelHi - pixelLo);
}

bool AxisSpan::Contains(double v) const {
    const double a = std::min(lo, hi), b = std::max(lo, hi);
    return v >= a - Slack(a, b) && v <= b + Slack(a, b);
}

float FlatScene::Snap(double pixel, int32_t from, int32_t to) const {
    // The logical pixel holding the position, then its physical left edge:
    // at an integer ratio the line covers exactly the pixels that the
    // logical one-pixel line would, scaled.
    const double ratio = scale_.Ratio();
    const double left = std::round(std::floor(pixel / ratio) * ratio);
    const int32_t width = int32_t(LineWidth());
    const double p = std::clamp(left, double(from), double(std::max(from, to - width)));
    return float(p + width / 2.0);
}

float FlatScene::LineWidth() const { return std::max(1.0f, std::round(scale_(kLineWidth))); }

std::vector<double> FlatScene::MinorTicks(const std::vector<double>& majors, int32_t minorCount, double lo,
                                          double hi) {
    std::vector<double> result;
    if (majors.size() < 2 || minorCount <= 0) return result;
    std::vector<double> sorted = majors;
    std::sort(sorted.begin(), sorted.end());
    const double a = std::min(lo, hi), b = std::max(lo, hi), slack = Slack(a, b);
    auto addStep = [&](double from, double to) {
        for (int32_t k = 1; k <= minorCount; ++k) {
            const double v = from + (to - from) * k / (minorCount + 1);
            if (v >= a - slack && v <= b + slack) result.push_back(v);
        }
    };
    addStep(2 * sorted.front() - sorted[1], sorted.front());
    for (size_t i = 0; i + 1 < sorted.size(); ++i) addStep(sorted[i], sorted[i + 1]);
    addStep(sorted.back(), 2 * sorted.back() - sorted[sorted.size() - 2]);
    return result;
}

void FlatScene::AutoTicks(double lo, double hi, int32_t count, std::vector<double>& values,
                          std::vector<std::string>& texts) {
    values.clear();
    texts.clear();
    const double a = std::min(lo, hi), b = std::max(lo, hi);
    if (!std::isfinite(a) || !std::isfinite(b) || count < 1) return;
    if (b == a) {
        values.push_back(a);
    } else {
        const double raw = (b - a) / count;
        const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
        const double fraction = raw / magnitude;
        const double step = (fraction < 1.5 ? 1.0 : fraction < 3.0 ? 2.0 : fraction < 7.0 ? 5.0 : 10.0) * magnitude;
        for (double v = std::ceil(a / step - 1e-9) * step; v <= b + step * 1e-9; v += step)
            values.push_back(std::fabs(v) < step * 1e-9 ? 0.0 : v);
    }
    for (double v : values) {
        char buffer[32];
        std::snprintf(buffer, sizeof(buffer), "%g", v);
        texts.emplace_back(buffer);
    }
}

void FlatScene::AddGrid(const FlatAxis& axis, Side side, const PixelRect& rect, const AxisSpan& span) {
    const bool vertical = side == Side::Bottom;  // an X axis's grid lines run vertically
    const float width = LineWidth();
    auto add = [&](double v, uint32_t color) {
        if (!span.Contains(v)) return;
        if (vertical) {
            const float x = Snap(span.ToPixel(v), rect.left, rect.right);
            lines.push_back({x, float(rect.top), x, float(rect.bottom), width, color});
        } else {
            const float y = Snap(span.ToPixel(v), rect.top, rect.bottom);
            lines.push_back({float(rect.left), y, float(rect.right), y, width, color});
        }
    };
    if (axis.style.minorGrid)
        for (double v : MinorTicks(axis.ticks, axis.style.minorTicks, span.lo, span.hi))
            add(v, axis.style.minorGridColor);
    if (axis.style.majorGrid)
        for (double v : axis.ticks) add(v, axis.style.majorGridColor);
}

void FlatScene::AddAxis(const FlatAxis& axis, Side side, const PixelRect& rect, const AxisSpan& span) {
    if (!axis.style.visible) return;
    const uint32_t color = axis.style.numberColor;
    const float width = LineWidth();
    const FontDescription numberFont = scale_.Font(axis.numberFont);
    // The axis line lies just outside the rectangle; ticks point away from it.
    const float base = side == Side::Bottom ? float(rect.bottom) + width / 2
                       : side == Side::Left ? float(rect.left) - width / 2
                                            : float(rect.right) + width / 2;
    const float outward = side == Side::Left ? -1.0f : 1.0f;
    auto tick = [&](double v, float length) {
        if (side == Side::Bottom) {
            const float x = Snap(span.ToPixel(v), rect.left, rect.right);
            lines.push_back({x, base, x, base + length, width, color});
        } else {
            const float y = Snap(span.ToPixel(v), rect.top, rect.bottom);
            lines.push_back({base, y, base + outward * length, y, width, color});
        }
    };
    // The axis line reaches one line width past the corner, meeting the other axis's.
    if (side == Side::Bottom)
        lines.push_back({float(rect.left) - width, base, float(rect.right), base, width, color});
    else lines.push_back({base, float(rect.top), base, float(rect.bottom) + width, width, color});
    for (double v : MinorTicks(axis.ticks, axis.style.minorTicks, span.lo, span.hi)) tick(v, scale_(kMinorTick));

    const int32_t textStart = int32_t(std::lround(base + outward * scale_(kMajorTick + kTextGap)));
    int32_t extentAcross = 0;  // the tick texts' size away from the axis
    for (size_t i = 0; i < axis.ticks.size(); ++i) {
        const double v = axis.ticks[i];
        if (!span.Contains(v)) continue;
        tick(v, scale_(kMajorTick));
        if (!axis.style.numbersVisible || i >= axis.texts.size() || axis.texts[i].empty()) continue;
        const TextPainter::Extent e = text_.Measure(axis.texts[i], numberFont);
        const int32_t along = int32_t(std::lround(span.ToPixel(v)));
        if (side == Side::Bottom) {
            texts.push_back({axis.texts[i], along, textStart, TextPainter::Anchor::Top, numberFont, color});
            extentAcross = std::max(extentAcross, e.height);
        } else {
            const auto anchor = side == Side::Left ? TextPainter::Anchor::Right : TextPainter::Anchor::Left;
            texts.push_back({axis.texts[i], textStart, along, anchor, numberFont, color});
            extentAcross = std::max(extentAcross, e.width);
        }
    }
    if (axis.label.empty()) return;
    const int32_t labelAt = textStart + int32_t(outward) * (extentAcross + scale_.Pixels(kLabelGap));
    if (side == Side::Bottom) {
        FontDescription level = scale_.Font(axis.labelFont);  // an axis below the image is labelled horizontally
        level.escapement = 0;
        texts.push_back({axis.label, (rect.left + rect.right) / 2, labelAt, TextPainter::Anchor::Top, level, color});
    } else {
        FontDescription upwards = scale_.Font(axis.labelFont);
        upwards.escapement = 900;
        const auto anchor = side == Side::Left ? TextPainter::Anchor::Right : TextPainter::Anchor::Left;
        texts.push_back({axis.label, labelAt, (rect.top + rect.bottom) / 2, anchor, upwards, color});
    }
}

}  // namespace vexplot
