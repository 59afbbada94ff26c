#pragma once
#include <functional>
#include <string>

#include "site/MenuModel.h"

class QAction;
class QMenu;
class QWidget;

namespace vexplot {

// Fills a QMenu from the control's menu description: entries carry their
// command in the action's data; `prompt` is called with an entry's status
// prompt while it is under the mouse (and with "" when the menu closes).
void FillMenu(QMenu& menu, const MenuModel& model, const std::function<void(const std::string&)>& prompt);

// The command of an action FillMenu made; 0 for none.
int32_t CommandOf(const QAction* action);
// The command the user chose in `menu`: the action `exec` returned, or the
// icon button clicked in a menu laid out in columns; 0 for none.
int32_t ChosenCommand(const QMenu& menu, const QAction* action);

}  // namespace vexplot
