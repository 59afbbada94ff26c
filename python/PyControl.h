#pragma once
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "com/EventSink.h"
#include "VariantConversion.h"
#include "automation/DispatchMember.h"
#include "com/ComPtr.h"
#include "control/CUI_VexplotCtrl.h"

namespace vexplot {
class HeadlessSite;
class IControlSite;
class VexplotWidget;
}  // namespace vexplot

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

// The control as Python drives it: a CUI_VexplotCtrl on a headless site, or
// inside a VexplotWidget in a window, reached through its IDispatch the way
// automation clients reach it, with Python callbacks on its events.
class PyControl {
public:
    // `settings` names the settings store: "user" (the user's own, whose
    // values are the defaults of later controls), "memory" (one of this
    // control's own that goes with it) or the path of a database file.
    PyControl(int width, int height, bool show, const std::string& settings);
    ~PyControl();
    PyControl(const PyControl&) = delete;
    PyControl& operator=(const PyControl&) = delete;

    bool Ready();
    bool Windowed() const { return widget_ != nullptr; }

    // names and members:
    DISPID DispId(const std::string& name);           // AttributeError when unknown
    std::string TypelibName(DISPID id) const;          // KeyError when unknown
    std::vector<std::string> Members() const;
    py::tuple Lookup(const std::string& name);         // (dispid, is_property)

    // Calls a member: a property is read without arguments and written
    // with one; a method takes its in arguments (its out arguments are made
    // here) and returns None, its result, or a tuple of the result and the
    // outs (see the module's documentation).
    py::object Invoke(DISPID id, const py::args& args);
    void Put(DISPID id, py::handle value);

    // events:
    void On(const std::string& event, py::function handler);
    void Off(const std::string& event, py::object handler);

    // pictures:
    py::array_t<uint8_t> Image();
    void SaveImage(const std::string& path);

    // plot files:
    // Reads a whole plot saved by SaveSerialize into this control, whatever
    // it saved before (LoadSerialize reads only into a control that has
    // saved to a file itself). OSError when the file cannot be read.
    void OpenPlot(const std::string& path);

    // the window:
    void Show();
    void Close();

private:
    CUI_VexplotCtrl& Control();
    IControlSite& Site();
    // Invoke through IDispatch; raises AutomationFailure (or a handler's
    // exception) when the call failed.
    void RawInvoke(DISPID id, uint16_t flags, DispParams& params, Variant* result);
    // Runs `work` as a call into the control: a handler's exception raised
    // meanwhile is raised when it returns.
    template <class Work>
    void Guard(Work work);
    void AssignByRef(const py::object& answer, DispParams& params);
    void OnEvent(DISPID id, DispParams& params);
    void Stash(py::error_already_set error);
    // The bitmap of the current view, as 0x00BBGGRR pixels.
    std::vector<uint32_t> Render(int32_t* width, int32_t* height);

    std::unique_ptr<HeadlessSite> headless_;
    std::unique_ptr<VexplotWidget> widget_;
    ComPtr<CUI_VexplotCtrl> control_;
    ComPtr<EventSink> sink_;
    uint32_t cookie_ = 0;
    std::map<DISPID, std::vector<py::function>> handlers_;
    int callDepth_ = 0;
    std::unique_ptr<py::error_already_set> pending_;  // a handler's exception during a call
};

}  // namespace vexplot::python
