#include <gtest/gtest.h>

#include <string>

#include "ControlFixture.h"
#include "control/CommandIds.h"
#include "control/HeadlessSite.h"
#include "support/TempDir.h"
#include "ui/CMessageBoxExt.h"
#include "ui/ControlPropertySheet.h"

namespace vexplot::test {
namespace {

// A working control on the headless site, whose scripts play the dialogs.
class ControlDialogsTest : public ::testing::Test {
protected:
    void SetUp() override {
        h.InstallEngine();
        h.Construct();
        ASSERT_TRUE(h.control->Create(site, {0, 0, 400, 300}));
    }
    Variant Property(const char* name) { return Dispatch(h.control.Get(), name, {}, DISPATCH_PROPERTYGET); }
    // A filled sheet over the control, as its IDispatch, writing to `store`.
    std::unique_ptr<ControlPropertySheet> Sheet(std::shared_ptr<SettingsStore> store) {
        auto sheet = std::make_unique<ControlPropertySheet>(h.control.As<IDispatch>(), nullptr, std::move(store));
        sheet->Fill();
        return sheet;
    }
    // Runs the property sheet with `script` setting fields before it answers `answer`.
    int32_t RunSheet(std::function<void(ControlPropertySheet&)> script, int32_t answer = kAnswerOk) {
        site.AnswerDialog(std::string(ControlPropertySheet::kName), [script, answer](IDialogLogic& d) {
            script(static_cast<ControlPropertySheet&>(d));
            return answer;
        });
        return h.control->ShowPropertySheet();
    }

    HeadlessSite site;
    ControlHarness h;  // after the site: the control is destroyed first
};

TEST_F(ControlDialogsTest, PropertySheetOkWritesEveryPageThroughTheProperties) {
    const std::string longLabel(255, 'v');
    ASSERT_EQ(RunSheet([&](ControlPropertySheet& s) {
                  s.SetValue("BackgroundColor", Variant(int32_t{0x123456}));
                  s.SetValue("MoveDirection", Variant(int32_t{3}));
                  s.SetValue("ShowToolTips", Variant::Bool(false));
                  s.SetValue("Quality3D", Variant(int32_t{1}));
                  s.SetValue("XCamRotation", Variant(std::string("-1")));
                  s.SetValue("ZCamTranslation", Variant(std::string(" 0.25 ")));
                  s.SetValue("InfoVisible", Variant::Bool(true));
                  s.SetValue("YLabel", Variant(longLabel));
                  s.SetValue("ZMajorTicks", Variant(std::string("10")));
                  s.SetValue("XDecimalCount", Variant(std::string("15")));
                  s.SetValue("XScaleFormat", Variant(int32_t{2}));
              }),
              kAnswerOk);
    EXPECT_EQ(Property("BackgroundColor").I4(), 0x123456);
    EXPECT_EQ(Property("MoveDirection").I4(), 3);
    EXPECT_FALSE(Property("ShowToolTips").BoolValue());
    EXPECT_EQ(Property("Quality3D").I2(), 1);
    EXPECT_EQ(Property("XCamRotation").R8(), -1.0);
    EXPECT_EQ(Property("ZCamTranslation").R8(), 0.25);
    EXPECT_TRUE(Property("InfoVisible").BoolValue());
    EXPECT_EQ(Property("YLabel").Bstr(), longLabel);
    EXPECT_EQ(Property("ZMajorTicks").I2(), 10);
    EXPECT_EQ(Property("XDecimalCount").I2(), 15);
    EXPECT_EQ(Property("XScaleFormat").I2(), 2);
    // The setters ran: the settings store holds the new values too.
    CRegistryKey key(nullptr, h.store);
    ASSERT_TRUE(key.Open("Legend"));
    EXPECT_EQ(key.ReadInt("MoveDirection"), 3);

    // A second run shows what the first wrote; Cancel writes nothing.
    EXPECT_EQ(RunSheet([](ControlPropertySheet& s) {
                  EXPECT_EQ(s.Value("XCamRotation").Bstr(), "-1");
                  EXPECT_EQ(s.Value("ZMajorTicks").Bstr(), "10");
                  EXPECT_FALSE(s.Changed());
                  s.SetValue("XCamRotation", Variant(std::string("0.75")));
              }, kAnswerCancel),
              kAnswerCancel);
    EXPECT_EQ(Property("XCamRotation").R8(), -1.0);
    // OK on a field out of range: refused with the message, nothing written.
    EXPECT_EQ(RunSheet([](ControlPropertySheet& s) {
                  s.SetValue("XCamRotation", Variant(std::string("0.75")));
                  s.SetValue("XMajorTicks", Variant(std::string("0")));
              }),
              kAnswerCancel);
    EXPECT_EQ(Property("XCamRotation").R8(), -1.0);
}

TEST_F(ControlDialogsTest, PropertySheetRefusesOutOfRangeFieldsAndWritesNothing) {
    const struct {
        const char* property;
        std::string text;
        const char* message;  // empty: accepted
    } cases[] = {
        {"XCamRotation", "1.0", ""},
        {"YCamRotation", "1.01", "Please enter a number between -1 and 1."},
        {"ZCamTranslation", "-1.0001", "Please enter a number between -1 and 1."},
        {"XCamTranslation", "abc", "Please enter a number."},
        {"XCamTranslation", "0,5", "Please enter a number."},
        {"XMajorTicks", "1", ""},
        {"XMajorTicks", "0", "Please enter an integer between 1 and 10."},
        {"YMinorTicks", "11", "Please enter an integer between 1 and 10."},
        {"ZMinorTicks", "2.5", "Please enter an integer."},
        {"XDecimalCount", "16", "Please enter an integer between 1 and 15."},
        {"ZLabel", std::string(256, 'x'), "Please enter no more than 255 characters."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.property) + " = " + c.text.substr(0, 12));
        const auto sheet = Sheet(h.store);
        const int32_t before = Property("BackgroundColor").I4();
        sheet->SetValue("BackgroundColor", Variant(before ^ 0xFF));
        sheet->SetValue(c.property, Variant(c.text));
        const auto problem = sheet->Apply();
        if (*c.message == '\0') {
            EXPECT_FALSE(problem);
            continue;
        }
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->message, c.message);
        const auto& field = ControlPropertySheet::Pages()[problem->page].fields[problem->field];
        EXPECT_EQ(field.property, c.property);  // where the focus goes back
        EXPECT_EQ(Property("BackgroundColor").I4(), before);  // nothing was written
    }
}

