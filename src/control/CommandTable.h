#pragma once
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "site/MenuModel.h"
#include "site/WindowInput.h"

namespace vexplot {

// The control's commands as the user meets them: the pop-up menu, the
// command strings (status-bar prompt and tool tip) and the accelerator
// keys. Pure tables, no window system: the control builds its menu here and
// hands it to the site, and a site that matches keys itself asks
// FindAccelerator.
class CommandTable {
public:
    // How one command's menu entry looks right now.
    struct EntryState {
        bool enabled = true;
        bool checked = false;
    };

    // One accelerator: a virtual key (vk:: codes, or the upper-case ASCII
    // code of a letter or digit) with exactly these kMod... bits.
    struct Accelerator {
        int32_t key;
        uint32_t modifiers;
        int32_t command;
    };

    // menu:
    // The control's pop-up menu, top level in order, with its five
    // sub-menus. `state` is asked once per command entry (an empty function
    // leaves every entry enabled and unchecked). Each entry's prompt is its
    // command's Prompt.
    static MenuModel PopupMenu(const std::function<EntryState(int32_t command)>& state);

    // command strings:
    // The whole string of `command` ("prompt\ntool tip"); empty for a
    // command without one.
    static std::string_view CommandString(int32_t command);
    // The status-bar prompt: the string up to its first "\n", or all of it
    // when it has none.
    static std::string Prompt(int32_t command);
    // The tool tip: the string after the first "\n" up to the next one;
    // empty when the string has no second line.
    static std::string ToolTip(int32_t command);

    // A key the active interaction tool handles itself (not through a
    // command): which tool listens, and what the key does there.
    struct ToolKey {
        int32_t key;
        uint32_t modifiers;
        int32_t tool;             // the command that chooses the tool; 0: every tool
        std::string_view action;  // "Delete the selected object"
    };

    // What a command does, for lists such as the keyboard map: its menu
    // entry's text without the "&" marks and the shortcut column ("Load
    // Vexplot"), or a short description for the commands the menu does not
    // carry; empty for an unknown command.
    static std::string CommandName(int32_t command);
    // "Ctrl+Alt+O", "Alt+Enter", "Keypad +": a key as the user reads it.
    static std::string KeyText(int32_t key, uint32_t modifiers);

    // Every command by a script-friendly name ("LoadVexplot", "Mode2D"), in
    // menu order, then the commands only keys send.
    struct NamedCommand {
        std::string_view name;
        int32_t command;
    };
    static std::span<const NamedCommand> Commands();

    // accelerators:
    static std::span<const Accelerator> Accelerators();
    // The keys the interaction tools handle while they are active.
    static std::span<const ToolKey> ToolKeys();
    // The command of the accelerator matching `key` (key and modifiers
    // exactly, so Ctrl+Alt+O is not Ctrl+O); 0 when none matches.
    static int32_t FindAccelerator(const KeyEvent& key);
};

}  // namespace vexplot
