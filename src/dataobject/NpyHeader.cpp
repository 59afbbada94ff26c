#include "dataobject/NpyHeader.h"

#include <bit>
#include <charconv>

namespace vexplot {

namespace {

// A cursor over the dictionary: just enough of Python's literal syntax for
// strings, True/False and tuples of integers.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    void SkipBlanks() {
        while (!text_.empty() && (text_[0] == ' ' || text_[0] == '\t' || text_[0] == '\n' || text_[0] == '\r'))
            text_.remove_prefix(1);
    }
    bool Take(char c) {
        SkipBlanks();
        if (text_.empty() || text_[0] != c) return false;
        text_.remove_prefix(1);
        return true;
    }
    bool Peek(char c) {
        SkipBlanks();
        return !text_.empty() && text_[0] == c;
    }
    bool String(std::string* out) {
        SkipBlanks();
        if (text_.empty() || (text_[0] != '\'' && text_[0] != '"')) return false;
        const size_t end = text_.find(text_[0], 1);
        if (end == std::string_view::npos) return false;
        *out = std::string(text_.substr(1, end - 1));
        text_.remove_prefix(end + 1);
        return true;
    }
    bool Word(std::string_view word) {
        SkipBlanks();
        if (!text_.starts_with(word)) return false;
        text_.remove_prefix(word.size());
        return true;
    }
    bool Integer(uint64_t* value) {
        SkipBlanks();
        const auto [end, ec] = std::from_chars(text_.data(), text_.data() + text_.size(), *value);
        if (ec != std::errc()) return false;
        text_.remove_prefix(static_cast<size_t>(end - text_.data()));
        Take('L');  // written by Python 2
        return true;
    }
    bool AtEnd() {
        SkipBlanks();
        return text_.empty();
    }

private:
    std::string_view text_;
};

bool ParseDescr(const std::string& descr, NpyHeader* header, std::string* fault) {
    std::string_view d = descr;
    char order = '=';
    if (!d.empty() && (d[0] == '<' || d[0] == '>' || d[0] == '|' || d[0] == '=')) {
        order = d[0];
        d.remove_prefix(1);
    }
    uint32_t size = 0;
    if (d.size() >= 2) std::from_chars(d.data() + 1, d.data() + d.size(), size);
    const char kind = d.empty() ? '\0' : d[0];
    const bool known = d.size() == 2 + (size >= 10 ? 1 : 0) &&
                       ((kind == 'f' && (size == 4 || size == 8)) ||
                        ((kind == 'i' || kind == 'u') && (size == 1 || size == 2 || size == 4 || size == 8)) ||
                        (kind == 'b' && size == 1));
    if (!known || (order == '|' && size != 1)) {
        *fault = "unsupported dtype '" + descr + "' (float32/64, int8-64, uint8-64 and bool are read)";
        return false;
    }
    header->kind = kind == 'f' ? NpyHeader::Kind::Float
                 : kind == 'i' ? NpyHeader::Kind::Signed
                 : kind == 'u' ? NpyHeader::Kind::Unsigned
                               : NpyHeader::Kind::Bool;
    header->itemSize = size;
    header->bigEndian = order == '>' || (order == '=' && std::endian::native == std::endian::big);
    return true;
}

bool ParseShape(Scanner& s, NpyHeader* header, std::string* fault) {
    if (!s.Take('(')) {
        *fault = "the shape is not a tuple";
        return false;
    }
    while (!s.Take(')')) {
        uint64_t n = 0;
        if (!s.Integer(&n)) {
            *fault = "the shape holds something that is not a size";
            return false;
        }
        header->shape.push_back(n);
        if (!s.Take(',') && !s.Peek(')')) {
            *fault = "the shape tuple is malformed";
            return false;
        }
    }
    return true;
}

bool ParseValue(Scanner& s, const std::string& key, NpyHeader* header, std::string* fault) {
    if (key == "descr") {
        std::string descr;
        if (s.String(&descr)) return ParseDescr(descr, header, fault);
        *fault = "structured dtypes are not supported";
        return false;
    }
    if (key == "fortran_order") {
        if (s.Word("True")) header->fortranOrder = true;
        else if (s.Word("False")) header->fortranOrder = false;
        else {
            *fault = "fortran_order is neither True nor False";
            return false;
        }
        return true;
    }
    if (key == "shape") return ParseShape(s, header, fault);
    *fault = "unexpected key '" + key + "'";
    return false;
}

}  // namespace

bool NpyHeader::Parse(std::string_view text, NpyHeader* header, std::string* fault) {
    *header = NpyHeader{};
    Scanner s(text);
    if (!s.Take('{')) {
        *fault = "the header is not a dictionary";
        return false;
    }
    unsigned seen = 0;  // bits: descr, fortran_order, shape
    while (!s.Take('}')) {
        std::string key;
        if (!s.String(&key) || !s.Take(':')) {
            *fault = "the header dictionary is malformed";
            return false;
        }
        const unsigned bit = key == "descr" ? 1u : key == "fortran_order" ? 2u : key == "shape" ? 4u : 0u;
        if (seen & bit) {
            *fault = "key '" + key + "' appears twice";
            return false;
        }
        seen |= bit;
        if (!ParseValue(s, key, header, fault)) return false;
        if (!s.Take(',') && !s.Peek('}')) {
            *fault = "the header dictionary is malformed";
            return false;
        }
    }
    if (!s.AtEnd()) {
        *fault = "text follows the header dictionary";
        return false;
    }
    if (seen != 7u) {
        *fault = "the header lacks 'descr', 'fortran_order' or 'shape'";
        return false;
    }
    return true;
}

}  // namespace vexplot
