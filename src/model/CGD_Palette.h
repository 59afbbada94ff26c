#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/PaletteFile.h"
#include "model/RgbaRaster.h"

namespace vexplot {

class CArchive;

// The control's colour palette: the ordered list of colours (0x00BBGGRR)
// with which the plot paints values from low (index 0) to high, the six
// standard palettes, palette files (".plt", see PaletteFile), the palette
// record of plot files, and the colour strips the legend and the palette
// editor draw from.
//
// The strip is a raster 25 pixels wide with one row per colour, the highest
// colour in the top row: row y shows colour count - 1 - y. It is a raster of
// our own, so it needs no owner window or device context and the failures
// of making one (kErrorNoOwner, kErrorNoDevice) never occur here. It always
// shows the list as it is now. The stretched strip is a copy made by
// Stretch() for a target rectangle; it keeps showing the list as it was
// then, until the next Stretch().
//
// Failures follow the pattern of the control's small model objects: a false
// or 0 result and the code in GetLastError() (kError...), which keeps the
// code of the last failure until another failure replaces it. A failing
// operation leaves the list as it was, except LoadFile (see there).
//
// The list holds at most kMaxColors colours. Not thread-safe: the control
// uses it on its user-interface thread only.
class CGD_Palette {
public:
    // last-error codes:
    static constexpr int kErrorNone = 0;
    static constexpr int kErrorCannotOpen = -2;    // LoadFile cannot open the file (the savers return -2)
    static constexpr int kErrorNoFileName = -3;    // the path is empty
    static constexpr int kErrorEmptyList = -4;     // nothing to write
    static constexpr int kErrorNoOwner = -6;       // never here: the strips need no window
    static constexpr int kErrorBadTarget = -7;     // Stretch to a negative height or width
    static constexpr int kErrorNoDevice = -9;      // never here: the strips need no window
    static constexpr int kErrorNoRaster = -10;     // Stretch to more than kMaxStretchedPixels

    static constexpr size_t kMaxColors = PaletteFile::kMaxColors;
    static constexpr uint32_t kStripWidth = 25;
    static constexpr uint32_t kStandardCount = 1024;
    // 16 Mi pixels (64 MiB), twice a 4K screen; Stretch counts an empty
    // width or height as 1 here, so a target without pixels is bounded too.
    static constexpr uint64_t kMaxStretchedPixels = uint64_t{1} << 24;

    // A place in the list for GetNext and GetPrev. The default, null
    // position starts a walk at the end chosen by the walk's flag; a walk
    // that leaves the list yields the end position, where it stays.
    class Position {
    public:
        Position() = default;
        static Position At(size_t index) { return Position(State::At, index); }
        static Position End() { return Position(State::End, 0); }

        bool IsNull() const { return state_ == State::Null; }
        bool IsEnd() const { return state_ == State::End; }
        // The index of the colour the next step returns; empty when null or at the end.
        std::optional<size_t> Index() const;
        bool operator==(const Position&) const = default;

    private:
        enum class State : uint8_t { Null, At, End };
        Position(State state, size_t index) : state_(state), index_(index) {}

        State state_ = State::Null;
        size_t index_ = 0;
    };

    // An empty list, palette identifier 0, no stretched strip.
    CGD_Palette() = default;

    // standard palettes:
    // Replaces the list by the 1024 colours of the standard palette
    // `identifier`, stored as the palette identifier; identifiers outside
    // 0..6 are taken as 0. The identifiers map onto colour ramps as they
    // always have in this control (hosts and saved plots rely on it), not as
    // the names of enumStandardPalettes say:
    //   3           red to blue in four stretches,
    //   1           grey rising by thirds, whose last three entries wrap
    //               (0xFF00FF, 0xFF0000, 0x000000) as they always have,
    //   4           grey falling by thirds, likewise wrapping at the end
    //               (0x00FF00, 0x00FFFF, 0xFFFFFF),
    //   0, 2, 5, 6  blue to red in four stretches;
    // no banding or inversion. The ramps repeat entry 1020 up to entry 1023.
    // Rebuilds the strip and returns whether that worked (always true here).
    bool SetStandard(int identifier);
    // The control's PaletteId setter: a value other than the current
    // identifier is handed to SetStandard unchanged (so 9 makes palette 0,
    // and setting 9 again regenerates it). Returns SetStandard's result, or
    // true when nothing was to be done.
    bool ApplyPaletteId(int identifier);
    // The control's UseColorPalette setter. The grey ramps (identifiers 1
    // and 4) give way to palette 0 when the flag is true; any other palette
    // gives way to palette 1 when it is false; otherwise nothing changes.
    bool SetUseColorPalette(bool useColor);
    // The control's UseColorPalette getter: false for the grey ramps 1 and 4.
    bool GetUseColorPalette() const;

