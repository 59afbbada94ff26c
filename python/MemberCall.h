#pragma once
#include <pybind11/pybind11.h>

#include <functional>
#include <string>

#include "automation/MemberShape.h"
#include "com/IDispatch.h"
#include "com/Variant.h"

namespace vexplot::python {

namespace py = pybind11;

// A failed automation call: the HRESULT the client sees (for
// DISP_E_EXCEPTION the member's own code), its text, and for a type
// mismatch the argument's position in natural order (-1 otherwise).
struct AutomationFailure {
    HRESULT hresult;
    std::string description;
    int argument = -1;
};

// How the client sees a failed Invoke of the member named `name`.
AutomationFailure Failure(const std::string& name, HRESULT hr, const ExcepInfo& info, uint32_t argErr,
                          uint32_t argCount);

// The one way Python calls a member of an automation object (the control
// and the annotation objects alike): a property is read without arguments
// (written with one, through `put`); a method takes its in arguments, the
// out arguments get storage here, and the answer is None, the result, or a
// tuple of the result (when the member has one) and the outs in order.
// `member` may be null (an unknown shape: the arguments go as they are).
// `raw` performs the Invoke and raises on failure.
using RawInvoke = std::function<void(uint16_t flags, DispParams& params, Variant* result)>;
py::object CallMember(const MemberShape* member, const py::args& args, const RawInvoke& raw,
                      const std::function<void(py::handle)>& put);

}  // namespace vexplot::python
