#pragma once
#include <cstdint>
#include <string>

namespace vexplot {

// Result codes of component calls: negative means failure.
using HRESULT = int32_t;

constexpr HRESULT MakeHResult(uint32_t bits) { return static_cast<HRESULT>(bits); }

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = MakeHResult(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = MakeHResult(0x80004002);
inline constexpr HRESULT E_POINTER = MakeHResult(0x80004003);
inline constexpr HRESULT E_ABORT = MakeHResult(0x80004004);
inline constexpr HRESULT E_FAIL = MakeHResult(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = MakeHResult(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = MakeHResult(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = MakeHResult(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = MakeHResult(0x80070057);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = MakeHResult(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = MakeHResult(0x80040111);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = MakeHResult(0x80040154);
inline constexpr HRESULT CO_E_DLLNOTFOUND = MakeHResult(0x8004F001);
inline constexpr HRESULT CO_E_ERRORINDLL = MakeHResult(0x800401F9);
inline constexpr HRESULT CONNECT_E_NOCONNECTION = MakeHResult(0x80040200);
inline constexpr HRESULT CONNECT_E_ADVISELIMIT = MakeHResult(0x80040201);
inline constexpr HRESULT CONNECT_E_CANNOTCONNECT = MakeHResult(0x80040202);
inline constexpr HRESULT STG_E_FILENOTFOUND = MakeHResult(0x80030002);
inline constexpr HRESULT STG_E_ACCESSDENIED = MakeHResult(0x80030005);
inline constexpr HRESULT STG_E_READFAULT = MakeHResult(0x8003001E);
inline constexpr HRESULT STG_E_FILEALREADYEXISTS = MakeHResult(0x80030050);
inline constexpr HRESULT STG_E_WRITEFAULT = MakeHResult(0x8003001D);
inline constexpr HRESULT STG_E_MEDIUMFULL = MakeHResult(0x80030070);
inline constexpr HRESULT STG_E_INVALIDFUNCTION = MakeHResult(0x80030001);
inline constexpr HRESULT STG_E_INVALIDHEADER = MakeHResult(0x800300FB);
inline constexpr HRESULT STG_E_DOCFILECORRUPT = MakeHResult(0x80030109);
inline constexpr HRESULT DISP_E_UNKNOWNINTERFACE = MakeHResult(0x80020001);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = MakeHResult(0x80020003);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = MakeHResult(0x80020004);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = MakeHResult(0x80020005);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = MakeHResult(0x80020006);
inline constexpr HRESULT DISP_E_NONAMEDARGS = MakeHResult(0x80020007);
inline constexpr HRESULT DISP_E_BADVARTYPE = MakeHResult(0x80020008);
inline constexpr HRESULT DISP_E_EXCEPTION = MakeHResult(0x80020009);
inline constexpr HRESULT DISP_E_OVERFLOW = MakeHResult(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = MakeHResult(0x8002000B);
inline constexpr HRESULT DISP_E_UNKNOWNLCID = MakeHResult(0x8002000C);
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = MakeHResult(0x8002000D);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = MakeHResult(0x8002000E);
inline constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = MakeHResult(0x8002000F);
inline constexpr HRESULT DISP_E_NOTACOLLECTION = MakeHResult(0x80020011);
// Errors the control reports to its host through its Error event.
inline constexpr HRESULT CTL_E_ILLEGALFUNCTIONCALL = MakeHResult(0x800A0005);
inline constexpr HRESULT CTL_E_INVALIDPROPERTYVALUE = MakeHResult(0x800A017C);
inline constexpr HRESULT CTL_E_FILENOTFOUND = MakeHResult(0x800A0035);

constexpr bool SUCCEEDED(HRESULT hr) { return hr >= 0; }
constexpr bool FAILED(HRESULT hr) { return hr < 0; }

// "0x80004003 (E_POINTER: invalid pointer)" style text for messages.
std::string HResultText(HRESULT hr);
// The meaning alone, in words, for a message a person reads ("disk full");
// a code without a known meaning reads "error 0x80004005".
std::string HResultWords(HRESULT hr);

}  // namespace vexplot
