#pragma once
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "com/HResult.h"

namespace vexplot::test {

// Calls received by the test doubles, in order, as "who.Operation(args)",
// shared by the engine and view-host doubles so that their interleaving
// shows. Failures are injected by operation name ("view.SetGrid").
class CallLog {
public:
    // Records a call and answers the failure injected for it, else S_OK.
    HRESULT Record(const std::string& name, const std::string& args = {}) {
        calls.push_back(name + "(" + args + ")");
        const auto it = failures.find(name);
        return it == failures.end() ? S_OK : it->second;
    }
    // The recorded calls without their arguments.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const std::string& call : calls) names.push_back(call.substr(0, call.find('(')));
        return names;
    }

    std::vector<std::string> calls;
    std::map<std::string, HRESULT, std::less<>> failures;
};

// "a,b,c" of the arguments: numbers as the stream writes them, bools as 0/1,
// enumerations as their values, a null text as "null".
template <class... A>
std::string Args(const A&... args) {
    std::ostringstream out;
    const char* separator = "";
    auto put = [&](const auto& value) {
        out << separator;
        separator = ",";
        using T = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_enum_v<T>)
            out << static_cast<std::underlying_type_t<T>>(value);
        else if constexpr (std::is_same_v<T, bool>)
            out << (value ? 1 : 0);
        else if constexpr (std::is_same_v<T, const char*>)
            out << (value ? value : "null");
        else
            out << value;
    };
    (put(args), ...);
    static_cast<void>(put);  // used by none when there are no arguments
    return out.str();
}

}  // namespace vexplot::test
