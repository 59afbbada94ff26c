#include "ui/InfoLayout.h"

#include <algorithm>

namespace vexplot {

int32_t InfoLayout::Characters(std::string_view text) {
    int32_t count = 0;
    for (const char c : text)
        if ((static_cast<uint8_t>(c) & 0xC0) != 0x80) ++count;
    return count;
}

InfoContent InfoLayout::Content(const std::vector<InfoEntry>& entries, const FontMetrics& metrics,
                                uint32_t textColor) {
    InfoContent content;
    content.lineHeight = metrics.height + metrics.externalLeading;
    int32_t longest = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        const InfoEntry& e = entries[i];
        longest = std::max(longest, Characters(e.text));
        if (!e.visible) continue;
        const int32_t top = static_cast<int32_t>(content.lines.size()) * content.lineHeight;
        content.lines.push_back(InfoLine{top, e.text, e.color != 0 ? e.color : textColor, i});
    }
    content.width = metrics.maxCharWidth * (longest + kSpareCharacters);
    content.height = content.lineHeight * (static_cast<int32_t>(content.lines.size()) + 1);
    return content;
}

InfoScroll InfoLayout::Scroll(int32_t position, int32_t contentHeight, int32_t clientHeight,
                              const InfoScroll& previous) {
    if (clientHeight <= kMinScrollHeight) return previous;
    InfoScroll scroll;
    // A picture that fits has nothing to scroll: no range, so no scroll bar
    // (a window sized to its text exactly would otherwise get a bar whose
    // every position shows the same).
    scroll.range = contentHeight > clientHeight ? contentHeight / clientHeight : 0;
    scroll.position = std::clamp(position, 0, scroll.range);
    const int64_t wanted = static_cast<int64_t>(clientHeight) * scroll.position;
    const int64_t last = std::max<int64_t>(0, static_cast<int64_t>(contentHeight) - clientHeight);
    scroll.offset = wanted < 1 ? 0 : static_cast<int32_t>(std::min(wanted, last));
    return scroll;
}

int32_t InfoLayout::PageStep(int32_t range) {
    return range < 10 ? 1 : range / 10;
}

int32_t InfoLayout::Move(const InfoScroll& scroll, InfoScrollAction action, int32_t thumb) {
    int32_t position = scroll.position;
    switch (action) {
        case InfoScrollAction::LineUp: position -= 1; break;
        case InfoScrollAction::LineDown: position += 1; break;
        case InfoScrollAction::PageUp: position -= PageStep(scroll.range); break;
        case InfoScrollAction::PageDown: position += PageStep(scroll.range); break;
        case InfoScrollAction::ThumbTrack: position = thumb; break;
    }
    return std::clamp(position, 0, std::max(scroll.range, 0));
}

}  // namespace vexplot
