#include "qt/dialogs/PropertySheetDialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "qt/QtFont.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

using Kind = ControlPropertySheet::Kind;
using Field = ControlPropertySheet::Field;

QColor FromColorRef(int32_t c) {
    const auto v = static_cast<uint32_t>(c);
    return QColor(static_cast<int>(v & 0xFF), static_cast<int>((v >> 8) & 0xFF), static_cast<int>((v >> 16) & 0xFF));
}

int32_t ToColorRef(const QColor& c) {
    return static_cast<int32_t>(static_cast<uint32_t>(c.red()) | (static_cast<uint32_t>(c.green()) << 8) |
                                (static_cast<uint32_t>(c.blue()) << 16));
}

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The chooser's font as the info window keeps it; the size in whole points.
LogicalFont FromQFont(const QFont& f, int32_t* points) {
    LogicalFont font;
    font.face = f.family().toStdString();
    font.weight = f.weight();  // Qt 6 weights are the platform's 100 ... 900
    font.italic = f.italic();
    font.underline = f.underline();
    font.strikeOut = f.strikeOut();
    *points = f.pointSize() > 0 ? f.pointSize() : f.pixelSize() * 72 / 96;
    return font;
}

}  // namespace

PropertySheetDialog::PropertySheetDialog(ControlPropertySheet& logic, QWidget* parent)
    : QDialog(parent), logic_(logic) {
    setObjectName("PropertySheetDialog");
    setWindowTitle(ControlPropertySheet::kCaption);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("pages");
    tabs_->setUsesScrollButtons(false);  // all six tabs in sight: the dialog widens to fit them
    for (size_t p = 0; p < ControlPropertySheet::Pages().size(); ++p)
        tabs_->addTab(MakePage(p), Q(ControlPropertySheet::Pages()[p].caption));
    buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
    connect(buttons_, &QDialogButtonBox::accepted, this, &PropertySheetDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &PropertySheetDialog::reject);
    connect(buttons_->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, [this] {
        if (ApplyChanges()) ShowLogic();
    });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    layout->addWidget(buttons_);
    ShowLogic();
}

QWidget* PropertySheetDialog::MakePage(size_t page) {
    auto* widget = new QWidget(tabs_);
    auto* column = new QVBoxLayout(widget);
    QFormLayout* form = nullptr;
    std::string group = "\x01";  // no group yet
    for (const Field& field : ControlPropertySheet::Pages()[page].fields) {
        if (field.group != group || !form) {
            group = field.group;
            QWidget* holder = widget;
            if (!group.empty()) {
                auto* box = new QGroupBox(Q(group), widget);
                column->addWidget(box);
                holder = box;
            }
            form = new QFormLayout;
            form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
            if (group.empty())
                column->addLayout(form);
            else
                holder->setLayout(form);
        }
        AddField(form, field);
    }
    column->addStretch(1);
    return widget;
}

void PropertySheetDialog::AddField(QFormLayout* form, const Field& field) {
    const std::string name = field.property;
    QWidget* widget = nullptr;
    auto label = [&](QWidget* buddy) {
        auto* l = new QLabel(Q(field.label));
        l->setBuddy(buddy);
        form->addRow(l, buddy);
    };
    switch (field.kind) {
        case Kind::Check: {
            auto* box = new QCheckBox(Q(field.label));
            connect(box, &QCheckBox::toggled, this, [this, name](bool on) {
                logic_.SetValue(name, Variant::Bool(on));
                UpdateButtons();
            });
            show_.push_back([this, box, name] { box->setChecked(logic_.Value(name).Type() == VT_BOOL && logic_.Value(name).BoolValue()); });
            form->addRow(box);
            widget = box;
            break;
        }
        case Kind::Colour:
            widget = MakeSwatch(field);
            label(widget);
            break;
        case Kind::List:
        case Kind::Engine: {
            auto* list = new QComboBox;
            const bool byText = field.kind == Kind::Engine;
            if (byText) {
                for (const std::string& e : logic_.Engines()) list->addItem(Q(e));
                list->setEnabled(list->count() > 0);
            } else {
                for (const std::string& c : field.choices) list->addItem(Q(c));
            }
            connect(list, &QComboBox::activated, this, [this, list, name, byText](int index) {
                logic_.SetValue(name, byText ? Variant(list->itemText(index).toStdString()) : Variant(int32_t{index}));
                UpdateButtons();
            });
            show_.push_back([this, list, name, byText] {
                const Variant v = logic_.Value(name);
                if (byText)
                    list->setCurrentIndex(v.Type() == VT_BSTR ? list->findText(Q(v.Bstr())) : -1);
                else
                    list->setCurrentIndex(v.Type() == VT_I4 ? v.I4() : -1);
            });
            label(list);
            widget = list;
            break;
        }
        case Kind::Radio: {
            auto* row = new QWidget;
            auto* line = new QHBoxLayout(row);
            line->setContentsMargins(0, 0, 0, 0);
            auto* group = new QButtonGroup(row);
            for (size_t i = 0; i < field.choices.size(); ++i) {
                auto* radio = new QRadioButton(Q(field.choices[i]), row);
                radio->setObjectName(Q(name + "_" + std::to_string(i)));
                group->addButton(radio, static_cast<int>(i));
                line->addWidget(radio);
            }
            line->addStretch(1);
            connect(group, &QButtonGroup::idClicked, this, [this, name](int id) {
                logic_.SetValue(name, Variant(int32_t{id}));
                UpdateButtons();
            });
            show_.push_back([this, group, name] {
                const Variant v = logic_.Value(name);
                if (QAbstractButton* b = group->button(v.Type() == VT_I4 ? v.I4() : -1)) b->setChecked(true);
            });
            form->addRow(row);
            widget = group->button(0);
            break;
        }
        case Kind::Real:
        case Kind::Integer:
        case Kind::Text: {
            auto* edit = new QLineEdit;
            connect(edit, &QLineEdit::textEdited, this, [this, name](const QString& text) {
                logic_.SetValue(name, Variant(text.toStdString()));
                UpdateButtons();
            });
            show_.push_back([this, edit, name] {
                const Variant v = logic_.Value(name);
                edit->setText(v.Type() == VT_BSTR ? Q(v.Bstr()) : QString());
            });
            label(edit);
            widget = edit;
            break;
        }
        case Kind::Font: {
            QLineEdit* description = nullptr;
            form->addRow(MakeFontRow(field, &description));
            widget = description;
            break;
        }
    }
    widget->setObjectName(Q(name));
    widget->setEnabled(widget->isEnabled() && (field.kind == Kind::Font || logic_.Bound(name)));
    widgets_[name] = widget;
}

