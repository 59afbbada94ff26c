// The 3-D view as a drawing: the layers' cells projected to the picture's
// pixels and sorted back to front (a painter's drawing then hides what the
// depth buffer hides on screen), the axes' segments sorted with them, the
// texts and the annotations last; and renders of a picture in tiles.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "opengl/gl/EngineContext.h"
#include "opengl/gl/LineRenderer.h"
#include "opengl/gl/OverlayCanvas.h"
#include "opengl/gl/TileWindow.h"
#include "opengl/text/SceneOverlayPen.h"
#include "opengl/view3d/View3D.h"

namespace vexplot {

namespace {

// A cell of the exported surface is at least about this many pixels of
// the picture: finer cells cannot be told apart in a drawing and would only
// swell the file (a 2048 x 2048 grid stays a few megabytes).
constexpr uint64_t kPixelsPerExportCell = 6;
// Never more cells than this, however large the picture.
constexpr uint64_t kMaxExportCells = 1u << 18;
// The level read back before averaging has at most this many cells.
constexpr uint64_t kMaxScreenCells = 1u << 22;
// Nodes merged into one polygon may leave their straight line by this many
// pixels: less than anything a reader sees.
constexpr double kMergeTolerance = 0.2;

// Cells merged into one polygon at most: a long polygon sorts by one depth
// for all its length and could cover a neighbour in front of its far end.
constexpr int32_t kMaxMergedCells = 16;
// Pieces an axis line is cut into for sorting among the cells.
constexpr int kSegmentPieces = 16;
// The depth image that hides annotations in a drawing has at most this
// many pixels (a 2048 x 2048 picture).
constexpr double kMaxProbePixels = 1 << 22;

bool Finite(float v) { return std::isfinite(v); }

uint32_t Shade(uint32_t color, double light) {
    auto channel = [&](int shift) {
        const double c = static_cast<double>((color >> shift) & 0xFF) * light;
        return static_cast<uint32_t>(std::clamp(std::lround(c), 0L, 255L)) << shift;
    };
    return channel(0) | channel(8) | channel(16);
}

// The level's values read back from its texture: value (ix, iy) at ix * yCount + iy.
std::vector<float> ReadLevel(const HeightField::Level& level) {
    std::vector<float> values(static_cast<size_t>(level.xCount) * static_cast<size_t>(level.yCount));
    glBindTexture(GL_TEXTURE_2D, level.texture);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RED, GL_FLOAT, values.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return values;
}

// Nodes kept when a grid of `count` nodes is sampled every `step`: the
// first, every step-th and the last.
std::vector<int32_t> KeptNodes(int32_t count, int32_t step) {
    std::vector<int32_t> kept;
    for (int32_t i = 0; i < count; i += step) kept.push_back(i);
    if (kept.back() != count - 1) kept.push_back(count - 1);
    return kept;
}

struct Sampled {
    std::vector<float> values;  // value (ix, iy) at ix * ys.size() + iy
    std::vector<int32_t> xs, ys;  // the fine nodes they stand for
};

// The grid sampled every `step` nodes, each kept node the mean of the
// finite fine nodes within half a step of it (NaN when there is none): a
// level that keeps its blocks' extremes then loses the saw-tooth those
// leave on slopes, which flat cells of a drawing would show as streaks.
Sampled Average(const std::vector<float>& fine, int32_t nx, int32_t ny, int32_t step) {
    Sampled out{{}, KeptNodes(nx, step), KeptNodes(ny, step)};
    const size_t cx = out.xs.size(), cy = out.ys.size();
    if (step == 1) {
        out.values = fine;
        return out;
    }
    const int32_t half = step / 2;
    // Along y first: every fine row's sums and counts at the kept ys.
    std::vector<double> sums(static_cast<size_t>(nx) * cy, 0.0);
    std::vector<uint32_t> counts(sums.size(), 0);
    for (int32_t ix = 0; ix < nx; ++ix)
        for (size_t j = 0; j < cy; ++j) {
            const int32_t lo = std::max(0, out.ys[j] - half), hi = std::min(ny - 1, out.ys[j] + half);
            for (int32_t iy = lo; iy <= hi; ++iy) {
                const float v = fine[size_t(ix) * size_t(ny) + size_t(iy)];
                if (!Finite(v)) continue;
                sums[size_t(ix) * cy + j] += v;
                ++counts[size_t(ix) * cy + j];
            }
        }
    out.values.assign(cx * cy, std::numeric_limits<float>::quiet_NaN());
    for (size_t i = 0; i < cx; ++i) {
        const int32_t lo = std::max(0, out.xs[i] - half), hi = std::min(nx - 1, out.xs[i] + half);
        for (size_t j = 0; j < cy; ++j) {
            double sum = 0;
            uint64_t n = 0;
            for (int32_t ix = lo; ix <= hi; ++ix) {
                sum += sums[size_t(ix) * cy + j];
                n += counts[size_t(ix) * cy + j];
            }
            if (n) out.values[i * cy + j] = static_cast<float>(sum / double(n));
        }
    }
    return out;
}

}  // namespace

// One primitive of the sorted part of the scene: a polygon (filled, or a
// wireframe cell filled with the background) or a segment.
struct View3D::ScenePrimitive {
    double depth;  // distance from the eye: larger is drawn first
    std::vector<ScenePoint> points;
    uint32_t fill;
    uint32_t stroke;
    float strokeWidth;
    bool segment;
};

HRESULT View3D::GetMaxRenderSize(int32_t* size) {
    if (!size) return E_POINTER;
    if (!Ready()) return E_FAIL;
    GLint renderbuffer = 0, viewport[2] = {0, 0};
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &renderbuffer);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    *size = std::max<int32_t>(1, std::min({renderbuffer, viewport[0], viewport[1]}));
    return S_OK;
}

