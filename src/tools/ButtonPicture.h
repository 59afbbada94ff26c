#pragma once
#include <cstdint>

#include "model/RgbaRaster.h"

namespace vexplot {

// The face of a title-bar button: a raised and a sunken picture of the
// button's size, drawn without any window system. The pictures are drawn
// with a key colour where the button's own background belongs and are
// recoloured when loaded, so the face takes the colour of the buttons around
// it whatever colour the picture was drawn on.
class ButtonPicture {
public:
    // The colour the pictures are drawn on (light grey, as stored faces use).
    static constexpr uint32_t kKeyColor = 0xC0C0C0;
    // The button-face colour of the default theme.
    static constexpr uint32_t kButtonFace = 0xF0F0F0;
    // Edge colours of the bevel.
    static constexpr uint32_t kHighlight = 0xFFFFFF;
    static constexpr uint32_t kShadow = 0xA0A0A0;
    static constexpr uint32_t kDarkShadow = 0x696969;

    ButtonPicture() = default;
    // Draws both faces at `width` x `height` and recolours `keyColor` pixels
    // to `faceColor`.
    ButtonPicture(uint32_t width, uint32_t height, uint32_t faceColor = kButtonFace);

    // getters:
    const RgbaRaster& Raised() const { return raised_; }
    const RgbaRaster& Sunken() const { return sunken_; }
    uint32_t FaceColor() const { return faceColor_; }

    // Sets every pixel of `picture` that has `keyColor` to `faceColor`,
    // column by column over the picture's width and height.
    static void Recolor(RgbaRaster& picture, uint32_t keyColor, uint32_t faceColor);
    // A face on the key colour: a two-pixel bevel, light on the top and left
    // edges when raised, dark there when sunken.
    static RgbaRaster DrawFace(uint32_t width, uint32_t height, bool sunken);

private:
    RgbaRaster raised_;
    RgbaRaster sunken_;
    uint32_t faceColor_ = kButtonFace;
};

}  // namespace vexplot
