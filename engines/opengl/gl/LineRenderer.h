#pragma once
#include <cstdint>
#include <vector>

#include "opengl/gl/GlObject.h"
#include "opengl/gl/GlProgram.h"
#include "opengl/gl/Matrix4.h"

namespace vexplot {

// Draws batches of coloured line segments given in scene coordinates
// (axes, grid lines, tick marks, overlay polylines). Made and used with
// the context current.
class LineRenderer {
public:
    LineRenderer();

    void Clear() { vertices_.clear(); }
    void Add(const Vec3& a, const Vec3& b, uint32_t color);
    bool Empty() const { return vertices_.empty(); }
    // Draws the batch with `viewProjection` and line `width` in pixels.
    void Draw(const Matrix4& viewProjection, float width);

private:
    struct Vertex {
        float x, y, z;
        uint32_t color;  // 0x00BBGGRR: bytes R, G, B
    };
    GlProgram program_;
    GlVertexArray vertexArray_;
    GlBuffer buffer_;
    std::vector<Vertex> vertices_;
};

}  // namespace vexplot
