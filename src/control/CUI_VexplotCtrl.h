#pragma once
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "com/ComObject.h"
#include "com/ConnectionPointList.h"
#include "com/IConnectionPoint.h"
#include "com/Variant.h"
#include "control/CommandRouter.h"
#include "control/CommandTable.h"
#include "control/ControlSettings.h"
#include "control/DisplayChangeHook.h"
#include "control/EngineHost.h"
#include "annotations/CGD_AnnotationList.h"
#include "site/IControlSite.h"
#include "model/CGD_Axis.h"
#include "model/CGD_GraphObjectList.h"
#include "model/CGD_Palette.h"
#include "model/IViewHost.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/NavigatorPad.h"

namespace vexplot {

class CTool;
class CToolsCtrl;
class MessageSink;
class ToolIconMenu;
class SettingsStore;

// The embeddable control: owns its windows (through an IControlSite), the
// graph engine (EngineHost), the graph objects, the axes and the palette,
// and mirrors its persisted settings (ControlSettings). The model objects
// and the windows reach it as their IViewHost; hosts call the automation
// methods below, which keep the published names, and receive the Error
// event through the control's connection points or OnError.
//
// Life cycle: construction reads the settings; Create builds the windows
// and the engine; Destroy (or the last Release) takes everything down. When
// Create fails (no engine could be started) the control stays without a
// plot and every method is a harmless no-op returning its empty result.
//
// Failures: methods that reach the data object return an HRESULT (S_OK,
// S_FALSE when there is nothing to act on, or the data object's own code);
// other methods report a failing engine or data-object call through
// FireError with its code and text, as the host sees any automation error.
// Everything runs on the host's user-interface thread.
class CUI_VexplotCtrl final : public ComObject<IViewHost, IConnectionPointContainer, IDispatch>,
                              private IWindowHandler,
                              private ILegendOwner,
                              private IDisplayChangeListener {
public:
    // The event interfaces: _DVexplotEvents and _DVexplotExEvents.
    static constexpr IID kEventsIid = GUID::FromLiteral("{560F5F30-09CB-48B4-9089-E860F4847D66}");
    static constexpr IID kExEventsIid = GUID::FromLiteral("{1F08A448-6DC7-43D1-B366-E9FF449EF758}");
    static constexpr DISPID kDispidError = -608;
    static constexpr DISPID kDispidDataSelect = 1;
    static constexpr DISPID kDispidResample = 2;
    static constexpr DISPID kDispidDataCellMouseOver = 3;

    // enumWindows
    static constexpr int32_t wndInfo = 1;
    static constexpr int32_t wndLegend = 2;
    static constexpr int32_t wndNavigator = 4;
    static constexpr int32_t wndTitle = 8;
    static constexpr int32_t wndStatus = 16;
    static constexpr int32_t wndAll = 31;

    static constexpr HRESULT kErrorInvalidValue = MakeHResult(0x800A017C);
    static constexpr const char* kTextInvalidValue = "Sorry, property value isn't valid.";
    static constexpr HRESULT kErrorNotImplemented = MakeHResult(0x800A0005);
    static constexpr const char* kTextNotImplemented = "Sorry but this function is not yet implemented.";

    // The five window flags (title, status, info, legend, navigator).
    struct WindowVisibility {
        bool title = true;
        bool status = true;
        bool info = false;
        bool legend = false;
        bool navigator = true;
        friend bool operator==(const WindowVisibility&, const WindowVisibility&) = default;
    };

    using ErrorListener = std::function<void(HRESULT code, const std::string& text)>;

    // Reads the settings. `sink` receives the settings store's own failure
    // messages (null: stderr); `store` null means the default store.
    explicit CUI_VexplotCtrl(MessageSink* sink = nullptr, std::shared_ptr<SettingsStore> store = nullptr);

    // lifecycle:
    // Builds the windows in `site` (borrowed, must outlive the control or
    // Destroy) at `rect` in the host, then the engine, the graph-object
    // list, the axes, and shows the 3-D view (2-D when it could not start).
    // False when the engine could not be started: the user has been told,
    // and the control shows no plot.
    bool Create(IControlSite& site, const PixelRect& rect);
    // Releases graph objects, axes, the engine (3-D view, 2-D device, root)
    // and the windows. Safe to call twice.
    void Destroy();
    bool IsCreated() const { return graphs_ != nullptr; }

    // state:
    const ControlSettings& Settings() const { return settings_; }
    // The window of a role; 0 when it does not exist.
    WindowHandle Window(WindowRole role) const { return windows_[static_cast<size_t>(role)]; }
    bool RedrawPending() const { return redrawPending_; }
    bool StateOperation() const { return stateOperation_; }
    void SetStateOperation(bool normal) { stateOperation_ = normal; }
    const std::string& EngineName() const { return engine_ ? engine_->EngineName() : settings_.graphEngine; }
    CGD_Palette& Palette() { return palette_; }
    // Sends the palette's colours to the engine and redraws.
    void ApplyPalette();
    // A plain C++ listener of the Error event, called after the sinks.
    void OnError(ErrorListener listener) { errorListeners_.push_back(std::move(listener)); }

    // window visibility:
    // The current state of the five windows into the control's record
    // (allocated on first use), and a copy of it.
    WindowVisibility ReadVisibility();
    // Shows or hides the windows from `record`; null applies the stored
    // record, or only reads the state when none was ever allocated.
    void ApplyVisibility(const WindowVisibility* record);

    // _DVexplotEx methods:
    HRESULT SetData(IUnknown* dataObject);
    void SetActive(IUnknown*) {}  // accepted and ignored, by design
    int32_t GetGraphMode();
    void SetGraphMode(int32_t mode);
    int16_t GetShadingMode();
    void SetShadingMode(int16_t shading);
    int32_t GetLowResolution();
    void SetLowResolution(int32_t low);
    bool GetXRange(double* xmin, double* xmax);
    bool GetYRange(double* ymin, double* ymax);
    // S_OK with the range, S_FALSE without a graph object, E_POINTER when
    // it has no data-access interface, else the data object's failure.
    HRESULT GetZRange(double* zmin, double* zmax);
    double GetCamXPosition();
    double GetCamYPosition();
    double GetCamZPosition();
    void SetCamXPosition(double value);
    void SetCamYPosition(double value);
    void SetCamZPosition(double value);
    double GetCamXCenter();
    double GetCamYCenter();
    double GetCamZCenter();
    void SetCamXCenter(double value);
    void SetCamYCenter(double value);
    void SetCamZCenter(double value);
    float GetCamDist();
    void SetCamDist(float value);
    float GetCamElev();
    void SetCamElev(float value);
    float GetCamAzim();
    void SetCamAzim(float value);
    // The current view rendered at its window's size into a site bitmap;
    // 0 when there is nothing to render or the engine fails.
    int32_t RetrieveBitmap();
    void ShowWindows(int32_t windows, int32_t visible);
    int32_t GetWindowsVisible();
    void SetWindowsVisible(int32_t windows);
    // Modes 1 (Y-Z plane) and 2 (X-Z plane); other modes are ignored.
    void Enable1DView(int32_t enable, int16_t mode);
    void SetSecantPlane1DView(double position);
    void SetPlotStyle1DView(int16_t plotStyle);
    void SetPointStyle1DView(int16_t pointStyle);
    void SetCurveColor1DView(uint32_t color);

    // _DVexplot array input:
    // A two-dimensional array of doubles (dimension 1 = X) shown through the
    // control's own data object with scales 0, 1, ...; fewer than 2 X
    // columns does nothing (S_FALSE). DISP_E_TYPEMISMATCH for other variants.
    HRESULT CopyArrayData(const Variant& array);
    // Axis 0 replaces the X scale, 1 the Y scale of that data object.
    HRESULT CopyAxisScaleData(int16_t axis, const Variant& array);

    // A data file (.3do, .csv, .npy) shown as a new graph object beside
    // those already plotted. On failure `error` (may be null) says why.
    HRESULT LoadDataFile(const std::string& path, std::string* error);

    // user input and commands:
    // Carries out a menu or accelerator command; commands that are not
    // available now (CommandState) do nothing.
    void OnCommand(int32_t command) override;
    // The same for a host or a script: a command by its identifier (the
    // CommandIds.h values), exactly as if the user had chosen it. False when
    // the command is unknown or not available now.
    bool DoCommand(int32_t command);
    // Whether a command of the pop-up menu is available and checked now.
    CommandTable::EntryState CommandState(int32_t command);
    // The pop-up menu as it stands now.
    MenuModel PopupMenu();
    // Camera moves of the mouse and the navigator, in degrees, view pixels
    // and distance factors; each redraws.
    void TurnBy(double azimuthDegrees, double elevationDegrees);
    void PanBy(double dx, double dy);
    void ZoomBy(double factor);

    // C++ only: the drawing styles no published method reaches (wireframe,
    // lines); applied to the active graph object.
    void SetDrawingStyle(GraphStyle style);
    // The XLabel/YLabel/ZLabel properties: the axis label text, re-applied.
    void SetAxisLabelText(AxisId axis, const std::string& text);
    // The stock caption: the title bar's text.
    void SetCaption(const std::string& text);
    std::string GetCaption() const;

    // IViewHost:
    void RecalcLayout() override;
    CGD_GraphObjectList* GetGraphObjects() override { return graphs_.get(); }
    void RefreshGraphObject(CGD_GraphObject* graph) override;
    void Rebuild1DView(CGD_GraphObject* graph) override;
    void BeginWaitCursor() override;
    void EndWaitCursor() override;
    int32_t GetViewMode() override { return viewMode_; }
    void SetViewMode(int32_t mode) override;
    PixelRect GetPlotRect() override;
    void SetModified() override { modified_ = true; }
    void FireError(HRESULT code, const char* text) override;
    CGD_Axis* GetAxis(AxisId axis) override;
    void CreateAxes() override;
    CUIW_InfoWnd* GetInfoWindow() override { return info_.get(); }
    void UpdateLegend() override;
    void SetStatusText(const char* text) override;
    uint32_t GetBackgroundColor() override { return settings_.backgroundColor; }
    IGraphEngine* GetEngine() override { return engine_ ? engine_->Engine() : nullptr; }
    WindowHandle GetCurrentViewWindow() override { return currentView_; }
    int32_t Is3DViewCurrent() override;
    void InvalidateView(const PixelRect* rect) override;
    int32_t ShowMessage(const char* text, uint32_t buttons) override;
    void AddAnnotation(CGD_Annotation* annotation) override;
    void RemoveAnnotation(CGD_Annotation* annotation) override;
    void SelectAnnotation(CGD_Annotation* annotation) override;
    CGD_Annotation* GetSelectedAnnotation() override;
    void ResetAxisLabel(const char* axis) override;
    void SetXLabel(const char* text) override { TakeDataLabel(AxisId::X, text); }
    void SetYLabel(const char* text) override { TakeDataLabel(AxisId::Y, text); }
    void SetZLabel(const char* text) override { TakeDataLabel(AxisId::Z, text); }
    void BeginViewMotion() override { moving_ = true; }
    void EndViewMotion() override;
    bool ClientToData(int32_t px, int32_t py, Point3* point) override;
    bool DataToClient(const Point3& point, int32_t* px, int32_t* py) override;
    void FireDataSelect(const DataRect& xy, double zMin, double zMax) override;
    void FireResample(const DataRect& xy) override;
    void Redraw(bool erase) override;
    void SetCursorShape(int32_t shape) override;
    void SetTimer(uint32_t id, uint32_t milliseconds) override;
    void KillTimer(uint32_t id) override;
    IGraphDevice2D* GetDevice2D() override { return engine_ ? engine_->Device() : nullptr; }
    IGraphView3D* GetView3D() override { return engine_ ? engine_->View() : nullptr; }
    void SetSurfaceViewAvailable(int32_t available) override { surfaceViewAvailable_ = available != 0; }
    void ShowContextMenu(int32_t x, int32_t y) override;

    // ---- properties (CUI_VexplotCtrlProperties.cpp) ----
    // Every property of PropertyTable by dispid, for C++ hosts and the
    // dispatch table alike. A put converts `value` to the property's type
    // (failing with the conversion's code), stores the member, writes its
    // setting, applies it to its window or engine surface and marks the
    // control modified; ShowZMajorGrid, ShowZMinorGrid and FixedAspectRatio
    // only store the member. DISP_E_MEMBERNOTFOUND for an unknown dispid.
    // The annotation collections (Markers, Regions, Labels) are read-only:
    // a put fails with kErrorSetNotSupported and its text as error info.
    HRESULT GetProperty(DISPID id, Variant* value);
    Variant GetProperty(DISPID id);  // empty when the get fails
    HRESULT PutProperty(DISPID id, const Variant& value);
    static constexpr HRESULT kErrorSetNotSupported = MakeHResult(0x800A017F);
    static constexpr const char* kTextSetNotSupported = "Property is read-only.";
    // The Engine property (GraphEngine to the type library): the name of the
    // engine in use. Setting it looks the name up among the listed engines,
    // makes it the engine of this and every later control, and re-creates
    // the engine of a created control.
    std::string GetGraphEngine() const { return EngineName(); }
    void SetGraphEngine(const std::string& name);
    // Releases the engine and creates it again from the "Engine" setting,
    // then resends palette, graph objects, axes and camera. Without an engine
    // afterwards (the user cancelled the choice) the control shows no plot.
    void RecreateEngine();
    // The InfoFont property: the info window's face name.
    std::string GetInfoFont() const { return settings_.info.font.face; }
    void SetInfoFont(const std::string& face);
    // The XLabel/YLabel/ZLabel properties: the text the axis shows.
    std::string GetAxisLabel(AxisId axis) const;
    void SetAxisLabel(AxisId axis, const std::string& text);
    bool IsModified() const { return modified_; }


    // ---- files, help, resampling and display changes ----
    // (CUI_VexplotCtrlFiles.cpp, CUI_VexplotCtrlHelp.cpp, CUI_VexplotCtrlDisplay.cpp)
    // What the about box shows.
    struct AboutInfo {
        std::string name;       // "Vexplot"
        std::string version;    // the build's version, "0.1.0"
        std::string engine;     // the engine in use ("OpenGL"), empty without one
        std::string renderer;   // the engine's renderer string, empty when unknown
        std::string settings;   // where the settings store lives
    };
    AboutInfo About();
    // The range the "External Resampling" command hands to the host: the
    // active graph object's visible (zoomed) range, in data units. Nothing
    // without a graph object.
    std::optional<DataRect> ResampleRange();
    // The Load/Save Data commands' parts, for hosts that name the file
    // themselves. SaveDataFile writes the active graph object's data as a
    // ".3do" file, replacing `path` only once the whole file is written.
    // False with the reason in `error` (may be null).
    bool SaveDataFile(const std::string& path, std::string* error);
    // A palette file into the control's palette; a file that is not a
    // palette file leaves the palette as it was. False with the reason.
    bool LoadPaletteFile(const std::string& path, std::string* error);
    bool SavePaletteFile(const std::string& path, std::string* error);
    // The display mode the control last saw (see OnDisplayChange).
    const ScreenMode& LastScreenMode() const { return display_; }

private:
    void AddFileCommands();
    void AddHelpCommands();
    void LoadPlotCommand();
    void SavePlotCommand();
    void LoadDataCommand();
    void SaveDataCommand();
    void LoadPaletteCommand();
    void SavePaletteCommand();
    void ExternalResamplingCommand();
    void KeyboardMapCommand();
    // The site's file dialog for `request`; empty when cancelled or headless
    // without an answer.
    std::optional<std::string> AskForFile(bool save, const char* title, const char* filter, const char* extension);
    // Runs `operation`, collecting the texts of the Error events it raises;
    // shows them to the user in one message box when `operation` failed.
    void ReportToUser(const std::function<bool(std::string* error)>& operation);
    // IDisplayChangeListener: re-creates the engine when depth or size
    // differ from the last values seen, else does nothing.
    void OnDisplayChange(const ScreenMode& mode) override;
    void RegisterForDisplayChanges();
    void UnregisterFromDisplayChanges();
    ScreenMode display_{};
    bool displayRegistered_ = false;
    std::vector<std::string>* collectedErrors_ = nullptr;

public:
    // ---- annotations (CUI_VexplotCtrlAnnotations.cpp) ----
    // The control's labels, markers, regions and tracers, in Tab order, with
    // the selected one; never null (the list outlives Destroy, emptied).
    // Adding, moving and deleting go through AnnotationActions with the
    // control as host, so tools, scripts and dialogs act alike.
    CGD_AnnotationList* GetAnnotations() override { return annotations_.get(); }
    // Runs a dialog through the site (kAnswerCancel without one).
    int32_t RunDialog(IDialogLogic& dialog) override;
    // The collection of the Markers, Regions or Labels property: made on
    // first use (the automation layer defines it, CoAnnotationCollection.cpp)
    // and kept for the control's life; every call hands out the same one.
    ComPtr<IDispatch> AnnotationCollection(AnnotationKind kind);
    // The top annotation under client pixel (x, y) of the current view.
    CGD_Annotation* AnnotationAt(int32_t x, int32_t y);

    // ---- older-interface methods (CUI_VexplotCtrlLegacy.cpp) ----
    // The _DVexplotEx methods on axes, palette, files and tool tips
    // (CUI_VexplotCtrlMethods.cpp):
    int32_t GetShowXAxis();  // the axis object's "shown" flag; 0 before Create
    int32_t GetShowYAxis();
    int32_t IsShowPalette();  // the colour bar axis's "shown" flag
    void ShowPalette(int32_t flag);
    // Loads a palette file (see CGD_Palette::LoadFile) and hands its colours
    // to the engine; the name is remembered even when the file is unreadable.
    void SetPaletteFile(const std::string& file);
    std::string GetPaletteFile() const { return palette_.GetFileName(); }
    // Stores the name and exports the current view to that file at once
    // (an Enhanced Metafile unless the extension names another format, see
    // ExportView); a failure is reported through FireError.
    void SetMetaFileName(const std::string& file);
    const std::string& GetMetaFileName() const { return metaFileName_; }
    // Whether the data-cell tool tip text comes from the host through the
    // DataCellMouseOver event; kept by the active graph object.
    void EnableCustomDataCellToolTip(int32_t show);
    // Prints the current view on the default printer without a dialog;
    // no printer, or one that fails, is reported through FireError.
    void Print();
    // Shows the about box (AboutLogic) through the site.
    void AboutBox();
    // DataCellMouseOver (dispid 3, _DVexplotExEvents only): the fifth,
    // by-reference argument carries `text` to the sinks and whatever the
    // host wrote into it back to `text` (may be null: nothing comes back).
    void FireDataCellMouseOver(double x, double y, double z, bool select, std::string* text);

    // _DVexplot, the older interface. Getters without an active graph object
    // (or before Create) answer 0 and setters do nothing.
    int32_t GetResolution();  // 2 for low resolution, else 1
    void SetResolution(int32_t resolution);
    // Tick counts of axis X, Y or Z; the setters take 1 to 10 only.
    int16_t GetTickmarks(AxisId axis, bool major) const;
    void SetTickmarks(AxisId axis, bool major, int16_t count);
    // Major plus minor ticks; the setter gives each half of `count`.
    int32_t GetNumGridLines(AxisId axis) const;
    void SetNumGridLines(AxisId axis, int32_t count);
    uint32_t GetBackColor() const { return settings_.backgroundColor; }
    void SetBackColor(uint32_t color);
    bool GetShowDataTip() const { return settings_.showToolTips; }
    void SetShowDataTip(bool show);
    // The number colour of the X axis; the setter gives it to X, Y and Z.
    uint32_t GetAxisColor() const { return settings_.axes[0].numberColor; }
    void SetAxisColor(uint32_t color);
    bool GetShowAxis() const { return settings_.axesShown; }
    void SetShowAxis(bool show);
    bool GetShowGrid() const { return settings_.gridFlag; }
    void SetShowGrid(bool show) { settings_.gridFlag = show; }  // reaches the view at the next engine creation
    bool GetShowCursor() const { return showCursor_; }
    void SetShowCursor(bool show);
    bool GetDataSelectEnable() const { return settings_.dataSelectEnable; }
    void SetDataSelectEnable(bool enable) { settings_.dataSelectEnable = enable; }
    int32_t GetPaletteId() const { return palette_.GetPaletteId(); }
    void SetPaletteId(int32_t id);
    bool GetUseColorPalette() const { return palette_.GetUseColorPalette(); }
    void SetUseColorPalette(bool useColor);
    // Stretch of an axis's data units in the 3-D scene (1 = natural).
    double GetAxisScale(AxisId axis) const;
    void SetAxisScale(AxisId axis, double factor);
    // The active graph object's shown part of the grid (columns run along X).
    int32_t GetColumnStart() const;
    int32_t GetRowStart() const;
    int32_t GetNumColumns() const;
    int32_t GetNumRows() const;
    std::string GetAxisFontName() const;  // the X axis's label font face
    bool GetShowPaletteLabels();
    void SetShowPaletteLabels(bool show);
    // The active graph object's value extent (0 without one).
    double GetPaletteMinVal();
    double GetPaletteMaxVal();
    double GetZMinClamp();
    double GetZMaxClamp();
    int32_t GetCamViewType() { return viewMode_ == 1 ? 0 : 2; }  // enumViewTypes: View3D, else ViewXY
    void SetCamViewType(int32_t type) { SetViewMode(type == 0 ? 1 : 0); }
    // A member of the older interface that was never implemented: calling it
    // raises the Error event 0x800A0005 and answers `value` (`result` is
    // VT_EMPTY for setters, which take one argument of any type).
    struct UnimplementedMember {
        DISPID id;
        const char* name;
        VARTYPE result;
        double value;
    };
    static const std::vector<UnimplementedMember>& UnimplementedMembers();
    Variant CallUnimplemented(const UnimplementedMember& member);

    // ---- control state (CUI_VexplotCtrlState.cpp) ----
    // Saved state and plot files. A whole plot (".vxg") and a control's
    // saved state are one byte stream, written and read by ControlSerializer.
    // The file flag is 0 when the control is constructed; only SaveSerialize
    // sets it to 1 and nothing clears it. While it is 0 the stream holds the
    // framework header alone, in both directions and on every path: hosts
    // have always seen this asymmetry, so it is kept.
    //
    // SaveSerialize replaces `path` with the whole stream (graph objects
    // included); a failure never leaves a half-written file in its place.
    // Both answer 0 when the file cannot be opened (nothing reported), else
    // 1; a stream that is not a valid serialization, or a device failure
    // while it is read or written, is reported through FireError and
    // answers 0.
    int32_t LoadSerialize(const std::string& path);
    int32_t SaveSerialize(const std::string& path);
    // `sourceType` 1: `source` is a key path below HKEY_CURRENT_USER holding
    // "ControlStateSize" and "ControlState", carried through "serialize.tmp"
    // in the current directory (left in place); 2: a file, as
    // Load/SaveSerialize. Any other type, or an empty source, does nothing.
    // Graph objects are neither saved nor loaded here, and a load never
    // changes the control's rectangle in its host.
    void LoadControlState(const std::string& source, int16_t sourceType);
    void SaveControlState(const std::string& source, int16_t sourceType);
    // C++ hosts: reads a whole plot file whatever the file flag (a fresh
    // control's LoadSerialize reads the header alone). Every failure,
    // including a file that cannot be opened, is reported through FireError;
    // false then.
    bool OpenPlotFile(const std::string& path);
    int32_t FileFlag() const { return fileFlag_; }
    // How the last registry load or save ended: 0, or the step that failed
    // (1 key, 2 size value, 3 memory, 4 state value, 5 temporary file).
    // Never reported to the host.
    int32_t LastStateFailure() const { return stateFailure_; }

    // ---- export, clipboard and printing (CUI_VexplotCtrlExport.cpp) ----
    // Largest picture side an export accepts, in pixels.
    static constexpr int32_t kMaxExportSide = 16384;
    // Writes the current view to `path` in the format its extension names:
    // ".png" and ".bmp" rendered at width x height pixels (in tiles where
    // that exceeds what the device renders at once), ".svg", ".pdf" and
    // ".emf" drawn as vectors for a picture of that size. A width or height
    // of 0 takes the view's. Any other extension is written as `fallback`
    // (".emf" for the metafile name; empty refuses it). The file is replaced
    // only when the whole picture was written. Returns an empty string on
    // success, else what went wrong.
    std::string ExportView(const std::string& path, int32_t width = 0, int32_t height = 0,
                           const std::string& fallback = "");
    // The current view (3-D or flat) as a drawing of width x height
    // pixels; false with `error` set when there is none.
    bool BuildExportScene(int32_t width, int32_t height, ExportScene& scene, std::string* error);
    // The current view rendered at width x height (1 to kMaxExportSide).
    bool RenderView(int32_t width, int32_t height, std::vector<uint32_t>& pixels, std::string* error);
    // Runs `draw` with the annotations placed for a picture of width x
    // height. The flat view's are placed in its client pixels, so for a
    // picture of another size they are placed again for that size, and for
    // the window afterwards; the 3-D view's follow their data points at any
    // size.
    void AtPictureSize(int32_t width, int32_t height, const std::function<void()>& draw);

    // ---- interaction tools and scripted input (CUI_VexplotCtrlTools.cpp) ----
    // Input as if the user gave it, for hosts that test their programs and
    // for batch use: mouse events at view-window pixels (device pixels of
    // the view shown) and keys by virtual-key code (vk::...), through the
    // same path the view window's input takes.
    void MouseMove(int32_t x, int32_t y);
    void MouseDown(int32_t x, int32_t y);
    void MouseUp(int32_t x, int32_t y);
    void DoubleClick(int32_t x, int32_t y);
    void MouseLeave();
    void KeyPress(int32_t key);
    // The active tool's command (cmd::kSelect ... cmd::kRegion), and the tool.
    int32_t ActiveToolCommand() const;
    CTool* ActiveTool() const { return tool_.get(); }
    // The info window's lines as shown in order (hidden sections left
    // out), and the status bar's text.
    std::vector<std::string> InfoLines() const;
    std::string StatusText() const;
    // The title bar's menu of tool icons as it stands now.
    MenuModel ToolMenu();
    // ---- palette editor and data editor (CUI_VexplotCtrlDialogs.cpp) ----
    // Runs the palette editor "Colors" over the control's palette: the plot
    // follows every change at once; Cancel puts the palette back as it was.
    // Returns the dialog's answer (kAnswerOk or kAnswerCancel).
    int32_t EditPalette();
    // Opens the data editor of `graph` (null: the active graph object), or
    // brings its open editor forward. False when there is no graph object
    // with data or the site has no window for the editor.
    bool OpenDataEditor(CGD_GraphObject* graph = nullptr);
    // Replaces the palette's colours by `colors` and sends them to the engine.
    void TakePaletteColors(std::span<const uint32_t> colors);

    // IDispatch (CUI_VexplotCtrlDispatch.cpp): the table of DispatchTable::Vexplot().
    HRESULT GetTypeInfoCount(uint32_t* count) override;
    HRESULT GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) override;
    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

