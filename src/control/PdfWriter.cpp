#include "control/PdfWriter.h"

#include <zlib.h>

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string>

#include "control/SceneText.h"

namespace vexplot {

namespace {

constexpr double kPointsPerPixel = 72.0 / 96.0;
// The four Helvetica faces: plain, bold, oblique, bold oblique.
constexpr const char* kFaces[4] = {"Helvetica", "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique"};

void Number(std::string& out, double v) {
    const double rounded = std::round(v * 100.0) / 100.0;
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof(buffer), rounded == 0 ? 0.0 : rounded);
    out.append(buffer, result.ptr);
}

void Color(std::string& out, uint32_t color, const char* op) {
    for (int shift : {0, 8, 16}) {
        Number(out, ((color >> shift) & 0xFF) / 255.0);
        out += ' ';
    }
    out += op;
    out += '\n';
}

std::string Deflate(const std::string& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string out(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(data.data()),
                  static_cast<uLong>(data.size()), 6) != Z_OK)
        throw std::runtime_error("the PDF stream could not be compressed");
    out.resize(size);
    return out;
}

// Colours set now, so that each operator is written only when it changes.
struct State {
    uint32_t fill = 0xFFFFFFFF, stroke = 0xFFFFFFFF;
    double width = -1;
};

void SetFill(std::string& out, State& s, uint32_t color) {
    if (s.fill == (color & 0xFFFFFF)) return;
    s.fill = color & 0xFFFFFF;
    Color(out, s.fill, "rg");
}

void SetStroke(std::string& out, State& s, uint32_t color, double width) {
    if (s.stroke != (color & 0xFFFFFF)) {
        s.stroke = color & 0xFFFFFF;
        Color(out, s.stroke, "RG");
    }
    if (s.width != width) {
        s.width = width;
        Number(out, width);
        out += " w\n";
    }
}

void Path(std::string& out, const std::vector<ScenePoint>& points) {
    for (size_t i = 0; i < points.size(); ++i) {
        Number(out, points[i].x);
        out += ' ';
        Number(out, points[i].y);
        out += i == 0 ? " m " : " l ";
    }
}

void Latin1(std::string& out, std::string_view utf8) {
    for (char32_t cp : SceneText::CodePoints(utf8)) {
        const char c = cp < 0x100 ? static_cast<char>(cp) : '?';
        if (c == '(' || c == ')' || c == '\\') out += '\\';
        out += c;
    }
}

void WriteText(std::string& out, State& s, const ExportScene::Text& t) {
    const SceneText text(t);
    SetFill(out, s, t.color);
    const int face = (text.Bold() ? 1 : 0) + (text.Italic() ? 2 : 0);
    const double c = std::cos(text.Angle()), sn = std::sin(text.Angle());
    double pen = 0;
    out += "BT\n";
    for (const SceneText::Run& run : text.Runs()) {
        const double x = text.BaselineX() + pen * c - run.rise * sn;
        const double y = text.BaselineY() - pen * sn - run.rise * c;
        pen += run.width;
        out += "/F" + std::to_string(face + 1) + ' ';
        Number(out, run.size);
        out += " Tf ";
        // The page is flipped to y down; the text matrix flips the glyphs back.
        for (double v : {c, -sn, -sn, -c, x, y}) {
            Number(out, v);
            out += ' ';
        }
        out += "Tm (";
        Latin1(out, run.text);
        out += ") Tj\n";
    }
    out += "ET\n";
}

class Objects {
public:
    std::string file = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
    std::vector<size_t> offsets;

    int Reserve() {
        offsets.push_back(0);
        return static_cast<int>(offsets.size());
    }
    void Put(int id, const std::string& body) {
        offsets[size_t(id - 1)] = file.size();
        file += std::to_string(id) + " 0 obj\n" + body + "\nendobj\n";
    }
    void PutStream(int id, const std::string& dictionary, const std::string& data) {
        Put(id, "<< " + dictionary + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
                    "\nendstream");
    }
};

}  // namespace

