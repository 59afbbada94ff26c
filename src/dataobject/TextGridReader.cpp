#include "dataobject/TextGridReader.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

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

// The lines that hold data, one after the other: comments and blank lines
// are skipped. Nothing is kept per line, so a file of many short lines
// costs no more than its bytes.
class LineCursor {
public:
    explicit LineCursor(std::string_view text) : rest_(text) {
        if (rest_.starts_with("\xEF\xBB\xBF")) rest_.remove_prefix(3);
    }

    bool Next(Line* line) {
        while (!rest_.empty()) {
            const size_t end = rest_.find('\n');
            std::string_view text = rest_.substr(0, end);
            rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
            ++number_;
            if (text.ends_with('\r')) text.remove_suffix(1);
            const std::string_view visible = Trim(text);
            if (!visible.empty() && visible.front() != '#') {
                *line = {number_, text};
                return true;
            }
        }
        return false;
    }

private:
    std::string_view rest_;
    size_t number_ = 0;
};

// Calls fn(field, index) for each field of `line`; answers the count.
template <class Fn>
size_t ForEachField(std::string_view line, bool comma, Fn&& fn) {
    size_t count = 0;
    if (comma) {
        for (;;) {
            const size_t end = line.find(',');
            std::string_view field = Trim(line.substr(0, end));
            if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
                field = field.substr(1, field.size() - 2);
            fn(field, count++);
            if (end == std::string_view::npos) return count;
            line.remove_prefix(end + 1);
        }
    }
    line = Trim(line);
    while (!line.empty()) {
        size_t end = 0;
        while (end < line.size() && !IsBlank(line[end])) ++end;
        fn(line.substr(0, end), count++);
        line = Trim(line.substr(end));
    }
    return count;
}

size_t FieldCount(std::string_view line, bool comma) {
    return ForEachField(line, comma, [](std::string_view, size_t) {});
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

// Two passes over the text: the first counts the rows and reads the header,
// so the size is checked before the grid is allocated; the second parses
// each row straight into the grid. The peak is the text plus the grid.
class Parser {
public:
    Parser(std::string_view text, bool commaSeparated) : text_(text), comma_(commaSeparated) {}

    GraphContents Run() {
        Line first{};
        Line second{};
        LineCursor cursor(text_);
        if (!cursor.Next(&first)) Fault("no data: the text holds no numbers");
        const bool hasSecond = cursor.Next(&second);
        size_t lines = hasSecond ? 2 : 1;
        for (Line ignored{}; cursor.Next(&ignored);) ++lines;
        comma_ = comma_ || first.text.find(',') != std::string_view::npos;
        DetectHeader(first, hasSecond ? FieldCount(second.text, comma_) : 0);
        if (lines == (header_ ? 1u : 0u)) Fault("no data rows after the header line");
        const size_t xCount = rowFields_ - (header_ ? 1 : 0);
        const size_t yCount = lines - (header_ ? 1 : 0);
        if (std::string fault = GraphContents::CheckSize(xCount, yCount); !fault.empty()) Fault(fault);

        GraphContents contents;
        contents.grid = SafeArray::Create2DForOverwrite(static_cast<uint32_t>(yCount), static_cast<uint32_t>(xCount));
        contents.xScale = XScale(first, xCount);
        contents.yScale = header_ ? SafeArray::Create1D(static_cast<uint32_t>(yCount))
                                  : GraphContents::IndexScale(static_cast<uint32_t>(yCount));
        double* grid = contents.grid.MutableData();
        double* yScale = contents.yScale.MutableData();
        LineCursor rows(text_);
        Line line{};
        if (header_) rows.Next(&line);
        for (size_t iy = 0; iy < yCount && rows.Next(&line); ++iy)
            ParseRow(line, iy, yCount, grid, header_ ? &yScale[iy] : nullptr);
        return contents;
    }

private:
    void DetectHeader(const Line& first, size_t secondSize) {
        std::string_view corner;
        const size_t firstSize = ForEachField(first.text, comma_, [&](std::string_view field, size_t i) {
            if (i == 0) corner = field;
        });
        double ignored = 0;
        cornerOmitted_ = secondSize == firstSize + 1;
        const bool cornerCell = firstSize >= 2 && (corner.empty() || !ParseNumber(corner, &ignored));
        header_ = cornerOmitted_ || cornerCell;
        rowFields_ = firstSize + (cornerOmitted_ ? 1 : 0);
    }

    SafeArray XScale(const Line& first, size_t count) const {
        if (!header_) return GraphContents::IndexScale(static_cast<uint32_t>(count));
        SafeArray scale = SafeArray::Create1D(static_cast<uint32_t>(count));
        double* values = scale.MutableData();
        const size_t skip = cornerOmitted_ ? 0 : 1;
        bool coordinates = true;
        ForEachField(first.text, comma_, [&](std::string_view field, size_t i) {
            if (i < skip || !coordinates) return;
            double& v = values[i - skip];
            coordinates = ParseNumber(field, &v) && std::isfinite(v);
        });
        // Column names, not coordinates.
        return coordinates ? scale : GraphContents::IndexScale(static_cast<uint32_t>(count));
    }

    void ParseRow(const Line& line, size_t iy, size_t yCount, double* grid, double* yValue) {
        if (const size_t fields = FieldCount(line.text, comma_); fields != rowFields_)
            Fault("line " + std::to_string(line.number) + " has " + std::to_string(fields) + " fields where " +
                  std::to_string(rowFields_) + " are expected (a ragged row)");
        const size_t first = yValue ? 1 : 0;
        ForEachField(line.text, comma_, [&](std::string_view field, size_t column) {
            if (column < first) {
                if (!ParseNumber(field, yValue) || !std::isfinite(*yValue))
                    Fault(Where(line, 0) + ": Y value '" + std::string(field) + "' is not a finite number");
                return;
            }
            if (!ParseCell(field, &grid[(column - first) * yCount + iy]))
                Fault(Where(line, column) + ": '" + std::string(field) + "' is not a number");
        });
    }

    std::string_view text_;
    bool comma_;
    bool header_ = false;
    bool cornerOmitted_ = false;
    size_t rowFields_ = 0;
};

}  // namespace

GraphContents TextGridReader::Read(std::string_view text, bool commaSeparated) {
    return Parser(text, commaSeparated).Run();
}

}  // namespace vexplot