    // ---- property sheet and full-control view (CUI_VexplotCtrlPropertySheet.cpp) ----
    // "Control P&roperties": the property sheet over this control's dispatch
    // interface, run through the site. kAnswerOk when the user accepted it
    // (its changes are then applied), kAnswerCancel otherwise.
    int32_t ShowPropertySheet();
    // "Maximize &View": the full-control view hides the title and status
    // bars (the pop-up menu stays on Ctrl+F10 and the menu key); leaving it
    // brings them back as they were. Entering it first shows the message
    // about the menu, unless the user asked not to see it again.
    void SetFullControlView(bool on);
    bool FullControlView() const { return fullView_.has_value(); }
    // Hosts hide their own menus and bars along with the control's: the
    // listener hears every switch, whoever asked for it (menu, Ctrl+F11, DoCommand).
    void OnFullControlViewChange(std::function<void(bool on)> listener) {
        fullViewListeners_.push_back(std::move(listener));
    }

    // IConnectionPointContainer:
    HRESULT GetConnectionPointCount(uint32_t* count) override { return points_.Count(count); }
    HRESULT FindConnectionPoint(const IID& iid, IConnectionPoint** out) override { return points_.Find(iid, out); }

private:
    ~CUI_VexplotCtrl() override;

    // IWindowHandler:
    void OnPaint(WindowHandle window, const ImageBuffer& target) override;
    void OnSize(WindowHandle window, int32_t width, int32_t height) override;
    void OnTimer(WindowHandle, uint32_t) override {}
    void OnMouse(WindowHandle window, const MouseEvent& event) override;
    void OnKey(WindowHandle window, const KeyEvent& event) override;

