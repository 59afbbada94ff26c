#pragma once
#include <cmath>
#include <string>
#include <vector>

#include "automation/DispatchCall.h"
#include "automation/DispatchTable.h"

namespace vexplot::annotation_rows {

// Builders for the rows of the annotation objects' dispatch tables. Every
// member of a wrapper first asks whether its annotation is still there; a
// detached wrapper answers the empty value of the member's type (0, FALSE,
// "", an empty dispatch) and changes nothing. No member raises an
// automation error.

inline Variant EmptyOf(VARTYPE type) {
    switch (type) {
    case VT_BSTR: return Variant(std::string());
    case VT_BOOL: return Variant::Bool(false);
    case VT_I2: return Variant(int16_t{0});
    case VT_R8: return Variant(0.0);
    case VT_DISPATCH: return Variant(ComPtr<IDispatch>());
    case VT_EMPTY: return Variant();
    default: return Variant(int32_t{0});
    }
}

inline bool Finite(std::initializer_list<double> values) {
    for (double v : values)
        if (!std::isfinite(v)) return false;
    return true;
}

// The getter of a property: `get`'s value as `type` while `live(self)`,
// the type's empty value otherwise.
template <class Self, class Live, class Get>
auto LiveGetter(VARTYPE type, Live live, Get get) {
    return [=](Self& self, DispatchCall& call) {
        Variant out;
        const Variant value = live(self) ? get(self) : EmptyOf(type);
        if (FAILED(value.ChangeType(type, &out))) out = EmptyOf(type);
        call.Return(std::move(out));
        return S_OK;
    };
}

// A property: `get(self)` answers a Variant, `put(self, call)` reads the
// value from argument 0. Both run only while `live(self)`.
template <class Self, class Live, class Get, class Put>
void Property(BasicDispatchTable<Self>& table, DISPID id, const char* name, VARTYPE type, Live live, Get get,
              Put put) {
    table.AddProperty(id, name, type, LiveGetter<Self>(type, live, get), [=](Self& self, DispatchCall& call) {
        if (live(self)) put(self, call);
        return S_OK;
    });
}

// A read-only property.
template <class Self, class Live, class Get>
void ReadOnly(BasicDispatchTable<Self>& table, DISPID id, const char* name, VARTYPE type, Live live, Get get) {
    table.AddProperty(id, name, type, LiveGetter<Self>(type, live, get), {});
}

// A method answering `run(self, call)` (a Variant of `result`).
template <class Self, class Live, class Run>
void Method(BasicDispatchTable<Self>& table, DISPID id, const char* name, VARTYPE result,
            std::vector<ParamInfo> params, Live live, Run run) {
    table.AddMethod(DispatchInterface::Ex, id, name, result, std::move(params), [=](Self& self, DispatchCall& call) {
        Variant out;
        const Variant value = live(self) ? run(self, call) : EmptyOf(result);
        if (result != VT_EMPTY && FAILED(value.ChangeType(result, &out))) out = EmptyOf(result);
        call.Return(std::move(out));
        return S_OK;
    });
}

}  // namespace vexplot::annotation_rows
