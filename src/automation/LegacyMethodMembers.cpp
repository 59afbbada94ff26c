// The methods of _DVexplot, the older interface, by their published dispids:
//   54-59    Get/SetXScale, Get/SetYScale, Get/SetZScale
//   60-63    Get/SetGraphStyle, GetLineWidth, SetLineWidth
//   64-75    Get/SetShowGrid, then Get/Set ColumnStart, RowStart,
//            NumColumns, NumRows, ShowAxis
//   76-81    Get/SetAxisLabelColor, Get/SetAxisFontName, Get/SetAxisColor
//   82-88    GetX/Y/ZAxisLabel, Get/SetBackColor, Get/SetAxisStyle
//   89-100   tick counts: 89 GetXNumMajorTickmarks, 90 SetXNumMajorTickmarks,
//            91/92 X minor, 93-96 Y, 97-100 Z
//   101-104  Get/SetNumXGridLines, Get/SetNumYGridLines
//   105-112  Get/SetMetaFile, Get/Set LineSmooth, DepthCue, HiddenLine
//   114-129  Get/Set UseColorPalette, PaletteMinVal, PaletteMaxVal,
//            ShowPalette, ShowPaletteLabels, PaletteFileName, ShowCursor,
//            GridDensity
//   130-135  GetCamXPos, SetCamXPos, GetCamYPos, SetCamYPos, GetCamZPos,
//            SetCamZPos; 136-141 the same for the centre (Coi)
//   142-147  GetCamDistance, GetCamElevation, GetCamAzimuth, SetCamDistance,
//            SetCamElevation, SetCamAzimuth
//   148-207  Get/Set pairs: TextureMode 148, Lighting 150, Shading 152,
//            FontAutoScale 154, Resolution 156, ShowDataTip 158, DataType 160,
//            AxisAutoScale 162, PaletteAutoAdjust 164, FileName 166,
//            GraphType 168, GridDensityAutoAdjust 170, Row 172,
//            ZMinClamp 174, ZMaxClamp 176, PaletteId 178, Col 180,
//            ResolutionAutoAdjust 182, AxisAutoDetail 184, DataClamp 186,
//            FixedAspect 188, ImageOrientation 190, DataSelectEnable 192,
//            RowDim 194, CamViewType 196, ColDim 198, ImageFilter 200,
//            HighLight 202, UseAxisScales 204, MetaFileStatus 206
//   1000-1004 CopyArrayData, CopyAxisScaleData, SetX/Y/ZAxisLabel
// The members that were never implemented come from the control's own
// table (CUI_VexplotCtrl::UnimplementedMembers).
#include "automation/MethodRows.h"

