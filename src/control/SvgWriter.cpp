#include "control/SvgWriter.h"

#include <charconv>
#include <cmath>
#include <numbers>

#include "control/ImageFile.h"
#include "control/SceneText.h"

namespace vexplot {

namespace {

// A coordinate with one decimal, enough for a picture and locale-free.
void Number(std::string& out, double v) {
    const double rounded = std::round(v * 10.0) / 10.0;
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof(buffer), rounded == 0 ? 0.0 : rounded,
                                      std::chars_format::fixed, std::fmod(rounded, 1.0) == 0 ? 0 : 1);
    out.append(buffer, result.ptr);
}

void Color(std::string& out, uint32_t color) {
    static constexpr char kHex[] = "0123456789abcdef";
    out += '#';
    for (int shift : {0, 8, 16}) {
        const uint32_t c = (color >> shift) & 0xFF;
        out += kHex[c >> 4];
        out += kHex[c & 15];
    }
}

void Escaped(std::string& out, std::string_view text) {
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default:
            // Control characters are not allowed in XML 1.0.
            if (static_cast<unsigned char>(c) >= 0x20 || c == '\t') out += c;
        }
    }
}

void Points(std::string& out, const std::vector<ScenePoint>& points) {
    out += " points=\"";
    for (size_t i = 0; i < points.size(); ++i) {
        if (i) out += ' ';
        Number(out, points[i].x);
        out += ',';
        Number(out, points[i].y);
    }
    out += '"';
}

std::string Base64(const std::vector<uint8_t>& bytes) {
    static constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t i = 0; i < bytes.size(); i += 3) {
        const uint32_t n = uint32_t(bytes[i]) << 16 | (i + 1 < bytes.size() ? uint32_t(bytes[i + 1]) << 8 : 0) |
                           (i + 2 < bytes.size() ? bytes[i + 2] : 0);
        out += kAlphabet[(n >> 18) & 63];
        out += kAlphabet[(n >> 12) & 63];
        out += i + 1 < bytes.size() ? kAlphabet[(n >> 6) & 63] : '=';
        out += i + 2 < bytes.size() ? kAlphabet[n & 63] : '=';
    }
    return out;
}

void WritePolygon(std::string& out, const ExportScene::Polygon& p) {
    out += "<polygon";
    Points(out, p.points);
    out += " fill=\"";
    Color(out, p.fill);
    // A polygon without an outline of its own gets a hairline in its fill
    // colour: anti-aliased edges of neighbouring polygons would otherwise
    // let the background shine through as seams.
    out += "\" stroke=\"";
    Color(out, p.strokeWidth > 0 ? p.stroke : p.fill);
    if (p.strokeWidth > 0 && p.strokeWidth != 1.0f) {
        out += "\" stroke-width=\"";
        Number(out, p.strokeWidth);
    } else if (p.strokeWidth <= 0) {
        out += "\" stroke-width=\"0.5";
    }
    out += "\"/>\n";
}

void WritePolyline(std::string& out, const ExportScene::Polyline& p) {
    out += "<polyline";
    Points(out, p.points);
    out += " fill=\"none\" stroke=\"";
    Color(out, p.color);
    if (p.width != 1.0f) {
        out += "\" stroke-width=\"";
        Number(out, p.width);
    }
    out += "\"/>\n";
}

void WriteText(std::string& out, const ExportScene::Text& t) {
    const SceneText layout(t);
    out += "<text x=\"";
    Number(out, layout.BaselineX());
    out += "\" y=\"";
    Number(out, layout.BaselineY());
    out += "\" font-family=\"";
    Escaped(out, layout.Face());
    out += ", sans-serif\" font-size=\"";
    Number(out, layout.EmSize());
    out += "\" fill=\"";
    Color(out, t.color);
    out += '"';
    if (layout.Bold()) out += " font-weight=\"bold\"";
    if (layout.Italic()) out += " font-style=\"italic\"";
    if (layout.Angle() != 0) {
        out += " transform=\"rotate(";
        Number(out, -layout.Angle() * 180.0 / std::numbers::pi);
        out += ' ';
        Number(out, layout.BaselineX());
        out += ' ';
        Number(out, layout.BaselineY());
        out += ")\"";
    }
    out += '>';
    for (const SceneText::Run& run : layout.Runs()) {
        if (run.rise == 0) {
            Escaped(out, run.text);
            continue;
        }
        out += "<tspan font-size=\"";
        Number(out, run.size);
        out += "\" dy=\"";
        Number(out, -run.rise);
        out += "\">";
        Escaped(out, run.text);
        out += "</tspan>";
    }
    out += "</text>\n";
}

void WriteImage(std::string& out, const ExportScene::Image& image) {
    const std::vector<uint8_t> png = ImageFile::EncodePng({image.pixels, image.pixelWidth, image.pixelHeight});
    if (png.empty()) return;
    out += "<image x=\"";
    Number(out, image.left);
    out += "\" y=\"";
    Number(out, image.top);
    out += "\" width=\"";
    Number(out, image.width);
    out += "\" height=\"";
    Number(out, image.height);
    out += "\" preserveAspectRatio=\"none\" xlink:href=\"data:image/png;base64,";
    out += Base64(png);
    out += "\"/>\n";
}

}  // namespace

std::string SvgWriter::Write(const ExportScene& scene) {
    std::string out;
    out.reserve(scene.items.size() * 80 + 512);
    out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\"";
    out += " width=\"" + std::to_string(scene.width) + "\" height=\"" + std::to_string(scene.height) + "\"";
    out += " viewBox=\"0 0 " + std::to_string(scene.width) + " " + std::to_string(scene.height) + "\"";
    out += " stroke-linejoin=\"round\" stroke-linecap=\"round\">\n";
    out += "<rect width=\"100%\" height=\"100%\" fill=\"";
    Color(out, scene.background);
    out += "\"/>\n";
    for (const ExportScene::Item& item : scene.items) {
        if (const auto* polygon = std::get_if<ExportScene::Polygon>(&item)) WritePolygon(out, *polygon);
        else if (const auto* line = std::get_if<ExportScene::Polyline>(&item)) WritePolyline(out, *line);
        else if (const auto* text = std::get_if<ExportScene::Text>(&item)) WriteText(out, *text);
        else if (const auto* image = std::get_if<ExportScene::Image>(&item)) WriteImage(out, *image);
    }
    out += "</svg>\n";
    return out;
}

}  // namespace vexplot
