#pragma once
#include <string>
#include <vector>

#include "com/IDispatch.h"
#include "com/Variant.h"
#include "control/ControlSettings.h"

namespace vexplot {

// Where a property's setting lives in the settings store.
enum class PropertyGroup { None, Root, View3D, Legend };

// What a change of a property does after the member is stored and the
// setting written.
enum class PropertyEffect {
    WriteOnly,         // the setting alone (ShowToolTips, ChildInfoWindow)
    StoreOnly,         // not even the setting: the member is all that changes
    Axis,              // the axis `PropertyRow::axis` is re-applied
    ZDisplayMode,      // axis Z, and the 3-D view's logarithmic Z
    Background,        // the 2-D device and the 3-D view
    LegendAutoHide,
    LegendFastHide,
    LegendMoveDirection,
    InfoTextColor,     // 0 and 0xFFFFFF are moved off the transparency keys first
    InfoBackColor,
    InfoItems,         // the info window's visibility mask
    InfoTransparent,
    InfoVisible,
    CameraStep,        // read by the navigator and the mouse at each move
    Quality3D,
    // Method properties: the control computes the value itself.
    Engine,
    InfoFont,
    WindowsVisible,
    AxisLabel,
    Caption,
    Collection,        // the annotation collections: read-only
};

// How a member property reaches its member of ControlSettings: the value
// as a Variant of the property's type, and back. Both null for method
// properties.
struct PropertySlot {
    Variant (*get)(const ControlSettings&) = nullptr;
    void (*set)(ControlSettings&, const Variant&) = nullptr;
};

// One property of the control's automation surface.
struct PropertyRow {
    DISPID id = 0;
    std::string name;         // the dispatch name
    std::string typelibName;  // empty when the type library spells it the same
    VARTYPE type = VT_EMPTY;  // bool VT_BOOL, colour and 32-bit VT_I4, 16-bit VT_I2, double VT_R8, text VT_BSTR
    PropertyGroup group = PropertyGroup::None;
    std::string setting;  // the value's name in its group; empty when not persisted
    PropertySlot slot;
    PropertyEffect effect = PropertyEffect::WriteOnly;
    int axis = -1;  // 0 X, 1 Y, 2 Z for the axis effects and labels

    bool IsMemberProperty() const { return slot.get != nullptr; }
};

// Every property of the control, in dispid order of the published
// interface: the one description the control's get/put, the dispatch table
// and the tests share.
class PropertyTable {
public:
    static const std::vector<PropertyRow>& Rows();
    // Null when `id` is not a property.
    static const PropertyRow* Find(DISPID id);
    // The store's name of a group ("" for the root); null for None.
    static const char* GroupName(PropertyGroup group);
};

}  // namespace vexplot
