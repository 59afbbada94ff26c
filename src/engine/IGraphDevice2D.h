#pragma once
#include <cstdint>

#include "engine/IGraphEngine.h"

namespace vexplot {

// The one-dimensional section of the flat view: a curve through the grid
// along a plane, drawn instead of the image while mode is not 0.
struct SectionSettings {
    int32_t mode;         // 0 off, 1 the Y-Z plane (cut at an X position), 2 the X-Z plane (cut at a Y position)
    int32_t plotStyle;    // 0 none, 1 points, 2 line, 3 drop lines (enumPlotStyle)
    int32_t pointStyle;   // PointStyle
    uint32_t curveColor;  // 0x00BBGGRR
    double position;      // where the plane cuts, in percent (0..100) of the cut axis's data range
};
static_assert(sizeof(SectionSettings) == 24);

// The engine's 2-D device (IGraphEngine slot 7), bound to the control's 2-D
// view window: draws the active grid as a flat palette image with X and Y
// axes and a colour bar with its palette axis, or the one-dimensional
// section; answers the flat view's range and mapping queries.
//
// A graph object holds this as its first surface. It sends its grid here
// with slot 16 (before the 3-D view's slot 17), and calls slot 17 with no
// arguments whenever its data are about to be re-sent (data flag changed,
// data or scales changed): the device keeps derived state (the palette
// image, the section, the colour bar's range) that must not outlive the grid
// it came from. Annotations keep this interface as their "view interface".
//
// Calls return S_OK or a failure; out parameters are untouched on failure.
class IGraphDevice2D : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{11FA787A-07BE-413B-932A-D68B72E25BFA}");

    // Binds the device to a window of the site; a second Attach rebinds.
    virtual HRESULT Attach(WindowHandle window) = 0;  // slot 3
    virtual HRESULT Detach() = 0;                     // slot 4
    // The window's client size in pixels; the layout below is recomputed.
    virtual HRESULT Resize(int32_t width, int32_t height) = 0;  // slot 5
    // Renders the flat view into the window's pixels, which the site lends
    // for the call; the buffer's size wins over the last Resize.
    virtual HRESULT Draw(const ImageBuffer* windowPixels) = 0;  // slot 6
    // Renders the flat view at the buffer's size without touching the
    // window: export, clipboard, printing and headless use.
    virtual HRESULT RenderToImage(const ImageBuffer* image) = 0;  // slot 7
    virtual HRESULT SetAxisStyle(AxisId axis, const AxisStyle* style) = 0;  // slot 8: X, Y or Palette
    // Major tick positions in data units (Z units for the palette axis) and
    // their texts, UTF-8; texts may hold the \SUP markup (see slot 23).
    virtual HRESULT SetAxisTicks(AxisId axis, uint32_t count, const double* values,
                                 const char* const* texts) = 0;              // slot 9
    virtual HRESULT SetAxisLabel(AxisId axis, const char* text) = 0;        // slot 10
    virtual HRESULT SetAxisFont(AxisId axis, AxisText text, const FontDescription* font) = 0;  // slot 11
    // Mirrors the image: 0 none, 1 X, 2 Y, 3 both (enumImageOrientation).
    virtual HRESULT SetImageOrientation(int32_t orientation) = 0;  // slot 12
    virtual HRESULT SetColorBarVisible(bool visible) = 0;          // slot 13
    // The part of the data range shown (zoom and pan); null shows all of it.
    virtual HRESULT SetVisibleRange(const DataRect* range) = 0;    // slot 14
    virtual HRESULT SetBackgroundColor(uint32_t color) = 0;        // slot 15: 0x00BBGGRR
    // The grid to show: `values` holds xCount * yCount doubles, value (ix, iy)
    // at ix * yCount + iy, NaN for "no value". The device converts it to its
    // own form during the call and keeps no pointer. `dataFlag` is the graph
    // object's data flag, kept with the grid.
    virtual HRESULT SetGrid(const double* values, int32_t xCount, int32_t yCount, const GridExtent* extent,
                            bool dataFlag) = 0;  // slot 16
    // Forgets the grid and everything derived from it; the flat view shows
    // only background and axes until the next SetGrid.
    virtual HRESULT ResetData() = 0;  // slot 17
    // Switches the one-dimensional section on (mode 1, 2) or off (mode 0).
    virtual HRESULT SetSection(const SectionSettings* section) = 0;  // slot 18
    virtual HRESULT SetShading(ShadingMode shading) = 0;         // slot 19: palette cells flat or interpolated
    // Layout of the view in pixels: the margin left of the image for the Y
    // axis, the colour bar's width, the width right of the colour bar for
    // the palette axis, and the margin below the image for the X axis. The
    // control passes (its axis margin, 15, 50, its axis margin).
    virtual HRESULT SetParameters(int32_t leftMargin, int32_t colorBarWidth, int32_t paletteAxisWidth,
                                  int32_t bottomMargin) = 0;  // slot 20
    // The whole grid's range.
    virtual HRESULT GetDataRange(DataRect* range) = 0;     // slot 21
    // The range shown after zoom and pan.
    virtual HRESULT GetVisibleRange(DataRect* range) = 0;  // slot 22
    // How tick texts are drawn: 0 when this surface renders the \SUP
    // superscript markup (the "Base10" format then writes "x10\SUP<exp>"),
    // non-zero when texts are drawn as plain characters. Answers directly.
    virtual int32_t QueryTextMarkup() = 0;  // slot 23
    // Flat-view mapping between data units and client pixels. S_FALSE when
    // the point lies outside the image (the outputs are still set).
    virtual HRESULT DataToClient(double x, double y, int32_t* px, int32_t* py) = 0;  // slot 24
    virtual HRESULT ClientToData(int32_t px, int32_t py, double* x, double* y) = 0;  // slot 25
    // Where the image lies in client pixels, after the layout of slot 20.
    virtual HRESULT GetImageRect(PixelRect* rect) = 0;  // slot 26
    // Shows the grid as the palette image (true, the default) or, with the
    // image off, as contour lines coloured through the palette over the
    // background.
    virtual HRESULT SetImageVisible(bool visible) = 0;  // slot 27

    // The annotation overlay, drawn over the flat view at the next Draw or
    // RenderToImage, in logical client pixels of the last Resize (or of the
    // buffer rendered to). The control clears it and lets each annotation
    // add its shapes before every redraw.
    virtual HRESULT ClearOverlay() = 0;  // slot 28
    // `count` points as x, y pairs; `closed` joins the last to the first.
    virtual HRESULT AddOverlayLines(uint32_t count, const double* xy, uint32_t color, OverlayStroke stroke,
                                    float width, bool closed) = 0;  // slot 29
    virtual HRESULT AddOverlayBox(const OverlayBox* box) = 0;      // slot 30
    // A symbol of `size` pixels centred on (x, y).
    virtual HRESULT AddOverlaySymbol(double x, double y, PointStyle symbol, float size,
                                     uint32_t color) = 0;  // slot 31
    // `text` (UTF-8, may hold several lines) in a box whose top-left corner
    // is at (x, y); null font: the view's default.
    virtual HRESULT AddOverlayTextBox(double x, double y, const char* text, const FontDescription* font,
                                      const OverlayTextBox* style) = 0;  // slot 32
    // The size of `text` in `font` (null: the default) in logical pixels,
    // without the box's padding.
    virtual HRESULT MeasureText(const char* text, const FontDescription* font, int32_t* width,
                                int32_t* height) = 0;  // slot 33

protected:
    ~IGraphDevice2D() = default;
};

}  // namespace vexplot
