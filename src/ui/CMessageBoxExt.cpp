#include "ui/CMessageBoxExt.h"

#include <algorithm>

#include "settings/CRegistryKey.h"
#include "settings/RegistryStatus.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

// The full-control view's message as a serialized CMessageBoxExt record:
// the class record, then text, caption, style, value name and sub-key.
constexpr char kFullModeInfo[] =
    "\xFF\xFF"          // a class new to this archive
    "\x01\x00\x00\x00"  // its schema, 1
    "\x0E" "CMessageBoxExt"
    "\x79" "You are now switching to Full-Coltrol View\n"
           "You can still access menu by presing\n"
           "Ctrl+F10 or \"Pop-up Menu\" Key on Keyboard"
    "\x18" "Kestrune Vexplot Control"
    "\x40\x00\x00\x00"  // OK, information icon, first button default
    "\x08" "DontShow"
    "\x0C" "FullModeInfo";

std::string KeyPath(const std::string& subKey) {
    std::string path = CRegistryKey::kProductPath;
    if (!subKey.empty()) path += "\\" + subKey;
    return path;
}

}  // namespace

std::span<const uint8_t> CMessageBoxExt::FullModeInfoBytes() {
    return {reinterpret_cast<const uint8_t*>(kFullModeInfo), sizeof kFullModeInfo - 1};
}

MessageBoxRecord CMessageBoxExt::FullModeInfo() { return MessageBoxRecord::Read(FullModeInfoBytes()); }

CMessageBoxExt::CMessageBoxExt(MessageBoxRecord message, MessageSink* sink, std::shared_ptr<SettingsStore> store)
    : message_(std::move(message)), sink_(sink), store_(std::move(store)) {}

bool CMessageBoxExt::Suppressed() const {
    CRegistryKey key(sink_, store_);
    if (!key.OpenExisting(RootKey::CurrentUser, KeyPath(message_.subKey))) return false;
    const int32_t value = key.ReadInt(message_.valueName);
    return value != -1 && value != 0;  // -1: missing
}

int32_t CMessageBoxExt::Show(IControlSite& site) {
    pressed_.reset();
    if (Suppressed()) return DefaultButton();
    site.RunDialog(*this);
    if (!pressed_) pressed_ = DefaultButton();
    return *pressed_;
}

std::vector<int32_t> CMessageBoxExt::Buttons() const {
    switch (message_.style & 0xF) {
        case 1: return {kAnswerOk, kAnswerCancel};
        case 2:
        case 3: return {kAnswerYes, kAnswerNo, kAnswerCancel};
        case 4: return {kAnswerYes, kAnswerNo};
        default: return {kAnswerOk};
    }
}

int32_t CMessageBoxExt::DefaultButton() const {
    const std::vector<int32_t> buttons = Buttons();
    const size_t index = (message_.style & 0xF00) == 0x200 ? 2 : (message_.style & 0xF00) == 0x100 ? 1 : 0;
    return buttons[std::min(index, buttons.size() - 1)];
}

CMessageBoxExt::Icon CMessageBoxExt::IconKind() const {
    switch (message_.style & 0xF0) {
        case 0x10: return Icon::Stop;
        case 0x20: return Icon::Question;
        case 0x30: return Icon::Exclamation;
        case 0x40: return Icon::Information;
        default: return Icon::None;
    }
}

const char* CMessageBoxExt::ButtonText(int32_t answer) {
    switch (answer) {
        case kAnswerOk: return "&Ok";
        case kAnswerYes: return "&Yes";
        case kAnswerNo: return "&No";
        case kAnswerCancel: return "&Cancel";
        default: return "";
    }
}

int32_t CMessageBoxExt::EscapeButton() const {
    const std::vector<int32_t> buttons = Buttons();
    if (std::find(buttons.begin(), buttons.end(), kAnswerCancel) != buttons.end()) return kAnswerCancel;
    return buttons.size() == 1 ? buttons.front() : 0;
}

bool CMessageBoxExt::Press(int32_t answer) {
    pressed_ = answer;
    if (!dontShow_) return true;
    CRegistryKey key(sink_, store_);
    return key.Open(message_.subKey) != 0 && key.WriteInt(message_.valueName, 1) == RegistryStatus::kSuccess;
}

CMessageBoxExt::Layout CMessageBoxExt::Lay(const Sizes& s) {
    const int32_t mx = 7 * s.base.x / 4;
    const int32_t my = 7 * s.base.y / 8;
    Layout l;
    l.icon = {mx, my, mx + s.iconSize, my + s.iconSize};
    const int32_t textLeft = s.iconSize > 0 ? l.icon.right + mx : mx;
    l.text = {textLeft, my, textLeft + s.text.x, my + s.text.y};
    const int32_t below = std::max(l.text.bottom, s.iconSize > 0 ? l.icon.bottom : 0) + my;
    l.check = {textLeft, below, textLeft + s.check.x, below + s.check.y};
    const int32_t count = std::max(s.buttonCount, 1);
    const int32_t row = count * s.button.x + (count - 1) * mx;
    l.width = std::max({l.text.right, l.check.right, mx + row}) + mx;
    const int32_t top = l.check.bottom + my;
    int32_t x = (l.width - row) / 2;
    for (int32_t i = 0; i < count; ++i, x += s.button.x + mx) l.buttons.push_back({x, top, x + s.button.x, top + s.button.y});
    l.height = top + s.button.y + my;
    return l;
}

}  // namespace vexplot
