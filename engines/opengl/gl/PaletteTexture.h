#pragma once
#include <GL/glcorearb.h>

#include <cstdint>
#include <span>
#include <vector>

#include "opengl/gl/GlObject.h"

namespace vexplot {

// The engine's palette as a 1-D RGBA8 texture (linear filter, clamped to
// its edges): texture coordinate 0 is the lowest value's colour, 1 the
// highest's. Shared by both surfaces so that they always agree.
class PaletteTexture {
public:
    // Uploads `colors` (0x00BBGGRR each, at least one); the context must be
    // current. Raises the version.
    void Set(std::span<const uint32_t> colors);
    // Binds the texture as GL_TEXTURE_1D to `unit` (GL_TEXTURE0 + n).
    void Bind(GLenum unit) const;
    // Changes with every Set; 0 before the first.
    uint32_t Version() const { return version_; }
    bool Empty() const { return !texture_; }

private:
    GlTexture texture_;
    uint32_t version_ = 0;
};

}  // namespace vexplot
