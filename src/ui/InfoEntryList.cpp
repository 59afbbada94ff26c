#include "ui/InfoEntryList.h"

#include <algorithm>
#include <limits>

namespace vexplot {

namespace {

constexpr size_t npos = static_cast<size_t>(-1);

// A tab cannot be drawn as text, and its width would depend on the font:
// the info window has always shown it as three blanks.
std::string ExpandTabs(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (c == '\t') result += "   ";
        else result += c;
    }
    return result;
}

}  // namespace

InfoSection InfoEntryList::AddSection(int32_t kind, std::string_view header, uint32_t color) {
    // Ids are never reused; once they run out the list takes no more sections.
    if (lastSection_ == std::numeric_limits<InfoSection>::max()) return kNoSection;
    const auto before = std::find_if(entries_.begin(), entries_.end(),
                                     [kind](const InfoEntry& e) { return e.kind > kind; });
    InfoEntry entry{++lastSection_, kind, ExpandTabs(header), true, 0, color, IsVisible(kind)};
    entries_.insert(before, std::move(entry));
    Changed();
    return lastSection_;
}

bool InfoEntryList::AddLine(InfoSection section, std::string_view text, uint32_t color) {
    const size_t header = FindHeader(section);
    if (header == npos) return false;
    InfoEntry& h = entries_[header];
    InfoEntry line{section, h.kind, ExpandTabs(text), false, 0, color, h.visible};
    const size_t at = header + 1 + static_cast<size_t>(h.lineCount);
    ++h.lineCount;
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
    Changed();
    return true;
}

bool InfoEntryList::SetLine(InfoSection section, int32_t index, std::string_view text, uint32_t color) {
    return SetLine(section, index, text, color, nullptr);
}

bool InfoEntryList::SetLine(InfoSection section, int32_t index, std::string_view text, uint32_t color,
                            bool* changed) {
    if (changed) *changed = false;
    const size_t header = FindHeader(section);
    if (header == npos || index < 1 || index > entries_[header].lineCount) return false;
    return Replace(header + static_cast<size_t>(index), text, color, changed);
}

bool InfoEntryList::SetHeader(InfoSection section, std::string_view text, uint32_t color) {
    const size_t header = FindHeader(section);
    if (header == npos) return false;
    return Replace(header, text, color, nullptr);
}

bool InfoEntryList::RemoveSection(InfoSection section) {
    const size_t header = FindHeader(section);
    if (header == npos) return false;
    const auto first = entries_.begin() + static_cast<std::ptrdiff_t>(header);
    entries_.erase(first, first + 1 + entries_[header].lineCount);
    Changed();
    return true;
}

void InfoEntryList::SetVisibilityMask(int32_t mask) {
    mask_ = mask;
    for (InfoEntry& e : entries_) e.visible = IsVisible(e.kind);
    Changed();
}

std::vector<const InfoEntry*> InfoEntryList::VisibleEntries() const {
    std::vector<const InfoEntry*> visible;
    for (const InfoEntry& e : entries_)
        if (e.visible) visible.push_back(&e);
    return visible;
}

size_t InfoEntryList::FindHeader(InfoSection section) const {
    if (section == kNoSection) return npos;
    const auto it = std::find_if(entries_.begin(), entries_.end(), [section](const InfoEntry& e) {
        return e.isHeader && e.section == section;
    });
    return it == entries_.end() ? npos : static_cast<size_t>(it - entries_.begin());
}

bool InfoEntryList::Replace(size_t position, std::string_view text, uint32_t color, bool* changed) {
    InfoEntry& entry = entries_[position];
    std::string expanded = ExpandTabs(text);
    if (expanded == entry.text && color == entry.color) return true;
    entry.text = std::move(expanded);
    entry.color = color;
    if (changed) *changed = true;
    Changed();
    return true;
}

void InfoEntryList::Changed() {
    ++revision_;
    if (changed_) changed_();
}

}  // namespace vexplot
