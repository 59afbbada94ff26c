#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "site/IDialogLogic.h"

namespace vexplot {

// The "Keyboard Map" window: every accelerator of the control and every key
// an interaction tool handles, made from the command and accelerator tables
// each time it opens, so the list always says what the keys do.
class KeyboardMapLogic final : public IDialogLogic {
public:
    static constexpr std::string_view kName = "KeyboardMap";

    struct Row {
        std::string keys;     // "Ctrl+Alt+O"
        std::string action;   // "Load Vexplot"
        std::string where;    // "Everywhere", or the tools that listen: "Zoom tool"
        int32_t command = 0;  // the accelerator's command; 0 for a tool key
    };

    KeyboardMapLogic();
    std::string_view DialogName() const override { return kName; }
    const std::vector<Row>& Rows() const { return rows_; }
    // The rows as tab-separated lines, for a plain-text copy.
    std::string Text() const;

private:
    std::vector<Row> rows_;
};

}  // namespace vexplot
