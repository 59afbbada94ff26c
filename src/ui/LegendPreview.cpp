#include "ui/LegendPreview.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "com/ComError.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_Palette.h"
#include "model/PaletteMapping.h"

namespace vexplot {

namespace {

constexpr uint32_t kFrameColor = 0x00808080;

// The grid's cell index for pixel `p` of `kSize` along an axis of `count` cells.
int32_t CellOf(uint32_t p, int32_t count) {
    return static_cast<int32_t>(static_cast<int64_t>(p) * count / LegendPreview::kSize);
}

}  // namespace

std::optional<RgbaRaster> LegendPreview::FromGrid(std::span<const double> values, int32_t xCount, int32_t yCount,
                                                  std::span<const uint32_t> colors) {
    if (xCount < 1 || yCount < 1) return std::nullopt;
    const auto cells = static_cast<uint64_t>(xCount) * static_cast<uint64_t>(yCount);
    if (values.size() < cells) return std::nullopt;
    const std::span<const double> grid = values.first(cells);

    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (double v : grid) {
        if (!std::isfinite(v)) continue;
        low = std::min(low, v);
        high = std::max(high, v);
    }
    RgbaRaster picture(kSize, kSize, kMaskColor);
    if (low > high) return picture;  // no finite value: nothing to paint

    const PaletteMapping mapping(low, high, colors);
    for (uint32_t py = 0; py < kSize; ++py) {
        // The top row shows the highest Y index.
        const int32_t iy = yCount - 1 - CellOf(py, yCount);
        for (uint32_t px = 0; px < kSize; ++px) {
            const int32_t ix = CellOf(px, xCount);
            const double v = grid[static_cast<size_t>(ix) * static_cast<size_t>(yCount) + static_cast<size_t>(iy)];
            const std::optional<uint32_t> color = mapping.ColorOf(v);
            if (color) picture.SetPixel(px, py, *color == kMaskColor ? kNearMaskColor : *color);
        }
    }
    return picture;
}

std::optional<RgbaRaster> LegendPreview::Of(CGD_GraphObject& graph, const CGD_Palette& palette) {
    const CGD_GraphObject::Geometry& g = graph.GetGeometry();
    const std::span<const double> preview = graph.Preview();
    if (!preview.empty()) return FromGrid(preview, g.previewXCount, g.previewYCount, palette.Colors());
    if (graph.Data() == nullptr || g.xCount < 1 || g.yCount < 1) return std::nullopt;
    try {
        // Without a preview the grid is small (under 100 cells a side), so
        // copying it costs nothing.
        const std::vector<const double*> rows = graph.GetRows(0, 0, g.xCount, g.yCount);
        if (rows.size() != static_cast<size_t>(g.xCount)) return std::nullopt;
        const auto rowLength = static_cast<size_t>(g.yCount);
        std::vector<double> values(rows.size() * rowLength);
        for (size_t k = 0; k < rows.size(); ++k) std::copy_n(rows[k], rowLength, values.begin() + k * rowLength);
        return FromGrid(values, g.xCount, g.yCount, palette.Colors());
    } catch (const ComError&) {
        return std::nullopt;
    }
}

RgbaRaster LegendPreview::DefaultImage() {
    RgbaRaster image(kSize, kSize, kMaskColor);
    image.FillRow(0, kFrameColor);
    image.FillRow(kSize - 1, kFrameColor);
    for (uint32_t y = 1; y + 1 < kSize; ++y) {
        image.SetPixel(0, y, kFrameColor);
        image.SetPixel(kSize - 1, y, kFrameColor);
    }
    return image;
}

}  // namespace vexplot
