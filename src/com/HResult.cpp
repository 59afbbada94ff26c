#include "com/HResult.h"

#include <cstdio>

namespace vexplot {

namespace {

struct NamedResult {
    HRESULT hr;
    const char* name;
    const char* meaning;
};

constexpr NamedResult kNamed[] = {
    {S_OK, "S_OK", "success"},
    {S_FALSE, "S_FALSE", "success, nothing done"},
    {E_NOTIMPL, "E_NOTIMPL", "not implemented"},
    {E_NOINTERFACE, "E_NOINTERFACE", "no such interface supported"},
    {E_POINTER, "E_POINTER", "invalid pointer"},
    {E_ABORT, "E_ABORT", "operation aborted"},
    {E_FAIL, "E_FAIL", "unspecified failure"},
    {E_UNEXPECTED, "E_UNEXPECTED", "catastrophic failure"},
    {E_ACCESSDENIED, "E_ACCESSDENIED", "access denied"},
    {E_OUTOFMEMORY, "E_OUTOFMEMORY", "not enough memory"},
    {E_INVALIDARG, "E_INVALIDARG", "invalid argument"},
    {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION", "class does not support aggregation"},
    {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE", "class not available from this module"},
    {REGDB_E_CLASSNOTREG, "REGDB_E_CLASSNOTREG", "class not registered"},
    {CO_E_DLLNOTFOUND, "CO_E_DLLNOTFOUND", "plug-in library not found"},
    {CO_E_ERRORINDLL, "CO_E_ERRORINDLL", "plug-in library is invalid"},
    {CONNECT_E_NOCONNECTION, "CONNECT_E_NOCONNECTION", "no such connection"},
    {CONNECT_E_CANNOTCONNECT, "CONNECT_E_CANNOTCONNECT", "sink does not support the interface"},
    {STG_E_FILENOTFOUND, "STG_E_FILENOTFOUND", "file not found"},
    {STG_E_ACCESSDENIED, "STG_E_ACCESSDENIED", "access denied"},
    {STG_E_READFAULT, "STG_E_READFAULT", "read fault"},
    {STG_E_FILEALREADYEXISTS, "STG_E_FILEALREADYEXISTS", "file already exists"},
    {STG_E_WRITEFAULT, "STG_E_WRITEFAULT", "write fault"},
    {STG_E_MEDIUMFULL, "STG_E_MEDIUMFULL", "disk full"},
    {STG_E_INVALIDFUNCTION, "STG_E_INVALIDFUNCTION", "invalid function"},
    {STG_E_INVALIDHEADER, "STG_E_INVALIDHEADER", "invalid header"},
    {STG_E_DOCFILECORRUPT, "STG_E_DOCFILECORRUPT", "file is corrupt"},
    {DISP_E_UNKNOWNINTERFACE, "DISP_E_UNKNOWNINTERFACE", "unknown interface"},
    {DISP_E_MEMBERNOTFOUND, "DISP_E_MEMBERNOTFOUND", "member not found"},
    {DISP_E_PARAMNOTFOUND, "DISP_E_PARAMNOTFOUND", "parameter not found"},
    {DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH", "type mismatch"},
    {DISP_E_UNKNOWNNAME, "DISP_E_UNKNOWNNAME", "unknown name"},
    {DISP_E_NONAMEDARGS, "DISP_E_NONAMEDARGS", "no named arguments"},
    {DISP_E_BADVARTYPE, "DISP_E_BADVARTYPE", "bad variable type"},
    {DISP_E_EXCEPTION, "DISP_E_EXCEPTION", "exception occurred"},
    {DISP_E_OVERFLOW, "DISP_E_OVERFLOW", "out of present range"},
    {DISP_E_BADINDEX, "DISP_E_BADINDEX", "invalid index"},
    {DISP_E_UNKNOWNLCID, "DISP_E_UNKNOWNLCID", "unknown locale"},
    {DISP_E_ARRAYISLOCKED, "DISP_E_ARRAYISLOCKED", "array is locked"},
    {DISP_E_BADPARAMCOUNT, "DISP_E_BADPARAMCOUNT", "invalid number of parameters"},
    {DISP_E_PARAMNOTOPTIONAL, "DISP_E_PARAMNOTOPTIONAL", "parameter not optional"},
    {DISP_E_NOTACOLLECTION, "DISP_E_NOTACOLLECTION", "does not support a collection"},
    {CTL_E_ILLEGALFUNCTIONCALL, "CTL_E_ILLEGALFUNCTIONCALL", "function not available"},
    {CTL_E_INVALIDPROPERTYVALUE, "CTL_E_INVALIDPROPERTYVALUE", "invalid property value"},
};

}  // namespace

std::string HResultText(HRESULT hr) {
    char code[16];
    std::snprintf(code, sizeof code, "0x%08X", static_cast<uint32_t>(hr));
    for (const NamedResult& n : kNamed)
        if (n.hr == hr) return std::string(code) + " (" + n.name + ": " + n.meaning + ")";
    return code;
}

std::string HResultWords(HRESULT hr) {
    for (const NamedResult& n : kNamed)
        if (n.hr == hr) return n.meaning;
    char code[24];
    std::snprintf(code, sizeof code, "error 0x%08X", static_cast<uint32_t>(hr));
    return code;
}

}  // namespace vexplot
