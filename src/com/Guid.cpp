#include "com/Guid.h"

#include <cstdio>

namespace vexplot {

std::string GUID::ToString() const {
    char text[39];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", Data1, Data2,
                  Data3, Data4[0], Data4[1], Data4[2], Data4[3], Data4[4], Data4[5], Data4[6], Data4[7]);
    return text;
}

std::optional<GUID> GUID::Parse(std::string_view text) {
    GUID g;
    if (!guid_detail::ParseInto(text, g)) return std::nullopt;
    return g;
}

}  // namespace vexplot
