#pragma once
#include <functional>
#include <string>
#include <vector>

#include "com/IDispatch.h"
#include "com/Variant.h"

namespace vexplot {

class CUI_VexplotCtrl;
class DispatchCall;

// Which published interface a member belongs to.
enum class DispatchInterface { Ex, Legacy };

// One parameter of a method as the type library describes it. A
// by-reference parameter is an out value: the caller passes storage (a
// VT_BYREF Variant) and the method writes its result there.
struct ParamInfo {
    const char* name;
    VARTYPE type;  // VT_VARIANT: any value, passed through as it came
    bool byRef = false;
};

// A member's work. Arguments arrive converted to the declared types; the
// handler sets the result and the out values through `call`. A failing
// HRESULT, or a ComError thrown, reaches the client as an automation error.
// `Target` is the object the table serves (the control, or an annotation
// wrapper or collection).
template <class Target>
using BasicMemberHandler = std::function<HRESULT(Target&, DispatchCall&)>;

// One row of a dispatch table: a property (get and optionally put) or a
// method, under its dispatch name and, where the type library spells it
// differently, the type library's name.
template <class Target>
struct BasicDispatchMember {
    DISPID id = 0;
    std::string name;         // what GetIDsOfNames knows
    std::string typelibName;  // what a host browsing the type library sees
    bool isProperty = false;
    VARTYPE type = VT_EMPTY;  // property type or method result (VT_EMPTY: none)
    std::vector<ParamInfo> params;
    BasicMemberHandler<Target> get;  // property get, or the method itself
    BasicMemberHandler<Target> put;  // property put; empty for read-only properties and methods
    DispatchInterface owner = DispatchInterface::Ex;

    // How many by-reference (out) parameters the method has.
    size_t OutCount() const {
        size_t n = 0;
        for (const ParamInfo& p : params) n += p.byRef ? 1 : 0;
        return n;
    }
};

// The control's rows.
using MemberHandler = BasicMemberHandler<CUI_VexplotCtrl>;
using DispatchMember = BasicDispatchMember<CUI_VexplotCtrl>;

}  // namespace vexplot
