#include "ui/CUIW_DataEditor.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

#include "com/ComError.h"
#include "dataobject/IGraphData.h"

namespace vexplot {

namespace {

std::string ToChars(double value, std::chars_format format, int precision) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format, precision);
    return std::string(buffer, result.ptr);
}

// A grid and scales that agree: the grid has Y count x X count elements
// for scales of those lengths; anything else shows as an empty grid.
bool Consistent(const SafeArray& grid, const SafeArray& x, const SafeArray& y) {
    return !grid.IsNull() && x.Dims() == 1 && y.Dims() == 1 && x.ElementCount() > 0 && y.ElementCount() > 0 &&
           grid.ElementCount() == x.ElementCount() * y.ElementCount();
}

}  // namespace

CUIW_DataEditor::CUIW_DataEditor(CGD_GraphObject& graph, CGD_GraphObject::DataEditorContents contents,
                                 IControlSite& site, Ask ask)
    : graph_(&graph), site_(&site), ask_(std::move(ask)), title_(std::move(contents.title)),
      color_(graph.ContrastColor()) {
    if (Consistent(contents.grid, contents.xScale, contents.yScale)) {
        grid_ = std::move(contents.grid);
        xScale_ = std::move(contents.xScale);
        yScale_ = std::move(contents.yScale);
        columns_ = static_cast<int32_t>(xScale_.ElementCount());
        rows_ = static_cast<int32_t>(yScale_.ElementCount());
    }
}

CUIW_DataEditor::~CUIW_DataEditor() { Close(); }

std::optional<double> CUIW_DataEditor::LeadingNumber(std::string_view text) {
    text = text.substr(0, kMaxEditLength);
    size_t at = text.find_first_not_of(" \t\r\n\f\v");
    if (at == std::string_view::npos) return std::nullopt;
    // from_chars takes a minus but not a plus; the letters of "inf" and
    // "nan" are not a number a user types into a cell.
    bool negative = false;
    if (text[at] == '+' || text[at] == '-') negative = text[at++] == '-';
    if (at >= text.size() || !(std::isdigit(static_cast<unsigned char>(text[at])) || text[at] == '.')) return std::nullopt;
    double value = 0.0;
    const auto result = std::from_chars(text.data() + at, text.data() + text.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) return negative ? -HUGE_VAL : HUGE_VAL;
    if (result.ec != std::errc()) return std::nullopt;
    return negative ? -value : value;
}

std::string CUIW_DataEditor::FormatCell(double value) { return ToChars(value, std::chars_format::scientific, 6); }

std::string CUIW_DataEditor::FormatCoordinate(double value) { return ToChars(value, std::chars_format::general, 10); }

std::string CUIW_DataEditor::FormatExact(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

bool CUIW_DataEditor::Show() {
    // A scripted site may play the whole dialog inside this call, closing
    // it again; it was shown all the same.
    open_ = true;
    const bool shown = site_->OpenModelessDialog(*this);
    if (!shown) open_ = false;
    return shown;
}

void CUIW_DataEditor::Close() {
    if (!open_) return;
    open_ = false;
    site_->CloseModelessDialog(*this);
}

std::string CUIW_DataEditor::ColumnHeader(int32_t column) const {
    if (column < 0 || column >= columns_) return {};
    return FormatCoordinate(xScale_.Data()[column]);
}

std::string CUIW_DataEditor::RowHeader(int32_t row) const {
    if (row < 0 || row >= rows_) return {};
    return FormatCoordinate(yScale_.Data()[rows_ - 1 - row]);
}

// Column c, display row r: Y index rows - 1 - r of X index c, the Y index
// running fastest in the grid.
size_t CUIW_DataEditor::Element(int32_t row, int32_t column) const {
    return static_cast<size_t>(column) * static_cast<size_t>(rows_) + static_cast<size_t>(rows_ - 1 - row);
}

double CUIW_DataEditor::Value(int32_t row, int32_t column) const {
    if (row < 0 || row >= rows_ || column < 0 || column >= columns_) return 0.0;
    const size_t element = Element(row, column);
    if (!edits_.empty())
        if (const auto edited = edits_.find(element); edited != edits_.end()) return edited->second;
    return grid_.Data()[element];
}

std::string CUIW_DataEditor::ToolTip(int32_t row, int32_t column) const {
    if (!showToolTips_ || row < 0 || row >= rows_ || column < 0 || column >= columns_) return {};
    std::string tip = "X = ";
    tip.append(ColumnHeader(column)).append(", Y = ").append(RowHeader(row));
    return tip;
}

CUIW_DataEditor::EditResult CUIW_DataEditor::Edit(int32_t row, int32_t column, std::string_view text) {
    if (row < 0 || row >= rows_ || column < 0 || column >= columns_) return {false, "There is no such cell."};
    if (!Editable()) return {false, "This data set cannot be changed."};
    const std::optional<double> value = LeadingNumber(text);
    if (!value) {
        std::string message = "\"";
        message.append(text.substr(0, 40)).append("\" is not a number.");
        return {false, message};
    }
    if (!std::isfinite(*value)) return {false, "The value must be a finite number."};
    try {
        graph_->SetValue(column, rows_ - 1 - row, *value);
    } catch (const ComError& e) {
        std::string message = "The value cannot be written: ";
        message.append(e.what());
        return {false, message};
    }
    edits_[Element(row, column)] = *value;
    changed_ = true;
    return {true, {}};
}

void CUIW_DataEditor::Save() {
    changed_ = false;
    Finish();
}

void CUIW_DataEditor::Exit() {
    if (changed_ && Editable() && ask_ && ask_(kSaveQuestion) != kAnswerYes) {
        if (IGraphData* data = graph_->Data(); data && SUCCEEDED(data->PutData(grid_))) edits_.clear();
    }
    changed_ = false;
    Finish();
}

// The window closes itself after Save or Exit; the logic stays with its
// graph object until that object goes or opens a new editor.
void CUIW_DataEditor::Finish() { open_ = false; }

}  // namespace vexplot