HRESULT View3D::RenderTile(const ImageBuffer* tile, int32_t fullWidth, int32_t fullHeight, int32_t left,
                           int32_t top) {
    if (!ValidTileWindow(tile, fullWidth, fullHeight, left, top)) return E_INVALIDARG;
    if (shutDown_) return E_UNEXPECTED;
    const Tile window{fullWidth, fullHeight, left, top};
    std::vector<float> depth;
    const HRESULT hr = Render(*tile, kUpdateFull, &window, &depth);
    if (SUCCEEDED(hr)) PaintOverlay(*tile, depth, &window);
    return hr;
}

HRESULT View3D::BuildScene(int32_t width, int32_t height, ISceneSink* sink) {
    if (!sink) return E_POINTER;
    if (width <= 0 || height <= 0) return E_INVALIDARG;
    if (!Ready()) return E_FAIL;
    try {
        const SceneBox box = Box();
        const Projector projector = MakeProjector(width, height);
        const PixelScale scale;
        const Vec3 eye = camera_.Position();

        const ScenePoint page[4] = {{0, 0}, {float(width), 0}, {float(width), float(height)}, {0, float(height)}};
        sink->AddPolygon(4, page, background_, background_, 0);

        std::vector<ScenePrimitive> primitives;
        lines_->Clear();
        const std::vector<Axes3D::PlacedText> texts =
            axes_.Build(box, eye, projector, engine_.Text(), *lines_, scale);
        // The box's back planes (the sides facing away from the eye) are
        // behind everything inside the box: their grid lines go first.
        // Other segments (axis lines, ticks) are cut into short pieces that
        // sort among the cells by their own depth.
        const Vec3 h = box.Half();
        const Vec3 back{eye.x >= 0 ? -h.x : h.x, eye.y >= 0 ? -h.y : h.y, eye.z >= 0 ? -h.z : h.z};
        auto onBackPlane = [&](const Vec3& a, const Vec3& b) {
            const double eps = 1e-6 * box.Radius();
            return (std::fabs(a.x - back.x) < eps && std::fabs(b.x - back.x) < eps) ||
                   (std::fabs(a.y - back.y) < eps && std::fabs(b.y - back.y) < eps) ||
                   (std::fabs(a.z - back.z) < eps && std::fabs(b.z - back.z) < eps);
        };
        for (const LineRenderer::Segment& s : lines_->Segments()) {
            const bool behind = onBackPlane(s.a, s.b);
            const int pieces = behind ? 1 : kSegmentPieces;
            for (int k = 0; k < pieces; ++k) {
                const Vec3 a = s.a + (s.b - s.a) * (double(k) / pieces);
                const Vec3 b = s.a + (s.b - s.a) * (double(k + 1) / pieces);
                double ax = 0, ay = 0, bx = 0, by = 0;
                if (!projector.Project(a, ax, ay) || !projector.Project(b, bx, by)) continue;
                const double depth = behind ? std::numeric_limits<double>::infinity() : ((a + b) * 0.5 - eye).Length();
                primitives.push_back({depth, {{float(ax), float(ay)}, {float(bx), float(by)}}, 0, s.color & 0xFFFFFF,
                                      lineWidth_, true});
            }
        }
        lines_->Clear();
        if (dataVisible_) {
            const uint64_t pixels = ProjectedPixels(box, projector);
            for (auto& [id, layer] : layers_)
                if (layer && layer->Drawable()) CollectLayer(*layer, box, projector, pixels, primitives);
        }
        std::stable_sort(primitives.begin(), primitives.end(),
                         [](const ScenePrimitive& a, const ScenePrimitive& b) { return a.depth > b.depth; });
        for (const ScenePrimitive& p : primitives) {
            if (p.segment)
                sink->AddPolyline(static_cast<uint32_t>(p.points.size()), p.points.data(), p.stroke, p.strokeWidth);
            else
                sink->AddPolygon(static_cast<uint32_t>(p.points.size()), p.points.data(), p.fill, p.stroke,
                                 p.strokeWidth);
        }

        for (const OverlayPolyline& line : overlayLines_) {
            std::vector<ScenePoint> points;
            for (const Point3& q : line.points) {
                double x = 0, y = 0;
                if (projector.Project(box.ToScene(q.x, q.y, q.z), x, y)) points.push_back({float(x), float(y)});
            }
            if (line.closed && !points.empty()) points.push_back(points.front());
            sink->AddPolyline(static_cast<uint32_t>(points.size()), points.data(), line.color, lineWidth_);
        }
        for (const Axes3D::PlacedText& text : texts)
            sink->AddText(text.text.c_str(), float(text.x), float(text.y), static_cast<SceneAnchor>(text.anchor),
                          &text.font, text.color);
        // Overlay symbols (markers) become rectangles, one per run of equal
        // pixels in a row, so that their transparent colour stays out and
        // they stay sharp at any zoom.
        for (const OverlayImage& image : overlayImages_) {
            double x = 0, y = 0;
            if (!projector.Project(box.ToScene(image.at.x, image.at.y, image.at.z), x, y)) continue;
            const float left = float(std::lround(x)) - float(image.width / 2);
            const float top = float(std::lround(y)) - float(image.height / 2);
            const uint32_t transparent = image.transparent & 0xFFFFFF;
            for (int32_t row = 0; row < image.height; ++row) {
                const uint32_t* pixels = image.pixels.data() + size_t(row) * size_t(image.width);
                for (int32_t start = 0; start < image.width;) {
                    const uint32_t color = pixels[start] & 0xFFFFFF;
                    int32_t end = start + 1;
                    while (end < image.width && (pixels[end] & 0xFFFFFF) == color) ++end;
                    if (color != transparent) {
                        const float x0 = left + float(start), x1 = left + float(end);
                        const float y0 = top + float(row), y1 = y0 + 1;
                        const ScenePoint run[4] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
                        sink->AddPolygon(4, run, color, color, 0);
                    }
                    start = end;
                }
            }
        }
        for (const OverlayText& text : overlayTexts_) {
            double x = 0, y = 0;
            if (!projector.Project(box.ToScene(text.at.x, text.at.y, text.at.z), x, y)) continue;
            sink->AddText(text.text.c_str(), float(x), float(y), SceneAnchor::Left, &text.font, text.color);
        }
        if (!overlay3D_.Empty()) ExportOverlay(width, height, *sink);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return E_FAIL;
    }
    return S_OK;
}

