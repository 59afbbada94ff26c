#include "qt/MenuBuilder.h"

#include <QAction>
#include <QGridLayout>
#include <QImage>
#include <QMenu>
#include <QPixmap>
#include <QToolButton>
#include <QWidgetAction>
#include <algorithm>

namespace vexplot {

namespace {

constexpr const char* kChosenProperty = "vexplotChosenCommand";

QPixmap PixmapOf(const RgbaRaster& raster, qreal ratio) {
    // The raster's 0x00BBGGRR pixels are the bytes R, G, B, X in memory.
    const QImage image(reinterpret_cast<const uchar*>(raster.Pixels().data()), static_cast<int>(raster.Width()),
                       static_cast<int>(raster.Height()), static_cast<qsizetype>(raster.Width() * 4),
                       QImage::Format_RGBX8888);
    QPixmap pixmap = QPixmap::fromImage(image.copy());
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

// The icon at 1x and, where the entry can draw itself anew, at the screen's
// pixel ratio, so that dense screens get a sharp picture.
QIcon IconOf(const MenuItem& item, qreal ratio) {
    QIcon icon(PixmapOf(*item.icon, 1.0));
    if (item.iconAt && ratio > 1.0)
        if (const auto dense = item.iconAt(ratio)) icon.addPixmap(PixmapOf(*dense, ratio));
    return icon;
}

QString PlainText(const std::string& text) {
    QString plain = QString::fromStdString(text);
    plain = plain.left(plain.indexOf('\t'));
    return plain.remove('&');
}

// Entries laid out in columns (the tools' icon menu): one grid of icon
// buttons, a column per run of entries that a column break starts. A
// button's click closes the menu with its command (ChosenCommand); its
// tool tip is the entry's prompt.
void AddIconGrid(QMenu& menu, const MenuModel& model) {
    auto* grid = new QWidget(&menu);
    auto* layout = new QGridLayout(grid);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(2);
    int column = 0;
    int row = 0;
    for (const MenuItem& item : model) {
        if (item.separator || !item.icon) continue;
        if (item.columnBreak) ++column, row = 0;
        auto* button = new QToolButton(grid);
        button->setAutoRaise(true);
        button->setCheckable(true);
        button->setChecked(item.checked);
        button->setEnabled(item.enabled);
        const int side = static_cast<int>(item.icon->Width());
        button->setIcon(IconOf(item, menu.devicePixelRatioF()));
        button->setIconSize(QSize(side, side));
        button->setToolTip(item.prompt.empty() ? PlainText(item.text) : QString::fromStdString(item.prompt));
        const int32_t command = item.command;
        QObject::connect(button, &QToolButton::clicked, &menu, [&menu, command] {
            menu.setProperty(kChosenProperty, command);
            menu.close();
        });
        layout->addWidget(button, row++, column);
    }
    auto* action = new QWidgetAction(&menu);
    action->setDefaultWidget(grid);
    menu.addAction(action);
}

}  // namespace

void FillMenu(QMenu& menu, const MenuModel& model, const std::function<void(const std::string&)>& prompt) {
    if (std::any_of(model.begin(), model.end(), [](const MenuItem& i) { return i.columnBreak; })) {
        AddIconGrid(menu, model);
        return;
    }
    for (const MenuItem& item : model) {
        if (item.separator) {
            menu.addSeparator();
            continue;
        }
        const QString text = QString::fromStdString(item.text);
        if (!item.submenu.empty()) {
            QMenu* sub = menu.addMenu(text.left(text.indexOf('\t')));
            FillMenu(*sub, item.submenu, prompt);
            sub->setEnabled(item.enabled);
            continue;
        }
        // Qt shows the accelerator text from the part after the tab.
        QAction* action = menu.addAction(text);
        action->setData(item.command);
        action->setEnabled(item.enabled);
        action->setCheckable(item.checked);
        action->setChecked(item.checked);
        if (item.icon) action->setIcon(IconOf(item, menu.devicePixelRatioF()));
        const std::string entryPrompt = item.prompt;
        QObject::connect(action, &QAction::hovered, &menu, [prompt, entryPrompt] { prompt(entryPrompt); });
    }
}

int32_t CommandOf(const QAction* action) { return action ? action->data().toInt() : 0; }

int32_t ChosenCommand(const QMenu& menu, const QAction* action) {
    if (const int32_t command = CommandOf(action)) return command;
    return menu.property(kChosenProperty).toInt();
}

}  // namespace vexplot
