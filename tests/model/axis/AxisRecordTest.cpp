#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "model/ArchiveClass.h"
#include "model/CGD_Axis.h"
#include "support/ArchiveBytes.h"
#include "ui/InfoEntryList.h"

namespace vexplot {
namespace {

using test::Bytes;

Bytes Save(CGD_Axis& axis) { return test::Stored([&](CArchive& a) { axis.Serialize(a); }); }
void Load(CGD_Axis& axis, const Bytes& bytes) { test::Loaded(bytes, [&](CArchive& a) { axis.Serialize(a); }); }

template <class T>
void Put(Bytes& bytes, size_t offset, T value) {
    ASSERT_LE(offset + sizeof value, bytes.size());
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

// An axis whose every saved field differs from its default.
CGD_Axis::Appearance Unusual() {
    CGD_Axis::Appearance look;
    look.label = "Depth";
    look.shown = false;
    look.numbersShown = false;
    look.numberColor = 0x010203;
    look.majorGridColor = 0x040506;
    look.minorGridColor = 0x070809;
    look.scaleFormat = ScaleFormat::Engineering;
    look.displayMode = DisplayMode::Decibel;
    look.majorGrid = false;
    look.minorGrid = false;
    look.majorTicks = 9;
    look.minorTicks = 0;
    look.drawing = {false, false, true, false};
    look.decimalCount = 3;
    return look;
}

// Offsets in the record of an axis labelled "Depth".
constexpr size_t kLabelLength = 5;
constexpr size_t kShown = 25 + kLabelLength;
constexpr size_t kId = kShown + 4;
constexpr size_t kMajorTicks = kId + 4 + 12 + 4 + 8 + 8;
constexpr size_t kRecordSize = kMajorTicks + 8 + 8 + 4;

TEST(AxisRecord, WritesTheFieldsInRecordOrderAndRoundTripsByteForByte) {
    CGD_Axis axis(AxisId::Y);
    axis.SetAppearance(Unusual());
    const Bytes bytes = Save(axis);
    ASSERT_EQ(bytes.size(), kRecordSize);
    double y = 0;
    std::memcpy(&y, bytes.data() + 8, sizeof y);
    EXPECT_EQ(y, 1.0);
    EXPECT_EQ(bytes[24], kLabelLength);
    EXPECT_EQ(std::string(bytes.begin() + 25, bytes.begin() + 25 + kLabelLength), "Depth");
    EXPECT_EQ(bytes[kShown], 0);
    EXPECT_EQ(bytes[kId], 1);  // AxisId::Y
    EXPECT_EQ(bytes[kId + 4], 0x03);  // number colour, low byte first
    EXPECT_EQ(bytes[kMajorTicks], 9);
    EXPECT_EQ(bytes[kRecordSize - 4], 3);  // decimal count last

    CGD_Axis loaded(AxisId::X);
    Load(loaded, bytes);
    EXPECT_EQ(loaded.Id(), AxisId::Y);
    EXPECT_EQ(loaded.GetDirection(), (CGD_Axis::Direction{0, 1, 0}));
    EXPECT_EQ(loaded.GetAppearance(), Unusual());
    EXPECT_EQ(Save(loaded), bytes);
}

// A file may hold what no dialog accepts; the axis takes it in range, so
// a record cannot make the ticks grow without bound. What the record does
// not hold (the label and side flags, the fonts) keeps its value, and the
// scale entry takes the loaded axis's letter.
TEST(AxisRecord, LoadingTakesValuesInRangeAndKeepsWhatTheRecordLacks) {
    CGD_Axis source(AxisId::Y);
    source.SetAppearance(Unusual());
    Bytes bytes = Save(source);
    Put(bytes, kId + 20, int32_t{7});          // scale format
    Put(bytes, kMajorTicks, int32_t{32767});
    Put(bytes, kMajorTicks + 4, int32_t{32767});
    Put(bytes, kRecordSize - 4, int32_t{99});  // decimal count

    InfoEntryList window;  // outlives the axis, which takes its entry out on destruction
    CGD_Axis axis(AxisId::X);
    CGD_Axis::Appearance look = axis.GetAppearance();
    look.drawing.label = false;
    look.drawing.oppositeSide = true;
    axis.SetAppearance(look);
    LogicalFont bold = axis.Font(AxisFontRole::Label);
    bold.weight = 700;
    axis.SetFont(AxisFontRole::Label, bold);
    axis.AttachInfoWindow(&window);

    Load(axis, bytes);
    look = axis.GetAppearance();
    EXPECT_EQ(look.scaleFormat, ScaleFormat::Decimal);
    EXPECT_EQ(look.majorTicks, CGD_Axis::kMaxTicks);
    EXPECT_EQ(look.minorTicks, CGD_Axis::kMaxTicks);
    EXPECT_EQ(look.decimalCount, CGD_Axis::kMaxDecimalCount);
    EXPECT_LE(axis.MakeTicks(0, 1).values.size(), size_t{CGD_Axis::kMaxTicks} * 2 + 3);
    EXPECT_FALSE(look.drawing.label);
    EXPECT_TRUE(look.drawing.oppositeSide);
    EXPECT_EQ(axis.Font(AxisFontRole::Label).weight, 700);
    ASSERT_EQ(window.Entries().size(), 1u);
    EXPECT_EQ(window.Entries()[0].text, "Y scale: 100.00%");
}

// Impossible values, and the record cut at every length.
TEST(AxisRecord, MalformedRecordsAreRefusedAndChangeNothing) {
    CGD_Axis source(AxisId::Y);
    source.SetAppearance(Unusual());
    const Bytes good = Save(source);
    const struct {
        const char* name;
        size_t offset;
        int32_t value;
        bool isDouble;
    } patches[] = {
        {"direction off the unit axes", 0, 1, true},
        {"zero direction", 8, 0, true},
        {"unknown axis id", kId, 7, false},
        {"negative axis id", kId, -1, false},
        {"X id on the Y direction", kId, 0, false},
        {"negative major ticks", kMajorTicks, -1, false},
        {"negative minor ticks", kMajorTicks + 4, -5, false},
    };
    std::vector<std::pair<std::string, Bytes>> cases;
    for (const auto& p : patches) {
        Bytes bad = good;
        if (p.isDouble) Put(bad, p.offset, static_cast<double>(p.value));
        else Put(bad, p.offset, p.value);
        cases.emplace_back(p.name, bad);
    }
    for (size_t length = 0; length < good.size(); ++length)
        cases.emplace_back("cut to " + std::to_string(length), Bytes(good.begin(), good.begin() + ptrdiff_t(length)));
    for (const auto& [name, bytes] : cases) {
        SCOPED_TRACE(name);
        CGD_Axis axis(AxisId::X);
        EXPECT_THROW(Load(axis, bytes), ArchiveError);
        EXPECT_EQ(axis.Id(), AxisId::X);
        EXPECT_EQ(axis.GetAppearance(), CGD_Axis::Appearance{});
    }
}

TEST(AxisRecord, LoadsBackAsAnAxisThroughItsClassRecord) {
    RegisterAxisClass();
    RegisterAxisClass();
    ASSERT_EQ(ArchiveClass::Find("CGD_Axis"), &CGD_Axis::RuntimeClass());
    EXPECT_EQ(CGD_Axis::RuntimeClass().Schema(), 1u);

    CGD_Axis original(AxisId::Palette);
    original.SetAppearance(Unusual());
    std::unique_ptr<ArchiveObject> object;
    test::Loaded(test::Stored([&](CArchive& a) { a.WriteObjectRecord(&original); }),
                 [&](CArchive& a) { object = a.ReadObjectRecord("axis"); });
    const auto* axis = dynamic_cast<const CGD_Axis*>(object.get());
    ASSERT_NE(axis, nullptr);
    EXPECT_EQ(axis->Id(), AxisId::Palette);
    EXPECT_EQ(axis->GetAppearance(), Unusual());
}

}  // namespace
}  // namespace vexplot
