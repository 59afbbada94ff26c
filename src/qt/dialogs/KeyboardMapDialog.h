#pragma once
#include <QDialog>

namespace vexplot {

class KeyboardMapLogic;

// The "Keyboard Map" window: a table of the keys, what they do and where,
// drawn from KeyboardMapLogic's rows.
class KeyboardMapDialog final : public QDialog {
    Q_OBJECT
public:
    KeyboardMapDialog(const KeyboardMapLogic& logic, QWidget* parent);
};

}  // namespace vexplot
