#include "qt/dialogs/DataEditorDialog.h"

#include <algorithm>

#include <QAbstractButton>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionHeader>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "qt/dialogs/DataGridModel.h"
#include "ui/CUIW_DataEditor.h"

namespace vexplot {

namespace {

QColor ToQColor(uint32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

QLabel* Swatch(uint32_t color, QWidget* parent) {
    auto* swatch = new QLabel(parent);
    const QColor c = ToQColor(color);
    swatch->setFixedSize(28, 16);
    swatch->setAutoFillBackground(true);
    swatch->setFrameShape(QFrame::Box);
    QPalette p = swatch->palette();
    p.setColor(QPalette::Window, c);
    swatch->setPalette(p);
    swatch->setToolTip(QString("RGB(%1, %2, %3)").arg(c.red()).arg(c.green()).arg(c.blue()));
    return swatch;
}

}  // namespace

DataEditorDialog::DataEditorDialog(CUIW_DataEditor& logic, QWidget* parent) : QDialog(parent), logic_(logic) {
    setWindowTitle(tr(CUIW_DataEditor::kCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    setSizeGripEnabled(true);

    auto* caption = new QLabel(QString::fromStdString(logic_.Title()), this);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    auto* colorLabel = new QLabel(tr("Color:"), this);
    toolTips_ = new QCheckBox(tr("Show &ToolTips"), this);
    toolTips_->setChecked(logic_.ShowToolTips());

    model_ = new DataGridModel(logic_, this);
    grid_ = new QTableView(this);
    grid_->setModel(model_);
    // Fixed section sizes: the headers never measure 4096 texts.
    grid_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    // Wide enough for the widest cell text, "-8.888888e+888", in this font.
    const int cellWidth = grid_->fontMetrics().horizontalAdvance(QStringLiteral("-8.888888e+888")) + 16;
    grid_->horizontalHeader()->setDefaultSectionSize(std::max(90, cellWidth));
    grid_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 6);
    grid_->verticalHeader()->setMinimumWidth(90);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setWordWrap(false);  // numbers never wrap, and unwrapped text lays out much faster
    grid_->setTabKeyNavigation(false);  // Tab leaves the grid; the arrow keys move between cells
    grid_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed);
    grid_->setCornerButtonEnabled(false);
    if (auto* corner = grid_->findChild<QAbstractButton*>()) corner->installEventFilter(this);
    grid_->setAccessibleName(tr("Data grid"));

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* save = buttons->addButton(tr("&Save Data"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("E&xit"), QDialogButtonBox::RejectRole);
    save->setDefault(true);
    save->setEnabled(logic_.Editable());

    auto* top = new QHBoxLayout;
    top->addWidget(caption, 1);
    top->addWidget(colorLabel);
    top->addWidget(Swatch(logic_.Color(), this));
    top->addSpacing(12);
    top->addWidget(toolTips_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(grid_, 1);
    layout->addWidget(buttons);

    setTabOrder(grid_, toolTips_);
    setTabOrder(toolTips_, buttons);
    connect(toolTips_, &QCheckBox::toggled, this, [this](bool on) { logic_.SetShowToolTips(on); });
    connect(buttons, &QDialogButtonBox::accepted, this, &DataEditorDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DataEditorDialog::reject);
    // The message waits until the cell editor has closed.
    connect(model_, &DataGridModel::EditRefused, this, [this](const QString& message) {
        QTimer::singleShot(0, this, [this, message] { QMessageBox::warning(this, windowTitle(), message); });
    });
    if (logic_.Rows() > 0) grid_->setCurrentIndex(model_->index(0, 0));
    grid_->setFocus();
    resize(720, 480);
}

// The corner over the row headers names the two axes, as the grid's first
// header cell always has.
bool DataEditorDialog::eventFilter(QObject* watched, QEvent* event) {
    auto* corner = qobject_cast<QAbstractButton*>(watched);
    if (!corner || event->type() != QEvent::Paint) return QDialog::eventFilter(watched, event);
    QPainter painter(corner);
    QStyleOptionHeader option;
    option.initFrom(corner);
    option.state |= QStyle::State_Enabled;  // a label, not a dimmed button
    option.palette.setCurrentColorGroup(QPalette::Active);
    option.rect = corner->rect();
    option.text = QString::fromLatin1(CUIW_DataEditor::kCornerText);
    option.textAlignment = Qt::AlignCenter;
    option.position = QStyleOptionHeader::OnlyOneSection;
    corner->style()->drawControl(QStyle::CE_Header, &option, &painter, corner);
    return true;
}

void DataEditorDialog::accept() {
    logic_.Save();
    QDialog::accept();
}

void DataEditorDialog::reject() {
    logic_.Exit();
    QDialog::reject();
}

QWidget* DataEditorDialog::Open(CUIW_DataEditor& logic, QWidget* parent) {
    auto* dialog = new DataEditorDialog(logic, parent);
    dialog->show();
    return dialog;
}

}  // namespace vexplot