std::vector<uint8_t> PdfWriter::Write(const ExportScene& scene) {
    Objects pdf;
    const int catalog = pdf.Reserve(), pages = pdf.Reserve(), page = pdf.Reserve(), contents = pdf.Reserve();
    int fonts[4];
    for (int& font : fonts) font = pdf.Reserve();

    std::string content;
    content += "1 j 1 J\n";
    Number(content, kPointsPerPixel);
    content += " 0 0 ";
    Number(content, -kPointsPerPixel);
    content += " 0 ";
    Number(content, scene.height * kPointsPerPixel);
    content += " cm\n";
    State state;
    SetFill(content, state, scene.background);
    content += "0 0 " + std::to_string(scene.width) + ' ' + std::to_string(scene.height) + " re f\n";

    std::string xobjects;
    int imageCount = 0;
    for (const ExportScene::Item& item : scene.items) {
        if (const auto* p = std::get_if<ExportScene::Polygon>(&item)) {
            // Without an outline of its own a polygon is outlined thinly in
            // its fill colour: no seams between neighbours.
            SetFill(content, state, p->fill);
            SetStroke(content, state, p->strokeWidth > 0 ? p->stroke : p->fill,
                      p->strokeWidth > 0 ? p->strokeWidth : 0.5);
            Path(content, p->points);
            content += "h B\n";
        } else if (const auto* l = std::get_if<ExportScene::Polyline>(&item)) {
            SetStroke(content, state, l->color, l->width);
            Path(content, l->points);
            content += "S\n";
        } else if (const auto* t = std::get_if<ExportScene::Text>(&item)) {
            WriteText(content, state, *t);
        } else if (const auto* image = std::get_if<ExportScene::Image>(&item)) {
            std::string rgb;
            rgb.reserve(image->pixels.size() * 3);
            for (uint32_t pixel : image->pixels) {
                rgb += static_cast<char>(pixel & 0xFF);
                rgb += static_cast<char>((pixel >> 8) & 0xFF);
                rgb += static_cast<char>((pixel >> 16) & 0xFF);
            }
            const int id = pdf.Reserve();
            pdf.PutStream(id,
                          "/Type /XObject /Subtype /Image /Width " + std::to_string(image->pixelWidth) + " /Height " +
                              std::to_string(image->pixelHeight) +
                              " /ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /FlateDecode",
                          Deflate(rgb));
            const std::string name = "Im" + std::to_string(++imageCount);
            xobjects += '/' + name + ' ' + std::to_string(id) + " 0 R ";
            content += "q ";
            for (double v : {double(image->width), 0.0, 0.0, double(-image->height), double(image->left),
                             double(image->top + image->height)}) {
                Number(content, v);
                content += ' ';
            }
            content += "cm /" + name + " Do Q\n";
        }
    }

    pdf.Put(catalog, "<< /Type /Catalog /Pages " + std::to_string(pages) + " 0 R >>");
    pdf.Put(pages, "<< /Type /Pages /Kids [" + std::to_string(page) + " 0 R] /Count 1 >>");
    std::string size;
    Number(size, scene.width * kPointsPerPixel);
    size += ' ';
    Number(size, scene.height * kPointsPerPixel);
    std::string resources = "/Font <<";
    for (int i = 0; i < 4; ++i) resources += " /F" + std::to_string(i + 1) + ' ' + std::to_string(fonts[i]) + " 0 R";
    resources += " >>";
    if (!xobjects.empty()) resources += " /XObject << " + xobjects + ">>";
    pdf.Put(page, "<< /Type /Page /Parent " + std::to_string(pages) + " 0 R /MediaBox [0 0 " + size +
                      "] /Resources << " + resources + " >> /Contents " + std::to_string(contents) + " 0 R >>");
    pdf.PutStream(contents, "/Filter /FlateDecode", Deflate(content));
    for (int i = 0; i < 4; ++i)
        pdf.Put(fonts[i], std::string("<< /Type /Font /Subtype /Type1 /BaseFont /") + kFaces[i] +
                              " /Encoding /WinAnsiEncoding >>");

    const size_t xref = pdf.file.size();
    pdf.file += "xref\n0 " + std::to_string(pdf.offsets.size() + 1) + "\n0000000000 65535 f \n";
    for (size_t offset : pdf.offsets) {
        char line[24];
        std::snprintf(line, sizeof(line), "%010zu 00000 n \n", offset);
        pdf.file += line;
    }
    pdf.file += "trailer\n<< /Size " + std::to_string(pdf.offsets.size() + 1) + " /Root " + std::to_string(catalog) +
                " 0 R >>\nstartxref\n" + std::to_string(xref) + "\n%%EOF\n";
    return {pdf.file.begin(), pdf.file.end()};
}

}  // namespace vexplot
