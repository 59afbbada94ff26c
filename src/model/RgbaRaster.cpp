#include "model/RgbaRaster.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace vexplot {

RgbaRaster::RgbaRaster(uint32_t width, uint32_t height, uint32_t fill)
    : width_(width), height_(height), pixels_(size_t{width} * height, fill) {}

size_t RgbaRaster::RowStart(uint32_t y) const {
    if (y >= height_) {
        throw std::out_of_range("raster row " + std::to_string(y) + " outside " + std::to_string(height_) + " rows");
    }
    return size_t{y} * width_;
}

uint32_t RgbaRaster::Pixel(uint32_t x, uint32_t y) const {
    if (x >= width_) {
        throw std::out_of_range("raster column " + std::to_string(x) + " outside " + std::to_string(width_) +
                                " columns");
    }
    return pixels_[RowStart(y) + x];
}

std::span<const uint32_t> RgbaRaster::Row(uint32_t y) const {
    return std::span<const uint32_t>(pixels_).subspan(RowStart(y), width_);
}

void RgbaRaster::SetPixel(uint32_t x, uint32_t y, uint32_t color) {
    static_cast<void>(Pixel(x, y));  // range check with its message
    pixels_[RowStart(y) + x] = color;
}

void RgbaRaster::FillRow(uint32_t y, uint32_t color) {
    const auto start = pixels_.begin() + static_cast<std::ptrdiff_t>(RowStart(y));
    std::fill(start, start + width_, color);
}

}  // namespace vexplot
