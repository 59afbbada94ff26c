#include "qt/QtWindowFactory.h"

#include <QWidget>

#include "qt/InfoWindowWidget.h"
#include "qt/LegendWindowWidget.h"
#include "qt/NavigatorWidget.h"
#include "qt/ToolsButtonWidget.h"

namespace vexplot {

namespace {

template <class... F>
struct Overload : F... {
    using F::operator()...;
};
template <class... F>
Overload(F...) -> Overload<F...>;

}  // namespace

QWidget* MakeAuxiliaryWidget(WindowRole role, QWidget* parent, Qt::WindowFlags flags) {
    QWidget* widget = nullptr;
    switch (role) {
        case WindowRole::MenuButton:
        case WindowRole::LegendButton:
        case WindowRole::ToolsButton: widget = new ToolsButtonWidget(parent); break;
        case WindowRole::Navigator: widget = new NavigatorWidget(parent); break;
        case WindowRole::InfoWindow:
        case WindowRole::InfoPopup: widget = new InfoWindowWidget(parent); break;
        case WindowRole::LegendWindow: widget = new LegendWindowWidget(parent); break;
        default: widget = new QWidget(parent); break;
    }
    if (flags != Qt::Widget) widget->setWindowFlags(flags);
    return widget;
}

void BindAuxiliaryWidget(QWidget* widget, const WindowLogic& logic) {
    std::visit(Overload{
                   [](std::monostate) {},
                   [widget](CUIW_InfoWnd* info) {
                       if (auto* w = dynamic_cast<InfoWindowWidget*>(widget)) w->Bind(info);
                   },
                   [widget](CUIW_LegendWindow* legend) {
                       if (auto* w = dynamic_cast<LegendWindowWidget*>(widget)) w->Bind(legend);
                   },
                   [widget](CToolsCtrl* button) {
                       if (auto* w = dynamic_cast<ToolsButtonWidget*>(widget)) w->Bind(button);
                   },
                   [widget](NavigatorPad* pad) {
                       if (auto* w = dynamic_cast<NavigatorWidget*>(widget)) w->Bind(pad);
                   },
               },
               logic);
}

}  // namespace vexplot
