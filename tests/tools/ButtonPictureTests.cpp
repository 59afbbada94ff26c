#include <gtest/gtest.h>

#include "tools/ButtonPicture.h"

namespace vexplot {
namespace {

TEST(ButtonPictureTest, RecolorReplacesOnlyTheKeyColourOverTheWholePicture) {
    // Wider than high, with key pixels in the far corners, so that a loop
    // with width and height swapped misses some or runs out of range.
    RgbaRaster picture(7, 3, 0x123456);
    picture.SetPixel(6, 0, ButtonPicture::kKeyColor);
    picture.SetPixel(6, 2, ButtonPicture::kKeyColor);
    picture.SetPixel(0, 2, ButtonPicture::kKeyColor);
    picture.SetPixel(3, 1, ButtonPicture::kKeyColor + 1);  // near the key, not it
    ButtonPicture::Recolor(picture, ButtonPicture::kKeyColor, 0xF0F0F0);
    for (uint32_t y = 0; y < 3; ++y)
        for (uint32_t x = 0; x < 7; ++x) {
            const bool key = (x == 6 && y != 1) || (x == 0 && y == 2);
            const uint32_t expected = key ? 0xF0F0F0 : (x == 3 && y == 1 ? ButtonPicture::kKeyColor + 1 : 0x123456);
            EXPECT_EQ(picture.Pixel(x, y), expected) << x << "," << y;
        }
}

TEST(ButtonPictureTest, FacesTakeTheFaceColourAndBevelOppositeWays) {
    const ButtonPicture faces(20, 16, 0x0A0B0C);
    for (const RgbaRaster* face : {&faces.Raised(), &faces.Sunken()}) {
        ASSERT_EQ(face->Width(), 20u);
        ASSERT_EQ(face->Height(), 16u);
        EXPECT_EQ(face->Pixel(10, 8), 0x0A0B0Cu);
        for (uint32_t c : face->Pixels()) EXPECT_NE(c, ButtonPicture::kKeyColor);
    }
    EXPECT_EQ(faces.Raised().Pixel(0, 0), ButtonPicture::kHighlight);
    EXPECT_EQ(faces.Raised().Pixel(19, 15), ButtonPicture::kDarkShadow);
    EXPECT_EQ(faces.Sunken().Pixel(0, 0), ButtonPicture::kDarkShadow);
    EXPECT_EQ(faces.Sunken().Pixel(19, 15), ButtonPicture::kHighlight);
}

TEST(ButtonPictureTest, TinyAndEmptyFacesAreDrawable) {
    for (uint32_t size : {0u, 1u, 2u, 3u}) {
        const ButtonPicture faces(size, size);
        EXPECT_EQ(faces.Raised().Width(), size);
    }
}

}  // namespace
}  // namespace vexplot
