#include "qt/dialogs/AnnotationPropertiesDialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "annotations/DiffTracerDialog.h"
#include "annotations/LabelDialog.h"
#include "annotations/MarkerDialog.h"
#include "annotations/RegionDialog.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

QColor ToQColor(uint32_t c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }
uint32_t FromQColor(const QColor& c) {
    return static_cast<uint32_t>(c.red()) | static_cast<uint32_t>(c.green()) << 8 |
           static_cast<uint32_t>(c.blue()) << 16;
}

void ShowSwatch(QPushButton* button, uint32_t color) {
    QPixmap swatch(16, 16);
    swatch.fill(ToQColor(color));
    button->setIcon(QIcon(swatch));
    button->setToolTip(ToQColor(color).name());
}

int32_t Run(AnnotationPropertiesDialog& dialog) {
    dialog.Finish();
    return dialog.exec() == QDialog::Accepted ? kAnswerOk : kAnswerCancel;
}

}  // namespace

AnnotationPropertiesDialog::AnnotationPropertiesDialog(AnnotationDialog& logic, QWidget* parent)
    : QDialog(parent), logic_(logic), form_(new QFormLayout) {
    setWindowTitle(QString::fromUtf8(logic.Caption()));
    setObjectName(QString::fromUtf8(std::string(logic.DialogName()).c_str()));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form_);
}

QLineEdit* AnnotationPropertiesDialog::AddNumber(const QString& label, double& value, QFormLayout* into) {
    auto* edit = new QLineEdit(QLocale::c().toString(value, 'g', 15), this);
    (into ? into : form_)->addRow(label, edit);
    readers.push_back([this, edit, &value, label] {
        bool ok = false;
        const double read = QLocale::c().toDouble(edit->text().trimmed(), &ok);
        if (ok) {
            value = read;
            return true;
        }
        QMessageBox::warning(this, windowTitle(), tr("%1 needs a number.").arg(QString(label).remove('&')));
        edit->setFocus();
        edit->selectAll();
        return false;
    });
    return edit;
}

QPushButton* AnnotationPropertiesDialog::AddColor(const QString& text, uint32_t& color, QFormLayout* into) {
    auto* button = new QPushButton(text, this);
    ShowSwatch(button, color);
    connect(button, &QPushButton::clicked, this, [this, button, &color] {
        const QColor chosen = QColorDialog::getColor(ToQColor(color), this, windowTitle());
        if (!chosen.isValid()) return;
        color = FromQColor(chosen);
        ShowSwatch(button, color);
    });
    (into ? into : form_)->addRow(button);
    return button;
}

void AnnotationPropertiesDialog::Finish() {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &AnnotationPropertiesDialog::Accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout()->addWidget(buttons);
}

void AnnotationPropertiesDialog::Accept() {
    for (const auto& read : readers)
        if (!read()) return;
    std::string error;
    if (!logic_.Accept(&error)) {
        QMessageBox::warning(this, windowTitle(), QString::fromStdString(error));
        return;
    }
    accept();
}

// -- the four dialogs --

int32_t AnnotationPropertiesDialog::RunMarker(IDialogLogic& logic, QWidget* parent) {
    auto& m = dynamic_cast<MarkerDialog&>(logic);
    AnnotationPropertiesDialog dialog(m, parent);
    dialog.AddNumber(tr("&X:"), m.x);
    dialog.AddNumber(tr("&Y:"), m.y);
    dialog.AddNumber(tr("&Z:"), m.z);
    auto* label = new QLineEdit(QString::fromStdString(m.label), &dialog);
    dialog.Form().addRow(tr("Marker &Label:"), label);
    auto* lines = new QCheckBox(tr("Draw &Lines"), &dialog);
    lines->setChecked(m.drawLines);
    dialog.Form().addRow(lines);
    dialog.AddColor(tr("&Color"), m.color);
    dialog.readers.push_back([&m, label, lines] {
        m.label = label->text().toStdString();
        m.drawLines = lines->isChecked();
        return true;
    });
    return Run(dialog);
}

