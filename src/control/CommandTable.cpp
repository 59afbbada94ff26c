#include "control/CommandTable.h"

#include <algorithm>
#include <array>

#include "control/CommandIds.h"

namespace vexplot {
namespace {

// One row of the pop-up menu, flattened: rows at depth 1 belong to the
// sub-menu opened by the nearest row above at depth 0. A row without text
// is a separator; a row with text and no command opens a sub-menu.
struct MenuRow {
    int depth;
    const char* text;
    int32_t command;
};

constexpr MenuRow kSeparator{0, nullptr, 0};

constexpr std::array kMenuRows{
    MenuRow{0, "Control P&roperties\tAlt+Enter", cmd::kControlProperties},
    kSeparator,
    MenuRow{0, "&Select", cmd::kSelect},
    MenuRow{0, "P&an", cmd::kPan},
    MenuRow{0, "Z&oom", cmd::kZoom},
    MenuRow{0, "&Label", cmd::kLabel},
    MenuRow{0, "&Marker", cmd::kMarker},
    MenuRow{0, "&Tracer", cmd::kTracer},
    MenuRow{0, "&Difference Tracer", cmd::kDiffTracer},
    MenuRow{0, "Reg&ion", cmd::kRegion},
    kSeparator,
    MenuRow{0, "&Grid", cmd::kGrid},
    MenuRow{0, "Mes&h", cmd::kMesh},
    MenuRow{0, "&External Resampling", cmd::kExternalResampling},
    MenuRow{0, "&View", 0},
    MenuRow{1, "&2D Mode\tALT-2", cmd::k2DMode},
    MenuRow{1, "&3D Mode\tALT-3", cmd::k3DMode},
    MenuRow{1, "Graph &Title", cmd::kGraphTitle},
    MenuRow{1, "&Info Window", cmd::kInfoWindow},
    MenuRow{1, "&Legend Window", cmd::kLegendWindow},
    MenuRow{1, "&Navigator Window", cmd::kNavigatorWindow},
    MenuRow{1, "Maximize &View\tCtrl+F11", cmd::kMaximizeView},
    MenuRow{1, "&Status Bar", cmd::kStatusBar},
    kSeparator,
    MenuRow{0, "Seriali&ze", 0},
    MenuRow{1, "&Load Vexplot\tAlt+Ctrl+O", cmd::kLoadVexplot},
    MenuRow{1, "&Save Vexplot\tAlt+Ctrl+S", cmd::kSaveVexplot},
    MenuRow{1, "Lo&ad Data\tCtrl+O", cmd::kLoadData},
    MenuRow{1, "Sav&e Data\tCtrl+S", cmd::kSaveData},
    MenuRow{0, "E&xport", 0},
    MenuRow{1, "Export to &BMP...", cmd::kExportBmp},
    MenuRow{1, "Export to &EMF...", cmd::kExportEmf},
    MenuRow{0, "&Copy to clipboard", cmd::kCopyToClipboard},
    MenuRow{0, "Pri&nt setup...", cmd::kPrintSetup},
    MenuRow{0, "&Print...\tCtrl+P", cmd::kPrint},
    kSeparator,
    MenuRow{0, "Palette", 0},
    MenuRow{1, "Edit Palette", cmd::kEditPalette},
    MenuRow{1, "Load Palette", cmd::kLoadPalette},
    MenuRow{1, "Save Palette", cmd::kSavePalette},
    kSeparator,
    MenuRow{0, "&Help", 0},
    MenuRow{1, "&Keyboard Map", cmd::kKeyboardMap},
    MenuRow{0, "&About", cmd::kAbout},
};

struct CommandText {
    int32_t command;
    std::string_view text;
};

// "prompt\ntool tip". The properties string was written with a forward
// slash where the line break belongs; it is kept so, which makes its whole
// text the prompt and leaves it without a tool tip.
constexpr std::array kCommandTexts{
    CommandText{cmd::kControlProperties, "Open control properties dialog/nProperties dialog"},
    CommandText{cmd::kSelect, "Selector Tool\nSelector Tool"},
    CommandText{cmd::kPan, "Pan\nPan"},
    CommandText{cmd::kZoom, "Zoom in/out\nZoom"},
    CommandText{cmd::kLabel, "Label\nLabel"},
    CommandText{cmd::kMarker, "Marker\nMarker"},
    CommandText{cmd::kTracer, "Tracer\nTracer"},
    CommandText{cmd::kDiffTracer, "Difference tracer\nDifference tracer"},
    CommandText{cmd::kRegion, "Region\nRegion"},
    CommandText{cmd::kGrid, "Grid \nGrid"},
    CommandText{cmd::kMesh, "Draw mesh lines\nDraw mesh lines"},
    CommandText{cmd::kExternalResampling, "Call external resample\nExternal resampling"},
    CommandText{cmd::k2DMode, "View graph in 2D mode\n2D mode"},
    CommandText{cmd::k3DMode, "View graph in 3D mode\n3D mode"},
    CommandText{cmd::kGraphTitle, "Show/hide Graph Title along with Menu and Legend Buttons\nGraph Title"},
    CommandText{cmd::kInfoWindow, "Show/Hide info window\nShow/Hide info window"},
    CommandText{cmd::kLegendWindow, "Select this item to show/hide Legend Window\nLegend Window"},
    CommandText{cmd::kNavigatorWindow, "Select this item to show/hide Navidator Window\nNavigator Window"},
    CommandText{cmd::kMaximizeView, "Maximize View\nMaximize View"},
    CommandText{cmd::kStatusBar, "Select this item to show/hide Status Bar\nStatus Bar"},
    CommandText{cmd::kLoadVexplot, "Loads data plus saved graph objects\nLoad Vexplot"},
    CommandText{cmd::kSaveVexplot, "Saves data plus graph objects\nSave Vexplot"},
    CommandText{cmd::kLoadData, "Load data from file\nLoad from file"},
    CommandText{cmd::kSaveData, "Save data to file\nSave to file"},
    CommandText{cmd::kExportBmp, "Export view to BMP file\nExport view to BMP file"},
    CommandText{cmd::kExportEmf, "Export view to EMF file\nExport view to EMF file"},
    CommandText{cmd::kCopyToClipboard, "Copy image to clipboard\nCopy to clipboard"},
    CommandText{cmd::kPrintSetup, "Setup printer\nPrint setup"},
    CommandText{cmd::kPrint, "Print graph\nPrint graph"},
    CommandText{cmd::kEditPalette, "Edit Palette\nEdit Palette"},
    CommandText{cmd::kLoadPalette, "Load palette\nLoad palette"},
    CommandText{cmd::kSavePalette, "Save palette\nSave palette"},
    CommandText{cmd::kKeyboardMap, "Shows key mappings in control\nKeyboard Map"},
    CommandText{cmd::kAbout, "About box\nOpen About box"},
};

constexpr std::array kAccelerators{
    CommandTable::Accelerator{'2', kModAlt, cmd::k2DMode},
    CommandTable::Accelerator{'3', kModAlt, cmd::k3DMode},
    CommandTable::Accelerator{'O', kModControl, cmd::kLoadData},
    CommandTable::Accelerator{'O', kModControl | kModAlt, cmd::kLoadVexplot},
    CommandTable::Accelerator{'P', kModControl, cmd::kPrint},
    CommandTable::Accelerator{'S', kModControl, cmd::kSaveData},
    CommandTable::Accelerator{'S', kModControl | kModAlt, cmd::kSaveVexplot},
    CommandTable::Accelerator{vk::kF10, kModControl, cmd::kOpenMenu},
    CommandTable::Accelerator{vk::kF11, kModControl, cmd::kMaximizeView},
    CommandTable::Accelerator{vk::kReturn, 0, cmd::kObjectProperties},
    CommandTable::Accelerator{vk::kReturn, kModAlt, cmd::kControlProperties},
    CommandTable::Accelerator{vk::kTab, 0, cmd::kSelectNext},
};

// The commands that only keys (and hosts) send, which the menu does not name.
constexpr std::array kUnlistedCommands{
    CommandText{cmd::kOpenMenu, "Open the pop-up menu"},
    CommandText{cmd::kObjectProperties, "Open the properties of the selected object"},
    CommandText{cmd::kSelectNext, "Select the next object"},
};

constexpr std::array kNamedCommands{
    CommandTable::NamedCommand{"ControlProperties", cmd::kControlProperties},
    CommandTable::NamedCommand{"Select", cmd::kSelect},
    CommandTable::NamedCommand{"Pan", cmd::kPan},
    CommandTable::NamedCommand{"Zoom", cmd::kZoom},
    CommandTable::NamedCommand{"Label", cmd::kLabel},
    CommandTable::NamedCommand{"Marker", cmd::kMarker},
    CommandTable::NamedCommand{"Tracer", cmd::kTracer},
    CommandTable::NamedCommand{"DiffTracer", cmd::kDiffTracer},
    CommandTable::NamedCommand{"Region", cmd::kRegion},
    CommandTable::NamedCommand{"Grid", cmd::kGrid},
    CommandTable::NamedCommand{"Mesh", cmd::kMesh},
    CommandTable::NamedCommand{"ExternalResampling", cmd::kExternalResampling},
    CommandTable::NamedCommand{"Mode2D", cmd::k2DMode},
    CommandTable::NamedCommand{"Mode3D", cmd::k3DMode},
    CommandTable::NamedCommand{"GraphTitle", cmd::kGraphTitle},
    CommandTable::NamedCommand{"InfoWindow", cmd::kInfoWindow},
    CommandTable::NamedCommand{"LegendWindow", cmd::kLegendWindow},
    CommandTable::NamedCommand{"NavigatorWindow", cmd::kNavigatorWindow},
    CommandTable::NamedCommand{"MaximizeView", cmd::kMaximizeView},
    CommandTable::NamedCommand{"StatusBar", cmd::kStatusBar},
    CommandTable::NamedCommand{"LoadVexplot", cmd::kLoadVexplot},
    CommandTable::NamedCommand{"SaveVexplot", cmd::kSaveVexplot},
    CommandTable::NamedCommand{"LoadData", cmd::kLoadData},
    CommandTable::NamedCommand{"SaveData", cmd::kSaveData},
    CommandTable::NamedCommand{"ExportBmp", cmd::kExportBmp},
    CommandTable::NamedCommand{"ExportEmf", cmd::kExportEmf},
    CommandTable::NamedCommand{"CopyToClipboard", cmd::kCopyToClipboard},
    CommandTable::NamedCommand{"PrintSetup", cmd::kPrintSetup},
    CommandTable::NamedCommand{"Print", cmd::kPrint},
    CommandTable::NamedCommand{"EditPalette", cmd::kEditPalette},
    CommandTable::NamedCommand{"LoadPalette", cmd::kLoadPalette},
    CommandTable::NamedCommand{"SavePalette", cmd::kSavePalette},
    CommandTable::NamedCommand{"KeyboardMap", cmd::kKeyboardMap},
    CommandTable::NamedCommand{"About", cmd::kAbout},
    CommandTable::NamedCommand{"OpenMenu", cmd::kOpenMenu},
    CommandTable::NamedCommand{"ObjectProperties", cmd::kObjectProperties},
    CommandTable::NamedCommand{"SelectNext", cmd::kSelectNext},
};

constexpr int32_t kAllTools = 0;

constexpr std::array kToolKeys{
    CommandTable::ToolKey{vk::kApps, 0, kAllTools, "Open the pop-up menu"},
    CommandTable::ToolKey{vk::kDelete, 0, cmd::kSelect, "Delete the selected object"},
    CommandTable::ToolKey{vk::kNumpad0, 0, cmd::kZoom, "Zoom to all"},
    CommandTable::ToolKey{vk::kAdd, 0, cmd::kZoom, "Zoom in by one step"},
    CommandTable::ToolKey{vk::kSubtract, 0, cmd::kZoom, "Zoom out by one step"},
    CommandTable::ToolKey{vk::kEscape, 0, cmd::kLabel, "End the creation or drag in progress"},
    CommandTable::ToolKey{vk::kEscape, 0, cmd::kMarker, "End the creation or drag in progress"},
    CommandTable::ToolKey{vk::kEscape, 0, cmd::kRegion, "End the creation or drag in progress"},
};

// The line `index` (0-based) of a "\n"-separated string; empty past its end.
std::string Line(std::string_view text, int index) {
    for (; index > 0; --index) {
        const size_t end = text.find('\n');
        if (end == std::string_view::npos) return {};
        text.remove_prefix(end + 1);
    }
    return std::string(text.substr(0, text.find('\n')));
}

MenuItem MakeItem(const MenuRow& row, const std::function<CommandTable::EntryState(int32_t)>& state) {
    if (row.text == nullptr) return MenuItem::Separator();
    MenuItem item;
    item.text = row.text;
    item.command = row.command;
    if (row.command != 0) {
        item.prompt = CommandTable::Prompt(row.command);
        const CommandTable::EntryState entry = state ? state(row.command) : CommandTable::EntryState{};
        item.enabled = entry.enabled;
        item.checked = entry.checked;
    }
    return item;
}

}  // namespace

MenuModel CommandTable::PopupMenu(const std::function<EntryState(int32_t command)>& state) {
    MenuModel menu;
    for (const MenuRow& row : kMenuRows) {
        MenuItem item = MakeItem(row, state);
        if (row.depth == 0)
            menu.push_back(std::move(item));
        else
            menu.back().submenu.push_back(std::move(item));
    }
    return menu;
}

std::string_view CommandTable::CommandString(int32_t command) {
    const auto found = std::find_if(kCommandTexts.begin(), kCommandTexts.end(),
                                    [command](const CommandText& entry) { return entry.command == command; });
    return found == kCommandTexts.end() ? std::string_view{} : found->text;
}

std::string CommandTable::Prompt(int32_t command) {
    return Line(CommandString(command), 0);
}

std::string CommandTable::ToolTip(int32_t command) {
    return Line(CommandString(command), 1);
}

std::string CommandTable::CommandName(int32_t command) {
    for (const MenuRow& row : kMenuRows) {
        if (row.command != command || row.text == nullptr) continue;
        std::string name;
        for (const char* c = row.text; *c != '\0' && *c != '\t'; ++c)
            if (*c != '&') name += *c;
        // "Pri&nt setup..." reads as "Print setup" in a list.
        while (!name.empty() && name.back() == '.') name.pop_back();
        return name;
    }
    for (const CommandText& entry : kUnlistedCommands)
        if (entry.command == command) return std::string(entry.text);
    return {};
}

std::string CommandTable::KeyText(int32_t key, uint32_t modifiers) {
    std::string text;
    if (modifiers & kModControl) text += "Ctrl+";
    if (modifiers & kModAlt) text += "Alt+";
    if (modifiers & kModShift) text += "Shift+";
    switch (key) {
        case vk::kTab: return text + "Tab";
        case vk::kReturn: return text + "Enter";
        case vk::kEscape: return text + "Esc";
        case vk::kDelete: return text + "Del";
        case vk::kApps: return text + "Menu key";
        case vk::kNumpad0: return text + "Keypad 0";
        case vk::kAdd: return text + "Keypad +";
        case vk::kSubtract: return text + "Keypad -";
        default: break;
    }
    if (key >= vk::kF1 && key <= vk::kF11) return text + "F" + std::to_string(key - vk::kF1 + 1);
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z')) return text + static_cast<char>(key);
    return text + "Key " + std::to_string(key);
}

std::span<const CommandTable::ToolKey> CommandTable::ToolKeys() { return kToolKeys; }

std::span<const CommandTable::NamedCommand> CommandTable::Commands() { return kNamedCommands; }

std::span<const CommandTable::Accelerator> CommandTable::Accelerators() {
    return kAccelerators;
}

int32_t CommandTable::FindAccelerator(const KeyEvent& key) {
    for (const Accelerator& accelerator : kAccelerators) {
        if (accelerator.key == key.key && accelerator.modifiers == key.modifiers) return accelerator.command;
    }
    return 0;
}

}  // namespace vexplot
