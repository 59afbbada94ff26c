#include "control/CommandTable.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "control/CommandIds.h"
#include "control/KeyboardMapLogic.h"

namespace vexplot {
namespace {

// One menu entry as a user sees it, flattened: entries of a sub-menu carry
// the sub-menu's text as `parent`. Separators have text "-".
struct FlatEntry {
    std::string parent;
    std::string text;
    int32_t command = 0;
    std::string prompt;
    friend bool operator==(const FlatEntry&, const FlatEntry&) = default;
};

void PrintTo(const FlatEntry& entry, std::ostream* os) {
    *os << '{' << entry.parent << " | " << entry.text << " | " << entry.command << " | " << entry.prompt << '}';
}

std::vector<FlatEntry> Flatten(const MenuModel& menu, const std::string& parent = {}) {
    std::vector<FlatEntry> entries;
    for (const MenuItem& item : menu) {
        entries.push_back({parent, item.separator ? "-" : item.text, item.command, item.prompt});
        if (!item.submenu.empty()) {
            const std::vector<FlatEntry> inner = Flatten(item.submenu, item.text);
            entries.insert(entries.end(), inner.begin(), inner.end());
        }
    }
    return entries;
}

// The menu as users have always known it, entry by entry.
const std::vector<FlatEntry> kExpectedMenu{
    {"", "Control P&roperties\tAlt+Enter", 32810, "Open control properties dialog/nProperties dialog"},
    {"", "-", 0, ""},
    {"", "&Select", 32908, "Selector Tool"},
    {"", "P&an", 32901, "Pan"},
    {"", "Z&oom", 32900, "Zoom in/out"},
    {"", "&Label", 32906, "Label"},
    {"", "&Marker", 32902, "Marker"},
    {"", "&Tracer", 32903, "Tracer"},
    {"", "&Difference Tracer", 32904, "Difference tracer"},
    {"", "Reg&ion", 32905, "Region"},
    {"", "-", 0, ""},
    {"", "&Grid", 32910, "Grid "},
    {"", "Mes&h", 32907, "Draw mesh lines"},
    {"", "&External Resampling", 32909, "Call external resample"},
    {"", "&View", 0, ""},
    {"&View", "&2D Mode\tALT-2", 32801, "View graph in 2D mode"},
    {"&View", "&3D Mode\tALT-3", 32802, "View graph in 3D mode"},
    {"&View", "Graph &Title", 32815, "Show/hide Graph Title along with Menu and Legend Buttons"},
    {"&View", "&Info Window", 32911, "Show/Hide info window"},
    {"&View", "&Legend Window", 32812, "Select this item to show/hide Legend Window"},
    {"&View", "&Navigator Window", 32813, "Select this item to show/hide Navidator Window"},
    {"&View", "Maximize &View\tCtrl+F11", 32816, "Maximize View"},
    {"&View", "&Status Bar", 32814, "Select this item to show/hide Status Bar"},
    {"", "-", 0, ""},
    {"", "Seriali&ze", 0, ""},
    {"Seriali&ze", "&Load Vexplot\tAlt+Ctrl+O", 32798, "Loads data plus saved graph objects"},
    {"Seriali&ze", "&Save Vexplot\tAlt+Ctrl+S", 32799, "Saves data plus graph objects"},
    {"Seriali&ze", "Lo&ad Data\tCtrl+O", 32808, "Load data from file"},
    {"Seriali&ze", "Sav&e Data\tCtrl+S", 32809, "Save data to file"},
    {"", "E&xport", 0, ""},
    {"E&xport", "Export to &BMP...", 32915, "Export view to BMP file"},
    {"E&xport", "Export to &EMF...", 32916, "Export view to EMF file"},
    {"", "&Copy to clipboard", 32917, "Copy image to clipboard"},
    {"", "Pri&nt setup...", 32914, "Setup printer"},
    {"", "&Print...\tCtrl+P", 32913, "Print graph"},
    {"", "-", 0, ""},
    {"", "Palette", 0, ""},
    {"Palette", "Edit Palette", 32805, "Edit Palette"},
    {"Palette", "Load Palette", 32806, "Load palette"},
    {"Palette", "Save Palette", 32807, "Save palette"},
    {"", "-", 0, ""},
    {"", "&Help", 0, ""},
    {"&Help", "&Keyboard Map", 32803, "Shows key mappings in control"},
    {"", "&About", 57664, "About box"},
};

// The commands of the menu entries, in menu order.
std::vector<int32_t> MenuCommands() {
    std::vector<int32_t> commands;
    for (const FlatEntry& entry : kExpectedMenu)
        if (entry.command != 0) commands.push_back(entry.command);
    return commands;
}

TEST(CommandTable, PopupMenuHasEveryEntryInOrderWithItsCommandAndPrompt) {
    const std::vector<FlatEntry> actual = Flatten(CommandTable::PopupMenu({}));
    ASSERT_EQ(actual.size(), kExpectedMenu.size());
    for (size_t i = 0; i < actual.size(); ++i) EXPECT_EQ(actual[i], kExpectedMenu[i]) << "entry " << i;
}

TEST(CommandTable, PopupMenuAsksTheStateOncePerCommandAndAppliesIt) {
    std::vector<int32_t> asked;
    const MenuModel menu = CommandTable::PopupMenu([&asked](int32_t command) {
        asked.push_back(command);
        CommandTable::EntryState state;
        state.checked = command == cmd::k3DMode || command == cmd::kMarker;
        state.enabled = command != cmd::kSaveData;
        return state;
    });

    EXPECT_EQ(asked, MenuCommands());

    std::set<int32_t> checked;
    std::set<int32_t> disabled;
    const auto collect = [&](const MenuModel& items, const auto& self) -> void {
        for (const MenuItem& item : items) {
            if (item.checked) checked.insert(item.command);
            if (!item.enabled) disabled.insert(item.command);
            self(item.submenu, self);
        }
    };
    collect(menu, collect);
    EXPECT_EQ(checked, (std::set<int32_t>{cmd::k3DMode, cmd::kMarker}));
    EXPECT_EQ(disabled, (std::set<int32_t>{cmd::kSaveData}));
}

TEST(CommandTable, PromptIsTheFirstLineAndToolTipTheSecond) {
    struct Case {
        int32_t command;
        const char* prompt;
        const char* toolTip;
    };
    const Case cases[] = {
        // Written with "/n": no line break, so all of it is the prompt.
        {cmd::kControlProperties, "Open control properties dialog/nProperties dialog", ""},
        // The trailing blank of the first line belongs to the prompt.
        {cmd::kGrid, "Grid ", "Grid"},
        {cmd::kZoom, "Zoom in/out", "Zoom"},
        {cmd::kAbout, "About box", "Open About box"},
        {cmd::kExternalResampling, "Call external resample", "External resampling"},
        // Commands without a string of their own.
        {cmd::kSelectNext, "", ""},
        {cmd::kOpenMenu, "", ""},
        {12345, "", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CommandTable::Prompt(c.command), c.prompt) << c.command;
        EXPECT_EQ(CommandTable::ToolTip(c.command), c.toolTip) << c.command;
    }
}

TEST(CommandTable, AcceleratorsMatchKeyAndModifiersExactly) {
    struct Case {
        int32_t key;
        uint32_t modifiers;
        int32_t command;
    };
    const uint32_t ctrlAlt = kModControl | kModAlt;
    const Case cases[] = {
        {'2', kModAlt, cmd::k2DMode},
        {'3', kModAlt, cmd::k3DMode},
        {'2', 0, 0},
        {'3', kModControl, 0},
        {'O', kModControl, cmd::kLoadData},
        {'O', ctrlAlt, cmd::kLoadVexplot},
        {'O', kModAlt, 0},
        {'O', kModControl | kModShift, 0},
        {'S', kModControl, cmd::kSaveData},
        {'S', ctrlAlt, cmd::kSaveVexplot},
        {'P', kModControl, cmd::kPrint},
        {'P', ctrlAlt, 0},
        {vk::kF10, kModControl, cmd::kOpenMenu},
        {vk::kF10, 0, 0},
        {vk::kF11, kModControl, cmd::kMaximizeView},
        {vk::kReturn, 0, cmd::kObjectProperties},
        {vk::kReturn, kModAlt, cmd::kControlProperties},
        {vk::kReturn, kModControl, 0},
        {vk::kTab, 0, cmd::kSelectNext},
        {vk::kTab, kModShift, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CommandTable::FindAccelerator({c.key, c.modifiers}), c.command)
            << "key " << c.key << " modifiers " << c.modifiers;
}

TEST(CommandTable, EveryAcceleratorIsUniqueAndShownBesideItsMenuEntry) {
    const auto accelerators = CommandTable::Accelerators();
    EXPECT_EQ(accelerators.size(), 12u);
    std::set<std::pair<int32_t, uint32_t>> keys;
    for (const auto& accelerator : accelerators)
        EXPECT_TRUE(keys.insert({accelerator.key, accelerator.modifiers}).second) << accelerator.command;

    // Menu entries that name a key after "\t" must have that command on a key.
    std::set<int32_t> onKeys;
    for (const auto& accelerator : accelerators) onKeys.insert(accelerator.command);
    for (const FlatEntry& entry : Flatten(CommandTable::PopupMenu({}))) {
        if (entry.text.find('\t') != std::string::npos) {
            EXPECT_TRUE(onKeys.count(entry.command)) << entry.text;
        }
    }
}

TEST(CommandTable, EveryCommandHasAReadableNameAndAScriptName) {
    std::set<int32_t> named;
    std::set<std::string_view> scriptNames;
    for (const CommandTable::NamedCommand& c : CommandTable::Commands()) {
        named.insert(c.command);
        EXPECT_TRUE(scriptNames.insert(c.name).second) << c.name;
    }
    std::vector<int32_t> commands = MenuCommands();
    for (const auto& a : CommandTable::Accelerators()) commands.push_back(a.command);
    for (int32_t command : commands) {
        EXPECT_TRUE(named.count(command)) << command << " has no script name";
        const std::string name = CommandTable::CommandName(command);
        EXPECT_FALSE(name.empty()) << command;
        EXPECT_EQ(name.find_first_of("&\t"), std::string::npos) << name;
    }
    EXPECT_EQ(CommandTable::CommandName(cmd::kPrintSetup), "Print setup");
    EXPECT_EQ(CommandTable::CommandName(cmd::kLoadVexplot), "Load Vexplot");
}

TEST(CommandTable, KeyboardMapListsEveryAcceleratorAndToolKeyAsTheUserTypesIt) {
    const KeyboardMapLogic map;
    const auto accelerators = CommandTable::Accelerators();
    ASSERT_GT(map.Rows().size(), accelerators.size());
    for (size_t i = 0; i < accelerators.size(); ++i) {
        EXPECT_EQ(map.Rows()[i].command, accelerators[i].command);
        EXPECT_FALSE(map.Rows()[i].action.empty());
    }
    const auto row = [&map](const std::string& keys) {
        for (const KeyboardMapLogic::Row& r : map.Rows())
            if (r.keys == keys) return r.action + " | " + r.where;
        return std::string("missing");
    };
    EXPECT_EQ(row("Ctrl+Alt+O"), "Load Vexplot | Everywhere");
    EXPECT_EQ(row("Ctrl+O"), "Load Data | Everywhere");
    EXPECT_EQ(row("Alt+Enter"), "Control Properties | Everywhere");
    EXPECT_EQ(row("Ctrl+F10"), "Open the pop-up menu | Everywhere");
    EXPECT_EQ(row("Alt+2"), "2D Mode | Everywhere");
    EXPECT_EQ(row("Keypad +"), "Zoom in by one step | Zoom tool");
    EXPECT_EQ(row("Del"), "Delete the selected object | Select tool");
    EXPECT_EQ(row("Esc"), "End the creation or drag in progress | Label, Marker and Region tools");
    EXPECT_EQ(row("Menu key"), "Open the pop-up menu | Everywhere");
    EXPECT_NE(map.Text().find("Ctrl+P\tPrint\tEverywhere\n"), std::string::npos);
}

}  // namespace
}  // namespace vexplot
