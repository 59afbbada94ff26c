#include "control/KeyboardMapLogic.h"

#include "control/CommandTable.h"

namespace vexplot {

namespace {

// "Zoom tool", "Label, Marker and Region tools"; "Everywhere" for keys every
// tool handles (an empty name).
std::string ToolsText(const std::vector<std::string>& names) {
    if (names.front().empty()) return "Everywhere";
    std::string text;
    for (size_t n = 0; n < names.size(); ++n)
        text += (n == 0 ? "" : n + 1 == names.size() ? " and " : ", ") + names[n];
    return text + (names.size() == 1 ? " tool" : " tools");
}

}  // namespace

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
    for (size_t i = 0; i < tools.size(); ++i) rows_[rows_.size() - tools.size() + i].where = ToolsText(tools[i]);
}

std::string KeyboardMapLogic::Text() const {
    std::string text;
    for (const Row& row : rows_) text += row.keys + "\t" + row.action + "\t" + row.where + "\n";
    return text;
}

}  // namespace vexplot
