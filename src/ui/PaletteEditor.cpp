#include "ui/PaletteEditor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/RememberedCustomPalette.h"

namespace vexplot {

namespace {

// The lists below are written as RRGGBB, the way people read colours; the
// editor keeps 0x00BBGGRR like the rest of the control.
constexpr BaseColor Rgb(uint32_t rrggbb, int32_t position) {
    const uint32_t r = (rrggbb >> 16) & 0xFF, g = (rrggbb >> 8) & 0xFF, b = rrggbb & 0xFF;
    return BaseColor{r | (g << 8) | (b << 16), position};
}

std::vector<BaseColor> Rainbow() {
    return {Rgb(0x0000FF, 0), Rgb(0x00FFFF, 25), Rgb(0x00FF00, 50), Rgb(0xFFFF00, 75), Rgb(0xFF0000, 100)};
}

std::vector<BaseColor> InverseRainbow() {
    return {Rgb(0xFF0000, 0), Rgb(0xFFFF00, 25), Rgb(0x00FF00, 50), Rgb(0x00FFFF, 75), Rgb(0x0000FF, 100)};
}

// Both banded lists end at 104, past the end of the bar, as they always
// have; PaletteColors cuts what lies beyond the palette.
std::vector<BaseColor> BandedGray() {
    return {Rgb(0x000000, 0),  Rgb(0x363636, 4),  Rgb(0x000000, 7),  Rgb(0x464646, 10), Rgb(0x000000, 13),
            Rgb(0x565656, 17), Rgb(0x000000, 20), Rgb(0x666666, 23), Rgb(0x090909, 26), Rgb(0x767676, 29),
            Rgb(0x191919, 32), Rgb(0x868686, 35), Rgb(0x292929, 38), Rgb(0x969696, 42), Rgb(0x393939, 45),
            Rgb(0xA6A6A6, 48), Rgb(0x494949, 51), Rgb(0xB6B6B6, 55), Rgb(0x595959, 57), Rgb(0xC6C6C6, 60),
            Rgb(0x696969, 63), Rgb(0xD6D6D6, 67), Rgb(0x7A7A7A, 70), Rgb(0xE5E5E5, 72), Rgb(0x8A8A8A, 75),
            Rgb(0xF5F5F5, 78), Rgb(0x9A9A9A, 81), Rgb(0xFFFFFF, 84), Rgb(0xAAAAAA, 87), Rgb(0xFFFFFF, 90),
            Rgb(0xBABABA, 93), Rgb(0xFFFFFF, 96), Rgb(0xCACACA, 98), Rgb(0xDEDEDE, 100), Rgb(0xFFFFFF, 104)};
}

std::vector<BaseColor> BandedRainbow() {
    return {Rgb(0x0000FF, 0),  Rgb(0x3232FF, 3),  Rgb(0x0000B4, 6),  Rgb(0x3232FF, 9),  Rgb(0x000094, 12),
            Rgb(0x3232E9, 15), Rgb(0x000074, 18), Rgb(0x3236C9, 21), Rgb(0x000054, 24), Rgb(0x326BA9, 27),
            Rgb(0x002032, 30), Rgb(0x32A089, 33), Rgb(0x005514, 36), Rgb(0x31D766, 39), Rgb(0x008B00, 42),
            Rgb(0x32FF49, 45), Rgb(0x00C000, 48), Rgb(0x47FF31, 51), Rgb(0x00CC00, 54), Rgb(0x87FF31, 57),
            Rgb(0x3FCC00, 60), Rgb(0xC7FF31, 63), Rgb(0x80CD00, 66), Rgb(0xFFFF32, 69), Rgb(0xC0CD00, 72),
            Rgb(0xFFFF32, 75), Rgb(0xCC9500, 78), Rgb(0xFFDD31, 81), Rgb(0xCC5500, 84), Rgb(0xFF9A32, 87),
            Rgb(0xCC1500, 90), Rgb(0xFF5A32, 93), Rgb(0xCC0000, 96), Rgb(0xDE0000, 100), Rgb(0xFF0000, 104)};
}

uint32_t Channel(uint32_t color, int shift) { return (color >> shift) & 0xFF; }

// One channel of step k of n from a to b (0 ... 255 each), through the
// fractions channel / 255 as the table has always been computed.
uint32_t Blend(uint32_t a, uint32_t b, int64_t k, int64_t n) {
    const double fa = a / 255.0, fb = b / 255.0;
    return static_cast<uint32_t>(std::trunc((fa + static_cast<double>(k) * (fb - fa) / static_cast<double>(n)) * 255.0 + 0.5));
}

}  // namespace

const std::array<const char*, PaletteEditor::kTypeCount>& PaletteEditor::TypeNames() {
    static const std::array<const char*, kTypeCount> names{
        "Rainbow palette", "Gray scale palette", "Custom palette",   "Inverse Rainbow",
        "Inverse Gray scale", "Banded Gray scale", "Banded Rainbow"};
    return names;
}

std::vector<BaseColor> PaletteEditor::TypeColors(int type) {
    switch (type) {
        case 0: return Rainbow();
        case 1: return {Rgb(0x000000, 0), Rgb(0xFFFFFF, 100)};
        case 3: return InverseRainbow();
        case 4: return {Rgb(0xFFFFFF, 0), Rgb(0x000000, 100)};
        case 5: return BandedGray();
        case 6: return BandedRainbow();
        default: return {};
    }
}

std::vector<uint32_t> PaletteEditor::Interpolate(std::span<const BaseColor> colors, int32_t paletteSize) {
    std::vector<uint32_t> table;
    for (size_t i = 1; i < colors.size(); ++i) {
        const BaseColor& a = colors[i - 1];
        const BaseColor& b = colors[i];
        const auto n = static_cast<int64_t>(
            std::trunc(static_cast<double>(b.position - a.position) * paletteSize * 0.01 + 0.5));
        for (int64_t k = 0; k < n; ++k) {
            uint32_t entry = 0;
            for (int shift : {0, 8, 16}) entry |= Blend(Channel(a.color, shift), Channel(b.color, shift), k, n) << shift;
            table.push_back(entry);
        }
    }
    return table;
}

int32_t PaletteEditor::PositionAt(int32_t x, int32_t barLeft, int32_t barWidth) {
    if (x < barLeft || barWidth <= 0) return 0;
    if (x > barLeft + barWidth) return 100;
    return static_cast<int32_t>(std::trunc((x - barLeft) * 100.0 / barWidth + 0.5));
}

int64_t PaletteEditor::TableIndexAt(int32_t x, int32_t barLeft, int32_t barWidth, int32_t paletteSize) {
    if (barWidth <= 0) return 0;
    return static_cast<int64_t>(std::trunc(static_cast<double>(x - barLeft) / barWidth * paletteSize + 0.5));
}

PaletteEditor::PaletteEditor(int32_t paletteSize, Listener listener)
    : paletteSize_(paletteSize), listener_(std::move(listener)) {
    if (auto remembered = RememberedCustomPalette::Load(); remembered && remembered->colors.size() >= 2) {
        type_ = kCustom;
        paletteSize_ = remembered->paletteSize;
        colors_ = std::move(remembered->colors);
    } else {
        type_ = kRainbow;
        colors_ = Rainbow();
    }
    table_ = Interpolate(colors_, paletteSize_);
}

std::vector<uint32_t> PaletteEditor::PaletteColors() const {
    std::vector<uint32_t> colors(table_.begin(), table_.begin() + std::min<size_t>(table_.size(), std::max(paletteSize_, 0)));
    const uint32_t last = colors_.empty() ? 0 : colors_.back().color;
    colors.resize(static_cast<size_t>(std::max(paletteSize_, 0)), last);
    return colors;
}

uint32_t PaletteEditor::ColorAt(int32_t x, int32_t barLeft, int32_t barWidth) const {
    const int64_t index = TableIndexAt(x, barLeft, barWidth, paletteSize_);
    if (table_.empty()) return 0;
    return table_[static_cast<size_t>(std::clamp<int64_t>(index, 0, static_cast<int64_t>(table_.size()) - 1))];
}

void PaletteEditor::ChooseType(int type) {
    if (type < 0 || type >= kTypeCount) return;
    type_ = type;
    if (type != kCustom) colors_ = TypeColors(type);
    Changed();
}

bool PaletteEditor::AddColor(int32_t position, uint32_t color) {
    if (!CustomMode() || AtColorLimit()) return false;
    const BaseColor added{color & 0xFFFFFF, std::clamp(position, 0, 100)};
    const auto at = std::find_if(colors_.begin(), colors_.end(),
                                 [&](const BaseColor& c) { return c.position > added.position; });
    colors_.insert(at, added);
    Changed();
    return true;
}

bool PaletteEditor::ModifyColor(size_t index, uint32_t color) {
    if (!CustomMode() || index >= colors_.size()) return false;
    colors_[index].color = color & 0xFFFFFF;
    Changed();
    return true;
}

bool PaletteEditor::DeleteColor(size_t index) {
    if (!CanDelete() || index >= colors_.size()) return false;
    const bool first = index == 0;
    const bool last = index + 1 == colors_.size();
    colors_.erase(colors_.begin() + static_cast<std::ptrdiff_t>(index));
    if (first) colors_.front().position = 0;
    if (last) colors_.back().position = 100;
    Changed();
    return true;
}

void PaletteEditor::EqualDistance() {
    if (!CustomMode() || colors_.size() < 2) return;
    const double step = 100.0 / static_cast<double>(colors_.size() - 1);
    for (size_t i = 0; i < colors_.size(); ++i)
        colors_[i].position = static_cast<int32_t>(std::trunc(static_cast<double>(i) * step + 0.5));
    Changed();
}

bool PaletteEditor::CanDrag(size_t index) const {
    return CustomMode() && index > 0 && index + 1 < colors_.size();
}

size_t PaletteEditor::MoveMarker(size_t index, int32_t position) {
    if (!CanDrag(index)) return index;
    colors_[index].position = std::clamp(position, 0, 100);
    // The moved marker is tagged so that the drag can follow it to its new place.
    std::vector<std::pair<BaseColor, bool>> tagged;
    tagged.reserve(colors_.size());
    for (size_t i = 0; i < colors_.size(); ++i) tagged.emplace_back(colors_[i], i == index);
    // The ends stay the ends: the first and the last never move, so they
    // keep their places even when an inner marker reaches their position.
    std::stable_sort(tagged.begin() + 1, tagged.end() - 1,
                     [](const auto& a, const auto& b) { return a.first.position < b.first.position; });
    size_t found = index;
    for (size_t i = 0; i < tagged.size(); ++i) {
        colors_[i] = tagged[i].first;
        if (tagged[i].second) found = i;
    }
    Changed();
    return found;
}

void PaletteEditor::Changed() {
    table_ = Interpolate(colors_, paletteSize_);
    RememberedCustomPalette::Store({paletteSize_, colors_});
    if (listener_) listener_(*this);
}

}  // namespace vexplot
