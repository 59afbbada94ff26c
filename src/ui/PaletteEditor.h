#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "site/IDialogLogic.h"
#include "ui/BaseColor.h"

namespace vexplot {

// The logic of the palette editor "Colors". Every palette is a list of base
// colours pinned at positions 0 ... 100 (percent); the table of palette
// entries interpolates linearly between neighbours. Seven palette types
// build their lists; the type "Custom palette" keeps the list shown before
// and lets the user add, recolour, move, delete and spread base colours.
//
// After every change the table is recomputed, the listener is told (the
// control applies the table to its palette at once, so the plot follows a
// drag live) and the list is remembered process-wide
// (RememberedCustomPalette) for the next opening, whatever the type.
// Editing outside custom mode is ignored.
class PaletteEditor final : public IDialogLogic {
public:
    static constexpr std::string_view kDialogName = "PaletteEditor";
    static constexpr int kTypeCount = 7;
    static constexpr int kRainbow = 0;
    static constexpr int kCustom = 2;
    static constexpr size_t kMaxBaseColors = 33;
    static constexpr const char* kLimitMessage = "You have reached maximum number of base colors";

    using Listener = std::function<void(const PaletteEditor&)>;

    // The texts of the type list, in order (the index is the type).
    static const std::array<const char*, kTypeCount>& TypeNames();
    // The base colours of `type`; empty for "Custom palette" and unknown types.
    static std::vector<BaseColor> TypeColors(int type);
    // The entry table of `colors` for a palette of `paletteSize` entries:
    // each neighbouring pair (p, q) gives trunc((q - p) * size * 0.01 + 0.5)
    // entries from the first colour up to one step short of the second.
    // Lists reaching past 100 give more than `paletteSize` entries.
    static std::vector<uint32_t> Interpolate(std::span<const BaseColor> colors, int32_t paletteSize);
    // The position (0 ... 100) of pixel `x` on a bar starting at `barLeft`,
    // `barWidth` pixels wide.
    static int32_t PositionAt(int32_t x, int32_t barLeft, int32_t barWidth);
    // The table index under pixel `x` of that bar.
    static int64_t TableIndexAt(int32_t x, int32_t barLeft, int32_t barWidth, int32_t paletteSize);

    // Opens on the remembered custom list (type "Custom palette", with the
    // remembered palette size) when there is one, else on the rainbow with
    // `paletteSize` entries. Opening tells the listener nothing.
    PaletteEditor(int32_t paletteSize, Listener listener);

    std::string_view DialogName() const override { return kDialogName; }

    // state:
    int Type() const { return type_; }
    bool CustomMode() const { return type_ == kCustom; }
    int32_t PaletteSize() const { return paletteSize_; }
    const std::vector<BaseColor>& BaseColors() const { return colors_; }
    const std::vector<uint32_t>& Table() const { return table_; }
    // The table fitted to the palette size: cut where a list reaches past
    // 100, completed with the last base colour where rounding left it short.
    std::vector<uint32_t> PaletteColors() const;
    // The table entry under pixel `x` of the bar (0 outside the table).
    uint32_t ColorAt(int32_t x, int32_t barLeft, int32_t barWidth) const;

    // editing:
    // Builds the list of `type` (0 ... 6; others are ignored); the custom
    // type keeps the current list and turns editing on.
    void ChooseType(int type);
    // Whether another base colour can be added (custom mode, below the limit).
    bool AtColorLimit() const { return colors_.size() >= kMaxBaseColors; }
    // Inserts `color` at `position` (clamped to 0 ... 100) before the first
    // base colour whose position is greater. False at the limit or outside
    // custom mode; nothing changes then.
    bool AddColor(int32_t position, uint32_t color);
    bool ModifyColor(size_t index, uint32_t color);
    // Deleting needs at least three base colours. Deleting the first moves
    // the new first to 0, deleting the last moves the new last to 100.
    bool CanDelete() const { return CustomMode() && colors_.size() >= 3; }
    bool DeleteColor(size_t index);
    // Spreads the base colours evenly from 0 to 100 in their order.
    void EqualDistance();
    // Only the inner markers move; the first and the last stay put.
    bool CanDrag(size_t index) const;
    // Moves the marker at `index` to `position` (clamped to 0 ... 100) and
    // re-sorts the list. Returns the marker's new index (`index` unchanged
    // when it cannot be dragged).
    size_t MoveMarker(size_t index, int32_t position);

private:
    void Changed();

    int32_t paletteSize_;
    Listener listener_;
    int type_ = kRainbow;
    std::vector<BaseColor> colors_;
    std::vector<uint32_t> table_;
};

}  // namespace vexplot
