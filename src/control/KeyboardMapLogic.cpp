#include "control/KeyboardMapLogic.h"

#include "control/CommandTable.h"

namespace vexplot {

KeyboardMapLogic::KeyboardMapLogic() {
    for (const CommandTable::Accelerator& a : CommandTable::Accelerators())
        rows_.push_back({CommandTable::KeyText(a.key, a.modifiers), CommandTable::CommandName(a.command),
                         "Everywhere", a.command});
    for (const CommandTable::ToolKey& k : CommandTable::ToolKeys()) {
        const std::string where = k.tool == 0 ? "Every tool" : CommandTable::CommandName(k.tool) + " tool";
        rows_.push_back({CommandTable::KeyText(k.key, k.modifiers), std::string(k.action), where, 0});
    }
}

std::string KeyboardMapLogic::Text() const {
    std::string text;
    for (const Row& row : rows_) text += row.keys + "\t" + row.action + "\t" + row.where + "\n";
    return text;
}

}  // namespace vexplot
