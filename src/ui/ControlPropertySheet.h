#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "com/IDispatch.h"
#include "com/Variant.h"
#include "model/LogicalFont.h"
#include "site/IDialogLogic.h"

namespace vexplot {

class MessageSink;
class SettingsStore;

// The control's property sheet "Vexplot Control Properties": six pages
// (General, 3DView, Info-Window and one per axis) whose fields are bound by
// name to properties of the control's dispatch interface. Fill reads every
// field through the property of its name; Apply checks every field first
// and, only when all are valid, writes each changed one back through its
// property, so every rule of the property's setter applies unchanged.
//
// Besides the properties, the General page lists the engines registered in
// the settings store, and the Info-Window page describes the info window's
// font ("Arial, 8, Normal") and stores a newly chosen font as the "Font"
// record the info window reads at its next creation.
class ControlPropertySheet final : public IDialogLogic {
public:
    static constexpr std::string_view kName = "ControlProperties";
    static constexpr const char* kCaption = "Vexplot Control Properties";

    enum class Kind {
        Check,   // bool property; a check box
        Colour,  // 0x00BBGGRR; a swatch that opens the colour chooser
        List,    // index property; a drop-down list of `choices`
        Radio,   // index property; one radio button per entry of `choices`
        Engine,  // text property; a drop-down list of the registered engines
        Real,    // double property in [min, max]; an edit
        Integer, // integer property in [min, max]; an edit
        Text,    // text property of at most `max` characters; an edit
        Font,    // the info window's font; read-only description and buttons
    };
    struct Field {
        std::string property;  // the dispatch name; the Qt widget's object name
        std::string label;     // with its mnemonic
        Kind kind = Kind::Check;
        std::string group;     // fields of one group are drawn in one box
        double min = 0;
        double max = 0;
        std::vector<std::string> choices;
        std::string tip;           // swatches: the tool tip
        std::string chooserTitle;  // swatches: the colour chooser's title
    };
    struct Page {
        std::string caption;
        std::vector<Field> fields;
    };
    // The six pages in tab order.
    static const std::vector<Page>& Pages();

    // Where Apply stopped: the field to focus and the message to show.
    struct Problem {
        size_t page = 0;
        size_t field = 0;
        std::string message;
    };

    // `control` is the dispatch interface the fields are bound to (kept
    // alive by the sheet); `store` null means the default settings store.
    ControlPropertySheet(ComPtr<IDispatch> control, MessageSink* sink = nullptr,
                         std::shared_ptr<SettingsStore> store = nullptr);
    ~ControlPropertySheet() override;
    std::string_view DialogName() const override { return kName; }

    // Reads every field from its property (and the engine list and font
    // from the settings store). Nothing counts as changed afterwards.
    void Fill();
    // Validates every field, then writes the changed ones. On a problem
    // nothing at all is written and the problem is returned; a property
    // whose setter refuses the value reports it itself (the control's
    // Error event) and the rest are still written.
    std::optional<Problem> Apply();
    // Whether any field differs from what was last filled or applied.
    bool Changed() const;

    // field values, by property name (an unknown name reads as empty and is
    // ignored when set). Check: VT_BOOL; Colour, List, Radio: VT_I4; Engine,
    // Real, Integer, Text: VT_BSTR, the text the edit or list shows. A value
    // of another type is converted; one that cannot be is ignored.
    Variant Value(std::string_view property) const;
    void SetValue(std::string_view property, Variant value);
    // Whether the property exists on the control (fields it lacks are
    // drawn disabled).
    bool Bound(std::string_view property) const;

    // General page:
    const std::vector<std::string>& Engines() const { return engines_; }

    // Info-Window page:
    // The description shown, e.g. "Arial, 12, Bold, Italic, Underline".
    std::string FontDescription() const { return Describe(font_, fontPoints_); }
    const LogicalFont& Font() const { return font_; }
    int32_t FontPoints() const { return fontPoints_; }
    // The font chooser's answer: the font and its size in points.
    void ChooseFont(const LogicalFont& font, int32_t points);
    // "Def&ault": Arial, 8 points, normal weight.
    void DefaultFont();
    // "%s, %d, %s": face, points, then the weight name followed by
    // ", Italic", ", Underline" and ", StrikeOut" for the set attributes.
    static std::string Describe(const LogicalFont& font, int32_t points);
    static const char* WeightName(int32_t weight);

    // Number reading for the edits: the whole text must be a number in the
    // C locale (blanks around it allowed).
    static std::optional<double> ParseNumber(std::string_view text);
    // The check of one field's value; empty when it is valid.
    static std::string Check(const Field& field, const Variant& value);

private:
    struct Slot;
    Slot* Find(std::string_view property);
    const Slot* Find(std::string_view property) const;
    Variant ToEditValue(const Field& field, const Variant& property) const;
    static Variant ToPropertyValue(const Field& field, const Variant& value);
    Variant GetProperty(DISPID id) const;
    HRESULT PutProperty(DISPID id, Variant value);
    void FillEngineList();
    void FillFont();
    bool StoreFont();

    ComPtr<IDispatch> control_;
    MessageSink* sink_;
    std::shared_ptr<SettingsStore> store_;
    std::vector<Slot> slots_;
    std::vector<std::string> engines_;
    LogicalFont font_;
    int32_t fontPoints_ = 8;
    bool fontChanged_ = false;
};

}  // namespace vexplot
