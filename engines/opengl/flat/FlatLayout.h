#pragma once
#include <cstdint>
#include <optional>

#include "engine/IGraphEngine.h"
#include "opengl/gl/PixelScale.h"

namespace vexplot {

// Where the parts of the flat view lie in client pixels, and the mapping
// between data units and pixels inside the image. Plain arithmetic, no GL.
//
// From left to right: the Y axis margin, the image, a gap, the colour bar
// and the palette axis's width (or, with the colour bar hidden, a small
// right margin so that the last X tick text fits); from top to bottom: a
// small top margin, the image, the X axis margin.
//
// The visible range (zoom and pan) spans the image; X grows to the right
// and Y upwards unless the orientation mirrors them. Pixel px covers the
// data interval [X(px), X(px + 1)), so ClientToData answers the data value
// at a pixel's centre and DataToClient maps it back to the same pixel.
//
// Margins and widths are logical pixels. A layout for a target with more
// physical pixels per logical one (SetPixelRatio) is the same layout scaled:
// its client size is the target's and every margin is multiplied by the
// ratio, so the image keeps its place relative to the whole picture.
class FlatLayout {
public:
    static constexpr int32_t kTopMargin = 12;
    static constexpr int32_t kRightMargin = 24;
    static constexpr int32_t kColorBarGap = 12;

    // setters:
    void SetClientSize(int32_t width, int32_t height);
    void SetParameters(int32_t leftMargin, int32_t colorBarWidth, int32_t paletteAxisWidth, int32_t bottomMargin);
    void SetColorBarVisible(bool visible) { colorBarVisible_ = visible; }
    // The whole grid's range (min <= max in each direction).
    void SetDataRange(const DataRect& range) { data_ = range; }
    // Null shows the whole data range.
    void SetVisibleRange(const std::optional<DataRect>& range) { visible_ = range; }
    // enumImageOrientation: bit 0 mirrors X, bit 1 mirrors Y.
    void SetOrientation(int32_t orientation) { orientation_ = orientation & 3; }
    // Physical pixels per logical pixel; the client size is then in
    // physical pixels. Values that are not positive mean 1.
    void SetPixelRatio(double ratio) { scale_ = PixelScale(ratio); }

    // getters:
    int32_t ClientWidth() const { return width_; }
    int32_t ClientHeight() const { return height_; }
    bool ColorBarVisible() const { return colorBarVisible_; }
    bool MirrorX() const { return (orientation_ & 1) != 0; }
    bool MirrorY() const { return (orientation_ & 2) != 0; }
    int32_t Orientation() const { return orientation_; }
    int32_t PaletteAxisWidth() const { return paletteAxisWidth_; }
    double PixelRatio() const { return scale_.Ratio(); }
    const DataRect& DataRange() const { return data_; }
    DataRect VisibleRange() const { return visible_.value_or(data_); }

    // The image; empty (right <= left) when the client area is too small.
    PixelRect ImageRect() const;
    // The colour bar, beside the image and as tall; empty when hidden.
    PixelRect ColorBarRect() const;

    // Continuous pixel coordinates of a data position (the image's left edge
    // is ImageRect().left, its right edge ImageRect().right).
    double XToPixel(double x) const;
    double YToPixel(double y) const;
    // False when the point lies outside the visible range (the outputs are
    // still set, extrapolated).
    bool DataToClient(double x, double y, int32_t& px, int32_t& py) const;
    // False when the pixel lies outside the image.
    bool ClientToData(int32_t px, int32_t py, double& x, double& y) const;

private:
    // Position 0..1 across the image (left to right, top to bottom) of a
    // data value, mirroring applied.
    double FractionX(double x) const;
    double FractionY(double y) const;

    int32_t width_ = 0;
    int32_t height_ = 0;
    int32_t leftMargin_ = 60;
    int32_t colorBarWidth_ = 15;
    int32_t paletteAxisWidth_ = 50;
    int32_t bottomMargin_ = 60;
    bool colorBarVisible_ = true;
    int32_t orientation_ = 0;
    DataRect data_{0.0, 1.0, 0.0, 1.0};
    std::optional<DataRect> visible_;
    PixelScale scale_;
};

}  // namespace vexplot
