#include "dataobject/TextGridReader.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "com/StreamError.h"

namespace vexplot {

namespace {

struct Line {
    size_t number;  // from 1
    std::string_view text;
};

[[noreturn]] void Fault(const std::string& text) { throw StreamError(STG_E_DOCFILECORRUPT, text); }

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view Trim(std::string_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

// The lines that hold data: comments and blank lines are dropped here.
std::vector<Line> ContentLines(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    std::vector<Line> lines;
    size_t number = 0;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        ++number;
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::string_view visible = Trim(line);
        if (!visible.empty() && visible.front() != '#') lines.push_back({number, line});
    }
    return lines;
}

void SplitFields(std::string_view line, bool comma, std::vector<std::string_view>* fields) {
    fields->clear();
    if (comma) {
        for (;;) {
            const size_t end = line.find(',');
            std::string_view field = Trim(line.substr(0, end));
            if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
                field = field.substr(1, field.size() - 2);
            fields->push_back(field);
            if (end == std::string_view::npos) return;
            line.remove_prefix(end + 1);
        }
    }
    line = Trim(line);
    while (!line.empty()) {
        size_t end = 0;
        while (end < line.size() && !IsBlank(line[end])) ++end;
        fields->push_back(line.substr(0, end));
        line = Trim(line.substr(end));
    }
}

// strtod's syntax without its locale: an optional sign, digits, "inf", "nan".
bool ParseNumber(std::string_view field, double* value) {
    if (field.starts_with('+')) field.remove_prefix(1);
    if (field.empty()) return false;
    const auto [end, ec] = std::from_chars(field.data(), field.data() + field.size(), *value);
    return ec == std::errc() && end == field.data() + field.size();
}

// A cell: empty means NaN.
bool ParseCell(std::string_view field, double* value) {
    if (field.empty()) {
        *value = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    return ParseNumber(field, value);
}

std::string Where(const Line& line, size_t column) {
    return "line " + std::to_string(line.number) + ", column " + std::to_string(column + 1);
}

class Parser {
public:
    Parser(std::vector<Line> lines, bool comma) : lines_(std::move(lines)), comma_(comma) {}

    GraphContents Run() {
        if (lines_.empty()) Fault("no data: the text holds no numbers");
        DetectHeader();
        const size_t firstRow = header_ ? 1 : 0;
        if (lines_.size() == firstRow) Fault("no data rows after the header line");
        const size_t xCount = xValues_.size();
        const size_t yCount = lines_.size() - firstRow;
        if (std::string fault = GraphContents::CheckSize(xCount, yCount); !fault.empty()) Fault(fault);

        GraphContents contents;
        contents.grid = SafeArray::Create2DForOverwrite(static_cast<uint32_t>(yCount), static_cast<uint32_t>(xCount));
        contents.xScale = XScale();
        contents.yScale = header_ ? SafeArray::Create1D(static_cast<uint32_t>(yCount))
                                  : GraphContents::IndexScale(static_cast<uint32_t>(yCount));
        double* grid = contents.grid.MutableData();
        double* yScale = contents.yScale.MutableData();
        for (size_t iy = 0; iy < yCount; ++iy)
            ParseRow(lines_[firstRow + iy], iy, yCount, grid, header_ ? &yScale[iy] : nullptr);
        return contents;
    }

private:
    void DetectHeader() {
        SplitFields(lines_[0].text, comma_, &fields_);
        std::vector<std::string_view> first = fields_;
        size_t secondSize = 0;
        if (lines_.size() > 1) {
            SplitFields(lines_[1].text, comma_, &fields_);
            secondSize = fields_.size();
        }
        double ignored = 0;
        const bool cornerOmitted = secondSize == first.size() + 1;
        const bool cornerCell = first.size() >= 2 && (first[0].empty() || !ParseNumber(first[0], &ignored));
        header_ = cornerOmitted || cornerCell;
        xValues_.assign(first.begin() + (header_ && !cornerOmitted ? 1 : 0), first.end());
        rowFields_ = xValues_.size() + (header_ ? 1 : 0);
    }

    SafeArray XScale() const {
        const auto count = static_cast<uint32_t>(xValues_.size());
        if (!header_) return GraphContents::IndexScale(count);
        SafeArray scale = SafeArray::Create1D(count);
        double* values = scale.MutableData();
        for (uint32_t i = 0; i < count; ++i)
            if (!ParseNumber(xValues_[i], &values[i]) || !std::isfinite(values[i]))
                return GraphContents::IndexScale(count);  // column names, not coordinates
        return scale;
    }

    void ParseRow(const Line& line, size_t iy, size_t yCount, double* grid, double* yValue) {
        SplitFields(line.text, comma_, &fields_);
        if (fields_.size() != rowFields_)
            Fault("line " + std::to_string(line.number) + " has " + std::to_string(fields_.size()) +
                  " fields where " + std::to_string(rowFields_) + " are expected (a ragged row)");
        size_t column = 0;
        if (yValue) {
            if (!ParseNumber(fields_[0], yValue) || !std::isfinite(*yValue))
                Fault(Where(line, 0) + ": Y value '" + std::string(fields_[0]) + "' is not a finite number");
            column = 1;
        }
        for (size_t ix = 0; column < fields_.size(); ++ix, ++column) {
            if (!ParseCell(fields_[column], &grid[ix * yCount + iy]))
                Fault(Where(line, column) + ": '" + std::string(fields_[column]) + "' is not a number");
        }
    }

    std::vector<Line> lines_;
    bool comma_;
    bool header_ = false;
    std::vector<std::string_view> xValues_;
    size_t rowFields_ = 0;
    std::vector<std::string_view> fields_;
};

}  // namespace

GraphContents TextGridReader::Read(std::string_view text, bool commaSeparated) {
    std::vector<Line> lines = ContentLines(text);
    const bool comma = commaSeparated || (!lines.empty() && lines[0].text.find(',') != std::string_view::npos);
    return Parser(std::move(lines), comma).Run();
}

}  // namespace vexplot
