#include "PyControl.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "EventLoop.h"
#include "automation/DispatchTable.h"
#include "com/ConnectionPoint.h"
#include "control/HeadlessSite.h"
#include "control/ImageFile.h"
#include "qt/VexplotWidget.h"
#include "settings/SettingsStore.h"
#include "vexplot/EngineSetup.h"

namespace vexplot::python {

namespace {

struct EventName {
    const char* name;
    DISPID id;
};

// The events of the control's event interface.
constexpr EventName kEvents[] = {
    {"Error", CUI_VexplotCtrl::kDispidError},
    {"DataSelect", CUI_VexplotCtrl::kDispidDataSelect},
    {"Resample", CUI_VexplotCtrl::kDispidResample},
    {"DataCellMouseOver", CUI_VexplotCtrl::kDispidDataCellMouseOver},
};

DISPID EventId(const std::string& name) {
    for (const EventName& e : kEvents)
        if (name == e.name) return e.id;
    throw py::value_error("unknown event '" + name + "' (Error, DataSelect, Resample, DataCellMouseOver)");
}

std::string MemberName(DISPID id) {
    const DispatchMember* m = DispatchTable::Vexplot().Find(id);
    return m ? m->name : "member " + std::to_string(id);
}

// How the client sees a failed Invoke.
AutomationFailure Failure(DISPID id, HRESULT hr, const ExcepInfo& info, uint32_t argErr, uint32_t argCount) {
    AutomationFailure f{hr, HResultText(hr)};
    if (hr == DISP_E_EXCEPTION) {
        f.hresult = info.scode;
        f.description = info.description;
    } else if (hr == DISP_E_TYPEMISMATCH && argErr < argCount) {
        f.argument = static_cast<int>(argCount - 1 - argErr);
    }
    f.description = MemberName(id) + ": " + f.description;
    return f;
}

}  // namespace

namespace {

std::shared_ptr<SettingsStore> OpenSettings(const std::string& settings) {
    if (settings == "user") return SettingsStore::Default();
    if (settings == "memory") return SettingsStore::OpenUnshared(":memory:");
    if (settings.empty()) throw py::value_error("settings must be \"user\", \"memory\" or the path of a settings file");
    std::shared_ptr<SettingsStore> store = SettingsStore::Open(settings);
    if (!store->IsUsable()) throw py::value_error("cannot use " + settings + " as a settings store");
    return store;
}

}  // namespace

PyControl::PyControl(int width, int height, bool show, const std::string& settings) {
    if (width < 16 || height < 16 || width > 16384 || height > 16384)
        throw py::value_error("the control's size must be 16 to 16384 pixels each way");
    std::shared_ptr<SettingsStore> store = OpenSettings(settings);
    // The first control of a user registers the engine installed with the
    // module, and says so.
    if (const EngineSetupResult engine = RegisterShippedEngine(store); !engine.message.empty())
        PySys_WriteStderr("%s\n", engine.message.c_str());
    if (show) {
        EventLoop::EnsureApplication();
        widget_ = std::make_unique<VexplotWidget>(nullptr, store);
        widget_->setWindowTitle("Vexplot");
        widget_->resize(width, height);
        control_ = ComPtr<CUI_VexplotCtrl>(&widget_->Control());
    } else {
        headless_ = std::make_unique<HeadlessSite>(stderr);
        control_ = MakeComObject<CUI_VexplotCtrl>(nullptr, std::move(store));
        // The picture is the view alone, so the bars around it go and the
        // view fills the size asked for; a script may show them again.
        if (control_->Create(*headless_, {0, 0, width, height})) control_->ShowWindows(CUI_VexplotCtrl::wndAll, 0);
    }
    sink_ = MakeComObject<EventSink>([this](DISPID id, DispParams& params) { OnEvent(id, params); });
    ConnectionAdvise(control_->Identity(), CUI_VexplotCtrl::kExEventsIid, sink_.Get(), &cookie_);
    if (widget_) Show();
}

PyControl::~PyControl() { Close(); }

void PyControl::Close() {
    if (!control_) return;
    if (cookie_) ConnectionUnadvise(control_->Identity(), CUI_VexplotCtrl::kExEventsIid, cookie_);
    cookie_ = 0;
    sink_->Detach();
    sink_.Reset();
    handlers_.clear();
    if (widget_) {
        // The widget destroys its control and drops the last reference.
        control_.Reset();
        widget_.reset();
    } else {
        control_->Destroy();
        control_.Reset();
        headless_.reset();
    }
}

CUI_VexplotCtrl& PyControl::Control() {
    if (!control_) throw std::runtime_error("the control was closed");
    return *control_;
}

IControlSite& PyControl::Site() {
    Control();
    if (widget_) return widget_->Site();
    return *headless_;
}

bool PyControl::Ready() { return control_ && control_->IsCreated(); }

// -- names and members --

DISPID PyControl::DispId(const std::string& name) {
    const char* names[] = {name.c_str()};
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(Control().GetIDsOfNames(GUID_NULL, names, 1, 0, &id)))
        throw py::attribute_error("the control has no member '" + name + "'");
    return id;
}

