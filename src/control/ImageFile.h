#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vexplot {

// Writes a picture of 0x00BBGGRR pixels (rows top first, no padding) as a
// PNG (through libpng) or a 24-bit BMP. The file is replaced atomically: the
// bytes go to a temporary file beside the target that is renamed over it,
// so a failure never destroys an existing file.
class ImageFile {
public:
    struct Image {
        std::span<const uint32_t> pixels;  // width x height
        int32_t width = 0;
        int32_t height = 0;
    };

    // By the extension of `path` (".png" or ".bmp", either case). Returns
    // an empty string on success, else what went wrong, naming the file.
    static std::string Save(const std::string& path, const Image& image);
    static std::string SavePng(const std::string& path, const Image& image);
    static std::string SaveBmp(const std::string& path, const Image& image);

    // The encoded bytes (exposed for tests and for hosts that stream them).
    // Empty when the image is empty or inconsistent.
    static std::vector<uint8_t> EncodePng(const Image& image);
    static std::vector<uint8_t> EncodeBmp(const Image& image);
};

}  // namespace vexplot
