#include "ui/ExportSizeChooser.h"

#include <limits>

namespace vexplot {

const std::array<ExportSizeChooser::Preset, 4>& ExportSizeChooser::Presets() {
    static const std::array<Preset, 4> presets{{
        {"640x480", 640, 480},
        {"800x600", 800, 600},
        {"1000x1000", 1000, 1000},
        {"Custom", 0, 0},
    }};
    return presets;
}

ExportSizeChooser::ExportSizeChooser(std::string_view filter, std::string defaultExtension, bool sizeStrip)
    : types_(ParseFilter(filter)), defaultExtension_(std::move(defaultExtension)), sizeStrip_(sizeStrip) {
    Select(0);
}

ExportSizeChooser ExportSizeChooser::ForBitmap() {
    return ExportSizeChooser("Bitmap file (*.BMP)|*.bmp|All files (*.*)|*.*||", "BMP");
}

ExportSizeChooser ExportSizeChooser::ForMetafile() {
    return ExportSizeChooser("Enhanced metafile (*.EMF)|*.emf|All files (*.*)|*.*||", "EMF");
}

void ExportSizeChooser::Select(int32_t index) {
    if (index < 0 || index >= static_cast<int32_t>(Presets().size())) return;
    selection_ = index;
    if (index == kCustom) return;  // the edits keep whatever they showed
    widthText_ = std::to_string(Presets()[static_cast<size_t>(index)].width);
    heightText_ = std::to_string(Presets()[static_cast<size_t>(index)].height);
}

void ExportSizeChooser::SetWidthText(std::string text) {
    if (SizeEditable()) widthText_ = std::move(text);
}

void ExportSizeChooser::SetHeightText(std::string text) {
    if (SizeEditable()) heightText_ = std::move(text);
}

namespace {

// The part after the last '/' has a dot that is not its first character.
bool HasExtension(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    const size_t base = slash == std::string::npos ? 0 : slash + 1;
    const size_t dot = path.find_last_of('.');
    return dot != std::string::npos && dot > base;
}

}  // namespace

bool ExportSizeChooser::Confirm(std::string fileName) {
    error_.clear();
    if (fileName.empty() || fileName.back() == '/') {
        error_ = "Please enter a file name.";
        return false;
    }
    if (!defaultExtension_.empty() && !HasExtension(fileName)) fileName += "." + defaultExtension_;
    if (fileName.size() > kMaxPath) {
        error_ = "The file name is too long: at most " + std::to_string(kMaxPath) + " characters are allowed.";
        return false;
    }
    struct Result chosen{std::move(fileName), Presets()[0].width, Presets()[0].height};
    if (sizeStrip_ && selection_ == kCustom) {
        chosen.width = ReadDecimal(widthText_);
        chosen.height = ReadDecimal(heightText_);
    } else if (sizeStrip_) {
        chosen.width = Presets()[static_cast<size_t>(selection_)].width;
        chosen.height = Presets()[static_cast<size_t>(selection_)].height;
    }
    result_ = std::move(chosen);
    return true;
}

int32_t ExportSizeChooser::ReadDecimal(std::string_view text) {
    text = text.substr(0, kMaxDigits);
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    int64_t value = 0;  // ten digits at most, so no overflow before the clamp
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) value = value * 10 + (text[i] - '0');
    if (negative) value = -value;
    if (value > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
    if (value < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(value);
}

std::vector<ExportSizeChooser::FileType> ExportSizeChooser::ParseFilter(std::string_view filter) {
    std::vector<std::string> parts;
    size_t start = 0;
    for (size_t bar = filter.find('|'); bar != std::string_view::npos; bar = filter.find('|', start)) {
        parts.emplace_back(filter.substr(start, bar - start));
        start = bar + 1;
    }
    if (start < filter.size()) parts.emplace_back(filter.substr(start));
    std::vector<FileType> types;
    for (size_t i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].empty()) break;  // the "||" that ends the list
        types.push_back({parts[i], parts[i + 1]});
    }
    return types;
}

}  // namespace vexplot
