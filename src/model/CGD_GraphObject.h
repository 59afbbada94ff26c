#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "com/SafeArray.h"
#include "dataobject/IGraphData.h"
#include "dataobject/IGraphDataAccess.h"
#include "engine/IGraphDevice2D.h"
#include "engine/IGraphEngine.h"
#include "engine/IGraphView3D.h"

namespace vexplot {

class CArchive;
class IViewHost;

// One plotted data set: binds a data object (IGraphData, IGraphDataAccess
// and its IGraphDataEvents notifications) to the control, keeps the part of
// the grid that is shown and a decimated preview of the grid, and pushes
// grid, scales and labels to the engine's two surfaces and to the owner.
//
// Failures of the data object or the engine raise ComError with the
// HRESULT and the interface that gave it; a missing data-object interface
// raises E_POINTER. The owner (the control) catches them at its automation
// boundary. Notifications cannot raise: their failures go to the owner's
// FireError.
//
// Only the active graph object of the owner's list reacts to notifications.
// Created empty; bound by CreateFromFile or Attach; binding again first
// unbinds. Not copyable or movable: the notification sink points at it.
class CGD_GraphObject {
public:
    // The four display flags, in the order the plot-file record keeps them.
    struct DisplayFlags {
        bool visible = true;           // the legend's check mark
        bool data = false;             // handed to the engine with the grid
        bool usePreview = false;       // GetRows serves rows of the preview grid
        bool suppressDisplay = false;  // keeps the 3-D view from drawing the grid
    };

    // Grid sizes, the shown part and the preview, as the record keeps them.
    struct Geometry {
        int32_t xCount = 0;  // lengths of the X and Y scales
        int32_t yCount = 0;
        int32_t shownXCount = 0;
        int32_t shownYCount = 0;
        int32_t firstShownX = 0;
        int32_t firstShownY = 0;
        int32_t previewXCount = 0;
        int32_t previewYCount = 0;
        int32_t previewXStep = 0;
        int32_t previewYStep = 0;
    };

    // First and last element of a scale (not its minimum and maximum).
    struct ScaleEnds {
        double first = 0.0;
        double last = 0.0;
    };

    // How the grid is drawn: chosen through the control's methods, sent to
    // the engine by SendDrawingSettings, kept in the plot-file record.
    struct DrawingSettings {
        GraphStyle style = GraphStyle::Surface;  // the 3-D view's drawing style
        bool image = true;                       // the 2-D device shows the palette image
        ShadingMode shading = ShadingMode::Flat;
        bool lowResolution = false;
        // the one-dimensional section:
        int32_t plotStyle = 2;  // enumPlotStyle: line
        PointStyle pointStyle = PointStyle::None;
        uint32_t curveColor = 0xFFFFFF;  // 0x00BBGGRR
        double secantPosition = 50.0;    // percent of the cut axis's range
        friend bool operator==(const DrawingSettings&, const DrawingSettings&) = default;
    };

    // What the data editor window is opened with.
    struct DataEditorContents {
        SafeArray grid;
        SafeArray xScale;
        SafeArray yScale;
        double zMin = 0.0;
        double zMax = 0.0;
        std::string title;  // DataEditorTitle of the data set's name and sizes
    };

    // The open data editor window, owned by its graph object.
    class DataEditor {
    public:
        virtual ~DataEditor() = default;
        // False once the user has closed the window.
        virtual bool WindowExists() const = 0;
        // Closes and destroys the window; the object is deleted next.
        virtual void Close() = 0;
    };
    using DataEditorFactory = std::function<std::unique_ptr<DataEditor>(const DataEditorContents&)>;

    CGD_GraphObject();
    ~CGD_GraphObject();
    CGD_GraphObject(const CGD_GraphObject&) = delete;
    CGD_GraphObject& operator=(const CGD_GraphObject&) = delete;

