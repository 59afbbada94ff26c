#include "MemberCall.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "VariantConversion.h"

namespace vexplot::python {

AutomationFailure Failure(const std::string& name, HRESULT hr, const ExcepInfo& info, uint32_t argErr,
                          uint32_t argCount) {
    AutomationFailure f{hr, HResultText(hr)};
    if (hr == DISP_E_EXCEPTION) {
        f.hresult = info.scode;
        f.description = info.description;
    } else if (hr == DISP_E_TYPEMISMATCH && argErr < argCount) {
        f.argument = static_cast<int>(argCount - 1 - argErr);
    }
    f.description = name + ": " + f.description;
    return f;
}

py::object CallMember(const MemberShape* m, const py::args& args, const RawInvoke& raw,
                      const std::function<void(py::handle)>& put) {
    if (m && m->isProperty && args.size() == 1) {
        put(args[0]);
        return py::none();
    }
    std::vector<Variant> values;
    std::vector<std::unique_ptr<OutSlot>> outs;
    if (m && !m->isProperty && args.size() + m->OutCount() == m->params.size()) {
        // The caller gives the in arguments; the out arguments get storage.
        size_t next = 0;
        for (const ParamInfo& p : m->params) {
            if (p.byRef) {
                outs.push_back(std::make_unique<OutSlot>(p.type));
                values.push_back(outs.back()->Ref());
            } else {
                values.push_back(ToVariant(args[next++]));
            }
        }
    } else {
        // A count that does not fit goes as it is, for Invoke to refuse.
        for (const py::handle a : args) values.push_back(ToVariant(a));
    }
    std::reverse(values.begin(), values.end());
    DispParams params{values.data(), nullptr, static_cast<uint32_t>(values.size()), 0};
    Variant result;
    const uint16_t flags = m && m->isProperty ? DISPATCH_PROPERTYGET : DISPATCH_METHOD;
    raw(flags, params, &result);

    std::vector<py::object> answers;
    if (m ? m->type != VT_EMPTY : !result.IsEmpty()) answers.push_back(FromVariant(result));
    for (const auto& out : outs) answers.push_back(out->Value());
    if (answers.empty()) return py::none();
    if (answers.size() == 1) return answers.front();
    py::tuple tuple(answers.size());
    for (size_t i = 0; i < answers.size(); ++i) tuple[i] = answers[i];
    return tuple;
}

}  // namespace vexplot::python
