#pragma once
#include <optional>
#include <string>
#include <vector>

#include "automation/DispatchMember.h"
#include "com/IDispatch.h"

namespace vexplot {

// What a client needs to know to call one member of an automation object
// this library serves: whether it is a property, its type, and its
// parameters with the out (by-reference) ones, which a client must give
// storage for. Taken from the object's own dispatch table.
struct MemberShape {
    DISPID id = DISPID_UNKNOWN;
    std::string name;
    bool isProperty = false;
    VARTYPE type = VT_EMPTY;
    std::vector<ParamInfo> params;

    size_t OutCount() const {
        size_t n = 0;
        for (const ParamInfo& p : params) n += p.byRef ? 1 : 0;
        return n;
    }
    template <class Member>
    static MemberShape Of(const Member& m) {
        return {m.id, m.name, m.isProperty, m.type, m.params};
    }
};

// The tables behind the objects: the control, the annotation wrappers and
// their collections. Other objects have no known shape (empty / nullopt).
class MemberShapes {
public:
    static std::vector<MemberShape> Of(IDispatch& object);
    static std::optional<MemberShape> Find(IDispatch& object, DISPID id);
};

}  // namespace vexplot
