#pragma once
#include <cstdint>
#include <optional>
#include <span>

#include "model/RgbaRaster.h"

namespace vexplot {

class CGD_GraphObject;
class CGD_Palette;

// The legend's 32 x 32 picture of a graph object: its grid seen from above,
// painted with the palette. The grid's X index runs left to right and its Y
// index bottom to top, each pixel taking the nearest grid cell; colours
// spread over the grid's own lowest to highest finite value.
//
// The legend's images are drawn with a mask colour, pure blue (0x00FF0000 as
// 0x00BBGGRR), that stands for "transparent". A palette colour that happens
// to be pure blue (the low end of the blue-to-red palettes) is drawn one
// step darker, 0x00FE0000, so that it stays visible; cells without a colour
// (NaN) are drawn in the mask colour and show the list's background.
class LegendPreview {
public:
    static constexpr uint32_t kSize = 32;
    static constexpr uint32_t kMaskColor = 0x00FF0000;
    static constexpr uint32_t kNearMaskColor = 0x00FE0000;

    // The picture of a grid of xCount x yCount values (value (ix, iy) at
    // ix * yCount + iy). Nothing when the grid is empty or `values` is
    // shorter than it says; a grid without a finite value or an empty
    // palette gives a picture all in the mask colour.
    static std::optional<RgbaRaster> FromGrid(std::span<const double> values, int32_t xCount, int32_t yCount,
                                              std::span<const uint32_t> colors);
    // The picture of `graph`: its preview grid when it has one, else its
    // whole grid. Nothing when the object is unbound, its grid is empty or
    // the data object fails; the legend then keeps the image it had.
    static std::optional<RgbaRaster> Of(CGD_GraphObject& graph, const CGD_Palette& palette);
    // The image of rows without a picture of their own: a grey frame around
    // a blank (masked) face.
    static RgbaRaster DefaultImage();
};

}  // namespace vexplot
