#include "model/CGD_Palette.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "com/AtomicFile.h"
#include "com/ComError.h"
#include "com/FileStream.h"
#include "model/CArchive.h"

namespace vexplot {

namespace {

constexpr uint32_t kColorMask = 0x00FFFFFF;
// The column SaveStretchedFile reads; every column of a row is alike.
constexpr uint32_t kStretchedReadColumn = 10;

constexpr uint32_t Rgb(uint32_t red, uint32_t green, uint32_t blue) { return red | green << 8 | blue << 16; }

constexpr uint32_t SwapRedAndBlue(uint32_t color) {
    return Rgb(color >> 16 & 0xFF, color >> 8 & 0xFF, color & 0xFF);
}

// Entry i of the red-to-blue ramp in four stretches of about 255 entries;
// entries past 1020 repeat entry 1020 (pure blue). The offsets of the last
// two stretches (+2, 252 -) are the ramp's own and kept as they are.
uint32_t RedToBlue(uint32_t i) {
    i = std::min(i, 1020u);
    const uint32_t m = i % 256;
    if (i < 256) return Rgb(255, i, 0);
    if (i < 510) return Rgb(255 - m, 255, 0);
    if (i < 765) return Rgb(0, 255, (m + 2) % 256);
    return Rgb(0, (252 + 256 - m) % 256, 255);
}

std::vector<uint32_t> Ramp(bool redFirst) {
    std::vector<uint32_t> colors(CGD_Palette::kStandardCount);
    for (uint32_t i = 0; i < colors.size(); ++i) colors[i] = redFirst ? RedToBlue(i) : SwapRedAndBlue(RedToBlue(i));
    return colors;
}

// The grey ramps: three byte counters (blue, green, red) start at `start`;
// for each i not a multiple of 4 the counter i mod 3 moves by `step`. Each
// counter moves 256 times in all, so the bytes wrap in the last entries.
std::vector<uint32_t> GreyWalk(uint8_t start, int step) {
    std::array<uint8_t, 3> blueGreenRed{start, start, start};
    std::vector<uint32_t> colors(CGD_Palette::kStandardCount);
    for (uint32_t i = 0; i < colors.size(); ++i) {
        uint8_t& counter = blueGreenRed[i % 3];
        if (i % 4 != 0) counter = static_cast<uint8_t>(counter + step);
        colors[i] = Rgb(blueGreenRed[2], blueGreenRed[1], blueGreenRed[0]);
    }
    return colors;
}

std::vector<uint32_t> StandardColors(int identifier) {
    switch (identifier) {
        case 1: return GreyWalk(0, +1);
        case 3: return Ramp(true);
        case 4: return GreyWalk(255, -1);
        default: return Ramp(false);
    }
}

RgbaRaster MakeStrip(std::span<const uint32_t> colors) {
    const auto count = static_cast<uint32_t>(colors.size());
    RgbaRaster strip(CGD_Palette::kStripWidth, count);
    for (uint32_t y = 0; y < count; ++y) strip.FillRow(y, colors[count - 1 - y]);
    return strip;
}

// An empty width or height counts as 1, so that a raster without pixels
// cannot ask for billions of rows or columns either.
bool FitsStretchLimit(uint64_t width, uint64_t height) {
    const uint64_t limit = CGD_Palette::kMaxStretchedPixels;
    return width <= limit && height <= limit && std::max<uint64_t>(width, 1) * std::max<uint64_t>(height, 1) <= limit;
}

RgbaRaster StretchStrip(const RgbaRaster& strip, uint32_t width, uint32_t height) {
    RgbaRaster stretched(width, height);
    const uint64_t count = strip.Height();
    if (count == 0) return stretched;
    for (uint32_t row = 0; row < height; ++row) {
        stretched.FillRow(row, strip.Pixel(0, static_cast<uint32_t>(row * count / height)));
    }
    return stretched;
}

// Replaces `path` by the palette text of `colors`; false when that failed,
// the previous file then being intact.
bool WritePaletteFile(const std::string& path, std::span<const uint32_t> colors) {
    try {
        WriteFileAtomically(path, [colors](IStream& stream) { PaletteFile::Write(stream, colors); });
        return true;
    } catch (const ComError&) {
        return false;
    }
}

}  // namespace

std::optional<size_t> CGD_Palette::Position::Index() const {
    if (state_ != State::At) return std::nullopt;
    return index_;
}

bool CGD_Palette::SetStandard(int identifier) {
    if (identifier < 0 || identifier > 6) identifier = 0;
    ReplaceColors(StandardColors(identifier));
    paletteId_ = identifier;
    return RebuildStrip();
}

bool CGD_Palette::ApplyPaletteId(int identifier) {
    return identifier == paletteId_ || SetStandard(identifier);
}

bool CGD_Palette::SetUseColorPalette(bool useColor) {
    if (useColor == GetUseColorPalette()) return true;
    return SetStandard(useColor ? 0 : 1);
}

bool CGD_Palette::GetUseColorPalette() const { return paletteId_ != 1 && paletteId_ != 4; }

int CGD_Palette::LoadFile(const std::string& path) {
    if (path.empty()) return Fail(kErrorNoFileName);
    fileName_ = path;
    HRESULT hr = S_OK;
    const ComPtr<FileStream> file = FileStream::Open(path, FileStream::Mode::Read, &hr, &openFailure_);
    if (!file) return Fail(kErrorCannotOpen);
    ReplaceColors(PaletteFile::Read(*file));
    RebuildStrip();
    return 1;
}

int CGD_Palette::SaveFile(const std::string& path) {
    if (path.empty()) return Fail(kErrorNoFileName);
    if (colors_.empty()) return Fail(kErrorEmptyList);
    // Returned, not recorded: the last error keeps its code.
    if (!WritePaletteFile(path, colors_)) return kErrorCannotOpen;
    fileName_ = path;
    return 1;
}

int CGD_Palette::SaveStretchedFile(const std::string& path) {
    // The checks are those of SaveFile: the colour list, not the strip, must
    // have colours. Without a stretched strip (or with one no pixel wide)
    // there are no rows, and the file is written empty.
    if (path.empty()) return Fail(kErrorNoFileName);
    if (colors_.empty()) return Fail(kErrorEmptyList);
    return WritePaletteFile(path, StretchedRowColors()) ? 1 : kErrorCannotOpen;
}

bool CGD_Palette::Stretch(int left, int top, int right, int bottom) {
    const int64_t width = int64_t{right} - left;
    int64_t height = int64_t{bottom} - top;
    if (width < 0 || height < 0) {
        Fail(kErrorBadTarget);
        return false;
    }
    height += height % 2;
    if (!FitsStretchLimit(static_cast<uint64_t>(width), static_cast<uint64_t>(height))) {
        Fail(kErrorNoRaster);
        return false;
    }
    stretched_ = StretchStrip(Strip(), static_cast<uint32_t>(width), static_cast<uint32_t>(height));
    stretchedHeight_ = static_cast<uint32_t>(height);
    return true;
}

const RgbaRaster& CGD_Palette::Strip() const {
    if (!strip_) strip_ = MakeStrip(colors_);
    return *strip_;
}

uint32_t CGD_Palette::GetColor(int64_t index) const {
    if (index < 0 || static_cast<uint64_t>(index) >= colors_.size()) return 0;
    return colors_[static_cast<size_t>(index)];
}

bool CGD_Palette::SetColor(int64_t index, uint32_t color) {
    if (index < 0) return false;
    if (static_cast<uint64_t>(index) < colors_.size()) {
        colors_[static_cast<size_t>(index)] = color & kColorMask;
    } else if (colors_.size() < kMaxColors) {
        colors_.push_back(color & kColorMask);
    } else {
        return false;
    }
    strip_.reset();
    return true;
}

uint32_t CGD_Palette::GetNext(Position& position, bool fromTail) const { return Step(position, fromTail, true); }

uint32_t CGD_Palette::GetPrev(Position& position, bool fromTail) const { return Step(position, fromTail, false); }

bool CGD_Palette::Clear() {
    ReplaceColors({});
    return true;
}

void CGD_Palette::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        Store(archive);
    } else {
        Load(archive);
    }
}

