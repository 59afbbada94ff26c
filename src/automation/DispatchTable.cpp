#include "automation/DispatchTable.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <new>
#include <stdexcept>

#include "automation/DispatchCall.h"
#include "com/ComError.h"
#include "com/ErrorInfo.h"

namespace vexplot {

namespace {

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

// A failure of the member itself, reported the automation way.
HRESULT Raise(HRESULT hr, std::string description, ExcepInfo* excepInfo) {
    if (!excepInfo) return hr;
    *excepInfo = ExcepInfo{};
    excepInfo->source = "VEXPLOTCONTROL.VexplotCtrl.1";
    excepInfo->scode = hr;
    if (description.empty()) description = HResultText(hr);
    const size_t n = std::min(description.size(), sizeof excepInfo->description - 1);
    std::memcpy(excepInfo->description, description.data(), n);
    return DISP_E_EXCEPTION;
}

// Argument `slot` (as stored in DispParams, reversed) converted to `info`.
HRESULT Convert(const Variant& arg, const ParamInfo& info, Variant* out) {
    if (info.byRef) {
        // Out parameters need the caller's storage; VBScript-style clients
        // pass a reference to a Variant, which AssignThroughRef follows.
        if (!arg.IsByRef()) return DISP_E_TYPEMISMATCH;
        *out = arg;
        return S_OK;
    }
    if (info.type == VT_VARIANT) {
        *out = arg.Deref();
        return S_OK;
    }
    return arg.ChangeType(info.type, out);
}

}  // namespace

template <>
const DispatchTable& DispatchTable::Vexplot() {
    static const DispatchTable table = [] {
        DispatchTable t;
        AddPropertyMembers(t);
        AddExMethodMembers(t);
        AddLegacyMethodMembers(t);
        AddStateMethodMembers(t);
        return t;
    }();
    return table;
}

template <class Target>
void BasicDispatchTable<Target>::Add(Member member) {
    if (byId_.count(member.id) || byName_.count(Lower(member.name)))
        throw std::logic_error("dispatch member defined twice: " + member.name);
    if (member.typelibName.empty()) member.typelibName = member.name;
    byId_[member.id] = members_.size();
    byName_[Lower(member.name)] = members_.size();
    members_.push_back(std::move(member));
}

template <class Target>
void BasicDispatchTable<Target>::AddProperty(DISPID id, std::string name, VARTYPE type, Handler get, Handler put,
                                             std::string typelibName) {
    Member m;
    m.id = id;
    m.name = std::move(name);
    m.typelibName = std::move(typelibName);
    m.isProperty = true;
    m.type = type;
    m.get = std::move(get);
    m.put = std::move(put);
    Add(std::move(m));
}

template <class Target>
void BasicDispatchTable<Target>::AddMethod(DispatchInterface owner, DISPID id, std::string name, VARTYPE result,
                                           std::vector<ParamInfo> params, Handler call, std::string typelibName) {
    Member m;
    m.id = id;
    m.name = std::move(name);
    m.typelibName = std::move(typelibName);
    m.type = result;
    m.params = std::move(params);
    m.get = std::move(call);
    m.owner = owner;
    Add(std::move(m));
}

template <class Target>
const typename BasicDispatchTable<Target>::Member* BasicDispatchTable<Target>::Find(DISPID id) const {
    const auto it = byId_.find(id);
    return it == byId_.end() ? nullptr : &members_[it->second];
}

template <class Target>
const typename BasicDispatchTable<Target>::Member* BasicDispatchTable<Target>::FindName(const std::string& name) const {
    const auto it = byName_.find(Lower(name));
    return it == byName_.end() ? nullptr : &members_[it->second];
}

template <class Target>
HRESULT BasicDispatchTable<Target>::GetIDsOfNames(const char* const* names, uint32_t count, DISPID* ids) const {
    if (!names || !ids) return E_POINTER;
    HRESULT hr = S_OK;
    for (uint32_t i = 0; i < count; ++i) {
        ids[i] = DISPID_UNKNOWN;
        // Only the first name is a member; the others would name its
        // parameters, and no member takes named parameters.
        if (i == 0 && names[0])
            if (const Member* m = FindName(names[0])) ids[0] = m->id;
        if (ids[i] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
}

template <class Target>
HRESULT BasicDispatchTable<Target>::Invoke(Target& control, DISPID id, uint16_t flags, DispParams* params,
                                           Variant* result, ExcepInfo* excepInfo, uint32_t* argErr) const {
    const Member* m = Find(id);
    if (!m) return DISP_E_MEMBERNOTFOUND;
    const DispParams none;
    const DispParams& p = params ? *params : none;
    if (p.argCount > 0 && !p.args) return E_POINTER;
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const bool namedPutValue = p.namedArgCount == 1 && p.namedArgs && p.namedArgs[0] == DISPID_PROPERTYPUT;
    if (p.namedArgCount > 0 && !(put && namedPutValue)) return DISP_E_NONAMEDARGS;
    if (put) {
        if (!m->isProperty || !m->put) return DISP_E_MEMBERNOTFOUND;
        if (p.argCount != 1) return DISP_E_BADPARAMCOUNT;
        const std::vector<ParamInfo> value{{"value", m->type}};
        return Call(control, *m, m->put, p, value, nullptr, excepInfo, argErr);
    }
    if (m->isProperty) {
        if (!(flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD))) return DISP_E_MEMBERNOTFOUND;
        if (p.argCount != 0) return DISP_E_BADPARAMCOUNT;
    } else {
        // A method answers a property get too, as clients that cannot tell
        // them apart call `ctl.GetGraphMode` without parentheses.
        if (!(flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) return DISP_E_MEMBERNOTFOUND;
        if (p.argCount != m->params.size()) return DISP_E_BADPARAMCOUNT;
    }
    Variant ignored;
    return Call(control, *m, m->get, p, m->params, result ? result : &ignored, excepInfo, argErr);
}

template <class Target>
HRESULT BasicDispatchTable<Target>::Call(Target& control, const Member& member, const Handler& handler,
                                         const DispParams& p, const std::vector<ParamInfo>& types, Variant* result,
                                         ExcepInfo* excepInfo, uint32_t* argErr) const {
    std::vector<Variant> args(types.size());
    for (size_t i = 0; i < types.size(); ++i) {
        const uint32_t slot = p.argCount - 1 - static_cast<uint32_t>(i);
        if (FAILED(Convert(p.args[slot], types[i], &args[i]))) {
            if (argErr) *argErr = slot;
            return DISP_E_TYPEMISMATCH;
        }
    }
    DispatchCall call(std::move(args), result);
    try {
        const HRESULT hr = handler(control, call);
        if (SUCCEEDED(hr)) return hr;
        return Raise(hr, TakeErrorInfo(), excepInfo);
    } catch (const ComError& e) {
        return Raise(e.Code(), e.Description(), excepInfo);
    } catch (const std::bad_alloc&) {
        return Raise(E_OUTOFMEMORY, "Not enough memory for " + member.name + ".", excepInfo);
    } catch (const std::exception& e) {
        return Raise(E_FAIL, e.what(), excepInfo);
    }
}

// The objects served by a table: the control and the annotation objects.
template class BasicDispatchTable<CUI_VexplotCtrl>;
template class BasicDispatchTable<CoLabel>;
template class BasicDispatchTable<CoMarker>;
template class BasicDispatchTable<CoRegion>;
template class BasicDispatchTable<CoAnnotationCollection>;

}  // namespace vexplot
