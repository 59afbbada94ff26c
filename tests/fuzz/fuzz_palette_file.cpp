// Palette text (".plt" files): any bytes read as colours, never a failure.
// The fuzzer's bytes go through every way the control reads them, which must
// agree with one another:
//   - PaletteFile::Parse over the text in memory;
//   - PaletteFile::Read over a MemoryStream (its own buffer refills every
//     4096 bytes, so longer inputs cross block boundaries mid-number);
//   - CGD_Palette::LoadFile over a file holding the bytes (a memfd, made
//     once per process), which also rebuilds the colour strip.
// Then what was read is written back (Format, Write) and read again, and
// stored and loaded as the palette's plot-file record: the same colours.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzSupport.h"
#include "com/MemoryStream.h"
#include "model/CArchive.h"
#include "model/CGD_Palette.h"
#include "model/PaletteFile.h"

using namespace vexplot;
using fuzz::Expect;

namespace {

// A file whose contents are replaced for each input; its path names the
// descriptor through /proc, so LoadFile opens it like any other file.
class ScratchFile {
public:
    ScratchFile() : fd_(memfd_create("palette.plt", MFD_CLOEXEC)) {
        Expect(fd_ >= 0, "memfd_create");
        path_ = "/proc/self/fd/" + std::to_string(fd_);
    }
    const std::string& Hold(const uint8_t* data, size_t size) {
        Expect(ftruncate(fd_, 0) == 0, "truncating the scratch file");
        Expect(pwrite(fd_, data, size, 0) == static_cast<ssize_t>(size), "writing the scratch file");
        return path_;
    }

private:
    int fd_;
    std::string path_;
};

std::vector<uint32_t> ColorsOf(const CGD_Palette& palette) {
    return {palette.Colors().begin(), palette.Colors().end()};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static ScratchFile file;
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    const std::vector<uint32_t> colors = PaletteFile::Parse(text);
    Expect(colors.size() <= PaletteFile::kMaxColors, "at most kMaxColors colours are read");
    for (uint32_t color : colors) Expect(color <= 0xFFFFFF, "colours are 0x00BBGGRR");

    ComPtr<MemoryStream> stream = fuzz::StreamOver(data, size);
    Expect(PaletteFile::Read(*stream) == colors, "reading from a stream differs from parsing in memory");

    CGD_Palette palette;
    Expect(palette.LoadFile(file.Hold(data, size)) == 1, "a palette file that opens always loads");
    Expect(ColorsOf(palette) == colors, "LoadFile differs from parsing in memory");
    const RgbaRaster& strip = palette.Strip();
    Expect(strip.Height() == colors.size() && (colors.empty() || strip.Width() == CGD_Palette::kStripWidth),
           "the strip has one row per colour");
    if (!colors.empty()) Expect(strip.Pixel(0, 0) == colors.back(), "the strip's top row is the highest colour");

    const std::string formatted = PaletteFile::Format(colors);
    Expect(PaletteFile::Parse(formatted) == colors, "Format then Parse gives other colours");
    ComPtr<MemoryStream> written = MakeComObject<MemoryStream>();
    PaletteFile::Write(*written, colors);
    Expect(std::string_view(reinterpret_cast<const char*>(written->Bytes().data()), written->Bytes().size()) ==
               formatted,
           "Write differs from Format");

    ComPtr<MemoryStream> record = MakeComObject<MemoryStream>();
    {
        CArchive store(record.Get(), CArchive::Mode::Store);
        palette.Serialize(store);
        store.Close();
    }
    record->Seek(0, STREAM_SEEK_SET, nullptr);
    CGD_Palette loaded;
    CArchive load(record.Get(), CArchive::Mode::Load);
    loaded.Serialize(load);
    Expect(ColorsOf(loaded) == colors, "the palette record loads other colours");
    Expect(load.Remaining() == 0, "the palette record reads to its end");
    return 0;
}
