#include "qt/dialogs/KeyboardMapDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

#include "control/KeyboardMapLogic.h"
#include "site/IControlSite.h"

namespace vexplot {

KeyboardMapDialog::KeyboardMapDialog(const KeyboardMapLogic& logic, QWidget* parent) : QDialog(parent) {
    setWindowTitle(tr("Keyboard Map"));
    auto* table = new QTableWidget(static_cast<int>(logic.Rows().size()), 3, this);
    table->setHorizontalHeaderLabels({tr("Keys"), tr("Action"), tr("Where")});
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    int row = 0;
    for (const KeyboardMapLogic::Row& r : logic.Rows()) {
        table->setItem(row, 0, new QTableWidgetItem(QString::fromStdString(r.keys)));
        table->setItem(row, 1, new QTableWidgetItem(QString::fromStdString(r.action)));
        table->setItem(row, 2, new QTableWidgetItem(QString::fromStdString(r.where)));
        ++row;
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(buttons);
    resize(600, 500);
}

int32_t KeyboardMapDialog::Run(IDialogLogic& logic, QWidget* parent) {
    auto* own = dynamic_cast<KeyboardMapLogic*>(&logic);
    if (!own) return kAnswerCancel;
    KeyboardMapDialog dialog(*own, parent);
    return dialog.exec() == QDialog::Accepted ? kAnswerOk : kAnswerCancel;
}

}  // namespace vexplot