    // input (CUI_VexplotCtrlInput.cpp):
    // Each group of commands adds its entries to commands_ once, at
    // construction.
    void AddViewCommands();
    void AddExportCommands();
    // The export commands' steps (CUI_VexplotCtrlExport.cpp): each reports
    // a failure to the user through the site's message box.
    void ExportThroughChooser(bool metafile);
    void CopyViewToClipboard();
    void PrintView(bool askUser, std::string* error);
    // The current view's export interface; null without one.
    ComPtr<IGraphSceneExport> SceneExport();
    void AddPaletteCommands();

    // ---- private: interaction tools (CUI_VexplotCtrlTools.cpp) ----
    class ToolContext;
    struct ToolContextDeleter {
        void operator()(ToolContext* context) const;
    };
    void AddToolCommands();
    // Makes the tool of `command` the active one.
    void ChooseTool(int32_t command);
    void CreateToolsButton();
    // Sets up the position read-out and the default tool once the windows
    // and the engine exist; TearDownTools undoes it before they go.
    void SetUpTools();
    void TearDownTools();
    // Mouse input of a view window, given to the active tool.
    void ToolMouse(const MouseEvent& event);
    void UpdateScaleEntries();
    std::unique_ptr<ToolContext, ToolContextDeleter> toolContext_;
    std::unique_ptr<CTool> tool_;
    std::unique_ptr<CToolsCtrl> toolsButton_;
    std::unique_ptr<ToolIconMenu> toolMenu_;
    uint32_t positionSection_ = 0;
    bool showMesh_ = false;

