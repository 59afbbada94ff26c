#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "com/SafeArray.h"
#include "model/CGD_GraphObject.h"
#include "site/IControlSite.h"
#include "site/IDialogLogic.h"

namespace vexplot {

// The logic of the data editor "Data Editor": the grid of one graph object,
// one row per Y coordinate with the highest Y index on top, one column per
// X coordinate. Texts are made only for the cells asked for, so a window
// over it formats what is in sight and nothing else, whatever the grid's
// size. The grid is shared with the data object and never copied: edits are
// kept beside it, so a 4096 x 4096 grid costs the editor nothing extra.
//
// An accepted edit goes straight into the data object, so the plot follows
// at once. "Save Data" keeps the edits; "Exit" after edits asks whether to
// keep them, and "No" puts the grid back as it was when the editor opened.
// Text that does not begin with a number, and values that are not finite,
// are refused with a message and change nothing.
//
// Kept by its graph object (CGD_GraphObject::DataEditor), which closes it
// before it goes; the window is the site's modeless dialog of this name.
class CUIW_DataEditor final : public IDialogLogic, public CGD_GraphObject::DataEditor {
public:
    static constexpr std::string_view kDialogName = "DataEditor";
    static constexpr const char* kCaption = "Data Editor";
    static constexpr const char* kCornerText = "Y   \\   X";
    static constexpr const char* kSaveQuestion = "Data is changed. Do you want to save new values?";
    static constexpr size_t kMaxEditLength = 256;

    // Asks the user a yes/no question; answers kAnswerYes or kAnswerNo.
    using Ask = std::function<int32_t(const std::string& question)>;

    struct EditResult {
        bool written = false;
        std::string message;  // why nothing was written
    };

    // `graph` and `site` are borrowed and outlive the editor.
    CUIW_DataEditor(CGD_GraphObject& graph, CGD_GraphObject::DataEditorContents contents, IControlSite& site,
                    Ask ask);
    ~CUIW_DataEditor() override;

    // The leading number of `text` (at most kMaxEditLength characters
    // read): white space, an optional sign, then a decimal number with an
    // optional exponent; what follows it is ignored ("12ab" gives 12).
    // Empty when the text does not begin with a number.
    static std::optional<double> LeadingNumber(std::string_view text);
    // "%e" and "%.10lg" of C, independent of the process locale.
    static std::string FormatCell(double value);
    static std::string FormatCoordinate(double value);
    // The shortest text that reads back as `value` exactly (what an edit
    // starts from, so that accepting it unchanged loses nothing).
    static std::string FormatExact(double value);

    // Opens the window (the site's modeless dialog). False when the site has none.
    bool Show();

    // IDialogLogic:
    std::string_view DialogName() const override { return kDialogName; }
    // CGD_GraphObject::DataEditor:
    bool WindowExists() const override { return open_; }
    void Close() override;

    // the grid (display rows from the top, data columns from the left):
    const std::string& Title() const { return title_; }
    int32_t Rows() const { return rows_; }
    int32_t Columns() const { return columns_; }
    std::string ColumnHeader(int32_t column) const;  // the X coordinate
    std::string RowHeader(int32_t row) const;        // the Y coordinate
    double Value(int32_t row, int32_t column) const;
    std::string CellText(int32_t row, int32_t column) const { return FormatCell(Value(row, column)); }
    // "X = ..., Y = ..." of the cell, or empty while tool tips are off.
    std::string ToolTip(int32_t row, int32_t column) const;
    // The graph object's colour as the plot shows it (0x00BBGGRR).
    uint32_t Color() const { return color_; }
    bool ShowToolTips() const { return showToolTips_; }
    void SetShowToolTips(bool show) { showToolTips_ = show; }
    bool Editable() const { return graph_->Data() != nullptr; }
    bool Changed() const { return changed_; }

    // editing and leaving:
    // Converts `text` and writes the value into the cell and the data object.
    EditResult Edit(int32_t row, int32_t column, std::string_view text);
    // "Save Data": keeps the edits and closes.
    void Save();
    // "Exit": asks about unsaved edits (Yes keeps them, No restores the
    // grid), then closes.
    void Exit();

private:
    size_t Element(int32_t row, int32_t column) const;
    void Finish();

    CGD_GraphObject* graph_;
    IControlSite* site_;
    Ask ask_;
    std::string title_;
    // The grid as opened (shared with the data object, never copied here:
    // it is what "No" puts back) and the accepted edits by element.
    SafeArray grid_;
    std::unordered_map<size_t, double> edits_;
    SafeArray xScale_;
    SafeArray yScale_;
    int32_t rows_ = 0;
    int32_t columns_ = 0;
    uint32_t color_ = 0;
    bool showToolTips_ = true;
    bool changed_ = false;
    bool open_ = false;
};

}  // namespace vexplot
