#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "opengl/text/FontResolver.h"

namespace vexplot {

// FreeType faces and rendered glyph bitmaps. A face is opened once per font
// file; a glyph is rendered once per face, pixel size, rotation and style
// and then served from memory, so steady-state text drawing does no
// rasterising at all. Not thread-safe: the text painter serialises calls.
class GlyphCache {
public:
    // One font at one size: what a text run is laid out with.
    struct Font {
        int32_t face = -1;     // index of the opened face, -1 when none could be opened
        int32_t pixelSize = 0;  // em size in pixels
        int32_t escapement = 0;  // tenths of a degree counter-clockwise, 0..3599
        bool embolden = false;   // bold asked for, but the file's face is regular
        bool slant = false;      // italic asked for, but the file's face is upright
    };
    // Line metrics of a font in pixels (rounded outwards).
    struct Metrics {
        int32_t ascent = 0;
        int32_t descent = 0;  // positive, below the baseline
    };
    // A rendered glyph: 8-bit coverage, rows top first. left/top place the
    // bitmap relative to the pen position (y up); advance is the unrotated
    // pen advance in 1/64 pixel.
    struct Glyph {
        int32_t left = 0;
        int32_t top = 0;
        int32_t width = 0;
        int32_t rows = 0;
        int32_t advance = 0;
        std::vector<uint8_t> coverage;
    };

    GlyphCache();
    ~GlyphCache();
    GlyphCache(const GlyphCache&) = delete;
    GlyphCache& operator=(const GlyphCache&) = delete;

    // The font for a resolved file at an em size; pixelSize is clamped to 1..1000.
    Font Open(const FontResolver::FontFile& file, int32_t pixelSize, int32_t escapement, bool bold, bool italic);
    // The em size whose ascent + descent fill `cellHeight` pixels.
    int32_t EmSizeForCell(const FontResolver::FontFile& file, int32_t cellHeight);
    Metrics GetMetrics(const Font& font);
    uint32_t GlyphIndex(const Font& font, char32_t codepoint);
    // Kerning between two glyph indices in 1/64 pixel along the baseline.
    int32_t Kerning(const Font& font, uint32_t left, uint32_t right);
    // Null when the glyph cannot be rendered; the pointer stays valid until
    // the cache is destroyed.
    const Glyph* GetGlyph(const Font& font, uint32_t glyphIndex);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace vexplot
