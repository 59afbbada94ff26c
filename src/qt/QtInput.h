#pragma once
#include <QKeySequence>
#include <QList>
#include <optional>

#include "site/WindowInput.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace vexplot {

// Qt's input events in the control's terms: client pixels, the platform's
// virtual-key codes and modifier bits.
MouseEvent ToMouseEvent(const QMouseEvent& event, MouseEvent::Kind kind);
MouseEvent ToMouseEvent(const QWheelEvent& event);
// Nothing for keys the control has no code for (a lone modifier, say).
std::optional<KeyEvent> ToKeyEvent(const QKeyEvent& event);
// The Qt keys that ToKeyEvent reads as `key` (Enter comes from two keys);
// empty for a code Qt has no key for.
QList<QKeySequence> ToKeySequences(const KeyEvent& key);

}  // namespace vexplot