int32_t AnnotationPropertiesDialog::RunRegion(IDialogLogic& logic, QWidget* parent) {
    auto& r = dynamic_cast<RegionDialog&>(logic);
    AnnotationPropertiesDialog dialog(r, parent);
    for (const auto& [title, corner] : {std::pair{tr(" Top left corner "), std::array{&r.x1, &r.y1, &r.z1}},
                                        std::pair{tr(" Bottom right corner "), std::array{&r.x2, &r.y2, &r.z2}}}) {
        auto* box = new QGroupBox(title, &dialog);
        auto* form = new QFormLayout(box);
        dialog.AddNumber(tr("X:"), *corner[0], form);
        dialog.AddNumber(tr("Y:"), *corner[1], form);
        dialog.AddNumber(tr("Z:"), *corner[2], form);
        dialog.Form().addRow(box);
    }
    dialog.AddColor(tr("Color:"), r.color);
    auto* spacing = new QSpinBox(&dialog);
    spacing->setRange(1, 100);
    spacing->setValue(std::clamp(r.spacing, 1, 100));
    dialog.Form().addRow(tr("Spacing:"), spacing);
    auto* style = new QComboBox(&dialog);
    for (const char* name : RegionDialog::kStyleNames) style->addItem(tr(name));
    style->setCurrentIndex(std::clamp(r.style, 0, 3));
    dialog.Form().addRow(tr("Style: "), style);
    dialog.readers.push_back([&r, spacing, style] {
        r.spacing = spacing->value();
        r.style = style->currentIndex();
        return true;
    });
    return Run(dialog);
}

int32_t AnnotationPropertiesDialog::RunDiffTracer(IDialogLogic& logic, QWidget* parent) {
    auto& d = dynamic_cast<DiffTracerDialog&>(logic);
    AnnotationPropertiesDialog dialog(d, parent);
    auto* box = new QGroupBox(tr(" Fixed Position: "), &dialog);
    auto* form = new QFormLayout(box);
    dialog.AddNumber(tr("&X:"), d.x, form);
    dialog.AddNumber(tr("&Y:"), d.y, form);
    dialog.AddNumber(tr("&Z:"), d.z, form);
    dialog.Form().addRow(box);
    auto* line = new QCheckBox(tr("Draw &Line"), &dialog);
    line->setChecked(d.drawLine);
    dialog.Form().addRow(line);
    dialog.AddColor(tr("&Color:"), d.color);
    dialog.readers.push_back([&d, line] {
        d.drawLine = line->isChecked();
        return true;
    });
    return Run(dialog);
}

int32_t AnnotationPropertiesDialog::RunLabel(IDialogLogic& logic, QWidget* parent) {
    auto& l = dynamic_cast<LabelDialog&>(logic);
    AnnotationPropertiesDialog dialog(l, parent);
    auto* text = new QLineEdit(QString::fromStdString(l.text), &dialog);
    dialog.Form().addRow(tr("&Text:"), text);
    auto* append = new QCheckBox(tr("&Append Coordinates"), &dialog);
    append->setChecked(l.appendCoordinates);
    dialog.Form().addRow(append);
    auto* font = new QPushButton(tr("&Font..."), &dialog);
    dialog.Form().addRow(font);
    QObject::connect(font, &QPushButton::clicked, &dialog, [&l, &dialog] {
        QFont current(QString::fromStdString(l.font.face), std::abs(l.font.height));
        current.setPixelSize(std::max(1, std::abs(l.font.height)));
        current.setWeight(l.font.weight >= 600 ? QFont::Bold : QFont::Normal);
        current.setItalic(l.font.italic);
        current.setUnderline(l.font.underline);
        bool ok = false;
        const QFont chosen = QFontDialog::getFont(&ok, current, &dialog, dialog.windowTitle());
        if (!ok) return;
        l.font.face = chosen.family().toStdString();
        l.font.height = chosen.pixelSize() > 0 ? chosen.pixelSize() : static_cast<int32_t>(chosen.pointSizeF() * 4 / 3);
        l.font.weight = chosen.bold() ? 700 : 400;
        l.font.italic = chosen.italic();
        l.font.underline = chosen.underline();
    });
    auto* box = new QGroupBox(tr("Coordinates:"), &dialog);
    auto* form = new QFormLayout(box);
    dialog.AddNumber(tr("&X:"), l.x, form);
    dialog.AddNumber(tr("&Y:"), l.y, form);
    dialog.AddNumber(tr("&Z:"), l.z, form);
    dialog.Form().addRow(box);
    auto* style = new QComboBox(&dialog);
    for (const char* name : LabelDialog::kStyleNames) style->addItem(tr(name));
    style->setCurrentIndex(std::clamp(l.style, 0, 3));
    dialog.Form().addRow(tr("&Style:"), style);
    dialog.readers.push_back([&l, text, append, style] {
        l.text = text->text().toStdString();
        l.appendCoordinates = append->isChecked();
        l.style = style->currentIndex();
        return true;
    });
    return Run(dialog);
}

}  // namespace vexplot
