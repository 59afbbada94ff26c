#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/IGraphEngine.h"
#include "site/WindowInput.h"
#include "model/MessageBoxRecord.h"
#include "site/IDialogLogic.h"

namespace vexplot {

class IControlSite;
class MessageSink;
class SettingsStore;

// A message box of the control's own with the check box "&Don't show me
// this again.". The message (text, caption, style bits and where the choice
// is kept) comes from a MessageBoxRecord; once the user ticks the box, the
// choice is stored under the control's settings key and Show returns at
// once from then on.
//
// Style bits, as the platform's message boxes have them: the low nibble is
// the button set (0 OK; 1 OK, Cancel; 2 and 3 Yes, No, Cancel; 4 Yes, No),
// the next the icon (0x10 stop, 0x20 question, 0x30 exclamation, 0x40
// information), the next the default button (0x100 the second, 0x200 the
// third).
class CMessageBoxExt final : public IDialogLogic {
public:
    static constexpr std::string_view kName = "CMessageBoxExt";
    static constexpr const char* kCheckText = "&Don't show me this again.";
    enum class Icon { None, Stop, Question, Exclamation, Information };

    // The message shown on switching to the full-control view, read from
    // its serialized record.
    static MessageBoxRecord FullModeInfo();
    // The bytes of that record, as the program keeps it.
    static std::span<const uint8_t> FullModeInfoBytes();

    explicit CMessageBoxExt(MessageBoxRecord message, MessageSink* sink = nullptr,
                            std::shared_ptr<SettingsStore> store = nullptr);
    std::string_view DialogName() const override { return kName; }

    // Shows the box through `site` unless the user asked not to see it
    // again, and returns the button pressed (kAnswerOk, kAnswerCancel,
    // kAnswerYes, kAnswerNo). A suppressed box, or one no window or script
    // answered, returns its default button.
    int32_t Show(IControlSite& site);
    // Whether the store says the box is not to be shown.
    bool Suppressed() const;

    // what the window shows:
    const MessageBoxRecord& Message() const { return message_; }
    // The buttons shown, in order, as answer codes.
    std::vector<int32_t> Buttons() const;
    int32_t DefaultButton() const;
    Icon IconKind() const;
    static const char* ButtonText(int32_t answer);  // "&Ok", "&Yes", "&No", "&Cancel"
    // The answer Escape gives: Cancel where the box has it, OK for a box
    // with OK alone, none (0) for Yes/No.
    int32_t EscapeButton() const;

    // the user's input:
    bool DontShowAgain() const { return dontShow_; }
    void SetDontShowAgain(bool on) { dontShow_ = on; }
    // The user pressed `answer` (one of Buttons()); the window closes.
    // Stores the don't-show choice when ticked; false when that failed.
    bool Press(int32_t answer);
    std::optional<int32_t> Pressed() const { return pressed_; }

    // Layout, in pixels: margins of 7 dialog units from the base units
    // (`base.x` the average character width, `base.y` the character
    // height), the icon (iconSize 0 for none) at the top left, the text
    // beside it, the check box under the text, the buttons in a row under
    // the check box, centred; the box is sized to fit.
    struct Layout {
        PixelRect icon{};
        PixelRect text{};
        PixelRect check{};
        std::vector<PixelRect> buttons;
        int32_t width = 0;
        int32_t height = 0;
    };
    struct Sizes {
        PixelPoint base;
        int32_t iconSize = 0;
        PixelPoint text;    // the text's extent
        PixelPoint check;   // the check box's extent
        PixelPoint button;  // one button's extent
        int32_t buttonCount = 1;
    };
    static Layout Lay(const Sizes& sizes);

private:
    MessageBoxRecord message_;
    MessageSink* sink_;
    std::shared_ptr<SettingsStore> store_;
    bool dontShow_ = false;
    std::optional<int32_t> pressed_;
};

}  // namespace vexplot
