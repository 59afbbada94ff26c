#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "com/ComPtr.h"
#include "engine/IGraphEngine.h"
#include "engine/IGraphView3D.h"
#include "model/ArchiveObject.h"
#include "model/LogicalFont.h"
#include "model/NumberFormat.h"
#include "model/IInfoWindow.h"

namespace vexplot {

class CRegistryKey;

// How tick values are shown: as they are, or in decibels (20 log10 |v|).
// Any value but Decibel reads as Linear.
enum class DisplayMode : int32_t { Linear = 0, Decibel = 1 };

// The four fonts of an axis. The turned ones (escapement 900) serve an
// axis drawn upright.
enum class AxisFontRole { Label = 0, Numbers = 1, TurnedLabel = 2, TurnedNumbers = 3 };

// One of the plot's axes: its appearance (label, colours, grids, tick
// counts, number format, fonts), the texts of its ticks, its scale entry in
// the info window and its settings in the per-user store. The control's
// axis properties read and write the appearance; the axis drawing takes the
// ticks and texts from MakeTicks.
//
// An axis lies along one unit direction: x for the X axis, y for the Y
// axis, z for the Z axis and for the colour bar's axis (AxisId::Palette),
// which therefore shares the Z settings. The direction gives the letter of
// its settings and texts; the id says which engine axis it addresses.
//
// The info window and the 3-D view are borrowed: the window must outlive
// the axis or be detached first (AttachInfoWindow(nullptr)); the 3-D view
// is held with a reference of the axis's own.
class CGD_Axis final : public ArchiveObject {
public:
    struct Direction {
        double x = 1.0;
        double y = 0.0;
        double z = 0.0;
        friend bool operator==(const Direction&, const Direction&) = default;
    };

    // Flags of the axis drawing. The first two are saved with the axis.
    struct DrawingFlags {
        bool axisLine = true;       // the axis line itself
        bool tickMarks = true;      // the major and minor tick marks
        bool label = true;          // the label text
        bool oppositeSide = false;  // marks and texts on the side away from the plot
        friend bool operator==(const DrawingFlags&, const DrawingFlags&) = default;
    };

    // Everything the settings, the properties and the plot file set. What
    // an axis holds is always usable (see Usable).
    struct Appearance {
        std::string label;
        bool shown = true;         // the axis is drawn at all
        bool numbersShown = true;  // the tick texts are drawn
        uint32_t numberColor = 0xFFFF80;  // 0x00BBGGRR
        uint32_t majorGridColor = 0xC0C0C0;
        uint32_t minorGridColor = 0xACACAC;
        ScaleFormat scaleFormat = ScaleFormat::Decimal;
        DisplayMode displayMode = DisplayMode::Linear;
        bool majorGrid = true;
        bool minorGrid = true;
        int32_t majorTicks = 5;
        int32_t minorTicks = 5;  // between two major ticks
        DrawingFlags drawing;
        int32_t decimalCount = 10;  // precision of the number formats
        friend bool operator==(const Appearance&, const Appearance&) = default;
    };

    // Major tick values of a range with their texts.
    struct Ticks {
        double step = 0.0;
        std::vector<double> values;
        std::vector<std::string> texts;  // one per value
    };

    static constexpr int32_t kScaleEntryKind = static_cast<int32_t>(InfoKind::Position);

    explicit CGD_Axis(AxisId id = AxisId::X);
    // Removes the scale entry from the info window.
    ~CGD_Axis() override;
    CGD_Axis(const CGD_Axis&) = delete;
    CGD_Axis& operator=(const CGD_Axis&) = delete;

    // identity:
    AxisId Id() const { return id_; }
    const Direction& GetDirection() const { return direction_; }
    // 'X', 'Y' or 'Z': the first non-zero component of the direction.
    char Letter() const;
    static Direction DirectionOf(AxisId id);

