#include "opengl/gl/RenderTarget.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace vexplot {

void RenderTarget::Ensure(int32_t width, int32_t height, int32_t samples) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    GLint maxSamples = 1;
    glGetIntegerv(GL_MAX_SAMPLES, &maxSamples);
    samples = std::clamp(samples, 1, std::max(maxSamples, 1));
    if (framebuffer_ && width == width_ && height == height_ && samples == samples_) return;
    width_ = width;
    height_ = height;
    samples_ = samples;
    Allocate();
}

void RenderTarget::Allocate() {
    framebuffer_ = GlFramebuffer::Create();
    color_ = GlRenderbuffer::Create();
    depth_ = GlRenderbuffer::Create();
    const GLsizei samples = samples_ > 1 ? samples_ : 0;
    glBindRenderbuffer(GL_RENDERBUFFER, color_.Id());
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, width_, height_);
    glBindRenderbuffer(GL_RENDERBUFFER, depth_.Id());
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH_COMPONENT24, width_, height_);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_.Id());
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, color_.Id());
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth_.Id());
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        throw std::runtime_error("the off-screen framebuffer is incomplete");

    resolveFramebuffer_.Reset();
    resolveColor_.Reset();
    resolveDepth_.Reset();
    if (samples_ > 1) {
        resolveFramebuffer_ = GlFramebuffer::Create();
        resolveColor_ = GlRenderbuffer::Create();
        resolveDepth_ = GlRenderbuffer::Create();
        glBindRenderbuffer(GL_RENDERBUFFER, resolveColor_.Id());
        glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width_, height_);
        glBindRenderbuffer(GL_RENDERBUFFER, resolveDepth_.Id());
        glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, width_, height_);
        glBindFramebuffer(GL_FRAMEBUFFER, resolveFramebuffer_.Id());
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, resolveColor_.Id());
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, resolveDepth_.Id());
    }
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
}

void RenderTarget::Bind() {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_.Id());
    glViewport(0, 0, width_, height_);
}

void RenderTarget::ReadInto(const ImageBuffer& target) {
    GLuint source = framebuffer_.Id();
    if (samples_ > 1) {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer_.Id());
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolveFramebuffer_.Id());
        glBlitFramebuffer(0, 0, width_, height_, 0, 0, width_, height_, GL_COLOR_BUFFER_BIT, GL_NEAREST);
        source = resolveFramebuffer_.Id();
    }
    glBindFramebuffer(GL_READ_FRAMEBUFFER, source);
    const int32_t width = std::min(width_, target.width);
    const int32_t height = std::min(height_, target.height);
    if (width <= 0 || height <= 0) return;
    // GL's rows run bottom-up: read them with the target's stride into
    // the target, then swap rows in place.
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, target.stride);
    glReadPixels(0, height_ - height, width, height, GL_RGBA, GL_UNSIGNED_BYTE, target.pixels);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    const size_t stride = static_cast<size_t>(target.stride);
    std::vector<uint32_t> row(static_cast<size_t>(width));
    for (int32_t top = 0, bottom = height - 1; top < bottom; ++top, --bottom) {
        uint32_t* a = target.pixels + static_cast<size_t>(top) * stride;
        uint32_t* b = target.pixels + static_cast<size_t>(bottom) * stride;
        std::memcpy(row.data(), a, row.size() * 4);
        std::memcpy(a, b, row.size() * 4);
        std::memcpy(b, row.data(), row.size() * 4);
    }
    for (int32_t y = 0; y < height; ++y) {
        uint32_t* line = target.pixels + static_cast<size_t>(y) * stride;
        for (int32_t x = 0; x < width; ++x) line[x] &= 0x00FFFFFFu;
    }
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void RenderTarget::ReadDepth(std::vector<float>& depth) {
    GLuint source = framebuffer_.Id();
    if (samples_ > 1) {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer_.Id());
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolveFramebuffer_.Id());
        glBlitFramebuffer(0, 0, width_, height_, 0, 0, width_, height_, GL_DEPTH_BUFFER_BIT, GL_NEAREST);
        source = resolveFramebuffer_.Id();
    }
    depth.assign(static_cast<size_t>(width_) * static_cast<size_t>(height_), 1.0f);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, source);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, width_, height_, GL_DEPTH_COMPONENT, GL_FLOAT, depth.data());
    // Drawing goes on into the scene's framebuffer.
    Bind();
}

}  // namespace vexplot