std::string PyControl::TypelibName(DISPID id) const {
    const DispatchMember* m = DispatchTable::Vexplot().Find(id);
    if (!m) throw py::key_error("no member has dispid " + std::to_string(id));
    return m->typelibName;
}

std::vector<std::string> PyControl::Members() const {
    std::vector<std::string> names;
    for (const DispatchMember& m : DispatchTable::Vexplot().Members()) names.push_back(m.name);
    return names;
}

py::tuple PyControl::Lookup(const std::string& name) {
    const DISPID id = DispId(name);
    const DispatchMember* m = DispatchTable::Vexplot().Find(id);
    return py::make_tuple(id, m && m->isProperty);
}

// -- calls --

template <class Work>
void PyControl::Guard(Work work) {
    ++callDepth_;
    try {
        work();
    } catch (...) {
        --callDepth_;
        throw;
    }
    --callDepth_;
    if (pending_ && callDepth_ == 0) {
        py::error_already_set error = std::move(*pending_);
        pending_.reset();
        throw error;
    }
}

void PyControl::RawInvoke(DISPID id, uint16_t flags, DispParams& params, Variant* result) {
    // The control stays alive for the call even if a handler closes it.
    ComPtr<CUI_VexplotCtrl> control(&Control());
    ExcepInfo info;
    uint32_t argErr = UINT32_MAX;
    HRESULT hr = S_OK;
    Guard([&] { hr = control->Invoke(id, GUID_NULL, 0, flags, &params, result, &info, &argErr); });
    if (FAILED(hr)) throw Failure(id, hr, info, argErr, params.argCount);
}