    // auxiliary windows (CUI_VexplotCtrlWindows.cpp):
    void CreateTitleButtons();
    void CreateLegend();
    void CreateInfoWindow();
    void ApplyInfoSettings();
    void CreateNavigator();
    void DestroyAuxiliaryWindows();
    void LayOutAuxiliaryWindows(const PixelRect& view);
    void LayOutDockedInfo();
    void PopUpLegend();
    void NavigatorMove(NavigatorPad::Zone zone, bool secondary);

    // ILegendOwner:
    CGD_GraphObjectList* LegendGraphObjects() override;
    void MakeGraphObjectActive(int32_t index) override;
    void RedrawPlot() override;
    int32_t LegendViewMode() override { return viewMode_; }
    void SetTitleText(const std::string& text) override;
    const CGD_Palette* PreviewPalette() override { return &palette_; }
    // The data editor and the property sheet (CUI_VexplotCtrlDialogs.cpp).
    bool CanEditData(const CGD_GraphObject* graph) override;
    bool CanEditProperties(const CGD_GraphObject* graph) override;
    void EditGraphData(CGD_GraphObject* graph) override { OpenDataEditor(graph); }
    bool EditGraphProperties(CGD_GraphObject* graph) override;
    void DeleteGraphObject(CGD_GraphObject* graph) override;

