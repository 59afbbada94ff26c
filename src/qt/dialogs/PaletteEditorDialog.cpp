#include "qt/dialogs/PaletteEditorDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "qt/dialogs/ColorBarWidget.h"
#include "site/IControlSite.h"
#include "ui/PaletteEditor.h"

namespace vexplot {

PaletteEditorDialog::PaletteEditorDialog(PaletteEditor& logic, QWidget* parent) : QDialog(parent), logic_(logic) {
    setWindowTitle(tr("Colors"));
    types_ = new QComboBox(this);
    for (const char* name : PaletteEditor::TypeNames()) types_->addItem(tr(name));
    types_->setCurrentIndex(logic_.Type());
    auto* typeLabel = new QLabel(tr("Palette &Type"), this);
    typeLabel->setBuddy(types_);
    typeLabel->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    typeLabel->setContentsMargins(0, 0, 4, 0);  // room for the last glyph at fractional scales

    bar_ = new ColorBarWidget(logic_, this);
    status_ = new QLabel(this);
    status_->setWordWrap(true);
    status_->setMinimumHeight(2 * status_->fontMetrics().height());
    status_->setForegroundRole(QPalette::PlaceholderText);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);

    auto* typeRow = new QHBoxLayout;
    typeRow->addWidget(typeLabel);
    typeRow->addWidget(types_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(typeRow);
    layout->addWidget(bar_);
    layout->addWidget(status_);
    layout->addWidget(buttons);

    setTabOrder(types_, bar_);
    setTabOrder(bar_, buttons);
    connect(types_, &QComboBox::activated, this, &PaletteEditorDialog::ChooseType);
    // A menu's status text while it is open, the hint again once it closes.
    connect(bar_, &ColorBarWidget::StatusText, this, [this](const QString& text) {
        if (text.isEmpty())
            ShowHint();
        else
            status_->setText(text);
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    ShowHint();
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    types_->setFocus();
}

void PaletteEditorDialog::ChooseType(int index) {
    logic_.ChooseType(index);
    ShowHint();
    bar_->update();
}

void PaletteEditorDialog::ShowHint() {
    status_->setText(logic_.CustomMode() ? tr("Double-click the bar to add a color, drag a marker to move it")
                                         : QString());
}

int32_t PaletteEditorDialog::Run(PaletteEditor& logic, QWidget* parent) {
    PaletteEditorDialog dialog(logic, parent);
    return dialog.exec() == QDialog::Accepted ? kAnswerOk : kAnswerCancel;
}

}  // namespace vexplot