py::object PyControl::Invoke(DISPID id, const py::args& args) {
    const DispatchMember* m = DispatchTable::Vexplot().Find(id);
    if (m && m->isProperty && args.size() == 1) {
        Put(id, args[0]);
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
    RawInvoke(id, flags, params, &result);

    std::vector<py::object> answers;
    if (m ? m->type != VT_EMPTY : !result.IsEmpty()) answers.push_back(FromVariant(result));
    for (const auto& out : outs) answers.push_back(out->Value());
    if (answers.empty()) return py::none();
    if (answers.size() == 1) return answers.front();
    py::tuple tuple(answers.size());
    for (size_t i = 0; i < answers.size(); ++i) tuple[i] = answers[i];
    return tuple;
}

void PyControl::Put(DISPID id, py::handle value) {
    Variant argument = ToVariant(value);
    DISPID named = DISPID_PROPERTYPUT;
    DispParams params{&argument, &named, 1, 1};
    RawInvoke(id, DISPATCH_PROPERTYPUT, params, nullptr);
}

// -- events --

void PyControl::On(const std::string& event, py::function handler) {
    handlers_[EventId(event)].push_back(std::move(handler));
}

void PyControl::Off(const std::string& event, py::object handler) {
    auto& list = handlers_[EventId(event)];
    if (handler.is_none()) list.clear();
    else list.erase(std::remove_if(list.begin(), list.end(), [&](const py::function& f) { return f.equal(handler); }),
                    list.end());
}

void PyControl::Stash(py::error_already_set error) {
    // Inside a call the first exception is raised when the call returns;
    // from the event loop there is no caller, so it is reported as Python
    // reports exceptions it cannot raise.
    if (callDepth_ > 0) {
        if (!pending_) pending_ = std::make_unique<py::error_already_set>(std::move(error));
    } else {
        error.discard_as_unraisable("vexplot event handler");
    }
}

void PyControl::OnEvent(DISPID id, DispParams& params) {
    const auto it = handlers_.find(id);
    if (it == handlers_.end() || it->second.empty()) return;
    py::gil_scoped_acquire gil;
    // A copy: a handler may add or remove handlers.
    const std::vector<py::function> handlers = it->second;
    for (const py::function& handler : handlers) {
        try {
            py::tuple args(params.argCount);
            for (uint32_t i = 0; i < params.argCount; ++i) args[i] = FromVariant(params.args[params.argCount - 1 - i]);
            AssignByRef(handler(*args), params);
        } catch (py::error_already_set& e) {
            Stash(std::move(e));
        } catch (const py::builtin_exception& e) {
            e.set_error();
            Stash(py::error_already_set());
        } catch (const std::exception& e) {
            PyErr_SetString(PyExc_RuntimeError, e.what());
            Stash(py::error_already_set());
        }
    }
}

// A handler's answer goes into the event's by-reference arguments: a
// tuple fills them in order (None leaves one alone); a single value goes to
// the first of matching type (a str to the text, a bool to a flag), else to
// the first.
void PyControl::AssignByRef(const py::object& answer, DispParams& params) {
    if (answer.is_none()) return;
    std::vector<const Variant*> refs;
    for (uint32_t i = 0; i < params.argCount; ++i)
        if (params.args[params.argCount - 1 - i].IsByRef()) refs.push_back(&params.args[params.argCount - 1 - i]);
    if (refs.empty()) return;
    auto assign = [](const Variant* ref, const Variant& value) {
        if (FAILED(ref->AssignThroughRef(value)))
            throw py::type_error("an event handler returned a value of the wrong type");
    };
    if (py::isinstance<py::tuple>(answer)) {
        const auto tuple = answer.cast<py::tuple>();
        for (size_t k = 0; k < std::min(tuple.size(), refs.size()); ++k)
            if (!tuple[k].is_none()) assign(refs[k], ToVariant(tuple[k]));
        return;
    }
    const Variant value = ToVariant(answer);
    const auto same = std::find_if(refs.begin(), refs.end(), [&](const Variant* r) {
        return (r->Type() & VT_TYPEMASK) == (value.Type() & VT_TYPEMASK);
    });
    assign(same != refs.end() ? *same : refs.front(), value);
}

// -- pictures --

std::vector<uint32_t> PyControl::Render(int32_t* width, int32_t* height) {
    CUI_VexplotCtrl& control = Control();
    if (!control.IsCreated())
        throw std::runtime_error("the control has no graph engine: run `vexplot register` (or vexplot.register_engine())");
    int32_t bitmap = 0;
    Guard([&] { bitmap = control.RetrieveBitmap(); });
    std::vector<uint32_t> pixels;
    IControlSite& site = Site();
    const bool read = bitmap != 0 && site.ReadBitmap(static_cast<uint32_t>(bitmap), &pixels, width, height);
    if (bitmap != 0) site.DeleteBitmap(static_cast<uint32_t>(bitmap));
    if (!read) throw std::runtime_error("the view could not be rendered");
    return pixels;
}

py::array_t<uint8_t> PyControl::Image() {
    int32_t width = 0;
    int32_t height = 0;
    const std::vector<uint32_t> pixels = Render(&width, &height);
    py::array_t<uint8_t> image({static_cast<py::ssize_t>(height), static_cast<py::ssize_t>(width), py::ssize_t{4}});
    uint8_t* out = image.mutable_data();
    // 0x00BBGGRR -> R, G, B, opaque.
    for (const uint32_t p : pixels) {
        *out++ = static_cast<uint8_t>(p & 0xFF);
        *out++ = static_cast<uint8_t>((p >> 8) & 0xFF);
        *out++ = static_cast<uint8_t>((p >> 16) & 0xFF);
        *out++ = 0xFF;
    }
    return image;
}

void PyControl::SaveImage(const std::string& path) {
    int32_t width = 0;
    int32_t height = 0;
    const std::vector<uint32_t> pixels = Render(&width, &height);
    const std::string error = ImageFile::Save(path, {pixels, width, height});
    if (!error.empty()) {
        PyErr_SetString(PyExc_OSError, error.c_str());
        throw py::error_already_set();
    }
}

void PyControl::OpenPlot(const std::string& path) {
    if (!Control().OpenPlotFile(path)) {
        PyErr_SetString(PyExc_OSError, (path + ": not a plot file that could be read").c_str());
        throw py::error_already_set();
    }
}

// -- the window --

void PyControl::Show() {
    Control();
    if (!widget_) throw std::runtime_error("a headless control has no window: make it with Control(show=True)");
    widget_->show();
    EventLoop::ProcessEvents(0);
}

}  // namespace vexplot::python
