#pragma once
#include <memory>
#include <string>

#include <EGL/egl.h>

namespace vexplot {

// An OpenGL 3.3 core context without any window surface: every surface of
// the engine renders into its own framebuffer object and reads the pixels
// back, so the context works on a headless machine as well as on a desktop.
class EglContext {
public:
    // Tries the EGL device platform (first device that gives a context),
    // Mesa's surfaceless platform, then the default display. Null with
    // `error` set when none of them gives a 3.3 core context.
    static std::unique_ptr<EglContext> Create(std::string& error);
    ~EglContext();
    EglContext(const EglContext&) = delete;
    EglContext& operator=(const EglContext&) = delete;

    // Makes the context current on the calling thread; call before every
    // sequence of GL calls (several engines may live in one process).
    bool MakeCurrent();
    // The renderer and the platform, e.g. "llvmpipe (LLVM 15.0.6, 256 bits), surfaceless".
    const std::string& Description() const { return description_; }

private:
    EglContext(EGLDisplay display, EGLContext context, std::string description);

    EGLDisplay display_;
    EGLContext context_;
    std::string description_;
};

}  // namespace vexplot
