#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "model/IInfoWindow.h"

namespace vexplot {

// One line of the info window.
struct InfoEntry {
    InfoSection section = kNoSection;  // the section the line belongs to
    int32_t kind = 0;                  // the section's kind code
    std::string text;                  // as shown; never contains a tab
    bool isHeader = false;             // the section's first line
    int32_t lineCount = 0;             // headers only: lines that follow in the section
    uint32_t color = 0;                // 0x00BBGGRR; 0 = the window's text colour
    bool visible = false;              // (visibility mask & kind) != 0
};

// The ordered lines of the info window, without any window system: the
// sections that annotations and tools open, their lines, and which of them
// the visibility mask lets through. A window (Qt or headless) owns one,
// hands it out as the IInfoWindow, and lays itself out from Entries() or
// VisibleEntries() whenever the changed hook fires.
//
// Sections are grouped by kind in ascending code, the newest of a kind
// last. Handles are ids that are never given out twice, so a handle of a
// removed section is refused by every operation, even after new sections
// were added. Stored texts never contain a tab: every tab becomes three
// blanks, whichever operation brings the text in.
class InfoEntryList final : public IInfoWindow {
public:
    static constexpr int32_t kAllKinds = 63;

    explicit InfoEntryList(int32_t visibilityMask = kAllKinds) : mask_(visibilityMask) {}
    InfoEntryList(const InfoEntryList&) = delete;
    InfoEntryList& operator=(const InfoEntryList&) = delete;

    // IInfoWindow:
    InfoSection AddSection(int32_t kind, std::string_view header, uint32_t color) override;
    bool AddLine(InfoSection section, std::string_view text, uint32_t color) override;
    bool SetLine(InfoSection section, int32_t index, std::string_view text, uint32_t color) override;
    bool SetHeader(InfoSection section, std::string_view text, uint32_t color) override;
    bool RemoveSection(InfoSection section) override;

    // As SetLine above; `changed` (may be null) tells whether text or colour
    // differ from what was stored. An unchanged line fires no hook: this is
    // the path taken at every mouse move, and it must not cost a repaint.
    bool SetLine(InfoSection section, int32_t index, std::string_view text, uint32_t color, bool* changed);

    // Stores the mask and recomputes every entry's visible flag.
    void SetVisibilityMask(int32_t mask);
    int32_t VisibilityMask() const { return mask_; }

    // All entries in display order, visible or not.
    const std::vector<InfoEntry>& Entries() const { return entries_; }
    // The entries the mask lets through, in display order. The pointers
    // stay valid until the next change.
    std::vector<const InfoEntry*> VisibleEntries() const;

    // Called after every change of the entries or the mask (not for a
    // SetLine that changes nothing). The window relayouts and repaints there.
    void SetChangedHook(std::function<void()> hook) { changed_ = std::move(hook); }
    // Counts the changes that fired the hook: a window may compare it with
    // the value its picture was drawn for.
    uint64_t Revision() const { return revision_; }

private:
    // Position of the section's header in entries_, or npos.
    size_t FindHeader(InfoSection section) const;
    bool Replace(size_t position, std::string_view text, uint32_t color, bool* changed);
    bool IsVisible(int32_t kind) const { return (mask_ & kind) != 0; }
    void Changed();

    std::vector<InfoEntry> entries_;
    int32_t mask_;
    InfoSection lastSection_ = kNoSection;
    uint64_t revision_ = 0;
    std::function<void()> changed_;
};

}  // namespace vexplot
