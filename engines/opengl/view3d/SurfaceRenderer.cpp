#include "opengl/view3d/SurfaceRenderer.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <string>

#include "opengl/gl/PaletteTexture.h"
#include "opengl/gl/ShaderSources.h"

namespace vexplot {

namespace {

// Batches a software renderer may have queued while the next is binned,
// and how long to wait for the oldest before going on regardless.
constexpr size_t kBatchesInFlight = 2;
constexpr GLuint64 kFenceTimeoutNs = 10'000'000'000;

std::string Source(const char* common, const char* body) {
    std::string source = "#version 330 core\n";
    source += common;
    source += body;
    return source;
}

GlProgram MakeGridProgram(const char* vertexBody, const char* fragmentBody) {
    return GlProgram(Source(shaders::kGridCommon, vertexBody), Source(shaders::kPaletteCommon, fragmentBody));
}

// Palette span of a layer in the value domain of the scene.
std::pair<float, float> ValueRange(const Layer& layer, const SceneBox& box) {
    double lo = layer.extent.zMin, hi = layer.extent.zMax;
    if (box.logZ) {
        const double minPositive = layer.field.MinPositive();
        if (!(lo > 0)) lo = minPositive;
        if (!(hi > 0)) hi = minPositive;
        lo = std::log10(lo);
        hi = std::log10(hi);
    }
    if (!std::isfinite(lo) || !std::isfinite(hi)) lo = hi = 0;
    return {static_cast<float>(lo), static_cast<float>(hi)};
}

}  // namespace

SurfaceRenderer::SurfaceRenderer()
    : surface_(MakeGridProgram(shaders::kSurfaceVertex, shaders::kSurfaceFragment)),
      lines_(MakeGridProgram(shaders::kLineVertex, shaders::kLineFragment)),
      points_(MakeGridProgram(shaders::kPointVertex, shaders::kPointFragment)),
      bars_(MakeGridProgram(shaders::kBarVertex, shaders::kBarFragment)),
      noAttributes_(GlVertexArray::Create()) {}

SurfaceRenderer::Range SurfaceRenderer::ShownNodes(double first, double last, int32_t count, double shownMin,
                                                   double shownMax) {
    if (count < 2 || last == first) return {0, count};
    const double step = (last - first) / (count - 1);
    double a = (shownMin - first) / step, b = (shownMax - first) / step;
    if (a > b) std::swap(a, b);
    // One node of margin each side: the clip planes cut the border cells.
    const auto lo = static_cast<int32_t>(std::clamp(std::floor(a) - 1, 0.0, double(count - 1)));
    const auto hi = static_cast<int32_t>(std::clamp(std::ceil(b) + 1, 0.0, double(count - 1)));
    return {lo, hi - lo + 1};
}

template <typename DrawRows>
void SurfaceRenderer::InBatches(const Frame& frame, int32_t rows, uint64_t primitivesPerRow, DrawRows draw) {
    if (rows <= 0) return;
    uint64_t perBatch = uint64_t(rows);
    if (frame.batchPrimitives > 0)
        perBatch = std::max<uint64_t>(frame.batchPrimitives / std::max<uint64_t>(primitivesPerRow, 1), 1);
    const auto batch = static_cast<int32_t>(std::min<uint64_t>(perBatch, uint64_t(rows)));
    // A flush alone does not bound the memory: the rasteriser queues many
    // scenes and the binning thread can run far ahead of it. A fence per
    // batch, waited for kBatchesInFlight batches later, keeps binning and
    // rasterising overlapped with at most that many batches queued.
    std::deque<GLsync> fences;
    for (int32_t first = 0; first < rows; first += batch) {
        draw(first, std::min(batch, rows - first));
        if (first + batch >= rows) break;
        fences.push_back(glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0));
        glFlush();
        if (fences.size() > kBatchesInFlight) {
            glClientWaitSync(fences.front(), GL_SYNC_FLUSH_COMMANDS_BIT, kFenceTimeoutNs);
            glDeleteSync(fences.front());
            fences.pop_front();
        }
    }
    for (GLsync fence : fences) glDeleteSync(fence);
}

