#include "opengl/text/TextPainter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <string>

namespace vexplot {

namespace {

constexpr std::string_view kSuperscript = "\\SUP";
constexpr double kSuperscriptScale = 0.7;  // superscript em size relative to the text's
constexpr double kSuperscriptRise = 0.45;  // baseline shift in units of the text's ascent
constexpr int32_t kDefaultHeight = 12;

// Decodes one UTF-8 sequence at `pos`; malformed input yields U+FFFD and
// advances by one byte, so any byte string terminates.
char32_t NextCodePoint(std::string_view s, size_t& pos) {
    const auto byte = [&](size_t i) { return uint8_t(s[i]); };
    const uint8_t lead = byte(pos);
    int length = 0;
    char32_t cp = 0;
    if (lead < 0x80) {
        ++pos;
        return lead;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2, cp = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, cp = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, cp = lead & 0x07;
    } else {
        ++pos;
        return 0xFFFD;
    }
    if (pos + size_t(length) > s.size()) {
        ++pos;
        return 0xFFFD;
    }
    for (int i = 1; i < length; ++i) {
        const uint8_t next = byte(pos + size_t(i));
        if ((next & 0xC0) != 0x80) {
            ++pos;
            return 0xFFFD;
        }
        cp = (cp << 6) | (next & 0x3F);
    }
    pos += size_t(length);
    return cp;
}

void BlendGlyph(const ImageBuffer& target, const GlyphCache::Glyph& glyph, int32_t left, int32_t top,
                TextBlender& blender) {
    const int32_t x0 = std::max(left, 0), x1 = std::min(left + glyph.width, target.width);
    const int32_t y0 = std::max(top, 0), y1 = std::min(top + glyph.rows, target.height);
    if (x0 >= x1 || y0 >= y1) return;
    for (int32_t y = y0; y < y1; ++y) {
        const uint8_t* cov = glyph.coverage.data() + std::ptrdiff_t(y - top) * glyph.width - left;
        uint32_t* row = target.pixels + std::ptrdiff_t(y) * target.stride;
        for (int32_t x = x0; x < x1; ++x)
            if (const uint32_t a = cov[x]) row[x] = blender.Blend(row[x], a);
    }
}

}  // namespace

TextPainter::TextPainter() = default;

TextPainter::~TextPainter() = default;

GlyphCache::Font TextPainter::Resolve(const FontDescription& font, double scale) {
    const std::string face(font.face, strnlen(font.face, sizeof(font.face)));
    const bool bold = font.weight >= 600;
    const bool italic = font.italic != 0;
    const FontResolver::FontFile file = resolver_.Resolve(face, font.weight, italic);
    int32_t em = kDefaultHeight;
    if (font.height < 0) em = -font.height;
    else if (font.height > 0) em = cache_.EmSizeForCell(file, font.height);
    em = std::max(1, int32_t(std::lround(em * scale)));
    return cache_.Open(file, em, font.escapement, bold, italic);
}

const TextPainter::OpenedFont& TextPainter::OpenFont(const FontDescription& font, bool superscript) {
    FontDescription key{};
    std::memcpy(&key, &font, sizeof(key));
    const size_t length = strnlen(font.face, sizeof(font.face));
    std::memset(key.face + length, 0, sizeof(key.face) - length);
    for (const OpenedFont& f : fonts_)
        if (f.superscript == superscript && std::memcmp(&f.description, &key, sizeof(key)) == 0) return f;
    constexpr size_t kMaxFonts = 64;
    if (fonts_.size() >= kMaxFonts) fonts_.erase(fonts_.begin());
    const GlyphCache::Font opened = Resolve(key, superscript ? kSuperscriptScale : 1.0);
    fonts_.push_back(OpenedFont{key, superscript, opened, cache_.GetMetrics(opened)});
    return fonts_.back();
}

void TextPainter::LayRun(std::string_view utf8, const GlyphCache::Font& font, double& pen, double rise,
                         Layout& layout) {
    uint32_t previous = 0;
    for (size_t pos = 0; pos < utf8.size();) {
        const char32_t cp = NextCodePoint(utf8, pos);
        const uint32_t index = cache_.GlyphIndex(font, cp);
        pen += cache_.Kerning(font, previous, index) / 64.0;
        const GlyphCache::Glyph* glyph = cache_.GetGlyph(font, index);
        if (!glyph) continue;
        layout.glyphs.push_back(Placed{glyph, pen, rise});
        pen += glyph->advance / 64.0;
        previous = index;
    }
}

TextPainter::Layout TextPainter::Lay(std::string_view utf8, const FontDescription& font) {
    Layout layout;
    const size_t split = utf8.find(kSuperscript);
    const std::string_view base = utf8.substr(0, split);
    const OpenedFont main = OpenFont(font, false);
    const GlyphCache::Metrics metrics = main.metrics;
    double pen = 0.0;
    LayRun(base, main.font, pen, 0.0, layout);
    int32_t ascent = metrics.ascent;
    if (split != std::string_view::npos) {
        const OpenedFont& sup = OpenFont(font, true);
        const double rise = std::round(metrics.ascent * kSuperscriptRise);
        LayRun(utf8.substr(split + kSuperscript.size()), sup.font, pen, rise, layout);
        ascent = std::max(ascent, int32_t(rise) + sup.metrics.ascent);
    }
    layout.extent = Extent{int32_t(std::ceil(pen)), ascent + metrics.descent, ascent};
    return layout;
}

TextPainter::Box TextPainter::RotatedBox(const Extent& extent, int32_t escapement) {
    const double angle = escapement * std::numbers::pi / 1800.0;
    const double c = std::cos(angle), s = std::sin(angle);
    const double xs[2] = {0.0, double(extent.width)};
    const double ys[2] = {double(extent.ascent), double(extent.ascent - extent.height)};
    Box box{1e300, 1e300, -1e300, -1e300};
    for (double x : xs) {
        for (double y : ys) {
            // Counter-clockwise in y-up text space, then y flipped for the screen.
            const double sx = x * c - y * s;
            const double sy = -(x * s + y * c);
            box.minX = std::min(box.minX, sx), box.maxX = std::max(box.maxX, sx);
            box.minY = std::min(box.minY, sy), box.maxY = std::max(box.maxY, sy);
        }
    }
    return box;
}

TextPainter::Extent TextPainter::Measure(std::string_view utf8, const FontDescription& font) {
    std::lock_guard lock(mutex_);
    return Lay(utf8, font).extent;
}

TextPainter::Extent TextPainter::MeasureRotated(std::string_view utf8, const FontDescription& font) {
    std::lock_guard lock(mutex_);
    const Extent extent = Lay(utf8, font).extent;
    const Box box = RotatedBox(extent, font.escapement);
    const int32_t w = int32_t(std::lround(box.maxX - box.minX));
    const int32_t h = int32_t(std::lround(box.maxY - box.minY));
    return Extent{w, h, int32_t(std::lround(-box.minY))};
}

void TextPainter::Draw(const ImageBuffer& target, std::string_view utf8, int32_t x, int32_t y, Anchor anchor,
                       const FontDescription& font, uint32_t color) {
    if (!target.pixels || target.width <= 0 || target.height <= 0 || utf8.empty()) return;
    std::lock_guard lock(mutex_);
    const Layout layout = Lay(utf8, font);
    const Box box = RotatedBox(layout.extent, font.escapement);
    const int column = int(anchor) % 3, line = int(anchor) / 3;
    const double ax = column == 0 ? box.minX : column == 1 ? (box.minX + box.maxX) / 2 : box.maxX;
    const double ay = line == 0 ? box.minY : line == 1 ? (box.minY + box.maxY) / 2 : box.maxY;
    const double ox = x - ax, oy = y - ay;
    const double angle = font.escapement * std::numbers::pi / 1800.0;
    const double c = std::cos(angle), s = std::sin(angle);
    blender_.SetColor(color);
    for (const Placed& p : layout.glyphs) {
        const double gx = ox + p.x * c - p.y * s;
        const double gy = oy - (p.x * s + p.y * c);
        const int32_t px = int32_t(std::lround(gx)), py = int32_t(std::lround(gy));
        BlendGlyph(target, *p.glyph, px + p.glyph->left, py - p.glyph->top, blender_);
    }
}

}  // namespace vexplot
