#include "opengl/gl/LineRenderer.h"

#include <cstddef>

#include "opengl/gl/ShaderSources.h"

namespace vexplot {

LineRenderer::LineRenderer()
    : program_(shaders::kColorLineVertex, shaders::kColorLineFragment),
      vertexArray_(GlVertexArray::Create()),
      buffer_(GlBuffer::Create()) {
    glBindVertexArray(vertexArray_.Id());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.Id());
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, sizeof(Vertex), reinterpret_cast<void*>(offsetof(Vertex, x)));
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 4, GL_UNSIGNED_BYTE, GL_TRUE, sizeof(Vertex),
                          reinterpret_cast<void*>(offsetof(Vertex, color)));
    glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void LineRenderer::Add(const Vec3& a, const Vec3& b, uint32_t color) {
    vertices_.push_back({static_cast<float>(a.x), static_cast<float>(a.y), static_cast<float>(a.z), color});
    vertices_.push_back({static_cast<float>(b.x), static_cast<float>(b.y), static_cast<float>(b.z), color});
}

void LineRenderer::Draw(const Matrix4& viewProjection, float width) {
    if (vertices_.empty()) return;
    program_.Use();
    const auto matrix = viewProjection.ToFloats();
    glUniformMatrix4fv(program_.Uniform("viewProjection"), 1, GL_FALSE, matrix.data());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.Id());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices_.size() * sizeof(Vertex)), vertices_.data(),
                 GL_STREAM_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glLineWidth(width);
    // Smooth lines blend their edge coverage: anti-aliasing for the axes
    // where the frame is not multisampled (it costs next to nothing).
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindVertexArray(vertexArray_.Id());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(vertices_.size()));
    glBindVertexArray(0);
    glDisable(GL_BLEND);
    glDisable(GL_LINE_SMOOTH);
}

}  // namespace vexplot
