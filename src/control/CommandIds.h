#pragma once
#include <cstdint>

// The control's command identifiers: what a menu entry, an accelerator or a
// tool-bar button sends. The numbers are the ones hosts and stored key maps
// have always used, so they never change.
namespace vexplot::cmd {

// properties and objects
inline constexpr int32_t kControlProperties = 32810;
inline constexpr int32_t kObjectProperties = 33001;  // properties of the selected object
inline constexpr int32_t kSelectNext = 33000;        // select the next object

// interaction tools
inline constexpr int32_t kSelect = 32908;
inline constexpr int32_t kPan = 32901;
inline constexpr int32_t kZoom = 32900;
inline constexpr int32_t kLabel = 32906;
inline constexpr int32_t kMarker = 32902;
inline constexpr int32_t kTracer = 32903;
inline constexpr int32_t kDiffTracer = 32904;
inline constexpr int32_t kRegion = 32905;
inline constexpr int32_t kGrid = 32910;
inline constexpr int32_t kMesh = 32907;
inline constexpr int32_t kExternalResampling = 32909;

// view
inline constexpr int32_t k2DMode = 32801;
inline constexpr int32_t k3DMode = 32802;
inline constexpr int32_t kGraphTitle = 32815;
inline constexpr int32_t kInfoWindow = 32911;
inline constexpr int32_t kLegendWindow = 32812;
inline constexpr int32_t kNavigatorWindow = 32813;
inline constexpr int32_t kMaximizeView = 32816;
inline constexpr int32_t kStatusBar = 32814;

// files
inline constexpr int32_t kLoadVexplot = 32798;
inline constexpr int32_t kSaveVexplot = 32799;
inline constexpr int32_t kLoadData = 32808;
inline constexpr int32_t kSaveData = 32809;

// export and print
inline constexpr int32_t kExportBmp = 32915;
inline constexpr int32_t kExportEmf = 32916;
inline constexpr int32_t kCopyToClipboard = 32917;
inline constexpr int32_t kPrintSetup = 32914;
inline constexpr int32_t kPrint = 32913;

// palette
inline constexpr int32_t kEditPalette = 32805;
inline constexpr int32_t kLoadPalette = 32806;
inline constexpr int32_t kSavePalette = 32807;

// help
inline constexpr int32_t kKeyboardMap = 32803;
inline constexpr int32_t kAbout = 57664;

// Opens the control's pop-up menu (Ctrl+F10, the menu key, the "M" button).
inline constexpr int32_t kOpenMenu = 105;

}  // namespace vexplot::cmd
