#include "opengl/text/FontResolver.h"

#include <fontconfig/fontconfig.h>

namespace vexplot {

namespace {

// Windows weights (100..900) to fontconfig's weight scale.
int ToFcWeight(int32_t weight) {
    if (weight <= 0) return FC_WEIGHT_REGULAR;
    return FcWeightFromOpenType(weight);
}

}  // namespace

FontResolver::FontResolver() { FcInit(); }

FontResolver::~FontResolver() = default;

FontResolver::FontFile FontResolver::Resolve(const std::string& face, int32_t weight, bool italic) {
    std::lock_guard lock(mutex_);
    auto key = std::make_tuple(face, weight, italic);
    if (auto it = cache_.find(key); it != cache_.end()) return it->second;
    FontFile file = Match(face, weight, italic);
    if (file.path.empty() && face != "sans-serif") file = Match("sans-serif", weight, italic);
    cache_.emplace(std::move(key), file);
    return file;
}

FontResolver::FontFile FontResolver::Match(const std::string& face, int32_t weight, bool italic) const {
    FontFile result;
    FcPattern* pattern = FcPatternCreate();
    if (!pattern) return result;
    const std::string family = face.empty() ? std::string("sans-serif") : face;
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(pattern, FC_WEIGHT, ToFcWeight(weight));
    FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult matchResult = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &matchResult);
    FcPatternDestroy(pattern);
    if (!match) return result;
    FcChar8* path = nullptr;
    if (FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch && path) {
        result.path = reinterpret_cast<const char*>(path);
        int index = 0;
        if (FcPatternGetInteger(match, FC_INDEX, 0, &index) == FcResultMatch) result.index = index;
        int matchedWeight = FC_WEIGHT_REGULAR;
        if (FcPatternGetInteger(match, FC_WEIGHT, 0, &matchedWeight) == FcResultMatch)
            result.bold = matchedWeight >= FC_WEIGHT_DEMIBOLD;
        int slant = FC_SLANT_ROMAN;
        if (FcPatternGetInteger(match, FC_SLANT, 0, &slant) == FcResultMatch) result.italic = slant != FC_SLANT_ROMAN;
    }
    FcPatternDestroy(match);
    return result;
}

}  // namespace vexplot
