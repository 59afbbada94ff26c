#include "PyDispatch.h"

#include <optional>
#include <string>

#include "MemberCall.h"
#include "VariantConversion.h"
#include "automation/MemberShape.h"

namespace vexplot::python {

namespace {

DISPID IdOf(const DispatchHandle& self, const std::string& name) {
    const char* names[] = {name.c_str()};
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(self.object->GetIDsOfNames(GUID_NULL, names, 1, 0, &id)))
        throw py::attribute_error("the object has no member '" + name + "'");
    return id;
}

py::object Call(const DispatchHandle& self, DISPID id, const py::args& args) {
    const std::optional<MemberShape> shape = MemberShapes::Find(*self.object, id);
    const std::string name = shape ? shape->name : "member " + std::to_string(id);
    auto put = [&](py::handle value) {
        Variant argument = ToVariant(value);
        DISPID named = DISPID_PROPERTYPUT;
        DispParams params{&argument, &named, 1, 1};
        ExcepInfo info;
        uint32_t argErr = UINT32_MAX;
        const HRESULT hr = self.object->Invoke(id, GUID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, &info, &argErr);
        if (FAILED(hr)) throw Failure(name, hr, info, argErr, 1);
    };
    auto raw = [&](uint16_t flags, DispParams& params, Variant* result) {
        ExcepInfo info;
        uint32_t argErr = UINT32_MAX;
        const ComPtr<IDispatch> object = self.object;
        const HRESULT hr = object->Invoke(id, GUID_NULL, 0, flags, &params, result, &info, &argErr);
        if (FAILED(hr)) throw Failure(name, hr, info, argErr, params.argCount);
    };
    return CallMember(shape ? &*shape : nullptr, args, raw, put);
}

bool HasMember(const DispatchHandle& self, const char* name) {
    const char* names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    return SUCCEEDED(self.object->GetIDsOfNames(GUID_NULL, names, 1, 0, &id));
}

int Length(const DispatchHandle& self) {
    if (!HasMember(self, "Count")) throw py::type_error("the object is not a collection");
    return Call(self, IdOf(self, "Count"), py::args()).cast<int>();
}

py::object Item(const DispatchHandle& self, int index) {
    const int count = Length(self);
    if (index < 0) index += count;
    if (index < 0 || index >= count) throw py::index_error("index out of range");
    return Call(self, IdOf(self, "Item"), py::make_tuple(index));
}

const void* Identity(const DispatchHandle& self) {
    ComPtr<IUnknown> identity;
    self.object->QueryInterface(IID_IUnknown, identity.ReleaseAndGetVoidAddress());
    return identity.Get();
}

}  // namespace

void RegisterDispatchObject(py::module_& m) {
    py::class_<DispatchHandle>(m, "AutomationObject",
                               "An annotation object or collection; members by dispatch name, like the control's.")
        .def("__getattr__",
             [](const DispatchHandle& self, const std::string& name) -> py::object {
                 if (name.rfind("__", 0) == 0) throw py::attribute_error(name);
                 const DISPID id = IdOf(self, name);
                 const std::optional<MemberShape> shape = MemberShapes::Find(*self.object, id);
                 if (shape && shape->isProperty) return Call(self, id, py::args());
                 return py::cpp_function([self, id](py::args args) { return Call(self, id, args); },
                                         py::name(name.c_str()));
             })
        .def("__setattr__",
             [](const DispatchHandle& self, const std::string& name, py::object value) {
                 const DISPID id = IdOf(self, name);
                 const std::optional<MemberShape> shape = MemberShapes::Find(*self.object, id);
                 if (!shape || !shape->isProperty) throw py::attribute_error(name + " is not a property");
                 Call(self, id, py::make_tuple(value));
             })
        .def("__len__", &Length)
        .def("__getitem__", &Item)
        .def("__iter__",
             [](const DispatchHandle& self) {
                 py::list items;
                 const int count = Length(self);
                 for (int i = 0; i < count; ++i) items.append(Item(self, i));
                 return py::iter(items);
             })
        .def("__eq__",
             [](const DispatchHandle& self, py::object other) {
                 return py::isinstance<DispatchHandle>(other) &&
                        Identity(self) == Identity(other.cast<const DispatchHandle&>());
             })
        .def("__hash__", [](const DispatchHandle& self) { return reinterpret_cast<uintptr_t>(Identity(self)); })
        .def("__dir__",
             [](const DispatchHandle& self) {
                 py::list names;
                 for (const MemberShape& shape : MemberShapes::Of(*self.object)) names.append(shape.name);
                 return names;
             })
        .def("__repr__", [](const DispatchHandle& self) {
            return "<vexplot.AutomationObject at " + std::to_string(reinterpret_cast<uintptr_t>(Identity(self))) + ">";
        });
}

}  // namespace vexplot::python