    // creation steps:
    WindowHandle MakeWindow(WindowRole role, const PixelRect& rect);
    void CreateChildWindows();
    void CreateEngine();
    void ShowInitialWindows();
    void DestroyWindows();

    // helpers:
    CGD_GraphObject* Active() const { return graphs_ ? graphs_->Active() : nullptr; }
    bool HasWindow(WindowRole role) const { return Window(role) != 0; }
    void LayoutAndRedraw();
    void LayoutAndRedrawIn3D();
    void ShowGraph(CGD_GraphObject& graph);
    template <class Change>
    void ChangeDrawing(Change change);
    bool In1DView() const;
    bool Guarded(const std::function<void()>& action);
    HRESULT DataCall(const std::function<void()>& call);
    void FireEvent(DISPID dispid, std::vector<Variant> args, bool bothInterfaces);

    // axes (CUI_VexplotCtrlAxes.cpp):
    void ApplyAxis(AxisId id);
    void ApplyAllAxes();
    void TakeDataLabel(AxisId id, const char* text);
    CGD_Axis::Appearance AppearanceOf(AxisId id) const;
    bool RangeOf(AxisId id, double* min, double* max) const;

    // camera (CUI_VexplotCtrlCamera.cpp):
    double CameraComponent(bool center, int component);
    void SetCameraComponent(bool center, int component, double value);

