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
#include "PyDispatch.h"
#include "control/CommandTable.h"
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

    RegisterDispatchObject(m);

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
        .def("save_image", &PyControl::SaveImage, py::arg("path"), py::arg("width") = 0, py::arg("height") = 0,
             "Saves the current view in the format the extension names: .png or .bmp rendered at width x height "
             "pixels, .svg, .pdf or .emf drawn as vectors (0 x 0: the view's size).")
        .def("open_plot", &PyControl::OpenPlot, py::arg("path"),
             "Reads a whole plot (.vxg) saved by SaveSerialize into this control.")
        .def("answer_file_dialogs", &PyControl::AnswerFileDialogs, py::arg("path"),
             "Headless controls: later file dialogs answer with path (None cancels them).")
        .def("mouse_move", &PyControl::MouseMove, py::arg("x"), py::arg("y"),
             "Moves the mouse to (x, y), pixels of the view window shown, as the user does.")
        .def("mouse_down", &PyControl::MouseDown, py::arg("x"), py::arg("y"), "Presses the left button at (x, y).")
        .def("mouse_up", &PyControl::MouseUp, py::arg("x"), py::arg("y"), "Releases the left button at (x, y).")
        .def("double_click", &PyControl::DoubleClick, py::arg("x"), py::arg("y"),
             "Double-clicks the left button at (x, y).")
        .def("mouse_leave", &PyControl::MouseLeave, "The mouse leaves the view window.")
        .def("key", &PyControl::Key, py::arg("code"),
             "Presses a key by virtual-key code: 0x09 Tab, 0x0D Enter, 0x1B Escape, 0x2E Delete, 0x60 keypad 0, "
             "0x6B keypad +, 0x6D keypad -.")
        .def("command", &PyControl::Command, py::arg("id"),
             "Carries out a menu command by its identifier; False when it is unknown or not available now.")
        .def("info_lines", &PyControl::InfoLines, "The info window's lines as shown, top to bottom.")
        .def("status_text", &PyControl::StatusText, "The status bar's text.")
        .def("show", &PyControl::Show, "Shows the control's window again (windowed controls).")
        .def("close", &PyControl::Close, "Destroys the control (and its window); later calls raise.");

    m.def("process_events", &EventLoop::ProcessEvents, py::arg("milliseconds") = 0,
          "Delivers the windows' pending events; with milliseconds > 0 keeps them alive that long.");
    m.def("exec", &EventLoop::Exec, "Runs the windows' event loop until every window is closed.");
    m.def("register_engine", &RegisterEnginePlugin, py::arg("path") = std::string(),
          "Registers the OpenGL engine plug-in in the settings store (as `vexplot register`).");
    m.def("_enumerations", &Enumerations);
    m.def("_commands", [] {
        py::list commands;
        for (const CommandTable::NamedCommand& c : CommandTable::Commands())
            commands.append(py::make_tuple(std::string(c.name), c.command));
        return commands;
    });
    m.attr("__version__") = Version();
}
