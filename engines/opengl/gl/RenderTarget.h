#pragma once
#include <cstdint>
#include <vector>

#include "engine/IGraphEngine.h"
#include "opengl/gl/GlObject.h"

namespace vexplot {

// An off-screen framebuffer with an RGBA8 colour and a 24-bit depth buffer,
// optionally multisampled (then a single-sampled resolve framebuffer takes
// the picture before it is read back). The context must be current for
// every call.
class RenderTarget {
public:
    // Makes the buffers `width` x `height` with `samples` samples per pixel
    // (1 or less: none); reallocates only when one of them changed. Samples
    // are capped at what the driver offers.
    void Ensure(int32_t width, int32_t height, int32_t samples);
    // Binds the framebuffer to draw into and sets the viewport to it.
    void Bind();
    // Resolves the samples when multisampled and reads the picture into
    // `target` (top row first), at most target's width and height; the
    // fourth byte of every pixel is written 0.
    void ReadInto(const ImageBuffer& target);

    // The depth buffer (window depth 0 near .. 1 far, rows bottom-up),
    // resolved when multisampled; leaves the framebuffer bound for drawing.
    void ReadDepth(std::vector<float>& depth);

    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    int32_t Samples() const { return samples_; }

private:
    void Allocate();

    int32_t width_ = 0;
    int32_t height_ = 0;
    int32_t samples_ = 0;
    GlFramebuffer framebuffer_;
    GlRenderbuffer color_;
    GlRenderbuffer depth_;
    GlFramebuffer resolveFramebuffer_;
    GlRenderbuffer resolveColor_;
    GlRenderbuffer resolveDepth_;
};

}  // namespace vexplot
