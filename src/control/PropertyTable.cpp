#include "control/PropertyTable.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>

namespace vexplot {

namespace {

// -- a member's value as a Variant of its property type, and back --

template <class T>
Variant ToVariant(T value) {
    if constexpr (std::is_same_v<T, bool>)
        return Variant::Bool(value);
    else if constexpr (std::is_same_v<T, uint32_t>)
        return Variant(static_cast<int32_t>(value));  // colours travel as VT_I4
    else
        return Variant(value);
}

// `value` has been converted to the property's type already.
template <class T>
T FromVariant(const Variant& value) {
    if constexpr (std::is_same_v<T, bool>)
        return value.BoolValue();
    else if constexpr (std::is_same_v<T, uint32_t>)
        return static_cast<uint32_t>(value.I4());
    else if constexpr (std::is_same_v<T, int16_t>)
        return value.I2();
    else if constexpr (std::is_same_v<T, int32_t>)
        return value.I4();
    else if constexpr (std::is_same_v<T, double>)
        return value.R8();
    else
        return value.Bstr();
}

// Accessors: each names one member of ControlSettings, const or not.
template <auto Member>
struct Direct {
    template <class S>
    static auto& Ref(S& s) { return s.*Member; }
};
template <size_t Axis, auto Member>
struct OfAxis {
    template <class S>
    static auto& Ref(S& s) { return s.axes[Axis].*Member; }
};
template <auto Member>
struct OfInfo {
    template <class S>
    static auto& Ref(S& s) { return s.info.*Member; }
};
template <size_t I>
struct Translation {
    template <class S>
    static auto& Ref(S& s) { return s.camTranslation[I]; }
};
template <size_t I>
struct Rotation {
    template <class S>
    static auto& Ref(S& s) { return s.camRotation[I]; }
};

template <class Access>
PropertySlot Slot() {
    using T = std::remove_cvref_t<decltype(Access::Ref(std::declval<ControlSettings&>()))>;
    return {[](const ControlSettings& s) { return ToVariant<T>(Access::Ref(s)); },
            [](ControlSettings& s, const Variant& v) { Access::Ref(s) = FromVariant<T>(v); }};
}

// One kind bit of the info window's visibility mask as a bool.
template <uint32_t Bit>
PropertySlot InfoBit() {
    return {[](const ControlSettings& s) { return Variant::Bool((s.info.itemBits & Bit) != 0); },
            [](ControlSettings& s, const Variant& v) {
                s.info.itemBits = v.BoolValue() ? s.info.itemBits | Bit : s.info.itemBits & ~Bit;
            }};
}

using Axis = ControlSettings::Axis;
using Info = ControlSettings::Info;
using G = PropertyGroup;
using E = PropertyEffect;

PropertyRow Row(DISPID id, const char* name, VARTYPE type, G group, const char* setting, PropertySlot slot, E effect) {
    PropertyRow row;
    row.id = id;
    row.name = name;
    row.type = type;
    row.group = group;
    row.setting = setting;
    row.slot = slot;
    row.effect = effect;
    return row;
}

PropertyRow MethodRow(DISPID id, const char* name, VARTYPE type, E effect, const char* typelibName = "") {
    PropertyRow row = Row(id, name, type, G::None, "", {}, effect);
    row.typelibName = typelibName;
    return row;
}

// The dispids of one axis's properties, which the published interface
// numbers differently for each axis.
struct AxisIds {
    DISPID majorGrid, minorGrid, color, majorGridColor, minorGridColor, majorTicks, minorTicks, scaleFormat,
        displayMode, label, decimalCount;
};

template <size_t I>
void AddAxis(std::vector<PropertyRow>& rows, const AxisIds& ids) {
    const std::string letter(1, "XYZ"[I]);
    const std::string prefix = letter + "-Axis ";
    // The Z grid flags change nothing but their members: the Z axis always
    // draws its grid from the values read at construction.
    const E grid = I == 2 ? E::StoreOnly : E::Axis;
    const E display = I == 2 ? E::ZDisplayMode : E::Axis;
    auto add = [&](DISPID id, std::string name, VARTYPE type, const char* setting, PropertySlot slot, E effect) {
        PropertyRow row = Row(id, "", type, G::Root, "", slot, effect);
        row.name = std::move(name);
        row.setting = prefix + setting;
        row.axis = static_cast<int>(I);
        rows.push_back(std::move(row));
    };
    add(ids.majorGrid, "Show" + letter + "MajorGrid", VT_BOOL, "Major Grid", Slot<OfAxis<I, &Axis::majorGrid>>(), grid);
    add(ids.minorGrid, "Show" + letter + "MinorGrid", VT_BOOL, "Minor Grid", Slot<OfAxis<I, &Axis::minorGrid>>(), grid);
    add(ids.color, letter + "AxisColor", VT_I4, "Number color", Slot<OfAxis<I, &Axis::numberColor>>(), E::Axis);
    add(ids.majorGridColor, letter + "MajorGridColor", VT_I4, "Major Grid color",
        Slot<OfAxis<I, &Axis::majorGridColor>>(), E::Axis);
    add(ids.minorGridColor, letter + "MinorGridColor", VT_I4, "Minor Grid color",
        Slot<OfAxis<I, &Axis::minorGridColor>>(), E::Axis);
    add(ids.majorTicks, letter + "MajorTicks", VT_I2, "Number Major Ticks", Slot<OfAxis<I, &Axis::majorTicks>>(),
        E::Axis);
    add(ids.minorTicks, letter + "MinorTicks", VT_I2, "Number Minor Ticks", Slot<OfAxis<I, &Axis::minorTicks>>(),
        E::Axis);
    add(ids.scaleFormat, letter + "ScaleFormat", VT_I2, "Scale Format", Slot<OfAxis<I, &Axis::scaleFormat>>(), E::Axis);
    add(ids.displayMode, letter + "DisplayMode", VT_I2, "Display Mode", Slot<OfAxis<I, &Axis::displayMode>>(), display);
    // The label is a method property: the axis shows the data's own label
    // until the property is set.
    add(ids.label, letter + "Label", VT_BSTR, "Label", {}, E::AxisLabel);
    rows.back().typelibName = std::string(1, "xyz"[I]) + "Label";
    add(ids.decimalCount, letter + "DecimalCount", VT_I2, "Decimal Count", Slot<OfAxis<I, &Axis::decimalCount>>(),
        E::Axis);
}

std::vector<PropertyRow> MakeRows() {
    std::vector<PropertyRow> rows;
    AddAxis<0>(rows, {1, 2, 8, 9, 10, 11, 12, 13, 14, 33, 604});
    AddAxis<1>(rows, {15, 16, 17, 18, 19, 20, 21, 22, 23, 34, 605});
    AddAxis<2>(rows, {24, 25, 26, 27, 28, 29, 30, 31, 32, 35, 606});

    rows.push_back(Row(3, "BackgroundColor", VT_I4, G::Root, "Background color",
                       Slot<Direct<&ControlSettings::backgroundColor>>(), E::Background));
    // "GraphEngine" is read at construction and never written here: setting
    // the engine writes "Engine" and "EngineName".
    rows.push_back(MethodRow(4, "Engine", VT_BSTR, E::Engine, "GraphEngine"));
    rows.back().group = G::Root;
    rows.back().setting = "GraphEngine";
    rows.push_back(Row(5, "AutoHideLegend", VT_BOOL, G::Legend, "AutoHide",
                       Slot<Direct<&ControlSettings::autoHideLegend>>(), E::LegendAutoHide));
    rows.push_back(Row(6, "ChildInfoWindow", VT_BOOL, G::Root, "Child info window",
                       Slot<Direct<&ControlSettings::childInfoWindow>>(), E::WriteOnly));
    rows.push_back(Row(7, "ShowToolTips", VT_BOOL, G::Root, "Show ToolTips",
                       Slot<Direct<&ControlSettings::showToolTips>>(), E::WriteOnly));

    rows.push_back(Row(36, "InfoTextColor", VT_I4, G::Root, "TextColor", Slot<OfInfo<&Info::textColor>>(),
                       E::InfoTextColor));
    rows.push_back(Row(37, "InfoBackColor", VT_I4, G::Root, "InfoBackgroundColor", Slot<OfInfo<&Info::backColor>>(),
                       E::InfoBackColor));
    rows.push_back(Row(38, "ShowPositionInfo", VT_BOOL, G::Root, "CurrPosVisible", InfoBit<1>(), E::InfoItems));
    rows.push_back(Row(39, "ShowMarkerInfo", VT_BOOL, G::Root, "MarkerVisible", InfoBit<2>(), E::InfoItems));
    rows.push_back(Row(40, "ShowTracerInfo", VT_BOOL, G::Root, "TracerVisible", InfoBit<4>(), E::InfoItems));
    rows.push_back(Row(41, "ShowDiffTracerInfo", VT_BOOL, G::Root, "DiffTracerVisible", InfoBit<8>(), E::InfoItems));
    rows.push_back(Row(42, "ShowRegionInfo", VT_BOOL, G::Root, "RegionVisible", InfoBit<16>(), E::InfoItems));
    rows.push_back(Row(43, "ShowZoomInfo", VT_BOOL, G::Root, "ZoomVisible", InfoBit<32>(), E::InfoItems));
    rows.push_back(Row(44, "InfoTransparent", VT_BOOL, G::Root, "Transparent", Slot<OfInfo<&Info::transparent>>(),
                       E::InfoTransparent));
    rows.push_back(Row(45, "InfoVisible", VT_BOOL, G::Root, "Visible", Slot<OfInfo<&Info::visible>>(), E::InfoVisible));

    rows.push_back(Row(46, "XCamTranslation", VT_R8, G::View3D, "X-Translation", Slot<Translation<0>>(), E::CameraStep));
    rows.push_back(Row(47, "YCamTranslation", VT_R8, G::View3D, "Y-Translation", Slot<Translation<1>>(), E::CameraStep));
    rows.push_back(Row(48, "ZCamTranslation", VT_R8, G::View3D, "Z-Translation", Slot<Translation<2>>(), E::CameraStep));
    rows.push_back(Row(49, "XCamRotation", VT_R8, G::View3D, "X-Rotation", Slot<Rotation<0>>(), E::CameraStep));
    rows.push_back(Row(50, "YCamRotation", VT_R8, G::View3D, "Y-Rotation", Slot<Rotation<1>>(), E::CameraStep));
    rows.push_back(Row(51, "ZCamRotation", VT_R8, G::View3D, "Z-Rotation", Slot<Rotation<2>>(), E::CameraStep));
    rows.push_back(Row(52, "Quality3D", VT_I2, G::View3D, "Quality", Slot<Direct<&ControlSettings::quality3D>>(),
                       E::Quality3D));
    rows.push_back(MethodRow(53, "InfoFont", VT_BSTR, E::InfoFont));
    rows.back().group = G::Root;
    rows.back().setting = "Font";

    rows.push_back(Row(600, "FastHideLegend", VT_BOOL, G::Legend, "FastHide",
                       Slot<Direct<&ControlSettings::fastHideLegend>>(), E::LegendFastHide));
    rows.push_back(Row(601, "MoveDirection", VT_I4, G::Legend, "MoveDirection",
                       Slot<Direct<&ControlSettings::moveDirection>>(), E::LegendMoveDirection));
    rows.push_back(Row(602, "FixedAspectRatio", VT_BOOL, G::None, "", Slot<Direct<&ControlSettings::fixedAspectRatio>>(),
                       E::StoreOnly));
    rows.push_back(MethodRow(603, "WindowsVisible", VT_I4, E::WindowsVisible));
    rows.push_back(MethodRow(607, "Markers", VT_DISPATCH, E::Collection));
    rows.push_back(MethodRow(608, "Regions", VT_DISPATCH, E::Collection));
    rows.push_back(MethodRow(609, "Labels", VT_DISPATCH, E::Collection));
    rows.push_back(MethodRow(-518, "Caption", VT_BSTR, E::Caption));

    std::sort(rows.begin(), rows.end(), [](const PropertyRow& a, const PropertyRow& b) {
        // Dispids ascending, the stock (negative) ones last.
        return static_cast<uint32_t>(a.id) < static_cast<uint32_t>(b.id);
    });
    return rows;
}

}  // namespace

const std::vector<PropertyRow>& PropertyTable::Rows() {
    static const std::vector<PropertyRow> rows = MakeRows();
    return rows;
}

const PropertyRow* PropertyTable::Find(DISPID id) {
    const auto& rows = Rows();
    const auto it = std::find_if(rows.begin(), rows.end(), [id](const PropertyRow& r) { return r.id == id; });
    return it == rows.end() ? nullptr : &*it;
}

const char* PropertyTable::GroupName(PropertyGroup group) {
    switch (group) {
        case PropertyGroup::Root: return "";
        case PropertyGroup::View3D: return "3DView";
        case PropertyGroup::Legend: return "Legend";
        case PropertyGroup::None: break;
    }
    return nullptr;
}

}  // namespace vexplot
