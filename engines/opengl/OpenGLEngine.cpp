#include "opengl/OpenGLEngine.h"

#include <cstring>
#include <stdexcept>

#include "opengl/gl/EglContext.h"
#include "opengl/gl/EngineContext.h"
#include "opengl/text/TextPainter.h"
#include "opengl/view3d/View3D.h"

#if __has_include("opengl/flat/Device2D.h")
#include "opengl/flat/Device2D.h"
#define VEXPLOT_HAVE_DEVICE2D 1
#endif

namespace vexplot {

OpenGLEngine::OpenGLEngine()
    : text_(std::make_unique<TextPainter>()), context_(std::make_unique<EngineContext>(*text_)) {}

OpenGLEngine::~OpenGLEngine() {
    // GL objects of the surfaces go while the context is still there.
    if (view_) view_->Shutdown();
#ifdef VEXPLOT_HAVE_DEVICE2D
    if constexpr (requires(Device2D& d) { d.Shutdown(); }) {
        if (device_) static_cast<Device2D*>(device_.Get())->Shutdown();
    }
#endif
}

HRESULT OpenGLEngine::GetName(char* buffer, uint32_t size) {
    static constexpr char kName[] = "OpenGL";
    if (!buffer) return E_POINTER;
    if (size < sizeof(kName)) return E_INVALIDARG;
    std::memcpy(buffer, kName, sizeof(kName));
    return S_OK;
}

HRESULT OpenGLEngine::GetRenderer(char* buffer, uint32_t size) {
    if (!buffer) return E_POINTER;
    if (!context_->Gl()) return E_FAIL;
    const std::string& text = context_->Gl()->Description();
    if (size <= text.size()) return E_INVALIDARG;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return S_OK;
}

HRESULT OpenGLEngine::GetCapabilities(uint32_t* flags) {
    if (!flags) return E_POINTER;
    *flags = kEngineRenderToImage;
    if (context_->Gl() && !context_->SoftwareRenderer()) *flags |= kEngineHardware;
    return S_OK;
}

HRESULT OpenGLEngine::Initialize() {
    if (initialized_) return context_->Gl() ? S_OK : E_FAIL;
    initialized_ = true;
    std::unique_ptr<EglContext> gl = EglContext::Create(error_);
    if (!gl) return E_FAIL;
    context_->SetGl(std::move(gl));
    if (!context_->MakeCurrent()) {
        error_ = "the context cannot be made current";
        context_->SetGl(nullptr);
        return E_FAIL;
    }
    try {
        view_ = MakeComObject<View3D>(*context_);
#ifdef VEXPLOT_HAVE_DEVICE2D
        device_ = ComPtr<IGraphDevice2D>(MakeComObject<Device2D>(*context_).Get());
#endif
    } catch (const std::exception& e) {
        error_ = e.what();
        view_.Reset();
        device_.Reset();
        context_->SetGl(nullptr);
        return E_FAIL;
    }
    return S_OK;
}

HRESULT OpenGLEngine::SetPalette(uint32_t count, const uint32_t* colors) {
    if (count == 0) return E_INVALIDARG;
    if (!colors) return E_POINTER;
    context_->SetPaletteColors(std::vector<uint32_t>(colors, colors + count));
    return S_OK;
}

HRESULT OpenGLEngine::GetDevice2D(IGraphDevice2D** device) {
    if (!device) return E_POINTER;
    *device = device_.Get();
    if (!*device) return context_->Gl() ? E_NOTIMPL : E_FAIL;
    (*device)->AddRef();
    return S_OK;
}

HRESULT OpenGLEngine::GetView3D(IGraphView3D** view) {
    if (!view) return E_POINTER;
    *view = view_.Get();
    if (!*view) return E_FAIL;
    (*view)->AddRef();
    return S_OK;
}

}  // namespace vexplot
