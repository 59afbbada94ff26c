#pragma once
#include <QDialog>
#include <cstdint>

#include "site/IDialogLogic.h"

namespace vexplot {

class KeyboardMapLogic;

// The "Keyboard Map" window: a table of the keys, what they do and where,
// drawn from KeyboardMapLogic's rows.
class KeyboardMapDialog final : public QDialog {
    Q_OBJECT
public:
    KeyboardMapDialog(const KeyboardMapLogic& logic, QWidget* parent);
    // Runs the window over `logic` (a KeyboardMapLogic) modally; kAnswerOk when
    // closed with OK, else kAnswerCancel.
    static int32_t Run(IDialogLogic& logic, QWidget* parent);
};

}  // namespace vexplot
