#include "control/StringTable.h"

#include <array>
#include <utility>

namespace vexplot {

namespace {

constexpr std::array<std::pair<uint32_t, const char*>, 3> kStrings{{
    {StringTable::kEngineNotInitialized, "Halcyra graph engine couldn't be initialized.\nTry another one."},
    {StringTable::kEngineNotSelected, "You must select graph engine.\nProgram cannot run."},
    {StringTable::kEngineNotInstantiated, "Cannot instantiate graph engine.\nProgram cannot run."},
}};

}  // namespace

std::string StringTable::Get(uint32_t id) {
    for (const auto& [key, text] : kStrings)
        if (key == id) return text;
    return {};
}

}  // namespace vexplot
