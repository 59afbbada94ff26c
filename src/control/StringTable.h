#pragma once
#include <cstdint>
#include <string>

namespace vexplot {

// The control's user-visible texts by numeric id, as the resource string
// table of the original control numbered them. Texts are kept exactly as
// users and hosts have always seen them, typos included.
class StringTable {
public:
    static constexpr uint32_t kEngineNotInitialized = 57671;
    static constexpr uint32_t kEngineNotSelected = 57672;
    static constexpr uint32_t kEngineNotInstantiated = 57673;

    // The text of `id`; empty for an unknown id.
    static std::string Get(uint32_t id);
};

}  // namespace vexplot
