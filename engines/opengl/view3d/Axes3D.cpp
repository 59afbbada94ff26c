#include "opengl/view3d/Axes3D.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vexplot {

namespace {

FontDescription Font(int32_t height, int32_t escapement) {
    FontDescription font{};
    std::strncpy(font.face, "Arial", sizeof(font.face) - 1);
    font.height = height;
    font.weight = 400;
    font.escapement = escapement;
    return font;
}

double Sign(double v) { return v >= 0 ? 1.0 : -1.0; }

// The anchor that puts a text on the far side of its point along the
// screen direction (dx, dy), y down.
TextPainter::Anchor AnchorAway(double dx, double dy) {
    using A = TextPainter::Anchor;
    if (std::fabs(dx) > 2 * std::fabs(dy)) return dx > 0 ? A::Left : A::Right;
    if (std::fabs(dy) > 2 * std::fabs(dx)) return dy > 0 ? A::Top : A::Bottom;
    if (dx > 0) return dy > 0 ? A::TopLeft : A::BottomLeft;
    return dy > 0 ? A::TopRight : A::BottomRight;
}

// Scene coordinate of a data value along axis `index`.
double AxisCoordinate(const SceneBox& box, int index, double value) {
    const Vec3 h = box.Half();
    switch (index) {
    case 0: return SceneBox::Map(value, box.shown.xMin, box.shown.xMax, h.x);
    case 1: return SceneBox::Map(value, box.shown.yMin, box.shown.yMax, h.y);
    default: return SceneBox::Map(box.ZValue(value), box.zMin, box.zMax, h.z);
    }
}

double HalfOf(const SceneBox& box, int index) {
    const Vec3 h = box.Half();
    return index == 0 ? h.x : index == 1 ? h.y : h.z;
}

bool Inside(double s, double half) { return std::isfinite(s) && std::fabs(s) <= half * (1 + 1e-9); }

// Minor tick values: each major step split into minorTicks + 1 parts,
// continued one step beyond the first and last major tick.
std::vector<double> MinorValues(const std::vector<double>& majors, int32_t minorTicks) {
    std::vector<double> minors;
    if (majors.size() < 2 || minorTicks < 1) return minors;
    std::vector<double> sorted = majors;
    std::sort(sorted.begin(), sorted.end());
    const double parts = minorTicks + 1.0;
    auto split = [&](double a, double b) {
        for (int32_t k = 1; k <= minorTicks; ++k) minors.push_back(a + (b - a) * k / parts);
    };
    split(2 * sorted[0] - sorted[1], sorted[0]);
    for (size_t i = 0; i + 1 < sorted.size(); ++i) split(sorted[i], sorted[i + 1]);
    const size_t n = sorted.size();
    split(sorted[n - 1], 2 * sorted[n - 1] - sorted[n - 2]);
    return minors;
}

}  // namespace

Axes3D::Axes3D() {
    for (int i = 0; i < 3; ++i) {
        axes_[static_cast<size_t>(i)].numberFont = Font(12, 0);
        axes_[static_cast<size_t>(i)].labelFont = Font(14, i == 2 ? 900 : 0);
    }
}

void Axes3D::BuildGrid(const SceneBox& box, const Vec3& eye, LineRenderer& lines) const {
    const Vec3 h = box.Half();
    // The back planes: the sides of the box facing away from the eye.
    const double xB = -Sign(eye.x) * h.x, yB = -Sign(eye.y) * h.y, zB = -Sign(eye.z) * h.z;
    auto gridLine = [&](int index, double s, uint32_t color) {
        switch (index) {
        case 0:
            lines.Add({s, -h.y, zB}, {s, h.y, zB}, color);
            lines.Add({s, yB, -h.z}, {s, yB, h.z}, color);
            break;
        case 1:
            lines.Add({-h.x, s, zB}, {h.x, s, zB}, color);
            lines.Add({xB, s, -h.z}, {xB, s, h.z}, color);
            break;
        default:
            lines.Add({xB, -h.y, s}, {xB, h.y, s}, color);
            lines.Add({-h.x, yB, s}, {h.x, yB, s}, color);
            break;
        }
    };
    for (int index = 0; index < 3; ++index) {
        const Axis& axis = axes_[static_cast<size_t>(index)];
        if (!axis.style.visible) continue;
        if (axis.style.minorGrid) {
            for (double v : MinorValues(axis.ticks, axis.style.minorTicks)) {
                const double s = AxisCoordinate(box, index, v);
                if (Inside(s, HalfOf(box, index))) gridLine(index, s, axis.style.minorGridColor);
            }
        }
        if (axis.style.majorGrid) {
            for (double v : axis.ticks) {
                const double s = AxisCoordinate(box, index, v);
                if (Inside(s, HalfOf(box, index))) gridLine(index, s, axis.style.majorGridColor);
            }
        }
    }
    // Outline of the back planes in the X axis's major grid colour.
    const uint32_t frame = axes_[0].style.majorGridColor;
    lines.Add({-h.x, yB, zB}, {h.x, yB, zB}, frame);
    lines.Add({xB, -h.y, zB}, {xB, h.y, zB}, frame);
    lines.Add({xB, yB, -h.z}, {xB, yB, h.z}, frame);
    lines.Add({-h.x, yB, -zB}, {h.x, yB, -zB}, frame);
    lines.Add({xB, -h.y, -zB}, {xB, h.y, -zB}, frame);
    lines.Add({-xB, yB, -h.z}, {-xB, yB, h.z}, frame);
    lines.Add({xB, -yB, -h.z}, {xB, -yB, h.z}, frame);
}

