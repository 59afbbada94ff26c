#pragma once
#include <cstdio>
#include <string>
#include <string_view>

namespace vexplot {

// Text from a file as it may go to a terminal: control characters (and DEL)
// become \xNN, so a hostile file cannot move the cursor, clear the screen
// or retitle the window. Bytes of UTF-8 characters pass unchanged.
inline std::string ForTerminal(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char ch : text) {
        const auto c = static_cast<unsigned char>(ch);
        if (c >= 0x20 && c != 0x7F) {
            out += ch;
            continue;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02X", c);
        out += escape;
    }
    return out;
}

}  // namespace vexplot