void SurfaceRenderer::Bind(const GlProgram& program, const Layer& layer, const HeightField::Level& level,
                           const SceneBox& box, const Frame& frame, int32_t ix0, int32_t iy0) {
    program.Use();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, level.texture);
    glUniform1i(program.Uniform("heights"), 0);
    frame.palette->Bind(GL_TEXTURE1);
    glUniform1i(program.Uniform("palette"), 1);
    glUniform1i(program.Uniform("paletteSize"), frame.paletteSize);
    const auto [lo, hi] = ValueRange(layer, box);
    glUniform2f(program.Uniform("valueRange"), lo, hi);

    glUniform2i(program.Uniform("counts"), level.xCount, level.yCount);
    glUniform2i(program.Uniform("firstNode"), ix0, iy0);
    const Vec3 half = box.Half();
    const GridExtent& e = layer.extent;
    // Node i of the level lies at first + i * (last - first) / (count - 1) in data units.
    auto scale = [](double first, double last, int32_t count, double shownMin, double shownMax, double h) {
        const double shown = shownMax - shownMin;
        return count > 1 && shown != 0 ? (last - first) / (count - 1) * 2.0 * h / shown : 0.0;
    };
    glUniform2f(program.Uniform("nodeScale"),
                static_cast<float>(scale(e.xFirst, e.xLast, level.xCount, box.shown.xMin, box.shown.xMax, half.x)),
                static_cast<float>(scale(e.yFirst, e.yLast, level.yCount, box.shown.yMin, box.shown.yMax, half.y)));
    glUniform2f(program.Uniform("nodeOffset"),
                static_cast<float>(SceneBox::Map(e.xFirst, box.shown.xMin, box.shown.xMax, half.x)),
                static_cast<float>(SceneBox::Map(e.yFirst, box.shown.yMin, box.shown.yMax, half.y)));
    const double zExtent = box.zMax - box.zMin;
    const double zScale = zExtent != 0 ? 2.0 * half.z / zExtent : 0.0;
    glUniform2f(program.Uniform("zMap"), static_cast<float>(zScale),
                static_cast<float>(zExtent != 0 ? -box.zMin * zScale - half.z : 0.0));
    glUniform1i(program.Uniform("logZ"), box.logZ ? 1 : 0);
    // A hair beyond the box so that nodes on its faces are kept.
    glUniform4f(program.Uniform("clipBox"), static_cast<float>(-half.x * 1.0001), static_cast<float>(half.x * 1.0001),
                static_cast<float>(-half.y * 1.0001), static_cast<float>(half.y * 1.0001));
    const auto matrix = frame.viewProjection.ToFloats();
    glUniformMatrix4fv(program.Uniform("viewProjection"), 1, GL_FALSE, matrix.data());
    glUniform3f(program.Uniform("lightDirection"), static_cast<float>(frame.lightDirection.x),
                static_cast<float>(frame.lightDirection.y), static_cast<float>(frame.lightDirection.z));
    glBindVertexArray(noAttributes_.Id());
}

void SurfaceRenderer::DrawFilled(const Layer& layer, const HeightField::Level& level, const SceneBox& box,
                                 const Frame& frame, const NodeWindow* window) {
    const GridExtent& e = layer.extent;
    Range xs = ShownNodes(e.xFirst, e.xLast, level.xCount, box.shown.xMin, box.shown.xMax);
    Range ys = ShownNodes(e.yFirst, e.yLast, level.yCount, box.shown.yMin, box.shown.yMax);
    if (window) {
        auto limit = [](Range r, int32_t first, int32_t last, int32_t factor) {
            const int32_t lo = std::max(r.first, first / factor);
            const int32_t hi = std::min(r.first + r.count - 1, last / factor + 1);
            return Range{lo, std::max(0, hi - lo + 1)};
        };
        xs = limit(xs, window->xFirst, window->xLast, std::max(1, level.factor));
        ys = limit(ys, window->yFirst, window->yLast, std::max(1, level.factor));
    }
    if (xs.count < 2 || ys.count < 2) return;
    Bind(surface_, layer, level, box, frame, xs.first, ys.first);
    glUniform1i(surface_.Uniform("smoothShading"), layer.shading == ShadingMode::Smooth ? 1 : 0);
    // One instance per row of cells along y: a strip of two triangles a cell.
    const GLint firstNode = surface_.Uniform("firstNode");
    InBatches(frame, xs.count - 1, 2 * uint64_t(ys.count - 1), [&](int32_t first, int32_t rows) {
        glUniform2i(firstNode, xs.first + first, ys.first);
        glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, 2 * ys.count, rows);
    });
}

