#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "opengl/gl/EglContext.h"
#include "opengl/gl/GridTexture.h"
#include "opengl/gl/PaletteTexture.h"

namespace vexplot {

class TextPainter;

// What the engine's two surfaces share: the GL context, the palette (as
// colours and as a texture), the text painter and the grid last sent.
// Owned by the engine root; the surfaces borrow it for as long as the
// engine lives.
class EngineContext {
public:
    explicit EngineContext(TextPainter& text);
    ~EngineContext();
    EngineContext(const EngineContext&) = delete;
    EngineContext& operator=(const EngineContext&) = delete;

    // Null until Initialize succeeded.
    EglContext* Gl() const { return gl_.get(); }
    void SetGl(std::unique_ptr<EglContext> gl);

    // Makes the context current and uploads a palette set since the last
    // call; false when there is no context. Call before every GL sequence.
    bool MakeCurrent();

    // Replaces the palette colours (0x00BBGGRR, index 0 for the lowest
    // value); the texture follows at the next MakeCurrent. An empty list
    // is ignored.
    void SetPaletteColors(std::vector<uint32_t> colors);
    const std::vector<uint32_t>& PaletteColors() const { return paletteColors_; }
    // The palette texture, current as of the last MakeCurrent.
    const PaletteTexture& Palette() const { return palette_; }

    TextPainter& Text() const { return text_; }

    // The grid of `values` (as GridTexture::Upload) on the GPU: the one
    // handed out last when it is still held and holds the same values, so
    // that the 2-D device and the 3-D view fed the same grid share one
    // texture; a new upload otherwise. The context must be current. Throws
    // as GridTexture::Upload.
    std::shared_ptr<GridTexture> ShareGrid(const double* values, int32_t xCount, int32_t yCount);

    // Whether GL runs on the CPU (llvmpipe, softpipe): multisampling costs
    // such a renderer several times the frame, so surfaces skip it there.
    bool SoftwareRenderer() const;

    // A 1024-entry rainbow from blue to red, the palette before any is set.
    static std::vector<uint32_t> DefaultPalette();

private:
    std::unique_ptr<EglContext> gl_;
    PaletteTexture palette_;
    std::vector<uint32_t> paletteColors_;
    bool paletteDirty_ = true;
    TextPainter& text_;
    // Not an owner: the grid goes when the last surface drawing it lets go.
    std::weak_ptr<GridTexture> lastGrid_;
};

}  // namespace vexplot