    // ---- private: properties ----
    HRESULT GetMethodProperty(const struct PropertyRow& row, Variant* value);
    HRESULT PutMethodProperty(const struct PropertyRow& row, const Variant& value);
    void WriteSetting(const struct PropertyRow& row);
    void ApplyProperty(const struct PropertyRow& row);
    // The Quality3D flag to the 3-D view: full detail also while moving.
    void ApplyQuality3D();
    void ResendGraphObjects();

    // ---- private: property sheet and full-control view ----
    void AddDialogCommands();
    std::optional<WindowVisibility> fullView_;  // the bars before the full-control view
    std::vector<std::function<void(bool)>> fullViewListeners_;

    // ---- private: older-interface methods ----
    void ReportNotImplemented();
    // Sets a property of the current interface through PutProperty (store
    // the member, write the setting, run the change handler).
    void PutForwarded(DISPID property, const Variant& value);
    std::string metaFileName_;
    bool showCursor_ = true;
    std::array<double, 3> axisScale_{1.0, 1.0, 1.0};

    // ---- private: control state ----
    friend class ControlSerializer;
    bool LoadStateFile(const std::string& path, bool whole);
    bool SaveStateFile(const std::string& path);
    int32_t LoadStateFromRegistry(const std::string& keyPath);
    int32_t SaveStateToRegistry(const std::string& keyPath);
    // Reports a failed load or save of `where` through FireError.
    void ReportStateFailure(const std::string& where, bool loading, const std::exception& error);
    int32_t fileFlag_ = 0;
    int32_t stateFailure_ = 0;