void View3D::ExportOverlay(int32_t width, int32_t height, ISceneSink& sink) {
    // What the surface hides is read from a depth image of the scene, at
    // the drawing's size or, for a very large drawing, at a smaller one of
    // the same shape.
    SceneOverlayPen::Visibility visible;
    std::vector<uint32_t> pixels;
    std::vector<float> depth;
    ImageBuffer image{};  // outlives the probe, which keeps a reference
    std::optional<OverlayCanvas> probe;
    if (overlayDepthTest_) {
        const double scale = std::min(1.0, std::sqrt(double(kMaxProbePixels) / (double(width) * double(height))));
        const int32_t pw = std::max(1, int32_t(std::lround(width * scale)));
        const int32_t ph = std::max(1, int32_t(std::lround(height * scale)));
        pixels.resize(size_t(pw) * size_t(ph));
        image = ImageBuffer{pixels.data(), pw, ph, pw, 0};
        if (SUCCEEDED(Render(image, kUpdateFull, nullptr, &depth)) && !depth.empty()) {
            probe.emplace(image, 1.0, &depth);
            visible = [&probe, scale](double x, double y, double z) { return probe->Visible(x * scale, y * scale, z); };
        }
    }
    SceneOverlayPen pen(sink, width, height, 1.0, std::move(visible));
    overlay3D_.Paint(pen, OverlayProjection(width, height, 0, 0), engine_.Text());
}

