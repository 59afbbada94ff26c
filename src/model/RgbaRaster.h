#pragma once
#include <cstdint>
#include <span>
#include <vector>

namespace vexplot {

// A picture in memory, needing no window system: Width() x Height() pixels
// stored row by row from the top, each a colour 0x00BBGGRR. It stands where
// Windows keeps a bitmap selected into a memory device context.
//
// Coordinates out of range raise std::out_of_range. The caller bounds the
// size: the constructor allocates Width() x Height() pixels as asked.
class RgbaRaster {
public:
    RgbaRaster() = default;
    RgbaRaster(uint32_t width, uint32_t height, uint32_t fill = 0);

    // getters:
    uint32_t Width() const { return width_; }
    uint32_t Height() const { return height_; }
    // True when the raster has no pixel (no row or no column).
    bool Empty() const { return pixels_.empty(); }
    uint32_t Pixel(uint32_t x, uint32_t y) const;
    std::span<const uint32_t> Row(uint32_t y) const;
    std::span<const uint32_t> Pixels() const { return pixels_; }

    // setters:
    // Paints the whole row `y`: the one-pixel pen line across the raster.
    void FillRow(uint32_t y, uint32_t color);
    void SetPixel(uint32_t x, uint32_t y, uint32_t color);

    bool operator==(const RgbaRaster&) const = default;

private:
    size_t RowStart(uint32_t y) const;

    uint32_t width_ = 0;
    uint32_t height_ = 0;
    std::vector<uint32_t> pixels_;
};

}  // namespace vexplot
