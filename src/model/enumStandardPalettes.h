#pragma once
#include <cstdint>

namespace vexplot {

// The standard palettes as the automation interface publishes them: values
// of the control property PaletteId. The names are the published ones; the
// colours each value really produces do not follow them (see
// CGD_Palette::SetStandard).
enum class enumStandardPalettes : int32_t {
    User_Defined = 0,
    GreyScale = 1,
    GreyScale_Banded = 2,
    GreyScale_Inverted = 3,
    Rainbow = 4,
    Rainbow_Banded = 5,
    Rainbow_Inverted = 6,
};

}  // namespace vexplot
