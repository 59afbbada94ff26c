#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "site/IDialogLogic.h"

namespace vexplot {

// The save-file dialog of the picture exports, with a strip at its bottom
// where the user picks the pixel size of the picture: three presets and
// "Custom", which enables two edits for the width and the height.
//
// How an export command uses it:
//
//     ExportSizeChooser chooser = ExportSizeChooser::ForBitmap();
//     if (site->RunDialog(chooser) == kAnswerOk) {
//         if (const auto& r = chooser.Chosen()) Export(r->fileName, r->width, r->height);
//     }
//
// Chosen() is set only by Confirm, which the Qt window calls with the name
// the user confirmed and a script calls with the name it wants. A cancelled
// run leaves the previous result in place. The size is taken as typed: a
// custom 0 or negative size comes back as such, and the export decides
// what to do with it.
//
// A headless script plays it like this:
//
//     site.AnswerDialog(ExportSizeChooser::kName, [](IDialogLogic& d) {
//         auto& c = static_cast<ExportSizeChooser&>(d);
//         c.Select(ExportSizeChooser::kCustom);
//         c.SetWidthText("1234");
//         c.SetHeightText("567");
//         return c.Confirm("/tmp/plot.bmp") ? kAnswerOk : kAnswerCancel;
//     });
class ExportSizeChooser final : public IDialogLogic {
public:
    static constexpr std::string_view kName = "ExportSizeChooser";
    static constexpr int32_t kCustom = 3;
    // The longest path the chooser returns; longer names are refused.
    static constexpr size_t kMaxPath = 260;
    // Each custom edit is read for at most this many characters.
    static constexpr size_t kMaxDigits = 10;

    struct Preset {
        const char* text;
        int32_t width;
        int32_t height;
    };
    // The size list, in order; the last entry is "Custom" (0 x 0).
    static const std::array<Preset, 4>& Presets();

    // One "description" / "pattern list" pair of the file-type list.
    struct FileType {
        std::string description;  // "Bitmap file (*.BMP)"
        std::string patterns;     // "*.bmp"; several are separated by ';'
    };

    struct Result {
        std::string fileName;
        int32_t width = 0;
        int32_t height = 0;
    };

    // `filter` in the "description|patterns|...||" form; `defaultExtension`
    // (no dot) is appended to a confirmed name that has no extension.
    // Without the size strip the chooser is a plain file dialog and the
    // result's size is the first preset's.
    ExportSizeChooser(std::string_view filter, std::string defaultExtension, bool sizeStrip = true);
    // The bitmap export's chooser ("Bitmap file (*.BMP)", "BMP", with the strip).
    static ExportSizeChooser ForBitmap();
    // The metafile export's chooser ("Enhanced metafile (*.EMF)", "EMF"),
    // with the strip as well, so that the export knows the size to draw at.
    static ExportSizeChooser ForMetafile();

    std::string_view DialogName() const override { return kName; }

    // setup (before running):
    bool ForOpening() const { return open_; }
    void SetForOpening(bool open) { open_ = open; }
    // The name and folder the dialog starts with.
    const std::string& InitialName() const { return initialName_; }
    void SetInitialName(std::string name) { initialName_ = std::move(name); }

    // what the window shows:
    const std::vector<FileType>& FileTypes() const { return types_; }
    const std::string& DefaultExtension() const { return defaultExtension_; }
    bool HasSizeStrip() const { return sizeStrip_; }
    int32_t Selection() const { return selection_; }
    const std::string& WidthText() const { return widthText_; }
    const std::string& HeightText() const { return heightText_; }
    // The edits take input only while "Custom" is selected.
    bool SizeEditable() const { return selection_ == kCustom; }

    // the user's input:
    // Selects a preset (its numbers go into the edits) or "Custom" (the
    // edits keep their text). Indexes outside the list are ignored.
    void Select(int32_t index);
    // Ignored unless SizeEditable().
    void SetWidthText(std::string text);
    void SetHeightText(std::string text);
    // The user confirmed `fileName`: the size is taken from the selection
    // and the result stored. False (and nothing stored) for an empty name
    // or one longer than kMaxPath; Error() then says why.
    bool Confirm(std::string fileName);
    const std::string& Error() const { return error_; }

    // the outcome:
    const std::optional<Result>& Chosen() const { return result_; }

    // The custom edits' reading: at most kMaxDigits characters, skipping
    // leading blanks, an optional sign, then the decimal digits up to the
    // first other character ("12ab" is 12); text that is not a number is 0.
    // Values beyond int32 are clamped.
    static int32_t ReadDecimal(std::string_view text);
    // "a|b|c|d||" into {a, b}, {c, d}.
    static std::vector<FileType> ParseFilter(std::string_view filter);

private:
    std::vector<FileType> types_;
    std::string defaultExtension_;
    bool sizeStrip_ = true;
    bool open_ = false;
    std::string initialName_;
    int32_t selection_ = 0;
    std::string widthText_;
    std::string heightText_;
    std::string error_;
    std::optional<Result> result_;
};

}  // namespace vexplot
