#include "control/KeyboardMapLogic.h"

#include "control/CommandTable.h"

namespace vexplot {

KeyboardMapLogic::KeyboardMapLogic() {
    for (const CommandTable::Accelerator& a : CommandTable::Accelerators())
        rows_.push_back({CommandTable::KeyText(a.key, a.modifiers), CommandTable::CommandName(a.command),
                         "Everywhere", a.command});
    // A key that several tools handle alike is one row naming them all.
    std::vector<std::vector<std::string>> tools;
    for (const CommandTable::ToolKey& k : CommandTable::ToolKeys()) {
        const std::string keys = CommandTable::KeyText(k.key, k.modifiers);
        const std::string tool = k.tool == 0 ? std::string() : CommandTable::CommandName(k.tool);
        if (tools.size() > 0 && rows_.back().keys == keys && rows_.back().action == k.action) {
            tools.back().push_back(tool);
            continue;
        }
        rows_.push_back({keys, std::string(k.action), {}, 0});
        tools.push_back({tool});
    }
    for (size_t i = 0; i < tools.size(); ++i) {
        const std::vector<std::string>& names = tools[i];
        std::string& where = rows_[rows_.size() - tools.size() + i].where;
        if (names.front().empty()) {
            where = "Everywhere";
            continue;
        }
        for (size_t n = 0; n < names.size(); ++n)
            where += (n == 0 ? "" : n + 1 == names.size() ? " and " : ", ") + names[n];
        where += names.size() == 1 ? " tool" : " tools";
    }
}

std::string KeyboardMapLogic::Text() const {
    std::string text;
    for (const Row& row : rows_) text += row.keys + "\t" + row.action + "\t" + row.where + "\n";
    return text;
}

}  // namespace vexplot
