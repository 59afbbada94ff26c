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
    // The batch's segments, for a drawing of the scene outside GL.
    struct Segment {
        Vec3 a, b;
        uint32_t color;
    };
    std::vector<Segment> Segments() const {
        std::vector<Segment> segments;
        segments.reserve(vertices_.size() / 2);
        for (size_t i = 0; i + 1 < vertices_.size(); i += 2) {
            const Vertex& a = vertices_[i];
            const Vertex& b = vertices_[i + 1];
            segments.push_back({{a.x, a.y, a.z}, {b.x, b.y, b.z}, a.color});
        }
        return segments;
    }
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
