#pragma once
#include <QDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

#include <cstdint>
#include <functional>
#include <vector>

namespace vexplot {

class AnnotationDialog;
class IDialogLogic;

// The Qt window of the four annotation property dialogs ("Marker
// Properties", "Region property", "Difference Tracer", "Label
// Properties"): a form built by the dialog's Run function over its logic.
// Numbers are shown and read in the C locale (files and scripts use the
// same digits); OK reads every field back, lets the logic check and write
// them, and stays open on a refusal with the message and the focus on the
// field; Cancel and Escape leave the object as it was.
class AnnotationPropertiesDialog final : public QDialog {
    Q_OBJECT
public:
    AnnotationPropertiesDialog(AnnotationDialog& logic, QWidget* parent);

    QFormLayout& Form() { return *form_; }
    // A number field under `label` (with its mnemonic) bound to `value`.
    QLineEdit* AddNumber(const QString& label, double& value, QFormLayout* into = nullptr);
    // A colour button showing its swatch, bound to a 0x00BBGGRR colour.
    QPushButton* AddColor(const QString& text, uint32_t& color, QFormLayout* into = nullptr);
    // Adds the OK and Cancel buttons; call last.
    void Finish();

    // Runs one of the four dialogs modally: kAnswerOk or kAnswerCancel.
    static int32_t RunMarker(IDialogLogic& logic, QWidget* parent);
    static int32_t RunRegion(IDialogLogic& logic, QWidget* parent);
    static int32_t RunDiffTracer(IDialogLogic& logic, QWidget* parent);
    static int32_t RunLabel(IDialogLogic& logic, QWidget* parent);

    // Work done on OK before the logic checks the fields (reading edits).
    std::vector<std::function<bool()>> readers;

private:
    void Accept();

    AnnotationDialog& logic_;
    QFormLayout* form_;
};

}  // namespace vexplot