    // appearance:
    const Appearance& GetAppearance() const { return look_; }
    // The most ticks of either kind an axis draws, and the widest precision.
    static constexpr int32_t kMaxTicks = 10;
    static constexpr int32_t kMaxDecimalCount = 15;
    // `look` brought into the ranges the axis can draw: 1 .. kMaxTicks major
    // and 0 .. kMaxTicks minor ticks, 1 .. kMaxDecimalCount decimals, an
    // unknown scale format as Decimal and an unknown display mode as Linear.
    static Appearance Usable(Appearance look);
    // Keeps Usable(look).
    void SetAppearance(const Appearance& look);
    void SetLabel(std::string label) { look_.label = std::move(label); }
    const LogicalFont& Font(AxisFontRole role) const { return fonts_[static_cast<size_t>(role)]; }
    void SetFont(AxisFontRole role, const LogicalFont& font) { fonts_[static_cast<size_t>(role)] = font; }

    // texts:
    // The text of v in the axis's scale format and decimal count; Base10
    // uses the superscript markup when the held 3-D view renders it.
    std::string FormatValue(double v) const;
    // The text of a tick at v: FormatValue of v, or in the dB display mode
    // of 20 log10 |v|. A tick at 0 is then "-inf" (its level in dB), never
    // an error.
    std::string TickText(double v) const;
    // The major ticks covering [min, max] (either order) with their texts:
    // ComputeTicks from the step (max - min) / major ticks (at least one
    // interval). An empty range is widened by a tenth of its value on each
    // side (by 1 around 0), so constant data still gets ticks.
    Ticks MakeTicks(double min, double max) const;

    // engine:
    // The 3-D view asked for text markup and view bounds; null: none.
    void SetView(IGraphView3D* view) { view_ = ComPtr<IGraphView3D>(view); }
    IGraphView3D* View() const { return view_.Get(); }

    // info window:
    // Shows the scale entry "X scale: 100.00%" (or "Y ...") as a section of
    // kind 1 in `window`; the Z axis gets none. The entry in a previously
    // attached window is removed first; null only removes it.
    void AttachInfoWindow(IInfoWindow* window);
    // The scale entry, kNoSection when there is none.
    InfoSection ScaleEntry() const { return scaleEntry_; }
    // 100 x shown extent / full extent along the axis, from the 3-D view's
    // bounds; 100 without a view, when the view fails or the full extent is
    // 0. The Z axis has no zoom of its own: 1.0.
    double GetScalePercent() const;
    // Writes "X scale: %.2f%%" of GetScalePercent() into the scale entry.
    void UpdateScaleEntry();

    // settings:
    // For an axis used on its own (a detached view host, a tool). The
    // control reads the same values once for all its axes through
    // ControlSettings, which also writes missing ones back and serves the
    // properties; both paths end in SetAppearance, so Usable applies the
    // same ranges to either.
    // Opens the product key through `key` (left open there) and reads the
    // values "<letter>-Axis ..." one after the other. A missing value keeps
    // the field, except the number colour, which becomes 0, and the decimal
    // count, which becomes 10; a negative tick count is taken as missing; an
    // empty label keeps the label. False when the key cannot be opened.
    bool LoadSettings(CRegistryKey& key);
    // The same through a key on the default store.
    bool LoadSettings();

    // ArchiveObject:
    // The record: direction (3 doubles), label, shown flag (int), axis id
    // (int), number, major grid and minor grid colours, numbers-shown flag
    // (int), scale format and display mode (ints), major and minor grid
    // (bools), major and minor ticks (ints), the axis line and tick marks
    // drawing flags (bools), decimal count (int). Loading refuses a direction
    // that is not a unit axis, an unknown id, an X, Y or Z id off its own
    // direction, and negative tick counts; the axis is then left unchanged.
    const ArchiveClass& GetRuntimeClass() const override { return RuntimeClass(); }
    void Serialize(CArchive& archive) override;
    // "CGD_Axis", schema 1.
    static const ArchiveClass& RuntimeClass();

private:
    struct Record;

    static std::array<LogicalFont, 4> DefaultFonts();
    TextMarkup Markup() const;
    std::string TickText(double v, TextMarkup markup) const;
    void Store(CArchive& archive) const;
    Record Load(CArchive& archive) const;
    void RemoveScaleEntry();

    AxisId id_;
    Direction direction_;
    Appearance look_;
    std::array<LogicalFont, 4> fonts_;
    ComPtr<IGraphView3D> view_;
    IInfoWindow* info_ = nullptr;  // borrowed
    InfoSection scaleEntry_ = kNoSection;
};

// Makes "CGD_Axis" known to loading archives. Safe to call any number of
// times, from any thread.
void RegisterAxisClass();

}  // namespace vexplot
