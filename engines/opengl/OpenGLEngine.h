#pragma once
#include <memory>
#include <string>

#include "com/ComObject.h"
#include "engine/IGraphEngine.h"
#include "engine/IGraphEngineInfo.h"

namespace vexplot {

class EngineContext;
class TextPainter;
class View3D;
class Device2D;

inline constexpr CLSID CLSID_OpenGLEngine = GUID::FromLiteral("{6A8F3D2C-5B1E-4C7A-9F0D-2E4B8C1A7D35}");

// The OpenGL graph engine's root: owns the context, the palette and the
// text painter that both surfaces share, and the two surfaces themselves.
//
// The surfaces borrow the engine's shared state, so the engine must outlive
// every use of them: when the engine goes, it frees the surfaces' GL
// objects, and a surface still referenced elsewhere answers E_UNEXPECTED.
class OpenGLEngine final : public ComObject<IGraphEngine, IGraphEngineInfo> {
public:
    OpenGLEngine();

    HRESULT GetName(char* buffer, uint32_t size) override;
    HRESULT GetCapabilities(uint32_t* flags) override;
    HRESULT Initialize() override;
    HRESULT SetPalette(uint32_t count, const uint32_t* colors) override;
    HRESULT GetDevice2D(IGraphDevice2D** device) override;
    HRESULT GetView3D(IGraphView3D** view) override;
    // IGraphEngineInfo:
    HRESULT GetRenderer(char* buffer, uint32_t size) override;

    // Why Initialize failed, "" when it did not.
    const std::string& InitializeError() const { return error_; }
    EngineContext& Context() { return *context_; }

private:
    ~OpenGLEngine() override;

    std::unique_ptr<TextPainter> text_;
    std::unique_ptr<EngineContext> context_;
    ComPtr<View3D> view_;
    ComPtr<IGraphDevice2D> device_;
    bool initialized_ = false;
    std::string error_;
};

}  // namespace vexplot
