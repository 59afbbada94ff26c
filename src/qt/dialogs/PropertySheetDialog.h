#pragma once
#include <QDialog>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "site/IDialogLogic.h"
#include "ui/ControlPropertySheet.h"

class QDialogButtonBox;
class QFormLayout;
class QLineEdit;
class QTabWidget;

namespace vexplot {

// "Vexplot Control Properties": one tab per page of ControlPropertySheet,
// built from its field table. Each widget is named after the property it
// edits; every edit goes to the logic at once, and OK or Apply ask the
// logic to apply. A refused field brings its page forward, shows the
// message and puts the focus back on the field.
class PropertySheetDialog final : public QDialog {
    Q_OBJECT
public:
    PropertySheetDialog(ControlPropertySheet& logic, QWidget* parent);

    // The registry's entry: kAnswerOk when the user pressed OK and the
    // changes were applied.
    static int32_t Run(IDialogLogic& logic, QWidget* parent);

    void accept() override;

private:
    QWidget* MakePage(size_t page);
    void AddField(QFormLayout* form, const ControlPropertySheet::Field& field);
    QWidget* MakeSwatch(const ControlPropertySheet::Field& field);
    // The description with its label and the two buttons; the description
    // (named after the property) comes back in `description`.
    QWidget* MakeFontRow(const ControlPropertySheet::Field& field, QLineEdit** description);
    bool ApplyChanges();
    void ShowLogic();
    void UpdateButtons();

    ControlPropertySheet& logic_;
    QTabWidget* tabs_ = nullptr;
    QDialogButtonBox* buttons_ = nullptr;
    std::map<std::string, QWidget*> widgets_;    // by property name, for the focus
    std::vector<std::function<void()>> show_;  // logic to widget, one per field
};

}  // namespace vexplot
