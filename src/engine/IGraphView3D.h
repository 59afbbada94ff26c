#pragma once
#include <cstdint>

#include "engine/IGraphEngine.h"

namespace vexplot {

// A camera record: x, y, z and a fourth component the engine keeps with the
// point (1 for a position, 0 for a direction). Passed whole, so that a
// caller changes one component by reading, editing and writing the record.
struct CameraVector {
    double x;
    double y;
    double z;
    double w;
};
static_assert(sizeof(CameraVector) == 32);

// Arguments of Refresh (slot 5).
inline constexpr int32_t kRefreshCheck = 0;    // revalidate the device, e.g. after a resize
inline constexpr int32_t kRefreshRebuild = 1;  // also drop cached geometry: a new grid follows
// Arguments of Update (slot 7).
inline constexpr int32_t kUpdateFull = 0;    // at rest: all the detail the pixels show (slot 53)
inline constexpr int32_t kUpdateMoving = 1;  // the view is moving: draw within the detail budget (slot 8)

// The engine's 3-D view (IGraphEngine slot 8), bound to the control's 3-D
// view window: draws the grids of the graph objects as surface, wireframe,
// bar chart, lines or points coloured through the palette, with three axes,
// grid lines and the annotations' overlay; owns the camera; projects data
// points to pixels and reports the view bounds.
//
// A graph object holds this as its second surface: it calls Refresh(1)
// (slot 5) when the 3-D view is the one on screen, sends its grid with
// slot 17 after the 2-D device's slot 16, sets slot 34 (show data) when the
// one-dimensional view or its suppression flag hides the surface, and calls
// slot 18 before it drops its surfaces for a new engine root. Annotations
// keep this interface as their "projection interface"; axes ask its slot 23
// and its view bounds (slot 25).
//
// Several graph objects share the view as layers: grid calls (slots 15 to
// 18, 27) address the current layer, which the control chooses with slot 11
// before it lets a graph object push its data; layer 0 is current at start.
//
// Calls return S_OK or a failure; out parameters are untouched on failure.
class IGraphView3D : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{AA4BC2A7-A0F4-4481-8A9A-C63E709A73D6}");

