#include <gtest/gtest.h>

#include <vector>

#include "control/HeadlessSite.h"
#include "model/ArchiveError.h"
#include "settings/SettingsStore.h"
#include "ui/CMessageBoxExt.h"

namespace vexplot {
namespace {

TEST(CMessageBoxExt, TheFullModeMessageIsReadFromItsRecordAndWritesBackTheSameBytes) {
    const MessageBoxRecord m = CMessageBoxExt::FullModeInfo();
    EXPECT_EQ(m.text,
              "You are now switching to Full-Coltrol View\nYou can still access menu by presing\n"
              "Ctrl+F10 or \"Pop-up Menu\" Key on Keyboard");
    EXPECT_EQ(m.caption, "Kestrune Vexplot Control");
    EXPECT_EQ(m.style, 0x40u);
    EXPECT_EQ(m.valueName, "DontShow");
    EXPECT_EQ(m.subKey, "FullModeInfo");
    const auto bytes = CMessageBoxExt::FullModeInfoBytes();
    EXPECT_EQ(m.Write(), std::vector<uint8_t>(bytes.begin(), bytes.end()));
    // A truncated record is refused, not half read.
    EXPECT_THROW(MessageBoxRecord::Read(bytes.first(bytes.size() - 3)), ArchiveError);
}

TEST(CMessageBoxExt, StyleBitsChooseButtonsIconAndDefault) {
    using Icon = CMessageBoxExt::Icon;
    const struct {
        uint32_t style;
        std::vector<int32_t> buttons;
        Icon icon;
        int32_t defaultButton;
        int32_t escape;
    } cases[] = {
        {0x40, {kAnswerOk}, Icon::Information, kAnswerOk, kAnswerOk},
        {0x24, {kAnswerYes, kAnswerNo}, Icon::Question, kAnswerYes, 0},
        {0x134, {kAnswerYes, kAnswerNo}, Icon::Exclamation, kAnswerNo, 0},
        {0x213, {kAnswerYes, kAnswerNo, kAnswerCancel}, Icon::Stop, kAnswerCancel, kAnswerCancel},
        {0x202, {kAnswerYes, kAnswerNo, kAnswerCancel}, Icon::None, kAnswerCancel, kAnswerCancel},
        {0x201, {kAnswerOk, kAnswerCancel}, Icon::None, kAnswerCancel, kAnswerCancel},  // no third: the last
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.style);
        MessageBoxRecord m;
        m.style = c.style;
        const CMessageBoxExt box(m);
        EXPECT_EQ(box.Buttons(), c.buttons);
        EXPECT_EQ(box.IconKind(), c.icon);
        EXPECT_EQ(box.DefaultButton(), c.defaultButton);
        EXPECT_EQ(box.EscapeButton(), c.escape);
    }
}

TEST(CMessageBoxExt, UnansweredBoxGivesItsDefaultAndTheTickIsKeptPerMessage) {
    auto store = SettingsStore::OpenUnshared(":memory:");
    HeadlessSite site;
    MessageBoxRecord m;
    m.style = 0x114;  // Yes, No; the second default
    m.valueName = "DontShow";
    m.subKey = "SomeInfo";
    CMessageBoxExt box(m, nullptr, store);
    EXPECT_EQ(box.Show(site), kAnswerNo);
    site.AnswerDialog(std::string(CMessageBoxExt::kName), [](IDialogLogic& d) {
        auto& b = static_cast<CMessageBoxExt&>(d);
        b.SetDontShowAgain(true);
        EXPECT_TRUE(b.Press(kAnswerYes));
        return kAnswerOk;
    });
    EXPECT_EQ(box.Show(site), kAnswerYes);
    EXPECT_TRUE(box.Suppressed());
    EXPECT_EQ(box.Show(site), kAnswerNo);  // suppressed: the default, not the script's Yes
    m.subKey = "OtherInfo";
    EXPECT_FALSE(CMessageBoxExt(m, nullptr, store).Suppressed());
}

TEST(CMessageBoxExt, LayoutPutsTextBesideTheIconAndSizesTheBoxToFit) {
    CMessageBoxExt::Sizes s;
    s.base = {8, 16};  // margins 14 x 14
    s.iconSize = 32;
    s.text = {300, 48};
    s.check = {200, 20};
    s.button = {80, 26};
    s.buttonCount = 3;
    const auto l = CMessageBoxExt::Lay(s);
    EXPECT_EQ(l.icon.left, 14);
    EXPECT_EQ(l.text.left, 14 + 32 + 14);
    EXPECT_EQ(l.check.top, 14 + 48 + 14);
    EXPECT_EQ(l.width, 60 + 300 + 14);
    ASSERT_EQ(l.buttons.size(), 3u);
    EXPECT_EQ(l.buttons[0].top, l.check.bottom + 14);
    EXPECT_EQ(l.buttons[0].left + l.buttons[2].right, l.width);  // centred
    EXPECT_EQ(l.height, l.buttons[0].bottom + 14);
    s.iconSize = 0;
    EXPECT_EQ(CMessageBoxExt::Lay(s).text.left, 14);
}

}  // namespace
}  // namespace vexplot
