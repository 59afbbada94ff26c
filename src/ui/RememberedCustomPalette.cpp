#include "ui/RememberedCustomPalette.h"

#include <mutex>

namespace vexplot {

namespace {

std::mutex& Guard() {
    static std::mutex mutex;
    return mutex;
}

std::optional<RememberedCustomPalette::List>& Slot() {
    static std::optional<RememberedCustomPalette::List> list;
    return list;
}

}  // namespace

std::optional<RememberedCustomPalette::List> RememberedCustomPalette::Load() {
    std::lock_guard lock(Guard());
    return Slot();
}

void RememberedCustomPalette::Store(const List& list) {
    std::lock_guard lock(Guard());
    Slot() = list;
}

void RememberedCustomPalette::Forget() {
    std::lock_guard lock(Guard());
    Slot().reset();
}

}  // namespace vexplot
