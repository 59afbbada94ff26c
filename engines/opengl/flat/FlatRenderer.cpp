#include "opengl/flat/FlatRenderer.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "opengl/gl/PaletteTexture.h"

namespace vexplot {

namespace {

// No multisampling: on a software rasteriser it costs several times the
// whole frame. Lines are anti-aliased by their own coverage instead, and the
// image's edges lie on pixel boundaries.
constexpr int32_t kSamples = 1;

// Vertices come in client pixels (y down); the viewport size turns them into
// clip space.
constexpr const char* kPixelVertex = R"(#version 330 core
layout(location = 0) in vec2 aPixel;
layout(location = 1) in vec4 aColor;
uniform vec2 uViewport;
out vec2 vPixel;
out vec4 vColor;
void main() {
    vPixel = aPixel;
    vColor = aColor;
    gl_Position = vec4(aPixel.x / uViewport.x * 2.0 - 1.0, 1.0 - aPixel.y / uViewport.y * 2.0, 0.0, 1.0);
}
)";

// The grid texture holds texel (iy, ix) = value (ix, iy), the layout the
// 3-D view reads, so that one texture serves both. Flat shading
// takes the nearest node, smooth shading interpolates between the four
// nearest and falls back to the nearest where one of them has no value;
// contour lines are drawn where the interpolated value crosses a level.
// The mode is compiled in (MODE 0 flat, 1 smooth, 2 contours): a software
// rasteriser runs both sides of a uniform branch.
constexpr const char* kImageFragment = R"(
in vec2 vPixel;
out vec4 fragColor;
uniform sampler2D uGrid;
uniform sampler1D uPalette;
uniform int uPaletteSize;
uniform vec4 uMapping;  // ax, bx, ay, by
uniform vec2 uZRange;
uniform vec2 uLevels;   // first, step
uniform ivec2 uSize;    // xCount, yCount

float Fetch(ivec2 node) { return texelFetch(uGrid, node.yx, 0).r; }

vec3 PaletteColor(float v) {
    float t = (v - uZRange.x) / max(uZRange.y - uZRange.x, 1e-30);
    int i = clamp(int(floor(t * float(uPaletteSize))), 0, uPaletteSize - 1);
    return texelFetch(uPalette, i, 0).rgb;
}

void main() {
    vec2 g = vec2(uMapping.x * vPixel.x + uMapping.y, uMapping.z * vPixel.y + uMapping.w);
    if (any(lessThan(g, vec2(-0.5))) || any(greaterThan(g, vec2(uSize) - 0.5))) discard;
    float v = Fetch(clamp(ivec2(floor(g + 0.5)), ivec2(0), uSize - 1));
#if MODE != 0
    vec2 c = clamp(g, vec2(0.0), vec2(uSize - 1));
    ivec2 n0 = ivec2(floor(c));
    ivec2 n1 = min(n0 + 1, uSize - 1);
    vec2 f = c - vec2(n0);
    float v00 = Fetch(n0), v10 = Fetch(ivec2(n1.x, n0.y)), v01 = Fetch(ivec2(n0.x, n1.y)), v11 = Fetch(n1);
    float s = mix(mix(v00, v10, f.x), mix(v01, v11, f.x), f.y);
    if (!isnan(s)) v = s;
#endif
    if (isnan(v)) discard;
#if MODE != 2
    fragColor = vec4(PaletteColor(v), 1.0);
#else
    float level = (v - uLevels.x) / uLevels.y;
    float width = max(fwidth(level), 1e-6);
    float distance = abs(level - round(level)) / width;  // in pixels from the nearest isoline
    float alpha = clamp(1.0 - (distance - 0.5), 0.0, 1.0);
    if (alpha <= 0.0) discard;
    fragColor = vec4(PaletteColor(uLevels.x + round(level) * uLevels.y), alpha);
#endif
}
)";

std::string ImageSource(int mode) {
    return "#version 330 core\n#define MODE " + std::to_string(mode) + "\n" + kImageFragment;
}

constexpr const char* kBarFragment = R"(#version 330 core
in vec2 vPixel;
out vec4 fragColor;
uniform sampler1D uPalette;
uniform int uPaletteSize;
uniform vec2 uRows;  // top, bottom
void main() {
    float t = (uRows.y - vPixel.y) / max(uRows.y - uRows.x, 1.0);
    int i = clamp(int(floor(t * float(uPaletteSize))), 0, uPaletteSize - 1);
    fragColor = vec4(texelFetch(uPalette, i, 0).rgb, 1.0);
}
)";