void View3D::CollectLayer(const Layer& layer, const SceneBox& box, const Projector& projector, uint64_t pixels,
                          std::vector<ScenePrimitive>& out) {
    const int32_t nx = layer.field.XCount(), ny = layer.field.YCount();
    // The level the screen draws (about one cell per pixel, its blocks'
    // extremes kept), averaged down on the CPU to the cells a drawing needs.
    const uint64_t screenCells = std::clamp<uint64_t>(pixels / PixelsPerCell(layer.style), 1, kMaxScreenCells);
    const int32_t factor = std::max(layer.lowResolution ? 2 : 1, HeightField::FactorForBudget(nx, ny, screenCells));
    const HeightField::Level level = factor > 1 ? const_cast<Layer&>(layer).field.Reduced(factor, *reduce_)
                                                : layer.field.Full();
    if (level.xCount < 1 || level.yCount < 1) return;
    const uint64_t perCell = std::max(kPixelsPerExportCell, PixelsPerCell(layer.style));
    const uint64_t budget = std::clamp<uint64_t>(pixels / perCell, 1, kMaxExportCells);
    const double excess = double(level.xCount) * double(level.yCount) / double(budget);
    const int32_t step = std::max(1, static_cast<int32_t>(std::ceil(std::sqrt(excess))));
    const Sampled grid = Average(ReadLevel(level), level.xCount, level.yCount, step);
    const std::vector<float>& values = grid.values;
    const int32_t lx = static_cast<int32_t>(grid.xs.size()), ly = static_cast<int32_t>(grid.ys.size());

    // Scene positions, screen points and palette colours of every node.
    const GridExtent& e = layer.extent;
    const std::vector<uint32_t>& palette = engine_.PaletteColors();
    double lo = e.zMin, hi = e.zMax;
    if (box.logZ) {
        lo = box.ZValue(lo > 0 ? lo : layer.field.MinPositive());
        hi = box.ZValue(hi > 0 ? hi : layer.field.MinPositive());
    }
    auto colorOf = [&](double v) -> uint32_t {
        if (palette.empty()) return 0;
        const double t = hi > lo ? std::clamp((v - lo) / (hi - lo), 0.0, 1.0) : 0.0;
        return palette[static_cast<size_t>(std::lround(t * double(palette.size() - 1)))] & 0xFFFFFF;
    };
    const size_t count = values.size();
    std::vector<Vec3> scene(count);
    std::vector<ScenePoint> screen(count);
    std::vector<float> stored(count);  // the value in the scene's domain (log10 with a log Z), NaN for none
    const double margin = 1e-6;
    // Positions from the level's node numbers, which the averaging may
    // have spaced unevenly at the far border.
    const double fx = level.xCount > 1 ? (e.xLast - e.xFirst) / (level.xCount - 1) : 0.0;
    const double fy = level.yCount > 1 ? (e.yLast - e.yFirst) / (level.yCount - 1) : 0.0;
    auto nodeX = [&](int32_t ix) { return e.xFirst + fx * grid.xs[size_t(ix)]; };
    auto nodeY = [&](int32_t iy) { return e.yFirst + fy * grid.ys[size_t(iy)]; };
    for (int32_t ix = 0; ix < lx; ++ix)
        for (int32_t iy = 0; iy < ly; ++iy) {
            const size_t i = static_cast<size_t>(ix) * static_cast<size_t>(ly) + static_cast<size_t>(iy);
            const double x = nodeX(ix), y = nodeY(iy);
            double z = values[i];
            const bool inside = x >= box.shown.xMin - margin && x <= box.shown.xMax + margin &&
                                y >= box.shown.yMin - margin && y <= box.shown.yMax + margin;
            const double v = box.ZValue(z);
            stored[i] = inside && std::isfinite(v) ? static_cast<float>(v) : std::numeric_limits<float>::quiet_NaN();
            if (!Finite(stored[i])) continue;
            scene[i] = box.ToScene(x, y, z);
            double px = 0, py = 0;
            if (!projector.Project(scene[i], px, py)) {
                stored[i] = std::numeric_limits<float>::quiet_NaN();
                continue;
            }
            screen[i] = {float(px), float(py)};
        }
    auto at = [&](int32_t ix, int32_t iy) { return static_cast<size_t>(ix) * static_cast<size_t>(ly) + size_t(iy); };
    const Vec3 eye = camera_.Position();
    const Vec3 light = ((eye - camera_.Center()).Normalized() + Vec3{0, 0, 0.8}).Normalized();
    const float width = lineWidth_;

    switch (layer.style) {
    case GraphStyle::Surface:
    case GraphStyle::Wireframe: {
        const bool wire = layer.style == GraphStyle::Wireframe;
        // One cell's colour: the palette at its mean value, lit by its
        // normal as the screen lights it (filled surfaces only).
        auto cellColor = [&](int32_t ix, int32_t iy) {
            const size_t a = at(ix, iy), b = at(ix + 1, iy), c = at(ix, iy + 1), d = at(ix + 1, iy + 1);
            const uint32_t base = colorOf((stored[a] + stored[b] + stored[c] + stored[d]) / 4.0);
            if (wire) return base;
            const Vec3 n = (scene[d] - scene[a]).Cross(scene[b] - scene[c]);
            const double length = n.Length();
            const double lit = length > 1e-30 ? 0.5 + 0.5 * std::fabs(n.Dot(light) / length) : 1.0;
            return Shade(base, lit);
        };
        auto valid = [&](int32_t ix, int32_t iy) {
            return Finite(stored[at(ix, iy)]) && Finite(stored[at(ix + 1, iy)]) && Finite(stored[at(ix, iy + 1)]) &&
                   Finite(stored[at(ix + 1, iy + 1)]);
        };
        // Whether node `m` lies on the straight screen line from `a` to `b`.
        auto onLine = [&](size_t a, size_t m, size_t b) {
            const double dx = screen[b].x - screen[a].x, dy = screen[b].y - screen[a].y;
            const double length = std::hypot(dx, dy);
            if (length < 1e-9)
                return std::hypot(screen[m].x - screen[a].x, screen[m].y - screen[a].y) < kMergeTolerance;
            const double off = std::fabs((screen[m].x - screen[a].x) * dy - (screen[m].y - screen[a].y) * dx) / length;
            return off < kMergeTolerance;
        };
        for (int32_t ix = 0; ix + 1 < lx; ++ix) {
            int32_t iy = 0;
            while (iy + 1 < ly) {
                if (!valid(ix, iy)) {
                    ++iy;
                    continue;
                }
                // Cells along the row with the same colour whose edges stay
                // straight on the screen merge into one polygon; wireframe
                // cells keep their lines.
                const uint32_t color = cellColor(ix, iy);
                int32_t end = iy + 1;
                if (!wire)
                    while (end + 1 < ly && end - iy < kMaxMergedCells && valid(ix, end) &&
                           cellColor(ix, end) == color &&
                           onLine(at(ix, iy), at(ix, end), at(ix, end + 1)) &&
                           onLine(at(ix + 1, iy), at(ix + 1, end), at(ix + 1, end + 1)))
                        ++end;
                const size_t a = at(ix, iy), b = at(ix + 1, iy), c = at(ix + 1, end), d = at(ix, end);
                const Vec3 centre = (scene[a] + scene[b] + scene[c] + scene[d]) * 0.25;
                ScenePrimitive p{(centre - eye).Length(), {screen[a], screen[b], screen[c], screen[d]}, 0, 0, 0,
                                 false};
                if (wire) {
                    p.fill = background_;
                    p.stroke = color;
                    p.strokeWidth = width;
                } else {
                    p.fill = p.stroke = color;
                }
                out.push_back(std::move(p));
                iy = end;
            }
        }
        break;
    }
    case GraphStyle::Lines:
        for (int32_t ix = 0; ix < lx; ++ix)
            for (int32_t iy = 0; iy + 1 < ly; ++iy) {
                const size_t a = at(ix, iy), b = at(ix, iy + 1);
                if (!Finite(stored[a]) || !Finite(stored[b])) continue;
                const Vec3 centre = (scene[a] + scene[b]) * 0.5;
                out.push_back({(centre - eye).Length(), {screen[a], screen[b]}, 0,
                               colorOf((stored[a] + stored[b]) / 2.0), width, true});
            }
        break;
    case GraphStyle::Points: {
        if (layer.pointStyle == PointStyle::None) break;
        const float r = layer.pointSize / 2;
        for (size_t i = 0; i < count; ++i) {
            if (!Finite(stored[i])) continue;
            const ScenePoint q = screen[i];
            const uint32_t color = colorOf(stored[i]);
            out.push_back({(scene[i] - eye).Length(), {{q.x - r, q.y - r}, {q.x + r, q.y - r}, {q.x + r, q.y + r},
                                                        {q.x - r, q.y + r}}, color, color, 0, false});
        }
        break;
    }
    case GraphStyle::Barchart: {
        // Each bar is a box on the floor of the scene; its faces sort on
        // their own, so neighbours cover each other as on the screen.
        const double half = box.Half().z;
        // Bars are 0.8 of the node spacing wide, as on screen.
        const double hx = lx > 1 ? std::fabs(box.ToScene(nodeX(1), 0, 0).x - box.ToScene(nodeX(0), 0, 0).x) * 0.4 : 0.4;
        const double hy = ly > 1 ? std::fabs(box.ToScene(0, nodeY(1), 0).y - box.ToScene(0, nodeY(0), 0).y) * 0.4 : 0.4;
        for (size_t i = 0; i < count; ++i) {
            if (!Finite(stored[i])) continue;
            const Vec3 top = scene[i];
            const uint32_t base = colorOf(stored[i]);
            auto face = [&](const Vec3 (&corners)[4], const Vec3& normal) {
                const Vec3 centre = (corners[0] + corners[1] + corners[2] + corners[3]) * 0.25;
                if (normal.Dot(eye - centre) <= 0) return;  // facing away
                ScenePrimitive p{(centre - eye).Length(), {}, Shade(base, 0.5 + 0.5 * std::fabs(normal.Dot(light))), 0,
                                 0, false};
                for (const Vec3& corner : corners) {
                    double px = 0, py = 0;
                    if (!projector.Project(corner, px, py)) return;
                    p.points.push_back({float(px), float(py)});
                }
                p.stroke = p.fill;
                out.push_back(std::move(p));
            };
            const double x0 = top.x - hx, x1 = top.x + hx, y0 = top.y - hy, y1 = top.y + hy, z0 = -half, z1 = top.z;
            face({{x0, y0, z1}, {x1, y0, z1}, {x1, y1, z1}, {x0, y1, z1}}, {0, 0, 1});
            face({{x0, y0, z0}, {x1, y0, z0}, {x1, y0, z1}, {x0, y0, z1}}, {0, -1, 0});
            face({{x0, y1, z0}, {x1, y1, z0}, {x1, y1, z1}, {x0, y1, z1}}, {0, 1, 0});
            face({{x0, y0, z0}, {x0, y1, z0}, {x0, y1, z1}, {x0, y0, z1}}, {-1, 0, 0});
            face({{x1, y0, z0}, {x1, y1, z0}, {x1, y1, z1}, {x1, y0, z1}}, {1, 0, 0});
        }
        break;
    }
    }
}

}  // namespace vexplot
