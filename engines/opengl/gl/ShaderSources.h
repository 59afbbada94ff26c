#pragma once

// GLSL sources of the engine's 3-D programs. Grid programs read heights
// from an R32F texture with texel (iy, ix) holding value (ix, iy) and build
// positions from gl_VertexID / gl_InstanceID, so no vertex buffer exists.
namespace vexplot::shaders {

// Shared by every grid program: fetching a node, the data-to-scene mapping,
// clipping to the visible box and the palette lookup.
inline constexpr const char* kGridCommon = R"(
uniform sampler2D heights;
uniform ivec2 counts;        // nodes of the level drawn: (x, y)
uniform ivec2 firstNode;     // first node drawn: (ix, iy)
uniform vec2 nodeScale;      // scene units per node step in x and y
uniform vec2 nodeOffset;     // scene position of node (0, 0)
uniform vec2 zMap;           // scene z = value * zMap.x + zMap.y (after the log)
uniform bool logZ;
uniform vec4 clipBox;        // scene x min, x max, y min, y max
uniform mat4 viewProjection;

bool IsValue(float v) { return (floatBitsToUint(v) & 0x7f800000u) != 0x7f800000u; }

// The value at a node, log10 when logZ (non-positive values become NaN).
float Value(ivec2 node) {
    node = clamp(node, ivec2(0), counts - 1);
    float v = texelFetch(heights, ivec2(node.y, node.x), 0).r;
    if (logZ) v = v > 0.0 ? log2(v) * 0.30102999566 : uintBitsToFloat(0x7fc00000u);
    return v;
}

vec3 ScenePosition(vec2 node, float value) {
    return vec3(node * nodeScale + nodeOffset, IsValue(value) ? value * zMap.x + zMap.y : 0.0);
}

void EmitPosition(vec3 scene) {
    gl_Position = viewProjection * vec4(scene, 1.0);
    gl_ClipDistance[0] = scene.x - clipBox.x;
    gl_ClipDistance[1] = clipBox.y - scene.x;
    gl_ClipDistance[2] = scene.y - clipBox.z;
    gl_ClipDistance[3] = clipBox.w - scene.y;
}
)";

inline constexpr const char* kPaletteCommon = R"(
uniform sampler1D palette;
uniform int paletteSize;
uniform vec2 valueRange;     // value at palette index 0 and at the last index (after the log)
vec3 PaletteColor(float value) {
    float t = clamp((value - valueRange.x) / max(valueRange.y - valueRange.x, 1e-30), 0.0, 1.0);
    return texture(palette, (t * float(paletteSize - 1) + 0.5) / float(paletteSize)).rgb;
}
)";

// Filled surface: one instanced triangle strip per row of cells. Each
// vertex also carries the cell to its -y side, which is the cell of both
// triangles it provokes (the last vertex of each strip triangle), so flat
// colour and the hole test come per cell through flat varyings.
inline constexpr const char* kSurfaceVertex = R"(
out float value;
out vec3 scenePosition;
flat out float cellValue;
flat out float cellValid;
void main() {
    int row = firstNode.x + gl_InstanceID;
    int side = gl_VertexID & 1;
    int iy = firstNode.y + (gl_VertexID >> 1);
    float a = Value(ivec2(row, iy - 1)), b = Value(ivec2(row + 1, iy - 1));
    float c = Value(ivec2(row, iy)), d = Value(ivec2(row + 1, iy));
    value = side == 0 ? c : d;
    bool valid = iy > 0 && iy < counts.y && row + 1 < counts.x && IsValue(a) && IsValue(b) && IsValue(c) && IsValue(d);
    cellValid = valid ? 1.0 : 0.0;
    cellValue = valid ? (a + b + c + d) * 0.25 : 0.0;
    if (!IsValue(value)) value = 0.0;
    scenePosition = ScenePosition(vec2(row + side, iy), value);
    EmitPosition(scenePosition);
}
)";

inline constexpr const char* kSurfaceFragment = R"(
in float value;
in vec3 scenePosition;
flat in float cellValue;
flat in float cellValid;
uniform bool smoothShading;
uniform vec3 lightDirection;
out vec4 color;
void main() {
    if (cellValid < 0.5) discard;
    vec3 base = PaletteColor(smoothShading ? value : cellValue);
    // Facet normal from the screen-space derivatives; a sliver can make
    // them parallel, and normalising a zero vector would give NaN.
    vec3 facet = cross(dFdx(scenePosition), dFdy(scenePosition));
    float length2 = dot(facet, facet);
    vec3 normal = length2 > 1e-30 ? facet * inversesqrt(length2) : lightDirection;
    float light = 0.5 + 0.5 * abs(dot(normal, lightDirection));
    color = vec4(base * light, 1.0);
}
)";

