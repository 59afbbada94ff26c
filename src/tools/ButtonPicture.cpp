#include "tools/ButtonPicture.h"

namespace vexplot {

namespace {

// Paints a one-pixel frame `inset` pixels inside the raster: `topLeft` along
// the top and left edges, `bottomRight` along the bottom and right ones.
void Frame(RgbaRaster& raster, uint32_t inset, uint32_t topLeft, uint32_t bottomRight) {
    const uint32_t w = raster.Width();
    const uint32_t h = raster.Height();
    if (w <= 2 * inset || h <= 2 * inset) return;
    const uint32_t right = w - 1 - inset;
    const uint32_t bottom = h - 1 - inset;
    for (uint32_t x = inset; x <= right; ++x) {
        raster.SetPixel(x, inset, topLeft);
        raster.SetPixel(x, bottom, bottomRight);
    }
    for (uint32_t y = inset; y <= bottom; ++y) {
        raster.SetPixel(inset, y, topLeft);
        raster.SetPixel(right, y, bottomRight);
    }
    // The corner where the two colours meet belongs to the lower edge.
    raster.SetPixel(right, inset, bottomRight);
    raster.SetPixel(inset, bottom, bottomRight);
}

}  // namespace

ButtonPicture::ButtonPicture(uint32_t width, uint32_t height, uint32_t faceColor)
    : raised_(DrawFace(width, height, false)), sunken_(DrawFace(width, height, true)), faceColor_(faceColor) {
    Recolor(raised_, kKeyColor, faceColor_);
    Recolor(sunken_, kKeyColor, faceColor_);
}

void ButtonPicture::Recolor(RgbaRaster& picture, uint32_t keyColor, uint32_t faceColor) {
    for (uint32_t x = 0; x < picture.Width(); ++x)
        for (uint32_t y = 0; y < picture.Height(); ++y)
            if (picture.Pixel(x, y) == keyColor) picture.SetPixel(x, y, faceColor);
}

RgbaRaster ButtonPicture::DrawFace(uint32_t width, uint32_t height, bool sunken) {
    RgbaRaster face(width, height, kKeyColor);
    if (sunken) {
        Frame(face, 0, kDarkShadow, kHighlight);
        Frame(face, 1, kShadow, kKeyColor);
    } else {
        Frame(face, 0, kHighlight, kDarkShadow);
        Frame(face, 1, kKeyColor, kShadow);
    }
    return face;
}

}  // namespace vexplot
