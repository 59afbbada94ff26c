#include "control/SceneText.h"

#include <cmath>
#include <cstring>
#include <numbers>

namespace vexplot {

namespace {

constexpr std::string_view kSuperscript = "\\SUP";
constexpr double kSuperscriptScale = 0.7;
constexpr double kSuperscriptRise = 0.45;  // of the ascent
// Arial's ascent and descent in em units; a positive font height is the
// cell height, ascent plus descent.
constexpr double kAscent = 0.905;
constexpr double kDescent = 0.212;
constexpr double kDefaultEm = 12;

// Helvetica's advance widths (thousandths of an em) for U+0020 .. U+007E.
constexpr short kAsciiWidths[95] = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278, 556, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667, 611, 778,
    722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278,
    278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
    556, 556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};

}  // namespace

std::u32string SceneText::CodePoints(std::string_view s) {
    std::u32string out;
    size_t i = 0;
    while (i < s.size()) {
        const auto c = static_cast<unsigned char>(s[i]);
        const int extra = c < 0x80 ? 0 : (c & 0xE0) == 0xC0 ? 1 : (c & 0xF0) == 0xE0 ? 2 : (c & 0xF8) == 0xF0 ? 3 : -1;
        char32_t cp = extra == 0 ? c : extra == 1 ? (c & 0x1Fu) : extra == 2 ? (c & 0x0Fu) : (c & 0x07u);
        bool ok = extra >= 0 && i + size_t(extra) < s.size();
        for (int k = 1; ok && k <= extra; ++k) {
            const auto b = static_cast<unsigned char>(s[i + size_t(k)]);
            ok = (b & 0xC0) == 0x80;
            cp = (cp << 6) | (b & 0x3Fu);
        }
        if (!ok) {
            out.push_back(0xFFFD);
            ++i;
            continue;
        }
        out.push_back(cp);
        i += size_t(extra) + 1;
    }
    return out;
}

double SceneText::AdvanceEm(char32_t cp) {
    if (cp >= 0x20 && cp <= 0x7E) return kAsciiWidths[cp - 0x20] / 1000.0;
    if (cp == 0xB0) return 0.4;   // degree sign
    if (cp == 0xB5) return 0.556; // micro sign
    return 0.556;
}

double SceneText::WidthEm(std::string_view utf8) {
    double width = 0;
    for (char32_t cp : CodePoints(utf8)) width += AdvanceEm(cp);
    return width;
}

SceneText::SceneText(const ExportScene::Text& text) {
    const FontDescription& font = text.font;
    em_ = font.height < 0 ? -font.height : font.height > 0 ? font.height / (kAscent + kDescent) : kDefaultEm;
    angle_ = font.escapement / 10.0 * std::numbers::pi / 180.0;
    bold_ = font.weight >= 600;
    italic_ = font.italic != 0;
    face_.assign(font.face, strnlen(font.face, sizeof(font.face)));
    if (face_.empty()) face_ = "Arial";

    const std::string_view all = text.text;
    const size_t split = all.find(kSuperscript);
    const std::string_view base = all.substr(0, split);
    if (!base.empty()) runs_.push_back({std::string(base), em_, 0, WidthEm(base) * em_});
    double ascent = kAscent * em_;
    if (split != std::string_view::npos) {
        const std::string_view sup = all.substr(split + kSuperscript.size());
        const double size = em_ * kSuperscriptScale, rise = std::round(kAscent * em_ * kSuperscriptRise);
        runs_.push_back({std::string(sup), size, rise, WidthEm(sup) * size});
        ascent = std::max(ascent, rise + kAscent * size);
    }
    const double descent = kDescent * em_;

    // The anchor names a point of the text's box; the box's offsets from
    // its baseline start are taken along the text's own direction, then
    // turned with it, so a vertical label is anchored as the screen shows it.
    const int anchor = static_cast<int>(text.anchor);
    const int column = anchor % 3, row = anchor / 3;
    const double width = Width();
    const double dx = column == 0 ? 0 : column == 1 ? -width / 2 : -width;
    const double dy = row == 0 ? ascent : row == 1 ? (ascent - descent) / 2 : -descent;  // y down
    const double c = std::cos(angle_), s = std::sin(angle_);
    // Text x axis on the screen is (c, -s), its down axis (s, c).
    baselineX_ = text.x + dx * c + dy * s;
    baselineY_ = text.y - dx * s + dy * c;
}

double SceneText::Width() const {
    double width = 0;
    for (const Run& run : runs_) width += run.width;
    return width;
}

}  // namespace vexplot
