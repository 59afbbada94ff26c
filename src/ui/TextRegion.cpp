#include "ui/TextRegion.h"

#include <algorithm>
#include <cstddef>

namespace vexplot {

std::vector<PixelRect> TextRegion::Runs(const TextMask& mask, uint32_t background) {
    std::vector<PixelRect> runs;
    if (mask.width <= 0 || mask.height <= 0 || mask.stride < mask.width) return runs;
    const size_t needed = static_cast<size_t>(mask.stride) * static_cast<size_t>(mask.height - 1) +
                          static_cast<size_t>(mask.width);
    if (mask.pixels.size() < needed) return runs;

    const uint32_t key = background & 0xFFFFFFu;
    // Runs of the previous row still open for merging, as indices into `runs`,
    // in ascending x. A run of this row extends one of them only when both
    // ends match, so the union stays exact.
    std::vector<size_t> open;
    std::vector<size_t> next;
    for (int32_t y = 0; y < mask.height; ++y) {
        const uint32_t* row = mask.pixels.data() + static_cast<size_t>(mask.stride) * static_cast<size_t>(y);
        next.clear();
        size_t candidate = 0;
        int32_t x = 0;
        while (x < mask.width) {
            if ((row[x] & 0xFFFFFFu) == key) {
                ++x;
                continue;
            }
            const int32_t left = x;
            while (x < mask.width && (row[x] & 0xFFFFFFu) != key) ++x;
            while (candidate < open.size() && runs[open[candidate]].left < left) ++candidate;
            if (candidate < open.size() && runs[open[candidate]].left == left &&
                runs[open[candidate]].right == x) {
                runs[open[candidate]].bottom = y + 1;
                next.push_back(open[candidate]);
            } else {
                runs.push_back(PixelRect{left, y, x, y + 1});
                next.push_back(runs.size() - 1);
            }
        }
        open.swap(next);
    }
    return runs;
}

std::vector<PixelRect> TextRegion::Place(const std::vector<PixelRect>& runs, int32_t dx, int32_t dy,
                                         const PixelRect& clip) {
    std::vector<PixelRect> placed;
    placed.reserve(runs.size());
    for (const PixelRect& r : runs) {
        const PixelRect moved{std::max(r.left + dx, clip.left), std::max(r.top + dy, clip.top),
                              std::min(r.right + dx, clip.right), std::min(r.bottom + dy, clip.bottom)};
        if (moved.left < moved.right && moved.top < moved.bottom) placed.push_back(moved);
    }
    return placed;
}

}  // namespace vexplot
