#include "qt/dialogs/MessageBoxExtDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>

#include "site/IControlSite.h"
#include "ui/CMessageBoxExt.h"

namespace vexplot {

namespace {

QStyle::StandardPixmap StandardIcon(CMessageBoxExt::Icon icon) {
    switch (icon) {
        case CMessageBoxExt::Icon::Stop: return QStyle::SP_MessageBoxCritical;
        case CMessageBoxExt::Icon::Question: return QStyle::SP_MessageBoxQuestion;
        case CMessageBoxExt::Icon::Exclamation: return QStyle::SP_MessageBoxWarning;
        default: return QStyle::SP_MessageBoxInformation;
    }
}

QRect ToQRect(const PixelRect& r) { return QRect(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1)); }

}  // namespace

MessageBoxExtDialog::MessageBoxExtDialog(CMessageBoxExt& logic, QWidget* parent) : QDialog(parent), logic_(logic) {
    setObjectName("MessageBoxExtDialog");
    setWindowTitle(QString::fromStdString(logic.Message().caption));
    const QFontMetrics metrics = fontMetrics();
    CMessageBoxExt::Sizes sizes;
    sizes.base = {metrics.averageCharWidth(), metrics.height()};

    auto* icon = new QLabel(this);
    icon->setObjectName("icon");
    if (logic.IconKind() != CMessageBoxExt::Icon::None) {
        sizes.iconSize = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
        icon->setPixmap(style()->standardIcon(StandardIcon(logic.IconKind()), nullptr, this).pixmap(sizes.iconSize));
    } else {
        icon->hide();
    }
    auto* text = new QLabel(QString::fromStdString(logic.Message().text), this);
    text->setObjectName("message");
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    sizes.text = {text->sizeHint().width(), text->sizeHint().height()};
    check_ = new QCheckBox(CMessageBoxExt::kCheckText, this);
    check_->setObjectName("dontShow");
    connect(check_, &QCheckBox::toggled, this, [this](bool on) { logic_.SetDontShowAgain(on); });
    sizes.check = {check_->sizeHint().width(), check_->sizeHint().height()};

    std::vector<QPushButton*> buttons;
    for (const int32_t answer : logic.Buttons()) {
        auto* b = new QPushButton(CMessageBoxExt::ButtonText(answer), this);
        b->setObjectName(QString("button%1").arg(answer));
        b->setDefault(answer == logic.DefaultButton());
        connect(b, &QPushButton::clicked, this, [this, answer] { Press(answer); });
        sizes.button.x = std::max(sizes.button.x, b->sizeHint().width());
        sizes.button.y = std::max(sizes.button.y, b->sizeHint().height());
        buttons.push_back(b);
    }
    sizes.buttonCount = static_cast<int32_t>(buttons.size());

    const CMessageBoxExt::Layout layout = CMessageBoxExt::Lay(sizes);
    icon->setGeometry(ToQRect(layout.icon));
    text->setGeometry(ToQRect(layout.text));
    check_->setGeometry(ToQRect(layout.check));
    for (size_t i = 0; i < buttons.size(); ++i) buttons[i]->setGeometry(ToQRect(layout.buttons[i]));
    setFixedSize(layout.width, layout.height);
    // The default button has the focus, then the check box, then the others.
    for (QPushButton* b : buttons)
        if (b->isDefault()) b->setFocus();
}

void MessageBoxExtDialog::Press(int32_t answer) {
    if (!logic_.Press(answer))
        QMessageBox::warning(this, windowTitle(), "Your choice cannot be remembered: the settings store cannot be written.");
    done(answer);
}

void MessageBoxExtDialog::reject() {
    if (const int32_t answer = logic_.EscapeButton()) Press(answer);
}

int32_t MessageBoxExtDialog::Run(IDialogLogic& logic, QWidget* parent) {
    auto* box = dynamic_cast<CMessageBoxExt*>(&logic);
    if (!box) return kAnswerCancel;
    MessageBoxExtDialog dialog(*box, parent);
    const int result = dialog.exec();
    return result > 0 ? result : box->DefaultButton();
}

}  // namespace vexplot
