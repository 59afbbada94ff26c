#pragma once
#include <cstdint>

#include "com/IUnknown.h"
#include "engine/WindowHandle.h"

namespace vexplot {

class IGraphDevice2D;
class IGraphView3D;

// ---------------------------------------------------------------------------
// Records shared by the engine's interfaces. They cross the plug-in boundary,
// so their sizes are pinned; flags inside records are int32 0/1.
// ---------------------------------------------------------------------------

// The axis an axis call addresses. Palette is the colour bar's axis, drawn by
// the 2-D device only.
enum class AxisId : int32_t { X = 0, Y = 1, Z = 2, Palette = 3 };

// The two texts of an axis, each with its own font.
enum class AxisText : int32_t { Label = 0, Numbers = 1 };

// How the 3-D view draws a grid (the values of the automation's enumGraphStyle).
enum class GraphStyle : int32_t { Wireframe = 0, Surface = 1, Barchart = 2, Lines = 3, Points = 4 };

// Colouring between grid nodes (the values of enumShadingModes).
enum class ShadingMode : int32_t { Flat = 0, Smooth = 1 };

// Symbols of point plots and of the section curve (the values of enumPointStyle).
enum class PointStyle : int32_t { None = 0, Circle = 1, Square = 2, X = 3, Cross = 4, Triangle = 5, Star = 6 };

// Where a grid lies in data units. x and y extents run from the first to the
// last scale element (a descending scale gives first > last); zMin and zMax
// are the lowest and highest finite values, the range the palette spans.
struct GridExtent {
    double xFirst;
    double xLast;
    double yFirst;
    double yLast;
    double zMin;
    double zMax;
};
static_assert(sizeof(GridExtent) == 48);

// A rectangle in data units, min <= max.
struct DataRect {
    double xMin;
    double xMax;
    double yMin;
    double yMax;
};
static_assert(sizeof(DataRect) == 32);

// A rectangle in client pixels of a view window, right and bottom exclusive.
struct PixelRect {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
};
static_assert(sizeof(PixelRect) == 16);

// A point in data units.
struct Point3 {
    double x;
    double y;
    double z;
};
static_assert(sizeof(Point3) == 24);

// Pixels that the caller owns and lends for one call: `height` rows of
// `stride` pixels (stride >= width), top row first, each pixel 0x00BBGGRR
// (bytes R, G, B, unused in memory: the RGBX8888 layout).
//
// pixelRatio says how many physical pixels the target has per logical pixel
// (a HiDPI window, or an export meant for print): the engine then draws every
// length it chooses in pixels (text heights, line widths, symbols, margins)
// that many times larger, so the picture looks the same, only sharper. The
// surfaces' mapping calls keep answering in the logical pixels of Resize.
struct ImageBuffer {
    uint32_t* pixels;
    int32_t width;
    int32_t height;
    int32_t stride;
    int32_t pixelRatio;  // physical pixels per logical pixel, in hundredths; 0 means 100
};
static_assert(sizeof(ImageBuffer) == sizeof(void*) + 16);

// The buffer's pixel ratio as a factor: 0 (unset) or a negative value is
// 1.0, anything else is clamped to 0.25 .. 8.
inline double PixelRatio(const ImageBuffer& image) {
    if (image.pixelRatio <= 0) return 1.0;
    const double ratio = image.pixelRatio / 100.0;
    return ratio < 0.25 ? 0.25 : ratio > 8.0 ? 8.0 : ratio;
}

// Appearance of one axis. Colours 0x00BBGGRR; the major tick positions come
// separately (SetAxisTicks), the minor ones divide each major step into
// minorTicks + 1 parts.
struct AxisStyle {
    uint32_t numberColor;  // axis line, tick marks and tick texts
    uint32_t majorGridColor;
    uint32_t minorGridColor;
    int32_t minorTicks;
    int32_t visible;
    int32_t majorGrid;
    int32_t minorGrid;
    int32_t numbersVisible;
};
static_assert(sizeof(AxisStyle) == 32);

// A font by description; the engine resolves the face through the system's
// font configuration ("Arial" becomes a metric-compatible face).
struct FontDescription {
    char face[32];       // UTF-8, terminated
    int32_t height;      // character height in pixels
    int32_t weight;      // 400 normal, 700 bold
    int32_t escapement;  // text direction in tenths of a degree, counter-clockwise (900 = upwards)
    int32_t italic;
};
static_assert(sizeof(FontDescription) == 48);

// The annotation overlay of the surfaces: how an outline is stroked and how
// a flat-view box is filled. Sizes are logical pixels; the surfaces scale
// them with the target's pixel ratio.
enum class OverlayStroke : int32_t { Solid = 0, Dotted = 1, Dashed = 2 };
enum class OverlayFill : int32_t {
    None = 0,
    Hatched = 1,  // diagonal lines `spacing` pixels apart in the box's colour
    Invert = 2,   // the pixels inside the box inverted
    Tint = 3,     // the box's colour laid over the inside at a quarter strength
    Solid = 4,    // the box's colour
};
// A box of the flat overlay in logical client pixels (right and bottom
// exclusive).
struct OverlayBox {
    PixelRect rect;
    uint32_t color;       // 0x00BBGGRR of the outline, the hatching and the tint
    int32_t stroke;       // OverlayStroke of the outline; -1 for none
    int32_t fill;         // OverlayFill
    int32_t spacing;      // hatching and dot spacing, pixels (at least 1)
    float lineWidth;      // outline width, pixels
    int32_t reserved;
};
static_assert(sizeof(OverlayBox) == 40);
// A text in a box: the label of an annotation. The text's top-left corner is
// placed `padding` pixels inside the box, whose top-left corner is at the
// given point; boxColor / borderColor 0xFFFFFFFF draw no fill / no border.
struct OverlayTextBox {
    uint32_t textColor;
    uint32_t boxColor;
    uint32_t borderColor;
    int32_t padding;
};
static_assert(sizeof(OverlayTextBox) == 16);
inline constexpr uint32_t kOverlayNoColor = 0xFFFFFFFFu;

// Bits of IGraphEngine::GetCapabilities.
inline constexpr uint32_t kEngineHardware = 1;       // draws on a GPU rather than in software
inline constexpr uint32_t kEngineRenderToImage = 2;  // RenderToImage works without any window

// The graph engine's root interface, created through the class registry
// from the CLSID in the "Engine" setting.
//
// The engine has two surfaces, each bound to one of the control's view
// windows: the 2-D device (GetDevice2D, slot 7: the flat palette image, the
// colour bar and the one-dimensional section, plus the flat view's range and
// mapping queries) and the 3-D view (GetView3D, slot 8: the scene with
// surfaces, axes and annotations, the camera, projection and view bounds).
// A graph object holds both as its "first" and "second" surface and pushes
// its grid to each; see IGraphDevice2D and IGraphView3D for which of its
// calls goes where.
//
// The palette is the engine's, not a surface's: both surfaces colour values
// through the same list, so that the image, the colour bar and the 3-D
// surface always agree.
class IGraphEngine : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{D99A4491-DF8A-4EE8-90F4-A2C14DF83DEB}");

    // The engine's name as the settings list it ("OpenGL"), UTF-8 and
    // terminated; E_INVALIDARG when `size` cannot hold it.
    virtual HRESULT GetName(char* buffer, uint32_t size) = 0;  // slot 3
    // kEngine... bits.
    virtual HRESULT GetCapabilities(uint32_t* flags) = 0;  // slot 4
    // The first call after creation: sets up the rendering context. No
    // surface works before it.
    virtual HRESULT Initialize() = 0;  // slot 5
    // Replaces the palette: `count` colours 0x00BBGGRR, index 0 for the
    // lowest value. Copied; `colors` is only read during the call.
    virtual HRESULT SetPalette(uint32_t count, const uint32_t* colors) = 0;  // slot 6
    // The 2-D device, AddRef'ed; *device null means the engine has none.
    virtual HRESULT GetDevice2D(IGraphDevice2D** device) = 0;  // slot 7
    // The 3-D view, AddRef'ed.
    virtual HRESULT GetView3D(IGraphView3D** view) = 0;  // slot 8

protected:
    ~IGraphEngine() = default;
};

}  // namespace vexplot
