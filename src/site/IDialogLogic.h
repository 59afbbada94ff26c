#pragma once
#include <string_view>

namespace vexplot {

// The logic of one dialog without a window: its fields, their validation,
// the algorithms behind them and the values it writes when accepted. The
// control makes one and hands it to its site (IControlSite::RunDialog);
// the site's window for it draws the fields and passes the user's input
// back, and the headless site lets a script play the user. The logic never
// knows which of them drives it, so tests and batch runs drive every dialog
// through the same operations the window uses.
class IDialogLogic {
public:
    virtual ~IDialogLogic() = default;
    // A stable name, unique per kind of dialog ("ControlProperties",
    // "PaletteEditor", "MarkerProperties", ...): what a site looks its window
    // up by and what a script answers.
    virtual std::string_view DialogName() const = 0;
};

}  // namespace vexplot