TEST_F(ControlDialogsTest, PropertySheetListsEnginesAndStoresTheChosenFont) {
    h.InstallEngine("Zeta");
    const auto sheet = Sheet(h.store);
    EXPECT_EQ(sheet->Engines(), (std::vector<std::string>{"OpenGL", "Zeta"}));
    EXPECT_EQ(sheet->Value("Engine").Bstr(), "OpenGL");
    EXPECT_EQ(sheet->FontDescription(), "Arial, 8, Normal");

    LogicalFont font;
    font.face = "DejaVu Sans";
    font.weight = 700;
    font.italic = true;
    sheet->ChooseFont(font, 12);
    EXPECT_EQ(sheet->FontDescription(), "DejaVu Sans, 12, Bold, Italic");
    ASSERT_FALSE(sheet->Apply());
    EXPECT_EQ(Property("InfoFont").Bstr(), "DejaVu Sans");
    // The record holds size and style as well, for the next info window.
    EXPECT_EQ(Sheet(h.store)->FontDescription(), "DejaVu Sans, 12, Bold, Italic");
}

TEST_F(ControlDialogsTest, PropertySheetOnAStoreThatCannotBeWrittenChangesNothing) {
    const TempDir dir;
    dir.Write("broken.db", "this is not a settings database");
    const auto sheet = Sheet(SettingsStore::OpenUnshared(dir / "broken.db"));
    const double rotation = Property("XCamRotation").R8();
    sheet->SetValue("XCamRotation", Variant(std::string("0.5")));
    sheet->DefaultFont();
    const auto problem = sheet->Apply();
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->message.find("cannot be written"), std::string::npos);
    EXPECT_EQ(Property("XCamRotation").R8(), rotation);
}

TEST_F(ControlDialogsTest, MaximizeViewShowsItsMessageUntilTickedAndSwitchesBack) {
    ASSERT_TRUE(h.control->ReadVisibility().title);
    int shown = 0;
    site.AnswerDialog(std::string(CMessageBoxExt::kName), [&shown](IDialogLogic& d) {
        auto& box = static_cast<CMessageBoxExt&>(d);
        ++shown;
        EXPECT_EQ(box.Message().caption, "Kestrune Vexplot Control");
        box.SetDontShowAgain(true);
        box.Press(kAnswerOk);
        return kAnswerOk;
    });
    ASSERT_TRUE(h.control->DoCommand(cmd::kMaximizeView));
    EXPECT_EQ(shown, 1);
    EXPECT_FALSE(h.control->ReadVisibility().title);
    EXPECT_FALSE(h.control->ReadVisibility().status);
    EXPECT_TRUE(h.control->CommandState(cmd::kMaximizeView).checked);
    EXPECT_TRUE(h.control->DoCommand(cmd::kOpenMenu));  // the menu stays reachable

    ASSERT_TRUE(h.control->DoCommand(cmd::kMaximizeView));
    EXPECT_TRUE(h.control->ReadVisibility().title);
    EXPECT_TRUE(h.control->ReadVisibility().status);
    ASSERT_TRUE(h.control->DoCommand(cmd::kMaximizeView));
    EXPECT_EQ(shown, 1);  // ticked once: not shown again
    EXPECT_FALSE(h.control->ReadVisibility().title);
}

}  // namespace
}  // namespace vexplot::test
