#pragma once
#include <cstdint>
#include <vector>

#include "engine/ExportScene.h"

namespace vexplot {

// An exported scene as an Enhanced Metafile: the header with the picture's
// bounds and frame, then pens, brushes and fonts made as they change,
// polygons, polylines, texts (UTF-16 with their advance widths) and images
// as device-independent bitmaps, then the end-of-file record.
//
// A scene pixel is a 96-dpi pixel of the picture; the metafile records
// coordinates in units a quarter of that (a 384-dpi reference device), so
// that vertices keep their fractions and lines their thin widths.
class EmfWriter {
public:
    static constexpr int32_t kUnitsPerPixel = 4;
    static constexpr int32_t kDpi = 96 * kUnitsPerPixel;

    static std::vector<uint8_t> Write(const ExportScene& scene);
};

// The record types the writer uses, as the format numbers them.
namespace emr {
inline constexpr uint32_t kHeader = 1;
inline constexpr uint32_t kPolygon = 3;
inline constexpr uint32_t kPolyline = 4;
inline constexpr uint32_t kEof = 14;
inline constexpr uint32_t kSetMapMode = 17;
inline constexpr uint32_t kSetBkMode = 18;
inline constexpr uint32_t kSetTextAlign = 22;
inline constexpr uint32_t kSetTextColor = 24;
inline constexpr uint32_t kSelectObject = 37;
inline constexpr uint32_t kCreatePen = 38;
inline constexpr uint32_t kCreateBrushIndirect = 39;
inline constexpr uint32_t kDeleteObject = 40;
inline constexpr uint32_t kStretchDiBits = 81;
inline constexpr uint32_t kExtCreateFontIndirectW = 82;
inline constexpr uint32_t kExtTextOutW = 84;
inline constexpr uint32_t kPolygon16 = 86;
inline constexpr uint32_t kPolyline16 = 87;
inline constexpr uint32_t kSignature = 0x464D4520;  // " EMF"
}  // namespace emr

}  // namespace vexplot
