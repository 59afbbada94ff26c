#include <gtest/gtest.h>

#include <string>

#include "ui/ExportSizeChooser.h"

namespace vexplot {
namespace {

TEST(ExportSizeChooser, ReadsAtMostTenCharactersOfLeadingDecimal) {
    const struct {
        const char* text;
        int32_t value;
    } cases[] = {
        {"12ab", 12},         {"1234", 1234},     {"", 0},          {"abc", 0},
        {"  42", 42},         {"-7", -7},         {"+8x", 8},       {"12345678901", 1234567890},
        {"9999999999", 2147483647}, {"-9999999999", -999999999}, {"        77", 77}, {"         77", 7},
    };
    for (const auto& c : cases) EXPECT_EQ(ExportSizeChooser::ReadDecimal(c.text), c.value) << '"' << c.text << '"';
}

TEST(ExportSizeChooser, PresetsFillTheEditsAndCustomKeepsWhatWasTyped) {
    ExportSizeChooser chooser = ExportSizeChooser::ForBitmap();
    ASSERT_TRUE(chooser.Confirm("/tmp/a.bmp"));
    EXPECT_EQ(chooser.Chosen()->width, 640);  // untouched list: the first preset
    EXPECT_EQ(chooser.Chosen()->height, 480);
    chooser.SetWidthText("99");  // refused while a preset is selected
    EXPECT_EQ(chooser.WidthText(), "640");

    chooser.Select(ExportSizeChooser::kCustom);
    EXPECT_EQ(chooser.WidthText(), "640");
    chooser.SetWidthText("1234");
    chooser.SetHeightText("567");
    ASSERT_TRUE(chooser.Confirm("/tmp/a.bmp"));
    EXPECT_EQ(chooser.Chosen()->width, 1234);
    EXPECT_EQ(chooser.Chosen()->height, 567);

    chooser.Select(1);
    EXPECT_EQ(chooser.WidthText(), "800");
    EXPECT_EQ(chooser.HeightText(), "600");
    EXPECT_FALSE(chooser.SizeEditable());
    chooser.Select(7);  // not in the list
    EXPECT_EQ(chooser.Selection(), 1);
}

TEST(ExportSizeChooser, ConfirmAddsTheDefaultExtensionAndRefusesBadNames) {
    ExportSizeChooser chooser = ExportSizeChooser::ForBitmap();
    ASSERT_TRUE(chooser.Confirm("/tmp/dir.v2/plot"));
    EXPECT_EQ(chooser.Chosen()->fileName, "/tmp/dir.v2/plot.BMP");
    ASSERT_TRUE(chooser.Confirm("/tmp/plot.png"));
    EXPECT_EQ(chooser.Chosen()->fileName, "/tmp/plot.png");

    // A refused name keeps the last result and says why.
    EXPECT_FALSE(chooser.Confirm(""));
    EXPECT_FALSE(chooser.Confirm("/tmp/" + std::string(300, 'x')));
    EXPECT_NE(chooser.Error().find("too long"), std::string::npos);
    EXPECT_EQ(chooser.Chosen()->fileName, "/tmp/plot.png");
}

TEST(ExportSizeChooser, ParsesTheFilterPairs) {
    const auto types = ExportSizeChooser::ForMetafile().FileTypes();
    ASSERT_EQ(types.size(), 2u);
    EXPECT_EQ(types[0].description, "Enhanced metafile (*.EMF)");
    EXPECT_EQ(types[0].patterns, "*.emf");
    EXPECT_EQ(types[1].patterns, "*.*");
}

}  // namespace
}  // namespace vexplot
