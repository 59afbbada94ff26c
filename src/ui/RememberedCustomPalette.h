#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "ui/BaseColor.h"

namespace vexplot {

// The palette editor's last list of base colours, remembered for the whole
// process so that the next opening of the editor, by any control, starts
// from it. Guarded by a mutex: controls may live on several user-interface
// threads of one process.
class RememberedCustomPalette {
public:
    struct List {
        int32_t paletteSize = 0;
        std::vector<BaseColor> colors;
    };

    // The remembered list; empty when the editor never changed a palette.
    static std::optional<List> Load();
    static void Store(const List& list);
    // Forgets the list (for tests and for hosts that want a fresh editor).
    static void Forget();
};

}  // namespace vexplot
