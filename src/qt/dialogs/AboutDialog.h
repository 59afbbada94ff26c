#pragma once
#include <QDialog>
#include <cstdint>

#include "site/IDialogLogic.h"

namespace vexplot {

class AboutLogic;

// The about box: the control's name and version over a form of what it
// runs on (engine, renderer, settings store).
class AboutDialog final : public QDialog {
    Q_OBJECT
public:
    AboutDialog(const AboutLogic& logic, QWidget* parent);
    // Runs the window over `logic` (a AboutLogic) modally; kAnswerOk when
    // closed with OK, else kAnswerCancel.
    static int32_t Run(IDialogLogic& logic, QWidget* parent);
};

}  // namespace vexplot
