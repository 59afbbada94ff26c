#include "control/EmfWriter.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "control/SceneText.h"

namespace vexplot {

namespace {

// Stock objects, selected while a made object is swapped for another.
constexpr uint32_t kNullPen = 0x80000008;
constexpr uint32_t kNullBrush = 0x80000005;
constexpr uint32_t kSystemFont = 0x8000000D;
constexpr uint32_t kMapModeText = 1;          // MM_TEXT
constexpr uint32_t kTransparent = 1;          // background mode
constexpr uint32_t kAlignBaseline = 24;       // TA_BASELINE
constexpr uint32_t kAlignLeft = 0;
constexpr uint32_t kGraphicsCompatible = 1;
constexpr uint32_t kPenSolid = 0, kPenGeometric = 0x00010000;  // round caps and joins are 0
constexpr uint32_t kHandlePen = 1, kHandleBrush = 2, kHandleFont = 3, kHandles = 4;
constexpr uint32_t kHeaderSize = 108;  // with both header extensions

// Little-endian record bytes.
class Records {
public:
    std::vector<uint8_t> bytes;
    uint32_t count = 0;

    // Starts a record; returns its offset. End() patches its size.
    size_t Begin(uint32_t type) {
        const size_t at = bytes.size();
        U32(type);
        U32(0);
        ++count;
        return at;
    }
    void End(size_t at) {
        while (bytes.size() % 4) bytes.push_back(0);
        Patch(at + 4, static_cast<uint32_t>(bytes.size() - at));
    }
    void U32(uint32_t v) {
        for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<uint8_t>(v >> (8 * i)));
    }
    void I32(int32_t v) { U32(static_cast<uint32_t>(v)); }
    void U16(uint16_t v) {
        bytes.push_back(static_cast<uint8_t>(v));
        bytes.push_back(static_cast<uint8_t>(v >> 8));
    }
    void F32(float v) {
        uint32_t bits;
        std::memcpy(&bits, &v, 4);
        U32(bits);
    }
    void Rect(int32_t l, int32_t t, int32_t r, int32_t b) {
        I32(l), I32(t), I32(r), I32(b);
    }
    void Patch(size_t at, uint32_t v) {
        for (int i = 0; i < 4; ++i) bytes[at + size_t(i)] = static_cast<uint8_t>(v >> (8 * i));
    }
    void Simple(uint32_t type, uint32_t value) {
        const size_t at = Begin(type);
        U32(value);
        End(at);
    }
};

int32_t Unit(double pixels) {
    const double v = std::round(pixels * EmfWriter::kUnitsPerPixel);
    return static_cast<int32_t>(std::clamp(v, double(INT_MIN / 2), double(INT_MAX / 2)));
}

// The graphics objects selected now, so that each is made only when it changes.
struct State {
    bool pen = false, brush = false, font = false;
    uint32_t penColor = 0, brushColor = 0, textColor = 0xFFFFFFFF;
    int32_t penWidth = -1;
    std::vector<uint8_t> fontKey;
};

void SelectPen(Records& r, State& s, uint32_t color, int32_t width) {
    if (s.pen && s.penColor == color && s.penWidth == width) return;
    if (s.pen) {
        r.Simple(emr::kSelectObject, kNullPen);
        r.Simple(emr::kDeleteObject, kHandlePen);
    }
    const size_t at = r.Begin(emr::kCreatePen);
    r.U32(kHandlePen);
    r.U32(width > 1 ? kPenSolid | kPenGeometric : kPenSolid);
    r.I32(width), r.I32(0);
    r.U32(color);
    r.End(at);
    r.Simple(emr::kSelectObject, kHandlePen);
    s.pen = true, s.penColor = color, s.penWidth = width;
}

void SelectBrush(Records& r, State& s, uint32_t color) {
    if (s.brush && s.brushColor == color) return;
    if (s.brush) {
        r.Simple(emr::kSelectObject, kNullBrush);
        r.Simple(emr::kDeleteObject, kHandleBrush);
    }
    const size_t at = r.Begin(emr::kCreateBrushIndirect);
    r.U32(kHandleBrush);
    r.U32(0);  // BS_SOLID
    r.U32(color);
    r.U32(0);
    r.End(at);
    r.Simple(emr::kSelectObject, kHandleBrush);
    s.brush = true, s.brushColor = color;
}

void Points(Records& r, const std::vector<ScenePoint>& points, bool small) {
    for (const ScenePoint& p : points) {
        if (small) {
            r.U16(static_cast<uint16_t>(static_cast<int16_t>(Unit(p.x))));
            r.U16(static_cast<uint16_t>(static_cast<int16_t>(Unit(p.y))));
        } else {
            r.I32(Unit(p.x)), r.I32(Unit(p.y));
        }
    }
}

// Inclusive bounds of the points in record units; whether they fit 16 bits.
bool Bounds(Records& r, const std::vector<ScenePoint>& points, int32_t grow) {
    int32_t l = INT_MAX, t = INT_MAX, rt = INT_MIN, b = INT_MIN;
    for (const ScenePoint& p : points) {
        l = std::min(l, Unit(p.x)), rt = std::max(rt, Unit(p.x));
        t = std::min(t, Unit(p.y)), b = std::max(b, Unit(p.y));
    }
    r.Rect(l - grow, t - grow, rt + grow, b + grow);
    return l >= SHRT_MIN && t >= SHRT_MIN && rt <= SHRT_MAX && b <= SHRT_MAX;
}

void Shape(Records& r, const std::vector<ScenePoint>& points, uint32_t wide, uint32_t small, int32_t grow) {
    // The 16-bit form when every point fits: two thirds of the size.
    Records probe;
    const bool fits = Bounds(probe, points, grow);
    const size_t at = r.Begin(fits ? small : wide);
    r.bytes.insert(r.bytes.end(), probe.bytes.begin(), probe.bytes.end());
    r.U32(static_cast<uint32_t>(points.size()));
    Points(r, points, fits);
    r.End(at);
}

void WritePolygon(Records& r, State& s, const ExportScene::Polygon& p) {
    // Without an outline of its own a polygon is outlined thinly in its
    // fill colour, so that anti-aliasing readers show no seams.
    const uint32_t stroke = p.strokeWidth > 0 ? p.stroke : p.fill;
    const int32_t width = std::max(1, Unit(p.strokeWidth > 0 ? p.strokeWidth : 0.5));
    SelectPen(r, s, stroke & 0xFFFFFF, width);
    SelectBrush(r, s, p.fill & 0xFFFFFF);
    Shape(r, p.points, emr::kPolygon, emr::kPolygon16, width);
}

void WritePolyline(Records& r, State& s, const ExportScene::Polyline& p) {
    const int32_t width = std::max(1, Unit(p.width));
    SelectPen(r, s, p.color & 0xFFFFFF, width);
    Shape(r, p.points, emr::kPolyline, emr::kPolyline16, width);
}

void SelectFont(Records& r, State& s, const SceneText& text, double size) {
    const int32_t height = -std::max(1, Unit(size));  // negative: the em height
    const int32_t escapement = static_cast<int32_t>(std::lround(text.Angle() * 1800.0 / 3.14159265358979323846));
    std::vector<uint8_t> key(12);
    std::memcpy(key.data(), &height, 4);
    std::memcpy(key.data() + 4, &escapement, 4);
    key[8] = text.Bold(), key[9] = text.Italic();
    key.insert(key.end(), text.Face().begin(), text.Face().end());
    if (s.font && key == s.fontKey) return;
    if (s.font) {
        r.Simple(emr::kSelectObject, kSystemFont);
        r.Simple(emr::kDeleteObject, kHandleFont);
    }
    const size_t at = r.Begin(emr::kExtCreateFontIndirectW);
    r.U32(kHandleFont);
    r.I32(height), r.I32(0), r.I32(escapement), r.I32(escapement);
    r.I32(text.Bold() ? 700 : 400);
    r.bytes.push_back(text.Italic() ? 1 : 0);
    r.bytes.push_back(0), r.bytes.push_back(0);  // underline, strike-out
    r.bytes.push_back(1);                        // DEFAULT_CHARSET
    r.bytes.push_back(0), r.bytes.push_back(0);  // precisions
    r.bytes.push_back(4);                        // ANTIALIASED_QUALITY
    r.bytes.push_back(0x20);                     // FF_SWISS | DEFAULT_PITCH
    const std::u32string face = SceneText::CodePoints(text.Face());
    for (size_t i = 0; i < 32; ++i) r.U16(i < face.size() && i < 31 && face[i] < 0x10000 ? uint16_t(face[i]) : 0);
    r.End(at);
    r.Simple(emr::kSelectObject, kHandleFont);
    s.font = true, s.fontKey = std::move(key);
}

void WriteText(Records& r, State& s, const ExportScene::Text& t) {
    const SceneText text(t);
    if (s.textColor != (t.color & 0xFFFFFF)) {
        r.Simple(emr::kSetTextColor, t.color & 0xFFFFFF);
        s.textColor = t.color & 0xFFFFFF;
    }
    const double c = std::cos(text.Angle()), sn = std::sin(text.Angle());
    double pen = 0;
    for (const SceneText::Run& run : text.Runs()) {
        SelectFont(r, s, text, run.size);
        // The run's baseline start: along the text, then up by its rise.
        const double x = text.BaselineX() + pen * c - run.rise * sn;
        const double y = text.BaselineY() - pen * sn - run.rise * c;
        pen += run.width;
        std::u16string utf16;
        std::vector<int32_t> advances;
        for (char32_t cp : SceneText::CodePoints(run.text)) {
            const int32_t advance = Unit(SceneText::AdvanceEm(cp) * run.size);
            if (cp >= 0x10000) {
                cp -= 0x10000;
                utf16 += char16_t(0xD800 + (cp >> 10));
                utf16 += char16_t(0xDC00 + (cp & 0x3FF));
                advances.push_back(advance);
                advances.push_back(0);
            } else {
                utf16 += char16_t(cp);
                advances.push_back(advance);
            }
        }
        if (utf16.empty()) continue;
        const int32_t ux = Unit(x), uy = Unit(y), extent = Unit(run.width + run.size);
        const size_t at = r.Begin(emr::kExtTextOutW);
        r.Rect(ux - extent, uy - extent, ux + extent, uy + extent);  // bounds: the turned text's reach
        r.U32(kGraphicsCompatible);
        r.F32(0), r.F32(0);
        const uint32_t textOffset = 76;  // from the record's start to the string
        const auto chars = static_cast<uint32_t>(utf16.size());
        const uint32_t dxOffset = textOffset + (chars * 2 + 3) / 4 * 4;
        r.I32(ux), r.I32(uy);
        r.U32(chars);
        r.U32(textOffset);
        r.U32(0);               // options
        r.Rect(0, 0, -1, -1);   // no clipping rectangle
        r.U32(dxOffset);
        for (char16_t unit : utf16) r.U16(static_cast<uint16_t>(unit));
        while ((r.bytes.size() - at) % 4) r.bytes.push_back(0);
        for (int32_t advance : advances) r.I32(advance);
        r.End(at);
    }
}

void WriteImage(Records& r, const ExportScene::Image& image) {
    const int32_t w = image.pixelWidth, h = image.pixelHeight;
    const uint32_t rowBytes = (static_cast<uint32_t>(w) * 3 + 3) / 4 * 4;
    const uint32_t bits = rowBytes * static_cast<uint32_t>(h);
    const int32_t left = Unit(image.left), top = Unit(image.top);
    const int32_t width = Unit(image.width), height = Unit(image.height);
    const size_t at = r.Begin(emr::kStretchDiBits);
    r.Rect(left, top, left + width - 1, top + height - 1);
    r.I32(left), r.I32(top), r.I32(0), r.I32(0), r.I32(w), r.I32(h);
    r.U32(80), r.U32(40), r.U32(120), r.U32(bits);  // header and bits follow the record's fields
    r.U32(0);                                      // DIB_RGB_COLORS
    r.U32(0x00CC0020);                             // SRCCOPY
    r.I32(width), r.I32(height);
    // BITMAPINFOHEADER: 24 bits, rows bottom first.
    r.U32(40), r.I32(w), r.I32(h), r.U16(1), r.U16(24), r.U32(0), r.U32(bits), r.I32(3780), r.I32(3780), r.U32(0),
        r.U32(0);
    for (int32_t y = h - 1; y >= 0; --y) {
        const uint32_t* row = image.pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(w);
        for (int32_t x = 0; x < w; ++x) {
            r.bytes.push_back(static_cast<uint8_t>(row[x] >> 16));  // B, G, R
            r.bytes.push_back(static_cast<uint8_t>(row[x] >> 8));
            r.bytes.push_back(static_cast<uint8_t>(row[x]));
        }
        for (uint32_t pad = static_cast<uint32_t>(w) * 3; pad < rowBytes; ++pad) r.bytes.push_back(0);
    }
    r.End(at);
}

void WriteHeader(Records& r, const ExportScene& scene) {
    // The application and the picture, each terminated, then one more terminator.
    static const std::u16string kDescription(u"Vexplot\0Plot\0\0", 14);
    const int32_t w = scene.width * EmfWriter::kUnitsPerPixel, h = scene.height * EmfWriter::kUnitsPerPixel;
    const size_t at = r.Begin(emr::kHeader);
    r.Rect(0, 0, w - 1, h - 1);  // bounds, inclusive, in device units
    // The frame in hundredths of a millimetre: the picture at 96 dpi.
    r.Rect(0, 0, static_cast<int32_t>(std::lround(scene.width * 2540.0 / 96.0)) - 1,
           static_cast<int32_t>(std::lround(scene.height * 2540.0 / 96.0)) - 1);
    r.U32(emr::kSignature);
    r.U32(0x10000);  // version
    r.U32(0);        // file size, patched at the end
    r.U32(0);        // record count, patched at the end
    r.U16(static_cast<uint16_t>(kHandles));
    r.U16(0);
    r.U32(static_cast<uint32_t>(kDescription.size()));
    r.U32(kHeaderSize);
    r.U32(0);  // palette entries
    // The reference device: a page of the picture's size at kDpi.
    r.I32(w), r.I32(h);
    const int32_t mmW = std::max(1, static_cast<int32_t>(std::lround(w * 25.4 / EmfWriter::kDpi)));
    const int32_t mmH = std::max(1, static_cast<int32_t>(std::lround(h * 25.4 / EmfWriter::kDpi)));
    r.I32(mmW), r.I32(mmH);
    r.U32(0), r.U32(0), r.U32(0);  // no pixel format, not OpenGL
    r.I32(static_cast<int32_t>(std::lround(w * 25400.0 / EmfWriter::kDpi)));
    r.I32(static_cast<int32_t>(std::lround(h * 25400.0 / EmfWriter::kDpi)));
    for (char16_t unit : kDescription) r.U16(static_cast<uint16_t>(unit));
    r.End(at);
}

}  // namespace

