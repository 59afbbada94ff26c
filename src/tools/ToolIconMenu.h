#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "site/MenuModel.h"
#include "model/RgbaRaster.h"
#include "tools/ButtonPicture.h"

namespace vexplot {

// One button of a toolbar description: the command it stands for (0 for a
// separator, which the menu leaves out), its picture, and the texts of the
// command (menu text with its mnemonic, status prompt).
struct ToolbarButton {
    int32_t command = 0;
    std::shared_ptr<const RgbaRaster> picture;  // drawn on ToolIconMenu::kMaskColor
    std::string text;
    std::string prompt;
    bool enabled = true;
};

// The menu of tool icons the title bar offers for choosing the active tool:
// one 32 x 32 icon entry per toolbar button with a command, laid out in
// columns of a given count, the current tool's entry checked.
class ToolIconMenu {
public:
    static constexpr uint32_t kIconSize = 32;
    // Where a toolbar picture shows the icon's background.
    static constexpr uint32_t kMaskColor = ButtonPicture::kKeyColor;

    // The tools' commands.
    static constexpr int32_t kSelect = 32908;
    static constexpr int32_t kPan = 32901;
    static constexpr int32_t kZoom = 32900;
    static constexpr int32_t kLabel = 32906;
    static constexpr int32_t kMarker = 32902;
    static constexpr int32_t kTracer = 32903;
    static constexpr int32_t kDifferenceTracer = 32904;
    static constexpr int32_t kRegion = 32905;

    // Builds the entries of `toolbar` with `columns` entries per column
    // (entries whose index is a non-zero multiple of it start a new column;
    // less than 1 counts as 1). Icons are the pictures on `background`,
    // centred and clipped to 32 x 32. The first entry is checked and is the
    // current command (0 when there is no entry).
    ToolIconMenu(const std::vector<ToolbarButton>& toolbar, int32_t columns,
                 uint32_t background = ButtonPicture::kButtonFace);

    // getters:
    const MenuModel& Menu() const { return menu_; }
    int32_t CurrentCommand() const { return current_; }

    // setters:
    // Moves the check mark to the entry of `command`; false (and no change)
    // when no entry has it.
    bool SetCurrent(int32_t command);
    // Enables or disables the entry of `command`; false when no entry has it.
    bool SetEnabled(int32_t command, bool enabled);

    // The eight tools (select, pan, zoom, label, marker, tracer, difference
    // tracer, region) with their pictures and texts, disabled until the
    // tools themselves are available.
    static std::vector<ToolbarButton> StandardToolbar();
    // The 32 x 32 picture of a tool's command on kMaskColor; a blank picture
    // for other commands. `scale` (a screen's pixel ratio, 1 to 8) draws
    // the same picture at ScaledSize(scale) pixels square.
    static RgbaRaster ToolPicture(int32_t command, double scale = 1.0);
    // `picture` centred on an icon of ScaledSize(scale) pixels square of
    // `background`, mask pixels showing the background.
    static RgbaRaster MakeIcon(const RgbaRaster& picture, uint32_t background, double scale = 1.0);
    static uint32_t ScaledSize(double scale);

private:
    MenuItem* Find(int32_t command);

    MenuModel menu_;
    int32_t current_ = 0;
};

}  // namespace vexplot
