#include "opengl/SurfaceRenderer.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "opengl/PaletteTexture.h"
#include "opengl/ShaderSources.h"

namespace vexplot {

namespace {

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
                                 const Frame& frame) {
    const GridExtent& e = layer.extent;
    const Range xs = ShownNodes(e.xFirst, e.xLast, level.xCount, box.shown.xMin, box.shown.xMax);
    const Range ys = ShownNodes(e.yFirst, e.yLast, level.yCount, box.shown.yMin, box.shown.yMax);
    if (xs.count < 2 || ys.count < 2) return;
    Bind(surface_, layer, level, box, frame, xs.first, ys.first);
    glUniform1i(surface_.Uniform("smoothShading"), layer.shading == ShadingMode::Smooth ? 1 : 0);
    glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, 2 * ys.count, xs.count - 1);
}

void SurfaceRenderer::Draw(const Layer& layer, const HeightField::Level& level, const SceneBox& box,
                           const Frame& frame) {
    const GridExtent& e = layer.extent;
    const Range xs = ShownNodes(e.xFirst, e.xLast, level.xCount, box.shown.xMin, box.shown.xMax);
    const Range ys = ShownNodes(e.yFirst, e.yLast, level.yCount, box.shown.yMin, box.shown.yMax);
    glLineWidth(frame.lineWidth);
    switch (layer.style) {
    case GraphStyle::Surface:
        DrawFilled(layer, level, box, frame);
        break;
    case GraphStyle::Wireframe:
    case GraphStyle::Lines:
        Bind(lines_, layer, level, box, frame, xs.first, ys.first);
        glUniform1i(lines_.Uniform("alongX"), 0);
        glDrawArraysInstanced(GL_LINE_STRIP, 0, ys.count, xs.count);
        if (layer.style == GraphStyle::Wireframe) {
            glUniform1i(lines_.Uniform("alongX"), 1);
            glDrawArraysInstanced(GL_LINE_STRIP, 0, xs.count, ys.count);
        }
        break;
    case GraphStyle::Points:
        if (layer.pointStyle == PointStyle::None) break;
        Bind(points_, layer, level, box, frame, xs.first, ys.first);
        glUniform1i(points_.Uniform("nodesPerRow"), ys.count);
        glUniform1f(points_.Uniform("pointSize"), std::max(layer.pointSize * frame.pixelRatio, 1.0f));
        glUniform1i(points_.Uniform("symbol"), static_cast<int>(layer.pointStyle));
        glDrawArrays(GL_POINTS, 0, xs.count * ys.count);
        break;
    case GraphStyle::Barchart:
        Bind(bars_, layer, level, box, frame, xs.first, ys.first);
        glUniform1i(bars_.Uniform("nodesPerRow"), ys.count);
        glUniform1f(bars_.Uniform("baseZ"), static_cast<float>(-box.Half().z));
        glUniform3f(bars_.Uniform("eyePosition"), static_cast<float>(frame.eye.x), static_cast<float>(frame.eye.y),
                    static_cast<float>(frame.eye.z));
        glDrawArrays(GL_TRIANGLES, 0, 30 * xs.count * ys.count);
        break;
    }
    glBindVertexArray(0);
}

}  // namespace vexplot
