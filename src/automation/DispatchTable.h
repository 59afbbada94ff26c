#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "automation/DispatchMember.h"

namespace vexplot {

// The control's dispatch table: every property and method of _DVexplotEx
// and _DVexplot by dispid, looked up by name as GetIDsOfNames does (the
// dispatch names, case-insensitively), and invoked as automation clients
// expect:
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
class DispatchTable {
public:
    // The table of the control, built once.
    static const DispatchTable& Vexplot();

    void AddProperty(DISPID id, std::string name, VARTYPE type, MemberHandler get, MemberHandler put,
                     std::string typelibName = {});
    void AddMethod(DispatchInterface owner, DISPID id, std::string name, VARTYPE result, std::vector<ParamInfo> params,
                   MemberHandler call, std::string typelibName = {});

    const DispatchMember* Find(DISPID id) const;
    // By dispatch name, case-insensitively; null when unknown.
    const DispatchMember* FindName(const std::string& name) const;
    const std::vector<DispatchMember>& Members() const { return members_; }

    HRESULT GetIDsOfNames(const char* const* names, uint32_t count, DISPID* ids) const;
    HRESULT Invoke(CUI_VexplotCtrl& control, DISPID id, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) const;

private:
    void Add(DispatchMember member);
    HRESULT Call(CUI_VexplotCtrl& control, const DispatchMember& member, const MemberHandler& handler,
                 const DispParams& params, const std::vector<ParamInfo>& types, Variant* result,
                 ExcepInfo* excepInfo, uint32_t* argErr) const;

    std::vector<DispatchMember> members_;
    std::map<DISPID, size_t> byId_;
    std::map<std::string, size_t> byName_;  // lower-case dispatch names
};

// The rows, one function per part of the surface.
void AddPropertyMembers(DispatchTable& table);
void AddExMethodMembers(DispatchTable& table);
void AddLegacyMethodMembers(DispatchTable& table);
void AddStateMethodMembers(DispatchTable& table);

}  // namespace vexplot