void SurfaceRenderer::Draw(const Layer& layer, const HeightField::Level& level, const SceneBox& box,
                           const Frame& frame) {
    const GridExtent& e = layer.extent;
    const Range xs = ShownNodes(e.xFirst, e.xLast, level.xCount, box.shown.xMin, box.shown.xMax);
    const Range ys = ShownNodes(e.yFirst, e.yLast, level.yCount, box.shown.yMin, box.shown.yMax);
    glLineWidth(frame.lineWidth);
    switch (layer.style) {
    case GraphStyle::Surface:
        if (!frame.mesh) {
            DrawFilled(layer, level, box, frame);
            break;
        }
        // The surface is pushed back a little so that its own grid lines
        // win the depth test.
        glEnable(GL_POLYGON_OFFSET_FILL);
        glPolygonOffset(1.0f, 1.0f);
        DrawFilled(layer, level, box, frame);
        glDisable(GL_POLYGON_OFFSET_FILL);
        [[fallthrough]];
    case GraphStyle::Wireframe:
    case GraphStyle::Lines: {
        if (layer.style == GraphStyle::Wireframe) {
            // Hidden lines: the surface goes into the depth buffer first,
            // pushed back a little so that its own lines stay in front of
            // it, and hides every line behind it.
            glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
            glEnable(GL_POLYGON_OFFSET_FILL);
            glPolygonOffset(1.0f, 1.0f);
            DrawFilled(layer, level, box, frame);
            glDisable(GL_POLYGON_OFFSET_FILL);
            glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        }
        Bind(lines_, layer, level, box, frame, xs.first, ys.first);
        glUniform1i(lines_.Uniform("meshLines"), layer.style == GraphStyle::Surface ? 1 : 0);
        const GLint firstNode = lines_.Uniform("firstNode");
        // Instances are lines of nodes along y, then (wireframe) along x.
        glUniform1i(lines_.Uniform("alongX"), 0);
        InBatches(frame, xs.count, uint64_t(ys.count), [&](int32_t first, int32_t count) {
            glUniform2i(firstNode, xs.first + first, ys.first);
            glDrawArraysInstanced(GL_LINE_STRIP, 0, ys.count, count);
        });
        if (layer.style != GraphStyle::Lines) {
            glUniform1i(lines_.Uniform("alongX"), 1);
            InBatches(frame, ys.count, uint64_t(xs.count), [&](int32_t first, int32_t count) {
                glUniform2i(firstNode, xs.first, ys.first + first);
                glDrawArraysInstanced(GL_LINE_STRIP, 0, xs.count, count);
            });
        }
        break;
    }
    case GraphStyle::Points: {
        if (layer.pointStyle == PointStyle::None) break;
        Bind(points_, layer, level, box, frame, xs.first, ys.first);
        glUniform1i(points_.Uniform("nodesPerRow"), ys.count);
        glUniform1f(points_.Uniform("pointSize"), std::max(layer.pointSize * frame.pixelRatio, 1.0f));
        glUniform1i(points_.Uniform("symbol"), static_cast<int>(layer.pointStyle));
        const GLint firstNode = points_.Uniform("firstNode");
        // A point is a quad (two triangles) to the rasteriser.
        InBatches(frame, xs.count, 2 * uint64_t(ys.count), [&](int32_t first, int32_t rows) {
            glUniform2i(firstNode, xs.first + first, ys.first);
            glDrawArrays(GL_POINTS, 0, rows * ys.count);
        });
        break;
    }
    case GraphStyle::Barchart: {
        Bind(bars_, layer, level, box, frame, xs.first, ys.first);
        glUniform1i(bars_.Uniform("nodesPerRow"), ys.count);
        glUniform1f(bars_.Uniform("baseZ"), static_cast<float>(-box.Half().z));
        glUniform3f(bars_.Uniform("eyePosition"), static_cast<float>(frame.eye.x), static_cast<float>(frame.eye.y),
                    static_cast<float>(frame.eye.z));
        const GLint firstNode = bars_.Uniform("firstNode");
        // Ten triangles a bar.
        InBatches(frame, xs.count, 10 * uint64_t(ys.count), [&](int32_t first, int32_t rows) {
            glUniform2i(firstNode, xs.first + first, ys.first);
            glDrawArrays(GL_TRIANGLES, 0, 30 * rows * ys.count);
        });
        break;
    }
    }
    glBindVertexArray(0);
}

}  // namespace vexplot
