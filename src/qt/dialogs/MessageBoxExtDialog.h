#pragma once
#include <QDialog>

#include "site/IDialogLogic.h"

class QCheckBox;

namespace vexplot {

class CMessageBoxExt;

// The window of CMessageBoxExt: the style's own icon from the platform's
// style, the text, the check box "&Don't show me this again." and the
// style's buttons, placed by CMessageBoxExt::Lay from this font's metrics.
// Enter presses the default button; Escape presses Cancel, or OK on a box
// with OK alone, and does nothing on a Yes/No box.
class MessageBoxExtDialog final : public QDialog {
    Q_OBJECT
public:
    MessageBoxExtDialog(CMessageBoxExt& logic, QWidget* parent);

    // The registry's entry: the answer code of the button pressed.
    static int32_t Run(IDialogLogic& logic, QWidget* parent);

    void reject() override;

private:
    void Press(int32_t answer);

    CMessageBoxExt& logic_;
    QCheckBox* check_ = nullptr;
};

}  // namespace vexplot
