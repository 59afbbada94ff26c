#include "VariantConversion.h"

#include <pybind11/numpy.h>

#include <limits>
#include <string>

#include "dataobject/GraphContents.h"

#include "automation/MemberShape.h"

namespace vexplot::python {

namespace {

using DoubleArray = py::array_t<double, py::array::forcecast>;

// The grid limit is checked on the array's shape before any conversion:
// a broadcast (zero-stride) array or one of another element type would
// otherwise be copied out at full size first, gigabytes for a refusal.
void CheckShape(py::handle value) {
    if (!py::isinstance<py::array>(value)) return;
    const auto a = py::reinterpret_borrow<py::array>(value);
    if (a.ndim() == 1 && a.shape(0) > std::numeric_limits<int32_t>::max())
        throw py::value_error("a scale of " + std::to_string(a.shape(0)) + " values is too long");
    if (a.ndim() != 2) return;
    if (std::string fault = GraphContents::CheckSize(a.shape(1), a.shape(0)); !fault.empty())
        throw py::value_error(fault);
}

SafeArray ToSafeArray(py::handle value) {
    CheckShape(value);
    DoubleArray a;
    try {
        a = DoubleArray::ensure(value);
    } catch (const py::error_already_set&) {
        a = DoubleArray();
    }
    if (!a) {
        PyErr_Clear();
        throw py::type_error("an array argument must hold numbers");
    }
    if (a.ndim() == 1) {
        const auto v = a.unchecked<1>();
        SafeArray out = SafeArray::Create1D(static_cast<uint32_t>(v.shape(0)));
        double* data = out.MutableData();
        for (py::ssize_t i = 0; i < v.shape(0); ++i) data[i] = v(i);
        return out;
    }
    if (a.ndim() == 2) {
        const auto v = a.unchecked<2>();
        const auto rows = static_cast<uint32_t>(v.shape(0));
        const auto cols = static_cast<uint32_t>(v.shape(1));
        SafeArray out = SafeArray::Create2DForOverwrite(rows, cols);
        double* data = out.MutableData();
        // Dimension 0 varies fastest: element (i, j) at j * rows + i.
        for (py::ssize_t j = 0; j < v.shape(1); ++j)
            for (py::ssize_t i = 0; i < v.shape(0); ++i) data[static_cast<size_t>(j) * rows + static_cast<size_t>(i)] = v(i, j);
        return out;
    }
    throw py::value_error("arrays passed to the control have one or two dimensions, not " + std::to_string(a.ndim()));
}

Variant IntVariant(py::handle value) {
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(value.ptr(), &overflow);
    if (number == -1 && PyErr_Occurred()) throw py::error_already_set();
    if (overflow != 0 || number < std::numeric_limits<int32_t>::min() ||
        number > std::numeric_limits<int32_t>::max()) {
        PyErr_SetString(PyExc_OverflowError, "an integer passed to the control must fit in 32 bits");
        throw py::error_already_set();
    }
    return Variant(static_cast<int32_t>(number));
}

py::object ArrayToPython(const SafeArray& array) {
    if (array.Dims() == 1) {
        py::array_t<double> out(static_cast<py::ssize_t>(array.Bound(0).count));
        std::copy(array.Values().begin(), array.Values().end(), out.mutable_data());
        return out;
    }
    if (array.Dims() == 2) {
        const auto rows = static_cast<py::ssize_t>(array.Bound(0).count);
        const auto cols = static_cast<py::ssize_t>(array.Bound(1).count);
        // The SafeArray's layout is NumPy's Fortran order: one copy.
        py::array_t<double, py::array::f_style> out({rows, cols});
        std::copy(array.Values().begin(), array.Values().end(), out.mutable_data());
        return out;
    }
    return py::none();
}

}  // namespace

Variant ToVariant(py::handle value) {
    if (value.is_none()) return Variant();
    if (PyBool_Check(value.ptr())) return Variant::Bool(value.ptr() == Py_True);
    if (PyLong_Check(value.ptr())) return IntVariant(value);
    if (PyFloat_Check(value.ptr())) return Variant(value.cast<double>());
    if (PyUnicode_Check(value.ptr())) return Variant(value.cast<std::string>());
    if (py::isinstance<DispatchHandle>(value)) return Variant(value.cast<const DispatchHandle&>().object);
    if (py::isinstance<ComHandle>(value)) {
        const ComPtr<IUnknown>& object = value.cast<const ComHandle&>().object;
        if (ComPtr<IDispatch> dispatch = object.As<IDispatch>()) return Variant(dispatch);
        return Variant(object);
    }
    if (py::isinstance<py::array>(value) || PyList_Check(value.ptr()) || PyTuple_Check(value.ptr())) {
        // A zero-dimensional array is a NumPy scalar in disguise.
        if (py::isinstance<py::array>(value) && value.cast<py::array>().ndim() == 0)
            return ToVariant(value.attr("item")());
        return Variant(ToSafeArray(value));
    }
    // NumPy scalars: integers index, floating types convert.
    if (PyIndex_Check(value.ptr())) return IntVariant(py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr())));
    if (py::hasattr(value, "__float__")) return Variant(py::float_(py::reinterpret_borrow<py::object>(value)).cast<double>());
    throw py::type_error("cannot pass a " + std::string(py::str(value.get_type().attr("__name__"))) +
                         " to the control");
}