    // binding:
    // Creates a data object (any class context), runs it and loads
    // `fileName` into it through IPersistFile, then binds it as Attach does.
    // A data object without IPersistFile raises E_POINTER. Returns whether
    // the notification sink could be advised.
    bool CreateFromFile(const std::string& fileName, IViewHost* owner, bool keepFullRange);
    // Binds a data object handed in by the host: takes its IGraphData and
    // IGraphDataAccess (either may be missing; a missing IGraphData then
    // raises E_POINTER when the sizes are read), gets the owner's engine and
    // contrast colour, reads the sizes, builds the preview of a grid larger
    // than 50 in either direction, sets the shown part (all of the grid when
    // `keepFullRange`, else from the first to the last scale element) and
    // advises the sink. Returns whether the sink could be advised.
    bool Attach(IUnknown* dataObject, IViewHost* owner, bool keepFullRange);
    // Unadvises the sink and releases both data-object interfaces, the
    // preview and the rows' grid. Safe to call when unbound.
    void Detach();
    // Takes a new engine root (null: none): tells the 3-D view it held to
    // release its grid (slot 18), drops both surfaces, and obtains the 2-D
    // device (root slot 7) and the 3-D view (root slot 8) from `engine`.
    void SetEngine(IGraphEngine* engine);

    // grid access:
    ScaleEnds GetXRange() const;
    ScaleEnds GetYRange() const;
    // Maps the data range [x1, x2] x [y1, y2] to the nearest grid indices
    // (access slot 13) and makes that the shown part. Counts may come out
    // below 1 when x2 maps before x1; they are kept as they are.
    void SetShownRange(double x1, double x2, double y1, double y2);
    // Replaces the preview grid by the grid sampled every `factor` cells
    // (at least 10 samples per direction where the grid has them). A factor
    // below 1 or an empty grid leaves no preview.
    void BuildPreview(int32_t factor);
    // Pointers to the first value (column y0) of the X rows x0, x0 + 1, ...
    // of the full grid, or, with usePreview set and a preview present, of the
    // preview rows that sample them (nx / X step, rounded to the nearest, and
    // no more than the preview has). nx is cut to X count - x0. Empty when nx
    // or ny is below 1 or the start lies outside the grid or the preview. The values belong to this object and stay valid until the
    // next GetRows, BuildPreview, data change or Detach.
    std::vector<const double*> GetRows(int32_t x0, int32_t y0, int32_t nx, int32_t ny);
    double GetValue(int32_t row, int32_t column) const;  // IGraphData slot 24
    void SetValue(int32_t row, int32_t column, double value);  // slot 25
    // Lowest and highest finite value (access slots 3 and 4).
    double ZMinClamp() const;
    // False when the grid holds no finite value (all NaN or infinite).
    bool HasZExtent() const;
    double ZMaxClamp() const;
    // The data set's name (IGraphData slot 22).
    std::string Name() const;

    // engine:
    // Pushes grid, extents and data flag to the 2-D device (slot 16) and the
    // 3-D view (slot 17), shows or hides the data in the 3-D view, lets the
    // owner redraw, and passes the axis labels to the owner.
    void UpdateEngine();
    // The drawing settings and the section to the surfaces: the 3-D view
    // selects this object's layer and takes style, shading and resolution;
    // the 2-D device takes shading, section and image flag. Does nothing
    // until the owner has given the object a layer (SetLayer); UpdateEngine
    // runs it first.
    void SendDrawingSettings();
    // The 3-D view's drawing style of a graph mode: 0 surface, 1 bar chart,
    // 2 points (any other mode: surface).
    static GraphStyle StyleOfGraphMode(int32_t mode);
    // When the flag changes on the active object, the device forgets its
    // data (slot 17) and UpdateEngine runs.
    void SetDataFlag(bool flag);

    // notifications (the sink calls these; only the active object acts):
    void DataChanged();
    void TicksChanged(int32_t which);
    void LabelsChanged();

    // data editor:
    // Opens the data editor with the grid, the scales, the Z extent and the
    // title; an editor whose window still exists is kept and returned.
    DataEditor* OpenDataEditor(const DataEditorFactory& create);
    // "<name> -  <yCount> x <xCount>" (two blanks after the dash).
    static std::string DataEditorTitle(std::string_view name, int32_t yCount, int32_t xCount);

    // getters:
    bool IsActive() const;
    const DisplayFlags& Flags() const { return flags_; }
    const Geometry& GetGeometry() const { return geometry_; }
    uint32_t ContrastColor() const { return contrastColor_; }
    int32_t OneDimensionalView() const { return oneDimensionalView_; }
    const DrawingSettings& Drawing() const { return drawing_; }
    // The 3-D view's layer of this object; -1 before the owner chose one.
    int32_t Layer() const { return layer_; }
    std::span<const double> Preview() const { return preview_; }
    IViewHost* Owner() const { return owner_; }
    IGraphData* Data() const { return data_.Get(); }
    IGraphDataAccess* Access() const { return access_.Get(); }
    IGraphDevice2D* Device() const { return device_.Get(); }
    IGraphView3D* View() const { return view_.Get(); }
    DataEditor* Editor() const { return editor_.get(); }
    // Whether the data-cell tool tip shows the host's text (DataCellMouseOver).
    bool CustomToolTip() const { return customToolTip_; }

