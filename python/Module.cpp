// The compiled part of the Python package `vexplot` (vexplot/_vexplot):
// the control object, the value conversions, the event loop helpers, the
// engine registration and the enumerations. vexplot/__init__.py adds the
// member access by name on top.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstdio>
#include <filesystem>

#include "EventLoop.h"
#include "PyControl.h"
#include "automation/TypeLibEnums.h"
#include "vexplot/EngineSetup.h"
#include "vexplot/Version.h"

namespace py = pybind11;
using namespace vexplot;
using namespace vexplot::python;

namespace {

// Writes the OpenGL engine's class record and the engine list into the
// user's settings, as `vexplot register` does. Without a path, the plug-in
// installed with this module (or of the build tree it was built in).
std::string RegisterEnginePlugin(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code ec;
    const fs::path plugin = fs::absolute(path.empty() ? ShippedEnginePath() : path, ec);
    if (ec || !fs::is_regular_file(plugin, ec)) {
        PyErr_SetString(PyExc_FileNotFoundError, ("no engine plug-in at " + plugin.string()).c_str());
        throw py::error_already_set();
    }
    std::string error;
    if (!vexplot::RegisterEngine(plugin.string(), nullptr, &error)) throw std::runtime_error(error);
    return plugin.string();
}

py::list Enumerations() {
    py::list enums;
    for (const TypeLibEnum& e : TypeLibEnums()) {
        py::list values;
        for (const TypeLibEnum::Value& v : e.values) values.append(py::make_tuple(v.name, v.value));
        enums.append(py::make_tuple(e.name, values));
    }
    return enums;
}

}  // namespace

PYBIND11_MODULE(_vexplot, m) {
    m.doc() = "The compiled part of vexplot; use the package itself.";
    static py::exception<AutomationFailure> automationError(m, "AutomationError");
    py::register_exception_translator([](std::exception_ptr p) {
        try {
            if (p) std::rethrow_exception(p);
        } catch (const AutomationFailure& f) {
            char code[16];
            std::snprintf(code, sizeof code, "0x%08X", static_cast<unsigned>(f.hresult));
            const py::object type = automationError;
            py::object error = type(std::string(code) + " " + f.description);
            error.attr("hresult") = static_cast<uint32_t>(f.hresult);
            error.attr("description") = f.description;
            error.attr("argument") = f.argument < 0 ? py::object(py::none()) : py::object(py::int_(f.argument));
            PyErr_SetObject(type.ptr(), error.ptr());
        }
    });

    py::class_<ComHandle>(m, "ComObject", "A component reference returned by the control; pass it back as it is.")
        .def("__repr__", [](const ComHandle& h) {
            return "<vexplot.ComObject at " + std::to_string(reinterpret_cast<uintptr_t>(h.object.Get())) + ">";
        });

    py::class_<PyControl>(m, "ControlBase")
        .def(py::init<int, int, bool, const std::string&>(), py::arg("width") = 640, py::arg("height") = 480,
             py::arg("show") = false, py::arg("settings") = "user")
        .def_property_readonly("ready", &PyControl::Ready, "Whether the control runs with a graph engine.")
        .def_property_readonly("windowed", &PyControl::Windowed, "Whether the control lives in a window.")
        .def("dispid", &PyControl::DispId, py::arg("name"), "The dispatch id of a member (GetIDsOfNames).")
        .def("typelib_name", &PyControl::TypelibName, py::arg("dispid"), "A member's name in the type library.")
        .def("members", &PyControl::Members, "The dispatch names of every member.")
        .def("_lookup", &PyControl::Lookup, py::arg("name"))
        .def("invoke", &PyControl::Invoke, py::arg("dispid"),
             "Calls a member by dispatch id: invoke(dispid, *in_arguments).")
        .def("_put", &PyControl::Put, py::arg("dispid"), py::arg("value"))
        .def("on", &PyControl::On, py::arg("event"), py::arg("handler"),
             "Calls handler(*arguments) on the event: Error, DataSelect, Resample, DataCellMouseOver.")
        .def("off", &PyControl::Off, py::arg("event"), py::arg("handler") = py::none(),
             "Removes a handler (all of the event's handlers without one).")
        .def("image", &PyControl::Image, "The current view as a height x width x 4 (RGBA) uint8 array.")
        .def("save_image", &PyControl::SaveImage, py::arg("path"), "Saves the current view as .png or .bmp.")
        .def("open_plot", &PyControl::OpenPlot, py::arg("path"),
             "Reads a whole plot (.vxg) saved by SaveSerialize into this control.")
        .def("show", &PyControl::Show, "Shows the control's window again (windowed controls).")
        .def("close", &PyControl::Close, "Destroys the control (and its window); later calls raise.");

    m.def("process_events", &EventLoop::ProcessEvents, py::arg("milliseconds") = 0,
          "Delivers the windows' pending events; with milliseconds > 0 keeps them alive that long.");
    m.def("exec", &EventLoop::Exec, "Runs the windows' event loop until every window is closed.");
    m.def("register_engine", &RegisterEnginePlugin, py::arg("path") = std::string(),
          "Registers the OpenGL engine plug-in in the settings store (as `vexplot register`).");
    m.def("_enumerations", &Enumerations);
    m.attr("__version__") = Version();
}
