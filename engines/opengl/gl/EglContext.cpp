#include "opengl/gl/EglContext.h"

#include <EGL/eglext.h>
#include <GL/glcorearb.h>

#include <vector>

namespace vexplot {

namespace {

template <class F>
F Proc(const char* name) {
    return reinterpret_cast<F>(eglGetProcAddress(name));
}

bool HasExtension(EGLDisplay display, const char* name) {
    const char* list = eglQueryString(display, EGL_EXTENSIONS);
    if (!list) return false;
    const std::string_view all(list), wanted(name);
    for (size_t at = all.find(wanted); at != std::string_view::npos; at = all.find(wanted, at + 1)) {
        const size_t end = at + wanted.size();
        if ((at == 0 || all[at - 1] == ' ') && (end == all.size() || all[end] == ' ')) return true;
    }
    return false;
}

// A 3.3 core context on an initialised display, or EGL_NO_CONTEXT. Displays
// are never terminated: an EGL display is shared by every context of the
// process, and terminating it would pull it from under other engines.
EGLContext CreateCoreContext(EGLDisplay display) {
    EGLint major = 0, minor = 0;
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor)) return EGL_NO_CONTEXT;
    if (!HasExtension(display, "EGL_KHR_surfaceless_context") || !eglBindAPI(EGL_OPENGL_API)) return EGL_NO_CONTEXT;
    const EGLint configAttributes[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    const bool haveConfig = eglChooseConfig(display, configAttributes, &config, 1, &count) && count > 0;
    const EGLint contextAttributes[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 3,
                                        EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                        EGL_NONE};
    return eglCreateContext(display, haveConfig ? config : EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, contextAttributes);
}

}  // namespace

std::unique_ptr<EglContext> EglContext::Create(std::string& error) {
    struct Candidate {
        EGLDisplay display;
        const char* platform;
    };
    std::vector<Candidate> candidates;
    const bool clientExtensions = HasExtension(EGL_NO_DISPLAY, "EGL_EXT_platform_base");
    auto getPlatformDisplay = clientExtensions ? Proc<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT")
                                               : nullptr;
    if (getPlatformDisplay && HasExtension(EGL_NO_DISPLAY, "EGL_EXT_platform_device")) {
        auto queryDevices = Proc<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
        EGLint count = 0;
        if (queryDevices && queryDevices(0, nullptr, &count) && count > 0) {
            std::vector<EGLDeviceEXT> devices(static_cast<size_t>(count));
            if (queryDevices(count, devices.data(), &count)) {
                for (EGLint i = 0; i < count; ++i)
                    candidates.push_back({getPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[static_cast<size_t>(i)],
                                                             nullptr),
                                          "device"});
            }
        }
    }
    if (getPlatformDisplay && HasExtension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless"))
        candidates.push_back({getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr),
                              "surfaceless"});
    candidates.push_back({eglGetDisplay(EGL_DEFAULT_DISPLAY), "default display"});

    for (const Candidate& candidate : candidates) {
        EGLContext context = CreateCoreContext(candidate.display);
        if (context == EGL_NO_CONTEXT) continue;
        if (!eglMakeCurrent(candidate.display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
            eglDestroyContext(candidate.display, context);
            continue;
        }
        const auto* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
        std::string description = renderer ? renderer : "unknown renderer";
        description += ", ";
        description += candidate.platform;
        return std::unique_ptr<EglContext>(new EglContext(candidate.display, context, std::move(description)));
    }
    error = "no EGL display gives an OpenGL 3.3 core context without a surface";
    return nullptr;
}

EglContext::EglContext(EGLDisplay display, EGLContext context, std::string description)
    : display_(display), context_(context), description_(std::move(description)) {}

EglContext::~EglContext() {
    if (eglGetCurrentContext() == context_) eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);
}

bool EglContext::MakeCurrent() {
    if (eglGetCurrentContext() == context_) return true;
    return eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_) == EGL_TRUE;
}

}  // namespace vexplot