// Polylines through the nodes, instanced: each instance one line of nodes
// along y (alongX false) or along x (alongX true). A segment touching a hole
// interpolates `valid` below 1 and is discarded.
inline constexpr const char* kLineVertex = R"(
uniform bool alongX;
out float value;
out float valid;
void main() {
    ivec2 node = alongX ? ivec2(firstNode.x + gl_VertexID, firstNode.y + gl_InstanceID)
                        : ivec2(firstNode.x + gl_InstanceID, firstNode.y + gl_VertexID);
    float v = Value(node);
    valid = IsValue(v) ? 1.0 : 0.0;
    value = IsValue(v) ? v : 0.0;
    EmitPosition(ScenePosition(vec2(node), v));
}
)";

inline constexpr const char* kLineFragment = R"(
uniform bool meshLines;      // grid lines over a surface: dark, whatever the value
in float value;
in float valid;
out vec4 color;
void main() {
    if (valid < 0.999) discard;
    color = meshLines ? vec4(0.15, 0.15, 0.15, 1.0) : vec4(PaletteColor(value), 1.0);
}
)";

// One point per node; holes are moved outside the clip volume.
inline constexpr const char* kPointVertex = R"(
uniform int nodesPerRow;     // nodes drawn along y
uniform float pointSize;
out float value;
void main() {
    ivec2 node = firstNode + ivec2(gl_VertexID / nodesPerRow, gl_VertexID % nodesPerRow);
    float v = Value(node);
    value = IsValue(v) ? v : 0.0;
    EmitPosition(ScenePosition(vec2(node), v));
    if (!IsValue(v) || node.x >= counts.x || node.y >= counts.y) gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
    gl_PointSize = pointSize;
}
)";

// The symbol inside the point's square, from gl_PointCoord (0..1, y down).
inline constexpr const char* kPointFragment = R"(
uniform int symbol;          // PointStyle
in float value;
out vec4 color;
float Segment(vec2 p, vec2 a, vec2 b) {
    vec2 ab = b - a;
    float t = clamp(dot(p - a, ab) / dot(ab, ab), 0.0, 1.0);
    return length(p - a - ab * t);
}
void main() {
    vec2 p = gl_PointCoord * 2.0 - 1.0;
    float w = 0.3;
    bool inside = true;
    if (symbol == 1) inside = dot(p, p) <= 1.0;
    else if (symbol == 3) inside = Segment(p, vec2(-1), vec2(1)) < w || Segment(p, vec2(-1, 1), vec2(1, -1)) < w;
    else if (symbol == 4) inside = abs(p.x) < w || abs(p.y) < w;
    else if (symbol == 5) inside = p.y <= 1.0 && abs(p.x) <= (p.y + 1.0) * 0.5;
    else if (symbol == 6) inside = abs(p.x) < w || abs(p.y) < w || Segment(p, vec2(-0.8), vec2(0.8)) < w ||
                                   Segment(p, vec2(-0.8, 0.8), vec2(0.8, -0.8)) < w;
    if (!inside) discard;
    color = vec4(PaletteColor(value), 1.0);
}
)";

