#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/IStream.h"

namespace vexplot {

// The text form of palette files (".plt"): one colour per line, its red,
// green and blue components in decimal, "255,128,0". Colours come and go as
// 0x00BBGGRR, index 0 (the lowest value) on the first line.
//
// Reading applies the scan format "%d,%d,%d\n" again and again, as palette
// files have always been read, so files written by hand read as before:
//  - each number may be preceded by white space and a sign, and is taken as
//    its low byte in two's complement, however many digits it has ("-1" is
//    255, "256" is 0);
//  - the commas must follow the numbers directly; white space after the
//    third number, line ends included, is skipped;
//  - a line that converts only some of its numbers still makes a colour: the
//    missing components keep the values of the line before (0 at the start),
//    and the next line begins where the conversion stopped;
//  - a line that converts nothing ends the reading, as does the end of the
//    text (such a line consumes nothing, so scanning on would never end);
//  - at most kMaxColors colours are read; the rest of the text is ignored.
// So the reader takes any bytes at all, in time linear in their number and
// memory bounded by kMaxColors.
class PaletteFile {
public:
    // 64 times the 1024 entries of a standard palette, more rows than any
    // colour bar has; it keeps the palette's strip (25 pixels a colour)
    // within 6.25 MiB.
    static constexpr size_t kMaxColors = size_t{1} << 16;

    // The colours of palette text held in memory.
    static std::vector<uint32_t> Parse(std::string_view text);
    // The colours of palette text read from `stream`'s current position.
    // A read fault ends the reading as the end of the stream does.
    static std::vector<uint32_t> Read(IStream& stream);

    // Whether `text` is a palette file as users write them: at least one
    // line of three whole numbers separated by commas, every other line
    // blank. The reader takes anything; this tells a palette from a file
    // that was chosen by mistake (a picture, a plot file) before any colour
    // is replaced.
    static bool LooksLikePalette(std::string_view text);

    // "r,g,b\n" for each colour, in list order.
    static std::string Format(std::span<const uint32_t> colors);
    // Format(colors) into `stream`, a block at a time, so a long list is
    // never held as text in full. Failures raise StreamError.
    static void Write(IStream& stream, std::span<const uint32_t> colors);
};

}  // namespace vexplot
