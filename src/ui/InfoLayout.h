#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "site/IControlSite.h"
#include "ui/InfoEntryList.h"

namespace vexplot {

// One shown line of the info window's text picture.
struct InfoLine {
    int32_t top = 0;         // in the picture: row index x line height
    std::string text;
    uint32_t color = 0;      // 0x00BBGGRR, already resolved (never 0 for "the text colour")
    size_t entryIndex = 0;   // the line's place in InfoEntryList::Entries()
};

// The whole text of the info window as one picture: every visible entry one
// line high, top to bottom, drawn at x = InfoLayout::kTextX.
struct InfoContent {
    int32_t lineHeight = 0;
    int32_t width = 0;
    int32_t height = 0;
    std::vector<InfoLine> lines;
};

// Where the info window's view of its picture stands. `position` counts
// client heights (a "page" of the scroll bar, whose page size is 1), in
// 0 ... range; `offset` is the first picture row shown, in pixels.
struct InfoScroll {
    int32_t position = 0;
    int32_t range = 0;
    int32_t offset = 0;
    friend bool operator==(const InfoScroll&, const InfoScroll&) = default;
};

enum class InfoScrollAction : int32_t { LineUp, LineDown, PageUp, PageDown, ThumbTrack };

// The info window's arithmetic: the picture's size from the font and the
// entries, and the scroll rules. Pure functions, shared by every site.
class InfoLayout {
public:
    static constexpr int32_t kTextX = 5;
    // Extra characters' room beside the longest entry.
    static constexpr int32_t kSpareCharacters = 5;
    // A client area this low (or lower) is not scrolled: the state is kept
    // until the window has room again.
    static constexpr int32_t kMinScrollHeight = 5;

    // Line height = font height + external leading; width = maximal
    // character width x (characters of the longest entry, shown or not, + 5);
    // height = line height x (shown lines + 1). Line colours of 0 become
    // `textColor`.
    static InfoContent Content(const std::vector<InfoEntry>& entries, const FontMetrics& metrics,
                               uint32_t textColor);
    // Characters of UTF-8 text (code points; a stray byte counts as one).
    static int32_t Characters(std::string_view text);

    // The scroll state for `position` over a picture `contentHeight` high
    // seen through `clientHeight` pixels: range = content / client (0 when
    // the picture fits), the position clamped to 0 ... range, offset =
    // client x position but never past the last full client height.
    // `previous` is kept when the client area is too low to scroll.
    static InfoScroll Scroll(int32_t position, int32_t contentHeight, int32_t clientHeight,
                             const InfoScroll& previous);
    // The scroll bar's page step: a tenth of the range, at least 1.
    static int32_t PageStep(int32_t range);
    // The position an action leads to from `scroll`, clamped to 0 ... range;
    // `thumb` is the thumb's position for ThumbTrack.
    static int32_t Move(const InfoScroll& scroll, InfoScrollAction action, int32_t thumb);
};

}  // namespace vexplot