std::vector<uint8_t> EmfWriter::Write(const ExportScene& scene) {
    Records r;
    WriteHeader(r, scene);
    r.Simple(emr::kSetMapMode, kMapModeText);
    r.Simple(emr::kSetBkMode, kTransparent);
    r.Simple(emr::kSetTextAlign, kAlignBaseline | kAlignLeft);
    State state;
    ExportScene::Polygon page{{{0, 0}, {float(scene.width), 0}, {float(scene.width), float(scene.height)},
                               {0, float(scene.height)}},
                              scene.background, scene.background, 0};
    WritePolygon(r, state, page);
    for (const ExportScene::Item& item : scene.items) {
        if (const auto* polygon = std::get_if<ExportScene::Polygon>(&item)) WritePolygon(r, state, *polygon);
        else if (const auto* line = std::get_if<ExportScene::Polyline>(&item)) WritePolyline(r, state, *line);
        else if (const auto* text = std::get_if<ExportScene::Text>(&item)) WriteText(r, state, *text);
        else if (const auto* image = std::get_if<ExportScene::Image>(&item)) WriteImage(r, *image);
    }
    const size_t eof = r.Begin(emr::kEof);
    r.U32(0), r.U32(16), r.U32(20);
    r.End(eof);
    r.Patch(48, static_cast<uint32_t>(r.bytes.size()));
    r.Patch(52, r.count);
    return std::move(r.bytes);
}

}  // namespace vexplot
