#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/CGD_Palette.h"
#include "support/ArchiveBytes.h"

namespace vexplot {
namespace {

using test::Bytes;

// A palette record laid out by hand: start text, count, colours, end text.
Bytes Record(uint32_t count, const std::vector<uint32_t>& colors, std::string_view start = "PaletteStart:",
             std::string_view end = "PaletteEnd") {
    Bytes bytes;
    test::AppendShortString(bytes, start);
    test::AppendInt32(bytes, static_cast<int32_t>(count));
    for (uint32_t color : colors) test::AppendInt32(bytes, static_cast<int32_t>(color));
    test::AppendShortString(bytes, end);
    return bytes;
}

Bytes Store(CGD_Palette& palette) { return test::Stored([&](CArchive& a) { palette.Serialize(a); }); }
void Load(CGD_Palette& palette, const Bytes& bytes) { test::Loaded(bytes, [&](CArchive& a) { palette.Serialize(a); }); }

std::vector<uint32_t> ColorsOf(const CGD_Palette& palette) {
    return std::vector<uint32_t>(palette.Colors().begin(), palette.Colors().end());
}

TEST(PaletteRecord, StoresTheLayoutAndLoadsItBack) {
    CGD_Palette original;
    original.SetColor(0, 0x0000FF);
    original.SetColor(1, 0xFF0000);
    const Bytes stored = Store(original);
    EXPECT_EQ(stored, Record(2, {0x0000FF, 0xFF0000}));
    CGD_Palette loaded;
    loaded.SetStandard(4);
    Load(loaded, stored);
    EXPECT_EQ(ColorsOf(loaded), ColorsOf(original));
    EXPECT_EQ(loaded.GetPaletteId(), 4) << "the identifier is not part of the record";
    EXPECT_EQ(loaded.Strip().Pixel(0, 0), 0xFF0000u);

    original.SetStandard(1);
    Load(loaded, Store(original));
    EXPECT_EQ(Store(loaded), Store(original));
    // the marker texts are not compared; the top byte of a colour is dropped
    Load(loaded, Record(1, {0xFF123456}, "", "something else"));
    EXPECT_EQ(ColorsOf(loaded), std::vector<uint32_t>{0x123456});
}

TEST(PaletteRecord, MalformedRecordsLeaveTheListAlone) {
    const Bytes whole = Record(2, {0x0000FF, 0xFF0000});
    std::vector<std::pair<std::string, Bytes>> cases;
    for (size_t size = 0; size < whole.size(); ++size) {
        cases.emplace_back("cut to " + std::to_string(size) + " bytes", Bytes(whole.begin(), whole.begin() + size));
    }
    cases.emplace_back("count beyond the bytes", Record(3, {1, 2}));
    cases.emplace_back("count of 4 Gi", Record(0xFFFFFFFF, {1, 2}));
    cases.emplace_back("count above the limit",
                       Record(static_cast<uint32_t>(CGD_Palette::kMaxColors + 1),
                              std::vector<uint32_t>(CGD_Palette::kMaxColors + 1, 7)));
    for (const auto& [name, bytes] : cases) {
        CGD_Palette palette;
        palette.SetStandard(3);
        EXPECT_THROW(Load(palette, bytes), ArchiveError) << name;
        EXPECT_EQ(palette.GetCount(), 1024u) << name;
        EXPECT_EQ(palette.GetColor(0), 0x0000FFu) << name;
    }
}

}  // namespace
}  // namespace vexplot