    // ---- private: hardening (values a host or a file hands in) ----
    // True for a finite camera value; otherwise raises the Error event.
    bool AcceptCameraValue(double value);
    // Whether `path` names a plot file (".vxg", any case).
    static bool IsPlotFileName(const std::string& path);
    std::string lastErrorText_;  // the latest Error event's text

    ControlSettings settings_;
    MessageSink* sink_;
    std::shared_ptr<SettingsStore> store_;
    IControlSite* site_ = nullptr;  // borrowed between Create and Destroy
    std::array<WindowHandle, 12> windows_{};
    std::unique_ptr<EngineHost> engine_;
    std::unique_ptr<CGD_GraphObjectList> graphs_;
    std::array<std::unique_ptr<CGD_Axis>, 4> axes_;  // X, Y, Z, Palette
    std::array<std::string, 3> labels_;              // the axes' label texts now shown
    CGD_Palette palette_;
    ConnectionPointList points_;
    CommandRouter commands_;
    std::vector<ErrorListener> errorListeners_;
    std::optional<WindowVisibility> visibility_;
    PixelRect rect_{};
    WindowHandle currentView_ = 0;
    int32_t viewMode_ = 1;
    int32_t axisMargin_ = 60;
    int32_t nextLayer_ = 0;
    int waitDepth_ = 0;
    bool redrawPending_ = false;
    bool stateOperation_ = true;
    bool modified_ = false;
    bool moving_ = false;
    bool surfaceViewAvailable_ = true;
    bool navigatorFlag_ = true;
    // annotations (CUI_VexplotCtrlAnnotations.cpp):
    // Clears the current surface's overlay and lets every annotation draw.
    void DrawAnnotations();
    // Binds the annotations to the engine surfaces now held (none: release).
    void AttachAnnotations();
    std::unique_ptr<CGD_AnnotationList> annotations_;
    std::array<ComPtr<IDispatch>, 3> collections_;  // markers, regions, labels
    std::unique_ptr<CToolsCtrl> menuButton_;
    std::unique_ptr<CToolsCtrl> legendButton_;
    std::unique_ptr<CUIW_InfoWnd> info_;
    std::unique_ptr<CUIW_LegendWindow> legend_;
    std::unique_ptr<NavigatorPad> navigator_;
    PixelRect viewArea_{};
};

}  // namespace vexplot
