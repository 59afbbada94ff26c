// The flat view as a drawing: the palette image and the colour bar stay
// pixels (they are images); the axes, grid lines and a section's curve
// become lines, the texts text on top of them, the annotations last.
#include <algorithm>
#include <cstring>

#include "opengl/flat/Device2D.h"
#include "opengl/flat/FlatRenderer.h"
#include "opengl/gl/EngineContext.h"
#include "opengl/gl/TileWindow.h"
#include "opengl/text/SceneOverlayPen.h"

namespace vexplot {

HRESULT Device2D::GetMaxRenderSize(int32_t* size) {
    if (!size) return E_POINTER;
    if (!engine_ || !engine_->MakeCurrent()) return E_FAIL;
    GLint renderbuffer = 0, viewport[2] = {0, 0};
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &renderbuffer);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    *size = std::max<int32_t>(1, std::min({renderbuffer, viewport[0], viewport[1]}));
    return S_OK;
}

HRESULT Device2D::BuildScene(int32_t width, int32_t height, ISceneSink* sink) {
    if (!sink) return E_POINTER;
    if (width <= 0 || height <= 0) return E_INVALIDARG;
    if (!renderer_ || !engine_) return E_UNEXPECTED;
    if (!engine_->MakeCurrent()) return E_FAIL;
    try {
        std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
        const ImageBuffer image{pixels.data(), width, height, width, 0};
        const FlatLayout frame = FrameFor(image);
        renderer_->Begin(width, height, background_);
        FlatScene scene(engine_->Text(), PixelScale(frame.PixelRatio()));
        // The axes, grid lines and a section's curve and symbols become
        // lines of the drawing.
        if (HasGrid() && section_.mode != 0) RenderSection(frame, scene, false);
        else RenderFlat(frame, scene, false);
        renderer_->Finish(image);
        sink->AddImage(0, 0, float(width), float(height), &image);
        for (const FlatLine& line : scene.lines) {
            const ScenePoint ends[2] = {{line.x0, line.y0}, {line.x1, line.y1}};
            sink->AddPolyline(2, ends, line.color, line.width);
        }
        for (const FlatText& t : scene.texts)
            sink->AddText(t.text.c_str(), float(t.x), float(t.y), static_cast<SceneAnchor>(t.anchor), &t.font,
                          t.color);
        SceneOverlayPen pen(*sink, width, height, frame.PixelRatio());
        overlay_.Paint(pen, engine_->Text());
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return E_FAIL;
    }
    return S_OK;
}

HRESULT Device2D::RenderTile(const ImageBuffer* tile, int32_t fullWidth, int32_t fullHeight, int32_t left,
                             int32_t top) {
    if (!ValidTileWindow(tile, fullWidth, fullHeight, left, top)) return E_INVALIDARG;
    // The flat picture is cheap and its layout depends on the whole size:
    // it is rendered whole (kept by the frame cache between the tiles) and
    // the tile's window copied out.
    try {
        std::vector<uint32_t> full(static_cast<size_t>(fullWidth) * static_cast<size_t>(fullHeight));
        const ImageBuffer whole{full.data(), fullWidth, fullHeight, fullWidth, tile->pixelRatio};
        if (const HRESULT hr = Render(whole, FrameFor(whole)); FAILED(hr)) return hr;
        for (int32_t y = 0; y < tile->height; ++y)
            std::memcpy(tile->pixels + static_cast<size_t>(y) * static_cast<size_t>(tile->stride),
                        full.data() + static_cast<size_t>(top + y) * static_cast<size_t>(fullWidth) + size_t(left),
                        static_cast<size_t>(tile->width) * sizeof(uint32_t));
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

}  // namespace vexplot
