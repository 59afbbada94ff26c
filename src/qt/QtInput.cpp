#include "qt/QtInput.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace vexplot {

namespace {

uint32_t Modifiers(Qt::KeyboardModifiers modifiers) {
    uint32_t bits = 0;
    if (modifiers & Qt::ShiftModifier) bits |= kModShift;
    if (modifiers & Qt::ControlModifier) bits |= kModControl;
    if (modifiers & Qt::AltModifier) bits |= kModAlt;
    return bits;
}

MouseEvent::Button ButtonOf(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton: return MouseEvent::Button::Left;
        case Qt::RightButton: return MouseEvent::Button::Right;
        case Qt::MiddleButton: return MouseEvent::Button::Middle;
        default: return MouseEvent::Button::None;
    }
}

uint32_t ButtonsOf(Qt::MouseButtons buttons) {
    uint32_t bits = 0;
    if (buttons & Qt::LeftButton) bits |= 1;
    if (buttons & Qt::RightButton) bits |= 2;
    if (buttons & Qt::MiddleButton) bits |= 4;
    return bits;
}

PixelPoint PointOf(const QPointF& p) { return {static_cast<int32_t>(p.x()), static_cast<int32_t>(p.y())}; }

// Keys whose virtual-key code differs from Qt's key number.
std::optional<int32_t> SpecialKey(int key) {
    switch (key) {
        case Qt::Key_Tab: return vk::kTab;
        case Qt::Key_Return:
        case Qt::Key_Enter: return vk::kReturn;
        case Qt::Key_Escape: return vk::kEscape;
        case Qt::Key_PageUp: return vk::kPageUp;
        case Qt::Key_PageDown: return vk::kPageDown;
        case Qt::Key_End: return vk::kEnd;
        case Qt::Key_Home: return vk::kHome;
        case Qt::Key_Left: return vk::kLeft;
        case Qt::Key_Up: return vk::kUp;
        case Qt::Key_Right: return vk::kRight;
        case Qt::Key_Down: return vk::kDown;
        case Qt::Key_Insert: return vk::kInsert;
        case Qt::Key_Delete: return vk::kDelete;
        case Qt::Key_Menu: return vk::kApps;
        case Qt::Key_Plus: return vk::kAdd;
        case Qt::Key_Minus: return vk::kSubtract;
        default: break;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 0x70 + (key - Qt::Key_F1);
    return std::nullopt;
}

Qt::KeyboardModifiers QtModifiers(uint32_t bits) {
    Qt::KeyboardModifiers modifiers;
    if (bits & kModShift) modifiers |= Qt::ShiftModifier;
    if (bits & kModControl) modifiers |= Qt::ControlModifier;
    if (bits & kModAlt) modifiers |= Qt::AltModifier;
    return modifiers;
}

// The Qt keys of a virtual-key code: SpecialKey read backwards, and the
// letters and digits, whose codes are their own.
QList<Qt::Key> QtKeys(int32_t code) {
    if ((code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z')) return {static_cast<Qt::Key>(code)};
    if (code >= 0x70 && code < 0x70 + 24) return {static_cast<Qt::Key>(Qt::Key_F1 + (code - 0x70))};
    QList<Qt::Key> keys;
    for (int key = Qt::Key_Escape; key <= Qt::Key_Menu; ++key)
        if (SpecialKey(key) == code) keys.push_back(static_cast<Qt::Key>(key));
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus})
        if (SpecialKey(key) == code) keys.push_back(key);
    return keys;
}

}  // namespace

QList<QKeySequence> ToKeySequences(const KeyEvent& key) {
    QList<QKeySequence> sequences;
    for (const Qt::Key k : QtKeys(key.key)) sequences.push_back(QKeySequence(QKeyCombination(QtModifiers(key.modifiers), k)));
    return sequences;
}

MouseEvent ToMouseEvent(const QMouseEvent& event, MouseEvent::Kind kind) {
    MouseEvent out;
    out.kind = kind;
    out.button = ButtonOf(event.button());
    out.buttons = ButtonsOf(event.buttons());
    out.point = PointOf(event.position());
    out.modifiers = Modifiers(event.modifiers());
    return out;
}

MouseEvent ToMouseEvent(const QWheelEvent& event) {
    MouseEvent out;
    out.kind = MouseEvent::Kind::Wheel;
    out.buttons = ButtonsOf(event.buttons());
    out.point = PointOf(event.position());
    out.modifiers = Modifiers(event.modifiers());
    out.wheelDelta = event.angleDelta().y();
    return out;
}

std::optional<KeyEvent> ToKeyEvent(const QKeyEvent& event) {
    const int key = event.key();
    KeyEvent out;
    out.modifiers = Modifiers(event.modifiers());
    if ((event.modifiers() & Qt::KeypadModifier) && key >= Qt::Key_0 && key <= Qt::Key_9) {
        out.key = vk::kNumpad0 + (key - Qt::Key_0);  // the keypad's digits have codes of their own
    } else if (const auto special = SpecialKey(key)) {
        out.key = *special;
    } else if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) {
        out.key = key;  // Qt numbers digits and letters by their upper-case ASCII codes, as the platform does
    } else {
        return std::nullopt;
    }
    return out;
}

}  // namespace vexplot
