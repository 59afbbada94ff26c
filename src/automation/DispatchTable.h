#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "automation/DispatchMember.h"

namespace vexplot {

class CoLabel;
class CoMarker;
class CoRegion;
class CoAnnotationCollection;

// A dispatch table: every property and method of an automation object by
// dispid, looked up by name as GetIDsOfNames does (the dispatch names,
// case-insensitively), and invoked as automation clients expect:
//  - DISP_E_MEMBERNOTFOUND for an unknown dispid, a put of a read-only
//    property or a method called as a property put;
//  - DISP_E_BADPARAMCOUNT for the wrong number of arguments;
//  - DISP_E_TYPEMISMATCH (argErr = the argument's index as passed) for an
//    argument that does not convert to its declared type, or a plain value
//    where an out parameter needs a reference;
//  - DISP_E_NONAMEDARGS for named arguments other than the put value;
//  - DISP_E_EXCEPTION with the code and text in ExcepInfo when the member
//    itself fails (its HRESULT, a ComError, a failed allocation); without
//    an ExcepInfo the member's own code is returned.
// The control's table (_DVexplotEx and _DVexplot) and the annotation
// objects' tables are all of this one kind (instantiated in
// DispatchTable.cpp).
template <class Target>
class BasicDispatchTable {
public:
    using Member = BasicDispatchMember<Target>;
    using Handler = BasicMemberHandler<Target>;

    // The table of the control, built once (defined for the control only).
    static const BasicDispatchTable& Vexplot();

    void AddProperty(DISPID id, std::string name, VARTYPE type, Handler get, Handler put,
                     std::string typelibName = {});
    void AddMethod(DispatchInterface owner, DISPID id, std::string name, VARTYPE result, std::vector<ParamInfo> params,
                   Handler call, std::string typelibName = {});

    const Member* Find(DISPID id) const;
    // By dispatch name, case-insensitively; null when unknown.
    const Member* FindName(const std::string& name) const;
    const std::vector<Member>& Members() const { return members_; }

    HRESULT GetIDsOfNames(const char* const* names, uint32_t count, DISPID* ids) const;
    HRESULT Invoke(Target& target, DISPID id, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) const;

private:
    void Add(Member member);
    HRESULT Call(Target& target, const Member& member, const Handler& handler, const DispParams& params,
                 const std::vector<ParamInfo>& types, Variant* result, ExcepInfo* excepInfo,
                 uint32_t* argErr) const;

    std::vector<Member> members_;
    std::map<DISPID, size_t> byId_;
    std::map<std::string, size_t> byName_;  // lower-case dispatch names
};

using DispatchTable = BasicDispatchTable<CUI_VexplotCtrl>;

// The rows, one function per part of the surface.
void AddPropertyMembers(DispatchTable& table);
void AddExMethodMembers(DispatchTable& table);
void AddLegacyMethodMembers(DispatchTable& table);
void AddStateMethodMembers(DispatchTable& table);

}  // namespace vexplot