// A line is a quad one pixel wider than the line on each side; the
// fragment's distance from the centre line gives its coverage.
constexpr const char* kLineVertex = R"(#version 330 core
layout(location = 0) in vec2 aPixel;
layout(location = 1) in vec4 aColor;
layout(location = 2) in vec2 aAcross;  // distance from the centre line, half the width
uniform vec2 uViewport;
out vec4 vColor;
out vec2 vAcross;
void main() {
    vColor = aColor;
    vAcross = aAcross;
    gl_Position = vec4(aPixel.x / uViewport.x * 2.0 - 1.0, 1.0 - aPixel.y / uViewport.y * 2.0, 0.0, 1.0);
}
)";

constexpr const char* kLineFragment = R"(#version 330 core
in vec4 vColor;
in vec2 vAcross;
out vec4 fragColor;
void main() {
    float coverage = clamp(vAcross.y + 0.5 - abs(vAcross.x), 0.0, 1.0);
    if (coverage <= 0.0) discard;
    fragColor = vec4(vColor.rgb, coverage);
}
)";

struct Vertex {
    float x, y;
    uint32_t color;
    float across;  // lines only: distance from the centre line in pixels
    float half;    // lines only: half the line's width
};

void SetupVertexArray(const GlVertexArray& vao, const GlBuffer& vbo) {
    glBindVertexArray(vao.Id());
    glBindBuffer(GL_ARRAY_BUFFER, vbo.Id());
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, sizeof(Vertex), reinterpret_cast<void*>(0));
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 4, GL_UNSIGNED_BYTE, GL_TRUE, sizeof(Vertex),
                          reinterpret_cast<void*>(2 * sizeof(float)));
    glEnableVertexAttribArray(2);
    glVertexAttribPointer(2, 2, GL_FLOAT, GL_FALSE, sizeof(Vertex), reinterpret_cast<void*>(3 * sizeof(float)));
    glBindVertexArray(0);
}

// Two triangles covering a line of the given thickness plus a pixel of
// fringe on each side for the coverage ramp; square caps, so that lines
// meet without gaps at polyline joints and corners.
void AppendLine(std::vector<Vertex>& out, const FlatLine& line) {
    const float dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    const float length = std::sqrt(dx * dx + dy * dy);
    const float half = line.width / 2, reach = half + 1.0f;
    float ux = 1.0f, uy = 0.0f;  // along the line
    if (length > 0.0f) ux = dx / length, uy = dy / length;
    const float nx = -uy * reach, ny = ux * reach;  // across the line
    const float ex = ux * half, ey = uy * half;
    const uint32_t c = line.color | 0xFF000000u;
    const Vertex a{line.x0 - ex + nx, line.y0 - ey + ny, c, reach, half};
    const Vertex b{line.x0 - ex - nx, line.y0 - ey - ny, c, -reach, half};
    const Vertex d{line.x1 + ex + nx, line.y1 + ey + ny, c, reach, half};
    const Vertex e{line.x1 + ex - nx, line.y1 + ey - ny, c, -reach, half};
    out.insert(out.end(), {a, b, d, d, b, e});
}

}  // namespace

FlatRenderer::FlatRenderer()
    : flatProgram_(kPixelVertex, ImageSource(0)),
      smoothProgram_(kPixelVertex, ImageSource(1)),
      contourProgram_(kPixelVertex, ImageSource(2)),
      barProgram_(kPixelVertex, kBarFragment),
      lineProgram_(kLineVertex, kLineFragment),
      quadVao_(GlVertexArray::Create()),
      quadVbo_(GlBuffer::Create()),
      lineVao_(GlVertexArray::Create()),
      lineVbo_(GlBuffer::Create()) {
    SetupVertexArray(quadVao_, quadVbo_);
    SetupVertexArray(lineVao_, lineVbo_);
}

FlatRenderer::~FlatRenderer() = default;

