#pragma once
#include <cstdint>

#include "engine/IGraphEngine.h"

namespace vexplot {

// A point of an exported scene in the scene's pixels: x right, y down, the
// origin at the top left corner.
struct ScenePoint {
    float x;
    float y;
};
static_assert(sizeof(ScenePoint) == 8);

// Where a text stands relative to its point (the values of the engine's
// text anchors): the first row names the top edge, the last the bottom.
enum class SceneAnchor : int32_t {
    TopLeft = 0, Top, TopRight, Left, Center, Right, BottomLeft, Bottom, BottomRight
};

// Receives the primitives of a scene in drawing order: each one covers the
// ones before it. Texts and pixels are only read during the call. Colours
// are 0x00BBGGRR.
class ISceneSink {
public:
    // A closed polygon filled with `fill`; outlined with `stroke` at
    // `strokeWidth` pixels when strokeWidth > 0.
    virtual void AddPolygon(uint32_t count, const ScenePoint* points, uint32_t fill, uint32_t stroke,
                            float strokeWidth) = 0;
    // An open polyline `width` pixels wide.
    virtual void AddPolyline(uint32_t count, const ScenePoint* points, uint32_t color, float width) = 0;
    // UTF-8 text anchored at (x, y); the font's height is in scene pixels,
    // its escapement turns the text about the anchor point.
    virtual void AddText(const char* text, float x, float y, SceneAnchor anchor, const FontDescription* font,
                         uint32_t color) = 0;
    // Pixels stretched over the rectangle (left, top, width, height).
    virtual void AddImage(float left, float top, float width, float height, const ImageBuffer* pixels) = 0;

protected:
    ~ISceneSink() = default;
};

// The view as a drawing rather than pixels, for vector files, the clipboard
// and printers; and raster renders larger than one framebuffer. Obtained by
// QueryInterface from the engine's 3-D view and from its 2-D device.
class IGraphSceneExport : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{5B0C6E1D-4F3A-4C7E-9A21-3D8E5F60B7C4}");

    // Hands `sink` the current view at width x height scene pixels, back
    // to front: the 3-D surfaces as polygons sorted by depth, so that a
    // painter's drawing hides what the screen hides, with cells merged
    // where that does not change the picture; lines as polylines; every
    // text as text. A flat palette image comes as pixels.
    virtual HRESULT BuildScene(int32_t width, int32_t height, ISceneSink* sink) = 0;  // slot 3
    // Renders the part of a picture of fullWidth x fullHeight pixels whose
    // top left pixel is (left, top) into `tile` (at the tile's size), the
    // same pixels a render of the whole picture would have there.
    virtual HRESULT RenderTile(const ImageBuffer* tile, int32_t fullWidth, int32_t fullHeight, int32_t left,
                               int32_t top) = 0;  // slot 4
    // The largest width and height one render can have on this device.
    virtual HRESULT GetMaxRenderSize(int32_t* size) = 0;  // slot 5

protected:
    ~IGraphSceneExport() = default;
};

}  // namespace vexplot
