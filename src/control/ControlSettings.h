#pragma once
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include "engine/IGraphEngine.h"
#include "model/LogicalFont.h"

namespace vexplot {

class CRegistryKey;
class MessageSink;
class SettingsStore;

// The control's mirror of its persisted settings: one member per setting of
// the root group and of the "3DView" and "Legend" groups, plus the members
// that have no setting. Read once when a control is constructed (every
// missing value is written back with its default, so a change made in one
// instance becomes the default of the next), and the info-window group when
// the windows are created.
//
// Some readings are deliberately irregular, because saved settings and
// hosts depend on them:
//  - "Show ToolTips" is forced off: any value found is replaced by 0 and 0
//    is written back;
//  - a missing camera step keeps a smaller value in memory (0.2, 0.01, 0.1)
//    than the text written back ("0.3", "0.05", "0.5"), so the first
//    instance moves in smaller steps than every later one;
//  - the legend "Visible" value is read twice; the first read writes 0 when
//    missing, so the second always finds a value;
//  - a missing legend "Height"/"Width" is written as the current Top/Left
//    value while that first run keeps a rectangle of zero height and width;
//  - "Quality" not greater than 0 becomes 0 and is written;
//  - "Visible" of the info window is not written back when missing;
//  - a "Font" record of the wrong size or naming no face keeps the default
//    font and is left as it is;
//  - "GraphEngine" is read only, never written.
struct ControlSettings {
    // The settings of one axis, "<letter>-Axis ...".
    struct Axis {
        uint32_t numberColor = 0xFFFFFF;
        uint32_t minorGridColor = 0xACACAC;
        uint32_t majorGridColor = 0xD7D7D7;
        bool minorGrid = true;
        bool majorGrid = true;
        int16_t minorTicks = 5;
        int16_t majorTicks = 5;
        int16_t scaleFormat = 0;
        int16_t displayMode = 0;
        std::string label;
        int16_t decimalCount = 10;
    };

    // The info window's group, read during window creation.
    struct Info {
        uint32_t textColor = 0xFFFFFF;
        uint32_t backColor = 0xF0F0F0;  // the button-face colour of the default theme
        uint32_t itemBits = 63;         // position 1, marker 2, tracer 4, diff tracer 8, region 16, zoom 32
        bool transparent = false;
        bool visible = false;
        PixelRect rect{50, 50, 250, 150};
        bool docked = true;
        // "Font", a logical font record; when missing: "Arial", height -11,
        // normal weight, Swiss family (set by the constructor).
        LogicalFont font;
    };

    // root group:
    std::string graphEngine;  // "GraphEngine": the Engine property at construction
    uint32_t backgroundColor = 0;
    bool childInfoWindow = true;
    bool showToolTips = false;
    std::array<Axis, 3> axes;  // X, Y, Z
    int32_t legendControlTop = 0;
    int32_t legendControlLeft = 50;
    int32_t menuControlTop = 0;
    int32_t menuControlLeft = 5;
    // "3DView" group:
    int16_t quality3D = 0;
    std::array<double, 3> camTranslation{0.2, 0.2, 0.2};
    std::array<double, 3> camRotation{0.01, 0.01, 0.1};
    // "Legend" group:
    bool autoHideLegend = true;
    bool fastHideLegend = false;
    int32_t moveDirection = 2;
    bool legendVisible = false;
    PixelRect legendRect{50, 50, 50, 50};
    Info info;

    // members without a setting:
    bool gridFlag = true;
    bool dataSelectEnable = true;
    bool axesShown = true;
    bool dataFlag = false;
    bool fixedAspectRatio = false;

    ControlSettings();

    // Reads the root, "3DView" and "Legend" groups in the construction-time
    // order. `sink` and `store` are passed to the keys (null: defaults).
    void Read(MessageSink* sink, const std::shared_ptr<SettingsStore>& store);
    // Reads the info window's values of the root group.
    void ReadInfo(MessageSink* sink, const std::shared_ptr<SettingsStore>& store);

private:
    void ReadRoot(CRegistryKey& key);
    void ReadAxis(CRegistryKey& key, char letter, Axis& axis);
    void Read3DView(CRegistryKey& key);
    void ReadLegend(CRegistryKey& key);
    void ReadInfoFont(CRegistryKey& key);
};

// A camera step as the mouse and the navigator use it: the stored value may
// come from another program's store or a file, so it is held to the -1 .. 1
// the property page allows, and a value that is not a number moves nothing.
inline double UsableStep(double step) { return std::isfinite(step) ? std::clamp(step, -1.0, 1.0) : 0.0; }

}  // namespace vexplot
