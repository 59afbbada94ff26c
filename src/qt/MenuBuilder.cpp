#include "qt/MenuBuilder.h"

#include <QAction>
#include <QImage>
#include <QMenu>
#include <QPixmap>

namespace vexplot {

namespace {

QIcon IconOf(const RgbaRaster& raster) {
    // The raster's 0x00BBGGRR pixels are the bytes R, G, B, X in memory.
    const QImage image(reinterpret_cast<const uchar*>(raster.Pixels().data()), static_cast<int>(raster.Width()),
                       static_cast<int>(raster.Height()), static_cast<qsizetype>(raster.Width() * 4),
                       QImage::Format_RGBX8888);
    return QIcon(QPixmap::fromImage(image.copy()));
}

}  // namespace

void FillMenu(QMenu& menu, const MenuModel& model, const std::function<void(const std::string&)>& prompt) {
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
        if (item.icon) action->setIcon(IconOf(*item.icon));
        const std::string entryPrompt = item.prompt;
        QObject::connect(action, &QAction::hovered, &menu, [prompt, entryPrompt] { prompt(entryPrompt); });
    }
}

int32_t CommandOf(const QAction* action) { return action ? action->data().toInt() : 0; }

}  // namespace vexplot
