#pragma once
#include <cstdint>
#include <string_view>

namespace vexplot {

// Section kinds of the info window; each is also its bit in the visibility
// mask and its place in the display order (ascending code, top to bottom).
enum class InfoKind : int32_t {
    Position = 1,
    Marker = 2,
    Tracer = 4,
    DiffTracer = 8,
    Region = 16,
    Zoom = 32,
};

// A section of the info window as its owner holds it. 0 is never a
// section; a handle of a removed section is refused by every operation.
using InfoSection = uint32_t;
inline constexpr InfoSection kNoSection = 0;

// The info window as the model objects see it: they open a section, fill
// its lines with finished text and remove it when they go away. Colours are
// 0x00BBGGRR; 0 means "the window's text colour". Texts are UTF-8.
class IInfoWindow {
public:
    // A new section of `kind` with its header line; sections stay grouped
    // by kind in ascending order, the newest of a kind last.
    virtual InfoSection AddSection(int32_t kind, std::string_view header, uint32_t color) = 0;
    // Appends a line to the section (tabs become three blanks); false for
    // an unknown section.
    virtual bool AddLine(InfoSection section, std::string_view text, uint32_t color) = 0;
    // Replaces line `index` (1 = the first line after the header); false
    // for an unknown section or line.
    virtual bool SetLine(InfoSection section, int32_t index, std::string_view text, uint32_t color) = 0;
    // Replaces the header line's text.
    virtual bool SetHeader(InfoSection section, std::string_view text, uint32_t color) = 0;
    // Removes the section with its lines; false for an unknown section.
    virtual bool RemoveSection(InfoSection section) = 0;

protected:
    ~IInfoWindow() = default;
};

}  // namespace vexplot
