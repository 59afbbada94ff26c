#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "com/MemoryStream.h"
#include "model/ArchiveClass.h"
#include "model/CArchive.h"
#include "model/CGD_Axis.h"
#include "ui/InfoEntryList.h"

namespace vexplot {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes Save(CGD_Axis& axis) {
    auto stream = MakeComObject<MemoryStream>();
    CArchive archive(stream.Get(), CArchive::Mode::Store);
    axis.Serialize(archive);
    archive.Close();
    return stream->Bytes();
}

void Load(CGD_Axis& axis, Bytes bytes) {
    auto stream = MakeComObject<MemoryStream>(std::move(bytes));
    CArchive archive(stream.Get(), CArchive::Mode::Load);
    axis.Serialize(archive);
}

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
    look.scaleFormat = ScaleFormat{7};
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

TEST(AxisRecord, WritesTheFieldsInRecordOrder) {
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
}

TEST(AxisRecord, RoundTripsByteForByte) {
    CGD_Axis original(AxisId::Y);
    original.SetAppearance(Unusual());
    const Bytes first = Save(original);

    CGD_Axis loaded(AxisId::X);
    Load(loaded, first);
    EXPECT_EQ(loaded.Id(), AxisId::Y);
    EXPECT_EQ(loaded.GetDirection(), (CGD_Axis::Direction{0, 1, 0}));
    EXPECT_EQ(loaded.GetAppearance(), Unusual());
    EXPECT_EQ(Save(loaded), first);
}

TEST(AxisRecord, FieldsOutsideTheRecordKeepTheirValues) {
    CGD_Axis source;
    CGD_Axis target;
    CGD_Axis::Appearance look = target.GetAppearance();
    look.drawing.label = false;
    look.drawing.oppositeSide = true;
    target.SetAppearance(look);
    LogicalFont bold = target.Font(AxisFontRole::Label);
    bold.weight = 700;
    target.SetFont(AxisFontRole::Label, bold);

    Load(target, Save(source));
    EXPECT_FALSE(target.GetAppearance().drawing.label);
    EXPECT_TRUE(target.GetAppearance().drawing.oppositeSide);
    EXPECT_EQ(target.Font(AxisFontRole::Label).weight, 700);
}

TEST(AxisRecord, LoadingMovesTheScaleEntryToTheLoadedAxis) {
    CGD_Axis y(AxisId::Y);
    const Bytes record = Save(y);
    InfoEntryList window;
    CGD_Axis axis(AxisId::X);
    axis.AttachInfoWindow(&window);
    Load(axis, record);
    ASSERT_EQ(window.Entries().size(), 1u);
    EXPECT_EQ(window.Entries()[0].text, "Y scale: 100.00%");
}

TEST(AxisRecord, MalformedRecordsAreRefusedAndChangeNothing) {
    CGD_Axis source(AxisId::Y);
    source.SetAppearance(Unusual());
    const Bytes good = Save(source);
    const struct {
        const char* name;
        size_t offset;
        int32_t value;
        bool isDouble;
    } cases[] = {
        {"direction off the unit axes", 0, 1, true},
        {"zero direction", 8, 0, true},
        {"unknown axis id", kId, 7, false},
        {"negative axis id", kId, -1, false},
        {"X id on the Y direction", kId, 0, false},
        {"negative major ticks", kMajorTicks, -1, false},
        {"negative minor ticks", kMajorTicks + 4, -5, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Bytes bad = good;
        if (c.isDouble) Put(bad, c.offset, static_cast<double>(c.value));
        else Put(bad, c.offset, c.value);
        CGD_Axis axis(AxisId::X);
        EXPECT_THROW(Load(axis, bad), ArchiveError);
        EXPECT_EQ(axis.Id(), AxisId::X);
        EXPECT_EQ(axis.GetAppearance(), CGD_Axis::Appearance{});
    }
}

TEST(AxisRecord, ATruncatedRecordIsRefusedAtEveryLength) {
    CGD_Axis source(AxisId::Y);
    source.SetAppearance(Unusual());
    const Bytes good = Save(source);
    for (size_t length = 0; length < good.size(); ++length) {
        CGD_Axis axis(AxisId::X);
        EXPECT_THROW(Load(axis, Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length))),
                     ArchiveError)
            << length;
        EXPECT_EQ(axis.GetAppearance(), CGD_Axis::Appearance{}) << length;
    }
}

TEST(AxisRecord, LoadsBackAsAnAxisThroughItsClassRecord) {
    RegisterAxisClass();
    RegisterAxisClass();
    ASSERT_EQ(ArchiveClass::Find("CGD_Axis"), &CGD_Axis::RuntimeClass());
    EXPECT_EQ(CGD_Axis::RuntimeClass().Schema(), 1u);

    CGD_Axis original(AxisId::Palette);
    original.SetAppearance(Unusual());
    auto stream = MakeComObject<MemoryStream>();
    {
        CArchive out(stream.Get(), CArchive::Mode::Store);
        out.WriteObjectRecord(&original);
        out.Close();
    }
    auto in = MakeComObject<MemoryStream>(stream->Bytes());
    CArchive archive(in.Get(), CArchive::Mode::Load);
    const std::unique_ptr<ArchiveObject> object = archive.ReadObjectRecord("axis");
    const auto* axis = dynamic_cast<const CGD_Axis*>(object.get());
    ASSERT_NE(axis, nullptr);
    EXPECT_EQ(axis->Id(), AxisId::Palette);
    EXPECT_EQ(axis->GetAppearance(), Unusual());
}

}  // namespace
}  // namespace vexplot
