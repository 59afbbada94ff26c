#include "opengl/text/GlyphCache.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

namespace vexplot {

namespace {

// Slant of a synthesised italic: about 12 degrees, as FreeType's own
// FT_GlyphSlot_Oblique uses.
constexpr FT_Fixed kObliqueShear = 0x0366A;

// Key of one rendered glyph: face, size, rotation, style and glyph index
// packed into 64 bits (12 + 12 + 12 + 2 + 26 bits).
uint64_t GlyphKey(const GlyphCache::Font& font, uint32_t glyph) {
    return (uint64_t(uint32_t(font.face) & 0xFFF) << 52) | (uint64_t(uint32_t(font.pixelSize) & 0xFFF) << 40) |
           (uint64_t(uint32_t(font.escapement) & 0xFFF) << 28) | (uint64_t(font.embolden) << 27) |
           (uint64_t(font.slant) << 26) | (glyph & 0x3FFFFFF);
}

}  // namespace

struct GlyphCache::Impl {
    FT_Library library = nullptr;
    std::vector<FT_Face> faces;
    std::map<std::pair<std::string, int32_t>, int32_t> faceByFile;
    std::unordered_map<uint64_t, std::unique_ptr<Glyph>> glyphs;
    std::unordered_map<uint64_t, uint32_t> glyphIndices;  // (face, code point) -> glyph index
    std::unordered_map<uint64_t, int32_t> kerning;        // (face, size, left, right) -> 1/64 pixel
    int32_t sizedFace = -1;
    int32_t sizedPixels = 0;

    ~Impl() {
        for (FT_Face face : faces) FT_Done_Face(face);
        if (library) FT_Done_FreeType(library);
    }

    int32_t OpenFace(const FontResolver::FontFile& file) {
        if (!library || file.path.empty()) return -1;
        auto key = std::make_pair(file.path, file.index);
        if (auto it = faceByFile.find(key); it != faceByFile.end()) return it->second;
        FT_Face face = nullptr;
        int32_t id = -1;
        if (FT_New_Face(library, file.path.c_str(), file.index, &face) == 0) {
            if (face->charmap == nullptr) FT_Select_Charmap(face, FT_ENCODING_UNICODE);
            id = int32_t(faces.size());
            faces.push_back(face);
        }
        faceByFile.emplace(std::move(key), id);
        return id;
    }

    // FreeType keeps one active size per face; switch only on change.
    FT_Face Sized(const Font& font) {
        FT_Face face = faces[size_t(font.face)];
        if (sizedFace != font.face || sizedPixels != font.pixelSize) {
            FT_Set_Pixel_Sizes(face, 0, FT_UInt(font.pixelSize));
            sizedFace = font.face;
            sizedPixels = font.pixelSize;
        }
        return face;
    }

    static void SetTransform(FT_Face face, const Font& font) {
        const double angle = font.escapement * std::numbers::pi / 1800.0;
        const double c = std::cos(angle), s = std::sin(angle);
        const double shear = font.slant ? double(kObliqueShear) / 65536.0 : 0.0;
        // rotation * shear, where the shear maps (x, y) to (x + shear * y, y).
        FT_Matrix m;
        m.xx = FT_Fixed(std::lround(c * 65536.0));
        m.xy = FT_Fixed(std::lround((c * shear - s) * 65536.0));
        m.yx = FT_Fixed(std::lround(s * 65536.0));
        m.yy = FT_Fixed(std::lround((s * shear + c) * 65536.0));
        FT_Set_Transform(face, &m, nullptr);
    }

    std::unique_ptr<Glyph> Render(const Font& font, uint32_t glyphIndex) {
        FT_Face face = Sized(font);
        SetTransform(face, font);
        // Light hinting keeps horizontal metrics unhinted, which suits both
        // upright and rotated text.
        const FT_Int32 flags = FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP;
        if (FT_Load_Glyph(face, glyphIndex, flags) != 0) return nullptr;
        FT_GlyphSlot slot = face->glyph;
        auto glyph = std::make_unique<Glyph>();
        glyph->advance = int32_t(slot->metrics.horiAdvance);
        if (font.embolden && slot->format == FT_GLYPH_FORMAT_OUTLINE) {
            // About a 24th of the em, at least half a pixel.
            const FT_Pos em = FT_MulFix(face->units_per_EM, face->size->metrics.y_scale);
            const FT_Pos strength = std::max<FT_Pos>(em / 24, 32);
            FT_Outline_Embolden(&slot->outline, strength);
            glyph->advance += int32_t(strength);
        }
        if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0) return nullptr;
        const FT_Bitmap& bitmap = slot->bitmap;
        glyph->left = slot->bitmap_left;
        glyph->top = slot->bitmap_top;
        glyph->width = int32_t(bitmap.width);
        glyph->rows = int32_t(bitmap.rows);
        glyph->coverage.resize(size_t(glyph->width) * size_t(glyph->rows));
        for (int32_t y = 0; y < glyph->rows; ++y) {
            const uint8_t* row = bitmap.buffer + std::ptrdiff_t(y) * bitmap.pitch;
            std::copy_n(row, glyph->width, glyph->coverage.begin() + std::ptrdiff_t(y) * glyph->width);
        }
        FT_Set_Transform(face, nullptr, nullptr);
        return glyph;
    }
};

