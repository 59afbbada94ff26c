#include "tools/ToolIconMenu.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace vexplot {

namespace {

constexpr uint32_t kBlack = 0x000000;
constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kRed = 0x0000D0;
constexpr uint32_t kGreen = 0x008000;
constexpr uint32_t kBlue = 0xC04000;
constexpr uint32_t kLens = 0xFFE8C8;
constexpr uint32_t kYellow = 0xB0FFFF;

// Drawing on a picture with clipping: what the tool pictures need and no
// more. Coordinates are those of the 32 x 32 design; `scale` draws the same
// design on a picture `scale` times larger, with lines, circles and
// polygons drawn at that resolution rather than enlarged, so that icons are
// sharp on screens of any pixel density.
class Canvas {
public:
    explicit Canvas(RgbaRaster& raster, double scale = 1.0) : raster_(raster), s_(scale) {}

    void Dot(int x, int y, uint32_t color) {
        if (x < 0 || y < 0 || x >= static_cast<int>(raster_.Width()) || y >= static_cast<int>(raster_.Height()))
            return;
        raster_.SetPixel(static_cast<uint32_t>(x), static_cast<uint32_t>(y), color);
    }

    // A line of `thickness` pixels (a square pen) from (x0, y0) to (x1, y1),
    // both ends included; `dash` > 0 leaves gaps of that length between
    // dashes of the same length.
    void Line(int x0, int y0, int x1, int y1, uint32_t color, int thickness = 1, int dash = 0) {
        PixelLine(At(x0), At(y0), At(x1), At(y1), color, Size(thickness), Size(dash));
    }

    void FillRect(int left, int top, int right, int bottom, uint32_t color) {
        for (int y = At(top) - Half(); y <= At(bottom) + Half(); ++y)
            for (int x = At(left) - Half(); x <= At(right) + Half(); ++x) Dot(x, y, color);
    }

    // The pixels nearer than `radius` to (cx, cy), or a ring of `thickness`
    // whose outer edge lies at `radius` + 1.
    void Disc(int cx, int cy, int radius, uint32_t color) { Ring(At(cx), At(cy), 0, Size(radius), color); }
    void Circle(int cx, int cy, int radius, uint32_t color, int thickness = 1) {
        Ring(At(cx), At(cy), Size(radius - thickness + 1), Size(thickness), color);
    }

    // A polygon filled by the even-odd rule at pixel centres, then outlined.
    template <size_t N>
    void Polygon(const std::array<std::pair<int, int>, N>& points, uint32_t fill, uint32_t outline) {
        // Vertices on the design's pixel centres, at this picture's scale.
        std::array<std::pair<double, double>, N> scaled;
        for (size_t i = 0; i < N; ++i)
            scaled[i] = {(points[i].first + 0.5) * s_, (points[i].second + 0.5) * s_};
        for (int y = 0; y < static_cast<int>(raster_.Height()); ++y)
            for (int x = 0; x < static_cast<int>(raster_.Width()); ++x)
                if (Inside(scaled, x + 0.5, y + 0.5)) Dot(x, y, fill);
        for (size_t i = 0; i < N; ++i) {
            const auto [x0, y0] = points[i];
            const auto [x1, y1] = points[(i + 1) % N];
            Line(x0, y0, x1, y1, outline);
        }
    }

private:
    // A design coordinate's pixel: the centre of the design pixel, scaled.
    int At(int c) const { return static_cast<int>(std::floor((c + 0.5) * s_)); }
    // A design length in pixels, at least one.
    int Size(int length) const { return length <= 0 ? length : std::max(1, static_cast<int>(std::lround(length * s_))); }
    int Half() const { return std::max(0, static_cast<int>(std::lround(s_)) - 1) / 2; }

    void PixelLine(int x0, int y0, int x1, int y1, uint32_t color, int thickness, int dash) {
        const int dx = std::abs(x1 - x0);
        const int dy = -std::abs(y1 - y0);
        const int sx = x0 < x1 ? 1 : -1;
        const int sy = y0 < y1 ? 1 : -1;
        int error = dx + dy;
        for (int step = 0;; ++step) {
            if (dash <= 0 || (step / dash) % 2 == 0) Pen(x0, y0, color, thickness);
            if (x0 == x1 && y0 == y1) break;
            const int e2 = 2 * error;
            if (e2 >= dy) {
                error += dy;
                x0 += sx;
            }
            if (e2 <= dx) {
                error += dx;
                y0 += sy;
            }
        }
    }

    void Pen(int x, int y, uint32_t color, int thickness) {
        const int from = -(thickness - 1) / 2;
        for (int oy = from; oy < from + thickness; ++oy)
            for (int ox = from; ox < from + thickness; ++ox) Dot(x + ox, y + oy, color);
    }