    // setters:
    void SetVisible(bool visible) { flags_.visible = visible; }
    void SetUsePreview(bool usePreview) { flags_.usePreview = usePreview; }
    // Takes effect at the next UpdateEngine.
    void SetDisplaySuppressed(bool suppressed) { flags_.suppressDisplay = suppressed; }
    // 0 off, 1 the Y-Z plane, 2 the X-Z plane; takes effect at the next UpdateEngine.
    void SetOneDimensionalView(int32_t mode) { oneDimensionalView_ = mode; }
    // Take effect at the next SendDrawingSettings.
    void SetDrawing(const DrawingSettings& drawing) { drawing_ = drawing; }
    void SetLayer(int32_t layer) { layer_ = layer; }
    void SetCustomToolTip(bool custom) { customToolTip_ = custom; }
    // Record fields as a plot file gives them back; the data object is bound
    // separately. Drops the preview grid (BuildPreview makes it again).
    void RestoreRecord(const DisplayFlags& flags, const Geometry& geometry, uint32_t contrastColor);

    // plot-file record (GraphObjectRecord.cpp): the string "GraphObjectBegin:2";
    // the four display flags (bools); Y count, X count, shown Y count, shown
    // X count, first shown X, first shown Y, preview Y count, preview X
    // count, preview X step, preview Y step (int32 each); the contrast colour;
    // the one-dimensional view mode (int32); the drawing settings: style
    // (int32, GraphStyle), image flag (bool), shading (int32), low
    // resolution (bool), section plot style and point style (int32), curve
    // colour, section position (double); the bound data object, embedded
    // (CArchive::WriteObject: none when unbound or when it cannot save
    // itself); the string "GraphObjectEnd". Records of the first layout
    // (begin marker "GraphObjectBegin", no drawing settings) still load and
    // leave the object's drawing as it is.
    // Storing writes it. Loading is LoadRecord with the owner this object
    // already has (ComError E_POINTER when it has none).
    void Serialize(CArchive& archive);
    // Reads a record and binds its data object to `owner` with the record's
    // flags, geometry, contrast colour and view mode; the preview is made
    // again from the data, as binding makes it. A record that is malformed
    // (ArchiveError), whose numbers are impossible (negative counts, a shown
    // part outside the grid, a view mode other than 0, 1, 2) or disagree with
    // the data object's grid (ArchiveError) leaves this object as it was.
    // A record without a data object is read and checked, then returns false
    // and leaves this object as it was: there is nothing to show, and the
    // host that owns that data has to hand it again. Binding failures raise
    // ComError as Attach does.
    bool LoadRecord(CArchive& archive, IViewHost* owner);

private:
    class EventSink;

    void Bind(ComPtr<IGraphData> data, ComPtr<IGraphDataAccess> access, IViewHost* owner, bool keepFullRange);
    bool Advise();
    void ReadSizes();
    void RefreshSizes();
    void RebuildPreview();
    SafeArray ReadGrid() const;
    std::vector<const double*> PreviewRows(int32_t x0, int32_t y0, int32_t nx) const;
    void ResetDeviceData();
    void SendLabels();
    void ReportError(HRESULT code, const char* text);
    template <class Handler>
    void Guarded(Handler handler);

    IViewHost* owner_ = nullptr;  // borrowed: the owner outlives its graph objects
    ComPtr<IGraphEngine> engine_;
    ComPtr<IGraphDevice2D> device_;  // the first surface
    ComPtr<IGraphView3D> view_;      // the second surface
    Geometry geometry_;
    DisplayFlags flags_;
    int32_t oneDimensionalView_ = 0;
    DrawingSettings drawing_;
    int32_t layer_ = -1;
    bool customToolTip_ = false;
    std::unique_ptr<DataEditor> editor_;
    ComPtr<IGraphData> data_;
    ComPtr<IGraphDataAccess> access_;
    ComPtr<EventSink> sink_;
    uint32_t cookie_ = 0;
    uint32_t contrastColor_ = 0;
    std::vector<double> preview_;  // previewXCount x previewYCount, X index slower
    SafeArray rowsGrid_;           // keeps the grid GetRows points into
};

}  // namespace vexplot
