#include "qt/dialogs/ExportSizeDialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

#include "site/IControlSite.h"
#include "ui/ExportSizeChooser.h"

namespace vexplot {

namespace {

// "Bitmap file (*.BMP)" with the patterns "*.bmp" becomes the Qt filter
// "Bitmap file (*.BMP) (*.bmp *.BMP)": Qt matches the last parentheses,
// case by case on Linux, and HideNameFilterDetails shows the description
// as written.
QString QtFilter(const ExportSizeChooser::FileType& type) {
    QStringList patterns;
    for (const QString& p : QString::fromStdString(type.patterns).split(';', Qt::SkipEmptyParts)) {
        patterns << p.trimmed();
        if (p.trimmed().toUpper() != p.trimmed()) patterns << p.trimmed().toUpper();
    }
    return QString::fromStdString(type.description) + " (" + patterns.join(' ') + ")";
}

}  // namespace

ExportSizeDialog::ExportSizeDialog(ExportSizeChooser& logic, QWidget* parent) : QFileDialog(parent), logic_(logic) {
    setObjectName("ExportSizeDialog");
    setOption(QFileDialog::DontUseNativeDialog);
    setOption(QFileDialog::HideNameFilterDetails);
    setAcceptMode(logic.ForOpening() ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    setFileMode(logic.ForOpening() ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    QStringList filters;
    for (const auto& type : logic.FileTypes()) filters << QtFilter(type);
    setNameFilters(filters);
    setDefaultSuffix(QString::fromStdString(logic.DefaultExtension()));
    if (!logic.InitialName().empty()) selectFile(QString::fromStdString(logic.InitialName()));
    if (logic.HasSizeStrip()) {
        if (auto* grid = qobject_cast<QGridLayout*>(layout()))
            grid->addWidget(MakeStrip(), grid->rowCount(), 0, 1, grid->columnCount());
        ShowLogic();
    }
}

QWidget* ExportSizeDialog::MakeStrip() {
    auto* strip = new QWidget(this);
    strip->setObjectName("sizeStrip");
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 0, 0, 0);
    auto edit = [this, strip](const char* name) {
        auto* e = new QLineEdit(strip);
        e->setObjectName(name);
        e->setMaxLength(static_cast<int>(ExportSizeChooser::kMaxDigits));
        // Wide enough for the ten characters the edit reads.
        e->setFixedWidth(e->fontMetrics().horizontalAdvance(QString(11, '0')) + 12);
        return e;
    };
    auto* widthLabel = new QLabel("&Width:", strip);
    width_ = edit("widthEdit");
    widthLabel->setBuddy(width_);
    auto* heightLabel = new QLabel("&Height:", strip);
    height_ = edit("heightEdit");
    heightLabel->setBuddy(height_);
    sizes_ = new QComboBox(strip);
    sizes_->setObjectName("sizeList");
    for (const auto& preset : ExportSizeChooser::Presets()) sizes_->addItem(preset.text);
    row->addWidget(widthLabel);
    row->addWidget(width_);
    row->addSpacing(12);
    row->addWidget(heightLabel);
    row->addWidget(height_);
    row->addStretch(1);
    row->addWidget(sizes_);
    connect(width_, &QLineEdit::textEdited, this, [this](const QString& t) { logic_.SetWidthText(t.toStdString()); });
    connect(height_, &QLineEdit::textEdited, this, [this](const QString& t) { logic_.SetHeightText(t.toStdString()); });
    connect(sizes_, &QComboBox::currentIndexChanged, this, [this](int index) {
        logic_.Select(index);
        ShowLogic();
    });
    return strip;
}

void ExportSizeDialog::ShowLogic() {
    const QSignalBlocker block(sizes_);
    sizes_->setCurrentIndex(logic_.Selection());
    width_->setText(QString::fromStdString(logic_.WidthText()));
    height_->setText(QString::fromStdString(logic_.HeightText()));
    width_->setEnabled(logic_.SizeEditable());
    height_->setEnabled(logic_.SizeEditable());
}

void ExportSizeDialog::done(int result) {
    if (result == QDialog::Accepted) {
        const QStringList files = selectedFiles();
        if (!logic_.Confirm(files.isEmpty() ? std::string() : files.first().toStdString())) {
            QMessageBox::warning(this, windowTitle(), QString::fromStdString(logic_.Error()));
            return;
        }
    }
    QFileDialog::done(result);
}

int32_t ExportSizeDialog::Run(IDialogLogic& logic, QWidget* parent) {
    auto* chooser = dynamic_cast<ExportSizeChooser*>(&logic);
    if (!chooser) return kAnswerCancel;
    ExportSizeDialog dialog(*chooser, parent);
    return dialog.exec() == QDialog::Accepted ? kAnswerOk : kAnswerCancel;
}

}  // namespace vexplot
