#include "opengl/gl/EngineContext.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace vexplot {

EngineContext::EngineContext(TextPainter& text) : paletteColors_(DefaultPalette()), text_(text) {}

EngineContext::~EngineContext() {
    // The palette texture belongs to the context: release it while current.
    if (gl_) gl_->MakeCurrent();
    palette_ = PaletteTexture();
}

void EngineContext::SetGl(std::unique_ptr<EglContext> gl) {
    gl_ = std::move(gl);
    paletteDirty_ = true;
}

bool EngineContext::MakeCurrent() {
    if (!gl_ || !gl_->MakeCurrent()) return false;
    if (paletteDirty_) {
        palette_.Set(paletteColors_);
        paletteDirty_ = false;
    }
    return true;
}

bool EngineContext::SoftwareRenderer() const {
    if (!gl_) return true;
    const std::string& description = gl_->Description();
    return description.find("llvmpipe") != std::string::npos || description.find("softpipe") != std::string::npos;
}

void EngineContext::SetPaletteColors(std::vector<uint32_t> colors) {
    if (colors.empty()) return;
    paletteColors_ = std::move(colors);
    paletteDirty_ = true;
}

std::shared_ptr<GridTexture> EngineContext::ShareGrid(const double* values, int32_t xCount, int32_t yCount) {
    // A graph object sends its grid to both surfaces in a row; the digest
    // pass is only paid when a grid of the same size is alive to share.
    if (std::shared_ptr<GridTexture> last = lastGrid_.lock();
        last && !last->SampledDown() && last->XCount() == xCount && last->YCount() == yCount &&
        last->Digest() == GridTexture::Fingerprint(values, size_t(xCount) * size_t(yCount)))
        return last;
    std::shared_ptr<GridTexture> grid = GridTexture::Upload(values, xCount, yCount);
    lastGrid_ = grid;
    return grid;
}

std::vector<uint32_t> EngineContext::DefaultPalette() {
    // Hue from 240 degrees (blue) down to 0 (red), full saturation.
    std::vector<uint32_t> colors(1024);
    for (size_t i = 0; i < colors.size(); ++i) {
        const double hue = 4.0 * (1.0 - static_cast<double>(i) / static_cast<double>(colors.size() - 1));
        auto channel = [&](double centre) {
            const double v = std::clamp(2.0 - std::fabs(hue - centre), 0.0, 1.0);
            return static_cast<uint32_t>(std::lround(v * 255.0));
        };
        // red peaks at hue 0 (and wraps), green at 2, blue at 4.
        const uint32_t r = std::max(channel(0.0), channel(6.0));
        colors[i] = r | (channel(2.0) << 8) | (channel(4.0) << 16);
    }
    return colors;
}

}  // namespace vexplot
