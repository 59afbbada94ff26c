#include "dataobject/GraphDispatch.h"

#include <strings.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "com/ErrorInfo.h"
#include "com/Variant.h"
#include "dataobject/IGraphData.h"
#include "dataobject/IGraphDataAccess.h"

namespace vexplot {

namespace {

enum Dispid : DISPID {
    kData = 1, kXScale, kYScale, kXLabel, kYLabel, kZLabel, kName, kValue, kXCount, kYCount, kZMin, kZMax, kState
};

struct Member {
    const char* name;
    DISPID id;
    uint32_t indexCount;  // arguments before the value: 2 for Value(row, column)
    bool writable;
};

constexpr Member kMembers[] = {
    {"Data", kData, 0, true},     {"XScale", kXScale, 0, true}, {"YScale", kYScale, 0, true},
    {"XLabel", kXLabel, 0, true}, {"YLabel", kYLabel, 0, true}, {"ZLabel", kZLabel, 0, true},
    {"Name", kName, 0, true},     {"Value", kValue, 2, true},   {"XCount", kXCount, 0, false},
    {"YCount", kYCount, 0, false}, {"ZMin", kZMin, 0, false},   {"ZMax", kZMax, 0, false},
    {"State", kState, 0, false},
};

const Member* Find(DISPID id) {
    for (const Member& m : kMembers)
        if (m.id == id) return &m;
    return nullptr;
}

// Arguments of one call, in natural order (Invoke receives them reversed).
class Arguments {
public:
    Arguments(const DispParams& params, uint32_t* argErr) : params_(params), argErr_(argErr) {}

    // Argument `i` (from 0, natural order) converted to `type`.
    HRESULT Get(uint32_t i, VARTYPE type, Variant* out) const {
        const uint32_t slot = params_.argCount - 1 - i;
        const HRESULT hr = params_.args[slot].ChangeType(type, out);
        if (FAILED(hr) && argErr_) *argErr_ = slot;
        return FAILED(hr) ? DISP_E_TYPEMISMATCH : S_OK;
    }

private:
    const DispParams& params_;
    uint32_t* argErr_;
};

HRESULT GetProperty(IGraphData& data, IGraphDataAccess& access, DISPID id, const Arguments& args, Variant* result) {
    std::string text;
    SafeArray array;
    double number = 0;
    int32_t xCount = 0, yCount = 0;
    HRESULT hr = S_OK;
    Variant value;
    switch (id) {
        case kData: hr = data.GetData(&array); value = Variant(array); break;
        case kXScale: hr = data.GetXScale(&array); value = Variant(array); break;
        case kYScale: hr = data.GetYScale(&array); value = Variant(array); break;
        case kXLabel: hr = data.GetXLabel(&text); value = Variant(text); break;
        case kYLabel: hr = data.GetYLabel(&text); value = Variant(text); break;
        case kZLabel: hr = data.GetZLabel(&text); value = Variant(text); break;
        case kName: hr = data.GetName(&text); value = Variant(text); break;
        case kXCount: hr = data.GetSize(&xCount, &yCount); value = Variant(xCount); break;
        case kYCount: hr = data.GetSize(&xCount, &yCount); value = Variant(yCount); break;
        case kZMin: hr = access.GetZMin(&number); value = Variant(number); break;
        case kZMax: hr = access.GetZMax(&number); value = Variant(number); break;
        case kState: value = Variant(data.GetState()); break;
        case kValue: {
            Variant row, column;
            if (FAILED(hr = args.Get(0, VT_I4, &row)) || FAILED(hr = args.Get(1, VT_I4, &column))) return hr;
            hr = data.GetValue(row.I4(), column.I4(), &number);
            value = Variant(number);
            break;
        }
        default: return DISP_E_MEMBERNOTFOUND;
    }
    if (SUCCEEDED(hr)) *result = std::move(value);
    return hr;
}

HRESULT PutProperty(IGraphData& data, DISPID id, const Arguments& args, uint32_t valueIndex) {
    const VARTYPE type = id == kData || id == kXScale || id == kYScale ? VARTYPE(VT_ARRAY | VT_R8)
                       : id == kValue                                  ? VT_R8
                                                                       : VT_BSTR;
    Variant value;
    if (HRESULT hr = args.Get(valueIndex, type, &value); FAILED(hr)) return hr;
    switch (id) {
        case kData: return data.PutData(value.Array());
        case kXScale: return data.PutXScale(value.Array());
        case kYScale: return data.PutYScale(value.Array());
        case kXLabel: return data.PutXLabel(value.Bstr());
        case kYLabel: return data.PutYLabel(value.Bstr());
        case kZLabel: return data.PutZLabel(value.Bstr());
        case kName: return data.PutName(value.Bstr());
        case kValue: {
            Variant row, column;
            HRESULT hr = S_OK;
            if (FAILED(hr = args.Get(0, VT_I4, &row)) || FAILED(hr = args.Get(1, VT_I4, &column))) return hr;
            return data.PutValue(row.I4(), column.I4(), value.R8());
        }
        default: return DISP_E_MEMBERNOTFOUND;
    }
}

// A failure of the property itself, reported the automation way.
HRESULT Raise(HRESULT hr, ExcepInfo* excepInfo) {
    const std::string description = TakeErrorInfo();
    if (!excepInfo) return hr;
    *excepInfo = ExcepInfo{};
    excepInfo->source = "Vexplot.GraphData";
    excepInfo->scode = hr;
    const std::string text = description.empty() ? HResultText(hr) : description;
    const size_t n = std::min(text.size(), sizeof excepInfo->description - 1);
    std::memcpy(excepInfo->description, text.data(), n);
    return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT GraphDispatch::GetIDsOfNames(const char* const* names, uint32_t count, DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    HRESULT hr = S_OK;
    for (uint32_t i = 0; i < count; ++i) {
        ids[i] = DISPID_UNKNOWN;
        // Only the first name is a member; the others would name its
        // parameters, and no member takes named parameters.
        if (i == 0 && names[0])
            for (const Member& m : kMembers)
                if (strcasecmp(m.name, names[0]) == 0) ids[0] = m.id;
        if (ids[i] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
}

HRESULT GraphDispatch::Invoke(IGraphData& data, IGraphDataAccess& access, DISPID member, uint16_t flags,
                              DispParams* params, Variant* result, ExcepInfo* excepInfo, uint32_t* argErr) {
    const Member* m = Find(member);
    if (!m) return DISP_E_MEMBERNOTFOUND;
    const DispParams none;
    const DispParams& p = params ? *params : none;
    if (p.argCount > 0 && !p.args) return E_POINTER;
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const bool namedPutValue = p.namedArgCount == 1 && p.namedArgs && p.namedArgs[0] == DISPID_PROPERTYPUT;
    if (p.namedArgCount > 0 && !(put && namedPutValue)) return DISP_E_NONAMEDARGS;
    const Arguments args(p, argErr);
    HRESULT hr = S_OK;
    if (put) {
        if (!m->writable) return DISP_E_MEMBERNOTFOUND;
        if (p.argCount != m->indexCount + 1) return DISP_E_BADPARAMCOUNT;
        // The value is the last argument in natural order (args[0] as stored).
        hr = PutProperty(data, member, args, m->indexCount);
    } else if (flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)) {
        if (p.argCount != m->indexCount) return DISP_E_BADPARAMCOUNT;
        Variant ignored;
        hr = GetProperty(data, access, member, args, result ? result : &ignored);
    } else {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (hr == DISP_E_TYPEMISMATCH || SUCCEEDED(hr)) return hr;
    return Raise(hr, excepInfo);
}

}  // namespace vexplot
