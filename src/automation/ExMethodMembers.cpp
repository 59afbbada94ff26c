#include "automation/MethodRows.h"

namespace vexplot {

namespace {

using Ctl = CUI_VexplotCtrl;
using rows::Getter;
using rows::Setter;
using rows::CameraComponentRows;
constexpr DispatchInterface kEx = DispatchInterface::Ex;

// BOOL Get?Range(double* min, double* max): FALSE without a graph object.
template <class Range>
void RangeRow(DispatchTable& table, DISPID id, const char* name, const char* lo, const char* hi, Range range) {
    table.AddMethod(kEx, id, name, VT_BOOL, {{lo, VT_R8, true}, {hi, VT_R8, true}},
                    [range](Ctl& c, DispatchCall& call) {
                        double min = 0.0;
                        double max = 0.0;
                        const bool ok = range(c, &min, &max);
                        if (ok) {
                            call.Out(0, Variant(min));
                            call.Out(1, Variant(max));
                        }
                        call.Return(Variant::Bool(ok));
                        return S_OK;
                    });
}

void AddDataRows(DispatchTable& t) {
    t.AddMethod(kEx, 500, "SetData", VT_EMPTY, {{"pDataObject", VT_UNKNOWN}}, [](Ctl& c, DispatchCall& call) {
        const HRESULT hr = c.SetData(call.Arg(0).Unknown().Get());
        return FAILED(hr) ? hr : S_OK;
    });
    Getter(t, kEx, 503, "GetGraphMode", VT_I4, [](Ctl& c) { return c.GetGraphMode(); });
    Setter(t, kEx, 504, "SetGraphMode", {{"mode", VT_I4}}, [](Ctl& c, DispatchCall& a) { c.SetGraphMode(a.I4(0)); });
    Getter(t, kEx, 505, "GetShadingMode", VT_I2, [](Ctl& c) { return c.GetShadingMode(); });
    Setter(t, kEx, 506, "SetShadingMode", {{"shading", VT_I2}},
           [](Ctl& c, DispatchCall& a) { c.SetShadingMode(a.I2(0)); });
    Getter(t, kEx, 507, "GetLowResolution", VT_BOOL, [](Ctl& c) { return c.GetLowResolution(); });
    Setter(t, kEx, 508, "SetLowResolution", {{"res", VT_BOOL}},
           [](Ctl& c, DispatchCall& a) { c.SetLowResolution(a.Bool(0) ? 1 : 0); });
    RangeRow(t, 509, "GetXRange", "xmin", "xmax", [](Ctl& c, double* lo, double* hi) { return c.GetXRange(lo, hi); });
    RangeRow(t, 510, "GetYRange", "ymin", "ymax", [](Ctl& c, double* lo, double* hi) { return c.GetYRange(lo, hi); });
    // The Z range comes from the data object, whose failures reach the host.
    t.AddMethod(kEx, 511, "GetZRange", VT_BOOL, {{"zmin", VT_R8, true}, {"zmax", VT_R8, true}},
                [](Ctl& c, DispatchCall& call) {
                    double lo = 0.0;
                    double hi = 0.0;
                    const HRESULT hr = c.GetZRange(&lo, &hi);
                    if (FAILED(hr)) return hr;
                    if (hr == S_OK) {
                        call.Out(0, Variant(lo));
                        call.Out(1, Variant(hi));
                    }
                    call.Return(Variant::Bool(hr == S_OK));
                    return S_OK;
                });
    Getter(t, kEx, 512, "GetShowXAxis", VT_BOOL, [](Ctl& c) { return c.GetShowXAxis(); });
    Getter(t, kEx, 513, "GetShowYAxis", VT_BOOL, [](Ctl& c) { return c.GetShowYAxis(); });
    Getter(t, kEx, 538, "RetrieveBitmap", VT_I4, [](Ctl& c) { return c.RetrieveBitmap(); });
    // Accepted and ignored: the argument is not even looked at.
    Setter(t, kEx, 549, "SetActive", {{"pDataObject", VT_VARIANT}}, [](Ctl&, DispatchCall&) {});
}

// The camera's position and centre by component, each a get/set pair.
void AddCameraRows(DispatchTable& t) {
    CameraComponentRows(t, kEx, 514,
                        {"CamXPosition", "CamYPosition", "CamZPosition", "CamXCenter", "CamYCenter", "CamZCenter"});
    Getter(t, kEx, 526, "GetCamDist", VT_R4, [](Ctl& c) { return c.GetCamDist(); });
    Setter(t, kEx, 527, "SetCamDist", {{"value", VT_R4}}, [](Ctl& c, DispatchCall& a) { c.SetCamDist(a.R4(0)); });
    Getter(t, kEx, 528, "GetCamElev", VT_R4, [](Ctl& c) { return c.GetCamElev(); });
    Setter(t, kEx, 529, "SetCamElev", {{"value", VT_R4}}, [](Ctl& c, DispatchCall& a) { c.SetCamElev(a.R4(0)); });
    Getter(t, kEx, 530, "GetCamAzim", VT_R4, [](Ctl& c) { return c.GetCamAzim(); });
    Setter(t, kEx, 531, "SetCamAzim", {{"value", VT_R4}}, [](Ctl& c, DispatchCall& a) { c.SetCamAzim(a.R4(0)); });
}

void AddPaletteAndFileRows(DispatchTable& t) {
    Getter(t, kEx, 532, "IsShowPalette", VT_I4, [](Ctl& c) { return c.IsShowPalette(); });
    Setter(t, kEx, 533, "ShowPalette", {{"flag", VT_I4}}, [](Ctl& c, DispatchCall& a) { c.ShowPalette(a.I4(0)); });
    Setter(t, kEx, 534, "SetPaletteFile", {{"file", VT_BSTR}},
           [](Ctl& c, DispatchCall& a) { c.SetPaletteFile(a.Bstr(0)); });
    Getter(t, kEx, 535, "GetPaletteFile", VT_BSTR, [](Ctl& c) { return c.GetPaletteFile(); });
    Setter(t, kEx, 536, "SetMetaFileName", {{"File", VT_BSTR}},
           [](Ctl& c, DispatchCall& a) { c.SetMetaFileName(a.Bstr(0)); });
    Getter(t, kEx, 537, "GetMetaFileName", VT_BSTR, [](Ctl& c) { return c.GetMetaFileName(); });
    Setter(
        t, kEx, 539, "EnableCustomDataCellToolTip", {{"bShow", VT_I4}},
        [](Ctl& c, DispatchCall& a) { c.EnableCustomDataCellToolTip(a.I4(0)); }, "EnableDataCellToolTip");
    Setter(t, kEx, 542, "Print", {}, [](Ctl& c, DispatchCall&) { c.Print(); });
    Setter(t, kEx, -552, "AboutBox", {}, [](Ctl& c, DispatchCall&) { c.AboutBox(); });
}

void AddWindowAnd1DRows(DispatchTable& t) {
    Setter(t, kEx, 543, "ShowWindows", {{"wndWindows", VT_I4}, {"bVisible", VT_I4}},
           [](Ctl& c, DispatchCall& a) { c.ShowWindows(a.I4(0), a.I4(1)); });
    Setter(t, kEx, 544, "Enable1DView", {{"bEnable", VT_I4}, {"mode", VT_I2}},
           [](Ctl& c, DispatchCall& a) { c.Enable1DView(a.I4(0), a.I2(1)); });
    Setter(t, kEx, 545, "SetSecantPlane1DView", {{"pos", VT_R8}},
           [](Ctl& c, DispatchCall& a) { c.SetSecantPlane1DView(a.R8(0)); });
    Setter(t, kEx, 546, "SetPlotStyle1DView", {{"plotStyle", VT_I2}},
           [](Ctl& c, DispatchCall& a) { c.SetPlotStyle1DView(a.I2(0)); });
    Setter(t, kEx, 547, "SetPointStyle1DView", {{"pointStyle", VT_I2}},
           [](Ctl& c, DispatchCall& a) { c.SetPointStyle1DView(a.I2(0)); });
    Setter(t, kEx, 548, "SetCurveColor1DView", {{"curveColor", VT_I4}},
           [](Ctl& c, DispatchCall& a) { c.SetCurveColor1DView(static_cast<uint32_t>(a.I4(0))); });
}

}  // namespace

// The methods of _DVexplotEx (dispids 500-549 and AboutBox), except the four
// that save and load state.
void AddExMethodMembers(DispatchTable& table) {
    AddDataRows(table);
    AddCameraRows(table);
    AddPaletteAndFileRows(table);
    AddWindowAnd1DRows(table);
}

}  // namespace vexplot
