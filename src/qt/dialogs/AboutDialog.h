#pragma once
#include <QDialog>

namespace vexplot {

class AboutLogic;

// The about box: the control's name and version over a form of what it
// runs on (engine, renderer, settings store).
class AboutDialog final : public QDialog {
    Q_OBJECT
public:
    AboutDialog(const AboutLogic& logic, QWidget* parent);
};

}  // namespace vexplot