    // Pixels at a distance in [inner, inner + width) of the centre.
    void Ring(int cx, int cy, int inner, int width, uint32_t color) {
        const int outer = inner + width;
        for (int y = cy - outer; y <= cy + outer; ++y)
            for (int x = cx - outer; x <= cx + outer; ++x) {
                const int d2 = (x - cx) * (x - cx) + (y - cy) * (y - cy);
                const bool beyondInner = inner <= 0 || d2 >= inner * inner;
                if (beyondInner && d2 < outer * outer) Dot(x, y, color);
            }
    }

    // Even-odd test of the point (px, py) against the polygon.
    template <size_t N>
    static bool Inside(const std::array<std::pair<double, double>, N>& points, double px, double py) {
        bool inside = false;
        for (size_t i = 0, j = N - 1; i < N; j = i++) {
            const auto [xi, yi] = points[i];
            const auto [xj, yj] = points[j];
            if ((yi > py) == (yj > py)) continue;
            if (px < xi + (xj - xi) * (py - yi) / (yj - yi)) inside = !inside;
        }
        return inside;
    }

    RgbaRaster& raster_;
    double s_;
};

void DrawSelect(Canvas& c) {
    c.Polygon(std::array<std::pair<int, int>, 7>{{{9, 3}, {9, 26}, {14, 21}, {18, 29}, {21, 28}, {17, 20}, {24, 20}}},
              kWhite, kBlack);
}

void DrawPan(Canvas& c) {
    c.Line(16, 5, 16, 27, kBlack, 2);
    c.Line(5, 16, 27, 16, kBlack, 2);
    c.Polygon(std::array<std::pair<int, int>, 3>{{{16, 1}, {11, 7}, {21, 7}}}, kBlack, kBlack);
    c.Polygon(std::array<std::pair<int, int>, 3>{{{16, 31}, {11, 25}, {21, 25}}}, kBlack, kBlack);
    c.Polygon(std::array<std::pair<int, int>, 3>{{{1, 16}, {7, 11}, {7, 21}}}, kBlack, kBlack);
    c.Polygon(std::array<std::pair<int, int>, 3>{{{31, 16}, {25, 11}, {25, 21}}}, kBlack, kBlack);
}

void DrawZoom(Canvas& c) {
    c.Disc(13, 13, 8, kLens);
    c.Circle(13, 13, 9, kBlack, 2);
    c.Line(20, 20, 28, 28, kBlack, 4);
}

void DrawLabel(Canvas& c) {
    c.Line(9, 26, 16, 5, kBlue, 2);
    c.Line(16, 5, 23, 26, kBlue, 2);
    c.Line(12, 18, 20, 18, kBlue, 2);
    c.Line(5, 29, 27, 29, kBlack);
}

void DrawMarker(Canvas& c) {
    c.Line(16, 14, 16, 29, kBlack, 2);
    c.Polygon(std::array<std::pair<int, int>, 4>{{{16, 2}, {23, 9}, {16, 16}, {9, 9}}}, kRed, kBlack);
}

void DrawCrosshair(Canvas& c, int cx, int cy, int radius, uint32_t color) {
    c.Circle(cx, cy, radius, color);
    c.Line(cx - radius - 3, cy, cx - 2, cy, color);
    c.Line(cx + 2, cy, cx + radius + 3, cy, color);
    c.Line(cx, cy - radius - 3, cx, cy - 2, color);
    c.Line(cx, cy + 2, cx, cy + radius + 3, color);
}

void DrawTracer(Canvas& c) { DrawCrosshair(c, 16, 16, 9, kGreen); }

void DrawDifferenceTracer(Canvas& c) {
    c.Line(9, 9, 23, 23, kBlack, 1, 2);
    DrawCrosshair(c, 9, 9, 5, kGreen);
    DrawCrosshair(c, 23, 23, 5, kRed);
}

void DrawRegion(Canvas& c) {
    c.FillRect(6, 8, 26, 24, kYellow);
    c.Line(5, 7, 27, 7, kBlack, 1, 2);
    c.Line(5, 25, 27, 25, kBlack, 1, 2);
    c.Line(5, 7, 5, 25, kBlack, 1, 2);
    c.Line(27, 7, 27, 25, kBlack, 1, 2);
}

}  // namespace

