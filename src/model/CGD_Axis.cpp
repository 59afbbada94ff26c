#include "model/CGD_Axis.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <utility>

#include "model/ArchiveClass.h"
#include "model/AxisTicks.h"
#include "model/CArchive.h"
#include "settings/CRegistryKey.h"

namespace vexplot {

struct CGD_Axis::Record {
    Direction direction;
    AxisId id;
    Appearance look;
};

namespace {

// What CRegistryKey::ReadInt answers for a missing value.
constexpr int32_t kMissing = -1;
constexpr int32_t kDefaultDecimalCount = 10;

void ReadColor(int32_t stored, uint32_t& field) {
    if (stored != kMissing) field = static_cast<uint32_t>(stored);
}
void ReadFlag(int32_t stored, bool& field) {
    if (stored != kMissing) field = stored != 0;
}
void ReadCount(int32_t stored, int32_t& field) {
    if (stored >= 0) field = stored;
}

bool IsUnitAxis(const CGD_Axis::Direction& d) {
    using D = CGD_Axis::Direction;
    return d == D{1, 0, 0} || d == D{0, 1, 0} || d == D{0, 0, 1};
}

int32_t ReadTickCount(CArchive& archive, std::string_view what) {
    const int32_t count = archive.ReadInt32(what);
    if (count < 0) archive.Fail(what, "negative");
    return count;
}

LogicalFont MakeFont(int32_t height, int32_t escapement) {
    LogicalFont font;
    font.height = height;
    font.escapement = escapement;
    return font;
}

}  // namespace

CGD_Axis::CGD_Axis(AxisId id) : id_(id), direction_(DirectionOf(id)), fonts_(DefaultFonts()) {}

CGD_Axis::~CGD_Axis() { RemoveScaleEntry(); }

std::array<LogicalFont, 4> CGD_Axis::DefaultFonts() {
    return {MakeFont(14, 0), MakeFont(12, 0), MakeFont(12, 900), MakeFont(9, 900)};
}

char CGD_Axis::Letter() const {
    if (direction_.x != 0) return 'X';
    if (direction_.y != 0) return 'Y';
    return 'Z';
}

CGD_Axis::Direction CGD_Axis::DirectionOf(AxisId id) {
    switch (id) {
    case AxisId::X: return {1, 0, 0};
    case AxisId::Y: return {0, 1, 0};
    case AxisId::Z:
    case AxisId::Palette: break;
    }
    return {0, 0, 1};
}

void CGD_Axis::SetAppearance(const Appearance& look) { look_ = Usable(look); }

// The values come from the settings store, a property or a file, any of
// which may hold what no dialog accepts; a count of 32767 ticks would make
// every render of this user grow without bound.
CGD_Axis::Appearance CGD_Axis::Usable(Appearance look) {
    look.majorTicks = std::clamp(look.majorTicks, 1, kMaxTicks);
    look.minorTicks = std::clamp(look.minorTicks, 0, kMaxTicks);
    const auto format = static_cast<int32_t>(look.scaleFormat);
    if (format < 0 || format > static_cast<int32_t>(ScaleFormat::Base10)) look.scaleFormat = ScaleFormat::Decimal;
    if (look.displayMode != DisplayMode::Decibel) look.displayMode = DisplayMode::Linear;
    look.decimalCount = std::clamp(look.decimalCount, 1, kMaxDecimalCount);
    return look;
}

// texts:

std::string CGD_Axis::FormatValue(double v) const {
    return vexplot::FormatValue(v, look_.scaleFormat, look_.decimalCount, Markup());
}

std::string CGD_Axis::TickText(double v) const { return TickText(v, Markup()); }

std::string CGD_Axis::TickText(double v, TextMarkup markup) const {
    const double shown = look_.displayMode == DisplayMode::Decibel ? 20 * std::log10(std::fabs(v)) : v;
    return vexplot::FormatValue(shown, look_.scaleFormat, look_.decimalCount, markup);
}

CGD_Axis::Ticks CGD_Axis::MakeTicks(double min, double max) const {
    if (min > max) std::swap(min, max);
    if (min == max) {
        const double half = min == 0 ? 1.0 : std::fabs(min) / 10;
        // Held within the doubles, so constant data near the largest one
        // still gets its ticks.
        min = std::max(min - half, -std::numeric_limits<double>::max());
        max = std::min(max + half, std::numeric_limits<double>::max());
    }
    AxisTicks ticks = ComputeTicks(min, max, (max - min) / look_.majorTicks);
    Ticks result{ticks.step, std::move(ticks.values), {}};
    const TextMarkup markup = Markup();
    result.texts.reserve(result.values.size());
    for (const double v : result.values) result.texts.push_back(TickText(v, markup));
    return result;
}

TextMarkup CGD_Axis::Markup() const {
    return view_ && view_->QueryTextMarkup() == 0 ? TextMarkup::Superscript : TextMarkup::Plain;
}

// info window:

void CGD_Axis::AttachInfoWindow(IInfoWindow* window) {
    RemoveScaleEntry();
    info_ = window;
    if (!info_ || Letter() == 'Z') return;
    const std::string text = std::string(1, Letter()) + " scale: 100.00%";
    scaleEntry_ = info_->AddSection(kScaleEntryKind, text, 0);
}

void CGD_Axis::RemoveScaleEntry() {
    if (info_ && scaleEntry_ != kNoSection) info_->RemoveSection(scaleEntry_);
    scaleEntry_ = kNoSection;
}

double CGD_Axis::GetScalePercent() const {
    const char letter = Letter();
    if (letter == 'Z') return 1.0;
    DataRect shown{};
    DataRect full{};
    if (!view_ || FAILED(view_->GetViewBounds(&shown, &full))) return 100.0;
    const bool x = letter == 'X';
    const double shownExtent = x ? shown.xMax - shown.xMin : shown.yMax - shown.yMin;
    const double fullExtent = x ? full.xMax - full.xMin : full.yMax - full.yMin;
    const double percent = 100 * shownExtent / fullExtent;
    return fullExtent == 0 || !std::isfinite(percent) ? 100.0 : percent;
}

void CGD_Axis::UpdateScaleEntry() {
    if (!info_ || scaleEntry_ == kNoSection) return;
    // A finite double in "%.2f" needs at most 309 digits before the point.
    char text[400];
    std::snprintf(text, sizeof text, "%c scale: %.2f%%", Letter(), GetScalePercent());
    info_->SetHeader(scaleEntry_, text, 0);
}

// settings:

bool CGD_Axis::LoadSettings() {
    CRegistryKey key;
    return LoadSettings(key);
}

bool CGD_Axis::LoadSettings(CRegistryKey& key) {
    if (key.Open("") == 0) return false;
    const std::string prefix = std::string(1, Letter()) + "-Axis ";
    const auto read = [&](const char* name) { return key.ReadInt(prefix + name); };
    Appearance a = look_;
    const int32_t numberColor = read("Number color");
    a.numberColor = numberColor == kMissing ? 0 : static_cast<uint32_t>(numberColor);
    ReadColor(read("Minor Grid color"), a.minorGridColor);
    ReadColor(read("Major Grid color"), a.majorGridColor);
    ReadFlag(read("Minor Grid"), a.minorGrid);
    ReadFlag(read("Major Grid"), a.majorGrid);
    ReadCount(read("Number Minor Ticks"), a.minorTicks);
    ReadCount(read("Number Major Ticks"), a.majorTicks);
    if (const int32_t v = read("Scale Format"); v != kMissing) a.scaleFormat = static_cast<ScaleFormat>(v);
    if (const int32_t v = read("Display Mode"); v != kMissing) a.displayMode = static_cast<DisplayMode>(v);
    const int32_t decimals = read("Decimal Count");
    a.decimalCount = decimals == kMissing ? kDefaultDecimalCount : decimals;
    if (std::string label = key.ReadString(prefix + "Label"); !label.empty()) a.label = std::move(label);
    look_ = std::move(a);
    return true;
}

// archive:

const ArchiveClass& CGD_Axis::RuntimeClass() {
    static const ArchiveClass cls("CGD_Axis", 1, [] { return std::make_unique<CGD_Axis>(); });
    return cls;
}

void CGD_Axis::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        Store(archive);
        return;
    }
    Record record = Load(archive);
    id_ = record.id;
    direction_ = record.direction;
    look_ = Usable(std::move(record.look));
    // The entry's letter follows the loaded direction.
    if (info_) AttachInfoWindow(info_);
}