void CGD_Palette::Store(CArchive& archive) const {
    archive.WriteString("PaletteStart:");
    archive.WriteUInt32(static_cast<uint32_t>(colors_.size()));
    for (const uint32_t color : colors_) archive.WriteColor(color);
    archive.WriteString("PaletteEnd");
}

void CGD_Palette::Load(CArchive& archive) {
    archive.ReadString("palette start marker");
    const uint32_t count = archive.ReadUInt32("palette colour count");
    if (count > kMaxColors) {
        archive.Fail("palette colour count", std::to_string(count) + " is more than " + std::to_string(kMaxColors));
    }
    archive.Require(uint64_t{count} * 4, "palette colours");
    std::vector<uint32_t> colors(count);
    for (uint32_t& color : colors) color = archive.ReadColor("palette colour") & kColorMask;
    archive.ReadString("palette end marker");
    ReplaceColors(std::move(colors));
    RebuildStrip();
}

bool CGD_Palette::RebuildStrip() {
    strip_ = MakeStrip(colors_);
    return true;
}

void CGD_Palette::ReplaceColors(std::vector<uint32_t> colors) {
    colors_ = std::move(colors);
    strip_.reset();
}

std::vector<uint32_t> CGD_Palette::StretchedRowColors() const {
    std::vector<uint32_t> rows;
    if (!stretched_ || stretched_->Empty()) return rows;
    const uint32_t x = std::min(kStretchedReadColumn, stretched_->Width() - 1);
    rows.reserve(stretched_->Height());
    for (uint32_t y = 0; y < stretched_->Height(); ++y) rows.push_back(stretched_->Pixel(x, y));
    return rows;
}

uint32_t CGD_Palette::Step(Position& position, bool fromTail, bool towardsTail) const {
    if (position.IsNull() && !colors_.empty()) position = Position::At(fromTail ? colors_.size() - 1 : 0);
    const std::optional<size_t> index = position.Index();
    if (!index || *index >= colors_.size()) {
        position = Position::End();
        return 0;
    }
    const bool leaves = towardsTail ? *index + 1 == colors_.size() : *index == 0;
    position = leaves ? Position::End() : Position::At(towardsTail ? *index + 1 : *index - 1);
    return colors_[*index];
}

int CGD_Palette::Fail(int code) {
    lastError_ = code;
    return 0;
}

}  // namespace vexplot
