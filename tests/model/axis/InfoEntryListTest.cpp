#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/InfoEntryList.h"

namespace vexplot {
namespace {

constexpr int32_t kPosition = 1;
constexpr int32_t kMarker = 2;
constexpr int32_t kTracer = 4;
constexpr int32_t kRegion = 16;

// "text" for a header, "  text" for a line under it, in display order.
std::vector<std::string> Layout(const std::vector<const InfoEntry*>& entries) {
    std::vector<std::string> rows;
    for (const InfoEntry* e : entries) rows.push_back((e->isHeader ? "" : "  ") + e->text);
    return rows;
}

std::vector<std::string> Layout(const InfoEntryList& list) {
    std::vector<const InfoEntry*> all;
    for (const InfoEntry& e : list.Entries()) all.push_back(&e);
    return Layout(all);
}

// Tabs become three blanks wherever text comes in.
TEST(InfoEntryList, SectionsAreGroupedByKindNewestLastWithTabsExpanded) {
    InfoEntryList list;
    const InfoSection region = list.AddSection(kRegion, "Region\tA:", 0);
    const InfoSection marker = list.AddSection(kMarker, "Marker A:", 0);
    list.AddLine(marker, "X\t1\t", 0);
    list.AddSection(kPosition, "Position:", 0);
    const InfoSection second = list.AddSection(kMarker, "Marker B:", 0);
    list.AddLine(marker, "Y", 0);  // stays with its own section, above Marker B
    list.SetLine(marker, 2, "\tY 2", 0);
    list.AddLine(second, "X 3", 0);
    list.AddLine(region, "W 4", 0);
    EXPECT_EQ(Layout(list), (std::vector<std::string>{"Position:", "Marker A:", "  X   1   ", "     Y 2", "Marker B:",
                                                      "  X 3", "Region   A:", "  W 4"}));
    EXPECT_EQ(list.Entries()[1].lineCount, 2);
    EXPECT_EQ(list.Entries()[2].kind, kMarker);
    EXPECT_EQ(list.Entries()[2].section, marker);
}

TEST(InfoEntryList, SetLineAddressesLinesFromOneAndReportsRealChanges) {
    InfoEntryList list;
    const InfoSection s = list.AddSection(kTracer, "Tracer:", 0);
    list.AddLine(s, "X 1", 0);
    list.AddLine(s, "Y 1", 0);
    int hooks = 0;
    list.SetChangedHook([&] { ++hooks; });

    bool changed = true;
    EXPECT_TRUE(list.SetLine(s, 2, "Y 1", 0, &changed));
    EXPECT_FALSE(changed);
    EXPECT_EQ(hooks, 0);  // the same text again costs no repaint

    EXPECT_TRUE(list.SetLine(s, 2, "Y 1", 0x0000FF, &changed));
    EXPECT_TRUE(changed);  // a new colour alone is a change
    EXPECT_TRUE(list.SetLine(s, 1, "X 2", 0, &changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(hooks, 2);
    EXPECT_EQ(Layout(list), (std::vector<std::string>{"Tracer:", "  X 2", "  Y 1"}));
    EXPECT_EQ(list.Entries()[2].color, 0x0000FFu);

    for (const int32_t index : {0, 3, -1}) {
        EXPECT_FALSE(list.SetLine(s, index, "?", 0, &changed)) << index;
        EXPECT_FALSE(changed);
    }
    EXPECT_EQ(hooks, 2);
}

TEST(InfoEntryList, StaleHandlesAreRefusedAndNeverReused) {
    InfoEntryList list;
    const InfoSection gone = list.AddSection(kMarker, "Marker A:", 0);
    list.AddLine(gone, "X 1", 0);
    const InfoSection kept = list.AddSection(kMarker, "Marker B:", 0);
    list.AddLine(kept, "X 2", 0);
    ASSERT_TRUE(list.RemoveSection(gone));
    const InfoSection fresh = list.AddSection(kMarker, "Marker C:", 0);
    EXPECT_NE(fresh, gone);
    EXPECT_NE(fresh, kNoSection);

    const uint64_t revision = list.Revision();
    for (const InfoSection stale : {gone, kNoSection, InfoSection{999}}) {
        SCOPED_TRACE(stale);
        EXPECT_FALSE(list.AddLine(stale, "X", 0));
        EXPECT_FALSE(list.SetLine(stale, 1, "X", 0));
        EXPECT_FALSE(list.SetHeader(stale, "X", 0));
        EXPECT_FALSE(list.RemoveSection(stale));
    }
    EXPECT_EQ(list.Revision(), revision);
    EXPECT_EQ(Layout(list), (std::vector<std::string>{"Marker B:", "  X 2", "Marker C:"}));
    EXPECT_TRUE(list.SetHeader(kept, "Marker B2:", 0));
    EXPECT_EQ(list.Entries()[0].text, "Marker B2:");
}

TEST(InfoEntryList, TheMaskDecidesWhatIsVisible) {
    InfoEntryList list(kMarker | kRegion);
    const InfoSection position = list.AddSection(kPosition, "P", 0);
    list.AddLine(position, "p1", 0);
    const InfoSection marker = list.AddSection(kMarker, "M", 0);
    list.AddLine(marker, "m1", 0);
    EXPECT_EQ(Layout(list.VisibleEntries()), (std::vector<std::string>{"M", "  m1"}));

    int hooks = 0;
    list.SetChangedHook([&] { ++hooks; });
    list.SetVisibilityMask(kPosition);
    EXPECT_EQ(hooks, 1);
    EXPECT_EQ(Layout(list.VisibleEntries()), (std::vector<std::string>{"P", "  p1"}));
    // Hidden entries keep their texts current.
    EXPECT_TRUE(list.SetLine(marker, 1, "m2", 0));
    list.SetVisibilityMask(InfoEntryList::kAllKinds);
    EXPECT_EQ(Layout(list.VisibleEntries()), (std::vector<std::string>{"P", "  p1", "M", "  m2"}));
}

}  // namespace
}  // namespace vexplot
