#include "model/PaletteFile.h"

#include <algorithm>
#include <array>

#include "com/StreamWriter.h"

namespace vexplot {

namespace {

constexpr int kEnd = -1;

// Palette text held in memory, one character at a time.
class TextSource {
public:
    explicit TextSource(std::string_view text) : text_(text) {}
    int Peek() const { return position_ < text_.size() ? static_cast<unsigned char>(text_[position_]) : kEnd; }
    void Advance() { ++position_; }

private:
    std::string_view text_;
    size_t position_ = 0;
};

// Palette text from a stream, through a buffer of its own (a FileStream
// makes one system call per Read).
class StreamSource {
public:
    explicit StreamSource(IStream& stream) : stream_(stream) {}
    int Peek() {
        if (position_ == filled_ && !Refill()) return kEnd;
        return buffer_[position_];
    }
    void Advance() { ++position_; }

private:
    bool Refill() {
        uint32_t read = 0;
        if (ended_ || FAILED(stream_.Read(buffer_.data(), static_cast<uint32_t>(buffer_.size()), &read)) || read == 0) {
            ended_ = true;
            return false;
        }
        position_ = 0;
        filled_ = read;
        return true;
    }

    IStream& stream_;
    std::array<unsigned char, 4096> buffer_{};
    size_t position_ = 0;
    size_t filled_ = 0;
    bool ended_ = false;
};

// The white space that the scan format's "%d" and "\n" skip.
bool IsSpace(int c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool IsDigit(int c) { return c >= '0' && c <= '9'; }

// One application of the scan format "%d,%d,%d\n" at the source's position.
template <class Source>
class LineScanner {
public:
    explicit LineScanner(Source& source) : source_(source) {}

    bool AtEnd() { return source_.Peek() == kEnd; }

    // Converts up to three numbers into `rgb`, leaving the components it
    // could not convert as they were; returns how many it converted.
    int Scan(std::array<uint8_t, 3>& rgb) {
        for (int k = 0; k < 3; ++k) {
            if (k > 0 && !Take(',')) return k;
            if (!ScanNumber(rgb[static_cast<size_t>(k)])) return k;
        }
        SkipSpace();
        return 3;
    }

private:
    bool Take(int c) {
        if (source_.Peek() != c) return false;
        source_.Advance();
        return true;
    }

    void SkipSpace() {
        while (IsSpace(source_.Peek())) source_.Advance();
    }

    // "%d" reduced to the low byte: arithmetic modulo 256 is exact for any
    // number of digits and cannot overflow. A sign without a digit after it
    // is consumed and converts nothing, as the C library's scanner does.
    bool ScanNumber(uint8_t& value) {
        SkipSpace();
        const bool negative = Take('-');
        if (!negative) Take('+');
        if (!IsDigit(source_.Peek())) return false;
        uint8_t magnitude = 0;
        for (int c = source_.Peek(); IsDigit(c); c = source_.Peek()) {
            magnitude = static_cast<uint8_t>(magnitude * 10 + (c - '0'));
            source_.Advance();
        }
        value = negative ? static_cast<uint8_t>(0u - magnitude) : magnitude;
        return true;
    }

    Source& source_;
};

template <class Source>
std::vector<uint32_t> ReadColors(Source& source) {
    LineScanner<Source> scanner(source);
    std::array<uint8_t, 3> rgb{};
    std::vector<uint32_t> colors;
    while (colors.size() < PaletteFile::kMaxColors && !scanner.AtEnd()) {
        // The count of converted fields is not looked at, so a line that
        // converts nothing appends the previous colour once more. Such a
        // scan consumed nothing a next scan could get past, so the reading
        // ends there instead of appending the same colour for ever.
        const int converted = scanner.Scan(rgb);
        if (converted == 0 && scanner.AtEnd()) break;  // only blanks were left
        colors.push_back(uint32_t{rgb[0]} | uint32_t{rgb[1]} << 8 | uint32_t{rgb[2]} << 16);
        if (converted == 0) break;
    }
    return colors;
}

}  // namespace

std::vector<uint32_t> PaletteFile::Parse(std::string_view text) {
    TextSource source(text);
    return ReadColors(source);
}

std::vector<uint32_t> PaletteFile::Read(IStream& stream) {
    StreamSource source(stream);
    return ReadColors(source);
}

std::string PaletteFile::Format(std::span<const uint32_t> colors) {
    std::string text;
    text.reserve(colors.size() * 12);
    for (const uint32_t color : colors) {
        text += std::to_string(color & 0xFF) + ',' + std::to_string(color >> 8 & 0xFF) + ',' +
                std::to_string(color >> 16 & 0xFF) + '\n';
    }
    return text;
}

void PaletteFile::Write(IStream& stream, std::span<const uint32_t> colors) {
    constexpr size_t kBlock = 4096;
    StreamWriter writer(&stream);
    for (size_t first = 0; first < colors.size(); first += kBlock) {
        const std::string text = Format(colors.subspan(first, std::min(kBlock, colors.size() - first)));
        writer.WriteBytes(std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
    }
}

namespace {

// "  -12 " : optional blanks, an optional sign, digits, optional blanks.
bool IsWholeNumber(std::string_view field) {
    size_t i = 0;
    auto blanks = [&] {
        while (i < field.size() && (field[i] == ' ' || field[i] == '\t')) ++i;
    };
    blanks();
    if (i < field.size() && (field[i] == '-' || field[i] == '+')) ++i;
    const size_t digits = i;
    while (i < field.size() && IsDigit(static_cast<unsigned char>(field[i]))) ++i;
    if (i == digits) return false;
    blanks();
    return i == field.size();
}

bool IsColourLine(std::string_view line) {
    int fields = 0;
    for (;;) {
        const size_t comma = line.find(',');
        if (!IsWholeNumber(line.substr(0, comma))) return false;
        ++fields;
        if (comma == std::string_view::npos) break;
        line.remove_prefix(comma + 1);
    }
    return fields == 3;
}

}  // namespace

bool PaletteFile::LooksLikePalette(std::string_view text) {
    bool colour = false;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.find_first_not_of(" \t") == std::string_view::npos) continue;
        if (!IsColourLine(line)) return false;
        colour = true;
    }
    return colour;
}

}  // namespace vexplot
