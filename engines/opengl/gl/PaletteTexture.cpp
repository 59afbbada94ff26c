#include "opengl/gl/PaletteTexture.h"

namespace vexplot {

void PaletteTexture::Set(std::span<const uint32_t> colors) {
    if (colors.empty()) return;
    if (!texture_) texture_ = GlTexture::Create();
    glBindTexture(GL_TEXTURE_1D, texture_.Id());
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    // 0x00BBGGRR in memory is the bytes R, G, B, 0: GL_RGBA order exactly.
    glTexImage1D(GL_TEXTURE_1D, 0, GL_RGBA8, static_cast<GLsizei>(colors.size()), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 colors.data());
    glBindTexture(GL_TEXTURE_1D, 0);
    ++version_;
}

void PaletteTexture::Bind(GLenum unit) const {
    glActiveTexture(unit);
    glBindTexture(GL_TEXTURE_1D, texture_.Id());
}

}  // namespace vexplot