GlyphCache::GlyphCache() : impl_(std::make_unique<Impl>()) {
    if (FT_Init_FreeType(&impl_->library) != 0) impl_->library = nullptr;
}

GlyphCache::~GlyphCache() = default;

GlyphCache::Font GlyphCache::Open(const FontResolver::FontFile& file, int32_t pixelSize, int32_t escapement,
                                  bool bold, bool italic) {
    Font font;
    font.face = impl_->OpenFace(file);
    font.pixelSize = std::clamp(pixelSize, 1, 1000);
    font.escapement = ((escapement % 3600) + 3600) % 3600;
    font.embolden = bold && !file.bold;
    font.slant = italic && !file.italic;
    return font;
}

int32_t GlyphCache::EmSizeForCell(const FontResolver::FontFile& file, int32_t cellHeight) {
    const int32_t id = impl_->OpenFace(file);
    if (id < 0) return cellHeight;
    FT_Face face = impl_->faces[size_t(id)];
    const int32_t cellUnits = int32_t(face->ascender - face->descender);
    if (cellUnits <= 0 || !FT_IS_SCALABLE(face)) return cellHeight;
    return std::max(1, int32_t(std::lround(double(cellHeight) * face->units_per_EM / cellUnits)));
}

GlyphCache::Metrics GlyphCache::GetMetrics(const Font& font) {
    if (font.face < 0) return {};
    FT_Face face = impl_->Sized(font);
    return Metrics{int32_t((face->size->metrics.ascender + 63) >> 6),
                   int32_t((-face->size->metrics.descender + 63) >> 6)};
}

uint32_t GlyphCache::GlyphIndex(const Font& font, char32_t codepoint) {
    if (font.face < 0) return 0;
    const uint64_t key = (uint64_t(uint32_t(font.face)) << 32) | codepoint;
    if (auto it = impl_->glyphIndices.find(key); it != impl_->glyphIndices.end()) return it->second;
    const uint32_t index = FT_Get_Char_Index(impl_->faces[size_t(font.face)], codepoint);
    impl_->glyphIndices.emplace(key, index);
    return index;
}

int32_t GlyphCache::Kerning(const Font& font, uint32_t left, uint32_t right) {
    if (font.face < 0 || left == 0 || right == 0 || left > 0xFFFF || right > 0xFFFF) return 0;
    FT_Face unsized = impl_->faces[size_t(font.face)];
    if (!FT_HAS_KERNING(unsized)) return 0;
    // Cached, because asking FreeType means switching the face's size.
    const uint64_t key = (uint64_t(uint32_t(font.face) & 0xFFFF) << 48) |
                         (uint64_t(uint32_t(font.pixelSize) & 0xFFFF) << 32) | (uint64_t(left) << 16) | right;
    if (auto it = impl_->kerning.find(key); it != impl_->kerning.end()) return it->second;
    FT_Face face = impl_->Sized(font);
    FT_Vector delta{0, 0};
    const int32_t kern = FT_Get_Kerning(face, left, right, FT_KERNING_DEFAULT, &delta) == 0 ? int32_t(delta.x) : 0;
    impl_->kerning.emplace(key, kern);
    return kern;
}

const GlyphCache::Glyph* GlyphCache::GetGlyph(const Font& font, uint32_t glyphIndex) {
    if (font.face < 0) return nullptr;
    const uint64_t key = GlyphKey(font, glyphIndex);
    auto it = impl_->glyphs.find(key);
    if (it == impl_->glyphs.end()) it = impl_->glyphs.emplace(key, impl_->Render(font, glyphIndex)).first;
    return it->second.get();
}

}  // namespace vexplot