ToolIconMenu::ToolIconMenu(const std::vector<ToolbarButton>& toolbar, int32_t columns, uint32_t background) {
    const size_t perColumn = static_cast<size_t>(std::max(1, columns));
    for (const ToolbarButton& button : toolbar) {
        if (button.command == 0) continue;
        MenuItem item;
        item.text = button.text;
        item.command = button.command;
        item.prompt = button.prompt;
        item.enabled = button.enabled;
        item.columnBreak = !menu_.empty() && menu_.size() % perColumn == 0;
        item.icon = std::make_shared<const RgbaRaster>(
            MakeIcon(button.picture ? *button.picture : RgbaRaster(kIconSize, kIconSize, kMaskColor), background));
        // The tools' own pictures are drawn afresh for denser screens.
        if (button.picture && *button.picture == ToolPicture(button.command)) {
            const int32_t command = button.command;
            item.iconAt = [command, background](double ratio) {
                return std::make_shared<const RgbaRaster>(MakeIcon(ToolPicture(command, ratio), background, ratio));
            };
        }
        menu_.push_back(std::move(item));
    }
    if (!menu_.empty()) {
        menu_.front().checked = true;
        current_ = menu_.front().command;
    }
}

MenuItem* ToolIconMenu::Find(int32_t command) {
    const auto it = std::find_if(menu_.begin(), menu_.end(), [command](const MenuItem& i) { return i.command == command; });
    return it == menu_.end() ? nullptr : &*it;
}

bool ToolIconMenu::SetCurrent(int32_t command) {
    if (!Find(command)) return false;
    for (MenuItem& item : menu_) item.checked = item.command == command;
    current_ = command;
    return true;
}

bool ToolIconMenu::SetEnabled(int32_t command, bool enabled) {
    MenuItem* item = Find(command);
    if (!item) return false;
    item->enabled = enabled;
    return true;
}

std::vector<ToolbarButton> ToolIconMenu::StandardToolbar() {
    struct Entry {
        int32_t command;
        const char* text;
        const char* prompt;
    };
    static constexpr std::array<Entry, 8> kTools{{
        {kSelect, "&Select", "Selector Tool"},
        {kPan, "P&an", "Pan"},
        {kZoom, "Z&oom", "Zoom in/out"},
        {kLabel, "&Label", "Label"},
        {kMarker, "&Marker", "Marker"},
        {kTracer, "&Tracer", "Tracer"},
        {kDifferenceTracer, "&Difference Tracer", "Difference tracer"},
        {kRegion, "Reg&ion", "Region"},
    }};
    std::vector<ToolbarButton> toolbar;
    for (const Entry& e : kTools) {
        toolbar.push_back(ToolbarButton{e.command, std::make_shared<const RgbaRaster>(ToolPicture(e.command)), e.text,
                                        e.prompt, false});
    }
    return toolbar;
}

RgbaRaster ToolIconMenu::ToolPicture(int32_t command, double scale) {
    const uint32_t size = ScaledSize(scale);
    RgbaRaster picture(size, size, kMaskColor);
    Canvas canvas(picture, static_cast<double>(size) / kIconSize);
    switch (command) {
        case kSelect: DrawSelect(canvas); break;
        case kPan: DrawPan(canvas); break;
        case kZoom: DrawZoom(canvas); break;
        case kLabel: DrawLabel(canvas); break;
        case kMarker: DrawMarker(canvas); break;
        case kTracer: DrawTracer(canvas); break;
        case kDifferenceTracer: DrawDifferenceTracer(canvas); break;
        case kRegion: DrawRegion(canvas); break;
        default: break;
    }
    return picture;
}

uint32_t ToolIconMenu::ScaledSize(double scale) {
    const double size = std::round(kIconSize * (std::isfinite(scale) ? std::clamp(scale, 1.0, 8.0) : 1.0));
    return static_cast<uint32_t>(size);
}

RgbaRaster ToolIconMenu::MakeIcon(const RgbaRaster& picture, uint32_t background, double scale) {
    const uint32_t size = ScaledSize(scale);
    RgbaRaster icon(size, size, background);
    // Offsets of the picture's corner in the icon; negative for pictures
    // larger than the icon, whose middle is kept.
    const int64_t ox = (int64_t{size} - picture.Width()) / 2;
    const int64_t oy = (int64_t{size} - picture.Height()) / 2;
    for (uint32_t y = 0; y < size; ++y) {
        const int64_t py = int64_t{y} - oy;
        if (py < 0 || py >= picture.Height()) continue;
        for (uint32_t x = 0; x < size; ++x) {
            const int64_t px = int64_t{x} - ox;
            if (px < 0 || px >= picture.Width()) continue;
            const uint32_t color = picture.Pixel(static_cast<uint32_t>(px), static_cast<uint32_t>(py));
            if (color != kMaskColor) icon.SetPixel(x, y, color);
        }
    }
    return icon;
}

}  // namespace vexplot