void CGD_Axis::Store(CArchive& archive) const {
    archive.WriteDouble(direction_.x);
    archive.WriteDouble(direction_.y);
    archive.WriteDouble(direction_.z);
    archive.WriteString(look_.label);
    archive.WriteInt32(look_.shown ? 1 : 0);
    archive.WriteInt32(static_cast<int32_t>(id_));
    archive.WriteColor(look_.numberColor);
    archive.WriteColor(look_.majorGridColor);
    archive.WriteColor(look_.minorGridColor);
    archive.WriteInt32(look_.numbersShown ? 1 : 0);
    archive.WriteInt32(static_cast<int32_t>(look_.scaleFormat));
    archive.WriteInt32(static_cast<int32_t>(look_.displayMode));
    archive.WriteBool(look_.majorGrid);
    archive.WriteBool(look_.minorGrid);
    archive.WriteInt32(look_.majorTicks);
    archive.WriteInt32(look_.minorTicks);
    archive.WriteBool(look_.drawing.axisLine);
    archive.WriteBool(look_.drawing.tickMarks);
    archive.WriteInt32(look_.decimalCount);
}

// Reads into a copy, so that a refused record leaves the axis as it was; the
// fields the record lacks (fonts, the last two drawing flags) keep their values.
CGD_Axis::Record CGD_Axis::Load(CArchive& archive) const {
    Record r{direction_, id_, look_};
    r.direction.x = archive.ReadDouble("axis direction x");
    r.direction.y = archive.ReadDouble("axis direction y");
    r.direction.z = archive.ReadDouble("axis direction z");
    if (!IsUnitAxis(r.direction)) archive.Fail("axis direction", "not one of the unit axes");
    r.look.label = archive.ReadString("axis label");
    r.look.shown = archive.ReadInt32("axis shown flag") != 0;
    const int32_t id = archive.ReadInt32("axis id");
    if (id < 0 || id > static_cast<int32_t>(AxisId::Palette)) archive.Fail("axis id", "unknown");
    r.id = static_cast<AxisId>(id);
    if (r.id != AxisId::Palette && DirectionOf(r.id) != r.direction)
        archive.Fail("axis id", "does not match the axis direction");
    r.look.numberColor = archive.ReadColor("axis number colour");
    r.look.majorGridColor = archive.ReadColor("axis major grid colour");
    r.look.minorGridColor = archive.ReadColor("axis minor grid colour");
    r.look.numbersShown = archive.ReadInt32("axis numbers flag") != 0;
    r.look.scaleFormat = static_cast<ScaleFormat>(archive.ReadInt32("axis scale format"));
    r.look.displayMode = static_cast<DisplayMode>(archive.ReadInt32("axis display mode"));
    r.look.majorGrid = archive.ReadBool("axis major grid");
    r.look.minorGrid = archive.ReadBool("axis minor grid");
    r.look.majorTicks = ReadTickCount(archive, "axis major ticks");
    r.look.minorTicks = ReadTickCount(archive, "axis minor ticks");
    r.look.drawing.axisLine = archive.ReadBool("axis line flag");
    r.look.drawing.tickMarks = archive.ReadBool("axis tick marks flag");
    r.look.decimalCount = archive.ReadInt32("axis decimal count");
    return r;
}

void RegisterAxisClass() {
    static const bool registered = (ArchiveClass::Register(CGD_Axis::RuntimeClass()), true);
    (void)registered;
}

}  // namespace vexplot