namespace vexplot {

namespace {

using Ctl = CUI_VexplotCtrl;
using rows::Getter;
using rows::Setter;
using rows::CameraComponentRows;
constexpr DispatchInterface kOld = DispatchInterface::Legacy;
constexpr AxisId kAxes[] = {AxisId::X, AxisId::Y, AxisId::Z};

std::string Named(const char* prefix, char letter, const char* suffix) {
    std::string name(prefix);
    name += letter;
    name += suffix;
    return name;
}

char Letter(size_t axis) { return static_cast<char>('X' + axis); }

// Scales, labels, ticks and grid lines: one family per axis.
void AddAxisRows(DispatchTable& t) {
    for (size_t i = 0; i < 3; ++i) {
        const AxisId axis = kAxes[i];
        const auto n = static_cast<DISPID>(i);
        Getter(t, kOld, 54 + 2 * n, Named("Get", Letter(i), "Scale").c_str(), VT_R8,
               [axis](Ctl& c) { return c.GetAxisScale(axis); });
        Setter(t, kOld, 55 + 2 * n, Named("Set", Letter(i), "Scale").c_str(), {{"scale", VT_R8}},
               [axis](Ctl& c, DispatchCall& a) { c.SetAxisScale(axis, a.R8(0)); });
        Getter(t, kOld, 82 + n, Named("Get", Letter(i), "AxisLabel").c_str(), VT_BSTR,
               [axis](Ctl& c) { return c.GetAxisLabel(axis); });
        Setter(t, kOld, 1002 + n, Named("Set", Letter(i), "AxisLabel").c_str(), {{"label", VT_BSTR}},
               [axis](Ctl& c, DispatchCall& a) { c.SetAxisLabel(axis, a.Bstr(0)); });
        for (bool major : {true, false}) {
            const DISPID get = 89 + 4 * n + (major ? 0 : 2);
            const char* kind = major ? "NumMajorTickmarks" : "NumMinorTickmarks";
            Getter(t, kOld, get, Named("Get", Letter(i), kind).c_str(), VT_I2,
                   [axis, major](Ctl& c) { return c.GetTickmarks(axis, major); });
            Setter(t, kOld, get + 1, Named("Set", Letter(i), kind).c_str(), {{"count", VT_I2}},
                   [axis, major](Ctl& c, DispatchCall& a) { c.SetTickmarks(axis, major, a.I2(0)); });
        }
    }
    for (size_t i = 0; i < 2; ++i) {
        const AxisId axis = kAxes[i];
        const DISPID get = 101 + 2 * static_cast<DISPID>(i);
        Getter(t, kOld, get, Named("GetNum", Letter(i), "GridLines").c_str(), VT_I4,
               [axis](Ctl& c) { return c.GetNumGridLines(axis); });
        Setter(t, kOld, get + 1, Named("SetNum", Letter(i), "GridLines").c_str(), {{"count", VT_I4}},
               [axis](Ctl& c, DispatchCall& a) { c.SetNumGridLines(axis, a.I4(0)); });
    }
}

// Members read and set through the control as they are.
void AddFlagAndColourRows(DispatchTable& t) {
    Getter(t, kOld, 64, "GetShowGrid", VT_BOOL, [](Ctl& c) { return c.GetShowGrid(); });
    Setter(t, kOld, 65, "SetShowGrid", {{"show", VT_BOOL}}, [](Ctl& c, DispatchCall& a) { c.SetShowGrid(a.Bool(0)); });
    Getter(t, kOld, 74, "GetShowAxis", VT_BOOL, [](Ctl& c) { return c.GetShowAxis(); });
    Setter(t, kOld, 75, "SetShowAxis", {{"show", VT_BOOL}}, [](Ctl& c, DispatchCall& a) { c.SetShowAxis(a.Bool(0)); });
    // The label colour and the axis colour are both the axes' number colour.
    for (DISPID get : {76, 80}) {
        Getter(t, kOld, get, get == 76 ? "GetAxisLabelColor" : "GetAxisColor", VT_I4,
               [](Ctl& c) { return c.GetAxisColor(); });
        Setter(t, kOld, get + 1, get == 76 ? "SetAxisLabelColor" : "SetAxisColor", {{"color", VT_I4}},
               [](Ctl& c, DispatchCall& a) { c.SetAxisColor(static_cast<uint32_t>(a.I4(0))); });
    }
    Getter(t, kOld, 78, "GetAxisFontName", VT_BSTR, [](Ctl& c) { return c.GetAxisFontName(); });
    Getter(t, kOld, 85, "GetBackColor", VT_I4, [](Ctl& c) { return c.GetBackColor(); });
    Setter(t, kOld, 86, "SetBackColor", {{"color", VT_I4}},
           [](Ctl& c, DispatchCall& a) { c.SetBackColor(static_cast<uint32_t>(a.I4(0))); });
    Getter(t, kOld, 126, "GetShowCursor", VT_BOOL, [](Ctl& c) { return c.GetShowCursor(); });
    Setter(t, kOld, 127, "SetShowCursor", {{"show", VT_BOOL}},
           [](Ctl& c, DispatchCall& a) { c.SetShowCursor(a.Bool(0)); });
    Getter(t, kOld, 158, "GetShowDataTip", VT_BOOL, [](Ctl& c) { return c.GetShowDataTip(); });
    Setter(t, kOld, 159, "SetShowDataTip", {{"show", VT_BOOL}},
           [](Ctl& c, DispatchCall& a) { c.SetShowDataTip(a.Bool(0)); });
    Getter(t, kOld, 192, "GetDataSelectEnable", VT_BOOL, [](Ctl& c) { return c.GetDataSelectEnable(); });
    Setter(t, kOld, 193, "SetDataSelectEnable", {{"enable", VT_BOOL}},
           [](Ctl& c, DispatchCall& a) { c.SetDataSelectEnable(a.Bool(0)); });
    Getter(t, kOld, 62, "GetLineWidth", VT_R4, [](Ctl&) { return 1.0f; });
    Getter(t, kOld, 166, "GetFileName", VT_BSTR, [](Ctl&) { return std::string(); });
}

void AddPaletteRows(DispatchTable& t) {
    Getter(t, kOld, 114, "GetUseColorPalette", VT_BOOL, [](Ctl& c) { return c.GetUseColorPalette(); });
    Setter(t, kOld, 115, "SetUseColorPalette", {{"useColor", VT_BOOL}},
           [](Ctl& c, DispatchCall& a) { c.SetUseColorPalette(a.Bool(0)); });
    Getter(t, kOld, 116, "GetPaletteMinVal", VT_R8, [](Ctl& c) { return c.GetPaletteMinVal(); });
    Getter(t, kOld, 118, "GetPaletteMaxVal", VT_R8, [](Ctl& c) { return c.GetPaletteMaxVal(); });
    Getter(t, kOld, 120, "GetShowPalette", VT_I4, [](Ctl& c) { return c.IsShowPalette(); });
    Setter(t, kOld, 121, "SetShowPalette", {{"show", VT_I4}}, [](Ctl& c, DispatchCall& a) { c.ShowPalette(a.I4(0)); });
    Getter(t, kOld, 122, "GetShowPaletteLabels", VT_BOOL, [](Ctl& c) { return c.GetShowPaletteLabels(); });
    Setter(t, kOld, 123, "SetShowPaletteLabels", {{"show", VT_BOOL}},
           [](Ctl& c, DispatchCall& a) { c.SetShowPaletteLabels(a.Bool(0)); });
    Getter(t, kOld, 124, "GetPaletteFileName", VT_BSTR, [](Ctl& c) { return c.GetPaletteFile(); });
    Setter(t, kOld, 125, "SetPaletteFileName", {{"file", VT_BSTR}},
           [](Ctl& c, DispatchCall& a) { c.SetPaletteFile(a.Bstr(0)); });
    Getter(t, kOld, 178, "GetPaletteId", VT_I4, [](Ctl& c) { return c.GetPaletteId(); });
    Setter(t, kOld, 179, "SetPaletteId", {{"id", VT_I4}}, [](Ctl& c, DispatchCall& a) { c.SetPaletteId(a.I4(0)); });
}

// Forwards to the current interface's methods, and the data window.
void AddGraphRows(DispatchTable& t) {
    Getter(t, kOld, 60, "GetGraphStyle", VT_I4, [](Ctl& c) { return c.GetGraphMode(); });
    Setter(t, kOld, 61, "SetGraphStyle", {{"style", VT_I4}}, [](Ctl& c, DispatchCall& a) { c.SetGraphMode(a.I4(0)); });
    Getter(t, kOld, 152, "GetShading", VT_I2, [](Ctl& c) { return c.GetShadingMode(); });
    Setter(t, kOld, 153, "SetShading", {{"shading", VT_I2}},
           [](Ctl& c, DispatchCall& a) { c.SetShadingMode(a.I2(0)); });
    Getter(t, kOld, 156, "GetResolution", VT_I4, [](Ctl& c) { return c.GetResolution(); });
    Setter(t, kOld, 157, "SetResolution", {{"resolution", VT_I4}},
           [](Ctl& c, DispatchCall& a) { c.SetResolution(a.I4(0)); });
    Getter(t, kOld, 105, "GetMetaFile", VT_BSTR, [](Ctl& c) { return c.GetMetaFileName(); });
    Setter(t, kOld, 106, "SetMetaFile", {{"file", VT_BSTR}},
           [](Ctl& c, DispatchCall& a) { c.SetMetaFileName(a.Bstr(0)); });
    Getter(t, kOld, 66, "GetColumnStart", VT_I4, [](Ctl& c) { return c.GetColumnStart(); });
    Getter(t, kOld, 68, "GetRowStart", VT_I4, [](Ctl& c) { return c.GetRowStart(); });
    Getter(t, kOld, 70, "GetNumColumns", VT_I4, [](Ctl& c) { return c.GetNumColumns(); });
    Getter(t, kOld, 72, "GetNumRows", VT_I4, [](Ctl& c) { return c.GetNumRows(); });
    Getter(t, kOld, 174, "GetZMinClamp", VT_R8, [](Ctl& c) { return c.GetZMinClamp(); });
    Getter(t, kOld, 176, "GetZMaxClamp", VT_R8, [](Ctl& c) { return c.GetZMaxClamp(); });
    Getter(t, kOld, 196, "GetCamViewType", VT_I4, [](Ctl& c) { return c.GetCamViewType(); });
    Setter(t, kOld, 197, "SetCamViewType", {{"type", VT_I4}},
           [](Ctl& c, DispatchCall& a) { c.SetCamViewType(a.I4(0)); });
}

void AddCameraRows(DispatchTable& t) {
    CameraComponentRows(t, kOld, 130, {"CamXPos", "CamYPos", "CamZPos", "CamXCoi", "CamYCoi", "CamZCoi"});
    Getter(t, kOld, 142, "GetCamDistance", VT_R4, [](Ctl& c) { return c.GetCamDist(); });
    Getter(t, kOld, 143, "GetCamElevation", VT_R4, [](Ctl& c) { return c.GetCamElev(); });
    Getter(t, kOld, 144, "GetCamAzimuth", VT_R4, [](Ctl& c) { return c.GetCamAzim(); });
    Setter(t, kOld, 145, "SetCamDistance", {{"value", VT_R4}}, [](Ctl& c, DispatchCall& a) { c.SetCamDist(a.R4(0)); });
    Setter(t, kOld, 146, "SetCamElevation", {{"value", VT_R4}},
           [](Ctl& c, DispatchCall& a) { c.SetCamElev(a.R4(0)); });
    Setter(t, kOld, 147, "SetCamAzimuth", {{"value", VT_R4}}, [](Ctl& c, DispatchCall& a) { c.SetCamAzim(a.R4(0)); });
}

// Array input: the data object's failures reach the host.
void AddArrayRows(DispatchTable& t) {
    t.AddMethod(kOld, 1000, "CopyArrayData", VT_EMPTY, {{"variant", VT_VARIANT}}, [](Ctl& c, DispatchCall& call) {
        const HRESULT hr = c.CopyArrayData(call.Arg(0));
        return FAILED(hr) ? hr : S_OK;
    });
    t.AddMethod(kOld, 1001, "CopyAxisScaleData", VT_EMPTY, {{"axis", VT_I2}, {"array", VT_VARIANT}},
                [](Ctl& c, DispatchCall& call) {
                    const HRESULT hr = c.CopyAxisScaleData(call.I2(0), call.Arg(1));
                    return FAILED(hr) ? hr : S_OK;
                });
}

// Each never-implemented member reports itself and answers its fixed value;
// the setters take one argument of any type.
void AddUnimplementedRows(DispatchTable& t) {
    for (const Ctl::UnimplementedMember& m : Ctl::UnimplementedMembers()) {
        std::vector<ParamInfo> params;
        if (m.result == VT_EMPTY) params.push_back({"value", VT_VARIANT});
        t.AddMethod(kOld, m.id, m.name, m.result, std::move(params), [m](Ctl& c, DispatchCall& call) {
            call.Return(c.CallUnimplemented(m));
            return S_OK;
        });
    }
}

}  // namespace

void AddLegacyMethodMembers(DispatchTable& table) {
    AddAxisRows(table);
    AddFlagAndColourRows(table);
    AddPaletteRows(table);
    AddGraphRows(table);
    AddCameraRows(table);
    AddArrayRows(table);
    AddUnimplementedRows(table);
}

}  // namespace vexplot
