#pragma once
#include <cstdint>

namespace vexplot {

// A point in a window's client pixels.
struct PixelPoint {
    int32_t x = 0;
    int32_t y = 0;
    friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

// Modifier keys held during an input event (bits).
inline constexpr uint32_t kModShift = 1;
inline constexpr uint32_t kModControl = 2;
inline constexpr uint32_t kModAlt = 4;

// A mouse event in a window, in the window's client pixels (device pixels
// for the view windows, which the engine draws at full resolution).
struct MouseEvent {
    enum class Kind : int32_t { Press, Release, Move, DoubleClick, Wheel, Leave };
    enum class Button : int32_t { None, Left, Right, Middle };
    Kind kind = Kind::Move;
    Button button = Button::None;  // the button that changed (Press, Release, DoubleClick)
    uint32_t buttons = 0;          // buttons held: 1 left, 2 right, 4 middle
    PixelPoint point;
    uint32_t modifiers = 0;  // kMod...
    int32_t wheelDelta = 0;  // Wheel: 120 per notch, positive away from the user
};

// A key press, by the platform's virtual-key code (letters and digits as
// their upper-case ASCII codes).
struct KeyEvent {
    int32_t key = 0;
    uint32_t modifiers = 0;
};

// The virtual-key codes the control's accelerators and tools use.
namespace vk {
inline constexpr int32_t kTab = 0x09;
inline constexpr int32_t kReturn = 0x0D;
inline constexpr int32_t kEscape = 0x1B;
inline constexpr int32_t kPageUp = 0x21;
inline constexpr int32_t kPageDown = 0x22;
inline constexpr int32_t kEnd = 0x23;
inline constexpr int32_t kHome = 0x24;
inline constexpr int32_t kLeft = 0x25;
inline constexpr int32_t kUp = 0x26;
inline constexpr int32_t kRight = 0x27;
inline constexpr int32_t kDown = 0x28;
inline constexpr int32_t kInsert = 0x2D;
inline constexpr int32_t kDelete = 0x2E;
inline constexpr int32_t kApps = 0x5D;  // the keyboard's menu key
inline constexpr int32_t kNumpad0 = 0x60;
inline constexpr int32_t kAdd = 0x6B;
inline constexpr int32_t kSubtract = 0x6D;
inline constexpr int32_t kF10 = 0x79;
inline constexpr int32_t kF11 = 0x7A;
}  // namespace vk

// Animation flags of IControlSite::AnimateWindow: the platform's values, so
// that stored choices and tests read the same numbers everywhere.
namespace anim {
inline constexpr uint32_t kHorPositive = 0x00000001;  // left to right
inline constexpr uint32_t kHorNegative = 0x00000002;  // right to left
inline constexpr uint32_t kVerPositive = 0x00000004;  // top to bottom
inline constexpr uint32_t kVerNegative = 0x00000008;  // bottom to top
inline constexpr uint32_t kCenter = 0x00000010;
inline constexpr uint32_t kHide = 0x00010000;
inline constexpr uint32_t kActivate = 0x00020000;
inline constexpr uint32_t kSlide = 0x00040000;
}  // namespace anim

}  // namespace vexplot