QWidget* PropertySheetDialog::MakeSwatch(const Field& field) {
    const std::string name = field.property;
    auto* swatch = new QToolButton;
    swatch->setToolTip(Q(field.tip));
    swatch->setAccessibleName(Q(field.chooserTitle));
    swatch->setFocusPolicy(Qt::StrongFocus);
    swatch->setIconSize(QSize(40, 14));
    auto paint = [this, swatch, name] {
        const Variant v = logic_.Value(name);
        QPixmap pixmap(swatch->iconSize() * swatch->devicePixelRatioF());
        pixmap.setDevicePixelRatio(swatch->devicePixelRatioF());
        pixmap.fill(FromColorRef(v.Type() == VT_I4 ? v.I4() : 0));
        QPainter(&pixmap).drawRect(QRectF(QPointF(0, 0), swatch->iconSize()).adjusted(0, 0, -1, -1));
        swatch->setIcon(QIcon(pixmap));
    };
    connect(swatch, &QToolButton::clicked, this, [this, name, title = field.chooserTitle, paint] {
        const Variant v = logic_.Value(name);
        const QColor chosen = QColorDialog::getColor(FromColorRef(v.Type() == VT_I4 ? v.I4() : 0), this, Q(title));
        if (!chosen.isValid()) return;
        logic_.SetValue(name, Variant(ToColorRef(chosen)));
        paint();
        UpdateButtons();
    });
    show_.push_back(paint);
    return swatch;
}

QWidget* PropertySheetDialog::MakeFontRow(const Field& field, QLineEdit** descriptionOut) {
    auto* description = new QLineEdit;
    description->setReadOnly(true);
    auto* label = new QLabel(Q(field.label));
    label->setBuddy(description);
    auto* change = new QPushButton("Chan&ge Font");
    change->setObjectName("changeFont");
    auto* reset = new QPushButton("Def&ault");
    reset->setObjectName("defaultFont");
    auto* row = new QHBoxLayout;
    row->addWidget(change);
    row->addWidget(reset);
    row->addStretch(1);
    auto show = [this, description] { description->setText(Q(logic_.FontDescription())); };
    connect(change, &QPushButton::clicked, this, [this, show] {
        QFont current = ToQFont(logic_.Font());
        current.setPointSize(logic_.FontPoints());
        bool ok = false;
        const QFont chosen = QFontDialog::getFont(&ok, current, this, "Font");
        if (!ok) return;
        int32_t points = 0;
        const LogicalFont font = FromQFont(chosen, &points);
        logic_.ChooseFont(font, points);
        show();
        UpdateButtons();
    });
    connect(reset, &QPushButton::clicked, this, [this, show] {
        logic_.DefaultFont();
        show();
        UpdateButtons();
    });
    show_.push_back(show);
    // The description, its label and the buttons share the form's row.
    auto* holder = new QWidget;
    auto* column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    auto* top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(description, 1);
    column->addLayout(top);
    column->addLayout(row);
    *descriptionOut = description;
    return holder;
}

void PropertySheetDialog::ShowLogic() {
    for (const auto& show : show_) show();
    UpdateButtons();
}

void PropertySheetDialog::UpdateButtons() { buttons_->button(QDialogButtonBox::Apply)->setEnabled(logic_.Changed()); }

bool PropertySheetDialog::ApplyChanges() {
    const auto problem = logic_.Apply();
    if (!problem) {
        UpdateButtons();
        return true;
    }
    const auto& field = ControlPropertySheet::Pages()[problem->page].fields[problem->field];
    tabs_->setCurrentIndex(static_cast<int>(problem->page));
    QMessageBox::warning(this, windowTitle(), Q(problem->message));
    if (QWidget* w = widgets_[field.property]) {
        w->setFocus(Qt::OtherFocusReason);
        if (auto* edit = qobject_cast<QLineEdit*>(w)) edit->selectAll();
    }
    return false;
}

void PropertySheetDialog::accept() {
    if (ApplyChanges()) QDialog::accept();
}

int32_t PropertySheetDialog::Run(IDialogLogic& logic, QWidget* parent) {
    auto* sheet = dynamic_cast<ControlPropertySheet*>(&logic);
    if (!sheet) return kAnswerCancel;
    PropertySheetDialog dialog(*sheet, parent);
    return dialog.exec() == QDialog::Accepted ? kAnswerOk : kAnswerCancel;
}

}  // namespace vexplot