// Bar chart: a box of 30 vertices (top and four sides) per node.
inline constexpr const char* kBarVertex = R"(
uniform int nodesPerRow;
uniform float baseZ;         // scene z of the bars' foot
uniform vec3 eyePosition;    // scene coordinates
const ivec2 kCorner[6] = ivec2[6](ivec2(0, 0), ivec2(1, 0), ivec2(1, 1), ivec2(0, 0), ivec2(1, 1), ivec2(0, 1));
flat out float value;
flat out vec3 normal;
void main() {
    int box = gl_VertexID / 30;
    int face = (gl_VertexID % 30) / 6;
    ivec2 c = kCorner[gl_VertexID % 6];
    ivec2 node = firstNode + ivec2(box / nodesPerRow, box % nodesPerRow);
    float v = Value(node);
    value = IsValue(v) ? v : 0.0;
    vec3 centre = ScenePosition(vec2(node), v);
    vec2 halfSize = abs(nodeScale) * 0.4;
    float top = max(centre.z, baseZ), bottom = min(centre.z, baseZ);
    vec3 p;
    if (face == 0) { p = vec3(centre.xy + (vec2(c) * 2.0 - 1.0) * halfSize, top); normal = vec3(0, 0, 1); }
    else {
        // Sides: face 1 -x, 2 +x, 3 -y, 4 +y; c.x runs along the side, c.y up.
        float along = float(c.x) * 2.0 - 1.0;
        float z = c.y == 1 ? top : bottom;
        if (face <= 2) {
            float s = face == 1 ? -1.0 : 1.0;
            p = vec3(centre.x + s * halfSize.x, centre.y + along * halfSize.y, z);
            normal = vec3(s, 0, 0);
        } else {
            float s = face == 3 ? -1.0 : 1.0;
            p = vec3(centre.x + along * halfSize.x, centre.y + s * halfSize.y, z);
            normal = vec3(0, s, 0);
        }
    }
    EmitPosition(p);
    // Faces turned away from the eye are moved out of view: half the fill
    // of a software rasteriser, and most of the overdraw.
    vec3 faceCentre = face == 0 ? vec3(centre.xy, top) : p;
    bool away = dot(normal, eyePosition - faceCentre) < 0.0;
    if (!IsValue(v) || node.x >= counts.x || node.y >= counts.y || away) gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
)";

inline constexpr const char* kBarFragment = R"(
flat in float value;
flat in vec3 normal;
uniform vec3 lightDirection;
out vec4 color;
void main() {
    color = vec4(PaletteColor(value) * (0.5 + 0.5 * abs(dot(normal, lightDirection))), 1.0);
}
)";

// Coloured lines in scene coordinates (axes, grid lines, overlay).
inline constexpr const char* kColorLineVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 vertexColor;
uniform mat4 viewProjection;
out vec4 lineColor;
void main() {
    gl_Position = viewProjection * vec4(position, 1.0);
    lineColor = vec4(vertexColor.rgb, 1.0);  // the colour's fourth byte is unused, not alpha
}
)";

inline constexpr const char* kColorLineFragment = R"(#version 330 core
in vec4 lineColor;
out vec4 color;
void main() { color = lineColor; }
)";

// A triangle covering the viewport, for full-screen passes.
inline constexpr const char* kFullScreenVertex = R"(#version 330 core
void main() {
    vec2 p = vec2((gl_VertexID & 1) * 4 - 1, (gl_VertexID >> 1) * 4 - 1);
    gl_Position = vec4(p, 0.0, 1.0);
}
)";

// Reduces blocks of factor x factor texels to one value: the minimum or
// the maximum, whichever lies farther from the block's mean, so that peaks
// and pits survive. A block that is flat on the grid's scale (its range
// within `flatRange`) with both extremes about equally far from the mean is
// a gentle slope: it keeps its mean, since flipping between its extremes
// would saw-tooth the surface. Holes are skipped; an all-hole block stays
// a hole.
inline constexpr const char* kReduceFragment = R"(#version 330 core
uniform sampler2D source;
uniform int factor;
uniform ivec2 sourceSize;
uniform float flatRange;
out float extreme;
bool IsValue(float v) { return (floatBitsToUint(v) & 0x7f800000u) != 0x7f800000u; }
void main() {
    ivec2 origin = ivec2(gl_FragCoord.xy) * factor;
    ivec2 end = min(origin + factor, sourceSize);
    float lo = 3.4e38, hi = -3.4e38, sum = 0.0;
    int count = 0;
    for (int y = origin.y; y < end.y; ++y)
        for (int x = origin.x; x < end.x; ++x) {
            float v = texelFetch(source, ivec2(x, y), 0).r;
            if (!IsValue(v)) continue;
            lo = min(lo, v);
            hi = max(hi, v);
            sum += v;
            ++count;
        }
    if (count == 0) { extreme = uintBitsToFloat(0x7fc00000u); return; }
    float mean = sum / float(count);
    float lean = (hi - mean) - (mean - lo);
    bool slope = hi - lo <= flatRange && abs(lean) <= 0.25 * (hi - lo);
    extreme = slope ? mean : (lean >= 0.0 ? hi : lo);
}
)";

}  // namespace vexplot::shaders