void Axes3D::BuildAxis(const Axis& axis, int index, const Edge& edge, const SceneBox& box, const Projector& projector,
                       TextPainter& painter, LineRenderer& lines, const PixelScale& scale,
                       std::vector<PlacedText>& texts) const {
    const uint32_t color = axis.style.numberColor;
    lines.Add(edge.start, edge.end, color);
    const double tickLength = 0.04 * box.Radius();
    const double half = HalfOf(box, index);
    auto along = [&](double s) {
        const double t = (s / half + 1.0) * 0.5;
        return edge.start + (edge.end - edge.start) * t;
    };
    // Screen direction in which texts move away from this edge.
    double ax = 0, ay = 0, bx = 0, by = 0;
    const Vec3 middle = along(0.0);
    if (!projector.Project(middle, ax, ay) || !projector.Project(middle + edge.outward * tickLength, bx, by)) return;
    double dx = bx - ax, dy = by - ay;
    const double length = std::hypot(dx, dy);
    if (length < 1e-6) dx = 0, dy = 1;
    else dx /= length, dy /= length;
    const TextPainter::Anchor anchor = AnchorAway(dx, dy);
    const double gap = scale(3.0);
    const FontDescription numberFont = scale.Font(axis.numberFont);

    double farthest = 0;  // the texts' reach along (dx, dy), for the label
    for (size_t i = 0; i < axis.ticks.size(); ++i) {
        const double s = AxisCoordinate(box, index, axis.ticks[i]);
        if (!Inside(s, half)) continue;
        const Vec3 p = along(s), q = p + edge.outward * tickLength;
        lines.Add(p, q, color);
        if (!axis.style.numbersVisible || i >= axis.texts.size() || axis.texts[i].empty()) continue;
        double qx = 0, qy = 0;
        if (!projector.Project(q, qx, qy)) continue;
        const TextPainter::Extent extent = painter.MeasureRotated(axis.texts[i], numberFont);
        farthest = std::max(farthest, std::fabs(dx) * extent.width + std::fabs(dy) * extent.height);
        texts.push_back({axis.texts[i], static_cast<int32_t>(std::lround(qx + dx * gap)),
                         static_cast<int32_t>(std::lround(qy + dy * gap)), anchor, numberFont, color});
    }
    if (axis.label.empty()) return;
    double lx = 0, ly = 0;
    if (!projector.Project(middle + edge.outward * tickLength, lx, ly)) return;
    const double reach = gap + farthest + scale(6.0);
    texts.push_back({axis.label, static_cast<int32_t>(std::lround(lx + dx * reach)),
                     static_cast<int32_t>(std::lround(ly + dy * reach)), anchor, scale.Font(axis.labelFont), color});
}

std::vector<Axes3D::PlacedText> Axes3D::Build(const SceneBox& box, const Vec3& eye, const Projector& projector,
                                              TextPainter& painter, LineRenderer& lines,
                                              const PixelScale& scale) const {
    std::vector<PlacedText> texts;
    if (!axesVisible) return texts;
    if (gridVisible) BuildGrid(box, eye, lines);
    const Vec3 h = box.Half();
    // X and Y ticks on the bottom edges nearest the eye.
    const double xF = Sign(eye.x) * h.x, yF = Sign(eye.y) * h.y;
    const Edge xEdge{{-h.x, yF, -h.z}, {h.x, yF, -h.z}, {0, Sign(yF), 0}};
    const Edge yEdge{{xF, -h.y, -h.z}, {xF, h.y, -h.z}, {Sign(xF), 0, 0}};
    // Z on the vertical edge of a side corner (neither nearest nor
    // farthest), the one further left on the screen.
    const Vec3 cornerA{xF, -yF, 0}, cornerB{-xF, yF, 0};
    double axx = 0, ayy = 0, bxx = 0, byy = 0;
    const bool projected = projector.Project(cornerA, axx, ayy) && projector.Project(cornerB, bxx, byy);
    const Vec3 corner = !projected || axx <= bxx ? cornerA : cornerB;
    const Edge zEdge{{corner.x, corner.y, -h.z}, {corner.x, corner.y, h.z},
                     Vec3{Sign(corner.x), Sign(corner.y), 0}.Normalized()};
    const Edge edges[3] = {xEdge, yEdge, zEdge};
    for (int index = 0; index < 3; ++index) {
        const Axis& axis = axes_[static_cast<size_t>(index)];
        if (axis.style.visible) BuildAxis(axis, index, edges[index], box, projector, painter, lines, scale, texts);
    }
    return texts;
}

}  // namespace vexplot
