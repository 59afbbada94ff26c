#include "qt/dialogs/AboutDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "control/AboutLogic.h"
#include "site/IControlSite.h"

namespace vexplot {

AboutDialog::AboutDialog(const AboutLogic& logic, QWidget* parent) : QDialog(parent) {
    setWindowTitle(tr("About Vexplot"));
    auto* title = new QLabel(QString::fromStdString(logic.Title()), this);
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    title->setFont(big);
    auto* form = new QFormLayout();
    for (const auto& [label, value] : logic.Lines()) {
        auto* text = new QLabel(QString::fromStdString(value), this);
        // Paths and renderer strings are worth copying into a bug report.
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        text->setWordWrap(true);
        form->addRow(QString::fromStdString(label) + ":", text);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

int32_t AboutDialog::Run(IDialogLogic& logic, QWidget* parent) {
    auto* own = dynamic_cast<AboutLogic*>(&logic);
    if (!own) return kAnswerCancel;
    AboutDialog dialog(*own, parent);
    return dialog.exec() == QDialog::Accepted ? kAnswerOk : kAnswerCancel;
}

}  // namespace vexplot
