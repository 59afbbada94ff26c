#include "qt/dialogs/QtDialogRegistry.h"

namespace vexplot {

const QtDialogRegistry& QtDialogRegistry::BuiltIn() {
    static const QtDialogRegistry registry = [] {
        QtDialogRegistry r;
        AddBuiltInDialogs(r);
        return r;
    }();
    return registry;
}

const QtDialogRegistry::RunModal* QtDialogRegistry::Modal(std::string_view name) const {
    const auto it = modal_.find(name);
    return it == modal_.end() ? nullptr : &it->second;
}

const QtDialogRegistry::OpenModeless* QtDialogRegistry::Modeless(std::string_view name) const {
    const auto it = modeless_.find(name);
    return it == modeless_.end() ? nullptr : &it->second;
}

}  // namespace vexplot