void FlatRenderer::Begin(int32_t width, int32_t height, uint32_t background) {
    width_ = width;
    height_ = height;
    target_.Ensure(width, height, kSamples);
    target_.Bind();
    // The 3-D view shares the context: set every piece of state the flat
    // view relies on rather than trusting what was left behind.
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_STENCIL_TEST);
    glDisable(GL_POLYGON_OFFSET_FILL);
    glDisable(GL_BLEND);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glClearColor(float(background & 0xFF) / 255.0f, float((background >> 8) & 0xFF) / 255.0f,
                 float((background >> 16) & 0xFF) / 255.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void FlatRenderer::DrawQuad(const PixelRect& rect) {
    const float l = float(rect.left), t = float(rect.top), r = float(rect.right), b = float(rect.bottom);
    const Vertex quad[6] = {{l, t, 0, 0, 0}, {l, b, 0, 0, 0}, {r, t, 0, 0, 0},
                            {r, t, 0, 0, 0}, {l, b, 0, 0, 0}, {r, b, 0, 0, 0}};
    glBindBuffer(GL_ARRAY_BUFFER, quadVbo_.Id());
    glBufferData(GL_ARRAY_BUFFER, sizeof(quad), quad, GL_STREAM_DRAW);
    glBindVertexArray(quadVao_.Id());
    // Keep the image's pixels inside its rectangle even with multisampling.
    Scissor(rect);
    glDrawArrays(GL_TRIANGLES, 0, 6);
    glDisable(GL_SCISSOR_TEST);
    glBindVertexArray(0);
}

void FlatRenderer::DrawImage(const ImageParams& p, const PaletteTexture& palette, int32_t paletteSize) {
    if (!HasGrid() || p.rect.right <= p.rect.left || p.rect.bottom <= p.rect.top) return;
    const GlProgram& program = p.contours ? contourProgram_ : p.smooth ? smoothProgram_ : flatProgram_;
    program.Use();
    glUniform2f(program.Uniform("uViewport"), float(width_), float(height_));
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, grid_->Id());
    glUniform1i(program.Uniform("uGrid"), 0);
    palette.Bind(GL_TEXTURE1);
    glUniform1i(program.Uniform("uPalette"), 1);
    glUniform1i(program.Uniform("uPaletteSize"), std::max(paletteSize, 1));
    glUniform4f(program.Uniform("uMapping"), float(p.mapping.ax), float(p.mapping.bx), float(p.mapping.ay),
                float(p.mapping.by));
    glUniform2f(program.Uniform("uZRange"), p.zMin, p.zMax);
    glUniform2f(program.Uniform("uLevels"), p.levelFirst, p.levelStep > 0 ? p.levelStep : 1.0f);
    glUniform2i(program.Uniform("uSize"), GridX(), GridY());
    if (p.contours) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    DrawQuad(p.rect);
    glDisable(GL_BLEND);
}

void FlatRenderer::DrawColorBar(const PixelRect& rect, const PaletteTexture& palette, int32_t paletteSize) {
    if (rect.right <= rect.left || rect.bottom <= rect.top) return;
    barProgram_.Use();
    glUniform2f(barProgram_.Uniform("uViewport"), float(width_), float(height_));
    palette.Bind(GL_TEXTURE1);
    glUniform1i(barProgram_.Uniform("uPalette"), 1);
    glUniform1i(barProgram_.Uniform("uPaletteSize"), std::max(paletteSize, 1));
    glUniform2f(barProgram_.Uniform("uRows"), float(rect.top), float(rect.bottom));
    DrawQuad(rect);
}

void FlatRenderer::Scissor(const PixelRect& rect) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(rect.left, height_ - rect.bottom, std::max(rect.right - rect.left, 0),
              std::max(rect.bottom - rect.top, 0));
}

void FlatRenderer::DrawLines(std::span<const FlatLine> lines, const PixelRect* clip) {
    if (lines.empty()) return;
    std::vector<Vertex> vertices;
    vertices.reserve(lines.size() * 6);
    for (const FlatLine& line : lines) AppendLine(vertices, line);
    lineProgram_.Use();
    glUniform2f(lineProgram_.Uniform("uViewport"), float(width_), float(height_));
    glBindBuffer(GL_ARRAY_BUFFER, lineVbo_.Id());
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(vertices.size() * sizeof(Vertex)), vertices.data(), GL_STREAM_DRAW);
    glBindVertexArray(lineVao_.Id());
    if (clip) Scissor(*clip);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDrawArrays(GL_TRIANGLES, 0, GLsizei(vertices.size()));
    glDisable(GL_BLEND);
    glDisable(GL_SCISSOR_TEST);
    glBindVertexArray(0);
}

void FlatRenderer::Finish(const ImageBuffer& target) { target_.ReadInto(target); }

}  // namespace vexplot
