#pragma once
#include <QDialog>

class QComboBox;
class QLabel;

namespace vexplot {

class ColorBarWidget;
class PaletteEditor;

// The palette editor "Colors": the "Palette &Type" list over the colour bar
// (ColorBarWidget), a status line for the menus' texts, OK and Cancel.
class PaletteEditorDialog : public QDialog {
    Q_OBJECT
public:
    PaletteEditorDialog(PaletteEditor& logic, QWidget* parent);

    QComboBox* TypeList() const { return types_; }
    ColorBarWidget* Bar() const { return bar_; }

    // Runs the dialog modally over `parent`: kAnswerOk or kAnswerCancel.
    static int32_t Run(PaletteEditor& logic, QWidget* parent);

private:
    void ChooseType(int index);
    void ShowHint();

    PaletteEditor& logic_;
    QComboBox* types_ = nullptr;
    ColorBarWidget* bar_ = nullptr;
    QLabel* status_ = nullptr;
};

}  // namespace vexplot
