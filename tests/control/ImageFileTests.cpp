#include <gtest/gtest.h>
#include <png.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "control/ImageFile.h"
#include "support/TempDir.h"

namespace vexplot::test {
namespace {

// 3 x 2 pixels, 0x00BBGGRR: red, green, blue / white, black, grey.
const std::vector<uint32_t> kPixels = {0x0000FF, 0x00FF00, 0xFF0000, 0xFFFFFF, 0x000000, 0x808080};
const ImageFile::Image kImage{kPixels, 3, 2};

std::vector<uint8_t> ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(ImageFile, PngDecodesToTheSameColours) {
    const std::vector<uint8_t> bytes = ImageFile::EncodePng(kImage);
    ASSERT_FALSE(bytes.empty());
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_memory(&png, bytes.data(), bytes.size()));
    png.format = PNG_FORMAT_RGB;
    ASSERT_EQ(png.width, 3u);
    ASSERT_EQ(png.height, 2u);
    std::vector<uint8_t> rgb(PNG_IMAGE_SIZE(png));
    ASSERT_TRUE(png_image_finish_read(&png, nullptr, rgb.data(), 0, nullptr));
    for (size_t i = 0; i < kPixels.size(); ++i) {
        const uint32_t c = rgb[3 * i] | (rgb[3 * i + 1] << 8) | (rgb[3 * i + 2] << 16);
        EXPECT_EQ(c, kPixels[i]) << i;
    }
}

TEST(ImageFile, BmpIsBottomUpBgrWithPaddedRows) {
    const std::vector<uint8_t> b = ImageFile::EncodeBmp(kImage);
    // 54 header bytes, rows of 9 bytes padded to 12.
    ASSERT_EQ(b.size(), 54u + 24u);
    EXPECT_EQ(b[0], 'B');
    EXPECT_EQ(b[1], 'M');
    EXPECT_EQ(b[2] | (b[3] << 8), 78);
    EXPECT_EQ(b[28], 24);  // bits per pixel
    // The first stored row is the bottom one: white, black, grey as B, G, R.
    EXPECT_EQ(std::vector<uint8_t>(b.begin() + 54, b.begin() + 66),
              (std::vector<uint8_t>{255, 255, 255, 0, 0, 0, 128, 128, 128, 0, 0, 0}));
    EXPECT_EQ(std::vector<uint8_t>(b.begin() + 66, b.begin() + 75), (std::vector<uint8_t>{0, 0, 255, 0, 255, 0, 255, 0, 0}));
}

TEST(ImageFile, SaveChoosesByExtensionAndKeepsAnExistingFileOnFailure) {
    TempDir dir;
    const std::string png = dir.File("view.PNG");
    const std::string bmp = dir.File("view.bmp");
    EXPECT_EQ(ImageFile::Save(png, kImage), "");
    EXPECT_EQ(ImageFile::Save(bmp, kImage), "");
    EXPECT_EQ(ReadFile(png), ImageFile::EncodePng(kImage));
    EXPECT_EQ(ReadFile(bmp), ImageFile::EncodeBmp(kImage));

    EXPECT_NE(ImageFile::Save(dir.File("view.gif"), kImage).find("must end in .png or .bmp"), std::string::npos);
    const std::string missingFolder = dir.File("no/such/folder/view.png");
    EXPECT_NE(ImageFile::Save(missingFolder, kImage).find(missingFolder), std::string::npos);
    // An inconsistent image is refused before the old file is touched.
    const ImageFile::Image broken{kPixels, 4, 2};
    EXPECT_NE(ImageFile::Save(png, broken), "");
    EXPECT_EQ(ReadFile(png), ImageFile::EncodePng(kImage));
}

}  // namespace
}  // namespace vexplot::test
