#pragma once
#include <cstdint>
#include <mutex>
#include <string_view>
#include <vector>

#include "engine/IGraphEngine.h"
#include "opengl/text/FontResolver.h"
#include "opengl/text/GlyphCache.h"
#include "opengl/text/TextBlender.h"

namespace vexplot {

// Draws texts on the CPU into pixels read back from the GPU (0x00BBGGRR, top
// row first): anti-aliased FreeType glyphs blended by coverage in linear
// light, with kerning, UTF-8 input, rotation by the font's escapement, bold
// and italic (synthesised when the system has no such face) and the \SUP
// markup, which turns the rest of the text into a raised, smaller
// superscript ("2.5x10\SUP-3"). Glyphs are cached, so drawing the same tick
// texts every frame costs only the blending.
//
// font.height: a negative value is the character (em) height in pixels, a
// positive one the cell height (ascent + descent) as in a Windows LOGFONT;
// 0 means 12 pixels. An unknown face falls back to the system's sans-serif
// face. Safe to call from several threads (calls are serialised).
class TextPainter {
public:
    enum class Anchor { TopLeft, Top, TopRight, Left, Center, Right, BottomLeft, Bottom, BottomRight };
    // The unrotated text's box in pixels: width along the baseline, height =
    // ascent + descent, ascent above the baseline (including a superscript).
    struct Extent {
        int32_t width, height, ascent;
    };

    TextPainter();
    ~TextPainter();
    TextPainter(const TextPainter&) = delete;
    TextPainter& operator=(const TextPainter&) = delete;

    Extent Measure(std::string_view utf8, const FontDescription& font);
    // The axis-aligned box the text covers once rotated by font.escapement:
    // width and height on the screen (for 900 the Extent's height and width).
    Extent MeasureRotated(std::string_view utf8, const FontDescription& font);
    // Draws the text so that the anchor point of its rotated box lies at
    // (x, y) in target pixels; whatever falls outside the target is clipped.
    void Draw(const ImageBuffer& target, std::string_view utf8, int32_t x, int32_t y, Anchor anchor,
              const FontDescription& font, uint32_t color);

private:
    struct Placed {
        const GlyphCache::Glyph* glyph;
        double x;  // pen position along the baseline, pixels
        double y;  // baseline offset, pixels upward
    };
    struct Layout {
        std::vector<Placed> glyphs;
        Extent extent{0, 0, 0};
    };
    struct Box {
        double minX, minY, maxX, maxY;  // screen offsets (y down) of the rotated box from the origin
    };

    // A description resolved to a sized face, with its line metrics.
    struct OpenedFont {
        FontDescription description;  // face bytes after the terminator zeroed, for comparison
        bool superscript;
        GlyphCache::Font font;
        GlyphCache::Metrics metrics;
    };

    Layout Lay(std::string_view utf8, const FontDescription& font);
    void LayRun(std::string_view utf8, const GlyphCache::Font& font, double& pen, double rise, Layout& layout);
    // Served from a short list: a frame uses a handful of fonts many times.
    const OpenedFont& OpenFont(const FontDescription& font, bool superscript);
    GlyphCache::Font Resolve(const FontDescription& font, double scale);
    static Box RotatedBox(const Extent& extent, int32_t escapement);

    std::mutex mutex_;
    FontResolver resolver_;
    GlyphCache cache_;
    std::vector<OpenedFont> fonts_;
    TextBlender blender_;
};

}  // namespace vexplot
