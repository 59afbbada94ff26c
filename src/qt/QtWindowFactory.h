#pragma once
#include <Qt>

#include "site/IControlSite.h"

class QWidget;

namespace vexplot {

// The widgets of the auxiliary windows: the title-bar buttons, the
// navigator, the info window and the legend, each drawing itself from its
// logic object once bound.
QWidget* MakeAuxiliaryWidget(WindowRole role, QWidget* parent, Qt::WindowFlags flags);
void BindAuxiliaryWidget(QWidget* widget, const WindowLogic& logic);

}  // namespace vexplot
