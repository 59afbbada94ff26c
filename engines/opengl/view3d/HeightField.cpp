#include "opengl/view3d/HeightField.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "opengl/gl/ShaderSources.h"

namespace vexplot {

namespace {

int32_t CeilDiv(int32_t a, int32_t b) { return (a + b - 1) / b; }

}  // namespace

void HeightField::Upload(const double* values, int32_t xCount, int32_t yCount) {
    Release();
    Assign(GridTexture::Upload(values, xCount, yCount));
}

void HeightField::Assign(std::shared_ptr<const GridTexture> grid) {
    levels_.clear();
    grid_ = std::move(grid);
}

void HeightField::Release() { Assign(nullptr); }

double HeightField::MinPositive() const {
    return grid_ ? grid_->MinPositive() : std::numeric_limits<double>::quiet_NaN();
}

GlProgram HeightField::MakeReduceProgram() {
    return GlProgram(shaders::kFullScreenVertex, shaders::kReduceFragment);
}

int32_t HeightField::FactorForBudget(int32_t xCount, int32_t yCount, uint64_t cells) {
    if (cells == 0) return 1;
    // Powers of two only, so that few levels are ever built per grid.
    for (int32_t factor = 1;; factor *= 2) {
        const int32_t nx = CeilDiv(xCount, factor), ny = CeilDiv(yCount, factor);
        if (static_cast<uint64_t>(std::max(nx - 1, 1)) * static_cast<uint64_t>(std::max(ny - 1, 1)) <= cells ||
            (nx <= 2 && ny <= 2))
            return factor;
    }
}

HeightField::Level HeightField::Reduced(int32_t factor, const GlProgram& reduce) {
    // A level needs at least two nodes each way to span the grid's extent.
    if (Empty()) return Full();
    const int32_t xCount = XCount(), yCount = YCount();
    while (factor > 1 && (CeilDiv(xCount, factor) < 2 || CeilDiv(yCount, factor) < 2)) --factor;
    if (factor <= 1) return Full();
    const int32_t nx = CeilDiv(xCount, factor), ny = CeilDiv(yCount, factor);
    auto found = levels_.find(factor);
    if (found != levels_.end()) return {found->second.Id(), nx, ny, factor};
    // Reduce from the coarsest level already built whose blocks tile this
    // one's (a 1/16 level from the 1/4 level reads 16 times fewer texels).
    Level source = Full();
    for (const auto& [built, texture] : levels_)
        if (built < factor && factor % built == 0)
            source = {texture.Id(), CeilDiv(xCount, built), CeilDiv(yCount, built), built};

    GlTexture level = GlTexture::Create();
    glBindTexture(GL_TEXTURE_2D, level.Id());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R32F, ny, nx, 0, GL_RED, GL_FLOAT, nullptr);
    GlFramebuffer framebuffer = GlFramebuffer::Create();
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer.Id());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, level.Id(), 0);
    glViewport(0, 0, ny, nx);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);

    const GlProgram& program = reduce;
    program.Use();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, source.texture);
    glUniform1i(program.Uniform("source"), 0);
    glUniform1i(program.Uniform("factor"), factor / source.factor);
    glUniform2i(program.Uniform("sourceSize"), source.yCount, source.xCount);
    // Slopes within 2 % of the grid's range stay smooth.
    glUniform1f(program.Uniform("flatRange"), static_cast<float>(0.02 * grid_->Range()));
    GlVertexArray vertexArray = GlVertexArray::Create();
    glBindVertexArray(vertexArray.Id());
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glBindVertexArray(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glBindTexture(GL_TEXTURE_2D, 0);

    const GLuint id = level.Id();
    levels_.emplace(factor, std::move(level));
    return {id, nx, ny, factor};
}

}  // namespace vexplot
