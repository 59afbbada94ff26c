#pragma once
#include <QFileDialog>

#include "site/IDialogLogic.h"

class QComboBox;
class QLineEdit;

namespace vexplot {

class ExportSizeChooser;

// Qt's own (non-native) save-file dialog with the size strip of
// ExportSizeChooser added under its file list: "&Width:" and "&Height:"
// edits and the list of sizes. Every edit goes to the logic at once; the
// strip shows what the logic holds. Confirming a name asks the logic to
// take it; a name it refuses keeps the dialog open with its message.
class ExportSizeDialog final : public QFileDialog {
    Q_OBJECT
public:
    ExportSizeDialog(ExportSizeChooser& logic, QWidget* parent);

    // The registry's entry: runs the dialog over `logic` (an
    // ExportSizeChooser) and answers kAnswerOk or kAnswerCancel.
    static int32_t Run(IDialogLogic& logic, QWidget* parent);

    void done(int result) override;

private:
    QWidget* MakeStrip();
    void ShowLogic();

    ExportSizeChooser& logic_;
    QLineEdit* width_ = nullptr;
    QLineEdit* height_ = nullptr;
    QComboBox* sizes_ = nullptr;
};

}  // namespace vexplot