    // Binds the view to a window of the site: S_OK (0) when the device
    // could start there; any other result leaves the view unusable.
    virtual HRESULT Attach(WindowHandle window) = 0;  // slot 3
    virtual HRESULT Detach() = 0;                     // slot 4
    // kRefreshCheck or kRefreshRebuild. Any result but S_OK means the device
    // is lost: the control drops the view and continues in 2-D.
    virtual HRESULT Refresh(int32_t flags) = 0;  // slot 5
    // The window's client size in pixels.
    virtual HRESULT Resize(int32_t width, int32_t height) = 0;  // slot 6
    // Asks for the scene to be rendered again (kUpdateFull or
    // kUpdateMoving); the render happens at the next Draw, so that several
    // updates in a row cost one render.
    virtual HRESULT Update(int32_t detail) = 0;  // slot 7
    // Level of detail while moving: at most this many grid cells are drawn
    // by Update(kUpdateMoving), the grid being sampled evenly; 0 means no
    // limit.
    virtual HRESULT SetDetailBudget(uint32_t cells) = 0;  // slot 8
    // Copies the last rendered scene into the window's pixels, which the site
    // lends for the call.
    virtual HRESULT Draw(const ImageBuffer* windowPixels) = 0;  // slot 9
    // Renders the scene at the buffer's size without any window (export,
    // clipboard, printing, headless use).
    virtual HRESULT RenderToImage(const ImageBuffer* image) = 0;  // slot 10
    // Makes `layer` current, creating it empty when new.
    virtual HRESULT SelectLayer(int32_t layer) = 0;  // slot 11
    virtual HRESULT RemoveLayer(int32_t layer) = 0;  // slot 12
    virtual HRESULT SetBackgroundColor(uint32_t color) = 0;  // slot 13: 0x00BBGGRR
    virtual HRESULT SetLayerVisible(int32_t layer, bool visible) = 0;  // slot 14
    virtual HRESULT SetGraphStyle(GraphStyle style) = 0;  // slot 15: current layer
    virtual HRESULT SetShading(ShadingMode shading) = 0;  // slot 16: current layer
    // The current layer's grid, as IGraphDevice2D::SetGrid (slot 16):
    // converted during the call, no pointer kept.
    virtual HRESULT SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                            bool dataFlag) = 0;  // slot 17
    // Forgets the current layer's grid and frees what was built from it. A
    // graph object calls it before it lets go of its surfaces, so that a
    // view it no longer feeds keeps no stale surface.
    virtual HRESULT ReleaseGrid() = 0;  // slot 18
    virtual HRESULT SetAxisStyle(AxisId axis, const AxisStyle* style) = 0;  // slot 19: X, Y or Z
    // As IGraphDevice2D slot 9.
    virtual HRESULT SetAxisTicks(AxisId axis, uint32_t count, const double* values,
                                 const char* const* texts) = 0;                        // slot 20
    virtual HRESULT SetAxisLabel(AxisId axis, const char* text) = 0;                  // slot 21
    virtual HRESULT SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) = 0;  // slot 22
    // As IGraphDevice2D slot 23: 0 when tick and label texts may carry the
    // \SUP superscript markup.
    virtual int32_t QueryTextMarkup() = 0;  // slot 23
    // Projects a data point to client pixels. S_FALSE when it lies behind
    // the camera or outside the window (the outputs are still set).
    virtual HRESULT ProjectPoint(double x, double y, double z, int32_t* px, int32_t* py) = 0;  // slot 24
    // The data range visible after zoom and pan (`shown`) and the range of
    // all grids (`full`), in x and y; an axis's scale percentage is
    // 100 * shown extent / full extent.
    virtual HRESULT GetViewBounds(DataRect* shown, DataRect* full) = 0;  // slot 25
    // Zooms to a data range in x and y; null shows everything.
    virtual HRESULT SetVisibleRange(const DataRect* range) = 0;  // slot 26
    // Symbol and size of the points of GraphStyle::Points, current layer.
    virtual HRESULT SetPointStyle(PointStyle style, float sizePixels) = 0;  // slot 27
    virtual HRESULT SetLineWidth(float pixels) = 0;  // slot 28: wireframe, lines and axes
    // The annotation overlay, drawn over the scene at projected positions,
    // rebuilt by the annotations on each redraw.
    virtual HRESULT ClearOverlay() = 0;  // slot 29
    virtual HRESULT AddOverlayText(const Point3* at, const char* text, uint32_t color,
                                   const FontDescription* font) = 0;  // slot 30
    // A symbol image centred on the projected point; pixels equal to
    // `transparentColor` are not drawn.
    virtual HRESULT AddOverlayImage(const Point3* at, const ImageBuffer* image,
                                    uint32_t transparentColor) = 0;  // slot 31
    virtual HRESULT AddOverlayPolyline(uint32_t count, const Point3* points, uint32_t color,
                                       bool closed) = 0;  // slot 32
    virtual HRESULT SetAxesVisible(bool visible) = 0;  // slot 33
    // Whether the grids are drawn at all (axes and overlay stay).
    virtual HRESULT SetDataVisible(bool visible) = 0;  // slot 34
    // Draws the current layer from a grid sampled to about 1/4 of its cells.
    virtual HRESULT SetLowResolution(bool low) = 0;  // slot 35
    // Stretch of one axis's data units in the scene (1 = natural).
    virtual HRESULT SetAxisScale(AxisId axis, double factor) = 0;  // slot 36
    virtual HRESULT SetGridVisible(bool visible) = 0;  // slot 37: the grid lines of all axes
    virtual HRESULT SetLogZ(bool logarithmic) = 0;     // slot 38: Z axis and heights on a log scale
    virtual HRESULT GetCameraPosition(CameraVector* position) = 0;  // slot 39
    virtual HRESULT SetCameraPosition(CameraVector position) = 0;   // slot 40
    virtual HRESULT GetCameraCenter(CameraVector* center) = 0;      // slot 41: the point looked at
    virtual HRESULT SetCameraCenter(CameraVector center) = 0;       // slot 42
    virtual HRESULT GetAzimuth(float* degrees) = 0;                 // slot 43
    virtual HRESULT SetAzimuth(float degrees) = 0;                  // slot 44
    virtual HRESULT GetElevation(float* degrees) = 0;               // slot 45
    virtual HRESULT SetElevation(float degrees) = 0;                // slot 46
    // The scene's zoom about the camera centre (1 = the grids fill the
    // view); the control keeps it in its saved state after the camera.
    virtual HRESULT GetSceneScale(double* scale) = 0;  // slot 47
    virtual HRESULT SetSceneScale(double scale) = 0;   // slot 48
    virtual HRESULT GetDistance(float* distance) = 0;  // slot 49: camera to centre, in scene units
    virtual HRESULT SetDistance(float distance) = 0;   // slot 50
    // Back to the camera that shows all grids from the default direction.
    virtual HRESULT ResetCamera() = 0;  // slot 51
    // The data point under a client pixel: S_OK with the point, S_FALSE
    // when no grid is hit there.
    virtual HRESULT Pick(int32_t px, int32_t py, Point3* point) = 0;  // slot 52
    // What a view at rest (Update(kUpdateFull), RenderToImage) draws of a
    // grid whose cells are smaller than the pixels they cover. By default
    // (false) every cell up to one cell per pixel, and beyond that the
    // coarser level with one cell per pixel whose cells keep their blocks'
    // highest or lowest value, so no peak or pit is lost: the picture holds
    // all the detail the pixels can show. True draws every cell whatever
    // its size on screen (for comparisons; it costs far more time).
    virtual HRESULT SetEveryCell(bool everyCell) = 0;  // slot 53

    // The annotation overlay, continued. With depth testing on (the
    // default), overlay lines are hidden where the surface is in front of
    // them, and symbols, images and texts are left out when the surface
    // hides their anchor point; off, the overlay is drawn over everything.
    virtual HRESULT SetOverlayDepthTest(bool enabled) = 0;  // slot 54
    // A symbol of `size` logical pixels centred on the projected point.
    virtual HRESULT AddOverlaySymbol(const Point3* at, PointStyle symbol, float size,
                                     uint32_t color) = 0;  // slot 55
    // `text` in a box whose top-left corner is at the projected point plus
    // (dx, dy) logical pixels; null font: the view's default.
    virtual HRESULT AddOverlayTextBox(const Point3* at, int32_t dx, int32_t dy, const char* text,
                                      const FontDescription* font, const OverlayTextBox* style) = 0;  // slot 56
    // As IGraphDevice2D slot 33.
    virtual HRESULT MeasureText(const char* text, const FontDescription* font, int32_t* width,
                                int32_t* height) = 0;  // slot 57
    // A polyline as slot 32, `width` logical pixels wide and stroked.
    virtual HRESULT AddOverlayStroke(uint32_t count, const Point3* points, uint32_t color, OverlayStroke stroke,
                                     float width, bool closed) = 0;  // slot 58
    // Draws the grid lines of surfaces over them (the menu's "Mesh").
    virtual HRESULT SetMeshVisible(bool visible) = 0;  // slot 59

protected:
    ~IGraphView3D() = default;
};

}  // namespace vexplot
