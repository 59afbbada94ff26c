#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/RgbaRaster.h"

namespace vexplot {

// One entry of a pop-up menu as the control describes it to its site: the
// site turns it into the platform's menu and answers with the chosen
// command. `prompt` is what the status bar shows while the entry is under
// the mouse (the first line of the command's string).
struct MenuItem {
    std::string text;  // with '&' before the mnemonic and "\t" before the key text
    int32_t command = 0;
    std::string prompt;
    bool enabled = true;
    bool checked = false;
    bool separator = false;
    bool columnBreak = false;                  // the entry starts a new column
    std::shared_ptr<const RgbaRaster> icon;    // drawn before the text when set
    // The icon drawn for a screen of a pixel ratio above 1 (the same
    // picture, not enlarged); may be empty, and then `icon` is scaled.
    std::function<std::shared_ptr<const RgbaRaster>(double ratio)> iconAt;
    std::vector<MenuItem> submenu;  // non-empty: the entry opens this sub-menu

    static MenuItem Separator() {
        MenuItem item;
        item.separator = true;
        return item;
    }
};

using MenuModel = std::vector<MenuItem>;

}  // namespace vexplot
