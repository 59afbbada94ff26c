#include "control/ControlSettings.h"

#include <string_view>

#include "settings/CRegistryKey.h"
#include "settings/NumberText.h"
#include "ui/LogFontRecord.h"

namespace vexplot {

namespace {

// The reading rule of almost every setting: a missing value (-1) takes the
// default, which is written back.
int32_t ReadInt(CRegistryKey& key, std::string_view name, int32_t fallback) {
    const int32_t value = key.ReadInt(name);
    if (value != -1) return value;
    key.WriteInt(name, fallback);
    return fallback;
}

// 16-bit properties compare their low half against -1 (0xFFFF).
int16_t ReadShort(CRegistryKey& key, std::string_view name, int16_t fallback) {
    const auto value = static_cast<int16_t>(key.ReadInt(name));
    if (value != -1) return value;
    key.WriteInt(name, fallback);
    return fallback;
}

bool ReadBool(CRegistryKey& key, std::string_view name, bool fallback) {
    return ReadInt(key, name, fallback ? 1 : 0) != 0;
}

uint32_t ReadColor(CRegistryKey& key, std::string_view name, uint32_t fallback) {
    return static_cast<uint32_t>(ReadInt(key, name, static_cast<int32_t>(fallback)));
}

std::string ReadString(CRegistryKey& key, std::string_view name, const std::string& fallback) {
    std::string value = key.ReadString(name);
    if (!value.empty()) return value;
    key.WriteString(name, fallback);
    return fallback;
}

// A double kept as "%f" text, read in no locale (a comma written by a
// process under a comma locale is read as the point). When missing,
// `inMemory` is used and `written` is what the store receives (the two
// differ on purpose); text that is no number also keeps `inMemory`.
double ReadDouble(CRegistryKey& key, std::string_view name, double inMemory, const char* written) {
    const std::string text = key.ReadString(name);
    if (text.empty()) {
        key.WriteString(name, written);
        return inMemory;
    }
    return ParseDouble(text).value_or(inMemory);
}

std::string AxisName(char letter, const char* rest) { return std::string(1, letter) + "-Axis " + rest; }

}  // namespace

ControlSettings::ControlSettings() {
    // assign(count, char) rather than = "X": GCC 12 at -O3 warns falsely
    // (-Wrestrict) on the inlined short-string copy.
    for (size_t i = 0; i < axes.size(); ++i) axes[i].label.assign(1, "XYZ"[i]);
    // The info window's own default font: a record of zero weight would
    // read back as the thinnest weight where the platform does not take 0
    // as "normal".
    info.font.height = -11;
}

void ControlSettings::Read(MessageSink* sink, const std::shared_ptr<SettingsStore>& store) {
    CRegistryKey key(sink, store);
    if (key.Open("")) ReadRoot(key);
    if (key.Open("3DView")) Read3DView(key);
    if (key.Open("Legend")) ReadLegend(key);
    key.Close();
}

void ControlSettings::ReadRoot(CRegistryKey& key) {
    graphEngine = key.ReadString("GraphEngine");
    backgroundColor = ReadColor(key, "Background color", backgroundColor);
    childInfoWindow = ReadBool(key, "Child info window", childInfoWindow);
    // Tool tips always start disabled, whatever is stored.
    key.ReadInt("Show ToolTips");
    showToolTips = false;
    key.WriteInt("Show ToolTips", 0);
    ReadAxis(key, 'X', axes[0]);
    ReadAxis(key, 'Y', axes[1]);
    ReadAxis(key, 'Z', axes[2]);
    legendControlTop = ReadInt(key, "LegendControlTop", legendControlTop);
    legendControlLeft = ReadInt(key, "LegendControlLeft", legendControlLeft);
    menuControlTop = ReadInt(key, "MenuControlTop", menuControlTop);
    menuControlLeft = ReadInt(key, "MenuControlLeft", menuControlLeft);
}

void ControlSettings::ReadAxis(CRegistryKey& key, char letter, Axis& axis) {
    axis.numberColor = ReadColor(key, AxisName(letter, "Number color"), axis.numberColor);
    axis.minorGridColor = ReadColor(key, AxisName(letter, "Minor Grid color"), axis.minorGridColor);
    axis.majorGridColor = ReadColor(key, AxisName(letter, "Major Grid color"), axis.majorGridColor);
    axis.minorGrid = ReadBool(key, AxisName(letter, "Minor Grid"), axis.minorGrid);
    axis.majorGrid = ReadBool(key, AxisName(letter, "Major Grid"), axis.majorGrid);
    axis.minorTicks = ReadShort(key, AxisName(letter, "Number Minor Ticks"), axis.minorTicks);
    axis.majorTicks = ReadShort(key, AxisName(letter, "Number Major Ticks"), axis.majorTicks);
    axis.scaleFormat = ReadShort(key, AxisName(letter, "Scale Format"), axis.scaleFormat);
    axis.displayMode = ReadShort(key, AxisName(letter, "Display Mode"), axis.displayMode);
    axis.label = ReadString(key, AxisName(letter, "Label"), axis.label);
    axis.decimalCount = ReadShort(key, AxisName(letter, "Decimal Count"), axis.decimalCount);
}

void ControlSettings::Read3DView(CRegistryKey& key) {
    const auto quality = static_cast<int16_t>(key.ReadInt("Quality"));
    quality3D = quality > 0 ? quality : int16_t{0};
    if (quality <= 0) key.WriteInt("Quality", 0);
    camTranslation[0] = ReadDouble(key, "X-Translation", 0.2, "0.3");
    camTranslation[1] = ReadDouble(key, "Y-Translation", 0.2, "0.3");
    camTranslation[2] = ReadDouble(key, "Z-Translation", 0.2, "0.3");
    camRotation[0] = ReadDouble(key, "X-Rotation", 0.01, "0.05");
    camRotation[1] = ReadDouble(key, "Y-Rotation", 0.01, "0.05");
    camRotation[2] = ReadDouble(key, "Z-Rotation", 0.1, "0.5");
}

void ControlSettings::ReadLegend(CRegistryKey& key) {
    autoHideLegend = ReadBool(key, "AutoHide", true);
    fastHideLegend = ReadBool(key, "FastHide", false);
    moveDirection = ReadInt(key, "MoveDirection", 2);
    legendVisible = ReadBool(key, "Visible", false);
    legendRect.top = ReadInt(key, "Top", 50);
    // A missing height is written as the current top, but this run keeps a
    // rectangle of zero height; the same for the width below.
    const int32_t height = key.ReadInt("Height");
    if (height == -1) key.WriteInt("Height", legendRect.top);
    legendRect.bottom = legendRect.top + (height == -1 ? 0 : height);
    legendRect.left = ReadInt(key, "Left", 50);
    const int32_t width = key.ReadInt("Width");
    if (width == -1) key.WriteInt("Width", legendRect.left);
    legendRect.right = legendRect.left + (width == -1 ? 0 : width);
    // The second read's default would show the legend when it does not hide
    // itself, but the first read has always written a value by now.
    legendVisible = ReadBool(key, "Visible", !autoHideLegend);
}

void ControlSettings::ReadInfo(MessageSink* sink, const std::shared_ptr<SettingsStore>& store) {
    CRegistryKey key(sink, store);
    if (!key.Open("")) return;
    info.textColor = ReadColor(key, "TextColor", info.textColor);
    info.backColor = ReadColor(key, "InfoBackgroundColor", info.backColor);
    static constexpr const char* kItems[] = {"CurrPosVisible",   "MarkerVisible", "TracerVisible",
                                             "DiffTracerVisible", "RegionVisible", "ZoomVisible"};
    // As the info window reads them itself: only exactly 1 shows a kind
    // (a stored 2 hides it), and a missing value is written as 1.
    info.itemBits = 0;
    for (uint32_t i = 0; i < 6; ++i)
        if (ReadInt(key, kItems[i], 1) == 1) info.itemBits |= 1u << i;
    info.transparent = ReadBool(key, "Transparent", false);
    const int32_t visible = key.ReadInt("Visible");  // not written back when missing
    info.visible = visible != -1 && visible != 0;
    info.rect.top = ReadInt(key, "InfoTop", 50);
    info.rect.bottom = ReadInt(key, "InfoBottom", info.rect.top + 100);
    info.rect.left = ReadInt(key, "InfoLeft", 50);
    info.rect.right = ReadInt(key, "InfoRight", info.rect.left + 200);
    info.docked = ReadBool(key, "InfoDocked", true);
    ReadInfoFont(key);
}

void ControlSettings::ReadInfoFont(CRegistryKey& key) {
    const auto stored = key.QueryValue("Font");
    LogFontRecord::Bytes record{};
    if (!stored) {
        record = LogFontRecord::Encode(info.font);
        key.WriteBinary("Font", record.data(), record.size());
        return;
    }
    // Only a whole record is a font; a shorter one would read zero-padded.
    if (stored->type != ValueType::Binary || stored->data.size() != record.size()) return;
    if (key.ReadBinary("Font", record.data(), record.size()) != 1) return;
    if (auto font = LogFontRecord::Decode(record)) info.font = *font;
}

}  // namespace vexplot
