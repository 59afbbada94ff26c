#include "control/ImageFile.h"

#include <png.h>

#include <algorithm>
#include <cctype>
#include <exception>

#include "com/AtomicFile.h"
#include "com/ComError.h"
#include "com/IStream.h"

namespace vexplot {

namespace {

bool Consistent(const ImageFile::Image& image) {
    return image.width > 0 && image.height > 0 &&
           image.pixels.size() == static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
}

uint8_t Red(uint32_t c) { return static_cast<uint8_t>(c & 0xFF); }
uint8_t Green(uint32_t c) { return static_cast<uint8_t>((c >> 8) & 0xFF); }
uint8_t Blue(uint32_t c) { return static_cast<uint8_t>((c >> 16) & 0xFF); }

void PutLe(std::vector<uint8_t>& out, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

bool EndsWith(const std::string& s, const char* suffix) {
    const std::string tail(suffix);
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

std::string Write(const std::string& path, const std::vector<uint8_t>& bytes) {
    if (bytes.empty()) return "cannot write " + path + ": the image is empty";
    try {
        WriteFileAtomically(path, [&bytes](IStream& stream) {
            uint32_t written = 0;
            ThrowIfFailed(stream.Write(bytes.data(), static_cast<uint32_t>(bytes.size()), &written), IStream::kIid);
        });
        return {};
    } catch (const ComError& e) {
        return "cannot write " + path + ": " + (e.Description().empty() ? HResultWords(e.Code()) : e.Description());
    }
}

}  // namespace

std::vector<uint8_t> ImageFile::EncodePng(const Image& image) {
    if (!Consistent(image)) return {};
    std::vector<uint8_t> rgb;
    rgb.reserve(image.pixels.size() * 3);
    for (uint32_t c : image.pixels) {
        rgb.push_back(Red(c));
        rgb.push_back(Green(c));
        rgb.push_back(Blue(c));
    }
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = 0;
    if (!png_image_write_to_memory(&png, nullptr, &size, 0, rgb.data(), 0, nullptr)) return {};
    std::vector<uint8_t> out(size);
    if (!png_image_write_to_memory(&png, out.data(), &size, 0, rgb.data(), 0, nullptr)) return {};
    out.resize(size);
    return out;
}

std::vector<uint8_t> ImageFile::EncodeBmp(const Image& image) {
    if (!Consistent(image)) return {};
    const auto width = static_cast<uint32_t>(image.width);
    const auto height = static_cast<uint32_t>(image.height);
    const uint32_t rowBytes = (width * 3 + 3) & ~3u;
    const uint32_t imageBytes = rowBytes * height;
    std::vector<uint8_t> out;
    out.reserve(54 + imageBytes);
    // BITMAPFILEHEADER
    out.push_back('B');
    out.push_back('M');
    PutLe(out, 54 + imageBytes, 4);
    PutLe(out, 0, 4);
    PutLe(out, 54, 4);
    // BITMAPINFOHEADER: bottom-up rows, 24 bits, no compression, 96 dpi.
    PutLe(out, 40, 4);
    PutLe(out, width, 4);
    PutLe(out, height, 4);
    PutLe(out, 1, 2);
    PutLe(out, 24, 2);
    PutLe(out, 0, 4);
    PutLe(out, imageBytes, 4);
    PutLe(out, 3780, 4);
    PutLe(out, 3780, 4);
    PutLe(out, 0, 4);
    PutLe(out, 0, 4);
    for (uint32_t y = height; y-- > 0;) {
        const uint32_t* row = image.pixels.data() + static_cast<size_t>(y) * width;
        for (uint32_t x = 0; x < width; ++x) {
            out.push_back(Blue(row[x]));
            out.push_back(Green(row[x]));
            out.push_back(Red(row[x]));
        }
        for (uint32_t pad = width * 3; pad < rowBytes; ++pad) out.push_back(0);
    }
    return out;
}

std::string ImageFile::SavePng(const std::string& path, const Image& image) { return Write(path, EncodePng(image)); }

std::string ImageFile::SaveBmp(const std::string& path, const Image& image) { return Write(path, EncodeBmp(image)); }

std::string ImageFile::Save(const std::string& path, const Image& image) {
    const std::string lower = Lower(path);
    if (EndsWith(lower, ".png")) return SavePng(path, image);
    if (EndsWith(lower, ".bmp")) return SaveBmp(path, image);
    return "cannot write " + path + ": the name must end in .png or .bmp";
}

}  // namespace vexplot