py::object FromVariant(const Variant& value) {
    if (value.IsByRef()) return FromVariant(value.Deref());
    switch (value.Type()) {
        case VT_EMPTY:
        case VT_NULL:
            return py::none();
        case VT_I2:
            return py::int_(value.I2());
        case VT_I4:
            return py::int_(value.I4());
        case VT_R4:
            return py::float_(value.R4());
        case VT_R8:
            return py::float_(value.R8());
        case VT_BSTR:
            return py::str(value.Bstr());
        case VT_BOOL:
            return py::bool_(value.BoolValue());
        case VT_ERROR:
            return value.IsMissing() ? py::object(py::none()) : py::object(py::int_(value.I4()));
        case VT_DISPATCH:
            if (!value.Dispatch()) return py::none();
            // Objects with a known table come back with their members.
            if (!MemberShapes::Of(*value.Dispatch()).empty()) return py::cast(DispatchHandle{value.Dispatch()});
            return py::cast(ComHandle{ComPtr<IUnknown>(value.Dispatch().Get())});
        case VT_UNKNOWN:
            if (!value.Unknown()) return py::none();
            return py::cast(ComHandle{value.Unknown()});
        case VT_ARRAY | VT_R8:
            return ArrayToPython(value.Array());
        default:
            throw py::type_error("the control returned a value of type " + std::to_string(value.Type()) +
                                 ", which has no Python form");
    }
}

OutSlot::OutSlot(VARTYPE type) : type_(type) {}

Variant OutSlot::Ref() {
    switch (type_) {
        case VT_I2: return Variant::Ref(&i2_);
        case VT_I4: return Variant::Ref(&i4_);
        case VT_R4: return Variant::Ref(&r4_);
        case VT_R8: return Variant::Ref(&r8_);
        case VT_BSTR: return Variant::Ref(&bstr_);
        case VT_BOOL: return Variant::BoolRef(&bool_);
        case VT_ARRAY | VT_R8: return Variant::Ref(&array_);
        case VT_DISPATCH: return Variant::Ref(&dispatch_);
        case VT_UNKNOWN: return Variant::Ref(&unknown_);
        default: return Variant::Ref(&variant_);
    }
}

py::object OutSlot::Value() const {
    switch (type_) {
        case VT_I2: return py::int_(i2_);
        case VT_I4: return py::int_(i4_);
        case VT_R4: return py::float_(r4_);
        case VT_R8: return py::float_(r8_);
        case VT_BSTR: return py::str(bstr_);
        case VT_BOOL: return py::bool_(bool_ != VARIANT_FALSE);
        case VT_ARRAY | VT_R8: return FromVariant(Variant(array_));
        case VT_DISPATCH: return FromVariant(Variant(dispatch_));
        case VT_UNKNOWN: return FromVariant(Variant(unknown_));
        default: return FromVariant(variant_);
    }
}

}  // namespace vexplot::python