    // palette files:
    // Replaces the list by the colours of the palette file `path` (read as
    // PaletteFile::Read says). The path is remembered as the file name
    // first, even when the file then cannot be opened. Returns 1, or 0 with
    // kErrorNoFileName (empty path, nothing remembered) or kErrorCannotOpen
    // (list kept). A file that opens always loads, even to an empty list.
    // The palette identifier is left as it is.
    int LoadFile(const std::string& path);
    // Writes the list as a palette file and remembers `path` as the file
    // name. The file is replaced atomically: whatever fails on the way
    // (folder not writable, disk full), a previous file stays as it was.
    // Returns 1; 0 with kErrorNoFileName or kErrorEmptyList (no file made);
    // -2 when the file cannot be written, with the last error and the file
    // name left as they were.
    int SaveFile(const std::string& path);
    // Writes the rows of the stretched strip from the top, so the colours
    // from highest to lowest as resampled by Stretch, as a palette file. The
    // same checks and results as SaveFile; without a stretched strip, or
    // with one no pixel wide, the file is written empty. The file name is
    // not remembered.
    int SaveStretchedFile(const std::string& path);

    // strips:
    // Makes the stretched strip for the target rectangle: right - left
    // pixels wide and bottom - top high, an odd height raised by one (the
    // height is always even). Resampled like StretchBlt with COLORONCOLOR,
    // nearest row without blending: target row r shows strip row
    // floor(r * count / height), across the whole width. An empty list gives
    // black rows. Returns false with kErrorBadTarget for a negative height or
    // width, or kErrorNoRaster when the raster would exceed
    // kMaxStretchedPixels; the previous stretched strip is then kept.
    bool Stretch(int left, int top, int right, int bottom);
    // The stretched strip, or null before the first successful Stretch.
    const RgbaRaster* GetStripBitmap() const { return stretched_ ? &*stretched_ : nullptr; }
    // The height the stretched strip was made with (0 before).
    uint32_t GetStretchedHeight() const { return stretchedHeight_; }
    // The strip of the list as it is now (see the class comment).
    const RgbaRaster& Strip() const;

    // the list:
    // The colour at `index`; 0 for an index outside the list.
    uint32_t GetColor(int64_t index) const;
    // Replaces the colour at `index`, or appends it when `index` is not below
    // the count. The top byte of `color` is dropped (colours are 0x00BBGGRR).
    // Returns true, and false without a change for a negative index or an
    // append to a full list (kMaxColors); neither sets the last error.
    bool SetColor(int64_t index, uint32_t color);
    // The colour at `position` and the position one step towards the tail;
    // a null position starts at the head (fromTail false) or the tail. 0 and
    // the end position when the walk is past either end or the list is empty.
    uint32_t GetNext(Position& position, bool fromTail) const;
    // As GetNext, stepping towards the head.
    uint32_t GetPrev(Position& position, bool fromTail) const;
    bool Clear();
    size_t GetCount() const { return colors_.size(); }
    std::span<const uint32_t> Colors() const { return colors_; }

    // plot files:
    // Stores: the string "PaletteStart:", the count (uint32), the colours
    // (uint32 each, list order), the string "PaletteEnd". Loads the same,
    // the two strings not compared and the top byte of each colour dropped,
    // then rebuilds the strip; the palette identifier is left as it is. A
    // count above kMaxColors or beyond the bytes left, or a truncated
    // record, raises ArchiveError with the list unchanged: the list is
    // replaced only when the whole record was read.
    void Serialize(CArchive& archive);

    // getters:
    int GetLastError() const { return lastError_; }
    int GetPaletteId() const { return paletteId_; }
    const std::string& GetFileName() const { return fileName_; }
    // Why the last LoadFile could not open its file, in words.
    const std::string& GetOpenFailure() const { return openFailure_; }

private:
    void Store(CArchive& archive) const;
    void Load(CArchive& archive);
    bool RebuildStrip();
    void ReplaceColors(std::vector<uint32_t> colors);
    // The colour of each row of the stretched strip from the top; empty
    // without a stretched strip or when it has no pixel.
    std::vector<uint32_t> StretchedRowColors() const;
    uint32_t Step(Position& position, bool fromTail, bool towardsTail) const;
    int Fail(int code);

    int lastError_ = kErrorNone;
    int paletteId_ = 0;
    std::vector<uint32_t> colors_;
    std::optional<RgbaRaster> stretched_;
    // Made on demand from colors_ and dropped whenever the list changes.
    mutable std::optional<RgbaRaster> strip_;
    uint32_t stretchedHeight_ = 0;
    std::string fileName_;
    std::string openFailure_;
};

}  // namespace vexplot
