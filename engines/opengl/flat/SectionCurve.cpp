#include "opengl/flat/SectionCurve.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vexplot {

SectionCurve SectionCurve::Extract(std::span<const float> values, int32_t xCount, int32_t yCount,
                                   const GridExtent& extent, int32_t mode, double position) {
    if ((mode != 1 && mode != 2) || xCount <= 0 || yCount <= 0 || values.size() < size_t(xCount) * size_t(yCount))
        return {};
    std::vector<float> line;
    int32_t cut = 0;
    if (mode == 1) {
        cut = CutIndex(xCount, position);
        line.resize(size_t(yCount));
        for (int32_t iy = 0; iy < yCount; ++iy) line[size_t(iy)] = values[size_t(iy) * size_t(xCount) + size_t(cut)];
    } else {
        cut = CutIndex(yCount, position);
        const float* row = values.data() + size_t(cut) * size_t(xCount);
        line.assign(row, row + xCount);
    }
    return FromLine(std::move(line), extent, mode, cut);
}

int32_t SectionCurve::CutIndex(int32_t count, double position) {
    const double f = std::clamp(std::isfinite(position) ? position : 0.0, 0.0, 100.0) / 100.0;
    return int32_t(std::lround(f * std::max(count - 1, 0)));
}

SectionCurve SectionCurve::FromLine(std::vector<float> line, const GridExtent& extent, int32_t mode,
                                    int32_t cutIndex) {
    SectionCurve curve;
    if (mode != 1 && mode != 2) return curve;
    curve.values_ = std::move(line);
    curve.cutIndex_ = cutIndex;
    curve.first_ = mode == 1 ? extent.yFirst : extent.xFirst;
    curve.last_ = mode == 1 ? extent.yLast : extent.xLast;
    return curve;
}

double SectionCurve::At(size_t i) const {
    if (values_.size() < 2) return first_;
    return first_ + (last_ - first_) * double(i) / double(values_.size() - 1);
}

void AppendSymbol(std::vector<FlatLine>& out, PointStyle style, float x, float y, float r, uint32_t color,
                  float strokeWidth) {
    auto line = [&](float x0, float y0, float x1, float y1) { out.push_back({x0, y0, x1, y1, strokeWidth, color}); };
    auto polygon = [&](int corners, float startAngle) {
        for (int i = 0; i < corners; ++i) {
            const double a0 = startAngle + 2 * std::numbers::pi * i / corners;
            const double a1 = startAngle + 2 * std::numbers::pi * (i + 1) / corners;
            line(x + r * float(std::cos(a0)), y - r * float(std::sin(a0)), x + r * float(std::cos(a1)),
                 y - r * float(std::sin(a1)));
        }
    };
    const float d = r * 0.7071f;
    switch (style) {
    case PointStyle::None:
        break;
    case PointStyle::Circle:
        polygon(16, 0.0f);
        break;
    case PointStyle::Square:
        line(x - r, y - r, x + r, y - r), line(x + r, y - r, x + r, y + r);
        line(x + r, y + r, x - r, y + r), line(x - r, y + r, x - r, y - r);
        break;
    case PointStyle::X:
        line(x - r, y - r, x + r, y + r), line(x - r, y + r, x + r, y - r);
        break;
    case PointStyle::Cross:
        line(x - r, y, x + r, y), line(x, y - r, x, y + r);
        break;
    case PointStyle::Triangle:
        polygon(3, float(std::numbers::pi / 2));
        break;
    case PointStyle::Star:
        line(x - r, y, x + r, y), line(x, y - r, x, y + r);
        line(x - d, y - d, x + d, y + d), line(x - d, y + d, x + d, y - d);
        break;
    }
}

}  // namespace vexplot
